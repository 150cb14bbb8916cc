// Sources so large that the parser gives tokens back while it reads on.
#include "frontend/large_memory.h"
#include "frontend/lexer.h"
#include "frontend/parser.h"
#include "parsing.h"
#include "ready_pages.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

namespace Orvane {
namespace {

constexpr std::size_t terms = 300'000; // 600,000 tokens

std::string sumOfTerms() {
    std::string text = "first";
    for (std::size_t term = 1; term < terms; ++term) text += "+n";
    return text;
}

// The number of terms; the name of the leftmost in `first`.
std::size_t countTerms(const Expr* expr, std::string_view& first) {
    std::size_t count = 1;
    const auto* sum = nodeCast<BinaryExpr>(expr);
    for (; sum; ++count) {
        expr = sum->left.get();
        sum = nodeCast<BinaryExpr>(expr);
    }
    if (const auto* name = nodeCast<IdentifierExpr>(expr)) first = name->name;
    return count;
}

void expectWindowWithSum(PositionTable* positions, Parser::Texts texts) {
    RecordingConsole console;
    Lexer lexer("vorla Main { title = " + sumOfTerms() + "; width = 5 }", console);
    const auto program = Parser(lexer.tokenize(), console, positions, texts).parse();
    ASSERT_EQ(program->window->properties.size(), 2U);
    const Property& title = program->window->properties[0];
    EXPECT_EQ(title.name, "title");
    std::string_view first;
    EXPECT_EQ(countTerms(title.value.get(), first), terms);
    EXPECT_EQ(first, "first");
    EXPECT_EQ(program->window->properties[1].name, "width");
}

TEST(LargeSource, PropertyKeepsItsNameBehindALongValue) {
    expectWindowWithSum(nullptr, Parser::Texts::copied);
    expectWindowWithSum(nullptr, Parser::Texts::viewed);
}

TEST(LargeSource, PositionsAreRecordedToTheEnd) {
    PositionTable positions;
    expectWindowWithSum(&positions, Parser::Texts::viewed);
    // A sum and a name for each term but the first, which is a name alone; two properties, the
    // number and the window.
    EXPECT_EQ(positions.size(), 2 * terms - 1 + 4);
}

TEST(LargeSource, TokensReadLongAgoDoNotCountForMessages) {
    RecordingConsole console;
    Lexer lexer("vorla Main { title = " + sumOfTerms() + "; }\n\nvorla {", console);
    Parser parser(lexer.tokenize(), console);
    try {
        parser.parse();
        ADD_FAILURE() << "no error";
    } catch (const std::runtime_error& error) {
        EXPECT_NE(std::string(error.what()).find("at line 3"), std::string::npos) << error.what();
    }
}

// Every name of the sum, from the last one to the first.
std::vector<const IdentifierExpr*> namesOf(const Expr* expr) {
    std::vector<const IdentifierExpr*> names;
    for (const auto* sum = nodeCast<BinaryExpr>(expr); sum; sum = nodeCast<BinaryExpr>(expr)) {
        names.push_back(nodeCast<IdentifierExpr>(sum->right));
        expr = sum->left.get();
    }
    names.push_back(nodeCast<IdentifierExpr>(expr));
    return names;
}

// The tree outlives the parser, which owned the tokens.
TEST(LargeSource, NodesStandWhereTokensStood) {
    RecordingConsole console;
    Lexer lexer("vorla Main { title = " + sumOfTerms() + "; }", console);
    std::vector<Token> tokens = lexer.tokenize();
    const Token* const first = tokens.data();
    const Token* const end = first + tokens.size();
    const auto program = Parser(std::move(tokens), console, nullptr, Parser::Texts::viewed).parse();
    std::size_t inside = 0;
    const std::vector<const IdentifierExpr*> names =
        namesOf(program->window->properties[0].value.get());
    ASSERT_EQ(names.size(), terms);
    for (const IdentifierExpr* name : names) {
        ASSERT_EQ(name->name, name == names.back() ? "first" : "n");
        const void* const place = name;
        if (place >= first && place < end) ++inside;
    }
    // A name and a sum take 56 bytes, their tokens 48.
    EXPECT_GT(inside, terms * 3 / 4);
}

TEST(LargeSource, TokensAreMadeStepByStep) {
    constexpr std::size_t count = 300'000; // seven megabytes; five times the expected density
    RecordingConsole console;
    Lexer lexer(std::string(count, ';'), console);
    const std::vector<Token> tokens = lexer.tokenize();
    ASSERT_EQ(tokens.size(), count + 1);
    for (std::size_t index = 0; index < count; ++index) {
        ASSERT_EQ(tokens[index].type, TokenType::Semicolon);
        ASSERT_EQ(tokens[index].column, static_cast<int>(index) + 1);
        ASSERT_EQ(tokens[index].text(), ";");
    }
    EXPECT_EQ(tokens.back().type, TokenType::EndOfInput);
}

constexpr std::size_t halfStep = fillingStep / 2;

TEST(LargeMemory, ExpectedPagesAreReady) {
    if (!startsWithoutPages()) GTEST_SKIP() << "the system makes pages one by one";
    const auto memory = std::make_unique_for_overwrite<char[]>(4 * fillingStep);
    EXPECT_FALSE(isReady(memory.get(), halfStep));
    expectFilling(memory.get(), fillingStep);
    EXPECT_TRUE(isReady(memory.get(), halfStep));
    EXPECT_FALSE(isReady(memory.get(), 2 * fillingStep));
    giveBack(memory.get(), fillingStep);
    EXPECT_FALSE(isReady(memory.get(), halfStep));
}

// The room for tokens is guessed; what is never filled takes a step at most.
TEST(LargeMemory, PagesOfTokensAreReadyStepByStep) {
    if (!startsWithoutPages()) GTEST_SKIP() << "the system makes pages one by one";
    RecordingConsole console;
    Lexer lexer(std::string(std::size_t{1} << 20, ' '), console);
    const std::vector<Token> tokens = lexer.tokenize();
    ASSERT_EQ(tokens.size(), 1U);
    ASSERT_GT(tokens.capacity() * sizeof(Token), 3 * fillingStep);
    EXPECT_TRUE(isReady(tokens.data(), halfStep));
    EXPECT_FALSE(isReady(tokens.data(), 2 * fillingStep));
}

TEST(LargeMemory, PagesOfTheTreeAreReady) {
    if (!startsWithoutPages()) GTEST_SKIP() << "the system makes pages one by one";
    Arena arena;
    const std::byte* last = nullptr;
    for (std::size_t count = 0; count < fillingStep; count += 64) // fills all smaller blocks
        last = static_cast<const std::byte*>(arena.allocateBytes(64));
    EXPECT_TRUE(isReady(last, fillingStep / 4));
}

TEST(LargeMemory, ExpectingChangesNothing) {
    std::vector<int> numbers(1 << 20);
    for (std::size_t index = 0; index < numbers.size(); ++index)
        numbers[index] = static_cast<int>(index);
    const std::vector<int> before = numbers;
    expectFilling(numbers.data(), numbers.size() * sizeof(int));
    expectFilling(numbers.data() + 1, numbers.size() / 2 * sizeof(int));
    expectFilling(numbers.data(), 0);
    EXPECT_EQ(numbers, before);
}

TEST(LargeMemory, MemoryThatWasGivenBackCanBeWrittenAgain) {
    std::vector<int> numbers(1 << 20, 7);
    giveBack(numbers.data(), numbers.size() / 2 * sizeof(int));
    EXPECT_EQ(numbers.back(), 7);
    numbers.assign(numbers.size(), 9);
    EXPECT_EQ(numbers.front(), 9);
    EXPECT_EQ(numbers[numbers.size() / 4], 9);
}

TEST(LargeMemory, WhatHasNoWholePageStays) {
    std::vector<char> letters(100, 'x');
    giveBack(letters.data(), letters.size());
    EXPECT_EQ(letters, std::vector<char>(100, 'x'));
}

} // namespace
} // namespace Orvane
