#include "frontend/lexer.h"
#include "parsing.h"

#include <gtest/gtest.h>

#include <stdexcept>

namespace Orvane {
namespace {

using namespace std::string_literals;
using Testing::repeated;

// "kind:text@line:column" for each token but the end, blanks between them.
std::string tokensOf(const std::string& source) {
    RecordingConsole console;
    Lexer lexer(source, console);
    std::string text;
    for (const Token& token : lexer.tokenize()) {
        if (token.type == TokenType::EndOfInput) break;
        if (!text.empty()) text += " ";
        text += std::to_string(numberOf(token.type)) + ":" + std::string(token.text()) + "@" +
                std::to_string(token.line) + ":" + std::to_string(token.column);
    }
    return text;
}

// The decoded content of the first token.
std::string contentOf(const std::string& source) {
    RecordingConsole console;
    Lexer lexer(source, console);
    return std::string(lexer.tokenize().at(0).text());
}

std::string messagesOf(const std::string& source) {
    RecordingConsole console;
    Lexer lexer(source, console);
    lexer.tokenize();
    return console.text();
}

TEST(Lexer, EmptySourceIsOneEndToken) {
    RecordingConsole console;
    Lexer lexer("", console);
    const auto tokens = lexer.tokenize();
    ASSERT_EQ(tokens.size(), 1U);
    EXPECT_EQ(numberOf(tokens[0].type), 78);
    EXPECT_EQ(tokens[0].text(), "");
    EXPECT_EQ(tokens[0].line, 1);
    EXPECT_EQ(tokens[0].column, 1);
}

TEST(Lexer, EndTokenStandsBehindTheLastCharacter) {
    RecordingConsole console;
    Lexer lexer("a\n  b ", console);
    const auto tokens = lexer.tokenize();
    ASSERT_EQ(tokens.size(), 3U);
    EXPECT_EQ(tokens[2].line, 2);
    EXPECT_EQ(tokens[2].column, 5);
}

TEST(Lexer, OnlyOneEndTokenIsWrittenWithoutFinalNewline) {
    RecordingConsole console;
    Lexer lexer("x", console);
    EXPECT_EQ(lexer.tokenize().size(), 2U);
}

TEST(Lexer, ColumnsCountBytesAndTabsAsOne) {
    EXPECT_EQ(tokensOf("\ta b"), "44:a@1:2 44:b@1:4");
    EXPECT_EQ(tokensOf("\"\xC3\xA4\" b"), "47:\xC3\xA4@1:1 44:b@1:6");
}

TEST(Lexer, CarriageReturnsAreBlanks) {
    EXPECT_EQ(tokensOf("a\r\nb\r\n"), "44:a@1:1 44:b@2:1");
    EXPECT_EQ(tokensOf("a\rb"), "44:a@1:1 44:b@1:3");
}

TEST(Lexer, EveryBlankOfTheCLocaleSeparates) {
    EXPECT_EQ(tokensOf("a \t\v\f\r\nb"), "44:a@1:1 44:b@2:1");
}

TEST(LexerComments, LineCommentEndsBeforeTheNewline) {
    EXPECT_EQ(tokensOf("a//x\nb"), "44:a@1:1 44:b@2:1");
    EXPECT_EQ(tokensOf("a // x"), "44:a@1:1");
    EXPECT_EQ(tokensOf("//"), "");
}

TEST(LexerComments, LineCommentEndsBeforeAZeroByte) {
    EXPECT_EQ(tokensOf("//a\0b"s), "79:\0@1:4 44:b@1:5"s);
}

TEST(LexerComments, BlockCommentsDoNotNest) {
    EXPECT_EQ(tokensOf("a/* /* */b"), "44:a@1:1 44:b@1:10");
    EXPECT_EQ(tokensOf("/*\n\n*/ b"), "44:b@3:4");
    EXPECT_EQ(tokensOf("/***/b"), "44:b@1:6");
    EXPECT_EQ(tokensOf("/*\0*/b"s), "44:b@1:6");
}

TEST(LexerComments, SlashStarSlashIsStillOpen) { EXPECT_EQ(tokensOf("/*/ b */c"), "44:c@1:9"); }

TEST(LexerComments, UnclosedBlockCommentRunsToTheEndSilently) {
    for (const char* source : {"a /* b", "a /*", "a /* *", "a /*/"}) {
        EXPECT_EQ(tokensOf(source), "44:a@1:1") << source;
        EXPECT_EQ(messagesOf(source), "") << source;
    }
}

TEST(LexerComments, LoneSlashIsAnOperator) {
    EXPECT_EQ(tokensOf("a / b"), "44:a@1:1 54:/@1:3 44:b@1:5");
    EXPECT_EQ(tokensOf("/"), "54:/@1:1");
}

TEST(LexerWords, RunsOfLettersDigitsAndUnderscores) {
    EXPECT_EQ(tokensOf("_a1 B_2"), "44:_a1@1:1 44:B_2@1:5");
    EXPECT_EQ(tokensOf("button Button"), "35:button@1:1 44:Button@1:8");
}

TEST(LexerWords, BytesFrom128AreUnknown) {
    EXPECT_EQ(tokensOf("a\xC3\xA4"), "44:a@1:1 79:\xC3@1:2 79:\xA4@1:3");
    EXPECT_EQ(tokensOf("\xEF\xBB\xBFx"), "79:\xEF@1:1 79:\xBB@1:2 79:\xBF@1:3 44:x@1:4");
    EXPECT_EQ(tokensOf("\xFF"), "79:\xFF@1:1");
}

TEST(LexerNumbers, PointNeedsADigitBehindIt) {
    EXPECT_EQ(tokensOf("1..5"), "45:1@1:1 66:..@1:2 45:5@1:4");
    EXPECT_EQ(tokensOf("1..10"), "45:1@1:1 66:..@1:2 45:10@1:4");
    EXPECT_EQ(tokensOf("3.x"), "45:3@1:1 65:.@1:2 44:x@1:3");
    EXPECT_EQ(tokensOf("3."), "45:3@1:1 65:.@1:2");
}

TEST(LexerNumbers, OnlyOnePointBelongsToANumber) {
    EXPECT_EQ(tokensOf("1.2.3"), "46:1.2@1:1 65:.@1:4 45:3@1:5");
}

TEST(LexerNumbers, ThereAreNoOtherForms) {
    EXPECT_EQ(tokensOf("0x10"), "45:0@1:1 44:x10@1:2");
    EXPECT_EQ(tokensOf("1e5"), "45:1@1:1 44:e5@1:2");
    EXPECT_EQ(tokensOf(".5"), "65:.@1:1 45:5@1:2");
    EXPECT_EQ(tokensOf("-5"), "52:-@1:1 45:5@1:2");
}

TEST(LexerNumbers, LargestIntegerFits) {
    EXPECT_EQ(tokensOf("2147483647"), "45:2147483647@1:1");
    EXPECT_EQ(tokensOf("000000000000000007"), "45:000000000000000007@1:1");
}

TEST(LexerNumbers, IntegersBeyond32BitsThrow) {
    EXPECT_THROW(tokensOf("2147483648"), std::out_of_range);
    EXPECT_THROW(tokensOf("a = 99999999999999999999;"), std::out_of_range);
}

TEST(LexerNumbers, DoublesBeyondTheirRangeThrow) {
    EXPECT_EQ(tokensOf(repeated("9", 308) + ".5"), "46:" + repeated("9", 308) + ".5@1:1");
    EXPECT_THROW(tokensOf(repeated("9", 400) + ".5"), std::out_of_range);
    EXPECT_THROW(tokensOf("0." + repeated("0", 400) + "1"), std::out_of_range);
}

TEST(LexerNumbers, MillionsOfDigitsAreReadInOnePass) {
    const std::string zeros = repeated("0", 5'000'000);
    EXPECT_EQ(tokensOf(zeros).size(), zeros.size() + 7);
    EXPECT_EQ(tokensOf("1." + zeros).size(), zeros.size() + 9);
}

TEST(LexerStrings, ContentIsWithoutQuotes) {
    EXPECT_EQ(tokensOf("\"ab\" \"\""), "47:ab@1:1 47:@1:6");
    EXPECT_EQ(contentOf("\"// /* # '\""), "// /* # '");
}

TEST(LexerStrings, EscapesAreDecoded) {
    EXPECT_EQ(contentOf(R"("a\\b")"), "a\\b");
    EXPECT_EQ(contentOf(R"("\n\r\t")"), "\n\r\t");
    EXPECT_EQ(contentOf(R"("\"\'")"), "\"'");
    EXPECT_EQ(contentOf(R"("x\"y\"z")"), "x\"y\"z");
}

TEST(LexerStrings, UnknownEscapesLoseTheBackslash) {
    EXPECT_EQ(contentOf(R"("a\qb\0")"), "aqb0");
    EXPECT_EQ(contentOf("\"a\\\nb\""), "a\nb");
}

TEST(LexerStrings, CodePointsBecomeUtf8) {
    EXPECT_EQ(contentOf(R"("\u0041")"), "A");
    EXPECT_EQ(contentOf(R"("\u00e4\u00E4")"), "\xC3\xA4\xC3\xA4");
    EXPECT_EQ(contentOf(R"("\u20AC")"), "\xE2\x82\xAC");
    EXPECT_EQ(contentOf(R"("a\u0000b")"), "a\0b"s);
    EXPECT_EQ(contentOf(R"("\u00412")"), "A2");
}

TEST(LexerStrings, SurrogatePairsAreOneCodePoint) {
    EXPECT_EQ(contentOf(R"("\uD83D\uDE00")"), "\xF0\x9F\x98\x80");
}

TEST(LexerStrings, LoneSurrogatesAreReplaced) {
    const std::string replaced = "\xEF\xBF\xBD";
    EXPECT_EQ(contentOf(R"("\uD83D")"), replaced);
    EXPECT_EQ(contentOf(R"("\uDE00x")"), replaced + "x");
    EXPECT_EQ(contentOf(R"("\uD83Dx\uDE00")"), replaced + "x" + replaced);
    EXPECT_EQ(contentOf(R"("\uD83D\u0041")"), replaced + "A");
    EXPECT_EQ(contentOf(R"("\uD83D\uD83D\uDE00")"), replaced + "\xF0\x9F\x98\x80");
    EXPECT_EQ(contentOf(R"("\uD83D\uDE0")"), replaced + "uDE0");
}

TEST(LexerStrings, CodePointWithoutFourDigitsIsTheLetterU) {
    EXPECT_EQ(contentOf(R"("\u")"), "u");
    EXPECT_EQ(contentOf(R"("\u12G4")"), "u12G4");
    EXPECT_EQ(contentOf(R"("\u123")"), "u123");
    EXPECT_EQ(contentOf(R"("\u12)"), "u12");
}

TEST(LexerStrings, LineBreaksInsideAreCounted) {
    EXPECT_EQ(tokensOf("\"a\nb\" c"), "47:a\nb@1:1 44:c@2:4");
    EXPECT_EQ(tokensOf("\"\\t\n\" c"), "47:\t\n@1:1 44:c@2:3");
}

TEST(LexerStrings, Utf8PassesUntouched) {
    EXPECT_EQ(contentOf("\"gr\xC3\xBC\xC3\x9F \xFF\""), "gr\xC3\xBC\xC3\x9F \xFF");
}

TEST(LexerStrings, UnterminatedStringIsReportedAndKept) {
    EXPECT_EQ(messagesOf("x\n  \"abc"), "Error: Unterminated string literal at line 2, col 3\n");
    EXPECT_EQ(tokensOf("\"abc"), "47:abc@1:1");
    EXPECT_EQ(tokensOf("\""), "47:@1:1");
    EXPECT_EQ(tokensOf("\"a\\"), "47:a@1:1");
    EXPECT_EQ(messagesOf("\"a\\"), "Error: Unterminated string literal at line 1, col 1\n");
    EXPECT_EQ(messagesOf("\"a\\\""), "Error: Unterminated string literal at line 1, col 1\n");
}

TEST(LexerStrings, ZeroByteEndsAStringAndIsATokenOfItsOwn) {
    EXPECT_EQ(tokensOf("\"ab\0c"s), "47:ab@1:1 79:\0@1:4 44:c@1:5"s);
    EXPECT_EQ(messagesOf("\"ab\0c"s), "Error: Unterminated string literal at line 1, col 1\n");
    EXPECT_EQ(tokensOf("\"a\\\0c"s), "47:a@1:1 79:\0@1:4 44:c@1:5"s);
}

TEST(LexerCharacters, OneCharacterBetweenQuotes) {
    EXPECT_EQ(tokensOf("'a'"), "48:a@1:1");
    EXPECT_EQ(tokensOf("'\"'"), "48:\"@1:1");
    EXPECT_EQ(messagesOf("'a' '\"'"), "");
}

TEST(LexerCharacters, EscapesAreThoseOfStrings) {
    EXPECT_EQ(contentOf(R"('\n')"), "\n");
    EXPECT_EQ(contentOf(R"('\'')"), "'");
    EXPECT_EQ(contentOf(R"('\\')"), "\\");
    EXPECT_EQ(contentOf(R"('\q')"), "q");
    EXPECT_EQ(contentOf(R"('\u20AC')"), "\xE2\x82\xAC");
    EXPECT_EQ(contentOf(R"('\uD83D\uDE00')"), "\xF0\x9F\x98\x80");
    EXPECT_EQ(messagesOf(R"('\n' '\'' '\\' '\u20AC' '\uD83D\uDE00')"), "");
}

TEST(LexerCharacters, AUtf8SequenceIsOneCharacter) {
    for (const char* sequence : {"\xC3\xA4", "\xE2\x82\xAC", "\xF0\x9F\x98\x80"}) {
        const std::string source = "'" + std::string(sequence) + "'";
        EXPECT_EQ(contentOf(source), sequence);
        EXPECT_EQ(messagesOf(source), "");
    }
}

TEST(LexerCharacters, BrokenUtf8KeepsWhatThereIs) {
    EXPECT_EQ(tokensOf("'\xE2\x82' x"), "48:\xE2\x82@1:1 44:x@1:6");
    EXPECT_EQ(tokensOf("'\x80' x"), "48:\x80@1:1 44:x@1:5");
}

TEST(LexerCharacters, MissingQuoteIsAWarningAndNothingIsSkipped) {
    EXPECT_EQ(messagesOf("\n'ab'"), "Warning: Missing closing quote in char literal at line 2\n"
                                    "Error: Unterminated character literal at line 2, col 4\n");
    EXPECT_EQ(tokensOf("'ab c"), "48:a@1:1 44:b@1:3 44:c@1:5");
}

TEST(LexerCharacters, EmptyLiteralReadsTheSecondQuote) {
    EXPECT_EQ(tokensOf("'' x"), "48:'@1:1 44:x@1:4");
    EXPECT_EQ(messagesOf("'' x"), "Warning: Missing closing quote in char literal at line 1\n");
}

TEST(LexerCharacters, CutByTheEndOnlyTheErrorIsPrinted) {
    for (const char* source : {"'", "'a", "'\\", "'\\n"})
        EXPECT_EQ(messagesOf(source), "Error: Unterminated character literal at line 1, col 1\n")
            << source;
    EXPECT_EQ(tokensOf("'a"), "48:a@1:1");
    EXPECT_EQ(tokensOf("'"), "48:@1:1");
}

TEST(LexerCharacters, LineBreaksAndZeroBytesCount) {
    EXPECT_EQ(tokensOf("'\n' x"), "48:\n@1:1 44:x@2:3");
    EXPECT_EQ(tokensOf("'\0' x"s), "48:\0@1:1 44:x@1:5"s);
}

TEST(LexerColours, AnyNumberOfHexadecimalDigits) {
    EXPECT_EQ(tokensOf("#FFF #FFFFFF #aB9"), "49:#FFF@1:1 49:#FFFFFF@1:6 49:#aB9@1:14");
    EXPECT_EQ(tokensOf("#"), "49:#@1:1");
    EXPECT_EQ(tokensOf("#12G"), "49:#12@1:1 44:G@1:4");
}

TEST(LexerOperators, PairsAreTakenGreedily) {
    EXPECT_EQ(tokensOf("=="), "56:==@1:1");
    EXPECT_EQ(tokensOf("= ="), "50:=@1:1 50:=@1:3");
    EXPECT_EQ(tokensOf("==="), "56:==@1:1 50:=@1:3");
    EXPECT_EQ(tokensOf("..."), "66:..@1:1 65:.@1:3");
    EXPECT_EQ(tokensOf("->-"), "68:->@1:1 52:-@1:3");
    EXPECT_EQ(tokensOf("!=<=>="), "57:!=@1:1 60:<=@1:3 61:>=@1:5");
    EXPECT_EQ(tokensOf(">>"), "59:>@1:1 59:>@1:2");
}

TEST(LexerOperators, LoneAmpersandAndBarAreUnknown) {
    EXPECT_EQ(tokensOf("& |"), "79:&@1:1 79:|@1:3");
    EXPECT_EQ(tokensOf("&&& |||"), "62:&&@1:1 79:&@1:3 63:||@1:5 79:|@1:7");
}

TEST(LexerOperators, UnknownCharactersAreSilentTokens) {
    EXPECT_EQ(tokensOf("@ $ ~"), "79:@@1:1 79:$@1:3 79:~@1:5");
    EXPECT_EQ(messagesOf("@ $ ~ `"), "");
    EXPECT_EQ(tokensOf("a\0b"s), "44:a@1:1 79:\0@1:2 44:b@1:3"s);
}

TEST(LexerSize, OneVeryLongLineKeepsItsColumns) {
    const std::string source = repeated("x ", 2'000'000) + "y";
    RecordingConsole console;
    Lexer lexer(source, console);
    const auto tokens = lexer.tokenize();
    ASSERT_EQ(tokens.size(), 2'000'002U);
    EXPECT_EQ(tokens[2'000'000].column, 4'000'001);
}

TEST(LexerSize, BlanksAndLongLiteralsAreReadInOnePass) {
    EXPECT_EQ(tokensOf(std::string(20'000'000, ' ')), "");
    EXPECT_EQ(tokensOf(std::string(5'000'000, '\n') + "a"), "44:a@5000001:1");
    EXPECT_EQ(contentOf("\"" + repeated("\\n", 2'000'000) + "\"").size(), 2'000'000U);
    EXPECT_EQ(tokensOf("/*" + std::string(5'000'000, '*')), "");
}

TEST(LexerSize, DecodedTextsStayInPlace) {
    RecordingConsole console;
    Lexer lexer(repeated("\"a\\tb\" ", 10'000), console);
    const auto tokens = lexer.tokenize();
    ASSERT_EQ(tokens.size(), 10'001U);
    for (std::size_t index = 0; index < 10'000; ++index) ASSERT_EQ(tokens[index].text(), "a\tb");
}

// Content is decoded in place; what stands behind a literal must not notice.
TEST(LexerEscapes, LeaveThePositionsOfWhatFollows) {
    EXPECT_EQ(tokensOf("\"\\n\\t\\\\\" a\n'\\n' b"), "47:\n\t\\@1:1 44:a@1:10 48:\n@2:1 44:b@2:6");
}

TEST(LexerEscapes, BrokenLinesInsideATextAreCounted) {
    EXPECT_EQ(tokensOf("\"\\q\\\nx\ny\" z"), "47:q\nx\ny@1:1 44:z@3:4");
}

TEST(LexerEscapes, CodePointsOfEverySize) {
    EXPECT_EQ(contentOf("\"\\u0041\\u00e4\\u20ac\\ud83d\\ude00!\""),
              "A\xC3\xA4\xE2\x82\xAC\xF0\x9F\x98\x80!");
}

TEST(LexerEscapes, CutOffAtTheEndOfTheSource) {
    for (const char* source : {"\"\\", "\"\\u", "\"\\u12", "\"a\\ud83d\\u", "'\\", "'\\u1"}) {
        RecordingConsole console;
        Lexer lexer(source, console);
        EXPECT_EQ(lexer.tokenize().size() > 1, true) << source;
        EXPECT_NE(console.text(), "") << source;
    }
}

TEST(LexerOperators, APairAtTheVeryEndIsOneToken) {
    EXPECT_EQ(tokensOf("a=="), "44:a@1:1 56:==@1:2");
    EXPECT_EQ(tokensOf("a=&"), "44:a@1:1 50:=@1:2 79:&@1:3");
}

TEST(Lexer, ZeroBytesBetweenTokensAreUnknownCharacters) {
    EXPECT_EQ(tokensOf(std::string("a\0b", 3)),
              "44:a@1:1 79:" + std::string(1, '\0') + "@1:2 44:b@1:3");
    EXPECT_EQ(tokensOf(std::string("//c\0d", 5)), "79:" + std::string(1, '\0') + "@1:4 44:d@1:5");
}

} // namespace
} // namespace Orvane
