// Arguments that no caller should give, and some that are merely unexpected.
//
// To be included behind import.hpp.
#pragma once

#include "lists.h"

#include <limits>

struct Hostile {
    const char* name;
    Value value;
};

inline Value nestedList(int depth) {
    Value list = listOf({1});
    for (int i = 0; i < depth; ++i) {
        std::vector<Value> outer;
        outer.push_back(std::move(list));
        list = Value(std::move(outer));
    }
    return list;
}

inline std::vector<Hostile> hostileTexts() {
    return {
        {"empty text", ""},
        {"blank text", " \t\r\n"},
        {"huge text", std::string(1 << 20, 'a')},
        {"huge text of words",
         std::string(1 << 17, 'b') + " \xC3\xA4,\n" + std::string(1 << 17, 'c')},
        {"text with a zero byte", std::string("a\0b", 3)},
        {"broken UTF-8", "\xFF\xC3(\xE2\x82\xED\xA0\x80\xF5"},
        {"number as text", "-1"},
        {"zero as text", "0"},
        {"number of many digits", "99999999999999999999999999"},
        {"exponent as text", "-1e999"},
        {"nan as text", "nan"},
        {"odd path", "..\\no such\\a:b?*<>|\""},
        {"device", "\\\\.\\no such device"},
        {"missing file", "nosuch.txt"},
        {"path of many letters", "nosuch\\" + std::string(400, 'x') + ".txt"},
        {"directives", "%s%n%99999999d%.999999f%c%ls%"},
        {"brackets of a pattern", "((((a+)+)+)+)$[z-a]{99999,1}(?"},
        {"deep brackets", std::string(100000, '[')},
        {"deep groups", std::string(100000, '(')},
        {"address without a host", "http://:99999/?%zz&=&&#"},
    };
}

inline std::vector<Hostile> hostileNumbers() {
    typedef std::numeric_limits<double> Doubles;
    typedef std::numeric_limits<long long> Longs;
    return {
        {"0", 0},
        {"-1", -1},
        {"smallest int", std::numeric_limits<int>::min()},
        {"largest int", std::numeric_limits<int>::max()},
        {"smallest long", Longs::min()},
        {"largest long", Longs::max()},
        {"NaN", Doubles::quiet_NaN()},
        {"infinity", Doubles::infinity()},
        {"-infinity", -Doubles::infinity()},
        {"largest double", Doubles::max()},
        {"-0.5", -0.5},
        {"true", true},
    };
}

inline std::vector<Hostile> hostileStructures() {
    return {
        {"null", Value()},
        {"empty list", Value(std::vector<Value>())},
        {"list of all kinds",
         listOf({1, "b", 2.5, true, Value(), listOf({1, 2}), dictWith({{"k", 1}})})},
        {"list of lists", listOf({listOf({1, 2}), listOf({}), listOf({"x"})})},
        {"deep list", nestedList(500)},
        {"empty dict", Value(std::map<std::string, Value>())},
        {"dict", dictWith({{"", 1}, {"a.b", listOf({1})}, {"n", dictWith({{"m", Value()}})}})},
        {"structure", Value::makeObject("Person")},
        {"function", Value::makeFunction("f")},
        {"null handle", Value::makeHandle(nullptr)},
        {"handle of nothing", Value::makeHandle((void*)(INT_PTR)0x1230)},
        {"handle of minus one", Value::makeHandle((void*)(INT_PTR)-1)},
    };
}

inline std::vector<Hostile> hostileValues() {
    std::vector<Hostile> all;
    for (const std::vector<Hostile>& some : {hostileTexts(), hostileNumbers(), hostileStructures()})
        all.insert(all.end(), some.begin(), some.end());
    return all;
}
