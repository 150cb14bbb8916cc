// write_generated FOLDER ORLIB FIRST COUNT
//
// Writes the translations of the sensible generated programs of COUNT seeds from FIRST on:
// SEED/main.cpp and SEED/import.hpp, with the source beside them as SEED/source.vorla.
#include "libraries/orlib_bootloader.h"
#include "run/translation.h"
#include "support/program_generator.h"

#include "frontend/lexer.h"
#include "frontend/parser.h"

#include <cstdio>
#include <exception>
#include <fstream>
#include <stdexcept>

using namespace Orvane;

namespace {

void writeText(const std::filesystem::path& path, const std::string& text) {
    std::ofstream file(path, std::ios::binary);
    file << text;
    if (!file.flush()) throw std::runtime_error("cannot write " + path.string());
}

ReplacementTable loadImports(const std::string& source, const std::filesystem::path& orlib) {
    RecordingConsole console;
    Lexer lexer(source, console);
    Parser parser(lexer.tokenize(), console);
    const std::unique_ptr<AST> program = parser.parse();
    std::vector<std::string> files;
    for (const std::string_view name : program->imports)
        files.push_back(std::string(name) + ".orlib");
    return loadLibraries(orlib, files, console);
}

void writeProgram(const std::filesystem::path& folder, const std::filesystem::path& orlib,
                  std::uint64_t seed) {
    const std::string source = generateProgram(ProgramStyle::sensible, seed);
    std::filesystem::create_directories(folder);
    writeText(folder / "source.vorla", source);
    RecordingConsole console;
    const Translation program = translate(source, loadImports(source, orlib), console);
    writeText(folder / "main.cpp", program.mainText);
    writeText(folder / "import.hpp", program.importText);
}

} // namespace

int main(int count, char** arguments) {
    if (count != 5) {
        std::fputs("Usage: write_generated FOLDER ORLIB FIRST COUNT\n", stderr);
        return 2;
    }
    try {
        const std::uint64_t first = std::stoull(arguments[3]);
        const std::uint64_t end = first + std::stoull(arguments[4]);
        for (std::uint64_t seed = first; seed < end; ++seed)
            writeProgram(std::filesystem::path(arguments[1]) / std::to_string(seed), arguments[2],
                         seed);
    } catch (const std::exception& error) {
        std::fprintf(stderr, "%s\n", error.what());
        return 1;
    }
    return 0;
}
