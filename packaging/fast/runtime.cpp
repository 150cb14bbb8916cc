// What programs are linked with that are built with the precompiled header: the functions that the
// type of values only declares where ORVANE_VALUE_COMPILED is defined, those of its lists and maps,
// and the memory they live in. Compiled once, beside the header, by
//
//     g++ @runtime.options -c runtime.cpp
//
// Nobody calls the functions here, so the compiler must not make others of them for fewer
// parameters (-fno-ipa-cp, -fno-ipa-sra). Short functions and loops that begin somewhere in a line
// of the processor's cache take up to a tenth more time, by chance (-falign-functions,
// -falign-loops). value.h is the text that each program has in its import.hpp.
#define ORVANE_COMPILED_ONCE
#include "includes.h"

#include "entries.h"
#include "lists.h"
#include "memory.h"
#include "texts.h"

using namespace std;
#include "value.h"

template class OrvaneValues::ListCore<Value>;
template class OrvaneValues::EntriesCore<Value>;

// The compiler brings out what is called, and without optimisation every call stays one.
[[gnu::used, gnu::optimize("O0")]] static void callEverything() {
    std::string text;
    const std::vector<Value> list;
    const std::map<std::string, Value> entries;
    Value a, b(1), c(1LL), d(1.0), e(true), f("text"), g(text), h(std::string("text"));
    Value i(list), j(std::vector<Value>{}), k(entries), l(std::map<std::string, Value>{});
    Value m(text, text), n(a), o(std::move(a));
    const Value& fixed = n;
    a = b;
    a = std::move(c);
    a = Value::makeObject(text);
    a = Value::makeHandle(nullptr);
    a = Value::makeFunction(text);
    a = Value::makeArray(text, list);
    a[text] = fixed[text];
    a[b] = fixed[b];
    a.named("text", 4) = fixed["text"];
    a = a.has(text);
    text = a.toString();
    a.appendTo(text);
    a = b + c;
    a = std::move(b) + c;
    a = b - c;
    a = b * c;
    a = b / c;
    a = b % c;
    a = -b;
    a = b == c && b != c && b < c && b > c && b <= c && b >= c;
    a = b.minus(1);
    a = b.minus(1.0);
    a = b.times(1);
    a = b.times(1.0);
    a = b.dividedBy(1.0);
    a = b.modulo(1);
}
