#include "frontend/keywords.h"
#include "frontend/token.h"
#include "frontend/token_sets.h"
#include "parsing.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <string>

namespace Orvane {
namespace {

struct SpelledKind {
    int number;
    const char* source;
};

// One source text for every kind but the end token's; written out by hand, because the numbers are
// part of what users see.
constexpr SpelledKind spelledKinds[] = {
    {0, "vorla"},      {1, "script"}, {2, "class"},     {3, "typename"}, {4, "value"},
    {5, "int"},        {6, "double"}, {7, "string"},    {8, "bool"},     {9, "array"},
    {10, "container"}, {11, "map"},   {12, "function"}, {13, "macro"},   {14, "pointer"},
    {15, "import"},    {16, "using"}, {17, "on"},       {18, "is"},      {19, "return"},
    {20, "if"},        {21, "else"},  {22, "for"},      {23, "while"},   {24, "in"},
    {25, "where"},     {26, "try"},   {27, "catch"},    {28, "throw"},   {29, "private"},
    {30, "public"},    {31, "true"},  {32, "false"},    {33, "null"},    {34, "cpp"},
    {35, "type"},      {36, "defer"}, {37, "expect"},   {38, "therebe"}, {39, "have"},
    {40, "when"},      {41, "able"},  {42, "file"},     {43, "void"},    {44, "speed_2"},
    {45, "17"},        {46, "1.5"},   {47, "\"text\""}, {48, "'c'"},     {49, "#FFF"},
    {50, "="},         {51, "+"},     {52, "-"},        {53, "*"},       {54, "/"},
    {55, "%"},         {56, "=="},    {57, "!="},       {58, "<"},       {59, ">"},
    {60, "<="},        {61, ">="},    {62, "&&"},       {63, "||"},      {64, "!"},
    {65, "."},         {66, ".."},    {67, "?"},        {68, "->"},      {69, "{"},
    {70, "}"},         {71, "("},     {72, ")"},        {73, "["},       {74, "]"},
    {75, ";"},         {76, ","},     {77, ":"},        {79, "@"},
};

TEST(TokenKinds, EverySpellingHasItsNumber) {
    for (const SpelledKind& kind : spelledKinds) {
        Testing::Parsing parsing(kind.source);
        ASSERT_EQ(parsing.tokens.size(), 2U) << kind.source;
        EXPECT_EQ(numberOf(parsing.tokens[0].type), kind.number) << kind.source;
        EXPECT_EQ(numberOf(parsing.tokens[1].type), 78);
    }
    EXPECT_EQ(std::size(spelledKinds) + 1, static_cast<std::size_t>(tokenTypeCount));
}

TEST(TokenKinds, SpellingsOfWordsAndOperatorsAreTheSource) {
    for (const SpelledKind& kind : spelledKinds) {
        const bool described = kind.number >= 44 && kind.number <= 49;
        if (!described && kind.number != 79) {
            EXPECT_EQ(spellingOf(static_cast<TokenType>(kind.number)), kind.source);
        }
    }
    EXPECT_EQ(spellingOf(TokenType::EndOfInput), "end of input");
}

TEST(TokenKinds, BuiltInTypesHaveKind35UnlessTheyAreKeywords) {
    for (const char* name :
         {"button",  "text",   "entry",    "textarea", "checkbox", "radio", "combobox",
          "listbox", "slider", "progress", "panel",    "group",    "tab",   "canvas",
          "picture", "menu",   "timer",    "window",   "color",    "font",  "position",
          "size",    "rect",   "cursor",   "icon"})
        EXPECT_EQ(numberOf(wordKind(name)), 35) << name;
    const int kinds[] = {4, 5, 6, 7, 8, 9, 10, 11};
    for (std::size_t index = 0; index < 8; ++index)
        EXPECT_EQ(numberOf(wordKind(standardTypes[index])), kinds[index]);
}

TEST(TokenKinds, OtherWordsAreIdentifiers) {
    for (const char* word : {"Button", "If", "VORLA", "i", "_", "iff", "containers", "elsewhere",
                             "averyveryverylongwordthatisnokeyword"})
        EXPECT_EQ(wordKind(word), TokenType::Identifier) << word;
}

TEST(StandardTypes, AreThe33NamesInOrder) {
    ASSERT_EQ(standardTypes.size(), 33U);
    EXPECT_EQ(standardTypes.front(), "value");
    EXPECT_EQ(standardTypes[8], "button");
    EXPECT_EQ(standardTypes.back(), "icon");
    EXPECT_EQ(standardTypeSet().size(), 33U);
    EXPECT_TRUE(standardTypeSet().contains("listbox"));
    EXPECT_FALSE(standardTypeSet().contains("type"));
}

TEST(Token, StartsEmpty) {
    const Token token;
    EXPECT_EQ(token.text(), "");
    EXPECT_EQ(token.line, 0);
    EXPECT_EQ(token.column, 0);
    EXPECT_TRUE(token.value().isNull());
}

TEST(Token, LiteralsHaveAValue) {
    EXPECT_EQ(Token(TokenType::IntegerLiteral, "42", 1, 1).value().asInt(), 42);
    EXPECT_TRUE(Token(TokenType::IntegerLiteral, "42", 1, 1).value().isInt());
    EXPECT_EQ(Token(TokenType::FloatLiteral, "2.5", 1, 1).value().asFloat(), 2.5);
    EXPECT_TRUE(Token(TokenType::FloatLiteral, "2.5", 1, 1).value().isFloat());
    EXPECT_EQ(Token(TokenType::StringLiteral, "ab", 1, 1).value().asString(), "ab");
    EXPECT_TRUE(Token(TokenType::CharLiteral, "c", 1, 1).value().isString());
    EXPECT_TRUE(Token(TokenType::ColorLiteral, "#F00", 1, 1).value().isString());
    EXPECT_EQ(Token(TokenType::ColorLiteral, "#F00", 1, 1).value().asString(), "#F00");
    EXPECT_TRUE(Token(TokenType::Identifier, "name", 1, 1).value().isNull());
    EXPECT_TRUE(Token(TokenType::TrueKeyword, "true", 1, 1).value().isNull());
}

TEST(Token, IsSmall) { EXPECT_LE(sizeof(Token), 24U); }

TEST(Token, LiteralTextsAreViewed) {
    const std::string source = "content";
    const Value value = Token(TokenType::StringLiteral, source, 1, 1).value();
    EXPECT_EQ(value.textView().data(), source.data());
}

TEST(TokenSet, KnowsMembersInBothHalves) {
    constexpr TokenSet set = TokenSet{TokenType::VorlaKeyword, TokenType::Unknown} |
                             TokenSet{TokenType::AndAnd, TokenType::Not};
    for (int number = 0; number < tokenTypeCount; ++number) {
        const bool member = number == 0 || number == 79 || number == 62 || number == 64;
        EXPECT_EQ(set.has(static_cast<TokenType>(number)), member) << number;
    }
}

} // namespace
} // namespace Orvane
