// Literals that are not what they seem to be, and a text without them.
//
// Used by ParsedSource for files that the compiler refuses: one text in wrong quotes turns every
// text behind it inside out, so the literals are said and repaired first and the rest is parsed.
//
//     LexicalReport report = examineLiterals(source);
//     Lexer lexer(report.repaired, console);   // every offset as in the source
#pragma once

#include "check/message.h"
#include "frontend/lexer.h"

#include <string>
#include <vector>

namespace Orvane {

struct LexicalReport {
    std::vector<Diagnostic> diagnostics;
    std::string repaired;           // as long as the source
    std::vector<ByteRange> repairs; // where they differ; empty when they do not
};

// At most twenty problems; what is behind them is left as it is.
LexicalReport examineLiterals(const SourceText& source);

// For files that the compiler accepts: the characters that it warns about.
std::vector<Diagnostic> describeUnclosed(const SourceText& source,
                                         const std::vector<LexicalProblem>& problems);

bool holdsLargeNumber(const std::vector<LexicalProblem>& problems);

// The offset behind the text or character literal that begins at `begin`.
std::size_t endOfLiteral(const std::string& text, std::size_t begin);

} // namespace Orvane
