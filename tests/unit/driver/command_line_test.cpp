#include "driver/command_line.h"

#include <gtest/gtest.h>

using namespace Orvane;

namespace {

using Texts = std::vector<std::string>;

TEST(SplitCommandLine, CutsAtBlanks) {
    EXPECT_EQ(splitCommandLine("a -b c"), (Texts{"a", "-b", "c"}));
    EXPECT_EQ(splitCommandLine("  a   b  "), (Texts{"a", "b"}));
    EXPECT_EQ(splitCommandLine(""), Texts{});
    EXPECT_EQ(splitCommandLine("   "), Texts{});
}

TEST(SplitCommandLine, BlanksInsideQuotesStay) {
    EXPECT_EQ(splitCommandLine("\"/my tools/g++.exe\" -g \"a b\""),
              (Texts{"/my tools/g++.exe", "-g", "a b"}));
}

TEST(SplitCommandLine, QuotesMayStandInsideAnArgument) {
    EXPECT_EQ(splitCommandLine("-I\"/my include\" x"), (Texts{"-I/my include", "x"}));
    EXPECT_EQ(splitCommandLine("a\"b\"c\"d e\""), Texts{"abcd e"});
}

TEST(SplitCommandLine, EmptyQuotesAreAnEmptyArgument) {
    EXPECT_EQ(splitCommandLine("a \"\" b"), (Texts{"a", "", "b"}));
}

TEST(SplitCommandLine, AnOpenQuoteReachesToTheEnd) {
    EXPECT_EQ(splitCommandLine("a \"b c"), (Texts{"a", "b c"}));
}

TEST(SplitCommandLine, NothingElseIsSpecial) {
    EXPECT_EQ(splitCommandLine("a\\b 'c d' $HOME `x` * \t;"),
              (Texts{"a\\b", "'c", "d'", "$HOME", "`x`", "*", "\t;"}));
}

} // namespace
