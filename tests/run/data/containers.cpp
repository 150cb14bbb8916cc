// array, container, dict, list, set, queue and stack: the rest of their functions, wrong kinds of
// arguments, empty and large ones.
#include "import.hpp"

#include "../checks.h"
#include "../lists.h"

static const Value none = std::vector<Value>();

static void testLists() {
    Value list = listOf({"a", "b", "c"});
    CHECK(swapAt(list, 0, -1) && list.toString() == "[c, b, a]" && !swapAt(list, 0, 3));
    CHECK_EQUAL(flatten(listOf({listOf({1, 2}), 3, listOf({listOf({4})})})).toString(),
                "[1, 2, 3, [4]]");
    CHECK_EQUAL(chunk(listOf({1, 2, 3, 4, 5}), 2).toString(), "[[1, 2], [3, 4], [5]]");
    CHECK(chunk(list, 0).arrayVal.empty() && chunk(none, 2).arrayVal.empty() &&
          chunk("x", 2).arrayVal.empty());
    CHECK_EQUAL(zip(listOf({"a", "b", "c"}), listOf({1, 2})).toString(), "[[a, 1], [b, 2]]");
    CHECK(rotate(listOf({1, 2, 3}), 1).toString() == "[2, 3, 1]" &&
          rotate(none, 5).arrayVal.empty());
    CHECK(rotate(listOf({1, 2, 3}), -1).toString() == "[3, 1, 2]" &&
          rotate(listOf({1, 2, 3}), 7).toString() == "[2, 3, 1]");
    CHECK(newArray(2e9, "x").arrayVal.empty() && !setAt(list, 2e9, "x") &&
          list.arrayVal.size() == 3);
    Value numbers = none;
    for (int i = 0; i < 1000; ++i) push(numbers, i);
    const Value mixed = shuffle(numbers);
    CHECK(mixed.toString() != numbers.toString() && sort(mixed).toString() == numbers.toString());
    CHECK(shuffle(none).arrayVal.empty() && shuffle(5).arrayVal.empty());
    Value repeated = none;
    for (int i = 0; i < 100000; ++i) repeated.arrayVal.push_back(i % 1000);
    CHECK_EQUAL(unique(repeated).arrayVal.size(), 1000u);
    CHECK_EQUAL(unique(listOf({1, 1.0, "1", true, Value(), Value(), listOf({1}), listOf({1.0})}))
                    .toString(),
                "[1, 1, true, null, [1]]");
}

static void testDescriptions() {
    CHECK_EQUAL(describe(listOf({1, "two\n", listOf({2.5})})),
                "[\n  1\n  \"two\\n\"\n  [\n    2.5\n  ]\n]");
    CHECK_EQUAL(describe(dictWith({{"a", true}})), "{\n  a: true\n}");
    CHECK(describe(Value()) == "null" && describe(none) == "[]" && describe(dictNew()) == "{}");
    Value object = Value::makeObject("Point");
    object.mapVal["x"] = 1;
    CHECK_EQUAL(describe(object), "Point {\n  x: 1\n}");
    Value deep = 1;
    for (int i = 0; i < 80; ++i) deep = std::vector<Value>(1, deep);
    CHECK(describe(deep).find("[...]") != std::string::npos);
}

static void testPaths() {
    Value x = dictWith({{"users", listOf({dictWith({{"name", "Ann"}})})}});
    CHECK(getPath(x, "users.0.name") == "Ann" && getPath(x, "users.-1.name") == "Ann");
    CHECK(getPath(x, "users.1.name").isNull() && getPath(x, "users.x").isNull() &&
          getPath(5, "a").isNull());
    CHECK(getPath(x, "").isMap() && getPath(x, "users.0.name.first").isNull());
    CHECK(setPath(x, "users.1.name", "Bob") && getPath(x, "users.1.name") == "Bob");
    CHECK(!setPath(x, "users.9.name", "Eve") && itemsIn(getPath(x, "users")) == 2);
    CHECK(!setPath(x, "users.0.name.first", 1) && getPath(x, "users.0.name") == "Ann");
    Value made;
    CHECK(setPath(made, "window.size.0", 300) && made.toString() == "{window: {size: [300]}}");
    std::string path = "a";
    for (int i = 0; i < 100000; ++i) path += ".a";
    CHECK(!setPath(made, path, 1) && getPath(made, path).isNull());
    CHECK(removeField(made, "window") && !removeField(made, "window") && made.mapVal.empty());
}

static void testWholeValues() {
    CHECK_EQUAL(mergeValues(dictWith({{"a", 1}, {"b", 1}}), dictWith({{"b", 2}})).toString(),
                "{a: 1, b: 2}");
    CHECK(mergeValues(1, 2) == 2 && mergeValues(1, Value()) == 1);
    CHECK(toList(dictWith({{"a", 1}, {"b", 2}})).toString() == "[1, 2]" &&
          toList("h\xC3\xA4").arrayVal.size() == 2);
    CHECK(toList(Value()).arrayVal.empty() && toList(5).toString() == "[5]" &&
          toList(none).arrayVal.empty());
    CHECK_EQUAL(toDict(listOf({listOf({"a", 1}), listOf({"b"}), 7})).toString(), "{a: 1}");
    Value object = Value::makeObject("Point");
    object.mapVal["x"] = 1;
    CHECK(isDict(toDict(object)) && toDict(object).toString() == "{x: 1}" &&
          toDict(5).mapVal.empty());
    CHECK(compareValues(1, 2) == -1 && compareValues(2, 1.5) == 1 && compareValues("a", "a") == 0);
    CHECK(compareValues(Value(), 1) == -1 && compareValues(1, true) == -1 &&
          compareValues("z", none) == -1);
    CHECK(compareValues(none, dictNew()) == -1 && compareValues(listOf({1, 2}), listOf({1})) == 1);
    CHECK(compareValues(__builtin_nan(""), 1) == -1 && compareValues(1, __builtin_nan("")) == 1);
    CHECK(setVar("b", 1) == 1 && setVar("a", 2) == 2 && varNames().toString() == "[a, b]");
    Value fields;
    CHECK(setField(fields, 6.0, "x") && hasKey(fields, 6) && getField(fields, "6") == "x");
}

static void testDicts() {
    Value d;
    CHECK(dictSet(d, "b", 1) && !dictSet(d, "b", 2) && dictSet(d, "a", "x") &&
          dictGet(d, "b") == 2);
    CHECK(dictGet(d, "z").isNull() && dictGet(d, "z", 7) == 7 && dictGet(d, "b", 7) == 2 &&
          dictHas(d, "a"));
    CHECK(dictKeys(d).toString() == "[a, b]" && dictValues(d).toString() == "[x, 2]" &&
          dictCount(d) == 2);
    CHECK_EQUAL(dictPairs(d).toString(), "[[a, x], [b, 2]]");
    CHECK(dictEquals(dictOf(dictPairs(d)), d) &&
          dictEquals(dictFrom(dictKeys(d), dictValues(d)), d));
    CHECK(!dictEquals(d, dictNew()) && dictFrom(listOf({"k"}), none).toString() == "{k: null}");
    CHECK(dictOf(listOf({listOf({1, 2}), "x", listOf({1})})).toString() == "{1: 2}" &&
          dictOf(5).mapVal.empty());
    CHECK(dictRemove(d, "a") && !dictRemove(d, "a") && dictClear(d) == 1 && dictCount(d) == 0);
    Value counts;
    CHECK(dictAdd(counts, "x", 1) == 1 && dictAdd(counts, "x", 2) == 3 &&
          dictAdd(counts, "x", 0.5) == 3.5);
    CHECK(dictPush(counts, "l", "a") == 1 && dictPush(counts, "l", "b") == 2 &&
          dictPush(counts, "x", 1) == -1);
    const Value first = dictWith({{"a", 1}, {"b", 1}}), second = dictWith({{"b", 2}, {"c", 2}});
    CHECK_EQUAL(dictMerge(first, second).toString(), "{a: 1, b: 2, c: 2}");
    CHECK(dictPick(first, listOf({"a", "z"})).toString() == "{a: 1}");
    CHECK(dictOmit(first, listOf({"a", "z"})).toString() == "{b: 1}");
    CHECK(dictInvert(second).toString() == "{2: c}" && dictFindKey(first, 1) == "a" &&
          dictFindKey(first, 9).isNull());
    Value renamed = first;
    CHECK(dictRename(renamed, "a", "z") && renamed.toString() == "{b: 1, z: 1}" &&
          !dictRename(renamed, "a", "x"));
    CHECK_EQUAL(dictSortedByValue(dictWith({{"a", 3}, {"b", 1}, {"c", 1}})).toString(),
                "[[b, 1], [c, 1], [a, 3]]");
    Value number = 5;
    CHECK(!dictSet(number, "a", 1) && dictAdd(number, "a", 1).isNull() &&
          dictPush(number, "a", 1) == -1 && number == 5);
    CHECK(dictGet(number, "a").isNull() && dictKeys("x").arrayVal.empty() && dictCount(none) == 0);
    CHECK(dictMerge(1, 2).mapVal.empty() && dictInvert(none).mapVal.empty() &&
          !dictHas(Value(), ""));
}

static void testNamedLists() {
    Value l;
    CHECK(listAdd(l, "b") == 1 && listPrepend(l, "a") == 2 && listInsert(l, 2, "d") &&
          listInsert(l, -1, "c"));
    CHECK(l.toString() == "[a, b, c, d]" && !listInsert(l, 9, "x") && !listInsert(l, -9, "x"));
    CHECK(listGet(l, 0) == "a" && listGet(l, -1) == "d" && listGet(l, 4).isNull() &&
          listCount(l) == 4);
    CHECK(listSet(l, 0, "A") && !listSet(l, 4, "x") && listFirst(l) == "A" && listLast(l) == "d");
    CHECK(listContains(l, "b") && !listContains(l, "x") && listIndexOf(l, "d") == 3 &&
          listIndexOf(l, "x") == -1);
    CHECK(listMove(l, 0, 2) && l.toString() == "[b, c, A, d]" && !listMove(l, 0, 4));
    CHECK(listSwap(l, 0, 3) && l.toString() == "[d, c, A, b]" && !listSwap(l, 0, 4));
    CHECK(listRemove(l, 2) == "A" && listRemove(l, 3).isNull() && listRemoveItem(l, "d") &&
          !listRemoveItem(l, "d"));
    CHECK(listAddAll(l, listOf({"a", 3})) == 4 && listSort(l) == 4 &&
          l.toString() == "[3, a, b, c]");
    CHECK(listReverse(l) == 4 && l.toString() == "[c, b, a, 3]" &&
          listSlice(l, 1, 2).toString() == "[b, a]");
    CHECK(listUnique(listOf({1, 2, 1})).toString() == "[1, 2]" && listJoin(l, "-") == "c-b-a-3");
    CHECK(listFilterText(listOf({"apple", "pear", 12}), "p").toString() == "[apple, pear]");
    Value people = listOf({dictWith({{"n", 2}}), dictWith({{"n", 1}}), 5});
    CHECK(listSortBy(people, "n") == 3 && people.toString() == "[5, {n: 1}, {n: 2}]");
    CHECK(listClear(l) == 4 && l.arrayVal.empty() && listFirst(l).isNull() && listLast(l).isNull());
    Value text = "abc";
    CHECK(listAdd(text, 1) == 1 && text.toString() == "[1]" && listNew().arrayVal.empty());
    CHECK(listCount(5) == 0 && listGet("x", 0).isNull() && listJoin(Value(), ",").empty());
}

static void testSets() {
    Value s = setNew();
    CHECK(setAdd(s, 1) && !setAdd(s, 1.0) && setAdd(s, "1") && setAdd(s, Value()) &&
          setCount(s) == 3);
    CHECK(setHas(s, "1") && !setHas(s, 2) && setHas(s, Value()) && setRemove(s, 1) &&
          !setRemove(s, 1));
    CHECK_EQUAL(setToList(setOf(listOf({3, "b", 1, 3, "a"}))).toString(), "[1, 3, a, b]");
    const Value a = setOf(listOf({1, 2})), b = listOf({2, 3});
    CHECK(setToList(setUnion(a, b)).toString() == "[1, 2, 3]" &&
          setToList(setIntersect(a, b)).toString() == "[2]");
    CHECK(setToList(setMinus(a, b)).toString() == "[1]" &&
          setToList(setEither(a, b)).toString() == "[1, 3]");
    CHECK(setIsSubset(listOf({2}), a) && !setIsSubset(b, a) && setIsSubset(none, none));
    CHECK(setIsDisjoint(a, listOf({5})) && !setIsDisjoint(a, b) &&
          setEquals(listOf({2, 1, 2}), a) && !setEquals(a, b));
    CHECK(setToggle(s, "x") && setHas(s, "x") && !setToggle(s, "x") && !setHas(s, "x") &&
          setClear(s) == 2);
    CHECK(setHas(setOf(listOf({listOf({1, "a"})})), listOf({1.0, "a"})));
    CHECK(!setHas(setOf(listOf({listOf({"a", "bc"})})), listOf({"ab", "c"})));
    Value number = 5, list = listOf({1, 1});
    CHECK(!setAdd(number, 1) && number == 5 && setAdd(list, 2) && setCount(list) == 2);
    CHECK(setCount("abc") == 0 && setToList(7).arrayVal.empty() &&
          sameValue(setOf(b), setOf(listOf({3, 2}))));
    Value many = none;
    for (int i = 0; i < 100000; ++i) many.arrayVal.push_back(i / 2);
    CHECK_EQUAL(setCount(many), 50000);
}

static void testQueues() {
    Value q = queueNew();
    CHECK(queueIsEmpty(q) && queuePop(q).isNull() && queuePeek(q).isNull() &&
          queuePeekBack(q).isNull());
    CHECK(queuePush(q, "a") == 1 && queuePush(q, "b") == 2 && queuePushFront(q, "z") == 3);
    CHECK(queuePeek(q) == "z" && queuePeekBack(q) == "b" && queueCount(q) == 3 &&
          queueContains(q, "a"));
    CHECK(queueRotate(q) == "z" && queueToList(q).toString() == "[a, b, z]" &&
          queuePopBack(q) == "z");
    CHECK(queuePop(q) == "a" && queueClear(q) == 1 && queueIsEmpty(q) && queueRotate(q).isNull() &&
          queuePopBack(q).isNull());
    Value p;
    CHECK(priorityPush(p, "late", 5) == 1 && priorityPush(p, "soon", 1) == 2 &&
          priorityPush(p, "soon too", 1) == 3);
    CHECK(priorityPush(p, "between", "2.5") == 4 && priorityPeek(p) == "soon" &&
          priorityCount(p) == 4);
    CHECK(priorityPop(p) == "soon" && priorityPop(p) == "soon too" && priorityPop(p) == "between");
    CHECK(priorityPop(p) == "late" && priorityPop(p).isNull() && priorityPeek(p).isNull());
    CHECK(queuePeek(5).isNull() && queueCount("x") == 0 && !queueContains(Value(), 1) &&
          priorityCount(1) == 0);
}

static void testStacks() {
    Value s = stackNew();
    CHECK(stackIsEmpty(s) && stackPop(s).isNull() && stackPeek(s).isNull() &&
          stackDup(s).isNull() && !stackSwap(s));
    CHECK(stackPush(s, 1) == 1 && stackPush(s, 2) == 2 && stackPeek(s) == 2 && stackSwap(s) &&
          stackPeek(s) == 1);
    CHECK(stackDup(s) == 1 && stackCount(s) == 3 && stackToList(s).toString() == "[1, 1, 2]");
    CHECK(stackTrim(s, 2) == 1 && s.toString() == "[1, 1]" && stackTrim(s, 9) == 0 &&
          stackTrim(s, -1) == 2);
    CHECK(stackPush(s, 7) == 1 && stackPop(s) == 7 && stackClear(s) == 0 &&
          stackToList(4).arrayVal.empty());
    CHECK(stackIsEmpty("x") && stackCount(9) == 0);
}

static void testHistories() {
    Value h = historyNew(3);
    CHECK(!historyCanUndo(h) && !historyCanRedo(h) && historyUndo(h).isNull() &&
          historyRedo(h).isNull());
    CHECK(historyPush(h, "a") == 1 && historyPush(h, "b") == 2 && historyPush(h, "c") == 3);
    CHECK(historyUndo(h) == "b" && historyUndo(h) == "a" && historyUndo(h).isNull() &&
          !historyCanUndo(h));
    CHECK(historyCanRedo(h) && historyRedo(h) == "b" && historyPush(h, "x") == 3 &&
          historyRedo(h).isNull());
    CHECK(historyPush(h, "y") == 3 && historyUndo(h) == "x" && historyUndo(h) == "b" &&
          historyUndo(h).isNull());
    Value broken = dictWith({{"states", 5}, {"at", 77}}), text = "x";
    CHECK(historyUndo(broken).isNull() && !historyCanRedo(broken) && historyPush(broken, 1) == 1);
    CHECK(historyPush(text, 1) == 1 && historyPush(text, 2) == 2 && historyUndo(text) == 1);
    CHECK(!historyCanUndo(5) && !historyCanRedo("x"));
}

int main() {
    testLists();
    testDescriptions();
    testPaths();
    testWholeValues();
    testDicts();
    testNamedLists();
    testSets();
    testQueues();
    testStacks();
    testHistories();
    return finishChecks();
}
