// A translator over tables that tests fill, and the texts that it writes.
#pragma once

#include "codegen/code_generator_core.h"
#include "tree_builder.h"

#include <gtest/gtest.h>

#include <chrono>
#include <string>

namespace Orvane {

class CoreTest : public ::testing::Test {
protected:
    CoreTest() { core.setTables(&classes, &variables, &functions); }

    // What one node writes at the given level, which must be left as it was.
    std::string written(const uptr<Expr>& expr, int atLevel = 0) {
        return capture(atLevel, [&] { core.generateExpr(expr.get()); });
    }
    std::string written(const uptr<Stmt>& stmt, int atLevel = 0) {
        return capture(atLevel, [&] { core.generateStmt(stmt.get()); });
    }
    template <class Node>
    std::string written(const uptr<Node>& node,
                        int atLevel = 0) requires std::is_base_of_v<Expr, Node> {
        return capture(atLevel, [&] { core.generateExpr(node.get()); });
    }

    // A class with methods of these names, without parameters.
    void addClass(const std::string& name, std::initializer_list<const char*> methods,
                  std::initializer_list<const char*> fields = {}) {
        CodeGeneratorCore::ClassInfo info;
        for (const char* method : methods) info.methods[method];
        for (const char* field : fields) info.fieldNames.insert(field);
        classes[name] = info;
    }

    TreeBuilder tree;
    TextStream mainStream, importStream;
    int level = 0;
    CodeGeneratorCore::ClassTable classes;
    NameMap variables;
    NameTable functions;
    CodeGeneratorCore core{mainStream, importStream, level};

private:
    template <class Generate>
    std::string capture(int atLevel, Generate generate) {
        level = atLevel;
        mainStream.clear();
        generate();
        EXPECT_EQ(level, atLevel);
        EXPECT_EQ(importStream.view(), "");
        return mainStream.str();
    }
};

// Seconds that an operation takes.
template <class Operation>
double secondsFor(Operation operation) {
    const auto start = std::chrono::steady_clock::now();
    operation();
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

} // namespace Orvane
