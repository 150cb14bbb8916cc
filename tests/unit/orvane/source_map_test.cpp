#include "orvane/source_map.h"

#include "codegen/code_generator.h"
#include "parsing.h"

#include <gtest/gtest.h>

using namespace Orvane;

TEST(SourceMap, GivesTheInnermostNodeOfItsText) {
    SourceMap map;
    int outer = 0;
    int inner = 0;
    map.begin(&outer, GeneratedText::main, 10);
    map.begin(&inner, GeneratedText::main, 12);
    map.end(GeneratedText::main, 15);
    map.end(GeneratedText::main, 20);
    EXPECT_EQ(map.innermost(GeneratedText::main, 9), nullptr);
    EXPECT_EQ(map.innermost(GeneratedText::main, 10)->node, &outer);
    EXPECT_EQ(map.innermost(GeneratedText::main, 12)->node, &inner);
    EXPECT_EQ(map.innermost(GeneratedText::main, 15)->node, &outer);
    EXPECT_EQ(map.innermost(GeneratedText::main, 20), nullptr);
    EXPECT_EQ(map.innermost(GeneratedText::import, 12), nullptr);
}

namespace {

// A program generated with a map.
class MappedProgram {
public:
    explicit MappedProgram(const std::string& source, bool isObserved = true)
        : lexer(source, console), tokens(lexer.tokenize()),
          tree(Parser(tokens, console, &positions).parse()) {
        CodeGenerator generator(table, main, import, indentLevel);
        if (isObserved) generator.setObserver(&map);
        generator.generate(*tree, "", "", false, false);
    }

    // First and last token of the node that a piece of the generated text belongs to.
    std::string tokensAt(GeneratedText which, std::string_view piece, std::size_t behind = 0) {
        const std::string_view text = which == GeneratedText::main ? main.view() : import.view();
        const std::size_t at = text.find(piece);
        if (at == std::string_view::npos) return "(not written)";
        const auto* span = map.innermost(which, at + behind);
        const auto range = span ? positions.find(span->node) : std::nullopt;
        if (!range) return "(no node)";
        return std::string(tokens[range->first].text()) + " " +
               std::string(tokens[range->last].text());
    }

    std::string texts() const { return main.str() + import.str(); }

private:
    RecordingConsole console;
    Lexer lexer;
    std::vector<Token> tokens;
    PositionTable positions;
    std::unique_ptr<AST> tree;
    ReplacementTable table;
    TextStream main;
    TextStream import;
    int indentLevel = 0;
    SourceMap map;
};

const std::string program =
    "class Point { public int px; public int move(int by) { px = by + 1; } }\n"
    "int twice(int n) { return n * 2; }\n"
    "vorla Main { button go { on click { int a = 1; a = twice(a) - b; } } }\n";

} // namespace

TEST(SourceMap, ExpressionsOfAHandlerAreInTheMainText) {
    MappedProgram mapped(program);
    EXPECT_EQ(mapped.tokensAt(GeneratedText::main, "twice(a)"), "twice )");
    EXPECT_EQ(mapped.tokensAt(GeneratedText::main, "twice(a)", 6), "a a");
    EXPECT_EQ(mapped.tokensAt(GeneratedText::main, "- b"), "twice b");
    EXPECT_EQ(mapped.tokensAt(GeneratedText::main, "= (twice"), "a b");
    EXPECT_EQ(mapped.tokensAt(GeneratedText::main, "int a"), "int ;");
}

TEST(SourceMap, FunctionsAndMethodsAreInTheImportText) {
    MappedProgram mapped(program);
    EXPECT_EQ(mapped.tokensAt(GeneratedText::import, "n * 2"), "n n");
    EXPECT_EQ(mapped.tokensAt(GeneratedText::import, "n * 2", 2), "n 2");
    EXPECT_EQ(mapped.tokensAt(GeneratedText::import, "long long twice"), "int }");
    EXPECT_EQ(mapped.tokensAt(GeneratedText::import, "(by + 1)", 4), "by 1");
    EXPECT_EQ(mapped.tokensAt(GeneratedText::main, "HWND h_go"), "button }");
}

TEST(SourceMap, TextThatNoNodeGaveHasNone) {
    MappedProgram mapped(program);
    EXPECT_EQ(mapped.tokensAt(GeneratedText::import, "using namespace std"), "(no node)");
}

TEST(SourceMap, ObservationChangesNoByte) {
    const std::string chains = "value f(value a) { a.all = a[1].x + -2; a.all.go(1); return a; }\n";
    EXPECT_EQ(MappedProgram(chains + program).texts(),
              MappedProgram(chains + program, false).texts());
}
