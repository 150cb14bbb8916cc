#include "parsing.h"

#include <gtest/gtest.h>

namespace Orvane {
namespace {

using namespace Testing;

// ---- Blocks, declarations, expressions ----

TEST(ParseBlock, MayBeEmpty) {
    EXPECT_EQ(statementText("{ }"), "(block)");
    EXPECT_EQ(statementText("{ a; { b; } }"), "(block (expr a) (block (expr b)))");
}

TEST(ParseBlock, UnclosedFailsAtTheNextStatement) {
    EXPECT_EQ(statementError("{ a;"), "Expected expression at line 1");
}

TEST(ParseVariable, EveryTypeKeyword) {
    for (const std::string type : {"value", "int", "double", "string", "bool", "array", "container",
                                   "map", "type", "button", "color", "timer"})
        EXPECT_EQ(statementText(type + " x;"), "(var " + type + " x)");
}

TEST(ParseVariable, WithInitializer) {
    EXPECT_EQ(statementText("int x;"), "(var int x)");
    EXPECT_EQ(statementText("int x = a ? 1 : 2;"), "(var int x (? a 1 2))");
}

TEST(ParseVariable, TypeArgumentsAreDropped) {
    EXPECT_EQ(statementText("array<int> a;"), "(var array a)");
    EXPECT_EQ(statementText("map<string, int> m = {};"), "(var map m (array))");
    EXPECT_EQ(statementText("map<string, array<map<int, int>>> m;"), "(var map m)");
    EXPECT_EQ(statementText("array<> a;"), "(var array a)");
}

TEST(ParseVariable, NameMayBeABuiltInTypeName) {
    EXPECT_EQ(statementText("int size = 5;"), "(var int size 5)");
    EXPECT_EQ(statementText("string text;"), "(var string text)");
}

TEST(ParseVariable, OtherNamesAreErrors) {
    EXPECT_EQ(statementError("int 5;"), "Expected variable name at line 1");
    EXPECT_EQ(statementError("int\nvalue;"), "Expected variable name at line 2");
    EXPECT_EQ(statementError("text = 5;"), "Expected variable name at line 1");
}

TEST(ParseVariable, NeedsItsSemicolon) {
    EXPECT_EQ(statementError("int x = 5 6"), unmet(75, 45, "Expected ';'"));
    EXPECT_EQ(statementError("int x, y;"), unmet(75, 76, "Expected ';'"));
    EXPECT_EQ(statementError("Point p q;"), unmet(75, 44, "Expected ';'"));
}

TEST(ParseVariable, UserTypesAreTwoIdentifiers) {
    EXPECT_EQ(statementText("Point p;"), "(var Point p)");
    EXPECT_EQ(statementText("Point p = Point { x = 1 };"), "(var Point p (new Point (x 1)))");
    EXPECT_EQ(statementText("Point(1);"), "(expr (call Point 1))");
}

TEST(ParseVariable, UserTypesTakeNoTypeArguments) {
    EXPECT_EQ(statementError("List<int> xs;"), "Expected expression at line 1");
}

TEST(ParseVariable, SomeKeywordsDeclareNothing) {
    EXPECT_EQ(statementError("function f() {}"), "Expected expression at line 1");
    EXPECT_EQ(statementError("void f() {}"), "Expected expression at line 1");
    EXPECT_EQ(statementError("pointer p;"), "Expected expression at line 1");
}

TEST(ParseExpressionStatement, NeedsItsSemicolon) {
    EXPECT_EQ(statementText("x = 1;"), "(expr (= x 1))");
    EXPECT_EQ(statementError("f()"), unmet(75, 78, "Expected ';'"));
    EXPECT_EQ(statementError(";"), "Expected expression at line 1");
}

// ---- if ----

TEST(ParseIf, KeepsItsBranchesAsWritten) {
    EXPECT_EQ(statementText("if (c) { x = 1; }"), "(if c (then (block (expr (= x 1)))))");
    EXPECT_EQ(statementText("if (c) x = 1;"), "(if c (then (expr (= x 1))))");
    EXPECT_EQ(statementText("if (c) { } else f();"),
              "(if c (then (block)) (else (expr (call f))))");
}

TEST(ParseIf, ElseIfNests) {
    EXPECT_EQ(statementText("if (a) f(); else if (b) g(); else if (c) h(); else { i(); }"),
              "(if a (then (expr (call f))) (else (if b (then (expr (call g))) "
              "(else (if c (then (expr (call h))) (else (block (expr (call i)))))))))");
}

TEST(ParseIf, ElseBelongsToTheNearestIf) {
    EXPECT_EQ(statementText("if (a) if (b) f(); else g();"),
              "(if a (then (if b (then (expr (call f))) (else (expr (call g))))))");
    EXPECT_EQ(statementText("if (a) { if (b) f(); } else g();"),
              "(if a (then (block (if b (then (expr (call f)))))) (else (expr (call g))))");
}

TEST(ParseIf, BrokenForms) {
    EXPECT_EQ(statementError("if a"), unmet(71, 44, "Expected '('"));
    EXPECT_EQ(statementError("if (a b"), unmet(72, 44, "Expected ')'"));
    EXPECT_EQ(statementError("if (a)"), "Expected expression at line 1");
    EXPECT_EQ(statementError("if (a) f(); else"), "Expected expression at line 1");
    EXPECT_EQ(statementError("if (a) f(); else if b"), unmet(71, 44, "Expected '('"));
    EXPECT_EQ(statementError("else f();"), "Expected expression at line 1");
}

// ---- while, for ----

TEST(ParseWhile, BracedBodyIsDissolved) {
    EXPECT_EQ(statementText("while (c) x = 1;"), "(while c (expr (= x 1)))");
    EXPECT_EQ(statementText("while (c) { x = 1; }"), "(while c (expr (= x 1)))");
    EXPECT_EQ(statementText("while (c) { }"), "(while c)");
    EXPECT_EQ(statementText("while (c) { { a; } }"), "(while c (block (expr a)))");
    EXPECT_EQ(statementText("while (c) if (d) f();"), "(while c (if d (then (expr (call f)))))");
}

TEST(ParseWhile, BrokenForms) {
    EXPECT_EQ(statementError("while c"), unmet(71, 44, "Expected '('"));
    EXPECT_EQ(statementError("while (c;"), unmet(72, 75, "Expected ')'"));
    EXPECT_EQ(statementError("while (c) { f();"), "Expected expression at line 1");
}

TEST(ParseFor, VariableWithAndWithoutType) {
    EXPECT_EQ(statementText("for (item : list) print(item);"),
              "(for - item list (expr (call print item)))");
    EXPECT_EQ(statementText("for (int i : [0..10]) { }"), "(for int i (range 0 10))");
    EXPECT_EQ(statementText("for (Point p : ps) { a; b; }"), "(for Point p ps (expr a) (expr b))");
    for (const std::string type : {"value", "int", "double", "string", "bool", "array", "container",
                                   "map", "button", "type"})
        EXPECT_EQ(statementText("for (" + type + " x : xs) { }"), "(for " + type + " x xs)");
}

TEST(ParseFor, BadLoopVariableNamesTheToken) {
    EXPECT_EQ(statementError("for (1 : xs)"),
              "Expected type keyword or variable name at line 1 (got '1' type=45)");
    EXPECT_EQ(statementError("for (\nfunction f : xs)"),
              "Expected type keyword or variable name at line 2 (got 'function' type=12)");
    EXPECT_EQ(statementError("for ("),
              "Expected type keyword or variable name at line 1 (got '' type=78)");
}

TEST(ParseFor, BrokenForms) {
    EXPECT_EQ(statementError("for x"), unmet(71, 44, "Expected '('"));
    EXPECT_EQ(statementError("for (int : xs)"), unmet(44, 77, "Expected variable name after type"));
    EXPECT_EQ(statementError("for (int size : xs)"),
              unmet(44, 35, "Expected variable name after type"));
    EXPECT_EQ(statementError("for (array<int> x : xs)"),
              unmet(44, 58, "Expected variable name after type"));
    EXPECT_EQ(statementError("for (x in xs)"), unmet(77, 24, "Expected ':' in for-each"));
    EXPECT_EQ(statementError("for (int i = 0; i < 5;)"), unmet(77, 50, "Expected ':' in for-each"));
    EXPECT_EQ(statementError("for (x : xs;"), unmet(72, 75, "Expected ')'"));
    EXPECT_EQ(statementError("for (x : xs) {"), "Expected expression at line 1");
}

// ---- return, throw, expect, defer ----

TEST(ParseReturn, ValueIsOptional) {
    EXPECT_EQ(statementText("return;"), "(return)");
    EXPECT_EQ(statementText("return a + 1;"), "(return (+ a 1))");
    EXPECT_EQ(statementError("return 1 2;"), unmet(75, 45, "Expected ';'"));
    EXPECT_EQ(statementError("return }"), "Expected expression at line 1");
}

TEST(ParseThrow, NeedsAValue) {
    EXPECT_EQ(statementText("throw \"bad\";"), "(throw \"bad\")");
    EXPECT_EQ(statementError("throw;"), "Expected expression at line 1");
    EXPECT_EQ(statementError("throw 1"), unmet(75, 78, "Expected ';'"));
}

TEST(ParseExpect, MessageIsOptional) {
    EXPECT_EQ(statementText("expect a > 1;"), "(expect (> a 1))");
    EXPECT_EQ(statementText("expect a, \"small\";"), "(expect a \"small\")");
    EXPECT_EQ(statementError("expect a b;"), unmet(75, 44, "Expected ';'"));
    EXPECT_EQ(statementError("expect a, b"), unmet(75, 78, "Expected ';'"));
}

TEST(ParseDefer, TakesOneStatement) {
    EXPECT_EQ(statementText("defer f();"), "(defer (expr (call f)))");
    EXPECT_EQ(statementText("defer { f(); g(); }"),
              "(defer (block (expr (call f)) (expr (call g))))");
    EXPECT_EQ(statementError("defer"), "Expected expression at line 1");
}

// ---- try ----

TEST(ParseTry, BothBodies) {
    EXPECT_EQ(statementText("try { } catch (e) { }"), "(try () e ())");
    EXPECT_EQ(statementText("try { a; b; } catch (error) { c; }"),
              "(try ((expr a) (expr b)) error ((expr c)))");
}

TEST(ParseTry, BrokenForms) {
    EXPECT_EQ(statementError("try f();"), unmet(69, 44, "Expected '{'"));
    EXPECT_EQ(statementError("try { f();"), "Expected expression at line 1");
    EXPECT_EQ(statementError("try { }"), unmet(27, 78, "Expected 'catch'"));
    EXPECT_EQ(statementError("try { } catch e"), unmet(71, 44, "Expected '('"));
    EXPECT_EQ(statementError("try { } catch (5)"), unmet(44, 45, "Expected catch variable"));
    EXPECT_EQ(statementError("try { } catch (string e)"), unmet(44, 7, "Expected catch variable"));
    EXPECT_EQ(statementError("try { } catch (e {"), unmet(72, 69, "Expected ')'"));
    EXPECT_EQ(statementError("try { } catch (e) f();"), unmet(69, 44, "Expected '{'"));
    EXPECT_EQ(statementError("try { } catch (e) {"), "Expected expression at line 1");
}

// ---- when ----

TEST(ParseWhen, CasesInSourceOrder) {
    EXPECT_EQ(statementText("when (v) { is int -> f(); else -> g(); }"),
              "(when v (int (call f)) (else (call g)))");
    EXPECT_EQ(statementText("when (v) { else -> 1; is Point -> 2; else -> 3; }"),
              "(when v (else 1) (Point 2) (else 3))");
    EXPECT_EQ(statementText("when (v) { }"), "(when v)");
}

TEST(ParseWhen, EveryCaseType) {
    for (const std::string type : {"value", "int", "double", "string", "bool", "array", "container",
                                   "map", "function", "void", "type", "button", "Point"})
        EXPECT_EQ(statementText("when (v) { is " + type + " -> 1; }"), "(when v (" + type + " 1))");
}

TEST(ParseWhen, BrokenForms) {
    EXPECT_EQ(statementError("when v"), unmet(71, 44, "Expected '(' after 'when'"));
    EXPECT_EQ(statementError("when (v;"), unmet(72, 75, "Expected ')' after when condition"));
    EXPECT_EQ(statementError("when (v) is"), unmet(69, 18, "Expected '{' after when"));
    EXPECT_EQ(statementError("when (v) { case 1 -> x; }"),
              "Expected 'is' or 'else' in when statement at line 1");
    EXPECT_EQ(statementError("when (v) {\n is 5 -> x; }"),
              "Expected type name after 'is' in when statement at line 2");
    EXPECT_EQ(statementError("when (v) { is class -> x; }"),
              "Expected type name after 'is' in when statement at line 1");
    EXPECT_EQ(statementError("when (v) { is int x; }"),
              unmet(68, 44, "Expected '->' in when case"));
    EXPECT_EQ(statementError("when (v) { else x; }"), unmet(68, 44, "Expected '->' in when case"));
    EXPECT_EQ(statementError("when (v) { else -> x }"),
              unmet(75, 70, "Expected ';' after when case"));
    EXPECT_EQ(statementError("when (v) { else -> x;"), unmet(70, 78, "Expected '}' after when"));
}

TEST(ParseStatement, OneAtATime) {
    Parsing parsing("a; b;");
    EXPECT_EQ(textOf(parsing.parser.parseStatement().get()), "(expr a)");
    EXPECT_EQ(textOf(parsing.parser.parseStatement().get()), "(expr b)");
    EXPECT_THROW(parsing.parser.parseStatement(), std::runtime_error);
}

} // namespace
} // namespace Orvane
