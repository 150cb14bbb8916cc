#include "launcher/arguments.h"

#include <gtest/gtest.h>

namespace Orvane {
namespace {

TEST(SplitArguments, SeparatesAtBlanksOutsideQuotes) {
    EXPECT_EQ(splitArguments(L"g++.exe -o \"a b.exe\"  x.cpp\t-g"),
              (Arguments{L"g++.exe", L"-o", L"a b.exe", L"x.cpp", L"-g"}));
}

TEST(SplitArguments, TakesTheProgramsNameWithoutEscapes) {
    EXPECT_EQ(splitArguments(L"\"C:\\my tools\\\" -v"), (Arguments{L"C:\\my tools\\", L"-v"}));
}

TEST(SplitArguments, KeepsBackslashesAwayFromQuotes) {
    EXPECT_EQ(splitArguments(L"g -IC:\\a\\\\b\\ x"), (Arguments{L"g", L"-IC:\\a\\\\b\\", L"x"}));
}

TEST(SplitArguments, HalvesBackslashesInFrontOfAQuote) {
    EXPECT_EQ(splitArguments(L"g \"a\\\\\" b\\\"c \"d\\\\\\\"e\""),
              (Arguments{L"g", L"a\\", L"b\"c", L"d\\\"e"}));
}

TEST(SplitArguments, ReadsEmptyArgumentsAndDoubledQuotes) {
    EXPECT_EQ(splitArguments(L"g \"\" \"a\"\"b\""), (Arguments{L"g", L"", L"a\"b"}));
}

TEST(SplitArguments, EndsWithoutArguments) {
    EXPECT_EQ(splitArguments(L""), (Arguments{L""}));
    EXPECT_EQ(splitArguments(L"g++.exe  "), (Arguments{L"g++.exe"}));
    EXPECT_EQ(splitArguments(L"g \"open"), (Arguments{L"g", L"open"}));
}

TEST(TextBehindProgram, LeavesEveryCharacterAsItIs) {
    EXPECT_EQ(textBehindProgram(L"\"C:\\my tools\\g++.exe\"  -DX=\\\"1\\\" \"a b\" "),
              L"  -DX=\\\"1\\\" \"a b\" ");
    EXPECT_EQ(textBehindProgram(L"g++.exe"), L"");
}

TEST(QuoteArgument, LeavesPlainNamesAlone) {
    EXPECT_EQ(quoteArgument(L"-std=c++17"), L"-std=c++17");
    EXPECT_EQ(quoteArgument(L"C:\\tools\\bin\\g++.exe"), L"C:\\tools\\bin\\g++.exe");
}

TEST(QuoteArgument, QuotesBlanksPatternsAndForeignLetters) {
    EXPECT_EQ(quoteArgument(L"a b"), L"\"a b\"");
    EXPECT_EQ(quoteArgument(L"*.cpp"), L"\"*.cpp\"");
    EXPECT_EQ(quoteArgument(L"[1]"), L"\"[1]\"");
    EXPECT_EQ(quoteArgument(L"\u4e2d\u6587"), L"\"\u4e2d\u6587\"");
    EXPECT_EQ(quoteArgument(L""), L"\"\"");
}

TEST(QuoteArgument, EscapesQuotesAndTheBackslashesBeforeThem) {
    EXPECT_EQ(quoteArgument(L"a\"b"), L"\"a\\\"b\"");
    EXPECT_EQ(quoteArgument(L"a\\\"b"), L"\"a\\\\\\\"b\"");
    EXPECT_EQ(quoteArgument(L"C:\\my folder\\"), L"\"C:\\my folder\\\\\"");
}

TEST(JoinArguments, IsReadBackAsTheSameArguments) {
    const Arguments arguments = {L"g++.exe",  L"",         L"a b",  L"\\",          L"\\\\ \\",
                                 L"\"",       L"\\\"",     L"\"\"", L"C:\\x y\\",   L"*?",
                                 L"\u00dc b", L"a\tb\\\\", L"-o",   L"\\\"\\\\\" ", L"tail\\"};
    EXPECT_EQ(splitArguments(joinArguments(arguments)), arguments);
}

TEST(AsksForSymbols, KnowsTheOptionsForDebugInformation) {
    for (const wchar_t* option : {L"-g", L"-g0", L"-g3", L"-ggdb", L"-ggdb3"})
        EXPECT_TRUE(asksForSymbols({L"g++.exe", option}));
    for (const wchar_t* option : {L"-gx", L"-std=c++17", L"g", L"x-g", L"-g12"})
        EXPECT_FALSE(asksForSymbols({L"g++.exe", option}));
}

const std::wstring tools = L"C:\\my tools";

Arguments programBuild() {
    return splitArguments(
        L"\"C:\\my tools\\bin\\g++.exe\" -std=c++17 -Og -finput-charset=UTF-8 "
        L"\"D:\\a b\\code_generation\\main.cpp\" \"C:\\my tools\\bin\\resource.o\" "
        L"-o \"D:\\a b\\app.exe\" -I\"C:\\my tools\\include\" -I\"C:\\my tools\\orlib\" "
        L"-I\"C:\\my tools\\parameter\" -luser32 -lgdi32 -lkernel32 -lcomctl32 -lcomdlg32 "
        L"-lshell32 -ladvapi32 -mwindows");
}

TEST(FindProgramOutput, FindsTheExecutableInTheCommandForAProgram) {
    const Arguments arguments = programBuild();
    const auto output = findProgramOutput(arguments, tools);
    ASSERT_TRUE(output);
    EXPECT_EQ(arguments[*output], L"D:\\a b\\app.exe");
}

TEST(FindProgramOutput, TakesDebugBuildsAndBuildsWithoutAResource) {
    Arguments arguments = programBuild();
    arguments.insert(arguments.begin() + 3, L"-g");
    EXPECT_TRUE(findProgramOutput(arguments, tools));
    arguments.erase(arguments.begin() + 6);
    EXPECT_TRUE(findProgramOutput(arguments, tools));
}

TEST(FindProgramOutput, ComparesFoldersAsWindowsDoes) {
    EXPECT_TRUE(findProgramOutput(programBuild(), L"c:/MY TOOLS"));
}

TEST(FindProgramOutput, LeavesEveryOtherCommandAlone) {
    const auto isLeftAlone = [](const Arguments& more, const Arguments& less = {}) {
        Arguments arguments = programBuild();
        for (const std::wstring& argument : less) std::erase(arguments, argument);
        arguments.insert(arguments.end(), more.begin(), more.end());
        return !findProgramOutput(arguments, tools);
    };
    EXPECT_TRUE(isLeftAlone({L"-DLATE"}));
    EXPECT_TRUE(isLeftAlone({L"-O2"}));
    EXPECT_TRUE(isLeftAlone({L"other.cpp"}));
    EXPECT_TRUE(isLeftAlone({L"C:\\second\\main.cpp"}));
    EXPECT_TRUE(isLeftAlone({L"-IC:\\elsewhere"}));
    EXPECT_TRUE(isLeftAlone({L"-o"}));
    EXPECT_TRUE(isLeftAlone({L"-o", L"twice.exe"}));
    EXPECT_TRUE(isLeftAlone({}, {L"-IC:\\my tools\\include"}));
    EXPECT_TRUE(isLeftAlone({}, {L"D:\\a b\\code_generation\\main.cpp"}));
    EXPECT_TRUE(isLeftAlone({}, {L"-o", L"D:\\a b\\app.exe"}));
    EXPECT_FALSE(findProgramOutput({L"g++.exe", L"--version"}, tools));
    EXPECT_FALSE(findProgramOutput({}, tools));
}

} // namespace
} // namespace Orvane
