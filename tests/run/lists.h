// Lists and dicts of values for checks: listOf({1, "b"}), dictWith({{"name", "Ann"}}).
//
// To be included behind import.hpp.
#pragma once

#include <initializer_list>
#include <utility>

inline Value listOf(std::initializer_list<Value> elements) { return std::vector<Value>(elements); }

inline Value dictWith(std::initializer_list<std::pair<const std::string, Value>> entries) {
    return std::map<std::string, Value>(entries);
}
