// The JSON library: the samples of RFC 8259 and RFC 6901, round trips, and texts that are no JSON.
#include "import.hpp"

#include "checks.h"

static std::string shortForm(const std::string& text) {
    Value read = parseJson(text);
    return isJson(text) ? jsonText(read) : "no JSON: " + lastError();
}

static std::string problemOf(const std::string& text) {
    clearError();
    CHECK(parseJson(text).isNull());
    return lastError();
}

static void testKinds() {
    CHECK(parseJson("12").isInt() && parseJson("12.0").isFloat() && parseJson("1e2") == 100.0);
    CHECK(parseJson("-9223372036854775808").intVal == -9223372036854775807LL - 1);
    CHECK(parseJson("9223372036854775808").isFloat() && parseJson("-0").isInt());
    CHECK(parseJson(" true ").boolVal && parseJson("false") == false && parseJson("null").isNull());
    CHECK(parseJson("\"\"") == "" && parseJson("[]").isContainer() && parseJson("{}").isMap());
    CHECK_EQUAL(jsonType(parseJson("{}")), "object");
    CHECK(jsonType(1.5) == "number" && jsonType("x") == "string" && jsonType(Value()) == "null");
    CHECK(jsonType(true) == "boolean" && jsonType(parseJson("[]")) == "array");
}

// The two objects of RFC 8259, section 13, and its single values.
static void testSamples() {
    const std::string image =
        "{\"Image\": {\"Width\": 800, \"Height\": 600, \"Title\": \"View from 15th Floor\", "
        "\"Thumbnail\": {\"Url\": \"http://www.example.com/image/481989943\", \"Height\": 125, "
        "\"Width\": 100}, \"Animated\" : false, \"IDs\": [116, 943, 234, 38793]}}";
    CHECK_EQUAL(shortForm(image),
                "{\"Image\":{\"Animated\":false,\"Height\":600,\"IDs\":[116,943,234,38793],"
                "\"Thumbnail\":{\"Height\":125,\"Url\":\"http://www.example.com/image/481989943\","
                "\"Width\":100},\"Title\":\"View from 15th Floor\",\"Width\":800}}");
    CHECK_EQUAL(jsonGet(parseJson(image), "Image.IDs.3"), Value(38793));
    CHECK_EQUAL(shortForm("[{\"Latitude\": 37.7668, \"Longitude\": -122.3959}]"),
                "[{\"Latitude\":37.7668,\"Longitude\":-122.3959}]");
    CHECK_EQUAL(shortForm("\"Hello world!\""), "\"Hello world!\"");
}

static void testTexts() {
    CHECK_EQUAL(parseJson("\"\\\"\\\\\\/\\b\\f\\n\\r\\t\"").stringVal, "\"\\/\b\f\n\r\t");
    CHECK_EQUAL(parseJson("\"\\u00E4\\u4e2d\\uD834\\uDD1E\"").stringVal,
                "\xC3\xA4\xE4\xB8\xAD\xF0\x9D\x84\x9E");
    CHECK_EQUAL(parseJson("\"\\uD834x\"").stringVal, "\xEF\xBF\xBDx");
    CHECK_EQUAL(parseJson("\"\\uDD1E\\uD834\\u0041\"").stringVal, "\xEF\xBF\xBD\xEF\xBF\xBD"
                                                                  "A");
    CHECK_EQUAL(parseJson("\"\\u0000\"").stringVal.size(), 1u);
    CHECK_EQUAL(jsonText("a\"\\\n\x01\xC3\xA4/"), "\"a\\\"\\\\\\n\\u0001\xC3\xA4/\"");
    CHECK_EQUAL(jsonText("bad \xFF\xC3"), "\"bad \xEF\xBF\xBD\xEF\xBF\xBD\"");
    CHECK(jsonEscape("x") == "\"x\"" && jsonEscape(5) == "\"5\"");
    CHECK_EQUAL(shortForm("\xEF\xBB\xBF[1]"), "[1]");
}

static void testNumbersOut() {
    CHECK(jsonText(6.0) == "6.0" && jsonText(0.1) == "0.1" && jsonText(1e300) == "1e+300");
    CHECK(jsonText(-0.5) == "-0.5" && jsonText(12) == "12" && jsonText(1e15) == "1e+15");
    CHECK(jsonText(__builtin_nan("")) == "null" && jsonText(__builtin_inf()) == "null");
    CHECK(parseJson(jsonText(1e21)) == 1e21 && parseJson(jsonText(1.0 / 3.0)) == 1.0 / 3.0);
    CHECK(jsonText(Value::makeHandle(&checkCounts())) == "null");
}

static void testProblems() {
    CHECK_EQUAL(problemOf("[1,\n 2 3]"), "JSON: line 2, column 4: a comma or ] is expected");
    CHECK_EQUAL(problemOf("\xC3\xA4"), "JSON: line 1, column 1: a value is expected");
    CHECK_EQUAL(problemOf("{\"a\" 1}"), "JSON: line 1, column 6: a colon is expected");
    CHECK_EQUAL(problemOf("1 2"), "JSON: line 1, column 3: nothing more is expected");
    for (const char* text : {"",
                             " ",
                             "[",
                             "]",
                             "{",
                             "[1,]",
                             "[,1]",
                             "{\"a\":}",
                             "{\"a\":1,}",
                             "{a:1}",
                             "{1:2}",
                             "01",
                             "1.",
                             ".5",
                             "+1",
                             "1e",
                             "1e+",
                             "-",
                             "--1",
                             "0x10",
                             "NaN",
                             "Infinity",
                             "1e999",
                             "tru",
                             "TRUE",
                             "nul",
                             "'a'",
                             "\"",
                             "\"\\",
                             "\"\\x\"",
                             "\"\\u12\"",
                             "\"\\u12G4\"",
                             "\"a\nb\"",
                             "\"\t\"",
                             "[1}",
                             "{\"a\":1]",
                             "[1]]",
                             "\xFF",
                             "\"\xC3\"",
                             "\"\xED\xA0\x80\"",
                             "\"\xC0\xAF\"",
                             "// comment\n1",
                             "[1] x",
                             "\xEF\xBB"})
        CHECK(!isJson(text) && !lastError().empty());
}

// A depth that would take all stack is refused at once.
static void testDepth() {
    const std::string open(100000, '['), close(100000, ']');
    CHECK(problemOf(open + close).find("nested too deeply") != std::string::npos);
    CHECK(problemOf(open).find("nested too deeply") != std::string::npos);
    std::string objects;
    for (int i = 0; i < 100000; ++i) objects += "{\"a\":";
    CHECK(problemOf(objects).find("nested too deeply") != std::string::npos);
    CHECK(isJson(std::string(400, '[') + std::string(400, ']')));
    Value deep = 1;
    for (int i = 0; i < 2000; ++i) deep = std::vector<Value>(1, deep);
    clearError();
    CHECK(!jsonText(deep).empty() && !lastError().empty());
}

static void testTruncation() {
    const std::string whole =
        "{\"a\": [1.5e3, \"\\u00e4\\n\", true, null], \"b\": {\"c\": \"\xC3\xA4\"}}";
    CHECK(isJson(whole));
    for (size_t size = 0; size < whole.size(); ++size) CHECK(!isJson(whole.substr(0, size)));
}

static unsigned nextRandom() {
    static unsigned state = 12345;
    state = state * 1664525u + 1013904223u;
    return state >> 8;
}

static Value randomValue(int depth) {
    switch (nextRandom() % (depth > 4 ? 5 : 7)) {
    case 0:
        return Value();
    case 1:
        return (int)nextRandom() - 8000000;
    case 2:
        return (double)nextRandom() / 1024.0;
    case 3:
        return nextRandom() % 2 == 0;
    case 4:
        return std::string(nextRandom() % 9, (char)(nextRandom() % 127 + 1));
    case 5: {
        std::vector<Value> list;
        for (unsigned i = nextRandom() % 5; i > 0; --i) list.push_back(randomValue(depth + 1));
        return list;
    }
    default: {
        std::map<std::string, Value> dict;
        for (unsigned i = nextRandom() % 5; i > 0; --i)
            dict[std::to_string(nextRandom() % 99)] = randomValue(depth + 1);
        return dict;
    }
    }
}

static void testRoundTrips() {
    for (int i = 0; i < 500; ++i) {
        const Value v = randomValue(0);
        const std::string text = jsonText(v);
        CHECK(isJson(text) && jsonText(parseJson(text)) == text);
        CHECK(jsonText(parseJson(jsonPretty(v))) == text &&
              jsonText(parseJson(jsonPretty(v, 99))) == text);
    }
    CHECK_EQUAL(jsonPretty(parseJson("{\"a\":[1,{}],\"b\":[]}")),
                "{\n  \"a\": [\n    1,\n    {}\n  ],\n  \"b\": []\n}");
    CHECK_EQUAL(jsonPretty(parseJson("[1]"), 0), "[\n1\n]");
}

// The samples of RFC 6901, section 5.
static void testPointers() {
    const Value v =
        parseJson("{\"foo\": [\"bar\", \"baz\"], \"\": 0, \"a/b\": 1, \"c%d\": 2, "
                  "\"e^f\": 3, \"g|h\": 4, \"i\\\\j\": 5, \"k\\\"l\": 6, \" \": 7, \"m~n\": 8}");
    CHECK(jsonText(jsonGet(v, "")) == jsonText(v) &&
          jsonText(jsonGet(v, "/foo")) == "[\"bar\",\"baz\"]");
    CHECK(jsonGet(v, "/foo/0") == "bar" && jsonGet(v, "/") == 0 && jsonGet(v, "/a~1b") == 1);
    CHECK(jsonGet(v, "/c%d") == 2 && jsonGet(v, "/e^f") == 3 && jsonGet(v, "/g|h") == 4);
    CHECK(jsonGet(v, "/i\\j") == 5 && jsonGet(v, "/k\"l") == 6 && jsonGet(v, "/ ") == 7);
    CHECK(jsonGet(v, "/m~0n") == 8 && jsonGet(v, "foo.1") == "baz" &&
          jsonGet(v, "/foo/2").isNull());
    CHECK(jsonGet(v, "/foo/x", 9) == 9 && jsonGet(v, "nothing", "f") == "f" && jsonHas(v, "foo"));
    CHECK(!jsonHas(v, "foo.0.x") && !jsonHas(1, "a") && jsonGet(Value(), "a.b", 3) == 3);
    CHECK(!jsonHas(v, "foo.99999999999999999999") && !jsonHas(v, "foo.-1"));
}

static void testChanges() {
    Value v = Value();
    CHECK(jsonSet(v, "a.b", 1) && jsonSet(v, "a.list", std::vector<Value>()));
    CHECK(jsonSet(v, "a.list.-", "x") && jsonSet(v, "a.list.1", "y") &&
          jsonSet(v, "/a/list/0", "z"));
    CHECK_EQUAL(jsonText(v), "{\"a\":{\"b\":1,\"list\":[\"z\",\"y\"]}}");
    CHECK(!jsonSet(v, "a.b.c", 1) && !jsonSet(v, "a.list.5", 1) && !jsonSet(v, "a.list.x", 1));
    CHECK_EQUAL(jsonText(v), "{\"a\":{\"b\":1,\"list\":[\"z\",\"y\"]}}");
    CHECK(jsonRemove(v, "a.list.0") && jsonRemove(v, "a.b") && !jsonRemove(v, "a.b") &&
          !jsonRemove(v, ""));
    CHECK(!jsonRemove(v, "a.list.1") && !jsonRemove(v, "x.y"));
    CHECK_EQUAL(jsonText(v), "{\"a\":{\"list\":[\"y\"]}}");
    CHECK(jsonSet(v, "", 5) && v == 5);
}

// The table of RFC 7396, appendix A.
static void testMerge() {
    const char* rows[][3] = {
        {"{\"a\":\"b\"}", "{\"a\":\"c\"}", "{\"a\":\"c\"}"},
        {"{\"a\":\"b\"}", "{\"b\":\"c\"}", "{\"a\":\"b\",\"b\":\"c\"}"},
        {"{\"a\":\"b\"}", "{\"a\":null}", "{}"},
        {"{\"a\":\"b\",\"b\":\"c\"}", "{\"a\":null}", "{\"b\":\"c\"}"},
        {"{\"a\":[\"b\"]}", "{\"a\":\"c\"}", "{\"a\":\"c\"}"},
        {"{\"a\":\"c\"}", "{\"a\":[\"b\"]}", "{\"a\":[\"b\"]}"},
        {"{\"a\":{\"b\":\"c\"}}", "{\"a\":{\"b\":\"d\",\"c\":null}}", "{\"a\":{\"b\":\"d\"}}"},
        {"{\"a\":[{\"b\":\"c\"}]}", "{\"a\":[1]}", "{\"a\":[1]}"},
        {"[\"a\",\"b\"]", "[\"c\",\"d\"]", "[\"c\",\"d\"]"},
        {"{\"a\":\"b\"}", "[\"c\"]", "[\"c\"]"},
        {"{\"a\":\"foo\"}", "null", "null"},
        {"{\"a\":\"foo\"}", "\"bar\"", "\"bar\""},
        {"{\"e\":null}", "{\"a\":1}", "{\"a\":1,\"e\":null}"},
        {"[1,2]", "{\"a\":\"b\",\"c\":null}", "{\"a\":\"b\"}"},
        {"{}", "{\"a\":{\"bb\":{\"ccc\":null}}}", "{\"a\":{\"bb\":{}}}"}};
    for (const auto& row : rows)
        CHECK_EQUAL(jsonText(jsonMerge(parseJson(row[0]), parseJson(row[1]))), std::string(row[2]));
}

static void testLinesAndTables() {
    CHECK_EQUAL(jsonText(jsonLines("1\r\n\n {\"a\":2}\n")), "[1,{\"a\":2}]");
    CHECK(jsonLines("1\nx\n").arrayVal.empty() && jsonLines("").arrayVal.empty());
    CHECK_EQUAL(jsonText(jsonTable(parseJson("[{\"b\":1},{\"a\":2}]"))),
                "[[\"a\",\"b\"],[null,1],[2,null]]");
    CHECK(jsonTable(5).arrayVal.empty() && jsonTable(parseJson("[]")).arrayVal.empty());
}

static void testWrongKinds() {
    Value any[] = {Value(), 1, 2.5, "t", true, std::vector<Value>(), Value::makeObject("Shape")};
    for (Value& v : any) {
        CHECK(!jsonText(v).empty() && !jsonPretty(v, v).empty() && !jsonType(v).empty());
        jsonMerge(v, v);
        jsonTable(v);
        CHECK(jsonGet(v, "none.at.all", "f") == "f" && !jsonHas(v, "none"));
    }
}

int main() {
    testKinds();
    testSamples();
    testTexts();
    testNumbersOut();
    testProblems();
    testDepth();
    testTruncation();
    testRoundTrips();
    testPointers();
    testChanges();
    testMerge();
    testLinesAndTables();
    testWrongKinds();
    return finishChecks();
}
