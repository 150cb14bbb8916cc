// Names that stand for others.
#include "codegen/name_map.h"

#include <gtest/gtest.h>

#include <optional>
#include <random>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace Orvane {
namespace {

TEST(NameMap, FindsWhatANameStandsFor) {
    NameMap map;
    EXPECT_EQ(map.find("Count"), std::nullopt);
    map.set("Count", "Number");
    map.set("Number", "int");
    EXPECT_EQ(map.find("Count"), "Number");
    EXPECT_EQ(map.find("Number"), "int");
    EXPECT_EQ(map.find("count"), std::nullopt);
    EXPECT_EQ(map.find("Coun"), std::nullopt);
    EXPECT_EQ(map.size(), 2U);
}

TEST(NameMap, TheLaterTargetCounts) {
    NameMap map = {{"n", "int"}, {"n", "double"}};
    EXPECT_EQ(map.find("n"), "double");
    map.set("n", "value");
    EXPECT_EQ(map.find("n"), "value");
    EXPECT_EQ(map.size(), 1U);
}

TEST(NameMap, ANameMayStandForNothingWritten) {
    NameMap map;
    map.set("n", {});
    map.set("", "empty");
    EXPECT_EQ(map.find("n"), "");
    EXPECT_EQ(map.find(""), "empty");
    EXPECT_TRUE(map.contains("n"));
}

TEST(NameMap, AnErasedNameMayReturn) {
    NameMap map = {{"a", "1"}, {"b", "2"}};
    map.erase("a");
    map.erase("a");
    map.erase("never there");
    EXPECT_EQ(map.find("a"), std::nullopt);
    EXPECT_FALSE(map.contains("a"));
    EXPECT_EQ(map.find("b"), "2");
    EXPECT_EQ(map.size(), 1U);
    map.set("a", "3");
    EXPECT_EQ(map.find("a"), "3");
    EXPECT_EQ(map.size(), 2U);
}

TEST(NameMap, NothingIsThereAfterClear) {
    NameMap map = {{"a", "1"}};
    map.clear();
    map.erase("a");
    EXPECT_TRUE(map.empty());
    EXPECT_EQ(map.find("a"), std::nullopt);
    map.set("b", "2");
    EXPECT_EQ(map.find("b"), "2");
}

TEST(NameMap, EqualMapsHaveTheSameNamesAndTargets) {
    NameMap erased = {{"x", "0"}, {"b", "2"}, {"a", "1"}};
    erased.erase("x");
    EXPECT_EQ(erased, (NameMap{{"a", "1"}, {"b", "2"}}));
    EXPECT_NE(erased, (NameMap{{"a", "1"}, {"b", "3"}}));
    EXPECT_NE(erased, (NameMap{{"a", "1"}, {"c", "2"}}));
    EXPECT_NE(erased, (NameMap{{"a", "1"}}));
    EXPECT_NE((NameMap{{"a", "1"}}), erased);
}

// Names of every length up to 40, of which many differ in one place alone, zero bytes included.
std::vector<std::string> similarNames() {
    std::vector<std::string> names = {""};
    for (std::size_t length = 1; length <= 40; ++length) {
        const std::string same(length, 'a');
        names.push_back(same);
        for (std::size_t at = 0; at < length; ++at)
            for (const char other : {'b', '\0'}) {
                names.push_back(same);
                names.back()[at] = other;
            }
    }
    return names;
}

TEST(NameMap, DoesWhatAStandardMapDoes) {
    const std::vector<std::string> names = similarNames();
    std::mt19937 random(20);
    NameMap map;
    std::unordered_map<std::string_view, std::string_view> expected;
    const auto anyName = [&]() -> std::string_view { return names[random() % names.size()]; };
    for (int step = 0; step < 100'000; ++step) {
        const std::string_view name = anyName();
        if (random() % 3 == 0) {
            map.erase(name);
            expected.erase(name);
        } else {
            const std::string_view target = anyName();
            map.set(name, target);
            expected.insert_or_assign(name, target);
        }
        ASSERT_EQ(map.size(), expected.size());
        const std::string_view asked = anyName();
        const auto entry = expected.find(asked);
        ASSERT_EQ(map.find(asked),
                  entry == expected.end() ? std::nullopt : std::optional(entry->second));
    }
    for (const std::string& name : names) {
        const auto entry = expected.find(name);
        EXPECT_EQ(map.find(name),
                  entry == expected.end() ? std::nullopt : std::optional(entry->second));
    }
}

// Among so many names some have the same hash.
TEST(NameMap, TellsAllNamesApart) {
    constexpr std::size_t count = 300'000;
    std::vector<std::string> names;
    NameMap map;
    names.reserve(count);
    for (std::size_t number = 0; number < count; ++number) {
        names.push_back("name" + std::to_string(number));
        map.set(names.back(), names.back());
    }
    EXPECT_EQ(map.size(), count);
    for (const std::string& name : names) ASSERT_EQ(map.find(name), name);
}

TEST(NameBinding, EndsWithoutANameThatWasNotThere) {
    NameMap map = {{"n", "int"}};
    {
        const NameBinding binding(map, "shape", "Circle");
        EXPECT_EQ(map.find("shape"), "Circle");
        map.set("other", "value");
    }
    EXPECT_EQ(map, (NameMap{{"n", "int"}, {"other", "value"}}));
}

TEST(NameBinding, PutsBackWhatTheNameStoodFor) {
    NameMap map = {{"shape", "Square"}};
    {
        const NameBinding binding(map, "shape", "Circle");
        EXPECT_EQ(map.find("shape"), "Circle");
        map.set("shape", "value");
    }
    EXPECT_EQ(map, (NameMap{{"shape", "Square"}}));
}

TEST(NameTable, KnowsWhatWasInserted) {
    NameTable table;
    table.insert("draw");
    table.insert("draw");
    EXPECT_TRUE(table.contains("draw"));
    EXPECT_FALSE(table.contains("drawn"));
    table.clear();
    EXPECT_FALSE(table.contains("draw"));
}

} // namespace
} // namespace Orvane
