// Functions that only read look at a large list, dict or text where it stands: the memory that a
// call takes does not grow with it. Counted in bytes, which a slow computer does not change.
#include "import.hpp"

#include "../checks.h"
#include "../lists.h"

#include <cstdlib>
#include <new>

static unsigned long long taken = 0;

// Not inlined, or g++ sees one half of a pair without the other and warns.
[[gnu::noinline]] void* operator new(std::size_t size) {
    taken += size;
    if (void* memory = std::malloc(size > 0 ? size : 1)) return memory;
    throw std::bad_alloc();
}
[[gnu::noinline]] void operator delete(void* memory) noexcept { std::free(memory); }
[[gnu::noinline]] void operator delete(void* memory, std::size_t) noexcept { std::free(memory); }

template <typename Call>
static unsigned long long bytesOf(Call call) {
    const unsigned long long before = taken;
    static_cast<void>(call());
    return taken - before;
}

// More than any single element, key or message of these tests takes, far less than a copy of the
// whole.
static const unsigned long long few = 4096;

#define CHECK_READS(expression) CHECK(bytesOf([&] { return (expression); }) < few)

static const int many = 200000;

static Value numbers() {
    Value list = std::vector<Value>();
    for (int i = 0; i < many; ++i) list.arrayVal.push_back(i);
    return list;
}

static Value namedNumbers() {
    Value dict = std::map<std::string, Value>();
    for (int i = 0; i < 10000; ++i) dict.mapVal["key" + std::to_string(i)] = i;
    return dict;
}

// The counter itself notices a copy.
static void testCounting() {
    const Value list = numbers(), dict = namedNumbers(), text = std::string(1000000, 'x');
    CHECK(bytesOf([&] { return Value(list); }) > 1000000);
    CHECK(bytesOf([&] { return Value(dict); }) > 1000000);
    CHECK(bytesOf([&] { return Value(text); }) > 999999);
    CHECK(bytesOf([&] { return list.arrayVal.size(); }) == 0);
}

static void testLists() {
    Value list = numbers(), last = many - 1;
    CHECK_READS(getAt(list, 5));
    CHECK_READS(firstOf(list));
    CHECK_READS(lastOf(list));
    CHECK_READS(find(list, last));
    CHECK_READS(includes(list, last));
    CHECK_READS(count(list, last));
    CHECK_READS(lower_bound(list, last));
    CHECK_READS(upper_bound(list, last));
    CHECK_READS(sameList(list, list));
    CHECK_READS(slice(list, 10, 3));
    CHECK_READS(listGet(list, -1));
    CHECK_READS(listCount(list));
    CHECK_READS(listContains(list, last));
    CHECK_READS(listIndexOf(list, last));
    CHECK_READS(listFirst(list));
    CHECK_READS(listLast(list));
    CHECK_READS(listSlice(list, 10, 3));
    CHECK_READS(stackPeek(list));
    CHECK_READS(stackCount(list));
    CHECK_READS(stackIsEmpty(list));
    CHECK_READS(queuePeek(list));
    CHECK_READS(queuePeekBack(list));
    CHECK_READS(queueCount(list));
    CHECK_READS(queueIsEmpty(list));
    CHECK_READS(queueContains(list, last));
    CHECK_READS(length(list));
    CHECK_READS(isEmpty(list));
    CHECK_READS(sum(list));
    CHECK_READS(minOf(list));
    CHECK_READS(range(1, 3));
}

// Every element once: four times the work for four times the elements, where copies would make it
// sixteen times. A loop that copies is left early.
static void testLoops() {
    const Value list = numbers();
    const unsigned long long limit = 200ull * many;
    unsigned long long bytes = 0;
    long long total = 0;
    for (int i = 0; i < many && bytes < limit; ++i)
        bytes += bytesOf([&] { return total += getAt(list, i).intVal; });
    CHECK(bytes < limit);
    CHECK_EQUAL(total, 199999LL * 100000);
}

static void testDicts() {
    Value dict = namedNumbers(), list = numbers(), members = setOf(slice(list, 0, 10000));
    CHECK_READS(dictGet(dict, "key77"));
    CHECK_READS(dictGet(dict, "none", 5));
    CHECK_READS(dictHas(dict, "key77"));
    CHECK_READS(dictCount(dict));
    CHECK_READS(dictFindKey(dict, 9999));
    CHECK_READS(dictEquals(dict, dict));
    CHECK_READS(dictPick(dict, listOf({"key1", "key2"})));
    CHECK_READS(getField(dict, "key77"));
    CHECK_READS(hasKey(dict, "key77"));
    CHECK_READS(itemsIn(dict));
    CHECK_READS(getPath(dict, "key77"));
    CHECK_READS(getPath(list, "77"));
    CHECK_READS(typeOf(dict));
    CHECK_READS(isNil(list));
    CHECK_READS(isList(list));
    CHECK_READS(isDict(dict));
    CHECK_READS(sameValue(list, dict));
    CHECK_READS(compareValues(list, list));
    CHECK_READS(orElse(5, list));
    CHECK_READS(toBool(list));
    CHECK_READS(equals(list, list));
    CHECK_READS(max(5, 6));
    CHECK_READS(setHas(members, 77));
    CHECK_READS(setCount(members));
    CHECK_READS(setIntersect(members, listOf({1, 2})));
    CHECK_READS(setIsSubset(listOf({1, 2}), members));
}

static void testNestedValues() {
    Value branch = treeNew("root");
    for (int i = 0; i < 1000; ++i) treeAdd(branch, "", "leaf" + std::to_string(i));
    Value past = historyNew(0);
    for (int i = 0; i < 1000; ++i) historyPush(past, std::string(100, 'x'));
    CHECK_READS(treeGet(branch, "999"));
    CHECK_READS(treeHas(branch, "999"));
    CHECK_READS(treeChildCount(branch, ""));
    CHECK_READS(treeSubtree(branch, "999"));
    CHECK_READS(historyCanUndo(past));
    CHECK_READS(historyCanRedo(past));
}

static void testTexts() {
    const Value text = std::string(1000000, 'x');
    CHECK_READS(length(text));
    CHECK_READS(isEmpty(text));
    CHECK_READS(contains(text, "y"));
    CHECK_READS(startsWith(text, "xx"));
    CHECK_READS(endsWith(text, "xx"));
    CHECK_READS(indexOf(text, "xx"));
    CHECK_READS(countText(text, "y"));
    CHECK_READS(substring(text, 5, 3));
    CHECK_READS(left(text, 3));
    CHECK_READS(charAt(text, 10));
    CHECK_READS(itemsIn(text));
    CHECK_READS(isTextValue(text));
    CHECK_READS(isNumber(text));
    CHECK_READS(parseNumber(5));
}

// A function that changes its list takes the other arguments from it as they were before.
static void testPartsOfWhatIsChanged() {
    Value list = listOf({"first element, too long to be kept within", "b"});
    for (int i = 0; i < 100; ++i) push(list, list[0]);
    CHECK(list.arrayVal.size() == 102 && getAt(list, 101) == list[0]);
    insertAt(list, 0, list[1]);
    CHECK(list[0] == "b" && list[2] == "b");
    CHECK_EQUAL(listAddAll(list, list), 206);
}

int main() {
    testCounting();
    testLists();
    testLoops();
    testDicts();
    testNestedValues();
    testTexts();
    testPartsOfWhatIsChanged();
    return finishChecks();
}
