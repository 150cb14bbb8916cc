// Names: functions, variables, controls, methods, and words that cannot be names.
#include "check/types_testing.h"

#include <gtest/gtest.h>

using namespace Orvane::Testing;

TEST(NamesOfFunctions, UnknownOnesAreErrors) {
    EXPECT_EQ(said(inHandler("prnt(1);")),
              "unknown-function <prnt> no function is called 'prnt'\n");
    EXPECT_EQ(hintOf(inHandler("prnt(1);")), "Did you mean 'print'?");
    EXPECT_EQ(hintOf(inHandler("paintItAll(1);")),
              "Write the function, or import the library that has it.");
    EXPECT_EQ(said(inHandler("print(1); alert(greet());", "value greet() { return 1; }")), "");
}

TEST(NamesOfFunctions, AMissingLibraryIsNamed) {
    EXPECT_EQ(said(inHandler("alert(toUpper(\"a\"));")),
              "missing-library <toUpper> 'toUpper' is a function of the library 'string', which is "
              "not imported\n");
    EXPECT_EQ(hintOf(inHandler("alert(toUpper(\"a\"));")),
              "Write 'import string' at the top of the file.");
    EXPECT_EQ(said(inHandler("alert(toUpper(\"a\"));"), {"string"}), "");
}

TEST(NamesOfFunctions, FunctionsOfCAndWindowsAreNoErrors) {
    EXPECT_EQ(said(inHandler("alert(sqrt(2)); Sleep(5); GetTickCount();")), "");
    EXPECT_EQ(said(inHandler("value n = 2; Sleep(n);")),
              "platform-argument <Sleep> 'Sleep' is a function of C++ or Windows, which takes no "
              "dynamic values and no strings of this language\n");
    EXPECT_EQ(said(inHandler("value n = 2; alert(sqrt(n));")),
              "missing-library <sqrt> 'sqrt' is a function of the library 'math', which is not "
              "imported\n");
}

TEST(NamesOfFunctions, ScriptFunctionsKnowThoseAboveThem) {
    EXPECT_EQ(said("vorla A { } A.script { value f(a) { return g(a); } value g(a) { return a; } }"),
              "function-used-before <g> the function 'g' of a script is called before it stands\n");
    EXPECT_EQ(said("vorla A { } A.script { value g(a) { return a; } value f(a) { return g(a); } }"),
              "");
    EXPECT_EQ(said("value f(a) { return g(a); } value g(a) { return a; }"), "");
}

TEST(NamesOfFunctions, NamesOfTheCppLibraryAreAmbiguous) {
    EXPECT_EQ(said(inHandler("alert(pair());", "value pair() { return 1; }")),
              "ambiguous-function <pair> 'pair' is a name of the C++ library, too, so this call "
              "means two things\n");
    EXPECT_EQ(said(inHandler("alert(1);", "value pair() { return 1; }")), "");
}

TEST(NamesOfFunctions, TwoWithTheSameTypesAreErrors) {
    EXPECT_EQ(said("value f(a) { return a; } value f(value b) { return b; }"),
              "duplicate-function <f> a function 'f' with the same types of parameters exists "
              "already\n");
    EXPECT_EQ(said("value f(a) { return a; } value f(int b) { return b; }"), "");
}

TEST(NamesOfFunctions, WithoutParenthesesTheyAreNotCalled) {
    EXPECT_EQ(said(inHandler("alert(five);", "int five() { return 5; }")),
              "function-without-call <five> 'five' is a function and is not called here\n");
    EXPECT_EQ(said(inHandler("value five = 5; alert(five);", "int five() { return 5; }")), "");
}

TEST(NamesOfVariables, UnknownOnesAreErrors) {
    EXPECT_EQ(said(inHandler("int total = 1; alert(totl);")),
              "unknown-variable <totl> no variable is called 'totl'\n");
    EXPECT_EQ(hintOf(inHandler("int total = 1; alert(totl);")), "Did you mean 'total'?");
    EXPECT_EQ(said(inHandler("{ int total = 1; } alert(total);")),
              "unknown-variable <total> no variable is called 'total'\n");
    EXPECT_EQ(said(inHandler("int total = 1; alert(total); alert(MB_OK); alert(wParam);")), "");
}

TEST(NamesOfVariables, FunctionsDoNotKnowTheControls) {
    EXPECT_EQ(said(inHandler("alert(f());", "value f() { return name; } ")),
              "control-in-function <name> 'name' is a control, and functions do not know the "
              "controls\n");
    EXPECT_EQ(said(inHandler("alert(f(name));", "value f(name) { return name; } ")), "");
}

TEST(NamesOfVariables, ABlockDeclaresEachOnce) {
    EXPECT_EQ(said(inHandler("int a = 1; int a = 2;")),
              "duplicate-variable <a> the variable 'a' is declared a second time in the same "
              "block\n");
    EXPECT_EQ(said(inHandler("int a = 1; { int a = 2; }")), "");
    EXPECT_EQ(said(inHandler("for (a : {1}) { int a = 2; }")),
              "duplicate-variable <a> the variable 'a' is declared a second time in the same "
              "block\n");
}

TEST(NamesOfVariables, TheyCollideWithParametersFieldsAndControls) {
    EXPECT_EQ(said("value f(n) { value n = 1; return n; }"),
              "name-of-parameter <n> 'n' is a parameter already\n");
    EXPECT_EQ(said("value f(n) { { value n = 1; } return n; }"), "");
    EXPECT_EQ(said("class K { value a; value m() { value a = 1; return a; } }"),
              "name-of-field <a> 'a' is a field of the class, which its methods know under this "
              "name\n");
    EXPECT_EQ(said("class K { value a; value m(a) { return a; } }"), "");
    EXPECT_EQ(said(inHandler("value name = 1;")),
              "name-of-control <name> 'name' is a control of the window, which every handler knows "
              "under this name\n");
    EXPECT_EQ(said(inHandler("if (true) { value name = 1; }")), "");
}

TEST(NamesOfVariables, TheFirstValueCannotUseTheVariable) {
    EXPECT_EQ(said(inHandler("int n = n + 1;")),
              "uses-itself <n> the first value of 'n' uses 'n' itself, which has no value yet\n");
    EXPECT_EQ(said(inHandler("int n = 1; int m = n + 1;")), "");
}

TEST(NamesOfParameters, AllDiffer) {
    EXPECT_EQ(said("value f(n, int n) { return n; }"),
              "duplicate-parameter <n> two parameters are called 'n'\n");
    EXPECT_EQ(said("class K { value m(value _this) { return 1; } }"),
              "duplicate-parameter <_this> two parameters are called '_this'\n");
    EXPECT_EQ(said("value f(n, int m) { return n; }"), "");
}

TEST(NamesOfControls, AllDifferInAWindow) {
    EXPECT_EQ(said("vorla A { button ok { } text ok { } }"),
              "duplicate-control <ok> two controls of the window are called 'ok'\n");
    EXPECT_EQ(said("vorla A { timer t { } timer t { } menu m { } button b { } }"), "");
    EXPECT_EQ(said("vorla A { menu m { } menu m { } }"),
              "duplicate-control <m> two controls of the window are called 'm'\n");
}

TEST(ReservedNames, WordsOfCppAndMacrosAreRefusedWhereTheyAreWritten) {
    EXPECT_EQ(said(inHandler("value new = 1;")),
              "reserved-name <new> 'new' is a word of C++ and cannot be a name here\n");
    EXPECT_EQ(said(inHandler("value far = 1;")),
              "reserved-name <far> 'far' is a word of the Windows headers and cannot be a name "
              "here\n");
    EXPECT_EQ(said("class K { value new; value delete() { return 1; } }"),
              "reserved-name <new> 'new' is a word of C++ and cannot be a name here\n");
    EXPECT_EQ(said("class new { value a; value delete() { return a; } }"), "");
    EXPECT_EQ(said("vorla A { button new { } }"), "");
    EXPECT_EQ(said("vorla A { button new { on click { } } }"),
              "reserved-name <new> 'new' is a word of C++ and cannot be a name here\n");
}

TEST(ReservedNames, AWordOfCppIsNoFunction) {
    EXPECT_EQ(said(inHandler("alert(xor(1, 2));")),
              "reserved-name <xor> 'xor' is a word of C++ and cannot be a name here\n");
}

TEST(ReservedNames, OperatorsAndTypesOfCppMayStandBeforeBrackets) {
    EXPECT_EQ(said(inHandler("value n = 1; alert(not(n)); print(compl(3));")), "");
    EXPECT_EQ(said(inHandler("print(sizeof(3)); print(float(3)); print(typeid(3)); noexcept(3);")),
              "");
}

TEST(NamesOfMethods, OnesBelowAreNotKnown) {
    const std::string above = "class K { value a() { K k = _this; return k.b(); } "
                              "value b() { return 1; } }";
    EXPECT_EQ(said(above),
              "method-used-before <k.b> the method 'b' is called in a method above it\n");
    EXPECT_EQ(said("class K { value b() { return 1; } value a() { K k = _this; return k.b(); } }"),
              "");
}

TEST(NamesOfMethods, TheyAreNoFunctions) {
    EXPECT_EQ(said("class K { value b() { return 1; } value a() { return b(); } }"),
              "method-as-function <b> 'b' is a method of this class, and methods are called on a "
              "variable\n");
    EXPECT_EQ(said("class K { value b() { return 1; } value a() { return b(); } } "
                   "value b() { return 2; }"),
              "");
}

TEST(NamesOfMethods, TwoWithTheSameTypesAreErrors) {
    EXPECT_EQ(said("class K { value m() { return 1; } value m() { return 2; } }"),
              "duplicate-method <m> the class has a method 'm' with the same types of parameters "
              "already\n");
    EXPECT_EQ(said("class K { value m() { return 1; } value m(n) { return 2; } }"), "");
}

TEST(NamesOfMethods, UnknownOnesDoNothing) {
    const std::string point = "class Point { value x; value show() { return x; } } ";
    EXPECT_EQ(said(inHandler("Point p; alert(p.shown());", point)),
              "unknown-method <shown> the class 'Point' has no method 'shown', so this call does "
              "nothing and gives null\n");
    EXPECT_EQ(said(inHandler("Point p; alert(p.show());", point)), "");
    EXPECT_EQ(said(inHandler("value v = {}; v.push(1);")),
              "method-of-no-object <push> '.push(...)' does nothing and gives null, because no "
              "class is known for what stands before it\n");
    EXPECT_EQ(hintOf(inHandler("value v = {}; v.push(1);")), "Write the function: push(v, ...).");
    EXPECT_EQ(hintOf(inHandler("value v = {}; v.paintItAll(1);")),
              "Declare the variable with its class, or call a function.");
}

TEST(CallsInMethods, DoNotBringLibraryFunctionsIn) {
    const std::string word = "class Word { value t; value letters() { return length(t); } } ";
    EXPECT_EQ(said(inHandler("Word w; alert(w.letters());", word), {"string"}),
              "call-only-in-methods <length> 'length' is called in methods of classes only, where "
              "calls of library functions do not count\n");
    EXPECT_EQ(said(inHandler("Word w; alert(w.letters() + length(\"\"));", word), {"string"}), "");
    EXPECT_EQ(said("class K { void m() { print(1); } }"),
              "call-only-in-methods <print> 'print' is called in methods of classes only, where "
              "calls of library functions do not count\n");
}

TEST(NamesOfTypes, UnknownOnesAreDynamic) {
    EXPECT_EQ(said(inHandler("Accont a = 1; alert(a);", "class Account { } ")),
              "unknown-type <Accont> no type is called 'Accont', so this is a dynamic value\n");
    EXPECT_EQ(said(inHandler("Integer n = 1; let m = 2; alert(n + m);")), "");
    EXPECT_EQ(said(inHandler("Money n = 1; alert(n);", "typename Money; ")), "");
    EXPECT_EQ(said(inHandler("Point p = Point { x = 1 }; alert(p);")), "");
    EXPECT_EQ(said(inHandler("value v = 1; if (is(v, text)) { }")),
              "never-true-test <text> no value is ever of the type 'text'\n");
    EXPECT_EQ(said(inHandler("value v = 1; if (is(v, string)) { } if (is(v, class)) { }")), "");
}

TEST(NamesOfFunctions, MacrosOfWindows) {
    EXPECT_EQ(said("value CreateWindow(value a) { return a; }"),
              "reserved-name <CreateWindow> 'CreateWindow' is a word of the Windows headers and "
              "cannot be a name here\n");
    EXPECT_EQ(said("value RGB(r, g, b) { return r; }"),
              "reserved-name <RGB> 'RGB' is a word of the Windows headers and cannot be a name "
              "here\n");
    EXPECT_EQ(said("value CreateWindows(value a) { return a; } value create() { return 1; }"), "");
}

TEST(NamesOfFunctions, WithTheParametersOfOneOfC) {
    EXPECT_EQ(said("int abs(int n) { return n; }"),
              "reserved-name <abs> 'abs' is a word of the C library and cannot be a name here\n");
    EXPECT_EQ(said("double abs(double n) { return n; }"),
              "reserved-name <abs> 'abs' is a word of the C library and cannot be a name here\n");
    EXPECT_EQ(said("value abs(value n) { return n; } int abs(int a, int b) { return a; }"), "");
    EXPECT_EQ(said("int div(int a, int b) { return a; }"),
              "reserved-name <div> 'div' is a word of the C library and cannot be a name here\n");
    EXPECT_EQ(said("value GetVersion() { return 1; }"),
              "reserved-name <GetVersion> 'GetVersion' is a word of the Windows headers and cannot "
              "be a name here\n");
}

TEST(NamesOfFunctions, ANumberMeansTheFunctionOfWindows) {
    const std::string own = "value Sleep(value a) { return a; } ";
    EXPECT_EQ(said(inHandler("alert(Sleep(1));", own)), "no-value <Sleep(1)> this has no value\n");
    EXPECT_EQ(said(inHandler("value v = 1; alert(Sleep(v)); Sleep(1);", own)), "");
    EXPECT_EQ(said(inHandler("alert(Sleep(1, 2));", "value Sleep(a, b) { return a; } ")), "");
}

TEST(NamesOfFields, UnknownOnesOfAClass) {
    const std::string point = "class Point { value x; } ";
    EXPECT_EQ(said(inHandler("Point p; alert(p.X);", point)),
              "unknown-field <X> the class 'Point' has no field 'X'\n");
    EXPECT_EQ(hintOf(inHandler("Point p; alert(p.colour);", point)),
              "Add the field to the class, or correct the name.");
    EXPECT_EQ(said(inHandler("Point p; p.X = 1; alert(p.X); alert(p.x);", point)), "");
}

TEST(NamesOfLibraries, UnknownOnes) {
    EXPECT_EQ(said("import strings"), "unknown-library <strings> no library is called 'strings'\n");
    EXPECT_EQ(said("import normal import \"lib/math.orlib\""), "");
}

TEST(NamesOfLibraries, AnUnknownOneStandsForItsFunctions) {
    EXPECT_EQ(said(inHandler("draw(1); paint(draw(2), 3);", "import graphics ")),
              "needed-library <graphics> no library is called 'graphics', and the program calls "
              "functions that no other library has\n");
    EXPECT_EQ(said(inHandler("draw(1);", "import graphics import shapes import string ")),
              "needed-library <graphics> no library is called 'graphics', and the program calls "
              "functions that no other library has\n"
              "needed-library <shapes> no library is called 'shapes', and the program calls "
              "functions that no other library has\n");
}

TEST(NamesOfLibraries, WhatIsKnownIsSaidBesideAnUnknownOne) {
    EXPECT_EQ(said(inHandler("alert(trim(\"x\"));", "import graphics ")),
              "unknown-library <graphics> no library is called 'graphics'\n"
              "missing-library <trim> 'trim' is a function of the library 'string', which is not "
              "imported\n");
}

TEST(Colours, SixHexadecimalDigits) {
    EXPECT_EQ(said("vorla A { text t { color = #F00 } }"),
              "unknown-colour <#F00> '#F00' is no colour\n");
    EXPECT_EQ(said("vorla A { text t { color = \"red\" } }"),
              "unknown-colour <\"red\"> 'red' is no colour\n");
    EXPECT_EQ(said("vorla A { text t { color = #FF0000; background = \"#00ff00\" } }"), "");
    EXPECT_EQ(said("vorla A { text t { color = \"\"; background = 5 } }"), "");
}
