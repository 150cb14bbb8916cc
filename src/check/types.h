// What g++ would refuse, and what it accepts and misunderstands: the check of names and types.
//
// Follows the translation: every expression is given the type that its C++ text has, every name
// what C++ finds under it. Says an error only where the C++ compiler surely refuses.
//
//     std::vector<Diagnostic> found;
//     checkTypes(source, libraries, found);
#pragma once

#include "check/library_functions.h"
#include "check/parsed_source.h"

#include <vector>

namespace Orvane {

// Appends to `found`, in no particular order. The source must have parsed without an error.
void checkTypes(const ParsedSource& source, const LibraryFunctions& libraries,
                std::vector<Diagnostic>& found);

} // namespace Orvane
