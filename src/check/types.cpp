#include "check/types.h"

#include "check/type_checker.h"

namespace Orvane {

void checkTypes(const ParsedSource& source, const LibraryFunctions& libraries,
                std::vector<Diagnostic>& found) {
    TypeChecker(source, libraries, found).run();
}

} // namespace Orvane
