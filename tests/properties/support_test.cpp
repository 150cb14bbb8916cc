// The tools that the properties are checked with.
#include "frontend/lexer.h"
#include "fuzz/source_checks.h"
#include "fuzz/targets.h"
#include "support/counted_text.h"
#include "support/program_generator.h"
#include "support/token_pieces.h"
#include "support/tree_source.h"

#include <gtest/gtest.h>

namespace {

using namespace Orvane;

TEST(TreeSource, WritesOnlyTheBracketsThatTheTreeNeeds) {
    const auto rewritten = [](const std::string& expression) {
        const std::unique_ptr<AST> program = Fuzzing::parse("f() { " + expression + "; }");
        return program ? sourceOf(*program) : "refused";
    };
    const auto body = [](const std::string& expression) {
        return "f() {\n" + expression + ";\n}\n";
    };
    EXPECT_EQ(rewritten("(a + (b * c)) - d"), body("a + b * c - d"));
    EXPECT_EQ(rewritten("a - (b - c)"), body("a - (b - c)"));
    EXPECT_EQ(rewritten("(a + b) * c"), body("(a + b) * c"));
    EXPECT_EQ(rewritten("!(a == b)"), body("!(a == b)"));
    EXPECT_EQ(rewritten("1 + (a).name"), body("(1 + a).name"));
    EXPECT_EQ(rewritten("(a.b)"), body("a.b"));
    EXPECT_EQ(rewritten("x = (c ? 1 : 2)"), body("x = c ? 1 : 2"));
    EXPECT_EQ(rewritten("({1} + 2)"), body("({1} + 2)"));
    EXPECT_EQ(rewritten("[a, b]"), body("({a, b})"));
    EXPECT_EQ(rewritten("[a, b, c]"), body("[a .. b, c]"));
}

TEST(TreeSource, EscapesTextsAndKeepsAllDigits) {
    const std::unique_ptr<AST> program =
        Fuzzing::parse("f() { \"a\\\"b\\\\c\\u00007\"; 0.1; 2.0; #F00; }");
    ASSERT_NE(program, nullptr);
    EXPECT_EQ(sourceOf(*program), "f() {\n\"a\\\"b\\\\c\\u00007\";\n0.1;\n2.0;\n#F00;\n}\n");
}

TEST(TokenPieces, EndWhereTheNextTokenBegins) {
    const std::string source = "  a=\"x\ny\" // c\n+1..2 ";
    RecordingConsole console;
    Lexer lexer(source, console);
    const std::vector<Token> tokens = lexer.tokenize();
    const std::vector<std::string_view> expected = {"a",  "=", "\"x\ny\" // c\n", "+", "1",
                                                    "..", "2 "};
    EXPECT_EQ(piecesOf(source, tokens), expected);
}

TEST(TokenPieces, HaveTheTextOfTheirKind) {
    const auto isRight = [](TokenType type, std::string_view text) {
        return isSpelledRight(Token(type, text, 1, 1));
    };
    EXPECT_TRUE(isRight(TokenType::RightBrace, "}"));
    EXPECT_FALSE(isRight(TokenType::RightBrace, "};"));
    EXPECT_FALSE(isRight(TokenType::Identifier, "a b"));
    EXPECT_FALSE(isRight(TokenType::FloatLiteral, "1.x"));
    EXPECT_FALSE(isRight(TokenType::Unknown, "/* a */"));
    EXPECT_TRUE(isRight(TokenType::StringLiteral, "a b"));
}

TEST(TokenPieces, HoldOneTokenAndFiller) {
    EXPECT_TRUE(isFiller(" \n/* \" */ // a\n\t"));
    EXPECT_TRUE(isFiller("/* no end"));
    EXPECT_FALSE(isFiller(" a"));
    EXPECT_FALSE(isFiller("/* a */ /"));
    EXPECT_FALSE(isFiller(std::string_view("// a\0b", 6)));
    const auto holds = [](const std::string& piece) {
        RecordingConsole console;
        Lexer lexer(piece, console);
        return holdsNothingElse(piece, lexer.tokenize().front());
    };
    EXPECT_TRUE(holds("name /* a */"));
    EXPECT_FALSE(holds("name;"));
    EXPECT_TRUE(holds("\"a\\\"b\" // c"));
    EXPECT_FALSE(holds("\"a\" b"));
    EXPECT_TRUE(holds("'\\uD83D\\uDE00' "));
    EXPECT_TRUE(holds("'\\u00e9'"));
    EXPECT_TRUE(holds("'\\u' "));
    EXPECT_TRUE(holds("'\\n'\n"));
    EXPECT_TRUE(holds("'\u00e9' "));
    EXPECT_FALSE(holds("'a' ; "));
    EXPECT_FALSE(holds("'\\n' ; "));
}

TEST(CountedText, AllowsTwoCountersToGoOn) {
    EXPECT_TRUE(differInCountersOnly("", ""));
    EXPECT_TRUE(differInCountersOnly("a_9 = 1001; b_2 7", "a_10 = 1005; b_3 7"));
    EXPECT_FALSE(differInCountersOnly("1 1 1", "2 3 4"));
    EXPECT_FALSE(differInCountersOnly("a 2", "a 1"));
    EXPECT_FALSE(differInCountersOnly("a 1 b", "a 1 c"));
    EXPECT_FALSE(differInCountersOnly("a 1", "a "));
    EXPECT_FALSE(differInCountersOnly("a", "a 1"));
}

TEST(Choices, OfBytesEndInZeroes) {
    const std::uint8_t bytes[] = {7, 200, 1, 2};
    ByteChoices choices(bytes);
    EXPECT_EQ(choices.below(1), 0U); // takes no byte
    EXPECT_EQ(choices.below(5), 2U);
    EXPECT_EQ(choices.below(256), 200U);
    EXPECT_EQ(choices.below(1000), 258U);
    EXPECT_EQ(choices.below(1000), 0U);
    EXPECT_FALSE(choices.oneIn(1));
}

TEST(Choices, WithoutBytesEveryProgramEnds) {
    for (const ProgramStyle style : {ProgramStyle::sensible, ProgramStyle::wild}) {
        ByteChoices choices({});
        EXPECT_LT(generateProgram(style, choices).size(), 1000U);
    }
}

TEST(FuzzTargets, ABrokenPromiseIsAViolation) {
    EXPECT_THROW(Fuzzing::require(false, "never"), Fuzzing::Violation);
    EXPECT_NO_THROW(Fuzzing::require(true, "always"));
}

} // namespace
