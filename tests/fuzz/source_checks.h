// What holds for every source, whatever made it up.
#pragma once

#include "frontend/syntax_tree.h"

#include <memory>
#include <string>

namespace Orvane::Fuzzing {

// The tree of the source; null when its lexer or parser refuses it. A refusal that is not one of
// theirs is a Violation.
std::unique_ptr<AST> parse(const std::string& source);

// The tree, written as a source and parsed again, is the same tree.
void checkTreeAsSource(const AST& program);

// The tree is translated to the same text by two generators, and to the same text but for its
// counters, which give no number twice, when one generator translates it twice or behind another
// program; the indentation is back at its start.
void checkTranslation(const AST& program);

} // namespace Orvane::Fuzzing
