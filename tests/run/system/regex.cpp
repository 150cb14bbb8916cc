// Regular expressions: what each part of a pattern means, and patterns that would take forever.
#include "import.hpp"

#include "checks.h"

#include <chrono>

static std::string joined(const Value& list) { return list.toString(); }

static void testPieces() {
    CHECK(regexTest("abc", "b") && !regexTest("abc", "x") && regexTest("", "") &&
          !regexTest("", "a"));
    CHECK(regexTest("a\nb", "a.b") == false && regexTest("a\nb", "(?s)a.b"));
    CHECK(regexMatches("2024-05", "\\d{4}-\\d\\d") && !regexMatches("2024-055", "\\d{4}-\\d\\d"));
    CHECK(regexFind("x12 y3", "[a-z]\\d+") == "x12" && regexFind("abc", "[^a-b]") == "c");
    CHECK(regexFind("a-b]c", "[-\\]]+") == "-" && regexFind("a]b", "[]]") == "]");
    CHECK(regexFind("tab\there", "\\s\\w+") == "\there" && regexFind("a_1-", "\\w+") == "a_1");
    CHECK(regexFind("ab12", "\\D+") == "ab" && regexFind("  x", "\\S") == "x" &&
          regexFind("a-b", "\\W") == "-");
    CHECK(regexFind("x.y", "\\.") == "." && regexFind("A\x42", "\\x42") == "B" &&
          regexFind("\xC3\xA4", "\\u00e4") == "\xC3\xA4");
    CHECK(regexFind("a1b2", "[\\d]") == "1" && regexFind("a b", "[^\\s\\d]+") == "a");
}

static void testPlaces() {
    CHECK(regexTest("one\ntwo", "^two") == false && regexTest("one\ntwo", "(?m)^two$"));
    CHECK(regexTest("one", "e$") && !regexTest("one\n", "e$") &&
          regexCount("a b  c", "\\b\\w") == 3);
    CHECK(regexFind("catalog cat", "\\bcat\\b") == "cat" &&
          regexIndex("catalog cat", "\\bcat\\b") == 8);
    CHECK(regexTest("concat", "\\Bcat") && !regexTest("cat", "\\Bcat"));
}

static void testRepetition() {
    CHECK(regexFind("aaa", "a{2}") == "aa" && regexFind("aaa", "a{2,}") == "aaa" &&
          regexFind("aaa", "a{1,2}?") == "a");
    CHECK(regexFind("<a><b>", "<.+>") == "<a><b>" && regexFind("<a><b>", "<.+?>") == "<a>");
    CHECK(regexFind("ab", "a?b") == "ab" && regexFind("xb", "xa??b") == "xb" &&
          regexFind("", "a*") == "");
    CHECK(regexMatches("abab", "(ab)*") && regexMatches("", "(ab)*") &&
          regexMatches("aXbX", "(?:[a-z]X)+"));
    CHECK(regexFind("a{b", "a{b") == "a{b" && regexFind("x{1,y", "x{1,y") == "x{1,y");
    CHECK(regexMatches("aaaa", "(a{2}){2}") && !regexMatches("aaa", "(a{2}){2}") &&
          regexMatches("", "(a*)*"));
    CHECK(regexMatches("b", "(a*|b)*") && regexMatches("abb", "(a|ab)(b|c)?b?") &&
          regexMatches("abc", "a(bc|b)c?"));
}

static void testGroups() {
    CHECK_EQUAL(joined(regexGroups("12:34", "(\\d+):(\\d+)")), "[12:34, 12, 34]");
    CHECK_EQUAL(joined(regexGroups("b", "(a)|(b)")), "[b, null, b]");
    CHECK_EQUAL(joined(regexGroups("ab", "((a)(b))")), "[ab, ab, a, b]");
    CHECK(regexGroups("x", "(y)").arrayVal.empty() && regexGroups("x", "(").arrayVal.empty());
    CHECK_EQUAL(joined(regexGroupsAll("a=1,b=2", "(\\w)=(\\d)")), "[[a=1, a, 1], [b=2, b, 2]]");
    CHECK(regexTest("abab", "^(ab)\\1$") && !regexTest("abac", "^(ab)\\1$"));
    CHECK(regexFind("say \"hi\" now", "([\"']).*?\\1") == "\"hi\"" && regexTest("b", "(a)?\\1b"));
}

static void testAlternatives() {
    CHECK(regexFind("green", "red|green|blue") == "green" && regexFind("ab", "a|ab") == "a");
    CHECK(regexMatches("ab", "a|ab") && regexMatches("", "a|") &&
          regexCount("one two", "one|two") == 2);
}

static void testFlags() {
    CHECK(regexTest("ADA", "(?i)ada") && regexTest("\xC3\x84", "(?i)\xC3\xA4") &&
          !regexTest("ADA", "ada"));
    CHECK(regexTest("B", "(?i)[a-c]") && !regexTest("B", "(?i)[^a-c]") &&
          regexTest("abAB", "(?i)^(ab)\\1$"));
    CHECK(regexNoCase("ada") == "(?i)ada" && regexNoCase("(?m)^a") == "(?im)^a" &&
          regexNoCase("(?:a)") == "(?i)(?:a)");
    CHECK(regexTest("x\nADA", "(?im)^ada$"));
}

static void testUnicode() {
    const std::string text = "Gr\xC3\xBC\xC3\x9F"
                             "e, \xE4\xB8\xAD\xE6\x96\x87 \xF0\x9F\x98\x80!";
    CHECK_EQUAL(joined(regexFindAll(text, "\\w+")), "[Gr\xC3\xBC\xC3\x9F"
                                                    "e, \xE4\xB8\xAD\xE6\x96\x87]");
    CHECK(regexIndex(text, "\xE4\xB8\xAD") == 7 && regexIndex(text, "!") == 11);
    CHECK(regexFind(text, "[\xF0\x9F\x98\x80-\xF0\x9F\x98\x8F]") == "\xF0\x9F\x98\x80" &&
          regexMatches("\xF0\x9F\x98\x80", "."));
    CHECK(regexCount("\xFF\xFE"
                     "a",
                     ".") == 3 &&
          regexFind("\xC3(", "\\(") == "(" && regexTest("\xC2\xA0", "\\s"));
}

static void testReplace() {
    CHECK_EQUAL(regexReplace("Ada Lovelace", "(\\w+) (\\w+)", "$2, $1"), "Lovelace, Ada");
    CHECK(regexReplace("a1b2", "\\d", "<$0>") == "a<1>b<2>" &&
          regexReplace("5", "5", "$$1") == "$1");
    CHECK(regexReplace("abc", "x*", "-") == "-a-b-c-" &&
          regexReplace("baac", "a*", "-") == "-b--c-");
    CHECK(regexReplaceFirst("aaa", "a", "b") == "baa" && regexReplace("x", "(", "y") == "x");
    CHECK(regexReplace("b", "(a)?b", "[$1]$9$") == "[]$" &&
          regexReplace("\xC3\xA4x", "x", "") == "\xC3\xA4");
}

static void testSplit() {
    CHECK_EQUAL(joined(regexSplit("a, b;c", "[,;]\\s*")), "[a, b, c]");
    CHECK_EQUAL(joined(regexSplit("abc", "")), "[a, b, c]");
    CHECK_EQUAL(joined(regexSplit(",a,", ",")), "[, a, ]");
    CHECK(joined(regexSplit("abc", "x")) == "[abc]" && joined(regexSplit("abc", "(")) == "[abc]");
}

static void testWrongPatterns() {
    for (const char* pattern :
         {"(",      ")",       "a)",   "(a",    "[",      "[a",        "*",
          "+a",     "?",       "a**",  "a+*",   "\\",     "a{2}{3}*+", "(?<n>a)",
          "(?=a)",  "(?x)a",   "(?i",  "\\1",   "(a)\\2", "[b-a]",     "\\q",
          "a{3,2}", "a{1001}", "\\x1", "\\u12", "^*",     "\\b+",      "(?"}) {
        clearError();
        CHECK(!regexIsValid(pattern) && lastError().compare(0, 8, "pattern:") == 0);
        CHECK(!regexTest("a", pattern) && regexFind("a", pattern).empty() &&
              regexCount("a", pattern) == 0);
    }
    CHECK(regexIsValid("") && regexIsValid("a{,2}") && regexIsValid("]") && regexIsValid("}"));
    CHECK_EQUAL((regexIsValid("ab("), lastError()), "pattern: a ) is missing at character 4");
}

// Each of these would try more ways than anybody can wait for.
static void testExplosions() {
    const auto start = std::chrono::steady_clock::now();
    const std::string many(40, 'a');
    for (const char* pattern : {"^(a+)+$", "^(a|aa)+$", "^(a*)*b", "(.*a){20}b", "^(a?){40}a{40}b",
                                "(a|a|a)*b", "^((a+)*)*$", "(x+x+)+y"}) {
        clearError();
        const std::string text =
            std::string(pattern) == "(x+x+)+y" ? std::string(40, 'x') : many + "!";
        CHECK(!regexTest(text, pattern));
        CHECK(regexReplace(text, pattern, "?") == text);
    }
    CHECK(regexTest(std::string(100000, 'a'), "^a*$") &&
          !regexTest(std::string(100000, 'a'), "^a*b"));
    CHECK(!regexIsValid("((a{1000}){1000}){1000}") && !regexIsValid(std::string(100000, '(')));
    CHECK(!regexIsValid(std::string(200, '(') + std::string(200, ')')));
    CHECK(regexCount(std::string(200000, 'a'), "a") == 200000);
    CHECK(std::chrono::steady_clock::now() - start < std::chrono::seconds(60));
}

static void testEscape() {
    const std::string odd = "a.b*c[d](e){f}\\^$|?+-";
    CHECK(regexMatches(odd, regexEscape(odd)) && regexEscape("abc") == "abc" &&
          regexEscape(1.5) == "1\\.5");
}

static void testWrongKinds() {
    for (const Value& v :
         {Value(), Value(1), Value(2.5), Value(true), Value(std::vector<Value>(2))}) {
        regexTest(v, v);
        regexReplace(v, v, v);
        regexSplit(v, v);
        regexGroupsAll(v, v);
    }
    CHECK(regexTest(15, "5") && regexFind(2.5, "\\.5") == ".5");
}

int main() {
    testPieces();
    testPlaces();
    testRepetition();
    testGroups();
    testAlternatives();
    testFlags();
    testUnicode();
    testReplace();
    testSplit();
    testWrongPatterns();
    testExplosions();
    testEscape();
    testWrongKinds();
    return finishChecks();
}
