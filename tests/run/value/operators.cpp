// Every operator with every pair of kinds. What is expected follows from the columns of the sample
// table, written by hand, and from the rules of each operator, stated here a second time.
#include "import.hpp"

#include "checks.h"
#include "parts.h"

namespace {

struct Sample {
    const char* kind;
    Value value;
    const char* text;    // toString()
    bool isNumber;       // int or double
    double number;       // as an operand of - * / ; only for numbers
    long long whole;     // as an operand of % ; only for numbers
    const char* letters; // what == compares for texts and colours; empty for others
};

int window = 0;

std::vector<Sample> samples() {
    Value point = Value::makeObject("Point");
    point["x"] = 3;
    return {
        {"null", Value(), "null", false, 0, 0, ""},
        {"int", 7, "7", true, 7, 7, ""},
        {"int", -2, "-2", true, -2, -2, ""},
        {"int", 0, "0", true, 0, 0, ""},
        {"double", 2.5, "2.500000", true, 2.5, 2, ""},
        {"double", -7.0, "-7.000000", true, -7.0, -7, ""},
        {"double", 0.5, "0.500000", true, 0.5, 0, ""},
        {"string", "ab", "ab", false, 0, 0, "ab"},
        {"string", "7", "7", false, 0, 0, "7"},
        {"string", "", "", false, 0, 0, ""},
        {"bool", true, "true", false, 0, 0, ""},
        {"bool", false, "false", false, 0, 0, ""},
        {"array", std::vector<Value>{1, "x"}, "[1, x]", false, 0, 0, ""},
        {"container", Value::makeArray("container", {Value(1)}), "[1]", false, 0, 0, ""},
        {"map", std::map<std::string, Value>{{"a", 1}}, "{a: 1}", false, 0, 0, ""},
        {"handle", Value::makeHandle(&window), "[handle]", false, 0, 0, ""},
        {"color", Value("color", "#102030"), "#102030", false, 0, 0, "#102030"},
        {"function", Value::makeFunction("go"), "[function:go]", false, 0, 0, ""},
        {"Point", point, "{x: 3}", false, 0, 0, ""},
    };
}

bool isKind(const Sample& sample, const char* kind) { return std::string(sample.kind) == kind; }

bool areBoth(const Sample& left, const Sample& right, const char* kind) {
    return isKind(left, kind) && isKind(right, kind);
}

void expectResult(const Value& actual, const std::string& type, const std::string& text,
                  const Sample& left, const char* sign, const Sample& right) {
    countCheck(actual.typeName == type && actual.toString() == text,
               std::string(left.text) + " " + sign + " " + right.text + " gives " +
                   actual.typeName + " " + actual.toString() + ", expected " + type + " " + text,
               __FILE__, __LINE__);
}

void expectTruth(bool actual, bool expected, const Sample& left, const char* sign,
                 const Sample& right) {
    countCheck(actual == expected,
               std::string(left.kind) + " " + left.text + " " + sign + " " + right.kind + " " +
                   right.text + (expected ? " is true" : " is false"),
               __FILE__, __LINE__);
}

// Numbers give their sum as a double, everything else its texts one behind the other.
void testPlus(const Sample& left, const Sample& right) {
    const bool isSum = left.isNumber && right.isNumber;
    const std::string text =
        isSum ? std::to_string(left.number + right.number) : std::string(left.text) + right.text;
    const char* type = isSum ? "double" : "string";
    expectResult(left.value + right.value, type, text, left, "+", right);
    expectResult(Value(left.value) + right.value, type, text, left, "+ (moved)", right);
}

// Two ints stay ints; otherwise doubles, with 0 for what is no number.
void testMinusAndTimes(const Sample& left, const Sample& right) {
    if (areBoth(left, right, "int")) {
        expectResult(left.value - right.value, "int", std::to_string(left.whole - right.whole),
                     left, "-", right);
        expectResult(left.value * right.value, "int", std::to_string(left.whole * right.whole),
                     left, "*", right);
        return;
    }
    const double first = left.isNumber ? left.number : 0.0;
    const double second = right.isNumber ? right.number : 0.0;
    expectResult(left.value - right.value, "double", std::to_string(first - second), left, "-",
                 right);
    expectResult(left.value * right.value, "double", std::to_string(first * second), left, "*",
                 right);
}

// Always a double; what is no number counts as 1 on the right; nothing is divided by zero.
void testDivide(const Sample& left, const Sample& right) {
    const double first = left.isNumber ? left.number : 0.0;
    const double second = right.isNumber ? right.number : 1.0;
    const double expected = second == 0.0 ? 0.0 : first / second;
    expectResult(left.value / right.value, "double", std::to_string(expected), left, "/", right);
}

// Always an int, of doubles cut towards zero.
void testRemainder(const Sample& left, const Sample& right) {
    const long long first = left.isNumber ? left.whole : 0;
    const long long second = right.isNumber ? right.whole : 1;
    const long long expected = second == 0 ? 0 : first % second;
    expectResult(left.value % right.value, "int", std::to_string(expected), left, "%", right);
}

bool expectedEqual(const Sample& left, const Sample& right) {
    if (!isKind(left, right.kind)) return false;
    if (left.isNumber) return left.number == right.number;
    if (isKind(left, "string") || isKind(left, "color"))
        return std::string(left.letters) == right.letters;
    return isKind(left, "bool") && std::string(left.text) == right.text;
}

bool expectedLess(const Sample& left, const Sample& right) {
    if (!isKind(left, right.kind)) return false;
    if (left.isNumber) return left.number < right.number;
    return isKind(left, "string") && std::string(left.letters) < right.letters;
}

void testComparisons(const Sample& left, const Sample& right) {
    const bool equal = expectedEqual(left, right);
    const bool less = expectedLess(left, right);
    const bool greater = expectedLess(right, left);
    expectTruth(left.value == right.value, equal, left, "==", right);
    expectTruth(left.value != right.value, !equal, left, "!=", right);
    expectTruth(left.value < right.value, less, left, "<", right);
    expectTruth(left.value > right.value, greater, left, ">", right);
    expectTruth(left.value <= right.value, !greater, left, "<=", right);
    expectTruth(left.value >= right.value, !less, left, ">=", right);
}

void expectNumber(const Value& result, const std::string& type, const std::string& text) {
    CHECK_EQUAL(result.typeName, type);
    CHECK_EQUAL(result.toString(), text);
}

// A literal, with or without a fraction, means what a value of it means.
void testLiterals() {
    const Value seven(7), half(2.5), text("x");
    expectNumber(seven - 2, "int", "5");
    expectNumber(seven - 1.5, "double", "5.500000");
    expectNumber(half - 1, "double", "1.500000");
    expectNumber(text - 2, "double", "-2.000000");
    expectNumber(text - 1.5, "double", "-1.500000");
    expectNumber(2 - seven, "int", "-5");
    expectNumber(1.5 - seven, "double", "-5.500000");
    expectNumber(seven * 2, "int", "14");
    expectNumber(seven * 1.5, "double", "10.500000");
    expectNumber(half * 3, "double", "7.500000");
    expectNumber(text * 3, "double", "0.000000");
    expectNumber(text * 1.5, "double", "0.000000");
    expectNumber(seven / 2, "double", "3.500000");
    expectNumber(seven / 3.5, "double", "2.000000");
    expectNumber(seven / 0, "double", "0.000000");
    expectNumber(seven % 4, "int", "3");
    expectNumber(seven % 4.9, "int", "3");
    expectNumber(seven % 0, "int", "0");
    expectNumber(text % 4, "int", "0");
}

void testNegation() {
    CHECK_EQUAL((-Value(7)).toString(), "-7");
    CHECK((-Value(7)).isInt() && (-Value(2.5)).isFloat());
    CHECK_EQUAL((-Value(2.5)).toString(), "-2.500000");
    for (const Sample& sample : samples()) {
        if (sample.isNumber) continue;
        countCheck((-sample.value).isInt() && (-sample.value).intVal == 0,
                   std::string("negated ") + sample.kind + " is the int 0", __FILE__, __LINE__);
    }
}

void testValuesWrittenOut() {
    CHECK((Value(1) + Value(2)).isFloat() && (Value(1) + Value(2)).floatVal == 3.0);
    CHECK_EQUAL((Value(1) + Value("x")).toString(), "1x");
    CHECK_EQUAL((Value("x") + Value(2.5)).toString(), "x2.500000");
    CHECK_EQUAL((Value() + Value(true)).toString(), "nulltrue");
    CHECK((Value(7) / Value(2)).isFloat() && (Value(7) / Value(2)).floatVal == 3.5);
    CHECK((Value(7) / Value(0)).isFloat() && (Value(7) / Value(0)).floatVal == 0.0);
    CHECK_EQUAL((Value(7) / Value("x")).floatVal, 7.0);
    CHECK((Value(7) % Value(0)).isInt() && (Value(7) % Value(0)).intVal == 0);
    CHECK_EQUAL((Value(-7) % Value(4)).intVal, -3);
    CHECK_EQUAL((Value(7.9) % Value(4.9)).intVal, 3);
    CHECK_EQUAL((Value(7) % Value("x")).intVal, 0);
    CHECK(!(Value() == Value()) && Value() != Value());
    CHECK(!(Value(1) == Value(1.0)) && !(Value(1) < Value(2.0)) && Value(1) <= Value(2.0));
    CHECK(Value("Z") < Value("a") && Value("a") < Value("ab"));
    CHECK_EQUAL((Value(3000000000LL) * Value(3)).intVal, 9000000000LL);
}

void testSmallestNumber() {
    const long long smallest = -9223372036854775807LL - 1;
    CHECK_EQUAL((Value(smallest) % Value(-1)).intVal, 0);
    CHECK_EQUAL((Value(smallest) % Value(10)).intVal, -8);
}

// A chain of + reuses the text of its first link, never that of a variable.
void testChainsLeaveVariablesAlone() {
    Value name = "ada";
    const Value greeting = name + " " + name + "!" + 1;
    CHECK_EQUAL(greeting.toString(), "ada ada!1");
    CHECK_EQUAL(name.toString(), "ada");
    Value twice = std::move(name) + name;
    CHECK_EQUAL(twice.toString(), "adaada");

    Value text = Value::makeHandle(&window);
    text.typeName = "string";
    text.stringVal = "read";
    const Value longer = std::move(text) + "er";
    CHECK(longer.toString() == "reader" && longer.handleVal == nullptr);
}

void testBuildingInALoop() {
    Value text = "";
    for (int i = 0; i < 2000; ++i) text = text + "x" + i;
    size_t expected = 0;
    for (int i = 0; i < 2000; ++i) expected += 1 + std::to_string(i).size();
    CHECK_EQUAL(text.stringVal.size(), expected);
    CHECK_EQUAL(text.stringVal.substr(0, 8), "x0x1x2x3");
}

} // namespace

void testOperators() {
    for (const Sample& left : samples()) {
        for (const Sample& right : samples()) {
            testPlus(left, right);
            testMinusAndTimes(left, right);
            testDivide(left, right);
            testRemainder(left, right);
            testComparisons(left, right);
        }
    }
    testLiterals();
    testNegation();
    testValuesWrittenOut();
    testSmallestNumber();
    testChainsLeaveVariablesAlone();
    testBuildingInALoop();
}
