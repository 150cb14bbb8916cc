// One translation, cut off behind a stage: translate_once STAGE FILE [DIRECTORY]
//
// STAGE is read, lex, parse, generate or write; every stage includes those before it. `write` puts
// main.cpp and import.hpp into the directory. Run under a profiler, the difference between two
// stages is the cost of the later one. Prints the processor time used and the largest memory:
//
//     translate_once generate big.vorla
//     generate: 41.3 ms, 61208 KB
#include "codegen/code_generator.h"
#include "driver/output_files.h"
#include "frontend/lexer.h"
#include "frontend/parser.h"
#include "libraries/files.h"
#include "libraries/replacement_table.h"

#include <sys/resource.h>

#include <algorithm>
#include <array>
#include <cstdio>

namespace Orvane::Bench {
namespace {

constexpr std::array<std::string_view, 5> stages = {"read", "lex", "parse", "generate", "write"};

// Ends the translation behind the last stage that is wanted; false when a file cannot be read or
// written.
bool translate(std::string_view lastStage, const char* file, const char* directory) {
    StandardConsole console;
    std::optional<std::string> source = readTextFile(pathOf(file));
    if (!source || lastStage == "read") return source.has_value();
    Lexer lexer(std::move(*source), console);
    std::vector<Token> tokens = lexer.tokenize();
    if (lastStage == "lex") return true;
    const std::unique_ptr<AST> program =
        Parser(std::move(tokens), console, nullptr, Parser::Texts::viewed).parse();
    if (lastStage == "parse") return true;
    const ReplacementTable table;
    TextStream mainStream, importStream;
    int indentLevel = 0;
    CodeGenerator generator(table, mainStream, importStream, indentLevel);
    generator.generate(*program, "main.cpp", "import.hpp", false, false);
    if (lastStage == "generate") return true;
    return writeFile(pathOf(directory) / "main.cpp", mainStream.view()) &&
           writeFile(pathOf(directory) / "import.hpp", importStream.view());
}

double milliseconds(const timeval& time) {
    return static_cast<double>(time.tv_sec) * 1e3 + static_cast<double>(time.tv_usec) / 1e3;
}

void printUsage(const char* stage) {
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    std::printf("%s: %.1f ms, %ld KB\n", stage,
                milliseconds(usage.ru_utime) + milliseconds(usage.ru_stime), usage.ru_maxrss);
}

} // namespace
} // namespace Orvane::Bench

int main(int count, char** arguments) {
    using namespace Orvane::Bench;
    if (count < 3 || std::find(stages.begin(), stages.end(), arguments[1]) == stages.end()) {
        std::fputs("usage: translate_once read|lex|parse|generate|write FILE [DIRECTORY]\n",
                   stderr);
        return 2;
    }
    if (!translate(arguments[1], arguments[2], count > 3 ? arguments[3] : ".")) return 1;
    printUsage(arguments[1]);
    return 0;
}
