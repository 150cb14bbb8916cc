// Work on values that runs out of memory at any of its steps leaves what was there as it was, and
// gives back what it had taken.
#include "import.hpp"

#include <cstdlib>
#include <new>

#include "checks.h"

namespace {

// How many more blocks there are (as many as are asked for, below zero), and how many are in use.
int remaining = -1;
int used = 0;

} // namespace

void* operator new(std::size_t size) {
    if (remaining == 0) throw std::bad_alloc();
    if (remaining > 0) --remaining;
    void* block = std::malloc(size == 0 ? 1 : size);
    if (!block) throw std::bad_alloc();
    ++used;
    return block;
}

void* operator new(std::size_t size, const std::nothrow_t&) noexcept {
    try {
        return operator new(size);
    } catch (const std::bad_alloc&) {
        return nullptr;
    }
}

void* operator new[](std::size_t size, const std::nothrow_t& none) noexcept {
    return operator new(size, none);
}

void operator delete(void* block) noexcept {
    if (block) --used;
    std::free(block);
}

void operator delete(void* block, std::size_t) noexcept { operator delete(block); }
void operator delete[](void* block) noexcept { operator delete(block); }
void operator delete[](void* block, std::size_t) noexcept { operator delete(block); }

namespace {

const char* const longText = "a text that is too long to be kept in the string itself";

// A tree of values with texts of both kinds, lists in lists and entries in entries, some with few
// and some with many names.
Value stock(size_t size) {
    Value made = Value::makeObject("a class with a name of more than fifteen letters");
    made["text"] = longText;
    made["list"] = std::vector<Value>{1, "short", longText, std::vector<Value>{2.5, longText}};
    for (size_t i = 0; i < size; ++i) made["entries"][std::to_string(i) + longText] = longText;
    return made;
}

// Runs the work with one more block each time, until it is done; what it changes is put back
// before.
template <typename Work>
void testEachStep(const Value& original, Work work) {
    const std::string text = original.toString();
    bool done = false;
    int steps = 0;
    for (; !done; ++steps) {
        const int before = used;
        {
            Value value(original);
            const int held = used;
            remaining = steps;
            try {
                work(value);
                done = true;
            } catch (const std::bad_alloc&) {
            }
            remaining = -1;
            const bool isAsBefore = done || (used == held && value.toString() == text);
            CHECK(isAsBefore);
        }
        const bool isGivenBack = used == before;
        CHECK(isGivenBack);
    }
    CHECK(steps > 1 && original.toString() == text);
}

void testAll(const Value& original) {
    testEachStep(original, [](Value& value) { Value copy(value); });
    testEachStep(original, [](Value& value) { std::vector<Value> copies(3, value); });
    testEachStep(original, [](Value& value) { value["text"] = value; });
    testEachStep(original, [](Value& value) { value["list"].arrayVal.push_back(value); });
    testEachStep(original, [](Value& value) {
        std::vector<Value>& list = value["list"].arrayVal;
        list.insert(list.begin() + 1, value);
    });
    testEachStep(original, [](Value& value) { value.mapVal.insert({"new", value}); });
    testEachStep(original, [](Value& value) {
        Value empty;
        empty["a name of more than fifteen letters"] = 1;
        std::map<std::string, Value> entries;
        entries.emplace("another name of so many letters", value);
        entries.insert(value.mapVal.begin(), value.mapVal.end());
    });
    testEachStep(original, [](Value& value) { value.mapVal["a name that is not there yet"]; });
}

} // namespace

int main() {
    testAll(stock(3));
    testAll(stock(20));
    return finishChecks();
}
