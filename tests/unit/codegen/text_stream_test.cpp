#include "codegen/text_stream.h"
#include "frontend/large_memory.h"
#include "ready_pages.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <limits>
#include <string>

namespace Orvane {
namespace {

std::string written(double number) {
    TextStream out;
    out << number;
    return out.str();
}

TEST(TextStream, StartsEmpty) {
    TextStream out;
    EXPECT_EQ(out.view(), "");
    out << std::string_view() << "";
    out.fill(0, ' ');
    EXPECT_EQ(out.str(), "");
}

TEST(TextStream, WritesLiteralsTextsAndCharacters) {
    TextStream out;
    out << "int " << std::string_view("x") << ' ' << '=';
    out.fill(3, '.');
    EXPECT_EQ(out.view(), "int x =...");
}

TEST(TextStream, WritesWholeNumbersInDecimal) {
    TextStream out;
    out << 0 << ' ' << -5 << ' ' << std::numeric_limits<int>::min() << ' '
        << std::numeric_limits<unsigned long long>::max();
    EXPECT_EQ(out.view(), "0 -5 -2147483648 18446744073709551615");
}

TEST(TextStream, WritesDoublesWithSixSignificantDigits) {
    EXPECT_EQ(written(0.0), "0");
    EXPECT_EQ(written(2.5), "2.5");
    EXPECT_EQ(written(100.0), "100");
    EXPECT_EQ(written(1234567.0), "1.23457e+06");
    EXPECT_EQ(written(0.0001), "0.0001");
    EXPECT_EQ(written(0.00001), "1e-05");
    EXPECT_EQ(written(3.14159265), "3.14159");
    EXPECT_EQ(written(999999.5), "1e+06");
    EXPECT_EQ(written(1e300), "1e+300");
    EXPECT_EQ(written(std::numeric_limits<double>::max()), "1.79769e+308");
}

TEST(TextStream, KeepsItsTextWhileItGrows) {
    TextStream out;
    std::string expected;
    for (int number = 0; number < 100'000; ++number) {
        out << number << "\n";
        expected += std::to_string(number) + "\n";
    }
    EXPECT_EQ(out.view(), expected);
}

TEST(TextStream, IsEmptyAgainAfterClear) {
    TextStream out;
    out << "old text";
    out.clear();
    EXPECT_EQ(out.view(), "");
    out << "new";
    EXPECT_EQ(out.view(), "new");
}

TEST(TextStream, SwapExchangesTheTexts) {
    TextStream first, second;
    first << "first";
    first.swap(second);
    EXPECT_EQ(first.view(), "");
    EXPECT_EQ(second.view(), "first");
    first << "other";
    second << " goes on";
    first.swap(second);
    EXPECT_EQ(first.view(), "first goes on");
    EXPECT_EQ(second.view(), "other");
}

TEST(TextStream, SwapExchangesTheRoomToo) {
    const std::string large(3 << 20, 'x');
    TextStream first;
    TextStream second;
    first << large;
    second << "other ";
    first.swap(second);
    first << large;
    second << large;
    EXPECT_EQ(first.view(), "other " + large);
    EXPECT_EQ(second.view(), large + large);
}

// A large text is made room for in steps of a megabyte, and in pieces that fit no step.
TEST(TextStream, KeepsALargeTextWhole) {
    constexpr std::size_t pieces = 700'000;
    TextStream out;
    std::string expected;
    for (std::size_t piece = 0; piece < pieces; ++piece) {
        out << "piece " << piece << ';';
        expected += "piece " + std::to_string(piece) + ';';
    }
    out << expected;
    EXPECT_TRUE(out.view() == expected + expected);
}

TEST(TextStream, PagesOfALargeTextAreReadyStepByStep) {
    if (!startsWithoutPages()) GTEST_SKIP() << "the system makes pages one by one";
    TextStream out;
    out << std::string(2 * fillingStep, 'x') << 'y'; // has room for as much again
    EXPECT_TRUE(isReady(out.view().data(), 2 * fillingStep + fillingStep / 2));
    EXPECT_FALSE(isReady(out.view().data(), 3 * fillingStep + fillingStep / 2));
}

// ---- Passing on ----

class Pieces final : public TextSink {
public:
    void take(std::string_view piece) override {
        text += piece;
        longest = std::max(longest, piece.size());
    }
    std::string text;
    std::size_t longest = 0;
};

TEST(TextStream, PassesOnNothingUpToTheLimit) {
    Pieces pieces;
    TextStream out;
    out.passOn(pieces, 10);
    out << "12345"
        << "67890";
    EXPECT_EQ(pieces.text, "");
    EXPECT_EQ(out.view(), "1234567890");
}

TEST(TextStream, PassesOnWhatItHoldsBeforeThePieceThatIsTooMuch) {
    Pieces pieces;
    TextStream out;
    out.passOn(pieces, 10);
    out << "12345"
        << "67890" << 'x';
    EXPECT_EQ(pieces.text, "1234567890");
    EXPECT_EQ(out.view(), "x");
}

TEST(TextStream, HoldsOnePieceThatIsLongerThanTheLimit) {
    Pieces pieces;
    TextStream out;
    out.passOn(pieces, 10);
    out << "ab" << std::string_view("a text of more than ten bytes") << "cd";
    EXPECT_EQ(pieces.text + out.str(), "aba text of more than ten bytescd");
}

TEST(TextStream, HoldsNoMoreThanTheLimitOfShortPieces) {
    Pieces pieces;
    TextStream out;
    out.passOn(pieces, 1000);
    std::string expected;
    for (int number = 0; number < 10'000; ++number) {
        out << number << ",";
        out.fill(3, ' ');
        expected += std::to_string(number) + ",   ";
    }
    EXPECT_EQ(pieces.text + out.str(), expected);
    EXPECT_LE(pieces.longest, 1000U);
    EXPECT_LE(out.view().size(), 1000U);
}

TEST(TextStream, AnExchangeTakesThePassingOnAlong) {
    Pieces pieces;
    TextStream first;
    TextStream second;
    first.passOn(pieces, 4);
    first << "1234";
    first.swap(second);
    second << "5";
    first << "a long text that nobody takes";
    EXPECT_EQ(pieces.text, "1234");
    EXPECT_EQ(second.view(), "5");
    EXPECT_EQ(first.view(), "a long text that nobody takes");
}

} // namespace
} // namespace Orvane
