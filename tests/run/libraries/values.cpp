// Library functions of text, numbers, lists, shared values and files, called with dynamic values as
// a script calls them. Everything that import.hpp holds is compiled here.
#include "import.hpp"

#include "checks.h"

static Value listOf(std::initializer_list<Value> elements) { return std::vector<Value>(elements); }

static void testTextMeasures() {
    CHECK_EQUAL(length("h\xC3\xA4\xE4\xB8\xAD\xF0\x9F\x98\x80"), 4);
    CHECK(length(listOf({1, 2})) == 2 && length(Value()) == 0 && length(12.0) == 2);
    CHECK(isEmpty(Value()) && isEmpty("") && isEmpty(std::vector<Value>()) && !isEmpty(0));
    CHECK(contains("banana", "nan") && !contains("banana", "x") && contains("a1", 1));
    CHECK(startsWith("banana", "ban") && !startsWith("ban", "banana"));
    CHECK(endsWith("banana", "ana") && !endsWith("ana", "banana"));
    CHECK(indexOf("\xC3\xA4\xC3\xB6\xC3\xBC", "\xC3\xB6") == 1 && indexOf("abc", "x") == -1);
    CHECK(indexOf("banana", "an", 2) == 3 && indexOf("banana", "an", 99) == -1);
    CHECK_EQUAL(lastIndexOf("banana", "an"), 3);
    CHECK(sameText("STRASSE \xC3\x84", "strasse \xC3\xA4") && !sameText("a", "b"));
}

static void testTextParts() {
    const Value word = "a\xC3\xA4\xE4\xB8\xAD\xF0\x9F\x98\x80z";
    CHECK_EQUAL(substring(word, 1, 2), "\xC3\xA4\xE4\xB8\xAD");
    CHECK_EQUAL(substring(word, 3), "\xF0\x9F\x98\x80z");
    CHECK_EQUAL(substring(word, -1, 2), "a");
    CHECK(substring(word, 9, 2).empty() && substring(word, 1, -3).empty());
    CHECK(left(word, 2) == "a\xC3\xA4" && right(word, 1) == "z" &&
          right(word, 99) == word.stringVal);
    CHECK(charAt(word, 2) == "\xE4\xB8\xAD" && charAt(word, 5).empty() && charAt(word, -1).empty());
    CHECK_EQUAL(split("a,b,,c", ",").toString(), "[a, b, , c]");
    CHECK_EQUAL(split("\xC3\xA4"
                      "b",
                      "")
                    .toString(),
                "[\xC3\xA4, b]");
    CHECK_EQUAL(lines("one\r\ntwo\n\nthree\n").toString(), "[one, two, , three]");
    CHECK(lines("").arrayVal.empty() && lines("\n").arrayVal.size() == 1);
    CHECK_EQUAL(chars("\xC3\xA4\xFFz").arrayVal.size(), 3u);
}

static void testTextChanges() {
    CHECK_EQUAL(join(listOf({1, "b", 2.5}), "-"), "1-b-2.5");
    CHECK(replaceAll("aaa", "a", "aa") == "aaaaaa" && replaceAll("abc", "", "x") == "abc");
    CHECK_EQUAL(replaceFirst("aaa", "a", "b"), "baa");
    CHECK(toUpper("stra\xC3\xA4") == "STRA\xC3\x84" && toLower("\xC3\x96X") == "\xC3\xB6x");
    CHECK(trim(" \t a b\r\n") == "a b" && trim(" \n ").empty() && trim("").empty());
    CHECK(trimStart(" a ") == "a " && trimEnd(" a ") == " a" && trimEnd("  ").empty());
    CHECK(repeat("ab", 3) == "ababab" && repeat("ab", -1).empty() && repeat("a", 1e18).empty());
    CHECK(padLeft("7", 3, "0") == "007" && padLeft("1234", 3, "0") == "1234");
    CHECK(padRight("\xC3\xA4", 3, "") == "\xC3\xA4  " && padLeft("x", 4, "ab") == "abax");
    CHECK_EQUAL(reverseText("a\xC3\xA4\xF0\x9F\x98\x80"), "\xF0\x9F\x98\x80\xC3\xA4"
                                                          "a");
}

static void testTextConversion() {
    CHECK(textOf(6.0) == "6" && textOf(2.5) == "2.5" && textOf(0.1) == "0.1" &&
          textOf(-0.0) == "0");
    CHECK(textOf(Value()).empty() && textOf(true) == "true" && textOf(1e21) == "1e+21");
    CHECK_EQUAL(textOf(listOf({1.0, Value(), listOf({2.5})})), "[1, , [2.5]]");
    CHECK_EQUAL(textOf(std::map<std::string, Value>{{"k", 2.0}}), "{k: 2}");
    CHECK_EQUAL(Value(atoi(Value("12 apples"))).intVal, 12);
    CHECK(atoi(Value("x")) == 0 && atoi(0).intVal == 0 && atoi(Value(7.9)) == 7);
    CHECK(atof(Value("2.5x")).floatVal == 2.5 && atof(0).floatVal == 0.0 &&
          atof(2.5).floatVal == 2.5);
    CHECK(codeOf("A") == 65 && codeOf("\xF0\x9F\x98\x80") == 0x1F600 && codeOf("") == -1);
    CHECK(charOf(0x1F600) == "\xF0\x9F\x98\x80" && charOf(228) == "\xC3\xA4" &&
          charOf(0xD800).empty());
}

static void testRounding() {
    CHECK(abs(Value(-3)).isInt() && abs(Value(-3)) == 3 && abs(Value(-2.5)) == 2.5);
    CHECK(abs(Value("-4")) == 4.0 && sign(-2.5) == -1 && sign("x") == 0 && sign(9) == 1);
    CHECK(floor(Value(2.7)) == 2 && floor(Value(-2.1)) == -3 && ceil(Value(2.1)) == 3);
    CHECK(round(Value(2.5)) == 3 && round(Value(-2.5)) == -3 && round(Value(2.4)) == 2);
    CHECK(round(Value(2.345), 2) == 2.35 && round(Value(1.005), 2) == 1.01);
    CHECK(round(Value(1234.5), -2) == 1200.0 && round(Value(1e300), 50) == 1e300);
    CHECK(min(Value(2), Value(10.5)) == 2 && max(Value("2"), Value(10)) == 10);
    CHECK(min(Value("pear"), Value("apple")) == "apple");
    CHECK(clamp(Value(12), 0, 10) == 10 && clamp(Value(-1), 0, 10) == 0 &&
          clamp(Value(5), 0, 10) == 5);
}

static void testFunctionsOfOneNumber() {
    CHECK(sqrt(Value(9)) == 3.0 && sqrt(Value(-9)) == 0.0 && pow(Value(2), Value(10)) == 1024.0);
    CHECK(exp(Value(0)) == 1.0 && log(Value(1)) == 0.0 && log(Value(-1)) == 0.0);
    CHECK(log10(Value(1000)) == 3.0 && sin(Value(0)) == 0.0 && cos(Value(0)) == 1.0);
    CHECK(tan(Value(0)) == 0.0 && asin(Value(2)) == 0.0 && acos(Value(1)) == 0.0);
    CHECK(atan(Value(0)) == 0.0 && textOf(atan2(Value(0), Value(-1))) == textOf(pi()));
}

static void testWholeNumbers() {
    CHECK(addInt(2, 3).isInt() && addInt(2, 3) == 5 && addInt("2", 3.9) == 5);
    CHECK(divInt(7, 2) == 3 && divInt(-7, 2) == -3 && divInt(7, 0) == 0);
    CHECK(modInt(7, 3) == 1 && modInt(-7, 3) == 2 && modInt(7, -3) == -2 && modInt(7, 0) == 0);
    const Value smallest = -9223372036854775807LL - 1;
    CHECK(divInt(smallest, -1).isInt() && modInt(smallest, -1) == 0);
    CHECK(toInt("12") == 12 && toInt(2.9) == 2 && toInt("x") == 0 && toInt(1e300) == 2147483647);
    CHECK(toInt(true) == 1 && toInt(Value()) == 0 && toInt(" -3.7 ") == -3);
    CHECK(toDouble(5) == 5.0 && toDouble("2.5") == 2.5 && toDouble("2.5.1") == 0.0);
    CHECK(isNumber(1) && isNumber(1.5) && !isNumber("1"));
}

static void testRandomNumbers() {
    srand(Value(42));
    const int first = rand(Value(1000));
    bool inside = true;
    for (int i = 0; i < 1000; ++i) {
        const int die = rand(Value(1), Value(6));
        inside = inside && die >= 1 && die <= 6;
        const int small = rand(Value(3));
        inside = inside && small >= 0 && small < 3;
        const double part = randomFloat().floatVal;
        inside = inside && part >= 0.0 && part < 1.0;
    }
    CHECK(inside && rand(Value(0)) == 0 && rand(Value(5), Value(5)) == 5);
    srand(Value(42));
    CHECK_EQUAL(rand(Value(1000)), first);
}

static void testLogic() {
    CHECK(toBool(1) && toBool("yes") && toBool(listOf({0})) && !toBool(0) && !toBool("false"));
    CHECK(!toBool(Value()) && !toBool("") && !toBool("off") && !toBool(std::vector<Value>()));
    CHECK(equals(1, 1.0) && equals("1", 1) && equals("a", "a") && !equals("a", "b"));
    CHECK(equals(listOf({1, "x"}), listOf({1, "x"})) && equals(Value(), Value()) &&
          !equals(0, Value()));
    CHECK(lessThan(9, "10") && lessThan("a", "b") && !lessThan(2, 1.5) && greaterThan(2, 1.5));
    CHECK(between(5, 1, 10) && between(1, 1, 1) && !between(11, 1, 10));
    CHECK(both(1, "x") && !both(1, 0) && either(0, 1) && !either(0, "") && isFalse(0));
}

static void testReadingLists() {
    const Value list = listOf({3, "b", 2.5, 3});
    CHECK(getAt(list, 1) == "b" && getAt(list, -1) == 3 && getAt(list, 4).isNull());
    CHECK(firstOf(list) == 3 && lastOf(list) == 3 && firstOf(newArray()).isNull());
    CHECK(find(list, "b") == 1 && find(list, 9) == -1 && includes(list, 2.5) &&
          count(list, 3) == 2);
    CHECK(lower_bound(listOf({1, 3, 3, 5}), Value(3)) == 1);
    CHECK(upper_bound(listOf({1, 3, 3, 5}), Value(3)) == 3);
    CHECK(sameList(list, list) && !sameList(list, newArray()));
    CHECK(newArray(3, "x").toString() == "[x, x, x]" && newArray(-1, 0).arrayVal.empty());
}

static void testChangingLists() {
    Value list;
    CHECK(push(list, 1) == 1 && push(list, "b") == 2 && list.toString() == "[1, b]");
    CHECK(pop(list) == "b" && pop(list) == 1 && pop(list).isNull());
    CHECK(setAt(list, 2, "z") && list.toString() == "[null, null, z]" && !setAt(list, -9, 1));
    CHECK(setAt(list, -1, "y") && insertAt(list, 0, "first") && !insertAt(list, 99, 1));
    CHECK_EQUAL(list.toString(), "[first, null, null, y]");
    CHECK(removeAt(list, 0) == "first" && removeAt(list, 9).isNull() && list.arrayVal.size() == 3);
    CHECK(unshift(list, 0) == 4 && shift(list) == 0 && clearArray(list) == 3 &&
          list.arrayVal.empty());
}

static void testNewLists() {
    const Value mixed = listOf({"b", 10, "a", 9, 2.5});
    CHECK_EQUAL(textOf(sort(mixed)), "[2.5, 9, 10, a, b]");
    CHECK_EQUAL(textOf(sort(mixed, "desc")), "[b, a, 10, 9, 2.5]");
    CHECK_EQUAL(textOf(sort(listOf({"b", "A", "a"}), "nocase")), "[A, a, b]");
    CHECK_EQUAL(textOf(sort(listOf({"x10", "x9", "x1"}), "natural")), "[x1, x9, x10]");
    const Value people = listOf({std::map<std::string, Value>{{"n", 2}, {"id", "b"}},
                                 std::map<std::string, Value>{{"n", 1}, {"id", "a"}},
                                 std::map<std::string, Value>{{"n", 2}, {"id", "c"}}});
    CHECK_EQUAL(textOf(pluck(sortBy(people, "n"), "id")), "[a, b, c]");
    CHECK_EQUAL(textOf(reverse(mixed)), "[2.5, 9, a, 10, b]");
    CHECK_EQUAL(textOf(remove(listOf({1, 2, 1}), 1)), "[2]");
    CHECK_EQUAL(textOf(unique(listOf({2, 1, 2, "2"}))), "[2, 1, 2]");
    CHECK_EQUAL(textOf(slice(mixed, 1, 2)), "[10, a]");
    CHECK(slice(mixed, -2, 9).arrayVal.size() == 2 && slice(mixed, 9, 1).arrayVal.empty());
    CHECK_EQUAL(textOf(concat(listOf({1}), listOf({2, 3}))), "[1, 2, 3]");
    Value numbers = newArray();
    for (int i = 0; i < 300; ++i) push(numbers, (i * 7919) % 300);
    const Value sorted = sort(numbers);
    bool rising = true;
    for (size_t i = 0; i < 300; ++i) rising = rising && sorted.arrayVal[i] == (int)i;
    CHECK(rising);
}

static void testSharedValues() {
    CHECK(getVar("n").isNull() && getVar("n", 5) == 5 && !hasVar("n"));
    CHECK(setVar("n", 1) == 1 && addVar("n", 2) == 3 && addVar("n", 0.5) == 3.5);
    CHECK(getVar("n") == 3.5 && hasVar("n") && removeVar("n") && !removeVar("n"));
    CHECK(addVar("hits", 1).isInt() && pushVar("log", "a") == 1 && pushVar("log", "b") == 2);
    CHECK_EQUAL(getVar("log").toString(), "[a, b]");
}

static void testEntries() {
    Value dict;
    CHECK(setField(dict, "k", 1) && isDict(dict) && hasKey(dict, "k") && !hasKey(dict, "x"));
    CHECK(getField(dict, "k") == 1 && getField(dict, "x").isNull() && itemsIn(dict) == 1);
    CHECK(keysOf(dict).toString() == "[k]" && valuesOf(dict).toString() == "[1]");
    CHECK(typeOf(dict) == "map" && typeOf(Value::makeArray("container", {})) == "array");
    CHECK(isNil(Value()) && isTextValue("x") && isList(newArray()) && !isControl(dict));
    CHECK(isInstance(Value::makeObject("P")) && sameValue(dict, dict) && orElse(Value(), 2) == 2);
}

static void testFiles() {
    const Value path = "ein \xC3\xA4\xE4\xB8\xAD.txt";
    CHECK(readFile(path).empty() && !lastError().empty());
    CHECK(clearError() && lastError().empty());
    CHECK(writeFile(path, "one\n") && appendFile(path, "\xC3\xA4") &&
          readFile(path) == "one\n\xC3\xA4");
    CHECK(writeFile(path, "\xEF\xBB\xBFnew") && readFile(path) == "new");
    CHECK(writeLines(path, listOf({"a", 2, 2.5})) && readFile(path) == "a\r\n2\r\n2.5\r\n");
    CHECK_EQUAL(readLines(path).toString(), "[a, 2, 2.5]");
    CHECK(!writeFile("no folder\\x.txt", "x") && !appendFile("no folder\\x.txt", "x"));
    CHECK(readFile("no folder\\x.txt.orx~").empty() && readLines("missing").arrayVal.empty());
    CHECK(writeIni("s.ini", "main", "k", "v\xC3\xA4") &&
          readIni("s.ini", "main", "k", "") == "v\xC3\xA4");
    CHECK_EQUAL(readIni("s.ini", "main", "missing", 7.0), "7");
}

static void testFormat() {
    CHECK_EQUAL(sprintf(Value("%d of %s"), 3, "ten"), "3 of ten");
    CHECK_EQUAL(sprintf(Value("%5.2f|%-4s|%04x"), 2.345, "ab", 255), " 2.35|ab  |00ff");
    CHECK_EQUAL(sprintf(Value("%d%%"), "50"), "50%");
    CHECK_EQUAL(sprintf(Value("%d %d"), 1), "1 ?");
    CHECK_EQUAL(sprintf("%s%d%d%d%d", "x", 2, 3, 4), "x234?");
    CHECK_EQUAL(sprintf(Value("%d %n %q"), "x", 2, 3), "? ? ?");
    CHECK_EQUAL(sprintf(Value("%9999999999999s|%s"), "x", 1), "?|1");
    CHECK_EQUAL(sprintf(Value("100%"), 1), "100%");
}

static void testFail() {
    std::string message;
    try {
        fail("went wrong");
    } catch (const char* caught) {
        message = caught;
    }
    CHECK_EQUAL(message, "went wrong");
}

static void testSystem() {
    CHECK(setEnvironmentVariable("ORVANE_CHECK", "\xC3\xA4"
                                                 "1"));
    CHECK(getEnvironmentVariable("ORVANE_CHECK") == "\xC3\xA4"
                                                    "1" &&
          getEnvironmentVariable("X Y").empty());
    CHECK(endsWith(getModuleFileName(), ".exe") && contains(getCommandLine(), "library_"));
    CHECK(!getUserName().empty() && !getComputerName().empty());
    CHECK(!openUrl("file:///C:/x") && contains(lastError(), "file:"));
    CHECK(findWindow("no such window anywhere").isNull() && !setCurrentDirectory("missing"));
    CHECK(outputDebugString("x") && consoleWrite("") && !getLastErrorString().empty());
}

int main() {
    testTextMeasures();
    testTextParts();
    testTextChanges();
    testTextConversion();
    testRounding();
    testFunctionsOfOneNumber();
    testWholeNumbers();
    testRandomNumbers();
    testLogic();
    testReadingLists();
    testChangingLists();
    testNewLists();
    testSharedValues();
    testEntries();
    testFiles();
    testFormat();
    testFail();
    testSystem();
    return finishChecks();
}
