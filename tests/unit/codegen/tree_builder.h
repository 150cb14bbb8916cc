// Syntax trees built by hand, for tests of the code generator.
//
//     TreeBuilder tree;
//     auto sum = tree.binary(tree.number(1), "+", tree.name("x"));
#pragma once

#include "frontend/syntax_tree.h"

#include <initializer_list>
#include <string_view>
#include <utility>

namespace Orvane {

// Every node lives as long as the builder. A default-constructed uptr stands for a missing child.
class TreeBuilder {
public:
    using ExprPtr = uptr<Expr>;
    using StmtPtr = uptr<Stmt>;
    using Names = std::initializer_list<std::pair<std::string_view, std::string_view>>;

    Arena arena;

    template <class... Items>
    ExprList exprs(Items... items) {
        ExprList list(arena);
        (list.push_back(std::move(items)), ...);
        return list;
    }
    template <class... Items>
    StmtList stmts(Items... items) {
        StmtList list(arena);
        (list.push_back(std::move(items)), ...);
        return list;
    }

    // ---- Expressions ----
    ExprPtr name(std::string_view text) { return arena.make<IdentifierExpr>(arena.text(text)); }
    ExprPtr literal(Value value) { return arena.make<LiteralExpr>(std::move(value)); }
    ExprPtr number(int value) { return literal(Value(value)); }
    ExprPtr real(double value) { return literal(Value(value)); }
    ExprPtr text(std::string_view value) { return literal(Value(value)); }
    ExprPtr flag(bool value) { return literal(Value(value)); }
    ExprPtr null() { return literal(Value()); }
    ExprPtr binary(ExprPtr left, std::string_view op, ExprPtr right) {
        return arena.make<BinaryExpr>(std::move(left), arena.text(op), std::move(right));
    }
    ExprPtr member(ExprPtr object, std::string_view field) {
        return binary(std::move(object), ".", name(field));
    }
    ExprPtr unary(std::string_view op, ExprPtr operand) {
        return arena.make<UnaryExpr>(arena.text(op), std::move(operand));
    }
    ExprPtr index(ExprPtr object, ExprPtr position) {
        return arena.make<IndexExpr>(std::move(object), std::move(position));
    }
    ExprPtr ternary(ExprPtr condition, ExprPtr yes, ExprPtr no) {
        return arena.make<TernaryExpr>(std::move(condition), std::move(yes), std::move(no));
    }
    template <class... Arguments>
    ExprPtr call(std::string_view function, Arguments... arguments) {
        auto node = arena.make<CallExpr>(arena, arena.text(function));
        (node->args.push_back(std::move(arguments)), ...);
        return node;
    }
    template <class... Arguments>
    ExprPtr callOf(ExprPtr callee, Arguments... arguments) {
        auto node = arena.make<CallExpr>(arena, std::move(callee));
        (node->args.push_back(std::move(arguments)), ...);
        return node;
    }
    template <class... Items>
    ExprPtr array(Items... items) {
        return arena.make<ArrayExpr>(exprs(std::move(items)...));
    }
    uptr<ObjectCtorExpr> object(std::string_view className) {
        return arena.make<ObjectCtorExpr>(arena, arena.text(className));
    }
    uptr<RangeExpr> range(ExprPtr start, ExprPtr end, ExprPtr step = {}) {
        auto node = arena.make<RangeExpr>(std::move(start), std::move(end));
        node->step = std::move(step);
        return node;
    }
    ExprPtr comprehension(ExprPtr element, std::string_view variable, ExprPtr iterable,
                          ExprPtr condition = {}) {
        auto node = arena.make<ListComprehensionExpr>(std::move(element), arena.text(variable),
                                                      std::move(iterable));
        node->condition = std::move(condition);
        return node;
    }
    ExprPtr is(ExprPtr tested, std::string_view type) {
        return arena.make<IsExpr>(std::move(tested), arena.text(type));
    }
    ExprPtr have(std::string_view className, std::string_view memberName) {
        return arena.make<HaveExpr>(arena.text(className), arena.text(memberName));
    }
    ExprPtr therebe(std::string_view kind, std::string_view wanted) {
        return arena.make<TherebeExpr>(arena.text(kind), arena.text(wanted));
    }

    // ---- Statements ----
    StmtPtr expression(ExprPtr expr) { return arena.make<ExprStmt>(std::move(expr)); }
    StmtPtr call0(std::string_view function) { return expression(call(function)); }
    StmtPtr declare(std::string_view type, std::string_view variable, ExprPtr initializer = {}) {
        return arena.make<VarDeclStmt>(arena.text(type), arena.text(variable),
                                       std::move(initializer));
    }
    StmtPtr ifElse(ExprPtr condition, StmtList yes, StmtList no) {
        return arena.make<IfStmt>(std::move(condition), std::move(yes), std::move(no));
    }
    StmtPtr ifOnly(ExprPtr condition, StmtList yes) {
        return ifElse(std::move(condition), std::move(yes), stmts());
    }
    StmtPtr block(StmtList body) { return arena.make<BlockStmt>(std::move(body)); }
    StmtPtr whileLoop(ExprPtr condition, StmtList body) {
        return arena.make<WhileStmt>(std::move(condition), std::move(body));
    }
    StmtPtr forEach(std::string_view type, std::string_view variable, ExprPtr iterable,
                    StmtList body) {
        return arena.make<ForStmt>(arena.text(type), arena.text(variable), std::move(iterable),
                                   std::move(body));
    }
    StmtPtr returning(ExprPtr value = {}) { return arena.make<ReturnStmt>(std::move(value)); }
    StmtPtr throwing(ExprPtr value) { return arena.make<ThrowStmt>(std::move(value)); }
    StmtPtr tryCatch(StmtList body, std::string_view variable, StmtList handler) {
        return arena.make<TryStmt>(std::move(body), arena.text(variable), std::move(handler));
    }
    StmtPtr defer(StmtPtr cleanup) { return arena.make<DeferStmt>(std::move(cleanup)); }
    StmtPtr expect(ExprPtr condition, ExprPtr message = {}) {
        return arena.make<ExpectStmt>(std::move(condition), std::move(message));
    }
    template <class... Cases>
    StmtPtr when(ExprPtr subject, Cases... cases) {
        List<WhenCase> list(arena);
        (list.push_back(std::move(cases)), ...);
        return arena.make<WhenStmt>(std::move(subject), std::move(list));
    }
    WhenCase whenCase(std::string_view type, ExprPtr value) {
        return {arena.text(type), std::move(value)};
    }

    // ---- Classes ----
    // Parameters and fields as type and name.
    uptr<ClassMethod> method(std::string_view returnType, std::string_view methodName,
                             Names parameters, StmtList body) {
        auto node = arena.make<ClassMethod>(arena);
        node->returnType = arena.text(returnType);
        node->name = arena.text(methodName);
        for (const auto& [type, parameter] : parameters)
            node->params.push_back({arena.text(parameter), arena.text(type)});
        node->body = std::move(body);
        return node;
    }
    template <class... Methods>
    uptr<ClassDef> classDef(std::string_view className, Names fields, Methods... methods) {
        auto node = arena.make<ClassDef>(arena);
        node->name = arena.text(className);
        for (const auto& [type, field] : fields)
            node->fields.push_back({arena.text(field), arena.text(type), Access::unspecified});
        (node->methods.push_back(std::move(methods)), ...);
        return node;
    }
};

} // namespace Orvane
