// What the parser refused or skipped, in the user's words.
//
//     Diagnostic diagnostic = describeFailure(source, recovery.failures().front());
#pragma once

#include "check/message.h"
#include "frontend/recovery.h"

#include <vector>

namespace Orvane {

class ParsedSource;

// One message for the failure: the first of the known confusions that its tokens show for certain,
// otherwise what was expected and what was found.
Diagnostic describeFailure(const ParsedSource& source, const SyntaxFailure& failure);

// Warnings about what the grammar skips, one for each run of tokens.
std::vector<Diagnostic> describeSkipped(const ParsedSource& source,
                                        const std::vector<SkippedTokens>& runs);

// The errors for a file whose only failure is in what follows something skipped: the last of
// `skipped` in front of the failure becomes the error and leaves the list.
std::vector<Diagnostic> refuseSkipped(std::vector<Diagnostic>& skipped, const Diagnostic& failure);

// For files that the compiler accepts: leaves out what is skipped behind a text in single quotes,
// which has its own warning.
void dropRemainders(std::vector<Diagnostic>& skipped, const std::vector<Diagnostic>& unclosed);

} // namespace Orvane
