// Any bytes give a tree or end in an exception whose text begins like every error message; a tree
// can be written as a source that gives it again.
#include "fuzz/source_checks.h"
#include "fuzz/targets.h"

namespace Orvane::Fuzzing {

void fuzzParser(Bytes input) {
    const std::unique_ptr<AST> program = parse(textOf(input));
    if (program) checkTreeAsSource(*program);
}

} // namespace Orvane::Fuzzing
