#include "core_fixture.h"

namespace Orvane {
namespace {

class CallCollector : public ::testing::Test {
protected:
    static NameSet collected(const uptr<Expr>& expr) {
        NameSet names;
        CodeGeneratorCore::collectCalls(expr.get(), names);
        return names;
    }
    static NameSet collected(const uptr<Stmt>& stmt) {
        NameSet names;
        CodeGeneratorCore::collectCalls(stmt.get(), names);
        return names;
    }
    uptr<Expr> call(std::string_view name) { return tree.call(name); }
    StmtList calls(std::string_view name) { return tree.stmts(tree.call0(name)); }

    TreeBuilder tree;
};

TEST_F(CallCollector, NothingCallsNothing) {
    EXPECT_EQ(collected(uptr<Expr>()), NameSet());
    EXPECT_EQ(collected(uptr<Stmt>()), NameSet());
    EXPECT_EQ(collected(tree.name("f")), NameSet());
    EXPECT_EQ(collected(tree.text("f()")), NameSet());
    EXPECT_EQ(collected(tree.have("C", "f")), NameSet());
    EXPECT_EQ(collected(tree.therebe("function", "f")), NameSet());
}

TEST_F(CallCollector, NamesAreAddedToThoseAlreadyThere) {
    NameSet names = {"old"};
    auto both = tree.call("b", call("a"), call("b"));
    CodeGeneratorCore::collectCalls(both.get(), names);
    EXPECT_EQ(names, (NameSet{"a", "b", "old"}));
}

TEST_F(CallCollector, CallsAndTheirArguments) {
    EXPECT_EQ(collected(tree.call("f", call("g"), tree.call("h", call("i")))),
              (NameSet{"f", "g", "h", "i"}));
    EXPECT_EQ(collected(tree.call("print", tree.call("alert"))), (NameSet{"alert", "print"}));
}

TEST_F(CallCollector, CallsOfCalledValuesHaveNoNameOfTheirOwn) {
    EXPECT_EQ(collected(tree.callOf(tree.member(call("f"), "m"), call("g"))), (NameSet{"f", "g"}));
    EXPECT_EQ(collected(tree.callOf(tree.member(tree.name("a"), "m"))), NameSet());
}

TEST_F(CallCollector, OperandsOfAllExpressions) {
    EXPECT_EQ(collected(tree.binary(call("a"), "+", call("b"))), (NameSet{"a", "b"}));
    EXPECT_EQ(collected(tree.unary("!", call("a"))), (NameSet{"a"}));
    EXPECT_EQ(collected(tree.index(call("a"), call("b"))), (NameSet{"a", "b"}));
    EXPECT_EQ(collected(tree.array(call("a"), call("b"))), (NameSet{"a", "b"}));
    EXPECT_EQ(collected(tree.ternary(call("a"), call("b"), call("c"))), (NameSet{"a", "b", "c"}));
    EXPECT_EQ(collected(tree.is(call("a"), "int")), (NameSet{"a"}));
    EXPECT_EQ(collected(tree.comprehension(call("a"), "v", call("b"), call("c"))),
              (NameSet{"a", "b", "c"}));
    EXPECT_EQ(collected(tree.comprehension(call("a"), "v", call("b"))), (NameSet{"a", "b"}));

    auto object = tree.object("P");
    object->fields.emplace_back("x", call("a"));
    object->fields.emplace_back("y", call("b"));
    EXPECT_EQ(collected(uptr<Expr>(std::move(object))), (NameSet{"a", "b"}));
}

TEST_F(CallCollector, RangesAndTheirFilters) {
    EXPECT_EQ(collected(uptr<Expr>(tree.range(call("a"), call("b"), call("c")))),
              (NameSet{"a", "b", "c"}));
    auto filtered = tree.range(call("a"), call("b"));
    filtered->label = "isOdd";
    EXPECT_EQ(collected(uptr<Expr>(std::move(filtered))), (NameSet{"a", "b", "isOdd"}));
}

TEST_F(CallCollector, MissingOperandsAreSkipped) {
    EXPECT_EQ(collected(tree.binary({}, "+", {})), NameSet());
    EXPECT_EQ(collected(tree.call("f", uptr<Expr>())), (NameSet{"f"}));
    EXPECT_EQ(collected(tree.index({}, call("a"))), (NameSet{"a"}));
    EXPECT_EQ(collected(tree.returning()), NameSet());
    EXPECT_EQ(collected(tree.defer({})), NameSet());
    EXPECT_EQ(collected(tree.block(tree.stmts(uptr<Stmt>(), tree.call0("a")))), (NameSet{"a"}));
}

TEST_F(CallCollector, SimpleStatements) {
    EXPECT_EQ(collected(tree.call0("a")), (NameSet{"a"}));
    EXPECT_EQ(collected(tree.declare("int", "x", call("a"))), (NameSet{"a"}));
    EXPECT_EQ(collected(tree.declare("int", "x")), NameSet());
    EXPECT_EQ(collected(tree.returning(call("a"))), (NameSet{"a"}));
    EXPECT_EQ(collected(tree.throwing(call("a"))), (NameSet{"a"}));
    EXPECT_EQ(collected(tree.expect(call("a"), call("b"))), (NameSet{"a", "b"}));
    EXPECT_EQ(collected(tree.expect(call("a"))), (NameSet{"a"}));
}

TEST_F(CallCollector, StatementsWithBodies) {
    EXPECT_EQ(collected(tree.ifElse(call("a"), calls("b"), calls("c"))), (NameSet{"a", "b", "c"}));
    EXPECT_EQ(
        collected(tree.ifElse(call("a"), calls("b"), tree.stmts(tree.call0("c"), tree.call0("d")))),
        (NameSet{"a", "b", "c", "d"}));
    EXPECT_EQ(collected(tree.whileLoop(call("a"), calls("b"))), (NameSet{"a", "b"}));
    EXPECT_EQ(collected(tree.forEach("int", "i", call("a"), calls("b"))), (NameSet{"a", "b"}));
    EXPECT_EQ(collected(tree.tryCatch(calls("a"), "e", calls("b"))), (NameSet{"a", "b"}));
    EXPECT_EQ(collected(tree.block(calls("a"))), (NameSet{"a"}));
    EXPECT_EQ(collected(tree.defer(tree.block(calls("a")))), (NameSet{"a"}));
    EXPECT_EQ(collected(tree.when(call("a"), tree.whenCase("int", call("b")),
                                  tree.whenCase("else", call("c")))),
              (NameSet{"a", "b", "c"}));
}

TEST_F(CallCollector, ListsOfStatements) {
    NameSet names;
    CodeGeneratorCore::collectCalls(tree.stmts(tree.call0("b"), tree.call0("a")), names);
    EXPECT_EQ(names, (NameSet{"a", "b"}));
}

// ---- Long chains ----

constexpr int chainLength = 100'000;

TEST_F(CallCollector, LongChainsAreWalkedWithoutRecursion) {
    auto sum = call("first");
    auto members = call("first");
    auto indices = call("first");
    auto calls = call("first");
    for (int link = 0; link < chainLength; ++link) {
        sum = tree.binary(std::move(sum), "+", tree.number(1));
        members = tree.member(std::move(members), "m");
        indices = tree.index(std::move(indices), tree.number(1));
        calls = tree.callOf(std::move(calls), tree.number(1));
    }
    EXPECT_EQ(collected(tree.binary(std::move(sum), "+", call("last"))),
              (NameSet{"first", "last"}));
    EXPECT_EQ(collected(members), (NameSet{"first"}));
    EXPECT_EQ(collected(tree.index(std::move(indices), call("last"))), (NameSet{"first", "last"}));
    EXPECT_EQ(collected(tree.callOf(std::move(calls), call("last"))), (NameSet{"first", "last"}));
}

TEST_F(CallCollector, LongLaddersAreWalkedWithoutRecursion) {
    auto ladder = tree.ifOnly(call("last"), tree.stmts());
    for (int rung = 0; rung < chainLength; ++rung)
        ladder = tree.ifElse(call("c"), calls("b"), tree.stmts(std::move(ladder)));
    EXPECT_EQ(collected(ladder), (NameSet{"b", "c", "last"}));
}

} // namespace
} // namespace Orvane
