#include "core_fixture.h"

#include <limits>

namespace Orvane {
namespace {

using namespace std::string_literals;

class Expressions : public CoreTest {};

class OddExpr final : public Expr {};

// ---- Literals ----

TEST_F(Expressions, NullExpressionWritesNothing) { EXPECT_EQ(written(uptr<Expr>()), ""); }

TEST_F(Expressions, UnknownNodeBecomesAComment) {
    EXPECT_EQ(written(uptr<Expr>(tree.arena.make<OddExpr>())), "/* unknown expr */");
}

TEST_F(Expressions, IntegersAreDecimal) {
    EXPECT_EQ(written(tree.number(0)), "0");
    EXPECT_EQ(written(tree.number(42)), "42");
    EXPECT_EQ(written(tree.number(-7)), "-7");
    EXPECT_EQ(written(tree.number(std::numeric_limits<int>::max())), "2147483647");
    EXPECT_EQ(written(tree.number(std::numeric_limits<int>::min())), "-2147483648");
}

TEST_F(Expressions, FloatsAreWrittenAsAStreamDoes) {
    EXPECT_EQ(written(tree.real(0.1)), "0.1");
    EXPECT_EQ(written(tree.real(2.5)), "2.5");
    EXPECT_EQ(written(tree.real(1.0)), "1");
    EXPECT_EQ(written(tree.real(100000.0)), "100000");
    EXPECT_EQ(written(tree.real(1000000.0)), "1e+06");
    EXPECT_EQ(written(tree.real(1e21)), "1e+21");
    EXPECT_EQ(written(tree.real(3.14159265358979)), "3.14159");
    EXPECT_EQ(written(tree.real(0.00001)), "1e-05");
    EXPECT_EQ(written(tree.real(-0.5)), "-0.5");
}

TEST_F(Expressions, TextsAreStandardStrings) {
    EXPECT_EQ(written(tree.text("")), "std::string(\"\")");
    EXPECT_EQ(written(tree.text("Hello")), "std::string(\"Hello\")");
}

TEST_F(Expressions, TextsAreEscaped) {
    EXPECT_EQ(written(tree.text("\"\\\t\x01")), R"(std::string("\"\\\t\x01"))");
}

TEST_F(Expressions, EveryControlByteHasItsEscape) {
    std::string source, expected;
    const char* const named[] = {"\\0", "", "",    "",    "", "", "",
                                 "",    "", "\\t", "\\n", "", "", "\\r"};
    for (int byte = 0; byte < 32; ++byte) {
        source.assign(1, static_cast<char>(byte));
        if (byte < 14 && *named[byte]) {
            expected = named[byte];
        } else {
            char hexadecimal[8];
            std::snprintf(hexadecimal, sizeof hexadecimal, "\\x%02x", static_cast<unsigned>(byte));
            expected = hexadecimal;
        }
        EXPECT_EQ(CodeGeneratorCore::escapeString(source), expected) << byte;
        EXPECT_EQ(written(tree.text(source)), "std::string(\"" + expected + "\")") << byte;
    }
}

TEST_F(Expressions, BytesFromThirtyTwoOnPassThrough) {
    for (int byte = 32; byte < 256; ++byte) {
        if (byte == '"' || byte == '\\') continue;
        const std::string source(1, static_cast<char>(byte));
        EXPECT_EQ(CodeGeneratorCore::escapeString(source), source) << byte;
    }
}

TEST_F(Expressions, EscapesStandBetweenTheTextAroundThem) {
    EXPECT_EQ(CodeGeneratorCore::escapeString("a\nb\r\nc"), "a\\nb\\r\\nc");
    EXPECT_EQ(CodeGeneratorCore::escapeString("say \"hi\""), "say \\\"hi\\\"");
    EXPECT_EQ(CodeGeneratorCore::escapeString("C:\\new"), "C:\\\\new");
    EXPECT_EQ(CodeGeneratorCore::escapeString("a\0b"s), "a\\0b");
    EXPECT_EQ(CodeGeneratorCore::escapeString("\x1b\x1f\x10"), "\\x1b\\x1f\\x10");
    EXPECT_EQ(CodeGeneratorCore::escapeString(""), "");
}

TEST_F(Expressions, Utf8TextStaysAsItIs) {
    EXPECT_EQ(written(tree.text("Größe \xE4\xB8\xAD")), "std::string(\"Größe \xE4\xB8\xAD\")");
}

TEST_F(Expressions, BooleansAndNull) {
    EXPECT_EQ(written(tree.flag(true)), "true");
    EXPECT_EQ(written(tree.flag(false)), "false");
    EXPECT_EQ(written(tree.null()), "nullptr");
}

TEST_F(Expressions, ColoursAreTextsWithoutEscapes) {
    EXPECT_EQ(written(tree.literal(Value("color", "#FF8800"))), "std::string(\"#FF8800\")");
    EXPECT_EQ(written(tree.literal(Value("color", "a\\b"))), "std::string(\"a\\b\")");
}

TEST_F(Expressions, OtherLiteralKindsAreNullPointers) {
    EXPECT_EQ(written(tree.literal(Value(std::vector<Value>{Value(1)}))), "nullptr");
    EXPECT_EQ(written(tree.literal(Value::makeFunction("f"))), "nullptr");
    EXPECT_EQ(written(tree.literal(Value::makeObject("Point"))), "nullptr");
}

TEST_F(Expressions, NamesStayUnchanged) { EXPECT_EQ(written(tree.name("speed_2")), "speed_2"); }

// ---- Operators ----

TEST_F(Expressions, BinaryOperatorsArePutInParentheses) {
    EXPECT_EQ(written(tree.binary(tree.number(1), "+", tree.number(2))), "(1 + 2)");
    for (const char* op : {"-", "*", "/", "%", "==", "!=", "<", ">", "<=", ">=", "=", "&&", "||"})
        EXPECT_EQ(written(tree.binary(tree.name("a"), op, tree.name("b"))), "(a "s + op + " b)");
}

TEST_F(Expressions, OperatorsNestAsTheTreeDoes) {
    auto left = tree.binary(tree.binary(tree.name("a"), "-", tree.name("b")), "-", tree.name("c"));
    EXPECT_EQ(written(left), "((a - b) - c)");
    auto right = tree.binary(tree.name("a"), "-", tree.binary(tree.name("b"), "-", tree.name("c")));
    EXPECT_EQ(written(right), "(a - (b - c))");
    auto both = tree.binary(tree.binary(tree.name("a"), "*", tree.name("b")),
                            "==", tree.binary(tree.name("c"), "/", tree.name("d")));
    EXPECT_EQ(written(both), "((a * b) == (c / d))");
}

TEST_F(Expressions, AssignmentsAreOperators) {
    auto inner = tree.binary(tree.name("y"), "=", tree.number(3));
    EXPECT_EQ(written(tree.binary(tree.name("x"), "=", std::move(inner))), "(x = (y = 3))");
}

TEST_F(Expressions, MissingOperandsLeaveTheOperator) {
    EXPECT_EQ(written(tree.binary({}, "+", {})), "( + )");
    EXPECT_EQ(written(tree.binary({}, ".", tree.name("x"))), "[\"x\"]");
}

TEST_F(Expressions, MembersAreLookedUpByName) {
    EXPECT_EQ(written(tree.member(tree.name("p"), "x")), "p[\"x\"]");
    EXPECT_EQ(written(tree.member(tree.member(tree.name("a"), "b"), "c")), "a[\"b\"][\"c\"]");
    EXPECT_EQ(written(tree.binary(tree.member(tree.name("p"), "x"), "=", tree.number(1))),
              "(p[\"x\"] = 1)");
}

TEST_F(Expressions, MemberThatIsNoNameIsEmpty) {
    EXPECT_EQ(written(tree.binary(tree.name("p"), ".", tree.number(1))), "p[\"\"]");
    EXPECT_EQ(written(tree.binary(tree.name("p"), ".", {})), "p[\"\"]");
}

TEST_F(Expressions, MinusAndNot) {
    EXPECT_EQ(written(tree.unary("-", tree.name("x"))), "(-x)");
    EXPECT_EQ(written(tree.unary("!", tree.name("x"))), "!(x)");
    EXPECT_EQ(written(tree.unary("-", tree.unary("-", tree.name("x")))), "(-(-x))");
    EXPECT_EQ(written(tree.unary("!", {})), "!()");
}

TEST_F(Expressions, OtherUnaryOperatorsWriteNothing) {
    EXPECT_EQ(written(tree.unary("+", tree.name("x"))), "");
    EXPECT_EQ(written(tree.unary("~", tree.name("x"))), "");
    EXPECT_EQ(written(tree.unary("--", tree.name("x"))), "");
    EXPECT_EQ(written(tree.unary("", tree.name("x"))), "");
    EXPECT_EQ(written(tree.binary(tree.name("a"), "*", tree.unary("~", tree.name("x")))), "(a * )");
}

TEST_F(Expressions, TernariesConvertAllThreeParts) {
    EXPECT_EQ(written(tree.ternary(tree.name("c"), tree.number(1), tree.text("b"))),
              "((bool)(c) ? (Value)(1) : (Value)(std::string(\"b\")))");
    EXPECT_EQ(written(tree.ternary({}, {}, {})), "((bool)() ? (Value)() : (Value)())");
}

TEST_F(Expressions, IndicesStandInBrackets) {
    EXPECT_EQ(written(tree.index(tree.name("a"), tree.number(0))), "a[0]");
    EXPECT_EQ(written(tree.index(tree.index(tree.name("a"), tree.name("i")), tree.text("k"))),
              "a[i][std::string(\"k\")]");
    EXPECT_EQ(written(tree.member(tree.index(tree.name("a"), tree.number(0)), "x")), "a[0][\"x\"]");
    EXPECT_EQ(written(tree.index({}, {})), "[]");
}

TEST_F(Expressions, OperatorsInsideAChainOfMembersKeepTheirParentheses) {
    auto sum = tree.binary(tree.name("a"), "+", tree.name("b"));
    EXPECT_EQ(written(tree.member(std::move(sum), "c")), "(a + b)[\"c\"]");
    auto sumOfMember = tree.binary(tree.member(tree.name("a"), "b"), "+", tree.name("c"));
    EXPECT_EQ(written(tree.index(std::move(sumOfMember), tree.number(1))), "(a[\"b\"] + c)[1]");
}

// ---- Broadcasts ----

TEST_F(Expressions, AssigningToAllVisitsEveryElement) {
    auto items = tree.member(tree.name("items"), "all");
    EXPECT_EQ(written(tree.binary(std::move(items), "=", tree.number(0))),
              "([&]() { auto& _arr = items; for (auto& _e : _arr.arrayVal) { _e = 0; } })()");
}

TEST_F(Expressions, AllOutsideAnAssignmentIsTheCollection) {
    EXPECT_EQ(written(tree.member(tree.name("items"), "all")), "items");
    EXPECT_EQ(written(tree.member(tree.member(tree.name("p"), "items"), "all")), "p[\"items\"]");
    EXPECT_EQ(written(tree.member(tree.member(tree.name("items"), "all"), "all")), "items");
}

TEST_F(Expressions, AllOfTheAssignedCollectionIsTheCurrentElement) {
    auto target = tree.member(tree.name("items"), "all");
    auto twice = tree.binary(tree.member(tree.name("items"), "all"), "*", tree.number(2));
    EXPECT_EQ(
        written(tree.binary(std::move(target), "=", std::move(twice))),
        "([&]() { auto& _arr = items; for (auto& _e : _arr.arrayVal) { _e = (_e * 2); } })()");
}

TEST_F(Expressions, MembersOfTheCurrentElement) {
    auto target = tree.member(tree.name("items"), "all");
    auto field = tree.member(tree.member(tree.name("items"), "all"), "x");
    EXPECT_EQ(
        written(tree.binary(std::move(target), "=", std::move(field))),
        "([&]() { auto& _arr = items; for (auto& _e : _arr.arrayVal) { _e = _e[\"x\"]; } })()");
}

TEST_F(Expressions, AllOfAnotherCollectionStaysThatCollection) {
    auto target = tree.member(tree.name("items"), "all");
    EXPECT_EQ(written(tree.binary(std::move(target), "=", tree.member(tree.name("other"), "all"))),
              "([&]() { auto& _arr = items; for (auto& _e : _arr.arrayVal) { _e = other; } })()");
}

TEST_F(Expressions, CollectionThatIsNoNameHasNoCurrentElement) {
    auto target = tree.member(tree.member(tree.name("p"), "items"), "all");
    auto again = tree.member(tree.member(tree.name("p"), "items"), "all");
    EXPECT_EQ(written(tree.binary(std::move(target), "=", std::move(again))),
              "([&]() { auto& _arr = p[\"items\"]; for (auto& _e : _arr.arrayVal) "
              "{ _e = p[\"items\"]; } })()");
}

TEST_F(Expressions, CurrentElementEndsWithTheAssignment) {
    auto target = tree.member(tree.name("items"), "all");
    auto assignment = tree.binary(std::move(target), "=", tree.number(0));
    written(assignment);
    EXPECT_EQ(written(tree.member(tree.name("items"), "all")), "items");
}

TEST_F(Expressions, NestedBroadcastGivesTheOuterElementBack) {
    // a.all = (b.all = b.all) + a.all
    auto inner = tree.binary(
        tree.member(tree.name("b"), "all"), "=",
        tree.binary(tree.member(tree.name("b"), "all"), "+", tree.member(tree.name("a"), "all")));
    auto sum = tree.binary(std::move(inner), "+", tree.member(tree.name("a"), "all"));
    EXPECT_EQ(written(tree.binary(tree.member(tree.name("a"), "all"), "=", std::move(sum))),
              "([&]() { auto& _arr = a; for (auto& _e : _arr.arrayVal) { _e = ("
              "([&]() { auto& _arr = b; for (auto& _e : _arr.arrayVal) { _e = (_e + a); } })()"
              " + _e); } })()");
}

TEST_F(Expressions, BroadcastAssignmentMayBeFollowedByAMember) {
    auto assignment = tree.binary(tree.member(tree.name("items"), "all"), "=", tree.number(1));
    EXPECT_EQ(written(tree.member(std::move(assignment), "x")),
              "([&]() { auto& _arr = items; for (auto& _e : _arr.arrayVal) { _e = 1; } })()"
              "[\"x\"]");
}

TEST_F(Expressions, ComparingWithAllIsNoBroadcast) {
    EXPECT_EQ(written(tree.binary(tree.member(tree.name("items"), "all"), "==", tree.number(0))),
              "(items == 0)");
}

TEST_F(Expressions, CallingAMethodOfAllVisitsEveryElement) {
    auto show = tree.member(tree.member(tree.name("items"), "all"), "show");
    EXPECT_EQ(written(tree.callOf(std::move(show), tree.name("x"), tree.number(2))),
              "([&]() { auto& _arr = items; for (auto& _e : _arr.arrayVal) "
              "{ _e[\"show\"](x, 2); } })()");
    auto hide = tree.member(tree.member(tree.member(tree.name("p"), "items"), "all"), "hide");
    EXPECT_EQ(written(tree.callOf(std::move(hide))),
              "([&]() { auto& _arr = p[\"items\"]; for (auto& _e : _arr.arrayVal) "
              "{ _e[\"hide\"](); } })()");
}

// ---- Arrays and objects ----

TEST_F(Expressions, ArraysListTheirElements) {
    EXPECT_EQ(written(tree.array()), "std::vector<Value>{}");
    EXPECT_EQ(written(tree.array(tree.number(1))), "std::vector<Value>{1}");
    EXPECT_EQ(written(tree.array(tree.number(1), tree.text("a"), tree.array(tree.name("x")))),
              "std::vector<Value>{1, std::string(\"a\"), std::vector<Value>{x}}");
    EXPECT_EQ(written(tree.array(uptr<Expr>(), tree.name("x"))), "std::vector<Value>{, x}");
}

TEST_F(Expressions, ObjectsSetTheirFieldsInSourceOrder) {
    auto point = tree.object("Point");
    point->fields.emplace_back("y", tree.number(2));
    point->fields.emplace_back("x", tree.binary(tree.name("a"), "+", tree.number(1)));
    EXPECT_EQ(written(point), "([&]() -> Value { Value _o = Value::makeObject(\"Point\");"
                              "_o[\"y\"] = 2; _o[\"x\"] = (a + 1); return _o; })()");
}

TEST_F(Expressions, ObjectWithoutFields) {
    EXPECT_EQ(written(tree.object("Point")),
              "([&]() -> Value { Value _o = Value::makeObject(\"Point\");return _o; })()");
}

TEST_F(Expressions, MissingFieldValueIsLeftOut) {
    auto point = tree.object("P");
    point->fields.emplace_back("x", uptr<Expr>());
    EXPECT_EQ(written(point), "([&]() -> Value { Value _o = Value::makeObject(\"P\");"
                              "_o[\"x\"] = ; return _o; })()");
}

// ---- Calls ----

TEST_F(Expressions, CallsKeepNameAndArguments) {
    EXPECT_EQ(written(tree.call("now")), "now()");
    EXPECT_EQ(written(tree.call("clamp", tree.name("x"), tree.number(0), tree.number(9))),
              "clamp(x, 0, 9)");
    EXPECT_EQ(written(tree.call("f", tree.call("g", tree.name("x")))), "f(g(x))");
    EXPECT_EQ(written(tree.call("f", uptr<Expr>(), tree.name("x"))), "f(, x)");
}

TEST_F(Expressions, AlertShowsItsFirstArgument) {
    EXPECT_EQ(written(tree.call("alert", tree.text("Hi"))),
              "MessageBoxW(NULL, utf8_to_wide(Value(std::string(\"Hi\")).toString()).c_str(), "
              "L\"Orvane\", MB_OK)");
    EXPECT_EQ(written(tree.call("alert", tree.name("a"), tree.name("b"))),
              "MessageBoxW(NULL, utf8_to_wide(Value(a).toString()).c_str(), L\"Orvane\", MB_OK)");
    EXPECT_EQ(written(tree.call("alert")),
              "MessageBoxW(NULL, utf8_to_wide(Value().toString()).c_str(), L\"Orvane\", MB_OK)");
}

TEST_F(Expressions, PrintWritesItsFirstArgument) {
    EXPECT_EQ(written(tree.call("print", tree.name("a"))),
              "std::cout << Value(a).toString() << std::endl");
    EXPECT_EQ(written(tree.call("print", tree.name("a"), tree.name("b"))),
              "std::cout << Value(a).toString() << std::endl");
    EXPECT_EQ(written(tree.call("print")), "std::cout << Value().toString() << std::endl");
    EXPECT_EQ(written(tree.call("print", uptr<Expr>())),
              "std::cout << Value().toString() << std::endl");
}

TEST_F(Expressions, MethodCallsPassTheInstanceFirst) {
    addClass("Shape", {"area"});
    variables.set("obj", "Shape");
    EXPECT_EQ(written(tree.callOf(tree.member(tree.name("obj"), "area"), tree.number(1))),
              "Shape__area(obj, 1)");
    EXPECT_EQ(written(tree.callOf(tree.member(tree.name("obj"), "area"))), "Shape__area(obj)");
    EXPECT_EQ(written(tree.callOf(tree.member(tree.name("obj"), "area"), tree.number(1),
                                  tree.binary(tree.name("a"), "+", tree.name("b")))),
              "Shape__area(obj, 1, (a + b))");
}

TEST_F(Expressions, AliasOfAClassCallsItsMethods) {
    addClass("Shape", {"area"});
    variables = {{"s", "Figure"}, {"Figure", "S"}, {"S", "Shape"}};
    EXPECT_EQ(written(tree.callOf(tree.member(tree.name("s"), "area"))), "Shape__area(s)");
    EXPECT_EQ(written(tree.callOf(tree.member(tree.name("s"), "go"))),
              "/* class call Shape.go */ Value()");
}

TEST_F(Expressions, CallOfAnUnknownMethodIsAComment) {
    addClass("Shape", {"draw"});
    variables.set("obj", "Shape");
    EXPECT_EQ(written(tree.callOf(tree.member(tree.name("obj"), "area"), tree.number(1))),
              "/* class call Shape.area */ Value()");
}

TEST_F(Expressions, FieldsAreNoMethods) {
    addClass("Shape", {}, {"area"});
    variables.set("obj", "Shape");
    EXPECT_EQ(written(tree.callOf(tree.member(tree.name("obj"), "area"))),
              "/* class call Shape.area */ Value()");
}

TEST_F(Expressions, CallOfAnUnknownClassIsAComment) {
    variables.set("obj", "Ghost");
    EXPECT_EQ(written(tree.callOf(tree.member(tree.name("obj"), "area"))),
              "/* class call Ghost.area */ Value()");
}

TEST_F(Expressions, CallOnAnUndeclaredVariableIsAComment) {
    addClass("Shape", {"area"});
    variables.set("other", "Shape");
    EXPECT_EQ(written(tree.callOf(tree.member(tree.name("obj"), "area"))),
              "/* class call .area */ Value()");
}

TEST_F(Expressions, CallOnAVariableNamedLikeAClassNeedsADeclaration) {
    addClass("Shape", {"area"});
    EXPECT_EQ(written(tree.callOf(tree.member(tree.name("Shape"), "area"))),
              "/* class call .area */ Value()");
    variables.set("Shape", "Shape");
    EXPECT_EQ(written(tree.callOf(tree.member(tree.name("Shape"), "area"))), "Shape__area(Shape)");
}

TEST_F(Expressions, MethodCallsWithoutTablesAreComments) {
    addClass("Shape", {"area"});
    variables.set("obj", "Shape");
    auto call = tree.callOf(tree.member(tree.name("obj"), "area"), tree.number(1));
    core.setTables(&classes, nullptr, nullptr);
    EXPECT_EQ(written(call), "/* class call .area */ Value()");
    core.setTables(nullptr, &variables, nullptr);
    EXPECT_EQ(written(call), "/* class call Shape.area */ Value()");
    core.setTables(nullptr, nullptr, nullptr);
    EXPECT_EQ(written(call), "/* class call .area */ Value()");
    NameMap noVariables;
    core.setTables(&classes, &noVariables, nullptr);
    EXPECT_EQ(written(call), "/* class call .area */ Value()");
}

TEST_F(Expressions, CallOnWhatIsNoVariableIsAComment) {
    addClass("Shape", {"go"});
    variables.set("a", "Shape");
    EXPECT_EQ(written(tree.callOf(tree.member(tree.member(tree.name("a"), "b"), "go"))),
              "/* class call .go */ Value()");
    EXPECT_EQ(written(tree.callOf(tree.member(tree.call("a"), "go"), tree.number(1))),
              "/* class call .go */ Value()");
    EXPECT_EQ(written(tree.callOf(tree.member({}, "go"))), "/* class call .go */ Value()");
}

TEST_F(Expressions, CallOfWhatIsNoMemberIsAComment) {
    EXPECT_EQ(written(tree.callOf(tree.call("f", tree.number(1)), tree.number(2))),
              "/* class call . */ Value()");
    EXPECT_EQ(written(tree.callOf(tree.index(tree.name("fs"), tree.number(0)))),
              "/* class call . */ Value()");
    EXPECT_EQ(written(tree.callOf(tree.binary(tree.name("a"), "+", tree.name("b")))),
              "/* class call . */ Value()");
}

TEST_F(Expressions, CallOfAMemberThatIsNoNameIsAComment) {
    addClass("Shape", {"area"});
    variables.set("obj", "Shape");
    EXPECT_EQ(written(tree.callOf(tree.binary(tree.name("obj"), ".", tree.number(1)))),
              "/* class call Shape. */ Value()");
    EXPECT_EQ(written(tree.callOf(
                  tree.binary(tree.member(tree.name("items"), "all"), ".", tree.number(1)))),
              "/* class call . */ Value()");
}

TEST_F(Expressions, MethodNamedAllIsAnOrdinaryMethod) {
    addClass("Bag", {"all"});
    variables.set("bag", "Bag");
    EXPECT_EQ(written(tree.callOf(tree.member(tree.name("bag"), "all"))), "Bag__all(bag)");
}

// ---- Type and existence tests ----

TEST_F(Expressions, IsComparesTheTypeName) {
    EXPECT_EQ(written(tree.is(tree.name("x"), "int")), "(Value)(((Value)(x)).typeName == \"int\")");
    EXPECT_EQ(written(tree.is(tree.binary(tree.name("x"), "+", tree.number(1)), "Shape")),
              "(Value)(((Value)((x + 1))).typeName == \"Shape\")");
    EXPECT_EQ(written(tree.is({}, "int")), "(Value)(((Value)()).typeName == \"int\")");
}

TEST_F(Expressions, IsClassListsTheClassesInNameOrder) {
    addClass("Shape", {});
    addClass("Circle", {});
    EXPECT_EQ(written(tree.is(tree.name("x"), "class")),
              R"((Value)([&](const Value& _v) -> bool {
    static const char* _builtins[] = {"int","double","string","bool","color","array","map","handle","value"};
    for (auto _s : _builtins) if (_v.typeName == _s) return false;
    static const char* _classes[] = {"Circle","Shape"};
    for (auto _s : _classes) if (_v.typeName == _s) return true;
    return false;
}(x)))");
}

TEST_F(Expressions, IsClassWithoutClassesLeavesTheirLinesOut) {
    const std::string expected = R"((Value)([&](const Value& _v) -> bool {
            static const char* _builtins[] = {"int","double","string","bool","color","array","map","handle","value"};
            for (auto _s : _builtins) if (_v.typeName == _s) return false;
            return false;
        }(x)))";
    auto test = tree.is(tree.name("x"), "class");
    EXPECT_EQ(written(test, 2), expected);
    core.setTables(nullptr, nullptr, nullptr);
    EXPECT_EQ(written(test, 2), expected);
}

TEST_F(Expressions, HaveIsDecidedAtOnce) {
    addClass("Shape", {"area"}, {"width"});
    EXPECT_EQ(written(tree.have("Shape", "area")), "(Value)(true) /* have(Shape, area) */");
    EXPECT_EQ(written(tree.have("Shape", ".area")), "(Value)(true) /* have(Shape, .area) */");
    EXPECT_EQ(written(tree.have("Shape", "width")), "(Value)(true) /* have(Shape, width) */");
    EXPECT_EQ(written(tree.have("Shape", ".width")), "(Value)(true) /* have(Shape, .width) */");
    EXPECT_EQ(written(tree.have("Shape", "depth")), "(Value)(false) /* have(Shape, depth) */");
    EXPECT_EQ(written(tree.have("Ghost", "area")), "(Value)(false) /* have(Ghost, area) */");
    core.setTables(nullptr, nullptr, nullptr);
    EXPECT_EQ(written(tree.have("Shape", ".area")), "(Value)(false) /* have(Shape, .area) */");
}

TEST_F(Expressions, TherebeClassLooksInTheClassTable) {
    addClass("Shape", {"area"});
    functions.insert("Ghost");
    EXPECT_EQ(written(tree.therebe("class", "Shape")), "(Value)(true) /* therebe(class, Shape) */");
    EXPECT_EQ(written(tree.therebe("class", "Ghost")),
              "(Value)(false) /* therebe(class, Ghost) */");
    core.setTables(nullptr, nullptr, &functions);
    EXPECT_EQ(written(tree.therebe("class", "Shape")),
              "(Value)(false) /* therebe(class, Shape) */");
}

TEST_F(Expressions, TherebeOfOtherKindsLooksForMethodsAndFunctions) {
    addClass("Circle", {}, {"radius"});
    addClass("Shape", {"area"});
    functions.insert("main2");
    EXPECT_EQ(written(tree.therebe("function", "area")),
              "(Value)(true) /* therebe(function, area) */");
    EXPECT_EQ(written(tree.therebe("function", "main2")),
              "(Value)(true) /* therebe(function, main2) */");
    EXPECT_EQ(written(tree.therebe("able", "area")), "(Value)(true) /* therebe(able, area) */");
    EXPECT_EQ(written(tree.therebe("function", "radius")),
              "(Value)(false) /* therebe(function, radius) */");
    EXPECT_EQ(written(tree.therebe("function", "Shape")),
              "(Value)(false) /* therebe(function, Shape) */");
    core.setTables(nullptr, nullptr, &functions);
    EXPECT_EQ(written(tree.therebe("function", "main2")),
              "(Value)(true) /* therebe(function, main2) */");
    core.setTables(nullptr, nullptr, nullptr);
    EXPECT_EQ(written(tree.therebe("function", "main2")),
              "(Value)(false) /* therebe(function, main2) */");
}

// ---- Lists ----

TEST_F(Expressions, ComprehensionsLoopOverAnArray) {
    auto square = tree.binary(tree.name("v"), "*", tree.name("v"));
    auto even = tree.binary(tree.name("v"), ">", tree.number(1));
    EXPECT_EQ(written(tree.comprehension(std::move(square), "v", tree.name("xs"), std::move(even))),
              R"(([&]() -> Value {
    std::vector<Value> _lcr;
    Value _lcit = xs;
    if (_lcit.typeName == "array") {
        for (size_t _lci = 0; _lci < _lcit.arrayVal.size(); _lci++) {
            Value v = _lcit.arrayVal[_lci];
            if (!(bool)((v > 1))) continue;
            _lcr.push_back(Value((v * v)));
        }
    }
    return Value(_lcr);
})())");
}

TEST_F(Expressions, ComprehensionsWithoutAConditionIndentFromTheirLevel) {
    EXPECT_EQ(written(tree.comprehension(tree.name("v"), "v", tree.name("xs")), 1),
              R"(([&]() -> Value {
        std::vector<Value> _lcr;
        Value _lcit = xs;
        if (_lcit.typeName == "array") {
            for (size_t _lci = 0; _lci < _lcit.arrayVal.size(); _lci++) {
                Value v = _lcit.arrayVal[_lci];
                _lcr.push_back(Value(v));
            }
        }
        return Value(_lcr);
    })())");
}

TEST_F(Expressions, RangesCountWithBothEnds) {
    EXPECT_EQ(written(tree.range(tree.number(0), tree.name("n"))),
              R"(([&]() -> Value {
    std::vector<Value> _r;
    long long _si = (long long)(0);
    long long _ei = (long long)(n);
    long long _sti = 1ll;
    if (_sti == 0) _sti = 1ll;
    for (long long _i = _si; (_sti > 0 ? _i <= _ei : _i >= _ei); _i += _sti) {
        Value _cur = _i;
        _r.push_back(_cur);
    }
    return Value(_r);
})())");
}

TEST_F(Expressions, RangesTakeAStepAndAFilter) {
    auto range = tree.range(tree.number(5), tree.number(1), tree.unary("-", tree.number(2)));
    range->label = "isOdd";
    EXPECT_EQ(written(range, 3), R"(([&]() -> Value {
                std::vector<Value> _r;
                long long _si = (long long)(5);
                long long _ei = (long long)(1);
                long long _sti = (long long)((-2));
                if (_sti == 0) _sti = 1ll;
                for (long long _i = _si; (_sti > 0 ? _i <= _ei : _i >= _ei); _i += _sti) {
                    Value _cur = _i;
                    if (!(bool)(isOdd(_cur))) continue;
                    _r.push_back(_cur);
                }
                return Value(_r);
            })())");
}

TEST_F(Expressions, MissingRangeEndsLeaveTheirConversions) {
    EXPECT_EQ(written(tree.range({}, {})), R"(([&]() -> Value {
    std::vector<Value> _r;
    long long _si = (long long)();
    long long _ei = (long long)();
    long long _sti = 1ll;
    if (_sti == 0) _sti = 1ll;
    for (long long _i = _si; (_sti > 0 ? _i <= _ei : _i >= _ei); _i += _sti) {
        Value _cur = _i;
        _r.push_back(_cur);
    }
    return Value(_r);
})())");
}

TEST_F(Expressions, ListsInsideListsIndentFromTheLineTheyStandOn) {
    // [[0..v] for v in [x for x in xs] where is(v, class)]
    auto inner = tree.range(tree.number(0), tree.name("v"));
    auto iterable = tree.comprehension(tree.name("x"), "x", tree.name("xs"));
    auto condition = tree.is(tree.name("v"), "class");
    EXPECT_EQ(written(tree.comprehension(std::move(inner), "v", std::move(iterable),
                                         std::move(condition)),
                      1),
              R"(([&]() -> Value {
        std::vector<Value> _lcr;
        Value _lcit = ([&]() -> Value {
            std::vector<Value> _lcr;
            Value _lcit = xs;
            if (_lcit.typeName == "array") {
                for (size_t _lci = 0; _lci < _lcit.arrayVal.size(); _lci++) {
                    Value x = _lcit.arrayVal[_lci];
                    _lcr.push_back(Value(x));
                }
            }
            return Value(_lcr);
        })();
        if (_lcit.typeName == "array") {
            for (size_t _lci = 0; _lci < _lcit.arrayVal.size(); _lci++) {
                Value v = _lcit.arrayVal[_lci];
                if (!(bool)((Value)([&](const Value& _v) -> bool {
                    static const char* _builtins[] = {"int","double","string","bool","color","array","map","handle","value"};
                    for (auto _s : _builtins) if (_v.typeName == _s) return false;
                    return false;
                }(v)))) continue;
                _lcr.push_back(Value(([&]() -> Value {
                    std::vector<Value> _r;
                    long long _si = (long long)(0);
                    long long _ei = (long long)(v);
                    long long _sti = 1ll;
                    if (_sti == 0) _sti = 1ll;
                    for (long long _i = _si; (_sti > 0 ? _i <= _ei : _i >= _ei); _i += _sti) {
                        Value _cur = _i;
                        _r.push_back(_cur);
                    }
                    return Value(_r);
                })()));
            }
        }
        return Value(_lcr);
    })())");
}

TEST_F(Expressions, RangeEndsInsideARangeIndentFromItsBody) {
    auto inner = tree.range(tree.number(1), tree.number(2));
    auto first = tree.index(std::move(inner), tree.number(0));
    EXPECT_EQ(written(tree.range(std::move(first), tree.number(9))), R"(([&]() -> Value {
    std::vector<Value> _r;
    long long _si = (long long)(([&]() -> Value {
        std::vector<Value> _r;
        long long _si = (long long)(1);
        long long _ei = (long long)(2);
        long long _sti = 1ll;
        if (_sti == 0) _sti = 1ll;
        for (long long _i = _si; (_sti > 0 ? _i <= _ei : _i >= _ei); _i += _sti) {
            Value _cur = _i;
            _r.push_back(_cur);
        }
        return Value(_r);
    })()[0]);
    long long _ei = (long long)(9);
    long long _sti = 1ll;
    if (_sti == 0) _sti = 1ll;
    for (long long _i = _si; (_sti > 0 ? _i <= _ei : _i >= _ei); _i += _sti) {
        Value _cur = _i;
        _r.push_back(_cur);
    }
    return Value(_r);
})())");
}

TEST_F(Expressions, TestedExpressionOfIsClassStandsAtTheOuterLevel) {
    auto list = tree.comprehension(tree.name("v"), "v", tree.name("xs"));
    EXPECT_EQ(written(tree.is(std::move(list), "class"), 1),
              R"((Value)([&](const Value& _v) -> bool {
        static const char* _builtins[] = {"int","double","string","bool","color","array","map","handle","value"};
        for (auto _s : _builtins) if (_v.typeName == _s) return false;
        return false;
    }(([&]() -> Value {
        std::vector<Value> _lcr;
        Value _lcit = xs;
        if (_lcit.typeName == "array") {
            for (size_t _lci = 0; _lci < _lcit.arrayVal.size(); _lci++) {
                Value v = _lcit.arrayVal[_lci];
                _lcr.push_back(Value(v));
            }
        }
        return Value(_lcr);
    })())))");
}

TEST_F(Expressions, NegativeLevelsWriteNoIndentation) {
    EXPECT_EQ(written(tree.range(tree.number(1), tree.number(2)), -2), R"(([&]() -> Value {
std::vector<Value> _r;
long long _si = (long long)(1);
long long _ei = (long long)(2);
long long _sti = 1ll;
if (_sti == 0) _sti = 1ll;
for (long long _i = _si; (_sti > 0 ? _i <= _ei : _i >= _ei); _i += _sti) {
Value _cur = _i;
_r.push_back(_cur);
}
return Value(_r);
})())");
}

// ---- Long chains ----

constexpr int chainLength = 100'000;
constexpr double chainSeconds = 5.0; // a chain takes milliseconds; sanitizers take their share

TEST_F(Expressions, LongSumsAreWrittenWithoutRecursion) {
    auto sum = tree.name("a");
    std::string expected(chainLength, '(');
    expected += "a";
    for (int term = 0; term < chainLength; ++term) {
        sum = tree.binary(std::move(sum), "+", tree.number(1));
        expected += " + 1)";
    }
    std::string text;
    EXPECT_LT(secondsFor([&] { text = written(sum); }), chainSeconds);
    EXPECT_TRUE(text == expected);
}

TEST_F(Expressions, LongChainsOfMembersAndIndicesAreWrittenWithoutRecursion) {
    auto chain = tree.name("a");
    std::string expected = "a";
    for (int link = 0; link < chainLength / 2; ++link) {
        chain = tree.index(tree.member(std::move(chain), "b"), tree.number(7));
        expected += "[\"b\"][7]";
    }
    std::string text;
    EXPECT_LT(secondsFor([&] { text = written(chain); }), chainSeconds);
    EXPECT_TRUE(text == expected);
}

TEST_F(Expressions, LongChainsOfBroadcastsAreWrittenWithoutRecursion) {
    auto chain = tree.name("a");
    std::string front, end;
    for (int link = 0; link < chainLength; ++link) {
        auto all = tree.member(std::move(chain), "all");
        chain = tree.callOf(tree.member(std::move(all), "f"), tree.number(1));
        front += "([&]() { auto& _arr = ";
        end += "; for (auto& _e : _arr.arrayVal) { _e[\"f\"](1); } })()";
    }
    std::string text;
    EXPECT_LT(secondsFor([&] { text = written(chain); }), chainSeconds);
    EXPECT_TRUE(text == front + "a" + end);
}

TEST_F(Expressions, LongChainsOfAllAreTheirCollection) {
    auto chain = tree.name("a");
    for (int link = 0; link < chainLength; ++link) chain = tree.member(std::move(chain), "all");
    EXPECT_EQ(written(chain), "a");
}

TEST_F(Expressions, LongChainsOfCallsAreWrittenWithoutRecursion) {
    auto calls = tree.call("f");
    for (int link = 0; link < chainLength; ++link)
        calls = tree.callOf(std::move(calls), tree.number(1));
    EXPECT_EQ(written(calls), "/* class call . */ Value()");
}

// ---- Deep nesting ----

// As deep as the parser follows a source; the stack is the default one, sanitizers included.
constexpr int deepest = 1000;

TEST_F(Expressions, DeeplyNestedOperandsFitTheStack) {
    auto nested = tree.name("x");
    std::string front, end;
    for (int depth = 0; depth < deepest; ++depth) {
        auto sum = tree.binary(tree.name("a"), "+", tree.call("f", std::move(nested)));
        nested = tree.binary(tree.name("b"), "=", tree.binary(tree.name("c"), "<", std::move(sum)));
        front += "(b = (c < (a + f(";
        end += "))))";
    }
    EXPECT_TRUE(written(nested) == front + "x" + end);
}

TEST_F(Expressions, DeeplyNestedBroadcastsFitTheStack) {
    auto nested = tree.name("x");
    std::string front, end;
    for (int depth = 0; depth < deepest; ++depth) {
        auto all = tree.member(tree.name("a"), "all");
        nested = tree.binary(std::move(all), "=", std::move(nested));
        front += "([&]() { auto& _arr = a; for (auto& _e : _arr.arrayVal) { _e = ";
        end += "; } })()";
    }
    EXPECT_TRUE(written(nested) == front + "x" + end);
}

TEST_F(Expressions, DeeplyNestedListsFitTheStack) {
    auto nested = tree.name("x");
    for (int depth = 0; depth < deepest; ++depth)
        nested = tree.comprehension(tree.name("v"), "v", std::move(nested));
    const std::string text = written(nested);
    EXPECT_NE(text.find("\n" + std::string(4000, ' ') + "Value _lcit = x;\n"), std::string::npos);
    EXPECT_TRUE(text.ends_with("\n    return Value(_lcr);\n})()"));
}

} // namespace
} // namespace Orvane
