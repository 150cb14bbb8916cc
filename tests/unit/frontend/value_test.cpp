#include "frontend/value.h"

#include <gtest/gtest.h>

#include <stdexcept>

namespace Orvane {
namespace {

TEST(Value, StartsAsNullWithEverythingEmpty) {
    const Value value;
    EXPECT_EQ(value.type(), "null");
    EXPECT_TRUE(value.isNull());
    EXPECT_EQ(value.asInt(), 0);
    EXPECT_EQ(value.asFloat(), 0.0);
    EXPECT_EQ(value.asString(), "");
    EXPECT_FALSE(value.asBool());
    EXPECT_TRUE(value.asArray().empty());
    EXPECT_EQ(value.asHandle(), nullptr);
    EXPECT_FALSE(value.has("x"));
}

TEST(Value, ConstructorsSetTypeAndContent) {
    EXPECT_TRUE(Value(7).isInt());
    EXPECT_EQ(Value(7).asInt(), 7);
    EXPECT_TRUE(Value(7LL).isInt());
    EXPECT_EQ(Value(7LL).asInt(), 7);
    EXPECT_TRUE(Value(2.5).isFloat());
    EXPECT_EQ(Value(2.5).asFloat(), 2.5);
    EXPECT_TRUE(Value(true).isBool());
    EXPECT_TRUE(Value(true).asBool());
    EXPECT_TRUE(Value("a").isString());
    EXPECT_EQ(Value("a").asString(), "a");
    EXPECT_TRUE(Value(std::string("b")).isString());
    EXPECT_EQ(Value(std::string("b")).asString(), "b");
    EXPECT_TRUE(Value("color", "#FFF").isColor());
    EXPECT_EQ(Value("color", "#FFF").asColor(), "#FFF");
    EXPECT_TRUE(Value(std::vector<Value>{Value(1)}).isArray());
}

TEST(Value, LongIntegersAreCutTo32Bits) { EXPECT_EQ(Value((1LL << 32) + 5).asInt(), 5); }

TEST(Value, FactoriesSetTypeAndContent) {
    int target = 0;
    EXPECT_EQ(Value::makeObject("Point").type(), "Point");
    EXPECT_FALSE(Value::makeObject("Point").has("x"));
    EXPECT_TRUE(Value::makeHandle(&target).isHandle());
    EXPECT_EQ(Value::makeHandle(&target).asHandle(), &target);
    EXPECT_TRUE(Value::makeFunction("go").isFunction());
    EXPECT_EQ(Value::makeFunction("go").asString(), "go");
    EXPECT_EQ(Value::makeArray("container", {Value(1), Value(2)}).type(), "container");
    EXPECT_EQ(Value::makeArray("container", {Value(1), Value(2)}).asArray().size(), 2U);
}

TEST(Value, AccessorsOfAnotherKindGiveEmptyContent) {
    EXPECT_EQ(Value(5).asString(), "");
    EXPECT_EQ(Value("5").asInt(), 0);
    EXPECT_EQ(Value(true).asFloat(), 0.0);
    EXPECT_TRUE(Value("a").asArray().empty());
}

TEST(Value, TypeTestsAreExactAndCaseSensitive) {
    EXPECT_TRUE(Value(1).is("int"));
    EXPECT_FALSE(Value(1).is("Int"));
    EXPECT_TRUE(Value::makeObject("map").isMap());
    EXPECT_FALSE(Value::makeObject("Map").isMap());
}

TEST(Value, ContainersAreArraysAndContainers) {
    EXPECT_TRUE(Value::makeArray("array", {}).isContainer());
    EXPECT_TRUE(Value::makeArray("container", {}).isContainer());
    EXPECT_TRUE(Value::makeArray("array", {}).isArray());
    EXPECT_FALSE(Value::makeArray("container", {}).isArray());
    EXPECT_FALSE(Value(1).isContainer());
}

TEST(Value, ObjectsAreAllButTheTwelveBuiltInKinds) {
    for (const char* name : {"null", "int", "double", "string", "bool", "array", "container", "map",
                             "handle", "color", "font", "function"})
        EXPECT_FALSE(Value::makeObject(name).isObject()) << name;
    EXPECT_TRUE(Value::makeObject("button").isObject());
    EXPECT_TRUE(Value::makeObject("Point").isObject());
}

TEST(Value, CopiesAreDeep) {
    Value original = Value::makeObject("Point");
    original["x"] = Value(1);
    Value copy = original;
    copy["x"] = Value(2);
    EXPECT_EQ(original["x"].asInt(), 1);
    EXPECT_EQ(copy["x"].asInt(), 2);

    Value assigned;
    assigned = original;
    assigned["x"] = Value(3);
    EXPECT_EQ(original["x"].asInt(), 1);
    EXPECT_EQ(assigned.type(), "Point");
}

TEST(Value, MovesKeepTheContent) {
    Value original = Value::makeArray("array", {Value("a"), Value("b")});
    const Value moved = std::move(original);
    EXPECT_EQ(moved.toString(), "[a, b]");
}

TEST(Value, CanBeAssignedItsOwnElementAndItself) {
    Value list({Value(1), Value("inner")});
    list = list[1];
    EXPECT_EQ(list.toString(), "inner");
    const Value& same = list;
    list = same;
    EXPECT_EQ(list.toString(), "inner");
}

TEST(Value, FieldsAreInsertedWhenWritten) {
    Value object = Value::makeObject("Point");
    EXPECT_TRUE(object["x"].isNull());
    EXPECT_TRUE(object.has("x"));
    EXPECT_FALSE(object.has("y"));
}

TEST(Value, MissingFieldOfAConstantThrows) {
    const Value object = Value::makeObject("Point");
    try {
        (void)object["height"];
        FAIL() << "no exception";
    } catch (const std::runtime_error& error) {
        EXPECT_STREQ(error.what(), "key not found: height");
    }
}

TEST(Value, ElementsAreReadAndWrittenByPosition) {
    Value list({Value(1), Value(2)});
    list[1] = Value("two");
    const Value& constant = list;
    EXPECT_EQ(constant[0].asInt(), 1);
    EXPECT_EQ(constant[1].asString(), "two");
}

TEST(ValueFont, WithoutCommaTheWholeTextIsTheName) {
    const Value font = Value::makeFont("Segoe UI");
    EXPECT_TRUE(font.isFont());
    EXPECT_EQ(font["name"].asString(), "Segoe UI");
    EXPECT_EQ(font["size"].asInt(), 14);
    EXPECT_EQ(Value::makeFont(" Arial ")["name"].asString(), " Arial ");
}

TEST(ValueFont, WithCommaNameAndSizeAreTrimmed) {
    const Value font = Value::makeFont(" Arial , 12 ");
    EXPECT_EQ(font["name"].asString(), "Arial");
    EXPECT_EQ(font["size"].asInt(), 12);
    EXPECT_EQ(Value::makeFont("\tArial\t,\t9\t")["name"].asString(), "Arial");
    EXPECT_EQ(Value::makeFont(" ,3")["name"].asString(), "");
}

TEST(ValueFont, SizeThatIsNoNumberThrows) {
    EXPECT_THROW(Value::makeFont("Arial, big"), std::invalid_argument);
    EXPECT_THROW(Value::makeFont("Arial,"), std::invalid_argument);
    EXPECT_THROW(Value::makeFont("Arial, 99999999999"), std::out_of_range);
}

TEST(ValueFont, OnlyTheFirstCommaSeparates) {
    EXPECT_THROW(Value::makeFont("A, B, 12"), std::invalid_argument);
}

TEST(ValueText, SimpleKinds) {
    EXPECT_EQ(Value().toString(), "null");
    EXPECT_EQ(Value(true).toString(), "true");
    EXPECT_EQ(Value(false).toString(), "false");
    EXPECT_EQ(Value(-3).toString(), "-3");
    EXPECT_EQ(Value(2.5).toString(), "2.500000");
    EXPECT_EQ(Value(-1.0 / 3).toString(), "-0.333333");
    EXPECT_EQ(Value("a \"b\"").toString(), "a \"b\"");
    EXPECT_EQ(Value("color", "#FFF").toString(), "#FFF");
    EXPECT_EQ(Value::makeFunction("go").toString(), "[function:go]");
}

TEST(ValueText, WidestDoubleIsWrittenInFull) {
    const std::string text = Value(-1.7976931348623157e308).toString();
    EXPECT_EQ(text.size(), 1U + 309U + 7U);
    EXPECT_EQ(text.substr(0, 6), "-17976");
}

TEST(ValueText, ListsJoinTheirElements) {
    EXPECT_EQ(Value(std::vector<Value>{}).toString(), "[]");
    EXPECT_EQ(Value::makeArray("container", {Value(1), Value("a"), Value()}).toString(),
              "[1, a, null]");
    const Value inner(std::vector<Value>{Value(1)});
    EXPECT_EQ(Value({inner, Value(2)}).toString(), "[[1], 2]");
    EXPECT_EQ(Value::makeObject("array").toString(), "[]");
}

TEST(ValueText, ObjectsListTheirFieldsInKeyOrder) {
    EXPECT_EQ(Value::makeObject("Point").toString(), "{}");
    Value point = Value::makeObject("Point");
    point["y"] = Value(2);
    point["x"] = Value(1);
    EXPECT_EQ(point.toString(), "{x: 1, y: 2}");
}

TEST(ValueText, FontsAndMapsGiveOnlyTheirKind) {
    EXPECT_EQ(Value::makeFont("Arial, 12").toString(), "[font]");
    EXPECT_EQ(Value::makeObject("map").toString(), "[map]");
}

TEST(ValueText, HandlesAreHexadecimal) {
    const std::string text = Value::makeHandle(reinterpret_cast<void*>(0xBEEF)).toString();
    EXPECT_EQ(text.substr(0, 10), "[handle:0x");
    EXPECT_EQ(text.back(), ']');
    EXPECT_EQ(std::stoull(text.substr(10), nullptr, 16), 0xBEEFU);
}

TEST(ValueView, HasTheTextWithoutACopy) {
    const std::string source = "a text that is kept somewhere else";
    const Value text = Value::viewText(source);
    EXPECT_TRUE(text.isString());
    EXPECT_EQ(text.asString(), source);
    EXPECT_EQ(text.textView().data(), source.data());
    EXPECT_FALSE(text.ownsMemory());
    const Value color = Value::viewColor("#FFF");
    EXPECT_TRUE(color.isColor());
    EXPECT_EQ(color.toString(), "#FFF");
}

TEST(ValueView, CopiesOwnTheirText) {
    std::string source = "first";
    const Value view = Value::viewText(source);
    const Value copy = view;
    Value assigned;
    assigned = view;
    source = "other";
    EXPECT_EQ(copy.asString(), "first");
    EXPECT_EQ(assigned.asString(), "first");
    EXPECT_TRUE(copy.ownsMemory());
}

TEST(ValueView, MovingKeepsTheViewAndLeavesNull) {
    const std::string source = "kept";
    Value view = Value::viewText(source);
    const Value moved = std::move(view);
    EXPECT_EQ(moved.textView().data(), source.data());
    EXPECT_TRUE(view.isNull());
    EXPECT_EQ(view.asString(), "");
}

TEST(Value, MovedFromObjectsAreNull) {
    Value object = Value::makeObject("Point");
    const Value moved = std::move(object);
    EXPECT_EQ(moved.type(), "Point");
    EXPECT_EQ(object.type(), "null");
    EXPECT_FALSE(object.isObject());
}

TEST(Value, SingleLiteralsOwnNoMemory) {
    EXPECT_FALSE(Value().ownsMemory());
    EXPECT_FALSE(Value(5).ownsMemory());
    EXPECT_FALSE(Value(2.5).ownsMemory());
    EXPECT_FALSE(Value(true).ownsMemory());
    EXPECT_FALSE(Value("").ownsMemory());
    EXPECT_TRUE(Value("text").ownsMemory());
}

TEST(Value, AnObjectMayHaveNoName) {
    const Value object = Value::makeObject("");
    EXPECT_TRUE(object.isObject());
    EXPECT_EQ(object.type(), "");
}

TEST(Value, BuiltInNamesMakeNoObject) {
    EXPECT_TRUE(Value("int", "5").isInt());
    EXPECT_EQ(Value("int", "5").asInt(), 0);
    EXPECT_EQ(Value("int", "5").asString(), "5");
    EXPECT_TRUE(Value::makeArray("Point", {Value(1)}).isObject());
}

} // namespace
} // namespace Orvane
