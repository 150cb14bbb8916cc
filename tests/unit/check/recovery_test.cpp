// Several errors in one file: each is found alone, in its own place.
#include "check/parsed_source.h"

#include <gtest/gtest.h>

using namespace Orvane;

namespace {

// "line:column id" of every error.
std::vector<std::string> errorsOf(const std::string& text) {
    const ParsedSource source("a.vorla", text);
    std::vector<std::string> found;
    for (const Diagnostic& diagnostic : source.diagnostics()) {
        if (diagnostic.severity() != Severity::error) continue;
        const Place place = source.source().placeOf(diagnostic.range.begin);
        found.push_back(std::to_string(place.line) + ":" + std::to_string(place.column) + " " +
                        std::string(messageOf(diagnostic.id).id));
    }
    return found;
}

using Errors = std::vector<std::string>;

} // namespace

TEST(Recovery, goesOnAtTheNextStatement) {
    EXPECT_EQ(errorsOf("go(a) {\n"
                       "    int b = 2\n"
                       "    a += b;\n"
                       "    print(a;\n"
                       "    if (a && b) { print(a); a++; } else { print(b); }\n"
                       "    print(a) print(b);\n"
                       "    print(b);\n"
                       "}\n"),
              (Errors{"2:14 missing-semicolon", "3:7 compound-assignment", "4:12 missing-closer",
                      "5:11 logical-operator", "5:30 increment", "6:14 syntax-error"}));
}

TEST(Recovery, goesOnAtTheNextMemberAndDeclaration) {
    EXPECT_EQ(
        errorsOf("class Point {\n"
                 "    int x = 1;\n"
                 "    int y;\n"
                 "    int sum() { return x + ; }\n"
                 "}\n"
                 "int one(int) { return 1 }\n"
                 "vorla Main {\n"
                 "    button { text = [] ; }\n"
                 "    button ok { text = \"OK\" + ; on click { print(1 2); } }\n"
                 "    width = ;\n"
                 "}\n"
                 "Main.script {\n"
                 "    on click { print(1); }\n"
                 "    on ok.click { print(2; }\n"
                 "    two( { return 2; }\n"
                 "    three() { return 3; }\n"
                 "}\n"),
        (Errors{"2:11 field-initialiser", "4:28 syntax-error", "6:9 parameter-without-name",
                "6:24 missing-semicolon", "8:5 component-without-name", "8:21 empty-list",
                "9:31 syntax-error", "9:51 missing-comma", "10:13 syntax-error",
                "13:5 handler-without-control", "14:26 missing-closer", "15:10 syntax-error"}));
}

TEST(Recovery, findsTheDeclarationBehindABlockThatIsNotClosed) {
    EXPECT_EQ(errorsOf("Main.script {\n"
                       "    one() {\n"
                       "        if (true) {\n"
                       "            print(1);\n"
                       "    }\n"
                       "    two() {\n"
                       "        a++;\n"
                       "    }\n"
                       "}\n"
                       "class Point {\n"
                       "    int x;\n"
                       "\n"
                       "vorla Main { width = ; }\n"),
              (Errors{"6:5 missing-brace", "7:10 increment", "13:1 missing-brace",
                      "13:22 syntax-error"}));
}

TEST(Recovery, keepsWhatIsRight) {
    const ParsedSource source("a.vorla", "one() { print(1) }\n"
                                         "two() { print(2); }\n"
                                         "vorla Main { button ok { text = ; width = 3; } }\n");
    EXPECT_FALSE(source.isAccepted());
    EXPECT_EQ(source.tree().functions.size(), 2u);
    ASSERT_NE(source.tree().window, nullptr);
    ASSERT_EQ(source.tree().window->components.size(), 1u);
    EXPECT_EQ(source.tree().window->components[0]->properties.size(), 1u);
}

TEST(Recovery, repairsALiteralBeforeItReadsOn) {
    EXPECT_EQ(errorsOf("go(a) {\n"
                       "    print('one');\n"
                       "    print(\"two\");\n"
                       "    print(“three”);\n"
                       "    a++;\n"
                       "    print(\"four);\n"
                       "    print(\"five\");\n"
                       "    a--;\n"
                       "}\n"),
              (Errors{"2:11 single-quoted-text", "4:11 curved-quotes", "5:6 increment",
                      "6:11 unterminated-text", "8:6 increment"}));
}

TEST(Recovery, endsBehindTwentyErrors) {
    std::string text = "go(a) {\n";
    for (int line = 0; line < 50; ++line) text += "    a++;\n";
    const Errors errors = errorsOf(text + "}\n");
    ASSERT_EQ(errors.size(), 20u);
    EXPECT_EQ(errors.back(), "21:6 increment");
}

TEST(Recovery, readsOnBehindMoreLargeNumbersThanItSays) {
    std::string text = "go(a) {\n";
    for (int line = 0; line < 30; ++line) text += "    a = 99999999999;\n";
    const Errors errors = errorsOf(text + "}\n");
    ASSERT_EQ(errors.size(), 20u);
    EXPECT_EQ(errors.back(), "21:9 number-too-large");
}

TEST(Recovery, saysOnceThatTheNestingIsTooDeep) {
    const std::string deep(2000, '(');
    EXPECT_EQ(errorsOf("go() {\n    print(" + deep + ");\n    a++;\n}\n").size(), 1u);
}

TEST(Recovery, takesLinearTimeOnBracketsWithoutEnd) {
    const std::size_t many = 200000;
    for (const char* piece :
         {"(", "{", "[", "a(", "a {", "a b {", "int f(", "\"", "'", "if ", "}"}) {
        std::string text = "vorla Main { button b { ";
        while (text.size() < many) text += piece;
        EXPECT_LE(errorsOf(text).size(), 20u) << piece;
    }
}
