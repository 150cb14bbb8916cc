// Values: calls and their arguments, operators, conditions, indices and results.
#include "check/types_testing.h"

#include <gtest/gtest.h>

using namespace Orvane::Testing;

TEST(Arguments, AreAsManyAsThereAreParameters) {
    const std::string larger = "value larger(a, b) { return a; } ";
    EXPECT_EQ(said(inHandler("alert(larger(3));", larger)),
              "argument-count <larger(3)> 'larger' takes 2 arguments, not 1\n");
    EXPECT_EQ(said(inHandler("alert(larger(3, 4));", larger)), "");
    EXPECT_EQ(said(inHandler("alert(larger(3));", larger + "value larger(a) { return a; } ")), "");
}

TEST(Arguments, OfTypedParametersHaveTheirType) {
    const std::string typed = "int twice(int n) { return n * 2; } string same(string s) "
                              "{ return s; } ";
    EXPECT_EQ(said(inHandler("value v = 1; alert(twice(v));", typed)),
              "argument-type <v> 'twice' takes an int here, and this is a dynamic value\n");
    EXPECT_EQ(said(inHandler("alert(same(5));", typed)),
              "argument-type <5> 'same' takes a string here, and this is an int\n");
    EXPECT_EQ(hintOf(inHandler("alert(same(5));", typed)),
              "Pass a value of that type, or let the parameter be 'value'.");
    EXPECT_EQ(said(inHandler("alert(twice(2.5)); alert(twice(true)); alert(same(\"a\"));", typed)),
              "");
}

TEST(Arguments, DynamicOnesAreConvertedFirst) {
    const auto hintFor = [](const std::string& type) {
        return hintOf(inHandler("value v = 1; take(v);", "void take(" + type + " x) { } "));
    };
    EXPECT_EQ(hintFor("int"), "Convert it: toInt(...) of the library 'math'.");
    EXPECT_EQ(hintFor("double"), "Convert it: toDouble(...) of the library 'math'.");
    EXPECT_EQ(hintFor("bool"), "Convert it: toBool(...) of the library 'math'.");
    EXPECT_EQ(hintFor("string"), "Store it first: string t = \"\" + x; and pass t.");
}

TEST(Arguments, ThatAreChangedAreVariables) {
    EXPECT_EQ(said(inHandler("push({1}, 2);"), {"array"}),
              "argument-no-variable <{1}> 'push' changes this argument, so it must be a dynamic "
              "variable\n");
    EXPECT_EQ(
        said(inHandler("value v = {1}; push(v, 2); push(v.all, 3); push(v[0], 4);"), {"array"}),
        "");
}

TEST(Arguments, OfAlertAndPrintCountOnce) {
    EXPECT_EQ(said(inHandler("alert(\"a\", unknown);")),
              "ignored-arguments <unknown> 'alert' shows its first argument only\n");
    EXPECT_EQ(said(inHandler("alert(); print();")), "");
}

TEST(Calls, ObjectsAreNotMadeByThem) {
    EXPECT_EQ(said(inHandler("value p = Point(1);", "class Point { value x; } ")),
              "constructor-call <Point> 'Point' is a class, and objects are not made by a call\n");
    EXPECT_EQ(said(inHandler("value p = Point { x = 1 };", "class Point { value x; } ")), "");
}

TEST(Calls, OfVariables) {
    EXPECT_EQ(said(inHandler("int f = 1; f();")),
              "not-callable <f> 'f' is a variable here (an int), which cannot be called\n");
    EXPECT_EQ(said(inHandler("name();")), "call-of-variable <name> 'name' is a variable or control "
                                          "here, and calling it does nothing\n");
    EXPECT_EQ(said(inHandler("name2();", "void name2() { } ")), "");
}

TEST(Values, CallsOfFunctionsWithoutResultHaveNone) {
    EXPECT_EQ(said(inHandler("value v = nothing();", "void nothing() { } ")),
              "no-value <nothing()> this has no value\n");
    EXPECT_EQ(said(inHandler("nothing();", "void nothing() { } ")), "");
    EXPECT_EQ(said(inHandler("value x = 1; when (x) { is int -> print(1); }")),
              "no-value <print(1)> this has no value\n");
}

TEST(FirstValues, AreNeededByTypedVariables) {
    EXPECT_EQ(said(inHandler("int n;")),
              "missing-first-value <n> the variable 'n' of type 'int' needs a first value\n");
    EXPECT_EQ(hintOf(inHandler("bool b;")), "Write bool b = false;");
    EXPECT_EQ(said(inHandler("string s;")),
              "string-without-value <s> the string 's' has no first value, and the program ends "
              "here\n");
    EXPECT_EQ(said(inHandler("value v; Point p; array a;", "class Point { } ")), "");
}

TEST(FirstValues, OfAnotherKindAreLost) {
    EXPECT_EQ(said(inHandler("double d = 5;")),
              "double-from-integer <5> 'd' becomes 0.0: a double takes no integer as its first "
              "value\n");
    EXPECT_EQ(said(inHandler("double d = 5.0;")),
              "double-from-integer <5.0> 'd' becomes 0.0: a double takes no integer as its first "
              "value\n");
    EXPECT_EQ(said(inHandler("int n = \"5\";")),
              "lost-first-value <\"5\"> 'n' becomes 0: an int takes no first value that is a "
              "string\n");
    EXPECT_EQ(
        said(inHandler("value a = 3; int n = a + 1;")),
        "dynamic-sum <a + 1> 'n' becomes 0: '+' with dynamic values gives a double or a text, "
        "never an integer\n");
    EXPECT_EQ(said(inHandler("double d = 2.5; int n = 1 + 1; bool b = n < 2; string s = \"x\"; "
                             "value a = 3; int m = a - 1;")),
              "");
}

TEST(Assignments, KeepTheTypeOfTheVariable) {
    EXPECT_EQ(said(inHandler("int n = 1; value v = 2; n = v;")),
              "wrong-assignment <v> a dynamic value cannot be stored in a variable that is an "
              "int\n");
    EXPECT_EQ(
        said(inHandler("int n = 1; n = 2.5; string s = \"\"; s = \"x\"; value v = n; v = s;")), "");
    EXPECT_EQ(said(inHandler("int a = 1; a + 1 = 2;")),
              "not-assignable <a + 1> nothing can be stored in this\n");
}

TEST(Operators, WorkBetweenTypesThatFit) {
    EXPECT_EQ(said(inHandler("string s = \"4\"; if (s == 4) { }")),
              "wrong-operands <s == 4> '==' does not work between a string and an int\n");
    EXPECT_EQ(said(inHandler("double d = 2.5; alert(d % 2);")),
              "wrong-operands <d % 2> '%' does not work between a double and an int\n");
    EXPECT_EQ(said(inHandler("string s = \"4\"; alert(s + 4); alert(4 + s); value v = 4; "
                             "if (s == v) { } alert(v % 2.5); alert({1} + {2});")),
              "");
    EXPECT_EQ(said(inHandler("string s = \"\"; alert(-s);")),
              "wrong-operand <-s> '-' cannot stand in front of a string\n");
}

TEST(Conditions, AreTruthValues) {
    EXPECT_EQ(said(inHandler("string s = \"\"; while (s) { }")),
              "wrong-condition <s> a string is no condition\n");
    EXPECT_EQ(said(inHandler("int n = 1; if (n) { } value v = true; if (v) { }")), "");
}

TEST(Conditions, ThatAreNeverTrue) {
    EXPECT_EQ(
        said(inHandler("value n = 1; if (n) { }")),
        "condition-not-bool <n> this condition is never true, because it is no truth value\n");
    EXPECT_EQ(said(inHandler("value n = 1; if (n + 1) { }")),
              "condition-not-bool <n + 1> this condition is never true, because it is no truth "
              "value\n");
    EXPECT_EQ(said(inHandler("value n = 1; while (n) { n = 1 < 2; }")), "");
    EXPECT_EQ(said(inHandler("value n; if (n) { }")), "condition-not-bool <n> this condition is "
                                                      "never true, because it is no truth value\n");
}

TEST(Conditions, AssignmentsAndComparisonsAreMixedUp) {
    EXPECT_EQ(said(inHandler("int n = 1; if (n = 2) { }")),
              "assignment-as-condition <n = 2> '=' stores a value and compares nothing\n");
    EXPECT_EQ(said(inHandler("int n = 1; n == 2;")),
              "comparison-as-statement <n == 2> '==' compares and stores nothing\n");
    EXPECT_EQ(said(inHandler("int n = 1; if (n == 2) { n = 2; }")), "");
}

TEST(Comparisons, NothingIsEqualToNull) {
    EXPECT_EQ(
        said(inHandler("value v; if (v == null) { }")),
        "null-comparison <v == null> this is always false: nothing is equal to null, not even "
        "null\n");
    EXPECT_EQ(said(inHandler("value v; if (null != v) { }")),
              "null-comparison <null != v> this is always true: nothing is equal to null, not even "
              "null\n");
    EXPECT_EQ(said(inHandler("value v = null; if (v == 1) { }")), "");
}

TEST(Indices, OfDynamicValuesAndTexts) {
    EXPECT_EQ(said(inHandler("int n = 5; alert(n[0]);")),
              "wrong-index <n[0]> an int has no element at an int\n");
    EXPECT_EQ(said(inHandler("value v = {1}; alert(v[0]); alert(v[\"x\"]); string s = \"ab\"; "
                             "alert(s[1]);")),
              "");
    EXPECT_EQ(said(inHandler("string s = \"ab\"; alert(s.length);")),
              "member-of-typed <s.length> there is no '.length' in a string\n");
}

TEST(Lists, RangesGoFromNumberToNumber) {
    EXPECT_EQ(said(inHandler("value v = [1..\"5\"];")),
              "wrong-bound <\"5\"> a range cannot begin or end with a string\n");
    EXPECT_EQ(said(inHandler("value n = 5; value v = [1..n, 2]; value w = [1.5..n];")), "");
}

TEST(Lists, AllNeedsAVariable) {
    EXPECT_EQ(said(inHandler("string s = \"\"; s.all = 1;")),
              "all-of-no-list <s.all> '.all' needs a dynamic variable that holds a list, and this "
              "is a string\n");
    EXPECT_EQ(said(inHandler("value v = {1}; v.all = v.all + 1; v.x.all = 2;")), "");
}

TEST(Loops, GoThroughLists) {
    EXPECT_EQ(said(inHandler("for (i : 10) { }")),
              "loop-over-no-list <10> an int has no elements, so this loop does nothing\n");
    EXPECT_EQ(said(inHandler("for (int i : [1..3]) { }")),
              "typed-loop <int> 'i' is 0 for every integer of this list, because 'int' loops take "
              "doubles\n");
    EXPECT_EQ(said(inHandler("for (i : [1..3]) { } for (double d : {1.5, 2.5}) { } value v; "
                             "for (int i : v) { }")),
              "");
}

TEST(Loops, BreakAndContinueStandInThem) {
    EXPECT_EQ(said("void f() { break; }"), "outside-of-loop <break> 'break' stands outside of a "
                                           "loop\n");
    EXPECT_EQ(said(inHandler("for (i : {1}) { break; continue; } break;")), "");
}

TEST(Results, OfHandlersAreNumbers) {
    EXPECT_EQ(said(inHandler("return;")),
              "handler-return <return;> a handler does not end with a plain 'return;'\n");
    EXPECT_EQ(
        said(inHandler("return \"x\";")),
        "handler-result <\"x\"> a handler returns a number to Windows, and this is a string\n");
    EXPECT_EQ(said(inHandler("defer { return; } return 0;")), "");
}

TEST(Results, HaveTheTypeOfTheFunction) {
    EXPECT_EQ(said("int f(n) { return n; }"),
              "wrong-return <n> 'f' must return an int, and this is a dynamic value\n");
    EXPECT_EQ(hintOf("int f() { return \"x\"; }"),
              "Return a value of that type, or let the function return 'value'.");
    EXPECT_EQ(said("value f(n) { return; }"),
              "return-without-value <return;> 'f' must return a dynamic value, and here is "
              "nothing\n");
    EXPECT_EQ(said("void f(n) { return n; }"),
              "return-of-value <n> 'f' has no result, so it cannot return a value\n");
    EXPECT_EQ(said("int f(int n) { return n; } value g(n) { return n; } void h() { return; }"), "");
}

TEST(Results, AreMissingOnSomeWay) {
    EXPECT_EQ(said("value f(n) { if (n > 0) { return 1; } }"),
              "missing-return <f> 'f' has a result, and not every way through it ends with "
              "'return'\n");
    EXPECT_EQ(said("value f(n) { if (n > 0) { return 1; } else { return 2; } } "
                   "value g(n) { while (true) { n = 1; } } void h() { }"),
              "");
}

TEST(When, ElseStandsLast) {
    EXPECT_EQ(said(inHandler("when (1) { else -> 2; }")),
              "when-else-first <else> 'else' is the first case of this 'when'\n");
    EXPECT_EQ(said(inHandler("when (1) { is int -> 1; else -> 2; is bool -> 3; }")),
              "when-else-last <is> a case stands behind the 'else' of this 'when'\n");
    EXPECT_EQ(said(inHandler("when (1) { is int -> 1; else -> 2; }")), "");
}

TEST(Expect, ShowsAString) {
    EXPECT_EQ(said(inHandler("expect 1 > 0, \"a\" + 1;")),
              "expect-message <\"a\" + 1> the text of 'expect' must be a string, and this is a "
              "dynamic value\n");
    EXPECT_EQ(said(inHandler("expect 1 > 0, \"a\" + \"b\";")), "");
}

TEST(Throw, IsNotCaught) {
    EXPECT_EQ(said(inHandler("throw \"x\";")),
              "uncaught-throw <throw \"x\";> no 'catch' receives this, and the program ends\n");
    EXPECT_EQ(said(inHandler("try { } catch (problem) { throw problem; }")), "");
}

TEST(Controls, WritingTheirPropertiesChangesNothing) {
    EXPECT_EQ(said(inHandler("name.text = \"x\";")),
              "control-property-write <name.text> storing '.text' does not change the control "
              "'name'\n");
    EXPECT_EQ(said(inHandler("value box = Box { }; box.text = \"x\";")), "");
}

TEST(Controls, TheirTextIsReadOnce) {
    EXPECT_EQ(said(inHandler("alert(name.text); alert(name.text);")),
              "second-text <name.text> 'name.text' is read a second time and gives null\n");
    EXPECT_EQ(said(inHandler("if (1 < 2) { alert(name.text); } else { alert(name.text); }")), "");
}

TEST(Methods, ChangeACopy) {
    const std::string counter =
        "class Counter { value n; value more() { n = n + 1; return _this; } "
        "value now() { return n; } } ";
    EXPECT_EQ(said(inHandler("Counter c; c.more();", counter)),
              "changed-copy <c.more()> 'more' changes a copy of 'c', and the change is lost\n");
    EXPECT_EQ(said(inHandler("Counter c; c = c.more(); c.now();", counter)), "");
}

// The class that a loop names is its variable's, and behind the loop the name has its own again.
TEST(Methods, OfAVariableThatALoopDeclares) {
    const std::string classes =
        "class Counter { value n; value more() { n = n + 1; return _this; } } class Other { } ";
    EXPECT_EQ(said(inHandler("value all = {}; for (Counter c : all) { c.more(); }", classes)),
              "changed-copy <c.more()> 'more' changes a copy of 'c', and the change is lost\n");
    EXPECT_EQ(said(inHandler("Counter c; for (Other c : {1}) { alert(c); } c.more();", classes)),
              "changed-copy <c.more()> 'more' changes a copy of 'c', and the change is lost\n");
}

TEST(DeepSources, ChainsAndLaddersAreWalkedInLoops) {
    std::string sum = "value v = 1";
    std::string ladder = "int n = 1; if (n == 0) { }";
    for (int term = 0; term < 100000; ++term) {
        sum += " + 1";
        ladder += " else if (n == 0) { }";
    }
    EXPECT_EQ(said(inHandler(sum + ";")), "");
    EXPECT_EQ(said("value f() { " + ladder + " return 1; }"), "");
}
