// The golden runner itself: what it finds, and that it sees every kind of difference.

#include "expectation.h"
#include "golden_case.h"
#include "unit/temporary_directory.h"

#include <gtest/gtest.h>

namespace Orvane::Golden {
namespace {

const std::string fixedText = "struct Value {\n    int number;\n};\n\n";
const std::string importText =
    "#pragma once\n" + fixedText + "// UTF-8 -> ANSI (ACP)\nconvert\n\nvoid own() {}\n";

TEST(GoldenCases, AreTheFoldersOfAnAreaInTheOrderOfTheirNames) {
    TemporaryDirectory directory;
    directory.write("b/one/app.vorla", "");
    directory.write("a/two/app.vorla", "");
    directory.write("a/fail_one/app.vorla", "");
    directory.write("shared/runtime_value.txt", "");
    directory.write("golden_test.cpp", "");
    const std::vector<GoldenCase> cases = findCases(directory.path());
    ASSERT_EQ(cases.size(), 3u);
    EXPECT_EQ(cases[0].name, "a/fail_one");
    EXPECT_TRUE(cases[0].mustFail());
    EXPECT_EQ(cases[1].name, "a/two");
    EXPECT_FALSE(cases[1].mustFail());
    EXPECT_EQ(cases[2].name, "b/one");
}

TEST(GoldenCases, FilesWithoutAPlaceAreStray) {
    TemporaryDirectory directory;
    directory.write("a/one/app.vorla", "");
    directory.write("a/one/options", "");
    directory.write("a/one/no-compile", "");
    directory.write("a/one/lib.orlib", "");
    directory.write("a/one/orlib/sub/lib.orlib", "");
    directory.write("a/one/expected/stdout", "");
    EXPECT_TRUE(findStrayFiles(directory.path()).empty());
    directory.write("a/loose.vorla", "");
    directory.write("a/one/app.vorla.orig", "");
    directory.write("a/one/more/app.vorla", "");
    directory.write("a/one/orlib/notes.txt", "");
    EXPECT_EQ(findStrayFiles(directory.path()).size(), 4u);
}

TEST(SharedTexts, StandForTheirFixedTextInBothDirections) {
    TemporaryDirectory directory;
    const SharedTexts shared(directory.path());
    const std::string stored = shared.collapse(importText);
    EXPECT_EQ(stored, "#pragma once\n@@include runtime_value.txt\n@@include utf8_to_acp.txt\n\n"
                      "void own() {}\n");
    EXPECT_EQ(directory.read("runtime_value.txt"), fixedText);
    EXPECT_EQ(shared.expand(stored), importText);
}

TEST(SharedTexts, AreWrittenAnewWhenTheyHaveChanged) {
    TemporaryDirectory directory;
    directory.write("runtime_value.txt", "struct Value {};\n\n");
    SharedTexts(directory.path()).collapse(importText);
    EXPECT_EQ(directory.read("runtime_value.txt"), fixedText);
}

TEST(SharedTexts, AnUnknownNameIsAnError) {
    TemporaryDirectory directory;
    directory.write("other.txt", "");
    const SharedTexts shared(directory.path());
    EXPECT_THROW(shared.expand("@@include other.txt\n"), std::runtime_error);
    EXPECT_THROW(shared.expand("@@include runtime_value.txt\n"), std::runtime_error);
    EXPECT_EQ(shared.findStrayFiles().size(), 1u);
}

TEST(SharedTexts, ATextWithoutLineEndStaysAsItIs) {
    TemporaryDirectory directory;
    const SharedTexts shared(directory.path());
    EXPECT_EQ(shared.expand("a\n\nb"), "a\n\nb");
    EXPECT_EQ(shared.collapse("struct Value {\nb"), "struct Value {\nb");
}

TEST(Differences, AreNoneBetweenEqualOutcomes) {
    EXPECT_EQ(describeDifferences({{"stdout", "a\n"}}, {{"stdout", "a\n"}}), "");
}

TEST(Differences, AreShownAsAUnifiedDiff) {
    EXPECT_EQ(describeDifferences({{"stdout", "a\nb\n"}}, {{"stdout", "a\nc\n"}}),
              "--- expected/stdout\n+++ actual/stdout\n@@ -1,2 +1,2 @@\n a\n-b\n+c\n");
}

TEST(Differences, IncludeTheLastLineEnd) {
    EXPECT_NE(describeDifferences({{"stdout", "a\n"}}, {{"stdout", "a"}}), "");
}

TEST(Differences, IncludeFilesOnOneSideOnly) {
    EXPECT_NE(describeDifferences({{"stdout", ""}}, {}), "");
    EXPECT_NE(describeDifferences({}, {{"stdout", ""}}), "");
}

TEST(Expectation, HoldsAfterwardsWhatWasWrittenAndNothingElse) {
    TemporaryDirectory directory;
    const SharedTexts shared(directory.path() / "shared");
    directory.write("expected/status", "1\n");
    const Outcome outcome = {{"stdout", "a\n"}, {"import.hpp", importText}};
    writeExpectation(directory.path() / "expected", outcome, shared);
    EXPECT_EQ(readExpectation(directory.path() / "expected", shared), outcome);
    EXPECT_FALSE(directory.has("expected/status"));
}

TEST(Expectation, WithoutAFolderIsEmpty) {
    TemporaryDirectory directory;
    const SharedTexts shared(directory.path());
    EXPECT_TRUE(readExpectation(directory.path() / "expected", shared).empty());
}

} // namespace
} // namespace Orvane::Golden
