#include "fuzz/source_checks.h"

#include "codegen/code_generator.h"
#include "frontend/lexer.h"
#include "frontend/parser.h"
#include "fuzz/targets.h"
#include "libraries/replacement_table.h"
#include "support/counted_text.h"
#include "support/tree_source.h"
#include "unit/tree_text.h"

#include <algorithm>
#include <optional>
#include <set>

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

// Another program, of names that sources use: nothing of it may be left when the next is
// translated.
const AST& otherProgram() {
    static const std::unique_ptr<AST> program = parse(
        "using type x = Point; using type item9 = int;"
        "class Point { int x; int start() { return x; } }"
        "class Shape { value a; void click() { } }"
        "void total(int a, Point b) { Point s = Point { x = 1 }; all = {1}; s.start(); }"
        "void start(string title) { double x = 1; }"
        "vorla Other { button a { text = \"a\"; background = \"#FF0000\"; on click { total(1); } }"
        " radio b { group = \"g\"; } listbox items { items = {\"a\"}; } }"
        "Other.script { void print(int max) { when (max) { is int -> 1; } defer a; } }");
    require(program != nullptr, "the other program parses");
    return *program;
}

// The numbers that stand behind a mark.
std::set<std::string_view> numbersBehind(std::string_view mark, std::string_view text) {
    std::set<std::string_view> numbers;
    for (std::size_t at = text.find(mark); at != text.npos; at = text.find(mark, at)) {
        at += mark.size();
        const std::size_t end = text.find_first_not_of("0123456789", at);
        if (end != at) numbers.insert(text.substr(at, end - at));
    }
    return numbers;
}

// No number of a counter is given twice, unless the source itself has such words.
void checkNumbersAreNew(const AST& program, std::string_view first, std::string_view second) {
    for (const std::string_view mark : {"(HMENU)", "__when_target_", "__dguard_"}) {
        const std::set<std::string_view> earlier = numbersBehind(mark, first);
        const std::set<std::string_view> later = numbersBehind(mark, second);
        const bool areNew = std::none_of(later.begin(), later.end(), [&](std::string_view number) {
            return earlier.contains(number);
        });
        require(areNew || sourceOf(program).find(mark) != std::string::npos,
                "a second translation gives numbers of its own");
    }
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
    checkNumbersAreNew(program, *first, *second);
    Translator busy(table);
    require(busy.translate(otherProgram()).has_value(), "the other program is translated");
    const std::optional<std::string> behind = busy.translate(program);
    require(behind && differInCountersOnly(*first, *behind),
            "a translation behind another one differs in its counters only");
}

} // namespace Orvane::Fuzzing
