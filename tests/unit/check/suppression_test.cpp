#include "check/suppression.h"

#include "check/window_check.h"

#include <gtest/gtest.h>

using namespace Orvane;

namespace {

// One line per diagnostic that is left: "line: id".
std::string leftOf(const std::string& text) {
    const ParsedSource source("app.vorla", text);
    const LibraryFunctions libraries;
    std::vector<Diagnostic> found;
    checkWindow(source, libraries, found);
    suppressWarnings(source, found);
    std::string lines;
    for (const Diagnostic& diagnostic : found)
        lines += std::to_string(source.source().placeOf(diagnostic.range.begin).line) + ": " +
                 std::string(messageOf(diagnostic.id).id) + "\n";
    return lines;
}

} // namespace

TEST(Suppression, countsForItsLineBehindCode) {
    EXPECT_EQ(leftOf("vorla Main {\n"
                     "    label a { } // orvane: allow unknown-kind\n"
                     "    label b { }\n"
                     "}\n"),
              "3: unknown-kind\n");
}

TEST(Suppression, countsForTheNextLineWithCodeWhenAlone) {
    EXPECT_EQ(leftOf("vorla Main {\n"
                     "    // orvane: allow unknown-kind\n"
                     "    // The label is for later.\n"
                     "\n"
                     "    label a { }\n"
                     "    label b { }\n"
                     "}\n"),
              "6: unknown-kind\n");
}

TEST(Suppression, countsForTheWholeFile) {
    EXPECT_EQ(
        leftOf("vorla Main { label a { }\n label b { } }\n// orvane: allow-file unknown-kind\n"),
        "");
}

TEST(Suppression, takesSeveralIds) {
    EXPECT_EQ(
        leftOf(
            "vorla Main { label a { } titel = 1 } // orvane: allow unknown-kind, unknown-property\r\n"),
        "");
}

TEST(Suppression, leavesOtherIdsAlone) {
    EXPECT_EQ(leftOf("vorla Main { label a { } } // orvane: allow unknown-property\n"),
              "1: unknown-kind\n");
}

TEST(Suppression, isNoPartOfATextAndNoOtherComment) {
    EXPECT_EQ(leftOf("vorla Main { label a { text = \"// orvane: allow unknown-kind\" } }"),
              "1: unknown-kind\n");
    EXPECT_EQ(leftOf("vorla Main { label a { } } // see orvane: allow unknown-kind"),
              "1: unknown-kind\n");
}

TEST(Suppression, cannotSwitchErrorsOff) {
    EXPECT_EQ(leftOf("vorla Main { menu a { } menu a { } } // orvane: allow duplicate-control\n"),
              "1: duplicate-control\n1: unknown-allow\n");
}

TEST(Suppression, warnsOfUnknownIds) {
    const ParsedSource source("app.vorla", "// orvane: allow unknown-kinds\n");
    std::vector<Diagnostic> found;
    suppressWarnings(source, found);
    ASSERT_EQ(found.size(), 1u);
    EXPECT_EQ(found[0].text, "no message is called 'unknown-kinds'");
    EXPECT_EQ(found[0].hint, "Write 'unknown-kind' if you mean that.");
    EXPECT_EQ(source.source().part(found[0].range), "unknown-kinds");
}
