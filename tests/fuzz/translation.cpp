// Every source that parses is translated, and translated again to the same text.
#include "codegen/code_generator.h"
#include "frontend/lexer.h"
#include "frontend/parser.h"
#include "libraries/replacement_table.h"

#include <cstdint>
#include <cstdlib>
#include <memory>
#include <stdexcept>

namespace {

std::string translate(const Orvane::AST& program) {
    const Orvane::ReplacementTable table;
    Orvane::TextStream mainStream;
    Orvane::TextStream importStream;
    int indentLevel = 0;
    Orvane::CodeGenerator generator(table, mainStream, importStream, indentLevel);
    generator.generate(program, "main.cpp", "import.hpp", false, true);
    if (indentLevel != 0) std::abort();
    std::string text(importStream.view());
    text += mainStream.view();
    return text;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace Orvane;
    RecordingConsole console;
    try {
        Lexer lexer(std::string(reinterpret_cast<const char*>(data), size), console);
        Parser parser(lexer.tokenize(), console);
        const std::unique_ptr<AST> program = parser.parse();
        if (translate(*program) != translate(*program)) std::abort();
    } catch (const std::exception&) {
    }
    return 0;
}
