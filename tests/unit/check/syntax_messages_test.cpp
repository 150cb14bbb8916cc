#include "check/parsed_source.h"

#include <gtest/gtest.h>

using namespace Orvane;

namespace {

// "id 'marked text': message" of every diagnostic.
std::vector<std::string> messagesOf(const std::string& text) {
    const ParsedSource source("a.vorla", text);
    std::vector<std::string> found;
    for (const Diagnostic& diagnostic : source.diagnostics())
        found.push_back(std::string(messageOf(diagnostic.id).id) + " '" +
                        std::string(source.source().part(diagnostic.range)) +
                        "': " + diagnostic.text);
    return found;
}

std::vector<std::string> inFunction(const std::string& statement) {
    return messagesOf("go() {\n    value a = 1;\n    " + statement + "\n    print(a);\n}\n");
}

std::vector<std::string> inWindow(const std::string& member) {
    return messagesOf("vorla Main {\n    " + member + "\n    width = 3;\n}\n");
}

std::vector<std::string> atTop(const std::string& declaration) {
    return messagesOf(declaration + "\n\nvorla Main {\n    width = 3;\n}\n");
}

using Messages = std::vector<std::string>;

struct Case {
    const char* source;
    const char* message;
};

} // namespace

TEST(SyntaxMessages, recogniseStatementsOfOtherLanguages) {
    const Case cases[] = {
        {"if (a == 1 && a == 2) print(a);", "logical-operator '&&': the language has no '&&'"},
        {"if (a == 1 or a == 2) print(a);", "logical-operator 'or': the language has no 'or'"},
        {"if (not a) print(a);", "logical-operator 'not': the language has no 'not'"},
        {"if (a === 1) print(a);",
         "unknown-operator '===': '===' is not an operator of the language"},
        {"a = a << 2;", "unknown-operator '<<': '<<' is not an operator of the language"},
        {"a = a & 2;", "unknown-operator '&': '&' is not an operator of the language"},
        {"a++;", "increment '++': the language has no '++'"},
        {"--a--;", "increment '--': the language has no '--'"},
        {"a += 2;", "compound-assignment '+=': the language has no '+='"},
        {"a->go();", "member-arrow '->': a member stands behind '.', not behind '->'"},
        {"std::go();", "scope-operator '::': the language has no '::'"},
        {"a = [];", "empty-list '[]': an empty list is not written '[]'"},
        {"a = new Point(1);", "new-word 'new': objects are made without 'new'"},
        {"a = function(b) { print(b); };",
         "function-value 'function': a function cannot be written as a value"},
        {"a = Point { x: 1 };", "field-sign ':': a field gets its value with '='"},
        {"a = 0x10;", "number-form '0x10': '0x10' is not a number of the language"},
        {"a = .5;", "number-form '.5': '.5' is not a number of the language"},
        {"print(f\"x\");", "text-prefix 'f': nothing can stand directly in front of a text"},
        {"print(\"a \"b\" c\");", "inner-quote '\"a \"': the text ends in front of 'b'"},
        {"int b = (int) a;", "cast '(int)': a type in brackets does not convert a value"},
        {"value größe = 1;", "name-letters 'größe': a name cannot have the letters 'größe'"},
        {"a = @b;", "unknown-character '@': '@' means nothing in the language"},
        {"# note", "comment-sign '#': '#' does not begin a comment"},
        {"#include <x>",
         "preprocessor-line '#include': there are no lines with '#' in the language"},
        {"for (int i = 0; i < 9; i++) { print(i); }",
         "counting-for '=': there is no counting 'for'"},
        {"for (x in a) { print(x); }",
         "for-in 'in': a loop over a list is 'for' with ':', not 'in'"},
        {"for (i : 0..9) print(i);",
         "range-without-brackets '..': a range stands in square brackets"},
        {"if (a) { } elif (a) { }", "else-if-word 'elif': there is no 'elif'"},
        {"if (a) then print(a);", "then-word 'then': 'if' has no 'then'"},
        {"end if", "block-end-word 'end': a block does not end with 'end'"},
        {"if (a) print(a); print(a); else print(a);",
         "lone-else 'else': there is no 'if' for this 'else'"},
        {"switch (a) { case 1: print(a); }", "no-switch 'switch': the language has no 'switch'"},
        {"do { print(a); } while (a == 1);", "no-do-loop 'do': the language has no 'do'"},
        {"unless (a) { print(a); }",
         "unknown-statement 'unless': no statement begins with 'unless'"},
        {"try { } catch (Error e) { }",
         "typed-catch 'Error e': 'catch' takes one name without a type"},
        {"when (a) { case 1 -> print(a); }",
         "when-case 'case': a case of 'when' does not begin like this"},
        {"const int b = 3;", "declaration-word 'const': 'const' does not begin a declaration"},
        {"int b = 1, c = 2;", "several-variables ',': a declaration has one variable"},
        {"int b[3];", "array-declaration '[': a list is not declared with '[]'"},
        {"int b(3);", "declaration-with-arguments '(': a variable gets its value with '='"},
        {"int* b = 3;", "pointer-type '*': there are no pointers and references"},
        {"value b: int = 3;", "type-behind-name ':': a type stands in front of its name"},
        {"List<int> b = a;", "type-arguments 'List<int': 'List' has no types in '<' and '>'"},
        {"print(a);;", "empty-statement ';': there is no statement in front of this ';'"},
        {"a = class;", "misplaced-word 'class': 'class' cannot stand here"},
        {"int b(int c) { return c; }",
         "nested-function 'int b': a function cannot stand inside of another one"},
        {"function b() { }",
         "nested-function 'function b': a function cannot stand inside of another one"},
    };
    for (const Case& each : cases) EXPECT_EQ(inFunction(each.source), Messages{each.message});
}

TEST(SyntaxMessages, sayWhatIsMissing) {
    const Case cases[] = {
        {"a = 2", "missing-semicolon '': ';' is missing here"},
        {"print(a;", "missing-closer '': ')' is missing in front of ';'"},
        {"a = a[1;", "missing-closer '': ']' is missing in front of ';'"},
        {"if a == 1 { print(a); }", "missing-parenthesis '': '(' is missing behind 'if'"},
        {"print(1 2);", "missing-comma '': ',' is missing in front of '2'"},
        {"print(1, );", "trailing-comma ',': nothing follows the ','"},
        {"print(1));", "extra-closer ')': there is no '(' for this ')'"},
        {"a = a == 1 ? 2;", "ternary-without-colon '': ':' is missing behind the value for 'true'"},
        {"try { }", "try-without-catch '': 'catch' is missing behind the block of 'try'"},
        {"int file = 3;",
         "keyword-as-name 'file': 'file' is a word of the language and cannot be a name"},
        {"a = 2 * ;", "syntax-error ';': a value is expected here, not ';'"},
    };
    for (const Case& each : cases) EXPECT_EQ(inFunction(each.source), Messages{each.message});
}

TEST(SyntaxMessages, recogniseLiteralsInTheWrongQuotes) {
    EXPECT_EQ(inFunction("print('hello');"),
              Messages{"single-quoted-text ''hello'': a text stands in double quotes, not in "
                       "single ones"});
    EXPECT_EQ(inFunction("print(“hello”);"),
              Messages{"curved-quotes '“hello”': a text stands in straight double quotes"});
    EXPECT_EQ(inFunction("print(\"hello);"),
              Messages{"unterminated-text '\"hello': this text has no closing '\"'"});
    EXPECT_EQ(inFunction("a = 'ab;"),
              Messages{"unterminated-character ''a': this character has no closing quote"});
    EXPECT_EQ(inFunction("' note"), Messages{"comment-sign ''': ''' does not begin a comment"});
    EXPECT_EQ(inFunction("a = 99999999999;"),
              Messages{"number-too-large '99999999999': the number 99999999999 is too large"});
}

TEST(SyntaxMessages, recogniseDeclarations) {
    const Case cases[] = {
        {"int go(int);", "parameter-without-name 'int': the parameter has no name"},
        {"int go(int a);", "function-without-body 'go': the function 'go' has no body"},
        {"go(1);", "call-outside 'go': a call cannot stand outside of functions"},
        {"go(a = 1) { }", "default-argument '=': a parameter cannot have a default value"},
        {"go(a: int) { }", "type-behind-name ':': a type stands in front of its name"},
        {"go(int& a) { }", "pointer-type '&': there are no pointers and references"},
        {"go(int file) { }",
         "keyword-as-name 'file': 'file' is a word of the language and cannot be a name"},
        {"class A { int b = 1; }",
         "field-initialiser '=': a field cannot have a value in the class"},
        {"class A extends B { }",
         "class-inheritance 'extends': a class has only a name in front of its '{'"},
        {"class A { static int b; }",
         "declaration-word 'static': 'static' does not begin a declaration"},
        {"import <math>;", "import-form 'import <': this is no form of 'import'"},
        {"Main.script { on click { } }",
         "handler-without-control 'on click': a handler in a script names its control"},
    };
    for (const Case& each : cases) EXPECT_EQ(atTop(each.source), Messages{each.message});
    EXPECT_EQ(inWindow("button { }"),
              Messages{"component-without-name 'button': the button has no name"});
    EXPECT_EQ(inWindow("on start { }"),
              Messages{"window-event 'on start': the window itself has no events"});
}

TEST(SyntaxMessages, warnAboutWhatIsSkipped) {
    const Case top[] = {
        {"enum A { B };", "skipped-tokens 'enum A { B };': the compiler skips 'enum A { B };'"},
        {"class A { };", "extra-semicolon ';': this ';' has no meaning"},
        {"go() { } }", "extra-brace '}': there is no '{' for this '}'"},
        {"int a = 1;",
         "variable-outside 'int a': a variable cannot stand outside of functions; 'a' "
         "is skipped"},
        {"button ok { }", "control-outside 'button ok': a control cannot stand outside of the "
                          "window; 'button ok' is skipped"},
        {"ok.click { }", "handler-outside 'ok.click': a handler cannot stand outside of a script; "
                         "'ok.click' is skipped"},
        {"return 1;", "statement-outside 'return': a statement cannot stand outside of functions; "
                      "'return' is skipped"},
    };
    for (const Case& each : top) EXPECT_EQ(atTop(each.source), Messages{each.message});
    const Case window[] = {
        {"title: \"x\";", "property-without-value 'title': 'title' is skipped: no '=' follows"},
        {"title = 'ab';", "unclosed-character ''ab'': only 'a' is taken of this text in single "
                          "quotes"},
    };
    for (const Case& each : window) EXPECT_EQ(inWindow(each.source), Messages{each.message});
}

TEST(SyntaxMessages, makeTheCauseTheErrorWhenItIsSkipped) {
    const ParsedSource source("a.vorla",
                              "vorla Main {\n    int go() { return 1; }\n    button ok {\n"
                              "        on click { print(\"x\"); }\n    }\n}\n");
    ASSERT_EQ(source.diagnostics().size(), 1u);
    const Diagnostic& error = source.diagnostics()[0];
    EXPECT_EQ(error.id, MessageId::misplacedCode);
    EXPECT_EQ(error.text, "a function cannot stand in the window; 'go' is skipped");
    ASSERT_EQ(error.notes.size(), 1u);
    EXPECT_EQ(source.source().part(error.notes[0].range), "print");
}

TEST(SyntaxMessages, showTheOpenerOfAMissingCloser) {
    const ParsedSource source("a.vorla", "go() {\n    if (true) {\n        print(1);\n}\n");
    ASSERT_EQ(source.diagnostics().size(), 1u);
    const Diagnostic& error = source.diagnostics()[0];
    EXPECT_EQ(error.id, MessageId::missingBrace);
    EXPECT_EQ(error.range.begin, error.range.end);
    ASSERT_EQ(error.notes.size(), 1u);
    EXPECT_EQ(error.notes[0].text, "'{' of 'if (true)' is open here");
    EXPECT_EQ(source.source().placeOf(error.notes[0].range.begin).line, 2u);
}

TEST(SyntaxMessages, sayNothingAboutAByteOrderMark) {
    EXPECT_EQ(messagesOf("\xEF\xBB\xBFvorla Main { }"), Messages{});
}
