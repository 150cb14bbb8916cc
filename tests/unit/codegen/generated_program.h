// Source text to the texts of the generated program, for the tests of the code generator.
//
//     class WindowText : public GeneratedProgram {};
//     TEST_F(WindowText, ...) { generate("vorla Main { }"); EXPECT_EQ(mainText(), ...); }
#pragma once

#include "codegen/code_generator.h"
#include "frontend/lexer.h"
#include "frontend/parser.h"

#include <gtest/gtest.h>

#include <deque>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace Orvane {

class GeneratedProgram : public ::testing::Test {
protected:
    struct Switches {
        bool debugMode = false;
        bool anyLibraryLoaded = false;
    };

    // The tree lives as long as the test.
    AST& parse(std::string_view source) {
        Lexer& lexer = lexers.emplace_back(std::string(source), console);
        Parser parser(lexer.tokenize(), console);
        return *programs.emplace_back(parser.parse());
    }

    void generate(const AST& program) { generate(program, Switches()); }
    void generate(const AST& program, Switches switches) {
        generator.generate(program, "main.cpp", "import.hpp", switches.debugMode,
                           switches.anyLibraryLoaded);
    }
    void generate(std::string_view source) { generate(parse(source), Switches()); }
    void generate(std::string_view source, Switches switches) { generate(parse(source), switches); }

    std::string mainText() const { return mainStream.str(); }
    std::string importText() const { return importStream.str(); }

    // Parameters are pairs of type and name.
    void addLibraryFunction(std::string_view name, std::string_view body,
                            std::string_view returnType = "value",
                            const std::vector<std::pair<std::string, std::string>>& params = {}) {
        FunctionEntry entry;
        entry.name = name;
        entry.returnType = returnType;
        entry.body = body;
        for (const auto& [type, parameter] : params) {
            entry.paramTypes.push_back(type);
            entry.paramNames.push_back(parameter);
        }
        table.add(std::move(entry));
    }

    RecordingConsole console;
    ReplacementTable table;
    TextStream mainStream;
    TextStream importStream;
    int indentLevel = 0;
    CodeGenerator generator{table, mainStream, importStream, indentLevel};

private:
    std::deque<Lexer> lexers;
    std::vector<std::unique_ptr<AST>> programs;
};

inline std::size_t countOf(std::string_view text, std::string_view piece) {
    std::size_t count = 0;
    for (auto at = text.find(piece); at != std::string_view::npos;
         at = text.find(piece, at + piece.size()))
        ++count;
    return count;
}

inline bool contains(std::string_view text, std::string_view piece) {
    return text.find(piece) != std::string_view::npos;
}

} // namespace Orvane
