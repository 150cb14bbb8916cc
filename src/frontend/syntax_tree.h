// The syntax tree: what the parser builds and the code generator reads.
//
// Two families of nodes, Expr and Stmt, and plain records for the declarations, all held by one
// AST. A consumer tells node classes apart with nodeCast, trying them in a fixed order. Operators
// and names are texts: an operator is the spelling in the source ("+", "=", "." for member access).
//
// Everything but the AST itself lives in the AST's arena: lists grow in it, and uptr marks the one
// owner of each node. Names and texts are views: of the arena, or of the lexer's copy of the source
// if the parser was told so. The tree does not change after the parse. Nodes hold no source
// position; a PositionTable can be filled beside them.
//
//     Arena arena;
//     auto sum = arena.make<BinaryExpr>(arena.make<IdentifierExpr>("a"), "+",
//                                       arena.make<LiteralExpr>(Value(1)));
#pragma once

#include "frontend/arena.h"
#include "frontend/value.h"

#include <algorithm>
#include <bit>
#include <cstdint>
#include <map>
#include <memory_resource>
#include <string_view>
#include <typeinfo>
#include <utility>
#include <vector>

namespace Orvane {

class Expr {
public:
    static constexpr bool holdsOnlyArenaMemory = true;
    Expr() = default;
    Expr(const Expr&) = delete;
    Expr& operator=(const Expr&) = delete;
    virtual ~Expr() = default;
};

class Stmt {
public:
    static constexpr bool holdsOnlyArenaMemory = true;
    Stmt() = default;
    Stmt(const Stmt&) = delete;
    Stmt& operator=(const Stmt&) = delete;
    virtual ~Stmt() = default;
};

// The node as the given class, or null when it is of another class (or null itself). Node classes
// have no subclasses, so an exact comparison is the whole test; and the compiler is one binary, in
// which a class has one type_info, so that comparing addresses spares comparing names.
template <class Node, class Base>
auto nodeCast(Base* node) {
    using Result = std::conditional_t<std::is_const_v<Base>, const Node, Node>*;
    return node && &typeid(*node) == &typeid(Node) ? static_cast<Result>(node) : Result{};
}
template <class Node, class Base>
auto nodeCast(const uptr<Base>& node) {
    return nodeCast<Node>(node.get());
}

// The spelling of an operator, kept in the node itself and compared as one number. No operator has
// more than two characters; of a longer text the first three are kept.
class OperatorText {
public:
    constexpr OperatorText(std::string_view spelling)
        : length(static_cast<unsigned char>(std::min(spelling.size(), sizeof characters))) {
        for (std::size_t index = 0; index < length; ++index) characters[index] = spelling[index];
    }
    constexpr OperatorText(const char* spelling) : OperatorText(std::string_view(spelling)) {}
    constexpr operator std::string_view() const { return {characters, length}; }
    friend constexpr bool operator==(OperatorText first, OperatorText second) {
        return std::bit_cast<std::uint32_t>(first) == std::bit_cast<std::uint32_t>(second);
    }

private:
    char characters[3] = {};
    unsigned char length;
};

using ExprList = List<uptr<Expr>>;
using StmtList = List<uptr<Stmt>>;

// ---- Expressions ----

// A bare name; also the right side of a member access.
class IdentifierExpr final : public Expr {
public:
    explicit IdentifierExpr(std::string_view name_) : name(name_) {}
    std::string_view name;
};

// A number, text, character, colour, true, false or null.
class LiteralExpr final : public Expr {
public:
    static constexpr bool holdsOnlyArenaMemory = false; // the value may own its text
    explicit LiteralExpr(Value value_) : value(std::move(value_)) {}
    bool ownsMemory() const { return value.ownsMemory(); }
    Value value;
};

// Prefix "!" or "-".
class UnaryExpr final : public Expr {
public:
    UnaryExpr(OperatorText op_, uptr<Expr> operand_) : op(op_), operand(std::move(operand_)) {}
    OperatorText op;
    uptr<Expr> operand;
};

// Arithmetic, comparison, equality, assignment ("=") and member access ("."). Chains of one level
// lean to the left and may be very long: walk down `left` in a loop, not by recursion.
class BinaryExpr final : public Expr {
public:
    BinaryExpr(uptr<Expr> left_, OperatorText op_, uptr<Expr> right_)
        : left(std::move(left_)), op(op_), right(std::move(right_)) {}
    uptr<Expr> left;
    OperatorText op;
    uptr<Expr> right;
};

// A call. Of a bare name: `name` is set and `callee` empty. Of anything else, such as a.b(...):
// `name` is empty and `callee` is the called expression. The parser fills `args` afterwards.
class CallExpr final : public Expr {
public:
    CallExpr(Arena& arena, std::string_view name_) : name(name_), args(arena) {}
    CallExpr(Arena& arena, uptr<Expr> callee_) : callee(std::move(callee_)), args(arena) {}
    std::string_view name;
    uptr<Expr> callee;
    ExprList args;
};

// [a, b] and {a, b}.
class ArrayExpr final : public Expr {
public:
    explicit ArrayExpr(ExprList elements_) : elements(std::move(elements_)) {}
    ExprList elements;
};

// x[i]
class IndexExpr final : public Expr {
public:
    IndexExpr(uptr<Expr> object_, uptr<Expr> index_)
        : object(std::move(object_)), index(std::move(index_)) {}
    uptr<Expr> object;
    uptr<Expr> index;
};

// [a..b], [a..b, s] and every bracket list of three elements. `step` may be empty; `label` names a
// filter function and is never set by the parser.
class RangeExpr final : public Expr {
public:
    RangeExpr(uptr<Expr> start_, uptr<Expr> end_)
        : start(std::move(start_)), end(std::move(end_)) {}
    uptr<Expr> start;
    uptr<Expr> end;
    uptr<Expr> step;
    std::string_view label;
};

// c ? a : b
class TernaryExpr final : public Expr {
public:
    TernaryExpr(uptr<Expr> condition_, uptr<Expr> thenExpr_, uptr<Expr> elseExpr_)
        : condition(std::move(condition_)), thenExpr(std::move(thenExpr_)),
          elseExpr(std::move(elseExpr_)) {}
    uptr<Expr> condition;
    uptr<Expr> thenExpr;
    uptr<Expr> elseExpr;
};

// [e for v in xs where c]; `condition` may be empty.
class ListComprehensionExpr final : public Expr {
public:
    ListComprehensionExpr(uptr<Expr> expr_, std::string_view varName_, uptr<Expr> iterable_)
        : expr(std::move(expr_)), varName(varName_), iterable(std::move(iterable_)) {}
    uptr<Expr> expr;
    std::string_view varName;
    uptr<Expr> iterable;
    uptr<Expr> condition;
};

// is(e, T)
class IsExpr final : public Expr {
public:
    IsExpr(uptr<Expr> expr_, std::string_view typeName_)
        : expr(std::move(expr_)), typeName(typeName_) {}
    uptr<Expr> expr;
    std::string_view typeName;
};

// therebe(class, N)
class TherebeExpr final : public Expr {
public:
    TherebeExpr(std::string_view kind_, std::string_view name_) : kind(kind_), name(name_) {}
    std::string_view kind;
    std::string_view name;
};

// have(C, m); the member name begins with "." when the source wrote .m
class HaveExpr final : public Expr {
public:
    HaveExpr(std::string_view className_, std::string_view memberName_)
        : className(className_), memberName(memberName_) {}
    std::string_view className;
    std::string_view memberName;
};

// Name { f = e, ... }, fields in source order.
class ObjectCtorExpr final : public Expr {
public:
    ObjectCtorExpr(Arena& arena, std::string_view className_)
        : className(className_), fields(arena) {}
    std::string_view className;
    List<std::pair<std::string_view, uptr<Expr>>> fields;
};

// ---- Statements ----

class ExprStmt final : public Stmt {
public:
    explicit ExprStmt(uptr<Expr> expr_) : expr(std::move(expr_)) {}
    uptr<Expr> expr;
};

class ReturnStmt final : public Stmt {
public:
    explicit ReturnStmt(uptr<Expr> value_) : value(std::move(value_)) {}
    uptr<Expr> value; // may be empty
};

class ThrowStmt final : public Stmt {
public:
    explicit ThrowStmt(uptr<Expr> value_) : value(std::move(value_)) {}
    uptr<Expr> value;
};

class DeferStmt final : public Stmt {
public:
    explicit DeferStmt(uptr<Stmt> stmt_) : stmt(std::move(stmt_)) {}
    uptr<Stmt> stmt;
};

class ExpectStmt final : public Stmt {
public:
    ExpectStmt(uptr<Expr> condition_, uptr<Expr> message_)
        : condition(std::move(condition_)), message(std::move(message_)) {}
    uptr<Expr> condition;
    uptr<Expr> message; // may be empty
};

// One case of a `when`; the type name "else" marks the default case.
struct WhenCase {
    std::string_view typeName;
    uptr<Expr> value;
};

class WhenStmt final : public Stmt {
public:
    WhenStmt(uptr<Expr> subject_, List<WhenCase> cases_)
        : subject(std::move(subject_)), cases(std::move(cases_)) {}
    uptr<Expr> subject;
    List<WhenCase> cases;
};

class VarDeclStmt final : public Stmt {
public:
    VarDeclStmt(std::string_view typeName_, std::string_view name_, uptr<Expr> initializer_)
        : typeName(typeName_), name(name_), initializer(std::move(initializer_)) {}
    std::string_view typeName;
    std::string_view name;
    uptr<Expr> initializer; // may be empty
};

// Each branch holds the one statement that the source wrote there (a BlockStmt for braces, an
// IfStmt for `else if`); elseBranch is empty without `else`. A ladder of else-ifs may be very long:
// walk it in a loop.
class IfStmt final : public Stmt {
public:
    IfStmt(uptr<Expr> condition_, StmtList thenBranch_, StmtList elseBranch_)
        : condition(std::move(condition_)), thenBranch(std::move(thenBranch_)),
          elseBranch(std::move(elseBranch_)) {}
    uptr<Expr> condition;
    StmtList thenBranch;
    StmtList elseBranch;
};

// A braced body is flattened into the list; no BlockStmt is kept.
class WhileStmt final : public Stmt {
public:
    WhileStmt(uptr<Expr> condition_, StmtList body_)
        : condition(std::move(condition_)), body(std::move(body_)) {}
    uptr<Expr> condition;
    StmtList body;
};

// A loop over a list; flattened like `while`. `varType` is empty when none was written.
class ForStmt final : public Stmt {
public:
    ForStmt(std::string_view varType_, std::string_view varName_, uptr<Expr> iterable_,
            StmtList body_)
        : varType(varType_), varName(varName_), iterable(std::move(iterable_)),
          body(std::move(body_)) {}
    std::string_view varType;
    std::string_view varName;
    uptr<Expr> iterable;
    StmtList body;
};

class TryStmt final : public Stmt {
public:
    TryStmt(StmtList tryBody_, std::string_view catchVar_, StmtList catchBody_)
        : tryBody(std::move(tryBody_)), catchVar(catchVar_), catchBody(std::move(catchBody_)) {}
    StmtList tryBody;
    std::string_view catchVar;
    StmtList catchBody;
};

class BlockStmt final : public Stmt {
public:
    explicit BlockStmt(StmtList statements_) : statements(std::move(statements_)) {}
    StmtList statements;
};

// ---- Declarations ----

// Records have no virtual operations; those held by uptr live in the arena like nodes.
struct ArenaRecord {
    static constexpr bool holdsOnlyArenaMemory = true;
};

struct Parameter {
    std::string_view name;
    std::string_view typeName; // empty when none was written
};

struct FuncDef : ArenaRecord {
    explicit FuncDef(Arena& arena) : params(arena), body(arena) {}
    std::string_view name;
    std::string_view returnType; // empty when none was written
    List<Parameter> params;
    StmtList body;
};

enum class Access : unsigned char { unspecified, publicMember, privateMember };

struct ClassMethod : FuncDef {
    using FuncDef::FuncDef;
    Access access = Access::unspecified;
    bool isConstructor = false; // the member written as the class name directly followed by "("
};

struct ClassField {
    std::string_view name;
    std::string_view typeName;
    Access access = Access::unspecified;
};

struct ClassDef : ArenaRecord {
    explicit ClassDef(Arena& arena) : fields(arena), methods(arena) {}
    std::string_view name;
    List<ClassField> fields;
    List<uptr<ClassMethod>> methods;
};

// A method signature without a body.
struct AbleMethod {
    explicit AbleMethod(Arena& arena) : params(arena) {}
    std::string_view name;
    std::string_view returnType; // empty when none was written
    List<Parameter> params;
};

struct AbleDef {
    explicit AbleDef(Arena& arena) : methods(arena) {}
    std::string_view name;
    List<AbleMethod> methods;
};

// on target.event { ... } of a script block.
struct EventHandler : ArenaRecord {
    explicit EventHandler(Arena& arena) : body(arena) {}
    std::string_view eventName;
    std::string_view targetName;
    StmtList body;
};

struct Script : ArenaRecord {
    explicit Script(Arena& arena) : handlers(arena), functions(arena) {}
    List<uptr<EventHandler>> handlers;
    List<uptr<FuncDef>> functions;
};

struct Property {
    std::string_view name;
    uptr<Expr> value;
};

// A control. `type` is the control kind as written; `children` is never filled by the parser.
struct Component : ArenaRecord {
    explicit Component(Arena& arena)
        : properties(arena), children(arena), events(arena.resource()) {}
    std::string_view type;
    std::string_view name;
    List<Property> properties;
    List<uptr<Component>> children;
    std::pmr::map<std::string_view, StmtList> events; // one body per event name; the later one wins
};

// The window.
struct Vorla : ArenaRecord {
    explicit Vorla(Arena& arena) : properties(arena), components(arena) {}
    std::string_view name;
    List<Property> properties;
    List<uptr<Component>> components;
    uptr<Script> script; // never filled by the parser; the generator honours it
};

// `using KEY "text";`, or the alias `using type NAME = TYPE;`.
struct Using {
    std::string_view key;
    std::string_view value;
    bool isAlias = false;
};

// The whole program, in source order. Owns the arena and with it every node.
class AST {
public:
    AST() = default;
    AST(const AST&) = delete;
    AST& operator=(const AST&) = delete;

    Arena arena; // first, so that it goes last

    std::vector<std::string_view> imports;
    std::vector<Using> usings;
    uptr<Vorla> window;  // at most one: a later declaration replaces an earlier one
    uptr<Script> script; // all script blocks together
    std::vector<uptr<ClassDef>> classes;
    std::vector<AbleDef> ables;
    std::vector<uptr<FuncDef>> functions;    // free functions
    std::vector<std::string_view> typeNames; // declared with `typename`
};

} // namespace Orvane
