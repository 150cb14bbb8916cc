#include "check/value_types.h"

#include <algorithm>
#include <optional>

namespace Orvane {

namespace {

using enum ValueType;

bool isUnknown(ValueType a, ValueType b) { return a == unknown || b == unknown; }

// Plain numbers of C++, with the char that a text's element is.
bool isPlain(ValueType type) { return isNumber(type) || type == character; }

// Values and lists of values bring the operators of Value with them.
bool isValueLike(ValueType type) { return type == dynamic || type == list; }

// What a Value can be made of.
bool makesValue(ValueType type) { return type != nothing && type != stream; }

ValueType plainResult(ValueType left, ValueType right) {
    if (left == floating || right == floating) return floating;
    return left == big || right == big ? big : integer;
}

bool isPointerOffset(ValueType a, ValueType b) { return a == chars && isPlain(b) && b != floating; }

ValueType sumOf(ValueType left, ValueType right) {
    if (isValueLike(left) || isValueLike(right))
        return makesValue(left) && makesValue(right) ? dynamic : impossible;
    if (left == text || right == text) {
        const ValueType other = left == text ? right : left;
        if (!makesValue(other)) return impossible;
        return other == text || other == chars || other == character ? text : dynamic;
    }
    if (isPlain(left) && isPlain(right)) return plainResult(left, right);
    if (isPointerOffset(left, right) || isPointerOffset(right, left)) return chars;
    return impossible;
}

ValueType arithmeticOf(std::string_view op, ValueType left, ValueType right) {
    if (isValueLike(left) || isValueLike(right))
        return makesValue(left) && makesValue(right) ? dynamic : impossible;
    if (isPlain(left) && isPlain(right)) {
        if (op == "%" && (left == floating || right == floating)) return impossible;
        return plainResult(left, right);
    }
    if (op == "-" && left == chars && (right == chars || isPointerOffset(left, right)))
        return unknown;
    return impossible;
}

bool isPointer(ValueType type) { return type == null || type == chars || type == zero; }

ValueType comparisonOf(std::string_view op, ValueType left, ValueType right) {
    if (isValueLike(left) || isValueLike(right))
        return makesValue(left) && makesValue(right) ? truth : impossible;
    if (isPlain(left) && isPlain(right)) return truth;
    const bool textual = (left == text || left == chars) && (right == text || right == chars);
    if (textual) return truth;
    const bool equality = op == "==" || op == "!=";
    return equality && isPointer(left) && isPointer(right) ? truth : impossible;
}

// For the types to which an assignment and an argument are converted by the same rule.
std::optional<bool> convertsAlike(ValueType value, ValueType target) {
    switch (target) {
    case dynamic:
        return makesValue(value);
    case truth:
        return isPlain(value) || value == chars;
    case integer:
    case big:
    case floating:
    case character:
        return isPlain(value);
    default:
        return std::nullopt;
    }
}

} // namespace

std::string_view describe(ValueType type) {
    switch (type) {
    case integer:
    case zero:
    case big:
        return "an int";
    case floating:
        return "a double";
    case truth:
        return "a bool";
    case text:
        return "a string";
    case dynamic:
        return "a dynamic value";
    case list:
        return "a list";
    case null:
        return "null";
    case chars:
        return "a caught text";
    case character:
        return "a character of a string";
    case nothing:
    case stream:
        return "nothing";
    default:
        return "a value";
    }
}

ValueType resultOf(std::string_view op, ValueType left, ValueType right) {
    if (isUnknown(left, right)) return unknown;
    if (op == "+") return sumOf(left, right);
    if (op == "-" || op == "*" || op == "/" || op == "%") return arithmeticOf(op, left, right);
    return comparisonOf(op, left, right);
}

bool canAssign(ValueType target, ValueType value) {
    if (isUnknown(target, value)) return true;
    if (const auto converts = convertsAlike(value, target)) return *converts;
    switch (target) {
    case text: // std::string takes single characters, and the literal 0 may mean two things
        return (isPlain(value) && value != zero) || value == text || value == chars ||
               value == null;
    case chars:
        return isPointer(value);
    default:
        return value == target;
    }
}

bool canBecome(ValueType value, ValueType target) {
    if (isUnknown(value, target)) return true;
    if (const auto converts = convertsAlike(value, target)) return *converts;
    return target != text || value == text || isPointer(value);
}

bool canBeCondition(ValueType type) { return type != text && type != list && type != nothing; }

ValueType elementOf(ValueType object, ValueType index) {
    if (isUnknown(object, index)) return unknown;
    const bool wholeIndex = isPlain(index);
    switch (object) {
    case dynamic:
        return makesValue(index) ? dynamic : impossible;
    case text:
        return wholeIndex ? character : impossible;
    case list:
        return wholeIndex ? dynamic : impossible;
    case chars:
        return wholeIndex && index != floating ? unknown : impossible;
    default:
        return index == chars && isPlain(object) && object != floating ? unknown : impossible;
    }
}

} // namespace Orvane
