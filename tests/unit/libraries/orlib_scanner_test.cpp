#include "libraries/orlib_scanner.h"

#include <gtest/gtest.h>

#include <chrono>

using namespace Orvane;

namespace {

using Texts = std::vector<std::string>;

// Every item in one line each: "using NAME=VALUE", "import PATH", "TYPE NAME(TYPE NAME,
// ...){BODY}".
std::string describe(const OrlibItem& item) {
    if (const auto* directive = std::get_if<OrlibUsing>(&item))
        return "using " + directive->name + "=" + directive->value;
    if (const auto* import = std::get_if<OrlibImport>(&item)) return "import " + import->path;
    const auto& entry = std::get<FunctionEntry>(item);
    std::string line = entry.returnType + " " + entry.name + "(";
    for (std::size_t index = 0; index < entry.paramNames.size(); ++index)
        line += (index ? ", " : "") + entry.paramTypes[index] + " " + entry.paramNames[index];
    return line + "){" + entry.body + "}";
}

Texts scan(std::string text) {
    OrlibScanner scanner(std::move(text));
    Texts items;
    while (const std::optional<OrlibItem> item = scanner.next()) items.push_back(describe(*item));
    return items;
}

std::string repeat(std::string_view piece, std::size_t count) {
    std::string text;
    text.reserve(piece.size() * count);
    while (count-- > 0) text += piece;
    return text;
}

// ---- Trimming ----

TEST(OrlibTrim, TakesBlanksTabsLineFeedsAndReturnsFromBothEnds) {
    EXPECT_EQ(OrlibScanner::trim(" \t\r\n a b \n\t\r "), "a b");
    EXPECT_EQ(OrlibScanner::trim("ab"), "ab");
}

TEST(OrlibTrim, AnAllBlankTextGivesAnEmptyResult) {
    EXPECT_EQ(OrlibScanner::trim(" \t\n\r"), "");
    EXPECT_EQ(OrlibScanner::trim(""), "");
}

TEST(OrlibTrim, VerticalTabsAndFormFeedsStay) { EXPECT_EQ(OrlibScanner::trim(" \v \f "), "\v \f"); }

// ---- Directives ----

TEST(OrlibUsing, IsANameAndAQuotedValue) {
    EXPECT_EQ(scan("using mode \"fast\";"), Texts{"using mode=fast"});
    EXPECT_EQ(scan("using\n\tx_1\v\"a b;c\"\f;"), Texts{"using x_1=a b;c"});
    EXPECT_EQ(scan("using empty \"\";"), Texts{"using empty="});
}

TEST(OrlibUsing, WithoutSemicolonOrValueOrNameIsSkipped) {
    EXPECT_EQ(scan("using mode \"fast\" int f() {}"), Texts{"int f(){}"});
    EXPECT_EQ(scan("using mode; int f() {}"), Texts{"int f(){}"});
    EXPECT_EQ(scan("using \"fast\"; int f() {}"), Texts{"int f(){}"});
    EXPECT_EQ(scan("using mode \"fast"), Texts{});
    EXPECT_EQ(scan("using"), Texts{});
}

TEST(OrlibUsing, TheWordMustStandAlone) {
    EXPECT_EQ(scan("usings x \"int f() {}\";"), Texts{"int f(){}"});
    EXPECT_EQ(scan("using_ x \"1\"; using9 x \"1\";"), Texts{});
}

TEST(OrlibImport, IsAQuotedPath) {
    EXPECT_EQ(scan("import \"strings.orlib\""), Texts{"import strings.orlib"});
    EXPECT_EQ(scan("import\"a/b c.orlib\";"), Texts{"import a/b c.orlib"});
    EXPECT_EQ(scan("import \n \"\""), Texts{"import "});
}

TEST(OrlibImport, WithoutAClosedPathIsSkipped) {
    EXPECT_EQ(scan("import \"strings.orlib"), Texts{});
    EXPECT_EQ(scan("import strings; int f() {}"), Texts{"int f(){}"});
    EXPECT_EQ(scan("imports \"x\" int f() {}"), Texts{"int f(){}"});
    EXPECT_EQ(scan("import"), Texts{});
}

TEST(OrlibImport, CountsInCommentsToo) {
    EXPECT_EQ(scan("// import \"old.orlib\"\n"), Texts{"import old.orlib"});
}

// ---- Functions ----

TEST(OrlibFunction, TheFourReturnTypesAreRecognised) {
    EXPECT_EQ(scan("value a() {} int b() {} bool c() {} string d() {}"),
              (Texts{"value a(){}", "int b(){}", "bool c(){}", "string d(){}"}));
}

TEST(OrlibFunction, DoubleAndOtherTypesAreNot) {
    EXPECT_EQ(scan("double f() { return 1; }"), Texts{});
    EXPECT_EQ(scan("void f() {}"), Texts{});
    EXPECT_EQ(scan("Value f() {}"), Texts{});
    EXPECT_EQ(scan("integer f() {}"), Texts{});
    EXPECT_EQ(scan("int_ f() {}"), Texts{});
}

TEST(OrlibFunction, TheBodyIsTrimmedTextBetweenTheBalancedBraces) {
    EXPECT_EQ(scan("int f() {\n    if (x) { y(); }\n    return 1;\n}\n"),
              Texts{"int f(){if (x) { y(); }\n    return 1;}"});
    EXPECT_EQ(scan("int f() {{}{{}}}int g(){ }"), (Texts{"int f(){{}{{}}}", "int g(){}"}));
}

TEST(OrlibFunction, BracesInStringsAndCommentsOfTheBodyCount) {
    EXPECT_EQ(scan("int f() { return \"}\"; }"), Texts{"int f(){return \"}"});
    EXPECT_EQ(scan("int f() { /* { */ } int g() { x }"), Texts{"int g(){x}"});
}

TEST(OrlibFunction, TheBodyStartsAtTheNextBraceWhateverStandsBefore) {
    EXPECT_EQ(scan("int f() const noexcept { a }"), Texts{"int f(){a}"});
    EXPECT_EQ(scan("int f();\nint g() { b }"), Texts{"int f(){b}"});
}

TEST(OrlibFunction, TheNameMayHoldDigitsAndStartWithOne) {
    EXPECT_EQ(scan("int f2_x() {} int 9() {}"), (Texts{"int f2_x(){}", "int 9(){}"}));
}

TEST(OrlibFunction, WhiteSpaceBetweenNameAndParenthesisIsNotAccepted) {
    EXPECT_EQ(scan("int f () {}"), Texts{});
}

TEST(OrlibFunction, AllSixWhiteSpaceCharactersSeparate) {
    EXPECT_EQ(scan("\v\f\r\n\t int\v\f\r\n\t f() {}"), Texts{"int f(){}"});
}

TEST(OrlibFunction, AWithoutItsClosingPiecesIsSkipped) {
    EXPECT_EQ(scan("int f("), Texts{});
    EXPECT_EQ(scan("int f()"), Texts{});
    EXPECT_EQ(scan("int f() {"), Texts{});
    EXPECT_EQ(scan("int f"), Texts{});
    EXPECT_EQ(scan("int"), Texts{});
}

TEST(OrlibFunction, AMalformedOneDoesNotHideTheNext) {
    EXPECT_EQ(scan("int f() { int g() { x }"), Texts{"int g(){x}"});
    EXPECT_EQ(scan("int int f() {}"), Texts{"int f(){}"});
    EXPECT_EQ(scan("value; bool ok() {}"), Texts{"bool ok(){}"});
}

TEST(OrlibFunction, ParametersAreTypeAndName) {
    EXPECT_EQ(scan("int f(value a, int b,string\tc) {}"),
              Texts{"int f(value a, int b, string c){}"});
}

TEST(OrlibFunction, AParameterPieceIsSplitAtItsFirstRunOfBlanks) {
    EXPECT_EQ(scan("int f( Value&  a ,const string& s) {}"),
              Texts{"int f(Value& a, const string& s){}"});
}

TEST(OrlibFunction, AParameterOfOneWordIsAValue) {
    EXPECT_EQ(scan("int f(a, b) {}"), Texts{"int f(value a, value b){}"});
}

TEST(OrlibFunction, AnEmptyParameterPieceGivesNone) {
    EXPECT_EQ(scan("int f(,int a, ,) {}"), Texts{"int f(int a){}"});
    EXPECT_EQ(scan("int f(  ) {}"), Texts{"int f(){}"});
}

TEST(OrlibFunction, ParametersEndAtTheFirstClosingParenthesis) {
    EXPECT_EQ(scan("int f(int (*g)(int)) { x }"), Texts{"int f(int (*g){x}"});
}

TEST(OrlibFunction, FieldsOfTheLoaderStayUnset) {
    OrlibScanner scanner("int f(int a) { x }");
    const auto item = scanner.next();
    ASSERT_TRUE(item && std::holds_alternative<FunctionEntry>(*item));
    EXPECT_FALSE(std::get<FunctionEntry>(*item).flag);
    EXPECT_TRUE(std::get<FunctionEntry>(*item).extraList.empty());
}

// ---- What is skipped ----

TEST(OrlibScanner, CommentsStraySemicolonsAndUnknownWordsAreSkipped) {
    EXPECT_EQ(scan("// a comment\n;;\n#include <x>\nstatic int f() {}\n/* end */"),
              Texts{"int f(){}"});
}

TEST(OrlibScanner, AnUnknownWordTakesTheCharacterBehindItAlong) {
    EXPECT_EQ(scan("word\"x\" int f() {}"), Texts{"int f(){}"});
    // The digit goes with the word, so that the type is read from its start.
    EXPECT_EQ(scan("word9int f() {}"), Texts{"int f(){}"});
    EXPECT_EQ(scan("wordint f() {}"), Texts{});
}

TEST(OrlibScanner, ACharacterThatStartsNoWordIsSkippedAlone) {
    EXPECT_EQ(scan("9int f() {}"), Texts{"int f(){}"});
    EXPECT_EQ(scan(")}{int f() {}"), Texts{"int f(){}"});
    EXPECT_EQ(scan("\xEF\xBB\xBFint f() {}"), Texts{"int f(){}"});
}

TEST(OrlibScanner, BytesOutsideAsciiAreNoLetters) {
    EXPECT_EQ(scan("int f\xC3\xBC() {}"), Texts{});
    EXPECT_EQ(scan("\xC3\xBCint f() {}"), Texts{"int f(){}"});
}

TEST(OrlibScanner, ZeroBytesAreSkipped) {
    EXPECT_EQ(scan(std::string("\0int f() { \0 }", 15)), Texts{std::string("int f(){\0}", 10)});
}

TEST(OrlibScanner, TheExampleOfTheManualIsAccepted) {
    EXPECT_EQ(scan("using mode \"fast\";\n"
                   "import \"strings.orlib\"\n"
                   "string greet(string name) {\n"
                   "    return \"Hello, \" + name;\n"
                   "}\n"),
              (Texts{"using mode=fast", "import strings.orlib",
                     "string greet(string name){return \"Hello, \" + name;}"}));
}

TEST(OrlibScanner, AFailedAttemptLeavesThePositionAndTheResultAlone) {
    OrlibScanner scanner("using a import b int c(");
    std::size_t position = 0;
    OrlibUsing directive{"name", "value"};
    EXPECT_FALSE(scanner.parseUsing(position, directive));
    OrlibImport import{"path"};
    position = 8;
    EXPECT_FALSE(scanner.parseImport(position, import));
    EXPECT_EQ(position, 8u);
    FunctionEntry entry{.name = "kept"};
    position = 17;
    EXPECT_FALSE(scanner.parseFunction(position, entry));
    EXPECT_EQ(position, 17u);
    EXPECT_EQ(directive.name, "name");
    EXPECT_EQ(import.path, "path");
    EXPECT_EQ(entry.name, "kept");
}

TEST(OrlibScanner, ASuccessfulAttemptGoesPastTheConstruct) {
    OrlibScanner scanner("using a \"b\"; import \"c\" int d() { } x");
    std::size_t position = 0;
    OrlibUsing directive;
    EXPECT_TRUE(scanner.parseUsing(position, directive));
    EXPECT_EQ(position, 12u);
    position = 13;
    OrlibImport import;
    EXPECT_TRUE(scanner.parseImport(position, import));
    EXPECT_EQ(position, 23u);
    FunctionEntry entry;
    EXPECT_TRUE(scanner.parseFunction(position, entry));
    EXPECT_EQ(position, 35u);
}

TEST(OrlibScanner, EmptyAndBlankTextsHoldNothing) {
    EXPECT_EQ(scan(""), Texts{});
    EXPECT_EQ(scan(" \n\t"), Texts{});
}

// ---- Texts made to be expensive: each would take hours if it were read more than a few times ----

struct Expensive {
    const char* name;
    std::string text;
    std::size_t items;
};

class OrlibScannerTime : public testing::TestWithParam<Expensive> {};

TEST_P(OrlibScannerTime, GrowsWithTheLengthOnly) {
    const auto start = std::chrono::steady_clock::now();
    EXPECT_EQ(scan(GetParam().text).size(), GetParam().items);
    const std::chrono::duration<double> seconds = std::chrono::steady_clock::now() - start;
    EXPECT_LT(seconds.count(), 30.0);
}

constexpr std::size_t many = 500'000;

INSTANTIATE_TEST_SUITE_P(
    Texts, OrlibScannerTime,
    testing::Values(
        Expensive{"Identifiers", repeat("identifier ", 4 * many), 0},
        Expensive{"OneLongWord", repeat("a", 20 * many), 0},
        Expensive{"OneLongRunOfTypesAndDigits", repeat("int1", 4 * many), 0},
        Expensive{"ReturnTypes", repeat("int ", 4 * many), 0},
        Expensive{"OpenParentheses", repeat("value f(", many), 0},
        Expensive{"ParametersWithoutBody", repeat("value f() ", many), 0},
        Expensive{"UnclosedBodies", repeat("value f() {", many), 0},
        Expensive{"UnclosedBodiesAroundClosedOnes", repeat("int f() { int g() {}", many), many},
        Expensive{"OpenBraces", "int f() " + repeat("{", 10 * many), 0},
        Expensive{"ClosingBraces", "int f() {" + repeat("}", 10 * many), 1},
        Expensive{"UsingsWithoutEnd", repeat("using a \"", 2 * many), 0},
        Expensive{"UsingsWithoutValue", repeat("using a", 2 * many), 0},
        Expensive{"ImportsWithoutEnd", repeat("import ", 2 * many) + "\"", 0},
        Expensive{"Parameters", "int f(" + repeat("a,", 2 * many) + ") {}", 1},
        Expensive{"Functions", repeat("int f(int a) { return a; }\n", many / 4), many / 4},
        Expensive{"Blanks", repeat(" ", 20 * many), 0}),
    [](const auto& text) { return std::string(text.param.name); });

} // namespace
