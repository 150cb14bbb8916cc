// The parser's way through the tokens, its errors and its limits.
#include "parsing.h"

#include <gtest/gtest.h>

namespace Orvane {
namespace {

using namespace Testing;
using namespace std::string_literals;

Token token(TokenType type, std::string_view text, int line) { return {type, text, line, 1}; }

TEST(ParserTokens, AListWithoutEndTokenEndsAtLineZero) {
    RecordingConsole console;
    Parser parser({token(TokenType::Identifier, "a", 7)}, console);
    try {
        parser.parseStatement();
        FAIL() << "no exception";
    } catch (const std::runtime_error& error) {
        EXPECT_STREQ(error.what(), "Expected ';' at line 0");
    }
    EXPECT_EQ(console.text(), "[PARSER ERROR] Expected 75, got 78 at line 0: Expected ';'\n");
}

TEST(ParserTokens, NoTokensAtAllIsAnEmptyProgram) {
    RecordingConsole console;
    EXPECT_EQ(textOf(*Parser({}, console).parse()), "");
    EXPECT_THROW(Parser({}, console).parseStatement(), std::runtime_error);
}

TEST(ParserTokens, TheEndIsReadAgainAndAgain) {
    EXPECT_EQ(statementError("f(\n"), "Expected expression at line 2");
    EXPECT_EQ(statementError("map<"), "Expected variable name at line 1");
    EXPECT_EQ(statementError("map<<int"), "Expected variable name at line 1");
    EXPECT_EQ(programError("import"), unmet(75, 78, "Expected ';'"));
}

TEST(ParserErrors, FailedExpectationIsPrintedAndThrown) {
    EXPECT_EQ(statementError("\n\nx = 1\n"),
              "[PARSER ERROR] Expected 75, got 78 at line 4: Expected ';'\n"
              "Expected ';' at line 4");
}

TEST(ParserErrors, OtherErrorsAreOnlyThrown) {
    EXPECT_EQ(statementError("\nx = ;"), "Expected expression at line 2");
}

TEST(ParserErrors, TheFirstErrorEndsTheParse) {
    EXPECT_EQ(programError("vorla { } vorla { }"), unmet(44, 69, "Expected vorla name"));
}

TEST(ParserTree, DoesNotDependOnLexerOrTokens) {
    RecordingConsole console;
    std::unique_ptr<AST> program;
    {
        Lexer lexer("vorla Main { title = \"some longer text than fits in place\" } "
                    "f(int first) { Point second = have(C, .third); x.y = #FF0000; }",
                    console);
        Parser parser(lexer.tokenize(), console);
        program = parser.parse();
    }
    EXPECT_EQ(textOf(*program), "(vorla Main (title \"some longer text than fits in place\")) "
                                "(func - f ((first int)) (var Point second (have C .third)) "
                                "(expr (= (. x y) #FF0000)))");
}

// ---- Nesting ----

constexpr int deep = 100'000;

// A source of `count` openers, something in the middle and as many closers.
std::string nested(const std::string& open, const std::string& middle, const std::string& close,
                   std::size_t count) {
    return repeated(open, count) + middle + repeated(close, count);
}

struct NestedForm {
    const char* open;
    const char* middle;
    const char* close;
};

constexpr NestedForm expressionForms[] = {
    {"(", "1", ")"},        {"{", "1", "}"},
    {"[", "1", "]"},        {"f(", "1", ")"},
    {"a[", "1", "]"},       {"-", "1", ""},
    {"!", "1", ""},         {"a = ", "1", ""},
    {"c ? 1 : ", "1", ""},  {"c ? ", "1", " : 2"},
    {"P { x = ", "1", "}"}, {"is(", "1", ", int)"},
    {"[1..", "2", "]"},     {"[x for x in ", "xs", "]"},
    {"a.b(", "1", ")"},
};

constexpr NestedForm statementForms[] = {
    {"{", "", "}"},
    {"if (c) {", "", "}"},
    {"if (c) ", "f();", ""},
    {"if (c) f(); else {", "", "}"},
    {"while (c) {", "", "}"},
    {"while (c) ", "f();", ""},
    {"for (x : xs) ", "f();", ""},
    {"for (x : xs) {", "", "}"},
    {"defer ", "f();", ""},
    {"defer {", "", "}"},
    {"try {", "", "} catch (e) {}"},
    {"try {} catch (e) {", "", "}"},
};

TEST(ParserNesting, NineHundredLevelsOfSourceAreFollowed) {
    for (const NestedForm& form : expressionForms) {
        const std::string source = nested(form.open, form.middle, form.close, 900);
        EXPECT_EQ(statementError("x = " + source + ";"), "(no error)") << form.open;
    }
    for (const NestedForm& form : statementForms) {
        const std::string source = nested(form.open, form.middle, form.close, 900);
        EXPECT_EQ(statementError(source), "(no error)") << form.open;
    }
}

TEST(ParserNesting, DeeperSourceIsAnError) {
    for (const NestedForm& form : expressionForms) {
        const std::string source = nested(form.open, form.middle, form.close, deep);
        EXPECT_EQ(expressionError(source), "Expected less nesting at line 1") << form.open;
    }
    for (const NestedForm& form : statementForms) {
        const std::string source = nested(form.open, form.middle, form.close, deep);
        EXPECT_EQ(statementError(source), "Expected less nesting at line 1") << form.open;
    }
}

TEST(ParserNesting, UnclosedBracketsAreAnErrorToo) {
    for (const char* open : {"(", "[", "{", "f(", "a[", "P { x =", "-", "c ?", "[1..", "is("})
        EXPECT_EQ(expressionError(repeated(open, deep)), "Expected less nesting at line 1") << open;
    EXPECT_EQ(programError("f() " + repeated("{", deep)), "Expected less nesting at line 1");
}

TEST(ParserNesting, TheLimitIsOneThousandLevels) {
    const std::size_t limit = Parser::maxNesting;
    EXPECT_EQ(limit, 1000U);
    EXPECT_EQ(expressionError(nested("(", "1", ")", limit)), "(no error)");
    EXPECT_EQ(expressionError(nested("(", "1", ")", limit + 1)), "Expected less nesting at line 1");
    EXPECT_EQ(statementError(nested("if (c) {", "", "}", limit)), "(no error)");
    EXPECT_EQ(statementError(nested("if (c) {", "", "}", limit + 1)),
              "Expected less nesting at line 1");
}

TEST(ParserNesting, TheErrorNamesTheLineOfTheOpener) {
    EXPECT_EQ(expressionError(repeated("(\n", 1001)), "Expected less nesting at line 1001");
}

TEST(ParserNesting, LevelsThatAreClosedDoNotCount) {
    EXPECT_EQ(statementError("{" + repeated("x = ((1));", 5000) + "}"), "(no error)");
    EXPECT_EQ(statementError("{" + repeated("if (a) { b(); } else { c(); }", 5000) + "}"),
              "(no error)");
}

TEST(ParserNesting, SkippedTypeArgumentsHaveNoLimit) {
    EXPECT_EQ(statementText("map" + repeated("<", deep) + repeated(">", deep) + " m;"),
              "(var map m)");
}

// ---- Long sources that are not nested ----

// The number of nodes of this class down the left side.
std::size_t leftLength(const Expr* expr) {
    std::size_t length = 0;
    for (;;) {
        if (const auto* binary = nodeCast<BinaryExpr>(expr))
            expr = binary->left.get();
        else if (const auto* index = nodeCast<IndexExpr>(expr))
            expr = index->object.get();
        else if (const auto* call = nodeCast<CallExpr>(expr))
            expr = call->callee.get();
        else
            return length;
        ++length;
    }
}

TEST(ParserLength, ChainsOfOneRowMayBeLong) {
    for (const std::string link :
         {" + a", " - a", " * a", " < a", " == a", ".b", "[0]", "(1)", ".b(1)[0]"}) {
        Parsing parsing("a" + repeated(link, deep));
        const auto expr = parsing.parser.parseExpression();
        EXPECT_EQ(leftLength(expr.get()), link == ".b(1)[0]" ? 3U * deep : 1U * deep) << link;
    }
}

TEST(ParserLength, TrailingMembersMayBeLong) {
    Parsing parsing("(a)" + repeated(".b", deep));
    EXPECT_EQ(leftLength(parsing.parser.parseExpression().get()), 1U * deep);
}

TEST(ParserLength, LaddersOfElseIfsMayBeLong) {
    PositionTable positions;
    for (PositionTable* table : {static_cast<PositionTable*>(nullptr), &positions}) {
        Parsing parsing("if (a) f(); " + repeated("else if (a) f(); ", deep) + "else g();", table);
        const auto stmt = parsing.parser.parseStatement();
        std::size_t rungs = 0;
        const Stmt* last = stmt.get();
        for (const auto* rung = nodeCast<IfStmt>(last); rung; rung = nodeCast<IfStmt>(last)) {
            ++rungs;
            ASSERT_EQ(rung->thenBranch.size(), 1U);
            ASSERT_EQ(rung->elseBranch.size(), 1U);
            last = rung->elseBranch[0].get();
        }
        EXPECT_EQ(rungs, deep + 1U);
        EXPECT_EQ(textOf(last), "(expr (call g))");
    }
}

TEST(ParserLength, BodiesAndListsMayBeLong) {
    Parsing body("{" + repeated("f();", deep) + "}");
    EXPECT_EQ(nodeCast<BlockStmt>(body.parser.parseStatement())->statements.size(), 1U * deep);
    Parsing list("{1" + repeated(", 1", deep) + "}");
    EXPECT_EQ(nodeCast<ArrayExpr>(list.parser.parseExpression())->elements.size(), deep + 1U);
    Parsing program(repeated("f(){}", deep));
    EXPECT_EQ(program.parser.parse()->functions.size(), 1U * deep);
}

// Each word asks whether a component begins here; answering must not walk to the end every time.
TEST(ParserLength, WordsInAWindowAreLookedAtOnce) {
    constexpr std::size_t words = 300'000;
    EXPECT_EQ(programText("vorla M { " + repeated("a ", words) + "}"), "(vorla M)");
    EXPECT_EQ(programText("vorla M { " + repeated("button ", words) + "}"), "(vorla M)");
    EXPECT_EQ(programText("vorla M { " + repeated("a ", words) + "= 1 }"), "(vorla M (a 1))");
    EXPECT_EQ(programError("vorla M { " + repeated("a ", words) + "{ } }"),
              unmet(69, 44, "Expected '{'"));
    EXPECT_EQ(programText(repeated("a ", words)), "");
    EXPECT_EQ(programText("M.script { " + repeated("a ", words) + "}"), "(script)");
}

TEST(ParserInput, OddBytesAreSkippedAtTheTopLevel) {
    EXPECT_EQ(programText("\0\0 typename T; \xFF"s), "(typename T)");
    EXPECT_EQ(programText("\xEF\xBB\xBFtypename T;"), "(typename T)");
    EXPECT_EQ(programText("typename T;\r\ntypename U;\r\n"), "(typename T) (typename U)");
}

TEST(ParserTree, MayViewTheLexersText) {
    RecordingConsole console;
    Lexer lexer("f(speed) { print(\"a\\nb\"); }", console);
    const std::vector<Token> tokens = lexer.tokenize();
    const auto program = Parser(tokens, console, nullptr, Parser::Texts::viewed).parse();
    EXPECT_EQ(program->functions[0]->params[0].name.data(), tokens[2].text().data());
    EXPECT_EQ(textOf(*program), "(func - f ((speed -)) (expr (call print \"a\nb\")))");
    const auto copied = Parser(tokens, console).parse();
    EXPECT_NE(copied->functions[0]->params[0].name.data(), tokens[2].text().data());
    EXPECT_EQ(textOf(*copied), textOf(*program));
}

} // namespace
} // namespace Orvane
