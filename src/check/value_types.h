// The types that expressions have in the generated C++, and what C++ can do with them.
//
// The rules are those of the runtime Value and of the built-in types, written down as they are
// found in the generated text: literals are plain, variables are what their declaration says, and
// whatever holds a Value makes the result one.
//
//     resultOf("+", {ValueType::text}, {ValueType::integer});   // a dynamic value
//     canBecome({ValueType::dynamic}, ValueType::integer);      // false
#pragma once

#include <string_view>

namespace Orvane {

enum class ValueType : unsigned char {
    unknown,    // nothing is said about it, and nothing about what is made of it
    integer,    // int
    zero,       // the literal 0, which C++ also takes as a null pointer
    big,        // long long
    floating,   // double
    truth,      // bool
    text,       // std::string
    dynamic,    // Value
    list,       // std::vector<Value>
    null,       // nullptr
    chars,      // const char*, as `catch` gives it
    character,  // char, as indexing a text gives it
    nothing,    // void
    stream,     // what `print` leaves behind
    impossible, // as the result of a rule: C++ refuses
};

// What one expression is.
struct ExprType {
    ValueType type = ValueType::unknown;
    bool isVariable = false; // something that a value can be stored in (an lvalue)
};

// In the user's words, with its article: "an int", "a dynamic value".
std::string_view describe(ValueType type);

constexpr bool isNumber(ValueType type) {
    return type >= ValueType::integer && type <= ValueType::truth;
}
constexpr bool isWhole(ValueType type) {
    return type == ValueType::integer || type == ValueType::zero || type == ValueType::big;
}

// LEFT OP RIGHT for every binary operator but "=" and "."; impossible when C++ has no such
// operator.
ValueType resultOf(std::string_view op, ValueType left, ValueType right);

// Whether a value of one type can be stored in a variable of the other by "=".
bool canAssign(ValueType target, ValueType value);

// Whether a value can initialise a parameter, a result or the message of `expect` of the type.
bool canBecome(ValueType value, ValueType target);

// Whether `if` and `while` take it; (bool)(X) takes the same.
bool canBeCondition(ValueType type);

// OBJECT[INDEX]
ValueType elementOf(ValueType object, ValueType index);

} // namespace Orvane
