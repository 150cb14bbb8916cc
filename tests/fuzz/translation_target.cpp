// Every source that parses is translated, and translated again to the same text.
#include "fuzz/source_checks.h"
#include "fuzz/targets.h"

namespace Orvane::Fuzzing {

void fuzzTranslation(Bytes input) {
    const std::unique_ptr<AST> program = parse(textOf(input));
    if (program) checkTranslation(*program);
}

} // namespace Orvane::Fuzzing
