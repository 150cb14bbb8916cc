#include "orvane/print_sarif.h"
#include "orvane/report.h"

#include <gtest/gtest.h>

using namespace Orvane;

namespace {

std::string printed(const SourceText& source, const std::vector<Diagnostic>& diagnostics,
                    Format format = Format::text, bool colours = false) {
    std::string text;
    Output out(text, colours);
    const auto report = makeReportWriter(format, out);
    report->add(source, diagnostics);
    report->finish();
    return text;
}

Diagnostic unknown(std::string_view name, ByteRange range) {
    return makeDiagnostic(MessageId::unreadableFile, range, {name});
}

// What is printed about an unreadable a.vorla: at LINE:COLUMN, with the lines below it.
std::string saidAt(const std::string& place, const std::string& shown) {
    return "a.vorla:" + place + ": error: the file cannot be read [unreadable-file]\n" + shown +
           "      = Look at its name, its folder and who may read it.\n";
}

} // namespace

TEST(PrintText, ShowsPlaceLineUnderlineAndHint) {
    const SourceText source("a.vorla", "value a;\n  prnt(1);\n");
    EXPECT_EQ(printed(source, {unknown("", {11, 15})}), saidAt("2:3", "    2 |   prnt(1);\n"
                                                                      "      |   ^~~~\n"));
}

TEST(PrintText, CountsCharactersAndAlignsTheUnderlineBehindTabs) {
    const SourceText source("a.vorla", "\t\"\xC3\xA4\" x");
    EXPECT_EQ(printed(source, {unknown("", {6, 7})}), saidAt("1:6", "    1 |     \"\xC3\xA4\" x\n"
                                                                    "      |         ^\n"));
}

TEST(PrintText, LeavesOutTheCarriageReturn) {
    const SourceText source("a.vorla", "one\r\ntwo\r\n");
    EXPECT_EQ(printed(source, {unknown("", {3, 3})}), saidAt("1:4", "    1 | one\n"
                                                                    "      |    ^\n"));
}

TEST(PrintText, UnderlinesARangeOverSeveralLinesOnItsFirst) {
    const SourceText source("a.vorla", "if (x) {\n    y();\n}\n");
    EXPECT_EQ(printed(source, {unknown("", {3, 19})}), saidAt("1:4", "    1 | if (x) {\n"
                                                                     "      |    ^~~~~\n"));
}

TEST(PrintText, PointsBehindTheLastLine) {
    const SourceText source("a.vorla", "vorla A {\n");
    EXPECT_EQ(printed(source, {unknown("", {10, 10})}), saidAt("2:1", "    2 |\n"
                                                                      "      | ^\n"));
}

TEST(PrintText, ByteOrderMarkIsNotShown) {
    const SourceText source("a.vorla", "\xEF\xBB\xBFx y");
    EXPECT_EQ(printed(source, {unknown("", {5, 6})}), saidAt("1:3", "    1 | x y\n"
                                                                    "      |   ^\n"));
}

TEST(PrintText, LineNumbersAreRightAligned) {
    const SourceText source("a.vorla", std::string(99'998, '\n') + "x\ny");
    EXPECT_NE(printed(source, {unknown("", {99'998, 99'999})}).find("\n99999 | x\n      | ^\n"),
              std::string::npos);
    EXPECT_NE(printed(source, {unknown("", {100'000, 100'001})}).find("\n100000 | y\n       | ^\n"),
              std::string::npos);
}

TEST(PrintText, NotesFollowWithTheirLine) {
    const SourceText source("a.vorla", "a {\nb\n");
    Diagnostic diagnostic = unknown("", {4, 5});
    diagnostic.hint.clear();
    diagnostic.notes.push_back({{2, 3}, "opened here"});
    EXPECT_EQ(printed(source, {diagnostic}),
              "a.vorla:2:1: error: the file cannot be read [unreadable-file]\n"
              "    2 | b\n"
              "      | ^\n"
              "a.vorla:1:3: note: opened here\n"
              "    1 | a {\n"
              "      |   ^\n");
}

TEST(PrintText, ColoursOnlyWhenAsked) {
    const SourceText source("a.vorla", "x");
    EXPECT_EQ(printed(source, {unknown("", {0, 1})}).find('\x1b'), std::string::npos);
    EXPECT_NE(printed(source, {unknown("", {0, 1})}, Format::text, true)
                  .find("\x1b[1ma.vorla:1:1:\x1b[0m \x1b[1;31merror:\x1b[0m "),
              std::string::npos);
}

TEST(PrintText, TextOfTheSourceCannotDriveTheTerminal) {
    const SourceText source("a\x1b.vorla", "x \x1b[2J");
    const std::string text = printed(source, {unknown("", {0, 1})});
    EXPECT_EQ(text.find('\x1b'), std::string::npos);
}

TEST(PrintJson, BrokenBytesBecomeReplacementCharacters) {
    const SourceText source("a\xFF.vorla", "x");
    const std::string text = printed(source, {unknown("", {0, 1})}, Format::json);
    EXPECT_NE(text.find("\"file\": \"a\xEF\xBF\xBD.vorla\""), std::string::npos);
}

TEST(PrintSarif, PathsBecomeUriReferences) {
    EXPECT_EQ(SarifWriter::uriOf("src/app.vorla"), "src/app.vorla");
    EXPECT_EQ(SarifWriter::uriOf("my app#1.vorla"), "my%20app%231.vorla");
    EXPECT_EQ(SarifWriter::uriOf("\xC3\xA4.vorla"), "%C3%A4.vorla");
    EXPECT_EQ(SarifWriter::uriOf("/home/ada/a.vorla"), "file:///home/ada/a.vorla");
    EXPECT_EQ(SarifWriter::uriOf("C:\\Users\\a b\\x.vorla"), "file:///C:/Users/a%20b/x.vorla");
    EXPECT_EQ(SarifWriter::uriOf("src\\app.vorla"), "src/app.vorla");
}

TEST(Summary, CountsErrorsWarningsAndFiles) {
    std::string text;
    Output out(text, false);
    const auto report = makeReportWriter(Format::text, out);
    EXPECT_EQ(summaryOf(*report), "");
    const SourceText first("a.vorla", "x");
    const SourceText second("b.vorla", "x");
    report->add(first, std::vector{unknown("", {0, 1})});
    EXPECT_EQ(summaryOf(*report), "1 error");
    report->add(first, std::vector{makeDiagnostic(MessageId::unknownProperty, {0, 1}, {"a", "b"})});
    EXPECT_EQ(summaryOf(*report), "1 error and 1 warning");
    report->add(second, std::vector{unknown("", {0, 1})});
    EXPECT_EQ(summaryOf(*report), "2 errors and 1 warning in 2 files");
}
