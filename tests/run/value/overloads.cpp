// Every operator with every pair of C++ operand types: which pairs compile, and what those give
// that only the runtime type makes possible. A pair that becomes ambiguous turns from x to . here.
#include "import.hpp"

#include "checks.h"
#include "parts.h"

#include <cstddef>
#include <type_traits>
#include <utility>

namespace {

#define DEFINE_DETECTOR(Name, sign)                                                                \
    template <typename Left, typename Right, typename = void>                                      \
    struct Name : std::false_type {};                                                              \
    template <typename Left, typename Right>                                                       \
    struct Name<Left, Right,                                                                       \
                std::void_t<decltype(std::declval<Left>() sign std::declval<Right>())>>            \
        : std::true_type {};

DEFINE_DETECTOR(Plus, +)
DEFINE_DETECTOR(Minus, -)
DEFINE_DETECTOR(Times, *)
DEFINE_DETECTOR(Divide, /)
DEFINE_DETECTOR(Remainder, %)
DEFINE_DETECTOR(Equal, ==)
DEFINE_DETECTOR(Unequal, !=)
DEFINE_DETECTOR(Less, <)
DEFINE_DETECTOR(Greater, >)
DEFINE_DETECTOR(LessOrEqual, <=)
DEFINE_DETECTOR(GreaterOrEqual, >=)

using List = std::vector<Value>;

template <template <typename, typename, typename> class Operator, typename Left, typename... Rights>
std::string rowOf() {
    return {(Operator<Left, Rights, void>::value ? 'x' : '.')...};
}

template <template <typename, typename, typename> class Operator, typename... Types>
std::string tableOf() {
    return ((rowOf<Operator, Types, Types...>() + "\n") + ...);
}

// Rows are left operands, columns right ones, both in the order int, long long, double, bool,
// const char*, std::string, Value, list of values, nullptr.
template <template <typename, typename, typename> class Operator>
void expectTable(const char* sign, const std::string& expected) {
    const std::string actual = tableOf<Operator, int, long long, double, bool, const char*,
                                       std::string, Value, List, std::nullptr_t>();
    countCheck(actual == expected,
               std::string("operands of ") + sign + ":\n" + actual + "expected:\n" + expected,
               __FILE__, __LINE__);
}

void testArithmeticOperands() {
    expectTable<Plus>("+", "xxxxxxxx.\n"
                           "xxxxxxxx.\n"
                           "xxxx.xxx.\n"
                           "xxxxxxxx.\n"
                           "xx.x.xxx.\n"
                           "xxxxxxxxx\n"
                           "xxxxxxxxx\n"
                           "xxxxxxxxx\n"
                           ".....xxx.\n");
    expectTable<Minus>("-", "xxxx..xx.\n"
                            "xxxx..xx.\n"
                            "xxxx..xx.\n"
                            "xxxx..xx.\n"
                            "xx.xx.xx.\n"
                            "......xx.\n"
                            "xxxxxxxxx\n"
                            "xxxxxxxxx\n"
                            "......xx.\n");
    const std::string multiplicative = "xxxx..xx.\n"
                                       "xxxx..xx.\n"
                                       "xxxx..xx.\n"
                                       "xxxx..xx.\n"
                                       "......xx.\n"
                                       "......xx.\n"
                                       "xxxxxxxxx\n"
                                       "xxxxxxxxx\n"
                                       "......xx.\n";
    expectTable<Times>("*", multiplicative);
    expectTable<Divide>("/", multiplicative);
    expectTable<Remainder>("%", "xx.x..xx.\n"
                                "xx.x..xx.\n"
                                "......xx.\n"
                                "xx.x..xx.\n"
                                "......xx.\n"
                                "......xx.\n"
                                "xxxxxxxxx\n"
                                "xxxxxxxxx\n"
                                "......xx.\n");
}

void testComparisonOperands() {
    const std::string equality = "xxxx..xx.\n"
                                 "xxxx..xx.\n"
                                 "xxxx..xx.\n"
                                 "xxxx..xx.\n"
                                 "....xxxxx\n"
                                 "....xxxx.\n"
                                 "xxxxxxxxx\n"
                                 "xxxxxxxxx\n"
                                 "....x.xxx\n";
    expectTable<Equal>("==", equality);
    expectTable<Unequal>("!=", equality);
    const std::string order = "xxxx..xx.\n"
                              "xxxx..xx.\n"
                              "xxxx..xx.\n"
                              "xxxx..xx.\n"
                              "....xxxx.\n"
                              "....xxxx.\n"
                              "xxxxxxxxx\n"
                              "xxxxxxxxx\n"
                              "......xx.\n";
    expectTable<Less>("<", order);
    expectTable<Greater>(">", order);
    expectTable<LessOrEqual>("<=", order);
    expectTable<GreaterOrEqual>(">=", order);
}

template <typename Expression>
void expectValue(const Expression& actual, const char* type, const char* text, int line) {
    static_assert(std::is_same<Expression, Value>::value, "the result is a Value");
    countCheck(actual.typeName == type && actual.toString() == text,
               actual.typeName + " " + actual.toString() + ", expected " + type + " " + text,
               __FILE__, line);
}
#define EXPECT_VALUE(expression, type, text) expectValue((expression), type, text, __LINE__)

void testNativeOperandOnTheRight() {
    const Value n = 6, text = "a", list = List{1};
    EXPECT_VALUE(n + 2, "double", "8.000000");
    EXPECT_VALUE(n + 2LL, "double", "8.000000");
    EXPECT_VALUE(n + 0.5, "double", "6.500000");
    EXPECT_VALUE(n + true, "string", "6true");
    EXPECT_VALUE(n + "x", "string", "6x");
    EXPECT_VALUE(n + std::string("x"), "string", "6x");
    EXPECT_VALUE(text + nullptr, "string", "anull");
    EXPECT_VALUE((text + List{1, 2}), "string", "a[1, 2]");
    EXPECT_VALUE(n + 0, "double", "6.000000");
    EXPECT_VALUE(n - 2, "int", "4");
    EXPECT_VALUE(n * 2, "int", "12");
    EXPECT_VALUE(n / 4, "double", "1.500000");
    EXPECT_VALUE(n % 4, "int", "2");
    EXPECT_VALUE(n - 0.5, "double", "5.500000");
    EXPECT_VALUE(n - "4", "double", "6.000000");
    CHECK(n == 6 && n != 7 && !(n == 6.0) && n < 7 && n > 5 && n <= 6 && n >= 6);
    CHECK(text == "a" && text != std::string("b") && text < "b" && !(text == 1));
    CHECK(Value(true) == true && Value(true) != false && !(Value() == nullptr));
    CHECK(!(list == List{1}) && list != List{1});
}

void testNativeOperandOnTheLeft() {
    const Value n = 6, text = "a";
    EXPECT_VALUE(2 + n, "double", "8.000000");
    EXPECT_VALUE(2LL + n, "double", "8.000000");
    EXPECT_VALUE(0.5 + n, "double", "6.500000");
    EXPECT_VALUE(2.9 + Value(0.2), "double", "3.100000");
    EXPECT_VALUE(true + n, "string", "true6");
    EXPECT_VALUE("x" + n, "string", "x6");
    EXPECT_VALUE(std::string("x") + n, "string", "x6");
    EXPECT_VALUE(nullptr + text, "string", "nulla");
    EXPECT_VALUE((List{1, 2} + text), "string", "[1, 2]a");
    EXPECT_VALUE(0 + n, "double", "6.000000");
    EXPECT_VALUE(0 + text, "string", "0a");
    EXPECT_VALUE(10 - n, "int", "4");
    EXPECT_VALUE(2 * n, "int", "12");
    EXPECT_VALUE(2.5 * n, "double", "15.000000");
    EXPECT_VALUE(3 / n, "double", "0.500000");
    EXPECT_VALUE(10 % n, "int", "4");
    EXPECT_VALUE(0 - n, "int", "-6");
    CHECK(6 == n && 7 != n && !(6.0 == n) && 5 < n && 7 > n && 6 <= n && 6 >= n && 0 < n);
    CHECK("a" == text && std::string("b") != text && "b" > text && !(nullptr == text));
    CHECK(true == Value(true) && false != Value(true));
}

// No operand is a Value: text and numbers of the language meet as C++ values.
void testTextsAndNumbersWithoutAValue() {
    EXPECT_VALUE(1 + std::string("x"), "string", "1x");
    EXPECT_VALUE(0 + std::string("x"), "string", "0x");
    EXPECT_VALUE(2.5 + std::string("x"), "string", "2.500000x");
    EXPECT_VALUE(true + std::string("x"), "string", "truex");
    EXPECT_VALUE(5000000000LL + std::string("x"), "string", "5000000000x");
    EXPECT_VALUE(nullptr + std::string("x"), "string", "nullx");
    EXPECT_VALUE(std::string("x") + 1, "string", "x1");
    EXPECT_VALUE(std::string("x") + 0, "string", "x0");
    EXPECT_VALUE(std::string("x") + 2.5, "string", "x2.500000");
    EXPECT_VALUE(std::string("x") + true, "string", "xtrue");
    EXPECT_VALUE(std::string("x") + nullptr, "string", "xnull");
    EXPECT_VALUE((std::string("x") + List{1}), "string", "x[1]");
    EXPECT_VALUE((List{1} + std::string("x")), "string", "[1]x");
    EXPECT_VALUE((List{1} + List{2}), "string", "[1][2]");
    EXPECT_VALUE((std::string("a") + 1 + std::string("b") + 2), "string", "a1b2");
}

void testLibraryOperatorsKeepTheirMeaning() {
    CHECK((std::is_same<decltype(std::string("a") + "b"), std::string>::value));
    CHECK((std::is_same<decltype(std::string("a") + std::string("b")), std::string>::value));
    CHECK((std::is_same<decltype('a' + std::string("b")), std::string>::value));
    CHECK((std::is_same<decltype(std::string("a") + 'b'), std::string>::value));
    CHECK((List{1, 2} == List{1, 2}) && (List{1} != List{2}) && (List{1} < List{2}));
    List list{1, 2, 3};
    Value* first = &list[0];
    CHECK(first + 2 == &list[2] && &list[2] - first == 2 && first < first + 1 && first != nullptr);
    CHECK(list.begin() + 3 == list.end() && list.end() - list.begin() == 3);
    const std::map<std::string, Value> one{{"k", 1}}, two{{"k", 1}};
    CHECK(one == two);
}

void testComparisonsGiveBool() {
    const Value v = 1;
    CHECK((std::is_same<decltype(v == 1), bool>::value &&
           std::is_same<decltype(1 < v), bool>::value));
    CHECK((std::is_same<decltype(v >= v), bool>::value && std::is_same<decltype(!v), bool>::value));
}

// Shapes that translated programs are made of.
void testTranslatedShapes() {
    Value x = 5;
    int n = Value((x + 1)).asInt();
    CHECK_EQUAL(n, 0);
    n = Value((x - 1)).asInt();
    CHECK_EQUAL(n, 4);
    Value _o = Value::makeObject("Point");
    _o["f"] = (x = 7);
    CHECK(_o["f"] == 7 && x == 7);
    Value _it = std::vector<Value>{x, std::string("b"), nullptr};
    CHECK_EQUAL(_it.toString(), "[7, b, null]");
    long long _i = 3;
    Value _cur = _i;
    CHECK(_cur.isInt() && (long long)(_cur) == 3);
    CHECK((Value)(((Value)(x)).typeName == "int") == true);
    CHECK((std::string)x.typeName == "int");
    bool caught = false;
    try {
        throw(x);
    } catch (const Value& thrown) {
        caught = thrown == 7;
    }
    CHECK(caught);
}

} // namespace

void testOverloads() {
    testArithmeticOperands();
    testComparisonOperands();
    testNativeOperandOnTheRight();
    testNativeOperandOnTheLeft();
    testTextsAndNumbersWithoutAValue();
    testLibraryOperatorsKeepTheirMeaning();
    testComparisonsGiveBool();
    testTranslatedShapes();
}
