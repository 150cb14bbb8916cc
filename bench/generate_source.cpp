// Writes a generated program to standard output: generate_source LINES > big.vorla
#include "bench/source_generator.h"

#include <cstdio>
#include <cstdlib>

int main(int argumentCount, char** arguments) {
    const long lines = argumentCount == 2 ? std::strtol(arguments[1], nullptr, 10) : 0;
    if (lines <= 0) {
        std::fputs("usage: generate_source LINES\n", stderr);
        return 2;
    }
    const std::string source = Orvane::Bench::generateSource(static_cast<std::size_t>(lines));
    return std::fwrite(source.data(), 1, source.size(), stdout) == source.size() ? 0 : 1;
}
