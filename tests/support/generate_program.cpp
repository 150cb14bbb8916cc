// generate_program SEED [--sensible|--wild]
//
// Writes the generated program of that seed to standard output; a sensible one unless told
// otherwise.
#include "support/program_generator.h"

#include <cstdio>
#include <cstdlib>
#include <string_view>

int main(int count, char** arguments) {
    using Orvane::ProgramStyle;
    const std::string_view option = count == 3 ? arguments[2] : "--sensible";
    char* end = nullptr;
    const unsigned long long seed = count > 1 ? std::strtoull(arguments[1], &end, 10) : 0;
    const bool isOption = option == "--sensible" || option == "--wild";
    if (count < 2 || count > 3 || !isOption || end == arguments[1] || *end != '\0') {
        std::fputs("Usage: generate_program SEED [--sensible|--wild]\n", stderr);
        return 2;
    }
    const ProgramStyle style = option == "--wild" ? ProgramStyle::wild : ProgramStyle::sensible;
    const std::string source = Orvane::generateProgram(style, seed);
    return std::fwrite(source.data(), 1, source.size(), stdout) == source.size() ? 0 : 1;
}
