#include "parsing.h"

#include <gtest/gtest.h>

namespace Orvane {
namespace {

using namespace Testing;

// ---- Literals and names ----

TEST(ParseLiteral, EveryKind) {
    EXPECT_EQ(expressionText("42"), "42");
    EXPECT_EQ(expressionText("1.5"), "1.500000");
    EXPECT_EQ(expressionText("\"a b\""), "\"a b\"");
    EXPECT_EQ(expressionText("'c'"), "\"c\"");
    EXPECT_EQ(expressionText("true"), "true");
    EXPECT_EQ(expressionText("false"), "false");
    EXPECT_EQ(expressionText("null"), "null");
}

TEST(ParseLiteral, TypesOfTheValues) {
    const auto typeOf = [](const std::string& source) {
        Parsing parsing(source);
        const auto expr = parsing.parser.parseExpression();
        const auto* literal = nodeCast<LiteralExpr>(expr);
        return std::string(literal ? literal->value.type() : "no literal");
    };
    EXPECT_EQ(typeOf("42"), "int");
    EXPECT_EQ(typeOf("1.5"), "double");
    EXPECT_EQ(typeOf("\"a\""), "string");
    EXPECT_EQ(typeOf("'a'"), "string");
    EXPECT_EQ(typeOf("true"), "bool");
    EXPECT_EQ(typeOf("null"), "null");
    EXPECT_EQ(typeOf("#FF0000"), "color");
}

TEST(ParseLiteral, ColourKeepsItsText) {
    Parsing parsing("#FF0000");
    const auto expr = parsing.parser.parseExpression();
    EXPECT_EQ(nodeCast<LiteralExpr>(expr)->value.asColor(), "#FF0000");
}

// ---- Operators ----

TEST(ParseOperators, EveryBinarySpelling) {
    for (const std::string op :
         {"+", "-", "*", "/", "%", "==", "!=", "<", ">", "<=", ">=", "=", "."})
        EXPECT_EQ(expressionText("a " + op + " b"), "(" + op + " a b)");
}

TEST(ParseOperators, EqualsLeanToTheLeft) {
    EXPECT_EQ(expressionText("1 - 2 - 3"), "(- (- 1 2) 3)");
    EXPECT_EQ(expressionText("1 / 2 * 3 % 4"), "(% (* (/ 1 2) 3) 4)");
    EXPECT_EQ(expressionText("a < b > c"), "(> (< a b) c)");
    EXPECT_EQ(expressionText("a == b != c"), "(!= (== a b) c)");
}

TEST(ParseOperators, StrongerOnesBindFirst) {
    EXPECT_EQ(expressionText("a == b < c + d * -e"), "(== a (< b (+ c (* d (- e)))))");
    EXPECT_EQ(expressionText("-a * b + c < d == e"), "(== (< (+ (* (- a) b) c) d) e)");
    EXPECT_EQ(expressionText("a * b + c * d"), "(+ (* a b) (* c d))");
    EXPECT_EQ(expressionText("a + b * c - d"), "(- (+ a (* b c)) d)");
    EXPECT_EQ(expressionText("(a + b) * c"), "(* (+ a b) c)");
}

TEST(ParseOperators, PrefixesNest) {
    EXPECT_EQ(expressionText("--x"), "(- (- x))");
    EXPECT_EQ(expressionText("!-!x"), "(! (- (! x)))");
    EXPECT_EQ(expressionText("-a.b"), "(- (. a b))");
    EXPECT_EQ(expressionText("!a == b"), "(== (! a) b)");
}

TEST(ParseOperators, ThereIsNoUnaryPlus) {
    EXPECT_EQ(expressionError("+x"), "Expected expression at line 1");
}

TEST(ParseOperators, ConjunctionAndDisjunctionEndAnExpression) {
    EXPECT_EQ(statementError("a && b;"), unmet(75, 62, "Expected ';'"));
    EXPECT_EQ(statementError("a || b;"), unmet(75, 63, "Expected ';'"));
    EXPECT_EQ(statementError("if (a && b) c;"), unmet(72, 62, "Expected ')'"));
}

TEST(ParseOperators, ArrowAndDotsAreNoOperators) {
    EXPECT_EQ(statementError("a -> b;"), unmet(75, 68, "Expected ';'"));
    EXPECT_EQ(statementError("a .. b;"), unmet(75, 66, "Expected ';'"));
}

// ---- Assignment and ternary ----

TEST(ParseAssignment, LeansToTheRight) {
    EXPECT_EQ(expressionText("x = y = 3"), "(= x (= y 3))");
    EXPECT_EQ(expressionText("x = y + 1"), "(= x (+ y 1))");
}

TEST(ParseAssignment, LeftSideIsNotChecked) { EXPECT_EQ(expressionText("1 = 2"), "(= 1 2)"); }

TEST(ParseTernary, IsAssigned) {
    EXPECT_EQ(expressionText("x = c ? 1 : 2"), "(= x (? c 1 2))");
    EXPECT_EQ(expressionText("a = b ? c : d"), "(= a (? b c d))");
}

TEST(ParseTernary, BranchesAreFullExpressions) {
    EXPECT_EQ(expressionText("a ? b ? 1 : 2 : c ? 3 : 4"), "(? a (? b 1 2) (? c 3 4))");
    EXPECT_EQ(expressionText("a ? x = 1 : y = 2"), "(? a (= x 1) (= y 2))");
    EXPECT_EQ(expressionText("a == b ? 1 : 2"), "(? (== a b) 1 2)");
}

TEST(ParseTernary, NeedsItsColon) {
    EXPECT_EQ(expressionError("a ? b ; c"), unmet(77, 75, "Expected ':' in ternary expression"));
}

// ---- Member access ----

TEST(ParseMember, ChainsLeanToTheLeft) { EXPECT_EQ(expressionText("a.b.c"), "(. (. a b) c)"); }

TEST(ParseMember, BuiltInTypeNamesAreMembers) {
    EXPECT_EQ(expressionText("p.type"), "(. p type)");
    EXPECT_EQ(expressionText("p.color"), "(. p color)");
    for (const std::string_view name : standardTypes)
        EXPECT_EQ(expressionText("p." + std::string(name)), "(. p " + std::string(name) + ")");
}

TEST(ParseMember, OtherKeywordsAreNot) {
    EXPECT_EQ(expressionError("p.if"), "Expected member name at line 1");
    EXPECT_EQ(expressionError("p.\n5"), "Expected member name at line 2");
    EXPECT_EQ(expressionError("p.function"), "Expected member name at line 1");
}

TEST(ParseMember, TrailingDotAppliesToTheWholeExpression) {
    EXPECT_EQ(expressionText("(a + b).c"), "(. (+ a b) c)");
    EXPECT_EQ(expressionText("1 + (a).c"), "(. (+ 1 a) c)");
    EXPECT_EQ(expressionText("(a).b.c"), "(. (. a b) c)");
    EXPECT_EQ(expressionText("\"x\".length"), "(. \"x\" length)");
    EXPECT_EQ(expressionText("x = (a).b"), "(. (= x a) b)");
}

TEST(ParseMember, TrailingDotNeedsAnIdentifier) {
    EXPECT_EQ(expressionError("(a).value"), unmet(44, 4, "Expected member name"));
    EXPECT_EQ(expressionError("(a).color"), unmet(44, 35, "Expected member name"));
}

// ---- Calls and indices ----

TEST(ParseCall, BareNameIsKeptAsName) {
    EXPECT_EQ(expressionText("f(x)"), "(call f x)");
    EXPECT_EQ(expressionText("f()"), "(call f)");
    EXPECT_EQ(expressionText("f(1, g(2), a = 3)"), "(call f 1 (call g 2) (= a 3))");
}

TEST(ParseCall, AnythingElseIsTheCallee) {
    EXPECT_EQ(expressionText("a.b(1)"), "(apply (. a b) 1)");
    EXPECT_EQ(expressionText("a.f(x)"), "(apply (. a f) x)");
    EXPECT_EQ(expressionText("f(1)(2)"), "(apply (call f 1) 2)");
    EXPECT_EQ(expressionText("a[0](1)"), "(apply (index a 0) 1)");
}

TEST(ParseCall, ArgumentsAreClosed) {
    EXPECT_EQ(expressionError("f(1"), unmet(72, 78, "Expected ')'"));
    EXPECT_EQ(expressionError("f(1 2)"), unmet(72, 45, "Expected ')'"));
    EXPECT_EQ(expressionError("f(1,)"), "Expected expression at line 1");
    EXPECT_EQ(expressionError("f(,)"), "Expected expression at line 1");
}

TEST(ParseIndex, TakesAnyExpression) {
    EXPECT_EQ(expressionText("a[i + 1][0].b"), "(. (index (index a (+ i 1)) 0) b)");
    EXPECT_EQ(expressionError("a[0"), unmet(74, 78, "Expected ']'"));
    EXPECT_EQ(expressionError("a[]"), "Expected expression at line 1");
}

TEST(ParsePostfix, FollowsNamesOnly) {
    EXPECT_EQ(statementError("(f)(1);"), unmet(75, 71, "Expected ';'"));
    EXPECT_EQ(statementError("\"a\"[0];"), unmet(75, 73, "Expected ';'"));
    EXPECT_EQ(statementError("Point { }.x();"), unmet(75, 71, "Expected ';'"));
}

// ---- Groups and lists ----

TEST(ParseGroup, LeavesNoNode) {
    EXPECT_EQ(expressionText("((a))"), "a");
    EXPECT_EQ(expressionError("(a"), unmet(72, 78, "Expected ')'"));
    EXPECT_EQ(expressionError("()"), "Expected expression at line 1");
}

TEST(ParseBraceList, GivesAnArray) {
    EXPECT_EQ(expressionText("{}"), "(array)");
    EXPECT_EQ(expressionText("{1}"), "(array 1)");
    EXPECT_EQ(expressionText("{1, 2, 3}"), "(array 1 2 3)");
    EXPECT_EQ(expressionText("{{1}, {}}"), "(array (array 1) (array))");
}

TEST(ParseBraceList, IsClosed) {
    EXPECT_EQ(expressionError("{1 2}"), unmet(70, 45, "Expected '}'"));
    EXPECT_EQ(expressionError("{1,}"), "Expected expression at line 1");
}

TEST(ParseBracket, ListOfThreeIsARange) {
    EXPECT_EQ(expressionText("[1, 2, 3]"), "(range 1 2 3)");
    EXPECT_EQ(expressionText("[1, 10, 2]"), expressionText("[1..10, 2]"));
    EXPECT_EQ(expressionText("[1]"), "(array 1)");
    EXPECT_EQ(expressionText("[1, 2]"), "(array 1 2)");
    EXPECT_EQ(expressionText("[1, 2, 3, 4]"), "(array 1 2 3 4)");
}

TEST(ParseBracket, EmptyListIsNotAccepted) {
    EXPECT_EQ(expressionError("[]"), "Expected expression at line 1");
    EXPECT_EQ(expressionError("[1,]"), "Expected expression at line 1");
    EXPECT_EQ(expressionError("[1, 2"), unmet(74, 78, "Expected ']'"));
}

TEST(ParseBracket, Ranges) {
    EXPECT_EQ(expressionText("[1..10]"), "(range 1 10)");
    EXPECT_EQ(expressionText("[a + 1..b, -1]"), "(range (+ a 1) b (- 1))");
    EXPECT_EQ(expressionError("[1..2, 3, 4]"), unmet(74, 76, "Expected ']' at end of range"));
    EXPECT_EQ(expressionError("[1..2"), unmet(74, 78, "Expected ']' at end of range"));
}

TEST(ParseBracket, RangesHaveNoLabel) {
    Parsing parsing("[1..10]");
    const auto expr = parsing.parser.parseExpression();
    EXPECT_TRUE(nodeCast<RangeExpr>(expr)->label.empty());
}

TEST(ParseBracket, Comprehensions) {
    EXPECT_EQ(expressionText("[x * 2 for x in xs]"), "(each (* x 2) x xs)");
    EXPECT_EQ(expressionText("[x for x in [1..9] where x > 3]"), "(each x x (range 1 9) (> x 3))");
}

TEST(ParseBracket, BrokenComprehensions) {
    EXPECT_EQ(expressionError("[x for 1 in xs]"),
              "Expected variable name after 'for' in list comprehension at line 1");
    EXPECT_EQ(expressionError("[x for int in xs]"),
              "Expected variable name after 'for' in list comprehension at line 1");
    EXPECT_EQ(expressionError("[x for x\n: xs]"), "Expected 'in' in list comprehension at line 2");
    EXPECT_EQ(expressionError("[x for x in xs, 1]"),
              unmet(74, 76, "Expected ']' at end of list comprehension"));
    EXPECT_EQ(expressionError("[x for x in xs where c 1]"),
              unmet(74, 45, "Expected ']' at end of list comprehension"));
}

// ---- Objects ----

TEST(ParseObject, FieldsInSourceOrder) {
    EXPECT_EQ(expressionText("Point { }"), "(new Point)");
    EXPECT_EQ(expressionText("Point { y = 1, x = a + 2 }"), "(new Point (y 1) (x (+ a 2)))");
    EXPECT_EQ(expressionText("A { b = B { c = 1 } }"), "(new A (b (new B (c 1))))");
}

TEST(ParseObject, BrokenFields) {
    EXPECT_EQ(expressionError("Point { x = 1, }"), unmet(44, 70, "Expected field name"));
    EXPECT_EQ(expressionError("Point { 5 }"), unmet(44, 45, "Expected field name"));
    EXPECT_EQ(expressionError("Point { color = 1 }"), unmet(44, 35, "Expected field name"));
    EXPECT_EQ(expressionError("Point { x 1 }"), unmet(50, 45, "Expected '='"));
    EXPECT_EQ(expressionError("Point { x = 1 y = 2 }"), unmet(70, 44, "Expected '}'"));
}

// ---- is, therebe, have ----

TEST(ParseIs, TakesTypesAndClasses) {
    for (const std::string type : {"class", "value", "int", "double", "string", "bool", "array",
                                   "container", "map", "type", "button", "color", "Point"})
        EXPECT_EQ(expressionText("is(a + 1, " + type + ")"), "(is (+ a 1) " + type + ")");
}

TEST(ParseIs, BrokenForms) {
    EXPECT_EQ(expressionError("is a"), unmet(71, 44, "Expected '(' after 'is'"));
    EXPECT_EQ(expressionError("is(a int)"), unmet(76, 5, "Expected ',' in is()"));
    EXPECT_EQ(expressionError("is(a, 5)"),
              "Expected type name as second argument to is() at line 1");
    EXPECT_EQ(expressionError("is(a, function)"),
              "Expected type name as second argument to is() at line 1");
    EXPECT_EQ(expressionError("is(a, int, b)"), unmet(72, 76, "Expected ')' after is() arguments"));
}

TEST(ParseTherebe, TakesEveryKind) {
    for (const std::string kind : {"class", "map", "function", "able", "thing"})
        EXPECT_EQ(expressionText("therebe(" + kind + ", N)"), "(therebe " + kind + " N)");
}

TEST(ParseTherebe, BrokenForms) {
    EXPECT_EQ(expressionError("therebe class"), unmet(71, 2, "Expected '(' after 'therebe'"));
    EXPECT_EQ(expressionError("therebe(int, N)"),
              "Expected kind (class/function) in therebe() at line 1");
    EXPECT_EQ(expressionError("therebe(class N)"), unmet(76, 44, "Expected ',' in therebe()"));
    EXPECT_EQ(expressionError("therebe(class, 5)"), unmet(44, 45, "Expected name in therebe()"));
    EXPECT_EQ(expressionError("therebe(class, N"), unmet(72, 78, "Expected ')' after therebe()"));
}

TEST(ParseHave, MemberMayBeginWithADot) {
    EXPECT_EQ(expressionText("have(C, m)"), "(have C m)");
    EXPECT_EQ(expressionText("have(C, .m)"), "(have C .m)");
}

TEST(ParseHave, BrokenForms) {
    EXPECT_EQ(expressionError("have C"), unmet(71, 44, "Expected '(' after 'have'"));
    EXPECT_EQ(expressionError("have(5, m)"), unmet(44, 45, "Expected class name"));
    EXPECT_EQ(expressionError("have(C m)"), unmet(76, 44, "Expected ',' in have()"));
    EXPECT_EQ(expressionError("have(C, 5)"), unmet(44, 45, "Expected member name"));
    EXPECT_EQ(expressionError("have(C, .value)"), unmet(44, 4, "Expected member name"));
    EXPECT_EQ(expressionError("have(C, value)"), unmet(44, 4, "Expected member name"));
    EXPECT_EQ(expressionError("have(C, m"), unmet(72, 78, "Expected ')' after have()"));
}

TEST(ParseIsTherebeHave, HaveNoPostfixOfTheirOwn) {
    EXPECT_EQ(expressionText("is(a, int) == have(C, m)"), "(== (is a int) (have C m))");
    EXPECT_EQ(statementError("is(a, int)(1);"), unmet(75, 71, "Expected ';'"));
}

// ---- No expression ----

TEST(ParsePrimary, AnythingElseIsAnError) {
    for (const char* source : {"", ";", ")", "}", "]", "if", "int", "button", "*", "@", "function"})
        EXPECT_EQ(expressionError(source), "Expected expression at line 1") << source;
    EXPECT_EQ(expressionError("a +\n\n;"), "Expected expression at line 3");
}

} // namespace
} // namespace Orvane
