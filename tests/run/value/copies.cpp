// Copies, moves and assignments carry all members of a value, whatever its type name says.
#include "import.hpp"

#include "checks.h"
#include "parts.h"

namespace {

int window = 0;

// A value with something in every member.
Value full(const std::string& name) {
    Value made;
    made.typeName = name;
    made.intVal = 4000000000;
    made.floatVal = 2.5;
    made.stringVal = "a text that is too long for the string itself";
    made.boolVal = true;
    made.arrayVal = {1, "two"};
    made.mapVal = {{"x", 3}};
    made.handleVal = &window;
    return made;
}

bool isEmpty(const Value& value) {
    return value.intVal == 0 && value.floatVal == 0.0 && value.stringVal.empty() &&
           !value.boolVal && value.arrayVal.empty() && value.mapVal.empty() &&
           value.handleVal == nullptr;
}

bool isFull(const Value& value, const std::string& name) {
    return value.typeName == name && value.intVal == 4000000000 && value.floatVal == 2.5 &&
           value.stringVal == "a text that is too long for the string itself" && value.boolVal &&
           value.arrayVal.size() == 2 && value.arrayVal[1].stringVal == "two" &&
           value.mapVal.at("x").intVal == 3 && value.handleVal == &window;
}

void testAllMembersGoAlong(const std::string& name) {
    const Value original = full(name);
    Value copy(original);
    CHECK(isFull(copy, name));
    Value moved(std::move(copy));
    CHECK(isFull(moved, name));
    for (const Value& former : {Value(), Value(1), Value(0.5), Value("x"), full("int")}) {
        Value assigned = former;
        assigned = original;
        CHECK(isFull(assigned, name));
        Value taken = former;
        taken = std::move(assigned);
        CHECK(isFull(taken, name));
    }
    CHECK(isFull(original, name));
}

void testNothingStaysBehind(const std::string& name) {
    for (const char* former : {"null", "int", "double", "string", "a long name of a class"}) {
        Value empty;
        empty.typeName = name;
        Value copied = full(former);
        copied = empty;
        CHECK(copied.typeName == name && isEmpty(copied));
        Value moved = full(former);
        moved = std::move(empty);
        CHECK(moved.typeName == name && isEmpty(moved));
    }
}

// The letters of these texts are none of zero, so the first zero is the one behind them.
bool endsWithZero(const std::string& text) {
    return std::char_traits<char>::length(text.c_str()) == text.size();
}

bool isSame(const Value& left, const Value& right) {
    return endsWithZero(left.typeName) && endsWithZero(left.stringVal) &&
           left.typeName == right.typeName && left.stringVal == right.stringVal &&
           left.toString() == right.toString() && left.arrayVal.size() == right.arrayVal.size() &&
           left.mapVal.size() == right.mapVal.size();
}

void testCopyAndMove(const Value& original) {
    Value copy(original);
    CHECK(isSame(copy, original));
    Value moved(std::move(copy));
    CHECK(isSame(moved, original));
    Value assigned = 1;
    assigned = std::move(moved);
    CHECK(isSame(assigned, original));
}

// Texts that have letters left from before behind their end, in the value or elsewhere.
void testShortened(Value value, size_t size) {
    value.typeName.resize(size);
    value.stringVal.resize(size);
    testCopyAndMove(value);
    value.typeName.reserve(100);
    value.stringVal.reserve(100);
    testCopyAndMove(value);
}

// Texts of up to 15 letters lie in the value, longer ones elsewhere, like elements and entries.
void testEachMemberAlone() {
    for (size_t size = 0; size < 40; ++size) {
        Value text = std::string("abcdefghijklmnopqrstuvwxyzabcdefghijklmnopqrstuvwxyz", size);
        testCopyAndMove(text);
        Value object = Value::makeObject(text.stringVal);
        // What stands behind the letters that a value itself has room for is no zero.
        object.intVal = -1;
        object.boolVal = true;
        testCopyAndMove(object);
        object.mapVal = {{"x", 3}};
        testCopyAndMove(object);
        object.stringVal = text.stringVal;
        testCopyAndMove(object);
        testShortened(object, size / 2);
    }
    testCopyAndMove(std::vector<Value>{1, "two"});
    testCopyAndMove(std::map<std::string, Value>{{"x", 3}});
}

void testCopiesAreIndependent() {
    Value list = std::vector<Value>{1, 2};
    Value copy = list;
    copy[0] = 5;
    Value point = Value::makeObject("Point");
    point["x"] = list;
    Value other = point;
    other["x"][1] = 7;
    Value rows = std::vector<Value>{list, point};
    Value otherRows = rows;
    otherRows[0][1] = 8;
    otherRows[1]["x"][0] = 9;
    CHECK_EQUAL(rows.toString(), "[[1, 2], {x: [1, 2]}]");
    CHECK_EQUAL(otherRows.toString(), "[[1, 8], {x: [9, 2]}]");
    CHECK_EQUAL(list.toString(), "[1, 2]");
    CHECK_EQUAL(copy.toString(), "[5, 2]");
    CHECK_EQUAL(point.toString(), "{x: [1, 2]}");
    CHECK_EQUAL(other.toString(), "{x: [1, 7]}");
}

// A value may be replaced by a part of itself, and may be assigned to itself.
void testPartsOfItself() {
    Value tree = Value::makeObject("Tree");
    tree["left"] = Value::makeObject("Tree");
    tree["left"]["name"] = "leaf";
    Value again = tree;
    tree = tree["left"];
    CHECK_EQUAL(tree.toString(), "{name: leaf}");
    again = std::move(again["left"]);
    CHECK_EQUAL(again.toString(), "{name: leaf}");
    Value list = std::vector<Value>{std::vector<Value>{"in", 2}, 3};
    list = list[0];
    CHECK_EQUAL(list.toString(), "[in, 2]");
    Value& same = list;
    list = same;
    CHECK_EQUAL(list.toString(), "[in, 2]");
    Value number = 4;
    Value& sameNumber = number;
    number = sameNumber;
    CHECK(number.isInt() && number.intVal == 4);
}

// Room without elements is given back, too: the sanitizers tell what is not.
void testRoomWithoutElements() {
    Value list = std::vector<Value>{};
    list.arrayVal.reserve(8);
    CHECK(list.arrayVal.empty() && list.arrayVal.capacity() >= 8);
    Value emptied = full("map");
    emptied.arrayVal.clear();
    emptied.mapVal.clear();
    emptied.stringVal.clear();
    CHECK(emptied.arrayVal.capacity() >= 2 && emptied.toString() == "{}");
    Value entriesAlone = std::map<std::string, Value>{{"x", std::vector<Value>{1, 2}}};
    CHECK(entriesAlone.arrayVal.capacity() == 0 && entriesAlone.mapVal.size() == 1);
}

void testNumbersOfTwoKinds() {
    Value value = 3;
    value = 0.25;
    CHECK(value.isFloat() && value.floatVal == 0.25 && value.intVal == 0);
    value = 8;
    CHECK(value.isInt() && value.intVal == 8 && value.floatVal == 0.0);
}

// A number may have members that are not its own; they are assigned like those of any value.
void testNumbersWithOtherMembers() {
    Value text = 5, list = 5, entries = 5;
    text.stringVal = "x";
    list.arrayVal = {1};
    entries.mapVal = {{"x", 3}};
    for (const Value& odd : {text, list, entries}) {
        Value number = 6;
        number = odd;
        CHECK(number.intVal == 5 && number.stringVal == odd.stringVal &&
              number.arrayVal.size() == odd.arrayVal.size() &&
              number.mapVal.size() == odd.mapVal.size());
        number = 7;
        CHECK(number.intVal == 7 && number.stringVal.empty() && number.arrayVal.empty() &&
              number.mapVal.empty());
    }
}

} // namespace

void testCopies() {
    for (const char* name : {"null", "int", "double", "string", "bool", "array", "map", "handle",
                             "a long name of a class"}) {
        testAllMembersGoAlong(name);
        testNothingStaysBehind(name);
    }
    testEachMemberAlone();
    testCopiesAreIndependent();
    testPartsOfItself();
    testRoomWithoutElements();
    testNumbersOfTwoKinds();
    testNumbersWithOtherMembers();
}
