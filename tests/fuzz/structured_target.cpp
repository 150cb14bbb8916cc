// The bytes choose among the rules of the grammar: every input is a whole program, which parses and
// is translated. The first byte chooses the style.
#include "fuzz/source_checks.h"
#include "fuzz/targets.h"
#include "support/program_generator.h"

namespace Orvane::Fuzzing {

void fuzzStructured(Bytes input) {
    ByteChoices choices(input);
    const ProgramStyle style = choices.oneIn(4) ? ProgramStyle::sensible : ProgramStyle::wild;
    const std::unique_ptr<AST> program = parse(generateProgram(style, choices));
    require(program != nullptr, "a generated program parses");
    checkTreeAsSource(*program);
    checkTranslation(*program);
}

} // namespace Orvane::Fuzzing
