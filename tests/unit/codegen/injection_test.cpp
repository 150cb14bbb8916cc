// What texts of a source can and cannot do to the generated program; docs/security.md tells it.
#include "generated_program.h"

#include <string>
#include <string_view>
#include <vector>

namespace Orvane {
namespace {

class Injection : public GeneratedProgram {};

// Ends texts, characters, comments and raw texts, continues lines and begins new ones, in the
// spelling of a source text. Each tries to call evil().
const std::vector<std::string> attacks = {
    R"(\"); evil(); (\")",    R"(\\\"); evil(); (\")", R"(\n evil(); \n)",   R"(*/ evil(); /*)",
    R"(\\\n evil();)",        R"()\" evil(); R\"()",   R"(' evil(); ')",     R"(\r\n evil(); //)",
    R"(??/\" evil(); ??/\")", R"(\u0022; evil(); )",   R"(\u005c\" evil())", R"(%s $name$ evil())",
};

// Where a comment, text or character that begins at `start` ends.
std::size_t endOfQuoted(std::string_view code, std::size_t start) {
    if (code.substr(start, 2) == "//") return std::min(code.find('\n', start), code.size());
    if (code.substr(start, 2) == "/*") return std::min(code.find("*/", start + 2), code.size()) + 2;
    std::size_t at = start + 1;
    while (at < code.size() && code[at] != code[start] && code[at] != '\n')
        at += code[at] == '\\' ? 2 : 1;
    return at + 1;
}

// The C++ text without its comments and without what stands in quotes.
std::string bareCode(std::string_view code) {
    std::string bare;
    for (std::size_t at = 0; at < code.size();) {
        const bool isQuoted = code[at] == '"' || code[at] == '\'' || code.substr(at, 2) == "//" ||
                              code.substr(at, 2) == "/*";
        if (isQuoted) {
            at = endOfQuoted(code, at);
            bare += ' ';
        } else {
            bare += code[at++];
        }
    }
    return bare;
}

bool hasCode(std::string_view code, std::string_view piece) {
    return bareCode(code).find(piece) != std::string::npos;
}

TEST(BareCode, HasNoTextsCharactersAndComments) {
    EXPECT_EQ(bareCode("a(\"x\\\"y\", 'z', '\\''); // b\nc /* d */ e"), "a( ,  ,  );  \nc   e");
}

TEST_F(Injection, NoTextLeavesItsQuotes) {
    const std::vector<std::string> places = {
        "vorla M { title = \"@\"; }",
        "vorla M { font = \"@\"; }",
        "vorla M { button b { text = \"@\"; font = \"@\"; group = \"@\"; } }",
        "vorla M { entry e { text = \"@\"; } textarea t { text = \"@\"; } }",
        "vorla M { listbox l { items = {\"@\", \"b\"}; } combobox c { items = {\"@\"}; } }",
        "vorla M { tab t { items = {\"@\"}; } menu m { items = {\"@\"}; } }",
        "vorla M { picture p { src = \"@\"; } status s { text = \"@\"; } }",
        "vorla M { radio r { text = \"@\"; group = \"@\"; } unknown u { text = \"@\"; } }",
        "S.script { void f() { x = \"@\"; alert(\"@\"); print(\"@\"); } }",
        "S.script { void f() { x = a[\"@\"]; throw \"@\"; expect a, \"@\"; } }",
        "S.script { void f() { x = {\"@\", \"@\"}; y = A { b = \"@\" }; when (\"@\") "
        "{ is int -> \"@\"; } } }",
        "using key \"@\";\nS.script { void f() { x = [\"@\" for a in \"@\" where \"@\"]; } }",
        "class C { int go() { return \"@\"; } }",
    };
    for (const std::string& place : places)
        for (const std::string& attack : attacks)
            for (const bool debugMode : {false, true}) {
                std::string source = place;
                for (auto at = source.find('@'); at != std::string::npos; at = source.find('@'))
                    source.replace(at, 1, attack);
                generate(source, {debugMode, true});
                EXPECT_FALSE(hasCode(mainText(), "evil")) << source << "\n" << mainText();
                EXPECT_FALSE(hasCode(importText(), "evil")) << source;
                mainStream.clear();
                importStream.clear();
            }
}

TEST_F(Injection, CharactersAreEscapedToo) {
    generate(R"(S.script { void f() { a = '"'; b = '\\'; c = '\n'; d = '\''; evil(); } })");
    EXPECT_NE(importText().find("std::string(\"\\\"\")"), std::string::npos);
    EXPECT_NE(importText().find("std::string(\"\\\\\")"), std::string::npos);
    EXPECT_TRUE(hasCode(importText(), "evil"));
}

// No byte below 32 of a text stands in a generated line as it is.
TEST_F(Injection, NoTextBreaksALine) {
    std::string every;
    for (char byte = 1; byte < 32; ++byte) every += byte;
    generate("S.script { void f() { x = \"" + every + "\"; } }");
    const std::string text = importText();
    const auto start = text.find("x = ");
    const std::string line = text.substr(start, text.find(";\n", start) - start);
    for (const char character : line) EXPECT_GE(static_cast<unsigned char>(character), 32);
}

// Names are letters, digits and underscores; whatever else stands there is no part of a name.
TEST_F(Injection, NamesHoldNothingButWordCharacters) {
    for (const char* name : {"a\"b", "a;b", "a\\b", "a*/b", "a$b", "a\xC3\xA4", "a\nb", "a'b'"}) {
        Lexer lexer(name, console);
        const Token first = lexer.tokenize().front();
        EXPECT_EQ(first.type, TokenType::Identifier) << name;
        EXPECT_EQ(first.text(), "a") << name;
    }
}

TEST_F(Injection, ColourLiteralsHoldNothingButDigits) {
    for (const char* colour : {"#ff00\"; evil()", "#ff00\\", "#ff00\n", "#ff00*/", "#ff00zz"}) {
        Lexer lexer(colour, console);
        const Token first = lexer.tokenize().front();
        EXPECT_EQ(first.type, TokenType::ColorLiteral) << colour;
        EXPECT_EQ(first.text(), "#ff00") << colour;
    }
}

// The one text that is passed on as it stands: a colour that is not written as #RRGGBB.
TEST_F(Injection, AColourTextIsPassedOnAsCode) {
    generate("vorla M { text t { color = \"evil()\"; } }");
    EXPECT_TRUE(hasCode(mainText(), "textColor = evil();"));
}

TEST_F(Injection, ABackgroundTextIsPassedOnAsCode) {
    generate("vorla M { text t { background = \"evil()\"; } }");
    EXPECT_TRUE(hasCode(mainText(), "bgColor = evil();"));
}

TEST_F(Injection, LibraryBodiesAreCode) {
    addLibraryFunction("go", "evil(); return 1;", "int");
    generate("S.script { void f() { go(); } }", {false, true});
    EXPECT_TRUE(hasCode(importText(), "evil();"));
}

TEST_F(Injection, LibraryBodiesThatNobodyCallsStayOut) {
    addLibraryFunction("go", "evil(); return 1;", "int");
    generate("S.script { void f() { other(); } }", {false, true});
    EXPECT_FALSE(hasCode(importText(), "evil();"));
}

} // namespace
} // namespace Orvane
