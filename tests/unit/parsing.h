// Parsing in tests: source text in, tree text or error text out.
//
//     EXPECT_EQ(expressionText("a + 1"), "(+ a 1)");
//     EXPECT_EQ(programError("vorla { }"), "Expected vorla name at line 1");
#pragma once

#include "frontend/lexer.h"
#include "frontend/parser.h"
#include "tree_text.h"

#include <memory>
#include <stdexcept>
#include <string>

namespace Orvane::Testing {

// A source, its tokens' texts and a parser over it, alive together.
struct Parsing {
    explicit Parsing(std::string source, PositionTable* positions = nullptr)
        : lexer(std::move(source), console), tokens(lexer.tokenize()),
          parser(tokens, console, positions) {}

    RecordingConsole console;
    Lexer lexer;
    std::vector<Token> tokens;
    Parser parser;
};

inline std::string expressionText(const std::string& source) {
    Parsing parsing(source);
    return textOf(parsing.parser.parseExpression().get());
}

inline std::string statementText(const std::string& source) {
    Parsing parsing(source);
    return textOf(parsing.parser.parseStatement().get());
}

inline std::string programText(const std::string& source) {
    Parsing parsing(source);
    return textOf(*parsing.parser.parse());
}

// What was printed, followed by the text of the error; only the printed text when all went well.
template <class Parse>
std::string reportOf(const std::string& source, Parse parse) {
    Parsing parsing(source);
    try {
        parse(parsing.parser);
    } catch (const std::runtime_error& error) {
        return parsing.console.text() + error.what();
    }
    return parsing.console.text() + "(no error)";
}

inline std::string expressionError(const std::string& source) {
    return reportOf(source, [](Parser& parser) { parser.parseExpression(); });
}

inline std::string statementError(const std::string& source) {
    return reportOf(source, [](Parser& parser) { parser.parseStatement(); });
}

inline std::string programError(const std::string& source) {
    return reportOf(source, [](Parser& parser) { parser.parse(); });
}

// Both texts of a failed expectation on line 1.
inline std::string unmet(int expected, int got, const std::string& message) {
    return "[PARSER ERROR] Expected " + std::to_string(expected) + ", got " + std::to_string(got) +
           " at line 1: " + message + "\n" + message + " at line 1";
}

inline std::string repeated(const std::string& text, std::size_t count) {
    std::string result;
    result.reserve(text.size() * count);
    for (std::size_t index = 0; index < count; ++index) result += text;
    return result;
}

} // namespace Orvane::Testing
