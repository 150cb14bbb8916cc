#include "import.hpp"

#include "checks.h"
#include "parts.h"

#include <sstream>
#include <type_traits>

namespace {

using List = std::vector<Value>;
using Map = std::map<std::string, Value>;

void testConstructors() {
    CHECK_EQUAL(Value().typeName, "null");
    CHECK(Value(7).typeName == "int" && Value(7).intVal == 7);
    CHECK(Value(5000000000LL).typeName == "int" && Value(5000000000LL).intVal == 5000000000LL);
    CHECK(Value(2.5).typeName == "double" && Value(2.5).floatVal == 2.5);
    CHECK(Value(std::string("ab")).typeName == "string");
    CHECK_EQUAL(Value(std::string("ab")).stringVal, "ab");
    CHECK(Value("ab").typeName == "string" && Value("ab").stringVal == "ab");
    CHECK(Value(true).typeName == "bool" && Value(true).boolVal);
    CHECK(Value(List{1, 2}).typeName == "array" && Value(List{1, 2}).arrayVal.size() == 2);
    CHECK(Value(Map{{"k", 1}}).typeName == "map" && Value(Map{{"k", 1}}).mapVal.size() == 1);
    CHECK(Value("color", "#102030").typeName == "color");
    CHECK_EQUAL(Value("color", "#102030").stringVal, "#102030");

    const std::string text = "kept";
    const List elements{1};
    const Map entries{{"k", 1}};
    CHECK(Value(text).stringVal == "kept" && Value(elements).arrayVal.size() == 1);
    CHECK(Value(entries).mapVal.size() == 1 && text == "kept" && elements.size() == 1);
}

void testEmptyPayloads() {
    const Value v;
    CHECK(v.intVal == 0 && v.floatVal == 0.0 && v.stringVal.empty() && !v.boolVal);
    CHECK(v.arrayVal.empty() && v.mapVal.empty() && v.handleVal == nullptr);
    CHECK(Value("x").intVal == 0 && Value(3).stringVal.empty() && Value(3).floatVal == 0.0);
}

void testNullPointers() {
    Value declared = nullptr;
    CHECK_EQUAL(declared.typeName, "null");
    CHECK_EQUAL(Value(nullptr).toString(), "null");
    declared = 5;
    declared = nullptr;
    CHECK(declared.isNull() && declared.intVal == 0);
    const List holding{nullptr, 1};
    CHECK(holding[0].isNull() && holding[1].isInt());
}

// A class may be named almost like a built-in type.
void testNamesOneLetterOff() {
    for (const char* builtIn : {"null", "int", "double", "string", "bool", "array", "container",
                                "map", "handle", "color", "function"}) {
        const std::string name = builtIn;
        CHECK(!Value::makeObject(name).isObject());
        for (size_t i = 0; i < name.size(); ++i) {
            std::string other = name;
            other[i] = '_';
            CHECK(Value::makeObject(other).isObject());
        }
        CHECK(Value::makeObject(name + "s").isObject());
        CHECK(Value::makeObject(name.substr(0, name.size() - 1)).isObject());
    }
}

void testFactories() {
    int target = 0;
    CHECK(Value::makeObject("Point").typeName == "Point" &&
          Value::makeObject("Point").mapVal.empty());
    CHECK(Value::makeHandle(&target).isHandle() && Value::makeHandle(&target).handleVal == &target);
    CHECK(Value::makeFunction("go").isFunction() && Value::makeFunction("go").stringVal == "go");
    CHECK(Value::makeArray("container", List{1, 2}).is("container"));
    CHECK_EQUAL(Value::makeArray("container", List{1, 2}).arrayVal.size(), 2u);
}

// Each predicate is true for its own kind alone; an array is a container too.
void testPredicates() {
    const List samples{Value(),
                       1,
                       2.5,
                       "s",
                       true,
                       List(),
                       Value::makeArray("container", {}),
                       Map(),
                       Value::makeHandle(nullptr),
                       Value("color", "red"),
                       Value::makeFunction("f"),
                       Value::makeObject("Point")};
    using Predicate = bool (Value::*)() const;
    const Predicate predicates[] = {&Value::isNull,      &Value::isInt,      &Value::isFloat,
                                    &Value::isString,    &Value::isBool,     &Value::isArray,
                                    &Value::isContainer, &Value::isMap,      &Value::isHandle,
                                    &Value::isColor,     &Value::isFunction, &Value::isObject};
    for (size_t sample = 0; sample < samples.size(); ++sample) {
        for (size_t predicate = 0; predicate < samples.size(); ++predicate) {
            const bool isArrayAsContainer = sample == 5 && predicate == 6;
            const bool expected = sample == predicate || isArrayAsContainer;
            countCheck((samples[sample].*predicates[predicate])() == expected,
                       samples[sample].typeName + " by predicate " + std::to_string(predicate),
                       __FILE__, __LINE__);
        }
    }
    CHECK(Value(1).is("int") && !Value(1).is("Int") && Value::makeObject("Point").is("Point"));
}

void testAccessorsDoNotConvert() {
    CHECK(Value(7).asInt() == 7 && Value(7).asFloat() == 0.0 && Value(7).asString().empty());
    CHECK(Value(2.5).asFloat() == 2.5 && Value(2.5).asInt() == 0);
    CHECK(Value("ab").asString() == "ab" && !Value("ab").asBool());
    CHECK(Value(true).asBool() && Value(true).asInt() == 0);
    CHECK_EQUAL(Value(4294967303LL).asInt(), 7);
    CHECK_EQUAL(Value(List{1, 2, 3}).asArray().size(), 3u);
    int target = 0;
    CHECK(Value::makeHandle(&target).asHandle() == &target);
}

void testExplicitConversions() {
    CHECK_EQUAL((int)Value(7), 7);
    CHECK_EQUAL((int)Value(2.5), 0);
    CHECK_EQUAL((double)Value(2.5), 2.5);
    CHECK_EQUAL((double)Value(7), 0.0);
    CHECK_EQUAL((int)(double)Value(2.5), 2);
    CHECK((bool)Value(true) && !(bool)Value(1) && !(bool)Value("x"));
    CHECK_EQUAL((std::string)Value("ab"), "ab");
    CHECK_EQUAL(static_cast<std::string>(Value(1)), "");
    CHECK_EQUAL((long long)Value(5000000000LL), 5000000000LL);
    CHECK_EQUAL((long long)Value(6.9), 6LL);
    CHECK_EQUAL((long long)Value("9"), 0LL);
    CHECK_EQUAL((Value)(3), Value(3));
}

void testConversionsAreExplicitOnly() {
    CHECK((!std::is_convertible<Value, int>::value && !std::is_convertible<Value, bool>::value));
    CHECK((!std::is_convertible<Value, double>::value));
    CHECK((!std::is_convertible<Value, std::string>::value));
    CHECK((!std::is_convertible<Value, long long>::value));
    CHECK((std::is_convertible<int, Value>::value && std::is_convertible<List, Value>::value));
}

void testConditions() {
    const Value yes = true, no = false;
    int taken = 0;
    if (yes) ++taken;
    if (no) taken += 10;
    if (!no) ++taken;
    if (!(no)) ++taken;
    while (yes && taken < 4) ++taken;
    CHECK_EQUAL(taken, 4);
    CHECK_EQUAL(((bool)(yes) ? (Value)(1) : (Value)("b")).toString(), "1");
}

void testText() {
    CHECK_EQUAL(Value().toString(), "null");
    CHECK_EQUAL(Value(-7).toString(), "-7");
    CHECK_EQUAL(Value(2.5).toString(), "2.500000");
    CHECK_EQUAL(Value(0.1234567).toString(), "0.123457");
    CHECK_EQUAL(Value("ab").toString(), "ab");
    CHECK_EQUAL(Value(true).toString(), "true");
    CHECK_EQUAL(Value(false).toString(), "false");
    CHECK_EQUAL(Value(List()).toString(), "[]");
    CHECK_EQUAL(Value(List{1, "x", List{true, nullptr}}).toString(), "[1, x, [true, null]]");
    CHECK_EQUAL(Value::makeArray("container", List{1, 2}).toString(), "[1, 2]");
    CHECK_EQUAL(Value(Map()).toString(), "{}");
    CHECK_EQUAL(Value(Map{{"b", 2}, {"a", List{1}}}).toString(), "{a: [1], b: 2}");
    CHECK_EQUAL(Value::makeHandle(nullptr).toString(), "[handle]");
    CHECK_EQUAL(Value("color", "#FF8000").toString(), "#FF8000");
    CHECK_EQUAL(Value::makeFunction("go").toString(), "[function:go]");
    Value point = Value::makeObject("Point");
    CHECK_EQUAL(point.toString(), "{}");
    point["y"] = 2;
    point["x"] = 1.5;
    CHECK_EQUAL(point.toString(), "{x: 1.500000, y: 2}");
}

void testStream() {
    std::ostringstream out;
    out << Value(List{1, "a"}) << Value(2.5);
    CHECK_EQUAL(out.str(), "[1, a]2.500000");
}

void testEntries() {
    Value v = Value::makeObject("Point");
    CHECK(v["x"].isNull() && v.has("x"));
    v["x"] = 5;
    v[std::string("y")] = "why";
    CHECK(v["x"] == 5 && v[std::string("x")] == 5 && v["y"] == "why" && !v.has("z"));
    // A name from a buffer ends at its zero byte; no name at all is the empty one.
    char buffer[8] = "x";
    const char* nothing = nullptr;
    CHECK(v[buffer] == 5 && &v[nothing] == &v[""] && v.has(""));
    v.mapVal.erase("");
    // A new entry stays null, also when it is given entries of its own.
    v["inner"]["deep"] = true;
    CHECK(v["inner"]["deep"] == true && v["inner"].isNull());
    CHECK_EQUAL(v[Value("x")].intVal, 5);
    const Value& fixed = v;
    CHECK(fixed["x"] == 5 && fixed[std::string("y")] == "why" && fixed[Value("x")] == 5);
    CHECK_THROWS(fixed["missing"], std::out_of_range);
    CHECK_THROWS(fixed[Value("missing")], std::out_of_range);
    CHECK(!fixed.has("missing"));
}

// Few entries and many, names of one length and names that begin like another, in every spelling.
void testEntriesOfManySizes() {
    const char* names[] = {"ab",
                           "aa",
                           "abc",
                           "b",
                           "",
                           "ba",
                           "a long name for a field",
                           "abd",
                           "a",
                           "a long name for a fields",
                           "a long name for a fiend",
                           "eight or",
                           "eight or more",
                           "abcd",
                           "bb",
                           "bc"};
    Value object = Value::makeObject("Many");
    int count = 0;
    for (const char* name : names) {
        CHECK(!object.has(name) && object[name].isNull() && object.has(name));
        object[name] = ++count;
        CHECK(object.mapVal.size() == static_cast<size_t>(count));
        int position = 0;
        for (const char* earlier : names) {
            if (position == count) break;
            ++position;
            CHECK(object[earlier] == position && object[std::string(earlier)] == position &&
                  object[Value(earlier)] == position);
        }
    }
    // A zero byte belongs to a name of C++, but ends a literal.
    object[std::string("b\0c", 3)] = "with a zero";
    CHECK(object["b\0c"] == 4 && object[std::string("b\0c", 3)] == "with a zero");
    object[std::string("b\0", 2)] = "with nothing else";
    CHECK(object["b"] == 4 && object[std::string("b\0", 2)] == "with nothing else");
}

// Names of one length that differ in a single letter, wherever it is.
void testEntriesOneLetterOff() {
    for (size_t length = 1; length <= 12; ++length) {
        for (size_t changed = 0; changed < length; ++changed) {
            const std::string name("abcdefghijkl", length);
            std::string other = name;
            other[changed] = 'X';
            Value object = Value::makeObject("Pair");
            object[name.c_str()] = 1;
            object[other.c_str()] = 2;
            CHECK(object.mapVal.size() == 2 && object[name.c_str()] == 1 &&
                  object[other.c_str()] == 2);
        }
    }
}

void testPositions() {
    Value list = List{10, 20, 30};
    const long long wide = 2;
    const unsigned narrow = 1;
    CHECK(list[0] == 10 && list[1] == 20 && list[size_t(2)] == 30 && list[wide] == 30);
    CHECK(list[narrow] == 20 && list[1L] == 20 && list[1UL] == 20 && list[2.0] == 30);
    CHECK(list[Value(1)] == 20 && list[Value(1.9)] == 20);
    list[1] = "two";
    list[Value(0)] = "one";
    CHECK_EQUAL(list.toString(), "[one, two, 30]");
    const Value& fixed = list;
    CHECK(fixed[1] == "two" && fixed[size_t(2)] == 30 && fixed[wide] == 30 &&
          fixed[Value(2)] == 30);
    CHECK_THROWS(list[Value(3)], std::out_of_range);
    CHECK_THROWS(list[Value(-1)], std::out_of_range);
    CHECK_EQUAL((std::vector<Value>{4, 5})[1].intVal, 5);
}

void testReferencesWithoutCopies() {
    Value list = List{"a", "b"};
    CHECK(&list[0] == &list.arrayVal[0] && &list[Value(1)] == &list.arrayVal[1]);
    Value map = Map{{"k", 1}};
    CHECK(&map["k"] == &map.mapVal["k"]);
    CHECK(std::is_nothrow_move_constructible<Value>::value);
    CHECK(std::is_nothrow_move_assignable<Value>::value);
}

void testCalls() {
    Value object = Value::makeObject("Point");
    CHECK(object["go"]().isNull() && object["go"](1, "two", List{3}, nullptr).isNull());
}

} // namespace

void testBasics() {
    testConstructors();
    testEmptyPayloads();
    testNullPointers();
    testNamesOneLetterOff();
    testFactories();
    testPredicates();
    testAccessorsDoNotConvert();
    testExplicitConversions();
    testConversionsAreExplicitOnly();
    testConditions();
    testText();
    testStream();
    testEntries();
    testEntriesOfManySizes();
    testEntriesOneLetterOff();
    testPositions();
    testReferencesWithoutCopies();
    testCalls();
}
