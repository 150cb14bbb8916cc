#include "libraries/replacement_table.h"

#include <gtest/gtest.h>

using namespace Orvane;

namespace {

std::string printed(const ReplacementTable& table) {
    RecordingConsole console;
    table.print(console);
    return console.text();
}

TEST(ReplacementTable, EmptyTablePrintsOnlyItsHeading) {
    const ReplacementTable table;
    EXPECT_EQ(table.size(), 0u);
    EXPECT_EQ(printed(table), "ReplacementTable (0 functions):\n");
}

TEST(ReplacementTable, UnknownNameHasNoEntry) {
    ReplacementTable table;
    table.add({.name = "clamp", .returnType = "int"});
    EXPECT_EQ(table.get("clam"), nullptr);
    EXPECT_EQ(table.get("Clamp"), nullptr);
    EXPECT_TRUE(table.getAll("Clamp").empty());
    EXPECT_FALSE(table.exists("Clamp"));
    EXPECT_TRUE(table.exists("clamp"));
}

TEST(ReplacementTable, OverloadsAreKeptInLoadOrderAndTheFirstOneWins) {
    ReplacementTable table;
    table.add({.name = "clamp", .returnType = "int", .body = "first"});
    table.add({.name = "clamp", .returnType = "value", .body = "second"});
    EXPECT_EQ(table.size(), 2u);
    const std::vector<const FunctionEntry*> all = table.getAll("clamp");
    ASSERT_EQ(all.size(), 2u);
    EXPECT_EQ(all[0]->body, "first");
    EXPECT_EQ(all[1]->body, "second");
    EXPECT_EQ(table.get("clamp"), all[0]);
}

TEST(ReplacementTable, TheSameFunctionAddedTwiceIsKeptTwice) {
    ReplacementTable table;
    const FunctionEntry entry{.name = "f", .returnType = "int"};
    table.add(entry);
    table.add(entry);
    EXPECT_EQ(table.size(), 2u);
    EXPECT_EQ(printed(table), "ReplacementTable (2 functions):\n  f() -> int\n  f() -> int\n");
}

TEST(ReplacementTable, AnEntryIsACopy) {
    ReplacementTable table;
    FunctionEntry entry{.name = "f", .returnType = "int", .paramNames = {"a"}};
    entry.flag = true;
    entry.extraList = {"x"};
    table.add(entry);
    entry.paramNames.clear();
    entry.name = "g";
    const FunctionEntry* kept = table.get("f");
    ASSERT_NE(kept, nullptr);
    EXPECT_EQ(kept->paramNames, std::vector<std::string>{"a"});
    EXPECT_TRUE(kept->flag);
    EXPECT_EQ(kept->extraList, std::vector<std::string>{"x"});
}

TEST(ReplacementTable, FunctionWithoutParametersPrintsEmptyParentheses) {
    ReplacementTable table;
    table.add({.name = "now", .returnType = "value"});
    EXPECT_EQ(printed(table), "ReplacementTable (1 functions):\n  now() -> value\n");
}

TEST(ReplacementTable, PrintsNamesInByteOrderWithTheirParameterNames) {
    ReplacementTable table;
    table.add({.name = "b", .returnType = "int", .paramNames = {"x", "y"}});
    table.add({.name = "a", .returnType = "bool", .paramNames = {"s"}});
    table.add({.name = "Z", .returnType = "string"});
    table.add({.name = "_", .returnType = "value"});
    EXPECT_EQ(printed(table), "ReplacementTable (4 functions):\n"
                              "  Z() -> string\n"
                              "  _() -> value\n"
                              "  a(s) -> bool\n"
                              "  b(x, y) -> int\n");
}

TEST(ReplacementTable, ANameMayHoldPercentSigns) {
    ReplacementTable table;
    table.add({.name = "f", .returnType = "int", .paramNames = {"%s%n"}});
    EXPECT_EQ(printed(table), "ReplacementTable (1 functions):\n  f(%s%n) -> int\n");
}

TEST(ReplacementTable, EntriesStayWhereTheyAreWhenOtherNamesComeIn) {
    ReplacementTable table;
    table.add({.name = "m", .returnType = "int"});
    const FunctionEntry* entry = table.get("m");
    for (int number = 0; number < 1000; ++number)
        table.add({.name = "n" + std::to_string(number), .returnType = "int"});
    EXPECT_EQ(table.get("m"), entry);
    EXPECT_EQ(table.entries().size(), 1001u);
}

} // namespace
