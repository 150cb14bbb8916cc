#include "orvane/gxx_output.h"

#include <gtest/gtest.h>

using namespace Orvane;

TEST(GxxOutput, ReadsPlaceAndText) {
    const auto errors = readGxxOutput(
        "/p/main.cpp: In function 'void f()':\n"
        "/p/main.cpp:12:5: error: \xE2\x80\x98x\xE2\x80\x99 was not declared in this scope\n"
        "   12 |     x;\n");
    ASSERT_EQ(errors.size(), 1U);
    EXPECT_EQ(errors[0].place.file, "/p/main.cpp");
    EXPECT_EQ(errors[0].place.line, 12U);
    EXPECT_EQ(errors[0].place.column, 5U);
    EXPECT_EQ(errors[0].text, "'x' was not declared in this scope");
}

TEST(GxxOutput, DriveLettersAndCarriageReturnsAreNoObstacle) {
    const auto errors = readGxxOutput("C:\\p\\main.cpp:3:1: fatal error: gone\r\n");
    ASSERT_EQ(errors.size(), 1U);
    EXPECT_EQ(errors[0].place.file, "C:\\p\\main.cpp");
    EXPECT_EQ(errors[0].text, "gone");
}

TEST(GxxOutput, WarningsAreNoErrors) {
    EXPECT_TRUE(readGxxOutput("/p/main.cpp:1:1: warning: unused\n").empty());
}

TEST(GxxOutput, PlacesThatAskedForATemplateAndNotesBelongToTheError) {
    const auto errors = readGxxOutput("/p/main.cpp:7:2:   required from here\n"
                                      "/usr/include/vector:99:3: error: bad\n"
                                      "/p/import.hpp:5:1: note: candidate\n"
                                      "/p/main.cpp:9:1: error: other\n");
    ASSERT_EQ(errors.size(), 2U);
    ASSERT_EQ(errors[0].users.size(), 2U);
    EXPECT_EQ(errors[0].users[0].line, 7U);
    EXPECT_EQ(errors[0].users[1].file, "/p/import.hpp");
    EXPECT_TRUE(errors[1].users.empty());
}

TEST(GxxOutput, LinkErrorsHaveNoPlace) {
    const auto errors = readGxxOutput(
        "/usr/bin/ld: /tmp/x.o:main.cpp:(.text+0x1): undefined reference to `f(int)'\n"
        "collect2: error: ld returned 1 exit status\n");
    ASSERT_EQ(errors.size(), 2U);
    EXPECT_EQ(errors[0].text, "undefined reference to 'f(int)'");
    EXPECT_EQ(errors[0].place.line, 0U);
}

TEST(GxxOutput, AnyTextIsRead) {
    EXPECT_TRUE(readGxxOutput("").empty());
    EXPECT_TRUE(readGxxOutput("\n\n:::\n: note: \n").empty());
    EXPECT_EQ(readGxxOutput(": error: ").size(), 1U);
    EXPECT_EQ(readGxxOutput("x:1:99999999999999999999999: error: y")[0].place.line, 0U);
}

TEST(PlainWords, NamesAndTypesAreThoseOfTheLanguage) {
    EXPECT_EQ(inPlainWords("'prnt' was not declared in this scope; did you mean 'print'?"),
              "nothing is called 'prnt' here");
    EXPECT_EQ(inPlainWords("no match for 'operator+' (operand types are 'Value' and "
                           "'std::string' {aka 'std::__cxx11::basic_string<char>'})"),
              "'+' does not work with value and string");
    EXPECT_EQ(inPlainWords("cannot convert 'Value' to 'int' in assignment"),
              "value stands where int is needed");
    EXPECT_EQ(inPlainWords("conversion from 'std::vector<Value>' to non-scalar type 'std::string' "
                           "{aka 'std::__cxx11::basic_string<char>'} requested"),
              "list stands where string is needed");
    EXPECT_EQ(inPlainWords("too many arguments to function 'long long int add(long long int)'"),
              "too many arguments for 'add'");
    EXPECT_EQ(inPlainWords("conflicting declaration 'int a'"), "'a' is declared twice");
    EXPECT_EQ(inPlainWords("undefined reference to 'draw(Value)'"), "nothing is called 'draw'");
}

TEST(PlainWords, OtherSentencesKeepTheirWords) {
    EXPECT_EQ(inPlainWords("expected ';' before '}' token"), "expected ';' before '}' token");
    EXPECT_EQ(inPlainWords("'long long int x' is private"), "'int x' is private");
}
