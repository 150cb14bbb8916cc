#include "parsing.h"

#include <gtest/gtest.h>

namespace Orvane {
namespace {

using namespace Testing;

TEST(ParseClass, FieldsOfEveryType) {
    EXPECT_EQ(programText("class C { int x, y; Point p; }"),
              "(class C (field int x) (field int y) (field Point p))");
    for (const std::string type : {"value", "int", "double", "string", "bool", "array", "container",
                                   "map", "function", "void", "type", "button", "Point"})
        EXPECT_EQ(programText("class C { " + type + " x; }"), "(class C (field " + type + " x))");
}

TEST(ParseClass, TypeArgumentsAreSkipped) {
    EXPECT_EQ(programText("class C { map<string, array<int>> m; List<int> all() { } }"),
              "(class C (field map m) (method List all ()))");
}

TEST(ParseClass, Methods) {
    EXPECT_EQ(
        programText("class C { int area(int w, h) { return w; } go() { f(); } void no() { } }"),
        "(class C (method int area ((w int) (h -)) (return w)) "
        "(method - go () (expr (call f))) (method void no ()))");
}

TEST(ParseClass, ConstructorIsTheClassNameWithoutType) {
    EXPECT_EQ(programText("class P { P(int x) { y = x; } P() { } }"),
              "(class P (constructor - P ((x int)) (expr (= y x))) (constructor - P ()))");
    EXPECT_EQ(programText("class P { void P() { } p() { } P q() { } P r; }"),
              "(class P (field P r) (method void P ()) (method - p ()) (method P q ()))");
}

TEST(ParseClass, AccessWordsBeforeMembers) {
    EXPECT_EQ(programText("class C { private int x; int y; public go() { } stop() { } }"),
              "(class C (field int x private) (field int y) (method - go () public) "
              "(method - stop ()))");
    EXPECT_EQ(programText("class C { private C() { } }"), "(class C (constructor - C () private))");
    EXPECT_EQ(programText("class C { private int x, y; }"),
              "(class C (field int x private) (field int y private))");
}

TEST(ParseClass, AccessLabelsHoldUntilTheNext) {
    EXPECT_EQ(
        programText("class C { private: int x; go() { } public: int y; private int z; int w; }"),
        "(class C (field int x private) (field int y public) (field int z private) "
        "(field int w public) (method - go () private))");
}

TEST(ParseClass, AccessWordsMayStandAlone) {
    EXPECT_EQ(programText("class C { public }"), "(class C)");
    EXPECT_EQ(programText("class C { public: private: }"), "(class C)");
    EXPECT_EQ(programText("class C { public private int x; }"), "(class C (field int x private))");
}

TEST(ParseClass, SeveralOfOneNameAreAllKept) {
    EXPECT_EQ(programText("class C { int a; } class C { int b; }"),
              "(class C (field int a)) (class C (field int b))");
}

TEST(ParseClass, BrokenHeads) {
    EXPECT_EQ(programError("class { }"), unmet(44, 69, "Expected class name"));
    EXPECT_EQ(programError("class button { }"), unmet(44, 35, "Expected class name"));
    EXPECT_EQ(programError("class C ;"), unmet(69, 75, "Expected '{' after class name"));
}

TEST(ParseClass, BrokenFields) {
    EXPECT_EQ(programError("class C { int 5; }"), unmet(44, 45, "Expected name"));
    EXPECT_EQ(programError("class C { int size; }"), unmet(44, 35, "Expected name"));
    EXPECT_EQ(programError("class C { int x, 5; }"), unmet(44, 45, "Expected field name"));
    EXPECT_EQ(programError("class C { int x = 5; }"), unmet(75, 50, "Expected ';'"));
    EXPECT_EQ(programError("class C { x; }"), unmet(44, 75, "Expected name"));
}

TEST(ParseClass, BrokenMethods) {
    EXPECT_EQ(programError("class C { go(5) { } }"), unmet(44, 45, "Expected param name"));
    EXPECT_EQ(programError("class C { go(a; }"), unmet(72, 75, "Expected ')'"));
    EXPECT_EQ(programError("class C { go(); }"), unmet(69, 75, "Expected '{'"));
    EXPECT_EQ(programError("class C { go() { a;"), unmet(70, 78, "Expected '}'"));
    EXPECT_EQ(programError("class C { C(5) { } }"), unmet(44, 45, "Expected param name"));
}

TEST(ParseClass, NothingElseStandsInABody) {
    EXPECT_EQ(programError("class C { 5 }"), unmet(44, 45, "Expected name"));
    EXPECT_EQ(programError("class C { ; }"), unmet(44, 75, "Expected name"));
    EXPECT_EQ(programError("class C { class D { } }"), unmet(44, 2, "Expected name"));
    EXPECT_EQ(programError("class C { pointer p; }"), unmet(44, 14, "Expected name"));
    EXPECT_EQ(programError("class C { int x;"), unmet(44, 78, "Expected name"));
}

TEST(ParseAble, MethodsWithAndWithoutResultType) {
    EXPECT_EQ(programText("able Z { int area(int w, h); go(); void stop(); Point at(); "
                          "List<int> all(); map<string, int> table(); }"),
              "(able Z (int area ((w int) (h -))) (- go ()) (void stop ()) (Point at ()) "
              "(List all ()) (map table ()))");
    EXPECT_EQ(programText("able Z { }"), "(able Z)");
}

TEST(ParseAble, BrokenForms) {
    EXPECT_EQ(programError("able { }"), unmet(44, 69, "Expected able name"));
    EXPECT_EQ(programError("able Z ;"), unmet(69, 75, "Expected '{'"));
    EXPECT_EQ(programError("able Z { 5"), unmet(44, 45, "Expected method name in able"));
    EXPECT_EQ(programError("able Z { int 5"), unmet(44, 45, "Expected method name in able"));
    EXPECT_EQ(programError("able Z { go; }"), unmet(71, 75, "Expected '('"));
    EXPECT_EQ(programError("able Z { go(5); }"), unmet(44, 45, "Expected param name"));
    EXPECT_EQ(programError("able Z { go(a; }"), unmet(72, 75, "Expected ')'"));
    EXPECT_EQ(programError("able Z { go() { } }"),
              unmet(75, 69, "Expected ';' after able method declaration"));
    EXPECT_EQ(programError("able Z { go();"), unmet(44, 78, "Expected method name in able"));
}

} // namespace
} // namespace Orvane
