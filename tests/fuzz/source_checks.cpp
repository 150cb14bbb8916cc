#include "fuzz/source_checks.h"

#include "codegen/code_generator.h"
#include "frontend/lexer.h"
#include "frontend/parser.h"
#include "fuzz/targets.h"
#include "libraries/replacement_table.h"
#include "support/counted_text.h"
#include "support/tree_source.h"
#include "unit/tree_text.h"

#include <optional>

namespace Orvane::Fuzzing {

namespace {

bool isRefusal(std::string_view message) { return message.starts_with("Expected "); }

// Functions that call each other and have the names that sources use.
ReplacementTable someFunctions() {
    ReplacementTable table;
    table.add({.name = "total",
               .returnType = "value",
               .paramNames = {"x"},
               .paramTypes = {"value"},
               .body = "{ return start(x); }"});
    table.add({.name = "start", .returnType = "int", .body = "{ return total(1).asInt(); }"});
    table.add({.name = "setText",
               .returnType = "bool",
               .paramNames = {"c", "s"},
               .paramTypes = {"value", "value"},
               .body = "{ return true; }"});
    return table;
}

// One generator with its streams.
class Translator {
public:
    explicit Translator(const ReplacementTable& table)
        : generator(table, mainStream, importStream, indentLevel) {}

    // None when a colour is refused.
    std::optional<std::string> translate(const AST& program) {
        try {
            generator.generate(program, "main.cpp", "import.hpp", false, true);
        } catch (const std::invalid_argument&) {
            return std::nullopt;
        }
        require(indentLevel == 0, "the indentation is back at its start");
        return std::string(importStream.view()) + std::string(mainStream.view());
    }

private:
    TextStream mainStream;
    TextStream importStream;
    int indentLevel = 0;
    CodeGenerator generator;
};

} // namespace

std::unique_ptr<AST> parse(const std::string& source) {
    RecordingConsole console;
    std::unique_ptr<AST> program;
    try {
        Lexer lexer(source, console);
        PositionTable positions;
        Parser parser(lexer.tokenize(), console, &positions);
        program = parser.parse();
    } catch (const std::out_of_range&) {
        return nullptr;
    } catch (const std::runtime_error& error) {
        require(isRefusal(error.what()), "an error says what was expected");
        return nullptr;
    }
    require(program != nullptr, "a source that is not refused has a tree");
    return program;
}

void checkTreeAsSource(const AST& program) {
    const std::string source = sourceOf(program);
    const std::unique_ptr<AST> again = parse(source);
    // The written source may be nested more deeply than the parser follows.
    if (!again) return require(source.size() > 1000, "the written source is parsed");
    require(Testing::textOf(*again) == Testing::textOf(program), "the tree is the same");
    require(sourceOf(*again) == source, "the source is the same");
}

void checkTranslation(const AST& program) {
    const ReplacementTable table = someFunctions();
    Translator translator(table);
    const std::optional<std::string> first = translator.translate(program);
    require(Translator(table).translate(program) == first, "two translations are equal");
    if (!first) return;
    const std::optional<std::string> second = translator.translate(program);
    require(second && differInCountersOnly(*first, *second),
            "a second translation differs in its counters only");
}

} // namespace Orvane::Fuzzing
