#include "core_fixture.h"

namespace Orvane {
namespace {

class Statements : public CoreTest {
protected:
    // An expression of several lines, for checks of the level that stands while it is written.
    uptr<Expr> classTest() { return tree.is(tree.name("x"), "class"); }

    // What classTest() writes, its inner lines indented by this many spaces.
    static std::string classTestText(std::size_t outer) {
        const std::string inner(outer + 4, ' ');
        return "(Value)([&](const Value& _v) -> bool {\n" + inner +
               "static const char* _builtins[] = {\"int\",\"double\",\"string\",\"bool\",\"color\","
               "\"array\",\"map\",\"handle\",\"value\"};\n" +
               inner + "for (auto _s : _builtins) if (_v.typeName == _s) return false;\n" + inner +
               "return false;\n" + std::string(outer, ' ') + "}(x))";
    }

    std::string loopOver(std::string_view type) {
        return written(tree.forEach(type, "v", tree.name("xs"), tree.stmts()));
    }
    static std::string loopWith(const std::string& variableLine) {
        return "{\n"
               "    Value _it = xs;\n"
               "    auto& _arr = _it.arrayVal;\n"
               "    for (size_t _k = 0; _k < _arr.size(); ++_k) {\n"
               "        Value _e = _arr[_k];\n"
               "        " +
               variableLine +
               "\n"
               "    }\n"
               "}\n";
    }
};

class OddStmt final : public Stmt {};

// ---- Lines ----

TEST_F(Statements, LinesAreIndentedByFourSpacesPerLevel) {
    level = 2;
    core.addLine("x;");
    core.addLine("");
    level = 0;
    core.addLine("y;");
    level = -1;
    core.addLine("z;");
    EXPECT_EQ(mainStream.view(), "        x;\n        \ny;\nz;\n");
    EXPECT_EQ(importStream.view(), "");
}

TEST_F(Statements, LinesAreMadeOfPieces) {
    level = 1;
    auto sum = tree.binary(tree.number(1), "+", tree.number(2));
    core.addLine("x", 5, " = ", sum, ';');
    EXPECT_EQ(mainStream.view(), "    x5 = (1 + 2);\n");
}

TEST_F(Statements, LinesDeeperThanTheLimitStartAtTheMargin) {
    level = CodeGeneratorCore::maxIndent;
    core.addLine("x;");
    level = CodeGeneratorCore::maxIndent + 1;
    core.addLine("y;");
    EXPECT_EQ(mainStream.view(), std::string(4000, ' ') + "x;\ny;\n");
}

// ---- Dispatch ----

TEST_F(Statements, NullStatementWritesNothing) { EXPECT_EQ(written(uptr<Stmt>(), 1), ""); }

TEST_F(Statements, UnknownStatementIsACommentLine) {
    EXPECT_EQ(written(uptr<Stmt>(tree.arena.make<OddStmt>()), 1), "    /* unknown stmt */\n");
}

TEST_F(Statements, ExpressionStatementsStandAtTheMargin) {
    EXPECT_EQ(written(tree.expression(tree.call("f", tree.name("x"))), 2), "f(x);\n");
    EXPECT_EQ(written(tree.expression({}), 2), ";\n");
}

TEST_F(Statements, ExpressionStatementsInsideBlocksStayAtTheMargin) {
    auto inner = tree.ifOnly(tree.name("b"), tree.stmts(tree.block(tree.stmts(tree.call0("f")))));
    EXPECT_EQ(written(tree.ifOnly(tree.name("a"), tree.stmts(std::move(inner))), 1), R"(    if (a) {
        if (b) {
            {
f();
            }
        }
    }
)");
}

TEST_F(Statements, ExpressionStatementsOfSeveralLinesIndentFromTheLevel) {
    EXPECT_EQ(written(tree.expression(classTest()), 2), classTestText(8) + ";\n");
}

// ---- Declarations ----

TEST_F(Statements, TypedDeclarationsConvertTheirInitialiser) {
    EXPECT_EQ(written(tree.declare("int", "x", tree.number(5)), 1),
              "    int x = \nValue(5).asInt();\n");
    EXPECT_EQ(written(tree.declare("double", "d", tree.name("y"))),
              "double d = \nValue(y).asFloat();\n");
    EXPECT_EQ(written(tree.declare("string", "s", tree.text("a"))),
              "std::string s = \nValue(std::string(\"a\")).asString();\n");
    EXPECT_EQ(written(tree.declare("bool", "b", tree.flag(true))),
              "bool b = \nValue(true).asBool();\n");
    EXPECT_TRUE(variables.empty());
}

TEST_F(Statements, OtherDeclarationsAreValues) {
    EXPECT_EQ(written(tree.declare("value", "v", tree.number(5)), 2), "        Value v = \n5;\n");
    EXPECT_EQ(written(tree.declare("array", "a", tree.array())),
              "Value a = \nstd::vector<Value>{};\n");
    EXPECT_EQ(written(tree.declare("Shape", "s", tree.call("make"))), "Value s = \nmake();\n");
    EXPECT_EQ(written(tree.declare("", "u", tree.number(1))), "Value u = \n1;\n");
    EXPECT_EQ(written(tree.declare("Int", "i", tree.number(1))), "Value i = \n1;\n");
    EXPECT_EQ(variables,
              (NameMap{{"v", "value"}, {"a", "array"}, {"s", "Shape"}, {"u", ""}, {"i", "Int"}}));
}

TEST_F(Statements, DeclarationsWithoutInitialiserAreNullPointers) {
    EXPECT_EQ(written(tree.declare("string", "s")), "std::string s = \nnullptr;\n");
    EXPECT_EQ(written(tree.declare("int", "x"), 1), "    int x = \nnullptr;\n");
    EXPECT_EQ(written(tree.declare("value", "v")), "Value v = \nnullptr;\n");
}

TEST_F(Statements, AliasesOfTypesAreResolved) {
    variables = {{"Count", "Number"}, {"Number", "int"}, {"Figure", "Shape"}};
    EXPECT_EQ(written(tree.declare("Count", "n", tree.number(1))), "int n = \nValue(1).asInt();\n");
    EXPECT_EQ(written(tree.declare("Figure", "f", tree.name("x"))), "Value f = \nx;\n");
    EXPECT_EQ(variables.find("n"), std::nullopt);
    EXPECT_EQ(variables.find("f"), "Figure");
}

TEST_F(Statements, DeclarationsWithoutATableOfVariables) {
    core.setTables(nullptr, nullptr, nullptr);
    EXPECT_EQ(written(tree.declare("int", "x", tree.number(5))), "int x = \nValue(5).asInt();\n");
    EXPECT_EQ(written(tree.declare("Shape", "s", tree.number(5))), "Value s = \n5;\n");
}

TEST_F(Statements, DeclaredClassServesLaterCalls) {
    addClass("Shape", {"area"});
    written(tree.declare("Shape", "s", tree.object("Shape")));
    EXPECT_EQ(written(tree.expression(tree.callOf(tree.member(tree.name("s"), "area")))),
              "Shape__area(s);\n");
    written(tree.declare("Circle", "s"));
    EXPECT_EQ(written(tree.expression(tree.callOf(tree.member(tree.name("s"), "area")))),
              "/* class call Circle.area */ Value();\n");
}

TEST_F(Statements, InitialisersOfSeveralLinesIndentFromTheLevel) {
    EXPECT_EQ(written(tree.declare("bool", "b", classTest()), 1),
              "    bool b = \nValue(" + classTestText(4) + ").asBool();\n");
}

TEST_F(Statements, ResolvingATypeFollowsTheMapToItsEnd) {
    const NameMap map = {{"A", "B"}, {"B", "C"}, {"Self", "Self"}, {"ToSelf", "Self"}};
    EXPECT_EQ(CodeGeneratorCore::resolveType("A", map), "C");
    EXPECT_EQ(CodeGeneratorCore::resolveType("C", map), "C");
    EXPECT_EQ(CodeGeneratorCore::resolveType("Self", map), "Self");
    EXPECT_EQ(CodeGeneratorCore::resolveType("ToSelf", map), "Self");
    EXPECT_EQ(CodeGeneratorCore::resolveType("", map), "");
    EXPECT_EQ(CodeGeneratorCore::resolveType("A", {}), "A");
}

TEST_F(Statements, ResolvingATypeEndsInACycle) {
    const NameMap map = {{"A", "B"}, {"B", "C"}, {"C", "B"}, {"X", "Y"}, {"Y", "X"}};
    EXPECT_EQ(CodeGeneratorCore::resolveType("X", map), "X");
    EXPECT_EQ(CodeGeneratorCore::resolveType("A", map), "B");
}

TEST_F(Statements, DeclaredTypesHaveTheirCppType) {
    const NameMap map = {{"Count", "int"}};
    EXPECT_EQ(CodeGeneratorCore::generateVarDeclType("int", map), "int");
    EXPECT_EQ(CodeGeneratorCore::generateVarDeclType("Count", map), "int");
    EXPECT_EQ(CodeGeneratorCore::generateVarDeclType("double", map), "double");
    EXPECT_EQ(CodeGeneratorCore::generateVarDeclType("string", map), "std::string");
    EXPECT_EQ(CodeGeneratorCore::generateVarDeclType("bool", map), "bool");
    EXPECT_EQ(CodeGeneratorCore::generateVarDeclType("Value", map), "Value");
    EXPECT_EQ(CodeGeneratorCore::generateVarDeclType("Shape", map), "Value");
    EXPECT_EQ(CodeGeneratorCore::generateVarDeclType("", map), "Value");
    EXPECT_EQ(CodeGeneratorCore::generateVarDeclType("INT", map), "Value");
}

// ---- Branches and loops ----

TEST_F(Statements, IfWithoutElse) {
    EXPECT_EQ(written(tree.ifOnly(tree.name("c"), tree.stmts(tree.returning())), 1), R"(    if (c) {
        return;
    }
)");
    EXPECT_EQ(written(tree.ifOnly({}, tree.stmts())), "if () {\n}\n");
}

TEST_F(Statements, IfWithElseBreaksBetweenTheBlocks) {
    EXPECT_EQ(written(tree.ifElse(tree.name("c"), tree.stmts(tree.returning(tree.number(1))),
                                  tree.stmts(tree.returning(tree.number(2))))),
              R"(if (c) {
    return 1;
}
else {
    return 2;
}
)");
}

TEST_F(Statements, BracedBranchesStayBlocks) {
    EXPECT_EQ(written(tree.ifElse(tree.name("c"), tree.stmts(tree.block(tree.stmts())),
                                  tree.stmts(tree.block(tree.stmts(tree.returning()))))),
              R"(if (c) {
    {
    }
}
else {
    {
        return;
    }
}
)");
}

TEST_F(Statements, ElseIfIsAnIfInsideTheElseBlock) {
    auto last = tree.ifElse(tree.name("b"), tree.stmts(tree.returning(tree.number(2))),
                            tree.stmts(tree.returning(tree.number(3))));
    EXPECT_EQ(written(tree.ifElse(tree.name("a"), tree.stmts(tree.returning(tree.number(1))),
                                  tree.stmts(std::move(last))),
                      1),
              R"(    if (a) {
        return 1;
    }
    else {
        if (b) {
            return 2;
        }
        else {
            return 3;
        }
    }
)");
}

TEST_F(Statements, ElseWithAnIfAndMoreHoldsThemAll) {
    auto inner = tree.ifOnly(tree.name("b"), tree.stmts());
    EXPECT_EQ(written(tree.ifElse(tree.name("a"), tree.stmts(),
                                  tree.stmts(std::move(inner), tree.returning()))),
              R"(if (a) {
}
else {
    if (b) {
    }
    return;
}
)");
}

TEST_F(Statements, ConditionsOfSeveralLinesIndentFromTheLevel) {
    EXPECT_EQ(written(tree.ifOnly(classTest(), tree.stmts()), 1),
              "    if (" + classTestText(4) + ") {\n    }\n");
    EXPECT_EQ(written(tree.whileLoop(classTest(), tree.stmts()), 1),
              "    while (" + classTestText(4) + ") {\n    }\n");
}

TEST_F(Statements, While) {
    EXPECT_EQ(written(tree.whileLoop(tree.binary(tree.name("i"), "<", tree.number(3)),
                                     tree.stmts(tree.call0("step"), tree.returning())),
                      1),
              R"(    while ((i < 3)) {
step();
        return;
    }
)");
}

TEST_F(Statements, Blocks) {
    EXPECT_EQ(written(tree.block(tree.stmts()), 1), "    {\n    }\n");
    EXPECT_EQ(written(tree.block(tree.stmts(uptr<Stmt>(), tree.returning())), 1),
              "    {\n        return;\n    }\n");
}

TEST_F(Statements, ForVisitsTheElementsOfAList) {
    EXPECT_EQ(written(tree.forEach("", "item", tree.name("items"),
                                   tree.stmts(tree.call0("f"), tree.returning())),
                      1),
              R"(    {
        Value _it = items;
        auto& _arr = _it.arrayVal;
        for (size_t _k = 0; _k < _arr.size(); ++_k) {
            Value _e = _arr[_k];
            Value item = _e;
f();
            return;
        }
    }
)");
}

TEST_F(Statements, ForConvertsToTheTypeOfItsVariable) {
    EXPECT_EQ(loopOver(""), loopWith("Value v = _e;"));
    EXPECT_EQ(loopOver("value"), loopWith("Value v = _e;"));
    EXPECT_EQ(loopOver("Value"), loopWith("Value v = _e;"));
    EXPECT_EQ(loopOver("int"), loopWith("int v = (int)(double)(_e);"));
    EXPECT_EQ(loopOver("double"), loopWith("double v = (double)(_e);"));
    EXPECT_EQ(loopOver("string"), loopWith("std::string v = _e.toString();"));
    EXPECT_EQ(loopOver("std::string"), loopWith("std::string v = _e.toString();"));
    EXPECT_EQ(loopOver("bool"), loopWith("bool v = (bool)(_e);"));
    EXPECT_EQ(loopOver("Shape"), loopWith("Value v = _e;"));
    EXPECT_TRUE(variables.empty());
}

TEST_F(Statements, ForWithoutAListLeavesItsPlaceEmpty) {
    EXPECT_EQ(written(tree.forEach("", "v", {}, tree.stmts())), R"({
    Value _it = ;
    auto& _arr = _it.arrayVal;
    for (size_t _k = 0; _k < _arr.size(); ++_k) {
        Value _e = _arr[_k];
        Value v = _e;
    }
}
)");
}

TEST_F(Statements, ListsOfSeveralLinesIndentFromTheBlockOfTheLoop) {
    auto range = tree.range(tree.number(0), tree.number(2));
    EXPECT_EQ(written(tree.forEach("int", "i", std::move(range), tree.stmts()), 1), R"(    {
        Value _it = ([&]() -> Value {
            std::vector<Value> _r;
            long long _si = (long long)(0);
            long long _ei = (long long)(2);
            long long _sti = 1ll;
            if (_sti == 0) _sti = 1ll;
            for (long long _i = _si; (_sti > 0 ? _i <= _ei : _i >= _ei); _i += _sti) {
                Value _cur = _i;
                _r.push_back(_cur);
            }
            return Value(_r);
        })();
        auto& _arr = _it.arrayVal;
        for (size_t _k = 0; _k < _arr.size(); ++_k) {
            Value _e = _arr[_k];
            int i = (int)(double)(_e);
        }
    }
)");
}

TEST_F(Statements, LoopVariableOfAClassHasItsMethodsInTheBody) {
    addClass("Shape", {"area"});
    auto area = tree.expression(tree.callOf(tree.member(tree.name("s"), "area")));
    EXPECT_EQ(written(tree.forEach("Shape", "s", tree.name("xs"), tree.stmts(std::move(area)))),
              R"({
    Value _it = xs;
    auto& _arr = _it.arrayVal;
    for (size_t _k = 0; _k < _arr.size(); ++_k) {
        Value _e = _arr[_k];
        Value s = _e;
Shape__area(s);
    }
}
)");
    EXPECT_TRUE(variables.empty());
}

TEST_F(Statements, ListOfALoopDoesNotSeeTheLoopVariable) {
    addClass("Shape", {"parts"});
    auto parts = tree.callOf(tree.member(tree.name("s"), "parts"));
    const std::string text = written(tree.forEach("Shape", "s", std::move(parts), tree.stmts()));
    EXPECT_NE(text.find("Value _it = /* class call .parts */ Value();\n"), std::string::npos);
}

TEST_F(Statements, OnlyTheLoopVariableIsPutBackAfterALoop) {
    variables = {{"s", "Circle"}, {"kept", "Square"}};
    written(tree.forEach("Shape", "s", tree.name("xs"),
                         tree.stmts(tree.declare("Shape", "inner"), tree.declare("Line", "s"),
                                    tree.declare("Line", "kept"))));
    EXPECT_EQ(variables, (NameMap{{"s", "Circle"}, {"inner", "Shape"}, {"kept", "Line"}}));
}

TEST_F(Statements, NestedLoopsOverOneNamePutBackWhatWasThere) {
    addClass("Shape", {"area"});
    auto inner = tree.forEach("Circle", "s", tree.name("ys"), tree.stmts());
    auto area = tree.expression(tree.callOf(tree.member(tree.name("s"), "area")));
    const std::string text = written(
        tree.forEach("Shape", "s", tree.name("xs"), tree.stmts(std::move(inner), std::move(area))));
    EXPECT_NE(text.find("\nShape__area(s);\n"), std::string::npos);
    EXPECT_TRUE(variables.empty());
}

TEST_F(Statements, LoopsOfOtherTypesBindNothing) {
    variables = {{"v", "Shape"}};
    addClass("Shape", {"area"});
    auto area = tree.expression(tree.callOf(tree.member(tree.name("v"), "area")));
    const std::string text =
        written(tree.forEach("int", "v", tree.name("xs"), tree.stmts(std::move(area))));
    EXPECT_NE(text.find("\nShape__area(v);\n"), std::string::npos);
    EXPECT_EQ(variables, (NameMap{{"v", "Shape"}}));
}

TEST_F(Statements, LoopsOverClassesWithoutATableOfVariables) {
    core.setTables(&classes, nullptr, nullptr);
    EXPECT_EQ(loopOver("Shape"), loopWith("Value v = _e;"));
}

// ---- Leaving a body ----

TEST_F(Statements, ReturnAndThrowStandInLine) {
    EXPECT_EQ(written(tree.returning(), 1), "    return;\n");
    EXPECT_EQ(written(tree.returning(tree.number(5)), 1), "    return 5;\n");
    EXPECT_EQ(written(tree.throwing(tree.text("no")), 2), "        throw std::string(\"no\");\n");
    EXPECT_EQ(written(tree.throwing({})), "throw ;\n");
    EXPECT_EQ(written(tree.returning(classTest()), 1), "    return " + classTestText(4) + ";\n");
    EXPECT_EQ(written(tree.throwing(classTest()), 1), "    throw " + classTestText(4) + ";\n");
}

TEST_F(Statements, TryCatchesTextPointers) {
    EXPECT_EQ(written(tree.tryCatch(tree.stmts(tree.returning(tree.number(1))), "e",
                                    tree.stmts(tree.returning(tree.number(2)))),
                      1),
              R"(    try {
        return 1;
    } catch (const char* e) {
        return 2;
    }
)");
    EXPECT_EQ(written(tree.tryCatch(tree.stmts(), "", tree.stmts())),
              "try {\n} catch (const char* ) {\n}\n");
}

TEST_F(Statements, DeferSchedulesACleanup) {
    EXPECT_EQ(written(tree.defer(tree.call0("close")), 1), R"(    // defer: scheduled cleanup
    auto __dcleanup_0 = [&]() {
close();
    };
    auto __dguard_0 = std::shared_ptr<void>((void*)1, [__dcleanup_0](void*) { __dcleanup_0(); });
    (void)__dguard_0;
)");
}

TEST_F(Statements, DeferOfABlockAndOfNothing) {
    EXPECT_EQ(written(tree.defer(tree.block(tree.stmts(tree.returning())))),
              R"(// defer: scheduled cleanup
auto __dcleanup_0 = [&]() {
    {
        return;
    }
};
auto __dguard_0 = std::shared_ptr<void>((void*)1, [__dcleanup_0](void*) { __dcleanup_0(); });
(void)__dguard_0;
)");
    EXPECT_EQ(written(tree.defer({})), R"(// defer: scheduled cleanup
auto __dcleanup_1 = [&]() {
};
auto __dguard_1 = std::shared_ptr<void>((void*)1, [__dcleanup_1](void*) { __dcleanup_1(); });
(void)__dguard_1;
)");
}

TEST_F(Statements, DeferInsideDeferTakesTheNextNumber) {
    EXPECT_EQ(written(tree.defer(tree.defer(tree.call0("f")))), R"(// defer: scheduled cleanup
auto __dcleanup_0 = [&]() {
    // defer: scheduled cleanup
    auto __dcleanup_1 = [&]() {
f();
    };
    auto __dguard_1 = std::shared_ptr<void>((void*)1, [__dcleanup_1](void*) { __dcleanup_1(); });
    (void)__dguard_1;
};
auto __dguard_0 = std::shared_ptr<void>((void*)1, [__dcleanup_0](void*) { __dcleanup_0(); });
(void)__dguard_0;
)");
}

TEST_F(Statements, DeferAndWhenCountTogether) {
    EXPECT_NE(written(tree.defer(tree.call0("f"))).find("__dcleanup_0 "), std::string::npos);
    EXPECT_EQ(written(tree.when(tree.name("x"))), R"(Value __when_result_1;
{
    Value __when_target_1 = 
x    ;
}
)");
    const std::string text = written(tree.defer(tree.call0("f")));
    EXPECT_NE(text.find("auto __dcleanup_2 = [&]() {\n"), std::string::npos);
    EXPECT_NE(text.find("(void)__dguard_2;\n"), std::string::npos);
}

// ---- Checks and choices ----

TEST_F(Statements, ExpectWithoutAMessage) {
    EXPECT_EQ(written(tree.expect(tree.binary(tree.name("x"), ">", tree.number(0))), 1),
              R"(    if (!(
(x > 0)    )) {
        throw std::runtime_error("expect condition failed");
    }
)");
}

TEST_F(Statements, ExpectWithAMessage) {
    EXPECT_EQ(written(tree.expect(tree.name("ok"), tree.text("bad")), 1), R"(    if (!(
ok    )) {
        std::string __expect_msg = 
std::string("bad")        ;
        throw std::runtime_error(__expect_msg);
    }
)");
}

TEST_F(Statements, ExpectAtTheMarginAndWithoutACondition) {
    EXPECT_EQ(written(tree.expect({})),
              "if (!(\n"
              ")) {\n"
              "    throw std::runtime_error(\"expect condition failed\");\n"
              "}\n");
}

TEST_F(Statements, ExpressionsOfExpectIndentFromTheirLevels) {
    EXPECT_EQ(written(tree.expect(classTest(), classTest()), 1),
              "    if (!(\n" + classTestText(4) +
                  "    )) {\n"
                  "        std::string __expect_msg = \n" +
                  classTestText(8) +
                  "        ;\n"
                  "        throw std::runtime_error(__expect_msg);\n"
                  "    }\n");
}

TEST_F(Statements, WhenChoosesByTheTypeName) {
    EXPECT_EQ(written(tree.when(tree.name("v"), tree.whenCase("int", tree.call("f")),
                                tree.whenCase("Shape", tree.number(2)),
                                tree.whenCase("else", tree.call("g"))),
                      1),
              R"(    Value __when_result_0;
    {
        Value __when_target_0 = 
v        ;
        if ((std::string)__when_target_0.typeName == "int") {
            __when_result_0 = 
f()            ;
        }
        else if ((std::string)__when_target_0.typeName == "Shape") {
            __when_result_0 = 
2            ;
        }
        else {
            __when_result_0 = 
g()            ;
        }
    }
)");
}

TEST_F(Statements, WhenWithOnlyElse) {
    EXPECT_EQ(written(tree.when(tree.name("v"), tree.whenCase("else", tree.number(1)))),
              R"(Value __when_result_0;
{
    Value __when_target_0 = 
v    ;
    else {
        __when_result_0 = 
1        ;
    }
}
)");
}

TEST_F(Statements, CasesBehindElseAreLaterCases) {
    const std::string text = written(
        tree.when(tree.name("v"), tree.whenCase("else", {}), tree.whenCase("int", tree.number(1))));
    EXPECT_NE(text.find("    else {\n        __when_result_0 = \n        ;\n    }\n"
                        "    else if ((std::string)__when_target_0.typeName == \"int\") {\n"),
              std::string::npos);
}

TEST_F(Statements, ExpressionsOfWhenIndentFromTheirLevels) {
    EXPECT_EQ(written(tree.when(classTest(), tree.whenCase("int", classTest()))),
              "Value __when_result_0;\n"
              "{\n"
              "    Value __when_target_0 = \n" +
                  classTestText(4) +
                  "    ;\n"
                  "    if ((std::string)__when_target_0.typeName == \"int\") {\n"
                  "        __when_result_0 = \n" +
                  classTestText(8) +
                  "        ;\n"
                  "    }\n"
                  "}\n");
}

// ---- Long ladders ----

TEST_F(Statements, LongLaddersAreWrittenWithoutRecursion) {
    constexpr int rungs = 100'000;
    constexpr double seconds = 5.0; // a ladder takes milliseconds; sanitizers take their share
    auto ladder = tree.ifOnly(tree.name("c"), tree.stmts());
    for (int rung = 1; rung < rungs; ++rung)
        ladder = tree.ifElse(tree.name("c"), tree.stmts(), tree.stmts(std::move(ladder)));

    std::string text;
    EXPECT_LT(secondsFor([&] { text = written(ladder); }), seconds);
    EXPECT_TRUE(text.starts_with("if (c) {\n}\n"
                                 "else {\n    if (c) {\n    }\n"
                                 "    else {\n        if (c) {\n"));
    EXPECT_TRUE(text.ends_with("\n        }\n    }\n}\n"));
    std::size_t found = 0;
    for (std::size_t at = text.find("if (c) {\n"); at != std::string::npos;
         at = text.find("if (c) {\n", at + 1))
        ++found;
    EXPECT_EQ(found, static_cast<std::size_t>(rungs));
    EXPECT_LT(text.size(), 50'000'000U);
}

// As deep as the parser follows a source; the stack is the default one, sanitizers included.
TEST_F(Statements, DeeplyNestedBodiesFitTheStack) {
    constexpr int deepest = 1000;
    auto nested = tree.call0("f");
    auto branches = tree.call0("f");
    auto cleanups = tree.call0("f");
    for (int depth = 0; depth < deepest; ++depth) {
        nested = tree.forEach("Shape", "s", tree.name("xs"), tree.stmts(std::move(nested)));
        branches =
            tree.ifOnly(tree.name("c"), tree.stmts(tree.block(tree.stmts(std::move(branches)))));
        cleanups = tree.defer(std::move(cleanups));
    }
    EXPECT_TRUE(written(nested).ends_with("\n        }\n    }\n}\n"));
    EXPECT_TRUE(written(branches).ends_with("\n        }\n    }\n}\n"));
    EXPECT_TRUE(written(cleanups).ends_with("\n(void)__dguard_0;\n"));
}

} // namespace
} // namespace Orvane
