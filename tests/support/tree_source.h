// A syntax tree as source text: what is parsed from the text is an equal tree.
//
// The text is one way to write the program, not the way that it was written: declarations come in
// the order of the AST's members, lists in braces, bodies of loops in braces. Only for trees of
// ordinary depth: the functions recurse, but for chains of operators and ladders of else-ifs.
//
//     std::string source = sourceOf(*program);
#pragma once

#include "frontend/syntax_tree.h"

#include <string>

namespace Orvane {

std::string sourceOf(const AST& program);
std::string sourceOf(const Expr& expression); // as it stands in brackets or behind "="
std::string sourceOf(const Stmt& statement);  // with line breaks

} // namespace Orvane
