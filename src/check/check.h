// Everything that can be said about a source before it is built: the entry point of all checks.
//
// Called by the commands, once per file. Reads nothing and prints nothing.
//
//     ParsedSource source("app.vorla", text);
//     LibraryFunctions libraries(installedFolder);
//     libraries.load(source.tree(), {});
//     for (const Diagnostic& diagnostic : checkSource(source, libraries, {})) ...
#pragma once

#include "check/library_functions.h"
#include "check/parsed_source.h"

#include <vector>

namespace Orvane {

struct CheckOptions {
    bool warnings = true; // off: errors only
};

// In the order of the source; of one range at most one diagnostic of each id. A source that does
// not parse has its syntax errors only: what the parser left out would be missed everywhere else.
std::vector<Diagnostic> checkSource(const ParsedSource& source, const LibraryFunctions& libraries,
                                    const CheckOptions& options);

} // namespace Orvane
