#include "support/program_generator.h"

namespace Orvane {

std::size_t ByteChoices::nextByte() {
    if (bytes.empty()) return 0;
    const std::size_t byte = bytes.front();
    bytes = bytes.subspan(1);
    return byte;
}

std::size_t ByteChoices::below(std::size_t bound) {
    if (bound == 1) return 0;
    std::size_t number = nextByte();
    if (bound > 256) number = number * 256 + nextByte();
    return number % bound;
}

std::string generateProgram(ProgramStyle style, Choices& choices) {
    return style == ProgramStyle::sensible ? generateSensibleProgram(choices)
                                           : generateWildProgram(choices);
}

std::string generateProgram(ProgramStyle style, std::uint64_t seed) {
    SeededChoices choices(seed);
    return generateProgram(style, choices);
}

} // namespace Orvane
