#include "parsing.h"

#include <gtest/gtest.h>

namespace Orvane {
namespace {

using namespace Testing;

// ---- The top level ----

TEST(ParseProgram, EmptySourceIsAnEmptyProgram) {
    Parsing parsing("");
    const auto program = parsing.parser.parse();
    ASSERT_NE(program, nullptr);
    EXPECT_TRUE(program->imports.empty());
    EXPECT_TRUE(program->usings.empty());
    EXPECT_EQ(program->window, nullptr);
    EXPECT_EQ(program->script, nullptr);
    EXPECT_TRUE(program->classes.empty());
    EXPECT_TRUE(program->ables.empty());
    EXPECT_TRUE(program->functions.empty());
    EXPECT_TRUE(program->typeNames.empty());
    EXPECT_EQ(programText(" \n // nothing\n"), "");
}

TEST(ParseProgram, StrayTokensAreSkippedSilently) {
    EXPECT_EQ(programText(";;; vorla Main { }"), "(vorla Main)");
    EXPECT_EQ(programText("} ) 5 \"x\" @ else typename T;"), "(typename T)");
    EXPECT_EQ(programError(";;; } 5 foo bar . ."), "(no error)");
    EXPECT_EQ(programText("int x = 5;"), "");
}

TEST(ParseProgram, NamesAreDroppedTogetherWithADot) {
    EXPECT_EQ(programText("a.b.script { f() { } }"), "(script (func - f ()))");
    EXPECT_EQ(programText("a. f() { }"), "(func - f ())");
    EXPECT_EQ(programText("a . 5 f() { }"), "(func - f ())");
    EXPECT_EQ(programText("a..script { f() { } }"), "(func - f ())");
    EXPECT_EQ(programText("button.script { f() { } }"), "(func - f ())");
}

TEST(ParseProgram, KeepsTheSourceOrderOfEveryList) {
    EXPECT_EQ(programText("f() { } typename A; class C { } import b; import a; g() { } "
                          "class D { } typename B; able Z { } able Y { }"),
              "(import \"b\") (import \"a\") (class C) (class D) (able Z) (able Y) "
              "(func - f ()) (func - g ()) (typename A) (typename B)");
}

// ---- typename ----

TEST(ParseTypename, RecordsTheName) {
    EXPECT_EQ(programText("typename Foo;"), "(typename Foo)");
    EXPECT_EQ(programError("typename ;"), unmet(44, 75, "Expected typename name"));
    EXPECT_EQ(programError("typename button;"), unmet(44, 35, "Expected typename name"));
    EXPECT_EQ(programError("typename Foo Bar"),
              unmet(75, 44, "Expected ';' after typename declaration"));
}

// ---- import ----

TEST(ParseImport, PathOrName) {
    EXPECT_EQ(programText("import \"my lib/a.orlib\";"), "(import \"my lib/a.orlib\")");
    EXPECT_EQ(programText("import math;"), "(import \"math\")");
    EXPECT_EQ(programText("import string;"), "(import \"string\")");
    EXPECT_EQ(programText("import ui.dialogs.file;"), "(import \"ui.dialogs.file\")");
    EXPECT_EQ(programText("import ui/dialogs . map"), "(import \"ui/dialogs.map\")");
}

TEST(ParseImport, SemicolonIsNeverRequired) {
    EXPECT_EQ(programText("import math vorla Main { }"), "(import \"math\") (vorla Main)");
    EXPECT_EQ(programText("import \"a\" import \"b\""), "(import \"a\") (import \"b\")");
    EXPECT_EQ(programText("import a. ; typename T;"), "(import \"a\") (typename T)");
}

TEST(ParseImport, AnythingElseFails) {
    EXPECT_EQ(programError("import 5;"), unmet(75, 45, "Expected ';'"));
    EXPECT_EQ(programError("import {"), unmet(75, 69, "Expected ';'"));
}

// ---- using ----

TEST(ParseUsing, Alias) {
    EXPECT_EQ(programText("using type Number = int;"), "(alias Number int)");
    EXPECT_EQ(programText("using type S = Shape; using type B = button;"),
              "(alias S Shape) (alias B button)");
    EXPECT_EQ(programText("using type F = function;"), "(alias F function)");
}

TEST(ParseUsing, Pair) {
    EXPECT_EQ(programText("using encoding \"utf8\";"), "(using encoding \"utf8\")");
    EXPECT_EQ(programText("using button \"flat\"; using class \"x\";"),
              "(using button \"flat\") (using class \"x\")");
}

TEST(ParseUsing, BothInSourceOrder) {
    EXPECT_EQ(programText("using a \"1\"; using type T = int; using a \"2\";"),
              "(using a \"1\") (alias T int) (using a \"2\")");
}

TEST(ParseUsing, BrokenAliases) {
    EXPECT_EQ(programError("using type 5"), unmet(44, 45, "Expected type alias name"));
    EXPECT_EQ(programError("using type int = T;"), unmet(44, 5, "Expected type alias name"));
    EXPECT_EQ(programError("using type T int;"), unmet(50, 5, "Expected '=' in using type"));
    EXPECT_EQ(programError("using type T = 5;"), unmet(44, 45, "Expected type name"));
    EXPECT_EQ(programError("using type T = int"), unmet(75, 78, "Expected ';'"));
}

TEST(ParseUsing, BrokenPairs) {
    EXPECT_EQ(programError("using \"x\";"), "Expected using key at line 1");
    EXPECT_EQ(programError("using\n\n"), "Expected using key at line 3");
    EXPECT_EQ(programError("using key value;"), unmet(47, 4, "Expected using value"));
    EXPECT_EQ(programError("using key \"x\""), unmet(75, 78, "Expected ';'"));
}

// ---- Functions ----

TEST(ParseFunction, WithAndWithoutResultType) {
    EXPECT_EQ(programText("main() { }"), "(func - main ())");
    EXPECT_EQ(programText("Point make() { return p; }"), "(func Point make () (return p))");
    for (const std::string type : {"value", "int", "double", "string", "bool", "array", "container",
                                   "map", "function", "void", "type", "button", "color"})
        EXPECT_EQ(programText(type + " f() { }"), "(func " + type + " f ())");
}

TEST(ParseFunction, ParametersMayHaveTypes) {
    EXPECT_EQ(programText("int add(int a, b) { return a; }"),
              "(func int add ((a int) (b -)) (return a))");
    EXPECT_EQ(programText("f(Point p, button b, function g, x) { }"),
              "(func - f ((p Point) (b button) (g function) (x -)))");
}

TEST(ParseFunction, LookaheadDropsOnlyOneTokenWhenTheShapeFails) {
    EXPECT_EQ(programText("int x f() { }"), "(func x f ())");
    EXPECT_EQ(programText("a b c() { }"), "(func b c ())");
    EXPECT_EQ(programText("int int f() { }"), "(func int f ())");
    EXPECT_EQ(programText("array<int> f() { }"), "(func - f ())");
    EXPECT_EQ(programText("int Main.script { }"), "(script)");
    EXPECT_EQ(programText("pointer f() { }"), "(func - f ())");
}

TEST(ParseFunction, BrokenParameters) {
    EXPECT_EQ(programError("f(5) { }"), unmet(44, 45, "Expected param name"));
    EXPECT_EQ(programError("f(a,) { }"), unmet(44, 72, "Expected param name"));
    EXPECT_EQ(programError("f(int) { }"), unmet(44, 72, "Expected param name"));
    EXPECT_EQ(programError("f(array<int> a) { }"), unmet(44, 58, "Expected param name"));
    EXPECT_EQ(programError("f("), unmet(44, 78, "Expected param name"));
    EXPECT_EQ(programError("f(int a int b) { }"), unmet(72, 5, "Expected ')'"));
    EXPECT_EQ(programError("f(a"), unmet(72, 78, "Expected ')'"));
}

TEST(ParseFunction, BrokenBodies) {
    EXPECT_EQ(programError("f();"), unmet(69, 75, "Expected '{'"));
    EXPECT_EQ(programError("f() { a;"), unmet(70, 78, "Expected '}'"));
    EXPECT_EQ(programError("f() { { a;"), "Expected expression at line 1");
}

TEST(ParseFunction, AreKeptInOrderWithDuplicates) {
    EXPECT_EQ(programText("f() { a; } f() { b; }"),
              "(func - f () (expr a)) (func - f () (expr b))");
}

// ---- Windows ----

TEST(ParseVorla, PropertiesWithOptionalSemicolon) {
    EXPECT_EQ(programText("vorla Main { title = \"A\" width = 300; }"),
              "(vorla Main (title \"A\") (width 300))");
    EXPECT_EQ(programText("vorla Main { color = #FFF; size = {1, 2} value = 3; }"),
              "(vorla Main (color #FFF) (size (array 1 2)) (value 3))");
    EXPECT_EQ(programText("vorla Main { a = b = 1; }"), "(vorla Main (a (= b 1)))");
}

TEST(ParseVorla, Components) {
    EXPECT_EQ(programText("vorla Main { button ok { text = \"OK\"; on click { x = 1; } } }"),
              "(vorla Main (button ok (text \"OK\") (on click (expr (= x 1)))))");
    EXPECT_EQ(programText("vorla Main { a = 1 button b { } c = 2; gadget d { } }"),
              "(vorla Main (a 1) (c 2) (button b) (gadget d))");
}

TEST(ParseVorla, TheParserLeavesChildrenAndScriptEmpty) {
    Parsing parsing("vorla Main { panel p { button b { text = 1; } } } Main.script { }");
    const auto program = parsing.parser.parse();
    ASSERT_EQ(program->window->components.size(), 1U);
    EXPECT_TRUE(program->window->components[0]->children.empty());
    EXPECT_EQ(program->window->script, nullptr);
    EXPECT_NE(program->script, nullptr);
}

TEST(ParseVorla, KeysWithoutEqualsAreDropped) {
    EXPECT_EQ(programText("vorla Main { visible title = 1; text; a b c = 2; }"),
              "(vorla Main (title 1) (c 2))");
}

TEST(ParseVorla, OtherTokensAreSkipped) {
    EXPECT_EQ(programText("vorla Main { ; 5 on \"x\" = title = 1 if class }"),
              "(vorla Main (title 1))");
}

TEST(ParseVorla, LaterWindowReplacesTheEarlier) {
    EXPECT_EQ(programText("vorla A { x = 1; } vorla B { y = 2; }"), "(vorla B (y 2))");
}

TEST(ParseVorla, BrokenForms) {
    EXPECT_EQ(programError("vorla { }"), unmet(44, 69, "Expected vorla name"));
    EXPECT_EQ(programError("vorla button { }"), unmet(44, 35, "Expected vorla name"));
    EXPECT_EQ(programError("vorla Main ;"), unmet(69, 75, "Expected '{'"));
    EXPECT_EQ(programError("vorla Main { a = 1;"), unmet(70, 78, "Expected '}'"));
    EXPECT_EQ(programError("vorla Main { a = ; }"), "Expected expression at line 1");
}

TEST(ParseVorla, LookaheadDecidesWhatAComponentIs) {
    EXPECT_EQ(programError("vorla Main { button { } }"), unmet(44, 69, "Expected component name"));
    EXPECT_EQ(programError("vorla Main { a b c { } }"), unmet(69, 44, "Expected '{'"));
    EXPECT_EQ(programError("vorla Main { value p { } }"), unmet(44, 69, "Expected component name"));
    EXPECT_EQ(programError("vorla Main { button text { } }"),
              unmet(44, 69, "Expected component name"));
}

TEST(ParseComponent, KeysMayBeAnyStandardType) {
    for (const std::string_view name : standardTypes) {
        const std::string key(name);
        EXPECT_EQ(programText("vorla M { slider s { " + key + " = 50 } }"),
                  "(vorla M (slider s (" + key + " 50)))");
    }
}

TEST(ParseComponent, OtherTokensAreSkipped) {
    EXPECT_EQ(programText("vorla M { entry e { ; 5 text if = width = 2 } }"),
              "(vorla M (entry e (width 2)))");
}

TEST(ParseComponent, LaterBodyOfAnEventWins) {
    EXPECT_EQ(programText("vorla M { button b { on click { a; } on change { b; } "
                          "on click { c; } } }"),
              "(vorla M (button b (on change (expr b)) (on click (expr c))))");
}

TEST(ParseComponent, EqualPropertiesAreAllKept) {
    EXPECT_EQ(programText("vorla M { listbox l { items = {\"a\"} items = [1, 2, 3] } }"),
              "(vorla M (listbox l (items (array \"a\")) (items (range 1 2 3))))");
}

TEST(ParseComponent, BrokenForms) {
    EXPECT_EQ(programError("vorla M { button b { on 5"), unmet(44, 45, "Expected event name"));
    EXPECT_EQ(programError("vorla M { button b { on text { } } }"),
              unmet(44, 35, "Expected event name"));
    EXPECT_EQ(programError("vorla M { button b { on click x; } }"), unmet(69, 44, "Expected '{'"));
    EXPECT_EQ(programError("vorla M { button b { on click { x;"), unmet(70, 78, "Expected '}'"));
    EXPECT_EQ(programError("vorla M { button b { "), unmet(70, 78, "Expected '}'"));
}

// ---- Scripts ----

TEST(ParseScript, HandlersAndFunctions) {
    EXPECT_EQ(programText("Main.script { on ok.click { a; } ok.change { b; } "
                          "int f(int x) { return x; } void g() { } h() { } }"),
              "(script (on ok click (expr a)) (on ok change (expr b)) "
              "(func int f ((x int)) (return x)) (func void g ()) (func - h ()))");
}

TEST(ParseScript, BlocksOfAnyNameMakeOneScript) {
    EXPECT_EQ(programText("Main.script { a() { } } other.script { b() { } on c.d { } }"),
              "(script (on c d) (func - a ()) (func - b ()))");
}

TEST(ParseScript, ClassesInsideBelongToTheProgram) {
    EXPECT_EQ(programText("Main.script { class C { int x; } f() { } }"),
              "(script (func - f ())) (class C (field int x))");
}

TEST(ParseScript, OtherTokensAreSkipped) {
    EXPECT_EQ(programText("Main.script { ; 5 import x = \"y\" f() { } }"),
              "(script (func - f ()))");
}

TEST(ParseScript, BrokenForms) {
    EXPECT_EQ(programError("Main.script f() { }"), unmet(69, 44, "Expected '{'"));
    EXPECT_EQ(programError("Main.script { on 5"), unmet(44, 45, "Expected target name"));
    EXPECT_EQ(programError("Main.script { on ok { } }"), unmet(65, 69, "Expected '.'"));
    EXPECT_EQ(programError("Main.script { on ok.5 { } }"), unmet(44, 45, "Expected event name"));
    EXPECT_EQ(programError("Main.script { ok.text = 1; }"), unmet(44, 35, "Expected event name"));
    EXPECT_EQ(programError("Main.script { ok.click = 1; }"), unmet(69, 50, "Expected '{'"));
    EXPECT_EQ(programError("Main.script { on ok.click { a;"), unmet(70, 78, "Expected '}'"));
    EXPECT_EQ(programError("Main.script { f() { }"), unmet(70, 78, "Expected '}'"));
}

} // namespace
} // namespace Orvane
