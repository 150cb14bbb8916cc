#include "check/types.h"

namespace Orvane {

void checkTypes(const ParsedSource&, const LibraryFunctions&, std::vector<Diagnostic>&) {}

} // namespace Orvane
