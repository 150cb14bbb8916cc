// Statements other than those that declare variables (declarations.cpp).
//
// Where a statement needs an expression in the middle of a line, the line usually breaks in front
// of it: the expression starts at the margin and the rest follows on its line, behind the spaces
// of a line of its own. Expression statements stand at the margin as a whole. `if`, `while`,
// `return` and `throw` keep their expressions in line.

#include "codegen/code_generator_core.h"

namespace Orvane {

namespace {

// The next rung of a ladder: the `if` that is all there is behind `else`.
const IfStmt* elseIf(const IfStmt& stmt) {
    return stmt.elseBranch.size() == 1 ? nodeCast<IfStmt>(stmt.elseBranch.front()) : nullptr;
}

} // namespace

void CodeGeneratorCore::generateBody(const StmtList& statements) {
    for (const auto& statement : statements) generateStmt(statement.get());
}

void CodeGeneratorCore::writeLines(const StmtList& statements) {
    IndentScope body(indentLevel);
    generateBody(statements);
}

// EXPRESSION;
void CodeGeneratorCore::genExprStmt(const ExprStmt& stmt) { write(stmt.expr, ";\n"); }

// ---- Branches and loops ----

// if (CONDITION) {
//     THEN
// }
// else {
//     ELSE
// }
// An else-if is an `if` in the else block of the one before. A ladder of them is walked in a loop.
void CodeGeneratorCore::genIf(const IfStmt& stmt) {
    int elseBlocks = 0;
    for (const IfStmt* rung = &stmt; rung; rung = elseIf(*rung)) {
        addLine("if (", rung->condition, ") {");
        writeLines(rung->thenBranch);
        addLine("}");
        if (rung->elseBranch.empty()) break;
        addLine("else {");
        ++elseBlocks;
        ++indentLevel;
        if (!elseIf(*rung)) generateBody(rung->elseBranch);
    }
    for (; elseBlocks > 0; --elseBlocks) {
        --indentLevel;
        addLine("}");
    }
}

// while (CONDITION) {
//     BODY
// }
void CodeGeneratorCore::genWhile(const WhileStmt& stmt) {
    addLine("while (", stmt.condition, ") {");
    writeLines(stmt.body);
    addLine("}");
}

// {
//     STATEMENTS
// }
void CodeGeneratorCore::genBlock(const BlockStmt& stmt) {
    addLine("{");
    writeLines(stmt.statements);
    addLine("}");
}

// ---- Leaving a body ----

// return VALUE;
void CodeGeneratorCore::genReturn(const ReturnStmt& stmt) {
    if (stmt.value)
        addLine("return ", stmt.value, ";");
    else
        addLine("return;");
}

// throw VALUE;
void CodeGeneratorCore::genThrow(const ThrowStmt& stmt) { addLine("throw ", stmt.value, ";"); }

// try {
//     BODY
// } catch (const char* NAME) {
//     HANDLER
// }
void CodeGeneratorCore::genTry(const TryStmt& stmt) {
    addLine("try {");
    writeLines(stmt.tryBody);
    addLine("} catch (const char* ", stmt.catchVar, ") {");
    writeLines(stmt.catchBody);
    addLine("}");
}

// The deleter of the shared pointer runs the cleanup at the end of the block around it.
//
// // defer: scheduled cleanup
// auto __dcleanup_0 = [&]() {
//     STATEMENT
// };
// auto __dguard_0 = std::shared_ptr<void>((void*)1, [__dcleanup_0](void*) { __dcleanup_0(); });
// (void)__dguard_0;
void CodeGeneratorCore::genDefer(const DeferStmt& stmt) {
    constexpr std::string_view cleanup = "__dcleanup_";
    constexpr std::string_view guard = "__dguard_";
    const int number = uniqueCounter++;
    addLine("// defer: scheduled cleanup");
    addLine("auto ", cleanup, number, " = [&]() {");
    {
        IndentScope body(indentLevel);
        generateStmt(stmt.stmt.get());
    }
    addLine("};");
    addLine("auto ", guard, number, " = std::shared_ptr<void>((void*)1, [", cleanup, number,
            "](void*) { ", cleanup, number, "(); });");
    addLine("(void)", guard, number, ";");
}

// ---- Checks and choices ----

// if (!(
// CONDITION)) {
//     throw std::runtime_error("expect condition failed");
// }
void CodeGeneratorCore::genExpect(const ExpectStmt& stmt) {
    addLine("if (!(");
    write(stmt.condition);
    addLine(")) {");
    {
        IndentScope body(indentLevel);
        genExpectFailure(stmt);
    }
    addLine("}");
}

// std::string __expect_msg =
// MESSAGE;
// throw std::runtime_error(__expect_msg);
void CodeGeneratorCore::genExpectFailure(const ExpectStmt& stmt) {
    if (!stmt.message) {
        addLine("throw std::runtime_error(\"expect condition failed\");");
        return;
    }
    addLine("std::string __expect_msg = ");
    write(stmt.message);
    addLine(";");
    addLine("throw std::runtime_error(__expect_msg);");
}

// Value __when_result_0;
// {
//     Value __when_target_0 =
// SUBJECT    ;
//     if ((std::string)__when_target_0.typeName == "int") {
//         __when_result_0 =
// VALUE        ;
//     }
//     else if ((std::string)__when_target_0.typeName == "string") {
//         ...
//     }
//     else {
//         ...
//     }
// }
void CodeGeneratorCore::genWhen(const WhenStmt& stmt) {
    const int number = uniqueCounter++;
    addLine("Value __when_result_", number, ";");
    addLine("{");
    {
        IndentScope block(indentLevel);
        addLine("Value __when_target_", number, " = ");
        write(stmt.subject);
        addLine(";");
        bool isFirst = true;
        for (const WhenCase& branch : stmt.cases) {
            genWhenCase(branch, isFirst, number);
            isFirst = false;
        }
    }
    addLine("}");
}

void CodeGeneratorCore::genWhenCase(const WhenCase& branch, bool isFirst, int number) {
    if (branch.typeName == "else")
        addLine("else {");
    else
        addLine(isFirst ? "if " : "else if ", "((std::string)__when_target_", number,
                ".typeName == \"", branch.typeName, "\") {");
    {
        IndentScope body(indentLevel);
        addLine("__when_result_", number, " = ");
        write(branch.value);
        addLine(";");
    }
    addLine("}");
}

} // namespace Orvane
