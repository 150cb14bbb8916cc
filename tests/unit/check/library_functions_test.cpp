// What a check knows of library functions: their parameters as their authors wrote them.
#include "check/types_testing.h"

#include <gtest/gtest.h>

#include "temporary_directory.h"

using namespace Orvane;
using namespace Orvane::Testing;

namespace {

// "type|name" of each parameter of the function that the text of a library file defines.
std::vector<std::string> parametersIn(const std::string& text) {
    OrlibScanner scanner(text);
    std::vector<std::string> shown;
    while (std::optional<OrlibItem> item = scanner.next())
        if (const auto* function = std::get_if<FunctionEntry>(&*item))
            for (const LibraryParameter& parameter : parametersOf(*function))
                shown.push_back(parameter.type + "|" + parameter.name);
    return shown;
}

using Texts = std::vector<std::string>;

} // namespace

TEST(LibraryParameters, EndWithTheirName) {
    EXPECT_EQ(parametersIn("int f() { }"), Texts{});
    EXPECT_EQ(parametersIn("int f(value x, y, int n) { }"), (Texts{"value|x", "value|y", "int|n"}));
    EXPECT_EQ(parametersIn("int f(const Value& list, Value& other, const char* text) { }"),
              (Texts{"const Value&|list", "Value&|other", "const char*|text"}));
}

TEST(LibraryParameters, KeepTheirMarksWhereverTheBlanksAre) {
    EXPECT_EQ(parametersIn("int f(const  Value &list, Value\t& other, const char *text) { }"),
              (Texts{"const Value&|list", "Value&|other", "const char*|text"}));
    EXPECT_EQ(parametersIn("int f(Value &x) { }"), (Texts{"Value&|x"}));
    EXPECT_EQ(parametersIn("int f(long long n) { }"), (Texts{"long long|n"}));
}

TEST(LibraryParameters, ThatAreOnlyReadTakeAnyValue) {
    const TemporaryDirectory folder;
    folder.write("own.orlib", "int readIt(const Value& x) { return 1; }\n"
                              "int changeIt(Value &x) { return 1; }\n"
                              "int takeIt(value x) { return 1; }\n");
    const auto saidOf = [&folder](const std::string& statements) {
        const ParsedSource source("test.vorla", inHandler(statements));
        LibraryFunctions libraries(folder.path());
        libraries.load("own");
        std::vector<Diagnostic> found = source.diagnostics();
        if (found.empty()) checkTypes(source, libraries, found);
        Texts texts;
        for (const Diagnostic& diagnostic : found) texts.push_back(diagnostic.text);
        return texts;
    };
    for (const std::string name : {"readIt", "takeIt"})
        EXPECT_EQ(saidOf("value v = {1}; int n = 1; " + name + "(v); " + name + "(n); " + name +
                         "({1}); " + name + "(2); " + name + "(\"t\");"),
                  Texts{})
            << name;
    const Texts refused = {"'changeIt' changes this argument, so it must be a dynamic variable"};
    EXPECT_EQ(saidOf("value v = {1}; changeIt(v);"), Texts{});
    EXPECT_EQ(saidOf("changeIt({1});"), refused);
    EXPECT_EQ(saidOf("int n = 1; changeIt(n);"), refused);
}
