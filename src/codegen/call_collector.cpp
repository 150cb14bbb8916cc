// The names of the functions that a piece of the program calls.
//
// As in the generator, nothing recurses along what may be long: chains of operators, members,
// indices and calls are walked down their left operands, ladders of else-ifs down their rungs.

#include "codegen/code_generator_core.h"

namespace Orvane {

namespace {

void addName(std::string_view name, NameSet& names) {
    if (!name.empty() && !names.contains(name)) names.emplace(name);
}

void collectAll(const ExprList& exprs, NameSet& names) {
    for (const auto& expr : exprs) CodeGeneratorCore::collectCalls(expr.get(), names);
}

void collect(const uptr<Expr>& expr, NameSet& names) {
    CodeGeneratorCore::collectCalls(expr.get(), names);
}

// ---- Expressions ----

// A call of a called value has no name of its own.
const Expr* collectCall(const CallExpr& call, NameSet& names) {
    addName(call.name, names);
    collectAll(call.args, names);
    return call.callee.get();
}

const Expr* collectRange(const RangeExpr& range, NameSet& names) {
    addName(range.label, names);
    collect(range.start, names);
    collect(range.end, names);
    return range.step.get();
}

const Expr* collectTernary(const TernaryExpr& ternary, NameSet& names) {
    collect(ternary.condition, names);
    collect(ternary.thenExpr, names);
    return ternary.elseExpr.get();
}

const Expr* collectComprehension(const ListComprehensionExpr& list, NameSet& names) {
    collect(list.iterable, names);
    collect(list.condition, names);
    return list.expr.get();
}

// Adds the calls of one node and of its operands, but for the operand that it returns: the caller
// goes on with that one. Null when none is left.
const Expr* collectNode(const Expr* node, NameSet& names) {
    if (nodeCast<IdentifierExpr>(node) || nodeCast<LiteralExpr>(node)) return nullptr;
    if (const auto* binary = nodeCast<BinaryExpr>(node)) {
        collect(binary->right, names);
        return binary->left.get();
    }
    if (const auto* index = nodeCast<IndexExpr>(node)) {
        collect(index->index, names);
        return index->object.get();
    }
    if (const auto* call = nodeCast<CallExpr>(node)) return collectCall(*call, names);
    if (const auto* unary = nodeCast<UnaryExpr>(node)) return unary->operand.get();
    if (const auto* array = nodeCast<ArrayExpr>(node)) collectAll(array->elements, names);
    if (const auto* object = nodeCast<ObjectCtorExpr>(node))
        for (const auto& field : object->fields) collect(field.second, names);
    if (const auto* range = nodeCast<RangeExpr>(node)) return collectRange(*range, names);
    if (const auto* ternary = nodeCast<TernaryExpr>(node)) return collectTernary(*ternary, names);
    if (const auto* test = nodeCast<IsExpr>(node)) return test->expr.get();
    if (const auto* list = nodeCast<ListComprehensionExpr>(node))
        return collectComprehension(*list, names);
    return nullptr;
}

// ---- Statements ----

const Stmt* collectIf(const IfStmt& branch, NameSet& names) {
    collect(branch.condition, names);
    CodeGeneratorCore::collectCalls(branch.thenBranch, names);
    if (branch.elseBranch.size() == 1) return branch.elseBranch.front().get();
    CodeGeneratorCore::collectCalls(branch.elseBranch, names);
    return nullptr;
}

void collectLoopsAndBlocks(const Stmt* stmt, NameSet& names) {
    if (const auto* block = nodeCast<BlockStmt>(stmt)) {
        CodeGeneratorCore::collectCalls(block->statements, names);
    } else if (const auto* loop = nodeCast<ForStmt>(stmt)) {
        collect(loop->iterable, names);
        CodeGeneratorCore::collectCalls(loop->body, names);
    } else if (const auto* repeat = nodeCast<WhileStmt>(stmt)) {
        collect(repeat->condition, names);
        CodeGeneratorCore::collectCalls(repeat->body, names);
    } else if (const auto* attempt = nodeCast<TryStmt>(stmt)) {
        CodeGeneratorCore::collectCalls(attempt->tryBody, names);
        CodeGeneratorCore::collectCalls(attempt->catchBody, names);
    }
}

// The statement to go on with, as for expressions.
const Stmt* collectNode(const Stmt* stmt, NameSet& names) {
    if (const auto* branch = nodeCast<IfStmt>(stmt)) return collectIf(*branch, names);
    if (const auto* cleanup = nodeCast<DeferStmt>(stmt)) return cleanup->stmt.get();
    if (const auto* expression = nodeCast<ExprStmt>(stmt)) {
        collect(expression->expr, names);
    } else if (const auto* declaration = nodeCast<VarDeclStmt>(stmt)) {
        collect(declaration->initializer, names);
    } else if (const auto* returned = nodeCast<ReturnStmt>(stmt)) {
        collect(returned->value, names);
    } else if (const auto* thrown = nodeCast<ThrowStmt>(stmt)) {
        collect(thrown->value, names);
    } else if (const auto* check = nodeCast<ExpectStmt>(stmt)) {
        collect(check->condition, names);
        collect(check->message, names);
    } else if (const auto* choice = nodeCast<WhenStmt>(stmt)) {
        collect(choice->subject, names);
        for (const WhenCase& branch : choice->cases) collect(branch.value, names);
    } else {
        collectLoopsAndBlocks(stmt, names);
    }
    return nullptr;
}

} // namespace

void CodeGeneratorCore::collectCalls(const Expr* expr, NameSet& names) {
    while (expr) expr = collectNode(expr, names);
}

void CodeGeneratorCore::collectCalls(const Stmt* stmt, NameSet& names) {
    while (stmt) stmt = collectNode(stmt, names);
}

void CodeGeneratorCore::collectCalls(const StmtList& statements, NameSet& names) {
    for (const auto& statement : statements) collectCalls(statement.get(), names);
}

} // namespace Orvane
