// Comments that switch warnings off:
//
//     button tick { x = 3000 }   // orvane: allow outside-window
//
//     // orvane: allow zero-size, overlapping-controls
//     button hidden { width = 0 }
//
//     // orvane: allow-file unknown-kind
//
// Behind code the comment counts for its line, alone on a line for the next line with code, with
// `allow-file` for the whole source. Errors cannot be switched off.
#pragma once

#include "check/message.h"
#include "check/parsed_source.h"

#include <vector>

namespace Orvane {

// Removes the warnings that are switched off, and appends a warning for each id that no message has
// or that belongs to an error.
void suppressWarnings(const ParsedSource& source, std::vector<Diagnostic>& found);

} // namespace Orvane
