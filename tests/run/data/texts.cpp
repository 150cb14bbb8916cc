// text and the rest of string, with letters of several scripts, emoji, combining marks and broken
// UTF-8.
#include "import.hpp"

#include "../checks.h"
#include "../lists.h"

#include <chrono>

static const std::string ae = "\xC3\xA4", bigAe = "\xC3\x84", china = "\xE4\xB8\xAD",
                         smile = "\xF0\x9F\x98\x80";
static const std::string acute = "e\xCC\x81"; // e with a combining mark

static void testStrings() {
    CHECK(countText("banana", "an") == 2 && countText("aaa", "aa") == 1 &&
          countText("abc", "") == 0);
    CHECK(compareText("a", "b") == -1 && compareText("b", "a") == 1 && compareText("a", "a") == 0);
    CHECK(compareText("z", ae) == -1 && compareText("", Value()) == 0);
    CHECK(insertText(ae + china, 1, "x") == ae + "x" + china && insertText("ab", 9, "x") == "abx");
    CHECK(insertText("ab", -5, "x") == "xab" && removeText("abcdef", 2, 2) == "abef");
    CHECK(removeText(ae + smile + china, 1, 1) == ae + china && removeText("abc", 1, 99) == "a" &&
          removeText("abc", 9, 1) == "abc");
    CHECK(removeText("abc", -1, 2) == "bc" && removeText("abc", 1, -2) == "abc");
    CHECK(charOf(0).empty() && charOf(0x7FF) == "\xDF\xBF" && charOf(0xFFFF) == "\xEF\xBF\xBF");
    CHECK(charOf(0x110000).empty() && charOf(-5).empty() && charOf("65") == "A");
    CHECK_EQUAL(padLeft("x", 5, ae + china), ae + china + ae + china + "x");
    CHECK_EQUAL(padRight("x", 1000000, ".").size(), 1000000u);
}

static void testWords() {
    CHECK_EQUAL(words(" three\tlittle \r\n words" + std::string("\xE3\x80\x80") + "end").toString(),
                "[three, little, words, end]");
    CHECK(words("").arrayVal.empty() && words(" \n ").arrayVal.empty() &&
          words(12.0).toString() == "[12]");
    CHECK(wordCount("a b  c") == 3 && wordCount(Value()) == 0 &&
          wordCount(std::string(100000, ' ')) == 0);
    CHECK(lineCount("") == 0 && lineCount("a") == 1 && lineCount("a\n") == 1 &&
          lineCount("a\r\n\nb") == 3);
    CHECK_EQUAL(wordWrap("three little words", 12), "three little\nwords");
    CHECK_EQUAL(wordWrap("three little words", 11), "three\nlittle\nwords");
    CHECK(wordWrap("abcdefgh ij", 3) == "abc\ndef\ngh\nij" && wordWrap("a b", 0) == "a b");
    CHECK(wordWrap("one\n\ntwo", 10) == "one\n\ntwo" && wordWrap("", 5).empty());
    CHECK_EQUAL(wordWrap(ae + ae + " " + china + smile, 2), ae + ae + "\n" + china + smile);
    CHECK(indent("one\n\ntwo\n", 2) == "  one\n\n  two\n" && indent("x", -1) == "x" &&
          indent("x", 1e9) == "x");
    CHECK(dedent("  one\n    two\n\n  three") == "one\n  two\n\nthree" &&
          dedent("a\n  b") == "a\n  b");
    CHECK(dedent("\tone\n\ttwo") == "one\ntwo" && dedent("\tone\n  two") == "\tone\n  two" &&
          dedent("").empty());
    CHECK(squeeze("a  b\t\t c\n\n d") == "a b c\n\n d" && squeeze("").empty());
    CHECK(truncate(Value("three little"), Value(6)) == "three\xE2\x80\xA6" &&
          truncate(Value("abc"), Value(3)) == "abc");
    CHECK(truncate(Value(smile + smile), Value(1)) == "\xE2\x80\xA6" &&
          truncate(Value("abc"), Value(0)).empty());
    CHECK(centerText("abc", 8) == "  abc   " && centerText("abc", 2) == "abc" &&
          centerText("x", 2e9) == "x");
}

static void testCases() {
    CHECK(capitalize("apple pie") == "Apple pie" && capitalize(ae + "b") == bigAe + "b" &&
          capitalize("").empty());
    CHECK(titleCase("three little\n" + ae + "x") == "Three Little\n" + bigAe + "x" &&
          titleCase(smile + "a") == smile + "a");
    CHECK(swapCase("aB1" + ae + china) == "Ab1" + bigAe + china && swapCase("").empty());
    CHECK(camelCase("hello big world") == "helloBigWorld" &&
          camelCase("HTTPServer id") == "httpServerId");
    CHECK(snakeCase("helloBigWorld") == "hello_big_world" && snakeCase("utf8Text") == "utf8_text");
    CHECK(kebabCase("Hello, World!") == "hello-world" && kebabCase("--") == "" &&
          kebabCase("") == "");
    CHECK(slug("Hello, World! 2024") == "hello-world-2024" &&
          slug(bigAe + "pfel & Birnen") == ae + "pfel-birnen");
    CHECK(slug("helloWorld") == "helloworld" && slug(acute + "t" + acute) == acute + "t" + acute);
    CHECK(isLetter("ab" + ae + china) && !isLetter("a1") && !isLetter("") && isLetter(acute) &&
          !isLetter("\xCC\x81"));
    CHECK(!isLetter(smile) && isLetter("\xF0\xA0\x80\x80") && !isLetter("\xFF"));
    CHECK(isDigits("0123") && !isDigits("") && !isDigits("1.5") && isDigits(42) &&
          !isDigits("\xD9\xA1"));
    CHECK(isLetterOrDigit("ab1" + ae) && isLetterOrDigit("\xD9\xA1") && !isLetterOrDigit("a b") &&
          !isLetterOrDigit(""));
    CHECK(isBlank("") && isBlank(" \t\n") && isBlank(Value()) && !isBlank("a "));
    CHECK(isUpperCase("ABC 1") && !isUpperCase("AbC") && !isUpperCase("12") && isUpperCase(bigAe));
    CHECK(isLowerCase("abc 1") && !isLowerCase("aB") && !isLowerCase("") &&
          isLowerCase(ae + china));
}

static void testQuoting() {
    CHECK_EQUAL(escapeHtml("<a href=\"x\">Tom & 'Ann'</a>"),
                "&lt;a href=&quot;x&quot;&gt;Tom &amp; &#39;Ann&#39;&lt;/a&gt;");
    CHECK_EQUAL(unescapeHtml("&lt;b&gt; &amp;amp; &#228;&#xE4;&auml; &nope; &#0; &#x110000; & &"),
                "<b> &amp; " + ae + ae + ae + " &nope; &#0; &#x110000; & &");
    CHECK(unescapeHtml(escapeHtml("a&lt;\"'")) == "a&lt;\"'" && unescapeHtml("&#128512;") == smile);
    CHECK(quoteText("say \"hi\"") == "\"say \"\"hi\"\"\"" && quoteText("") == "\"\"");
}

static void testCsv() {
    CHECK_EQUAL(parseCsv("a,b\r\n1,\"x, \"\"y\"\"\nz\"\n").toString(),
                "[[a, b], [1, x, \"y\"\nz]]");
    CHECK(parseCsv("").arrayVal.empty() && parseCsv("a,").toString() == "[[a, ]]" &&
          parseCsv("\n").toString() == "[[]]");
    CHECK_EQUAL(parseCsv("\n").arrayVal[0].arrayVal.size(), 1u);
    CHECK(parseCsv("\"open").toString() == "[[open]]" &&
          parseCsv("\"\"").arrayVal[0].arrayVal.size() == 1);
    CHECK_EQUAL(parseCsv("a\n\nb").arrayVal.size(), 3u);
    CHECK_EQUAL(
        csvText(listOf({listOf({"a", 1, 2.5}), listOf({"x, \"y\"", "", "l\nm"}), "single"})),
        "a,1,2.5\r\n\"x, \"\"y\"\"\",,\"l\nm\"\r\nsingle\r\n");
    const Value rows = listOf({listOf({"a\r\nb", "\"", ","}), listOf({""}), listOf({ae, " x "})});
    CHECK(parseCsv(csvText(rows)).toString() == rows.toString() && csvText(5).empty());
    CHECK_EQUAL(parseCsv(std::string(1000000, ',')).arrayVal[0].arrayVal.size(), 1000001u);
}

static void testTemplates() {
    const Value user = dictWith({{"name", "Ann"}, {"n", 6.0}, {"loop", "${loop}"}});
    CHECK_EQUAL(fillTemplate("Hello ${name}, ${ n } of ${missing} ${loop} ${", user),
                "Hello Ann, 6 of ${missing} ${loop} ${");
    CHECK(fillTemplate("${${name}}", user) == "${Ann}" && fillTemplate("x", 5) == "x" &&
          fillTemplate("$name", user) == "$name");
    std::string many;
    for (int i = 0; i < 100000; ++i) many += "${name}";
    CHECK_EQUAL(fillTemplate(many, user).size(), 300000u);
}

static void testSimilarity() {
    CHECK(editDistance("kitten", "sitting") == 3 && editDistance("", "abc") == 3 &&
          editDistance("abc", "abc") == 0);
    CHECK(editDistance("flaw", "lawn") == 2 && editDistance("a" + smile, "a" + ae) == 1 &&
          editDistance("saturday", "sunday") == 3);
    CHECK(similarity("", "") == 1.0 && similarity("abc", "xyz") == 0.0 &&
          similarity("abcd", "abcx") == 0.75);
    CHECK_EQUAL(editDistance(std::string(100000, 'a'), std::string(100000, 'b')), -1);
    CHECK_EQUAL(editDistance(std::string(100000, 'a'), std::string(100001, 'a')), 1);
    CHECK(commonPrefix("interview", "internet") == "inter" && commonPrefix(ae, "\xC3\xB6").empty());
    CHECK(commonPrefix("abc", "abcd") == "abc" && commonPrefix("", "x").empty() &&
          commonPrefix("ab", "a") == "a");
    CHECK(naturalCompare("file9", "file10") == -1 && naturalCompare("a", "a") == 0 &&
          naturalCompare("b2", "b1") == 1);
}

static void testBrokenAndLargeTexts() {
    const std::string broken = "a\xC3(\xFF\xE4\xB8";
    for (const Value& text :
         {words(broken), Value(titleCase(broken)), Value(swapCase(broken)), Value(slug(broken)),
          Value(wordWrap(broken, 1)), Value(truncate(Value(broken), Value(2)))})
        CHECK(!text.toString().empty());
    CHECK(editDistance(broken, "") == 6 && commonPrefix(broken, broken) == broken);
    const auto start = std::chrono::steady_clock::now();
    const std::string large(2000000, 'x');
    CHECK(length(large) == 2000000 && substring(large, 1999999) == "x" &&
          indexOf(large, "y") == -1);
    CHECK(wordCount(large) == 1 && capitalize(large).size() == large.size() && isLetter(large));
    CHECK_EQUAL(wordWrap(large, 1000).size(), 2000000u + 1999u);
    CHECK_EQUAL(wordWrap(large, 1).size(), 2000000u + 1999999u);
    CHECK(reverseText(large) == large && titleCase(large).size() == large.size() &&
          swapCase(large)[0] == 'X');
    CHECK(std::chrono::steady_clock::now() - start < std::chrono::seconds(60));
}

int main() {
    testStrings();
    testWords();
    testCases();
    testQuoting();
    testCsv();
    testTemplates();
    testSimilarity();
    testBrokenAndLargeTexts();
    return finishChecks();
}
