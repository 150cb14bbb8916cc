// Statements: declarations, branches, loops, and what leaves a body.
#include "check/platform_names.h"
#include "check/type_checker.h"

#include <utility>

namespace Orvane {

namespace {

const IfStmt* elseIf(const IfStmt& stmt) {
    return stmt.elseBranch.size() == 1 ? nodeCast<IfStmt>(stmt.elseBranch.front()) : nullptr;
}

bool isListWithInteger(const Expr* expr) {
    if (nodeCast<RangeExpr>(expr)) return true;
    const auto* list = nodeCast<ArrayExpr>(expr);
    if (!list) return false;
    for (const auto& element : list->elements)
        if (const auto* literal = nodeCast<LiteralExpr>(element))
            if (literal->value.isInt()) return true;
    return false;
}

ValueType loopVariableType(std::string_view type) {
    if (type == "int") return ValueType::integer;
    if (type == "double") return ValueType::floating;
    if (type == "string") return ValueType::text;
    if (type == "bool") return ValueType::truth;
    return ValueType::dynamic;
}

bool isDynamicLoopType(std::string_view type) {
    return type.empty() || type == "value" || type == "Value";
}

ValueType typeOfCpp(std::string_view cppType) {
    if (cppType == "int") return ValueType::integer;
    if (cppType == "double") return ValueType::floating;
    if (cppType == "std::string") return ValueType::text;
    if (cppType == "bool") return ValueType::truth;
    return ValueType::dynamic;
}

} // namespace

void TypeChecker::checkBody(const StmtList& statements) {
    for (const auto& statement : statements) checkStatement(statement.get());
}

void TypeChecker::checkScoped(const StmtList& statements) {
    scopes.open();
    checkBody(statements);
    scopes.close();
}

void TypeChecker::checkStatement(const Stmt* stmt) {
    if (const auto* declaration = nodeCast<VarDeclStmt>(stmt)) return checkVarDecl(*declaration);
    if (const auto* expression = nodeCast<ExprStmt>(stmt)) return checkExprStmt(*expression);
    if (const auto* branch = nodeCast<IfStmt>(stmt)) return checkIf(*branch);
    if (const auto* exit = nodeCast<ReturnStmt>(stmt)) return checkReturn(*exit);
    if (const auto* block = nodeCast<BlockStmt>(stmt)) return checkScoped(block->statements);
    if (const auto* loop = nodeCast<ForStmt>(stmt)) return checkFor(*loop);
    if (const auto* loop = nodeCast<WhileStmt>(stmt)) return checkWhile(*loop);
    if (const auto* exit = nodeCast<ThrowStmt>(stmt)) return checkThrow(*exit);
    if (const auto* attempt = nodeCast<TryStmt>(stmt)) return checkTry(*attempt);
    if (const auto* cleanup = nodeCast<DeferStmt>(stmt)) return checkDefer(*cleanup);
    if (const auto* check = nodeCast<ExpectStmt>(stmt)) return checkExpect(*check);
    if (const auto* choice = nodeCast<WhenStmt>(stmt)) return checkWhen(*choice);
}

// ---- Expressions as statements ----

void TypeChecker::checkExprStmt(const ExprStmt& stmt) {
    if (const auto* name = nodeCast<IdentifierExpr>(stmt.expr)) return checkLoneName(*name);
    typeOf(stmt.expr.get());
    checkDroppedResult(stmt.expr.get());
    const auto* binary = nodeCast<BinaryExpr>(stmt.expr);
    if (binary && binary->op == "==")
        report(MessageId::comparisonAsStatement, placeOf(stmt.expr.get()));
}

// `break;` and `continue;` are C++'s own statements. A handler stands in a `switch`, so that
// `break` leaves it.
void TypeChecker::checkLoneName(const IdentifierExpr& name) {
    const bool leavesSwitch = body.kind == BodyKind::handler && !body.deferred;
    if (name.name == "break" && (body.loops > 0 || leavesSwitch)) return;
    if (name.name == "continue" && body.loops > 0) return;
    if (name.name == "break" || name.name == "continue")
        report(MessageId::outsideOfLoop, placeOf(&name), {name.name});
    else
        typeOfName(name);
}

// ---- Declarations ----

void TypeChecker::declareLocal(std::string_view name, ValueType type, const void* node) {
    checkName(name, node);
    const Symbol* earlier = scopes.findHere(name);
    if (earlier && earlier->kind != SymbolKind::hidden) {
        const MessageId id = earlier->kind == SymbolKind::parameter ? MessageId::nameOfParameter
                             : earlier->kind == SymbolKind::field   ? MessageId::nameOfField
                                                                    : MessageId::duplicateVariable;
        Diagnostic& message = report(id, placeOfName(node, name), {name});
        if (earlier->node)
            message.notes.push_back({placeOfName(earlier->node, name), "declared here first"});
    } else if (body.kind == BodyKind::handler && !body.deferred && scopes.depth() == 1 &&
               names.handleOf(name)) {
        report(MessageId::nameOfControl, placeOfName(node, name), {name});
    }
    const bool followed = type == ValueType::dynamic;
    if (followed) contents.push_back(0);
    scopes.declare({name, type, SymbolKind::variable, node, followed ? contents.size() : 0});
}

// Which kinds of content an expression may have: 1 for a truth value or anything, 2 for others.
unsigned TypeChecker::contentOf(const Expr* value, ValueType type) {
    const auto* binary = nodeCast<BinaryExpr>(value);
    const bool arithmetic = binary && type == ValueType::dynamic &&
                            (binary->op == "+" || binary->op == "-" || binary->op == "*" ||
                             binary->op == "/" || binary->op == "%");
    const bool list = nodeCast<RangeExpr>(value) || nodeCast<ListComprehensionExpr>(value) ||
                      nodeCast<ObjectCtorExpr>(value);
    const bool plain = isWhole(type) || type == ValueType::floating || type == ValueType::text ||
                       type == ValueType::list || type == ValueType::null;
    return arithmetic || list || plain ? 2U : 1U;
}

void TypeChecker::storeContent(const Expr* target, const Expr* value, ValueType type) {
    const auto* name = nodeCast<IdentifierExpr>(target);
    const Symbol* symbol = name ? scopes.find(name->name) : nullptr;
    if (symbol && symbol->number > 0) contents[symbol->number - 1] |= contentOf(value, type);
}

void TypeChecker::checkVarDecl(const VarDeclStmt& stmt) {
    const ValueType declared =
        typeOfCpp(CodeGeneratorCore::generateVarDeclType(stmt.typeName, variableClasses));
    useType(stmt.typeName, &stmt, false);
    declareLocal(stmt.name, declared, &stmt);
    checkFirstValue(stmt, declared);
    if (declared == ValueType::dynamic) variableClasses.set(stmt.name, stmt.typeName);
}

void TypeChecker::checkFirstValue(const VarDeclStmt& stmt, ValueType declared) {
    if (stmt.initializer) {
        const std::string_view outer = std::exchange(initialising, stmt.name);
        const ExprType given = valueOf(stmt.initializer.get());
        initialising = outer;
        if (declared == ValueType::dynamic)
            contents.back() = contentOf(stmt.initializer.get(), given.type);
        checkLostValue(stmt, declared, given.type);
        return;
    }
    if (declared == ValueType::dynamic) return;
    const MessageId id =
        declared == ValueType::text ? MessageId::stringWithoutValue : MessageId::missingFirstValue;
    const std::string_view example = declared == ValueType::truth      ? "false"
                                     : declared == ValueType::text     ? "\"\""
                                     : declared == ValueType::floating ? "0.5"
                                                                       : "0";
    report(id, placeOfName(&stmt, stmt.name), {stmt.name, stmt.typeName, example});
}

// A typed variable takes the content of its own kind out of the first value; everything else is
// lost. What is known of dynamic values: their sums and quotients are doubles or texts.
void TypeChecker::checkLostValue(const VarDeclStmt& stmt, ValueType declared, ValueType given) {
    if (given == ValueType::unknown || declared == ValueType::dynamic) return;
    const ByteRange place = placeOf(stmt.initializer.get());
    const auto* binary = nodeCast<BinaryExpr>(stmt.initializer);
    if (given == ValueType::dynamic) {
        const bool sum = binary && (binary->op == "+" || binary->op == "/");
        if (sum && declared == ValueType::integer)
            report(MessageId::dynamicSum, place, {stmt.name, binary->op});
        return;
    }
    const bool whole = isWhole(given) || given == ValueType::character;
    if (declared == ValueType::floating && whole) {
        report(MessageId::doubleFromInteger, place, {stmt.name});
        return;
    }
    const bool kept = declared == ValueType::integer ? whole
                      : declared == ValueType::text
                          ? given == ValueType::text || given == ValueType::chars
                          : given == declared;
    if (kept) return;
    const std::string_view becomes = declared == ValueType::integer    ? "0"
                                     : declared == ValueType::floating ? "0.0"
                                     : declared == ValueType::truth    ? "false"
                                                                       : "\"\"";
    report(MessageId::lostFirstValue, place,
           {stmt.name, becomes, describe(declared), describe(given)});
}

// ---- Branches and loops ----

void TypeChecker::checkIf(const IfStmt& stmt) {
    std::unordered_set<std::string_view> allRead = readTexts;
    for (const IfStmt* rung = &stmt; rung; rung = elseIf(*rung)) {
        checkCondition(rung->condition.get());
        const std::unordered_set<std::string_view> before = readTexts;
        checkScoped(rung->thenBranch);
        allRead.insert(readTexts.begin(), readTexts.end());
        readTexts = before;
        if (!elseIf(*rung)) checkScoped(rung->elseBranch);
    }
    readTexts.insert(allRead.begin(), allRead.end());
}

void TypeChecker::checkWhile(const WhileStmt& stmt) {
    ++body.loops;
    checkCondition(stmt.condition.get());
    checkScoped(stmt.body);
    --body.loops;
}

void TypeChecker::checkFor(const ForStmt& stmt) {
    const ExprType list = valueOf(stmt.iterable.get());
    if (isNumber(list.type) || list.type == ValueType::text)
        report(MessageId::loopOverNoList, placeOf(stmt.iterable.get()), {describe(list.type)});
    checkLoopType(stmt);
    const bool isClass =
        !isDynamicLoopType(stmt.varType) && loopVariableType(stmt.varType) == ValueType::dynamic;
    std::optional<NameBinding> binding;
    if (isClass) {
        useType(stmt.varType, &stmt, false);
        binding.emplace(variableClasses, stmt.varName, stmt.varType);
    }
    scopes.open();
    for (const std::string_view name : {"_it", "_arr", "_k", "_e"})
        scopes.declare({name, ValueType::unknown, SymbolKind::hidden});
    checkName(stmt.varName, &stmt);
    scopes.declare({stmt.varName, loopVariableType(stmt.varType), SymbolKind::variable, &stmt});
    ++body.loops;
    checkBody(stmt.body);
    --body.loops;
    scopes.close();
}

// int and double take their elements as doubles.
void TypeChecker::checkLoopType(const ForStmt& stmt) {
    const ValueType type = loopVariableType(stmt.varType);
    if (type != ValueType::integer && type != ValueType::floating) return;
    if (!isListWithInteger(stmt.iterable.get())) return;
    report(MessageId::typedLoop, placeOfName(&stmt, stmt.varType), {stmt.varType, stmt.varName});
}

void TypeChecker::checkTry(const TryStmt& stmt) {
    checkScoped(stmt.tryBody);
    scopes.open();
    checkName(stmt.catchVar, &stmt);
    scopes.declare({stmt.catchVar, ValueType::chars, SymbolKind::variable});
    checkBody(stmt.catchBody);
    scopes.close();
}

// The body becomes a function of its own inside the block.
void TypeChecker::checkDefer(const DeferStmt& stmt) {
    const Body outer = body;
    body.deferred = true;
    body.loops = 0;
    scopes.open();
    checkStatement(stmt.stmt.get());
    scopes.close();
    body = outer;
}

// ---- Leaving a body ----

void TypeChecker::checkReturn(const ReturnStmt& stmt) {
    if (body.deferred) {
        if (stmt.value) typeOf(stmt.value.get());
        return;
    }
    if (stmt.value) {
        checkReturnedValue(stmt, typeOf(stmt.value.get()));
        return;
    }
    if (body.result == ValueType::nothing) return;
    if (body.kind == BodyKind::handler)
        report(MessageId::handlerReturn, placeOf(&stmt));
    else
        report(MessageId::returnWithoutValue, placeOf(&stmt),
               {body.function->name, describe(body.result)});
}

void TypeChecker::checkReturnedValue(const ReturnStmt& stmt, ExprType given) {
    const ByteRange place = placeOf(stmt.value.get());
    if (body.result == ValueType::nothing) {
        if (given.type == ValueType::nothing || given.type == ValueType::unknown) return;
        report(MessageId::returnOfValue, place, {body.function->name});
        return;
    }
    if (given.type == ValueType::nothing || given.type == ValueType::stream) {
        report(MessageId::noValue, place);
        return;
    }
    if (canBecome(given.type, body.result)) return;
    if (body.kind == BodyKind::handler) {
        report(MessageId::handlerResult, place, {describe(given.type)});
        return;
    }
    Diagnostic& message =
        report(MessageId::wrongReturn, place,
               {body.function->name, describe(body.result), describe(given.type)});
    if (given.type == ValueType::dynamic)
        message.hint = "Let the function return 'value', or convert what it returns.";
}

// Only texts of the library function fail() are caught.
void TypeChecker::checkThrow(const ThrowStmt& stmt) {
    const ExprType thrown = valueOf(stmt.value.get());
    if (thrown.type == ValueType::unknown || thrown.type == ValueType::chars ||
        thrown.type == ValueType::null)
        return;
    report(MessageId::uncaughtThrow, placeOf(&stmt));
}

// ---- Checks and choices ----

void TypeChecker::checkExpect(const ExpectStmt& stmt) {
    checkCondition(stmt.condition.get());
    const auto* literal = nodeCast<LiteralExpr>(stmt.condition);
    if (literal && literal->value.isNull())
        report(MessageId::wrongCondition, placeOf(literal), {"null"});
    if (!stmt.message) return;
    const ExprType message = valueOf(stmt.message.get());
    if (!canBecome(message.type, ValueType::text))
        report(MessageId::expectMessage, placeOf(stmt.message.get()), {describe(message.type)});
}

void TypeChecker::checkWhen(const WhenStmt& stmt) {
    valueOf(stmt.subject.get());
    bool isFirst = true;
    bool afterElse = false;
    for (const WhenCase& branch : stmt.cases) {
        const bool isElse = branch.typeName == "else";
        if (isElse && isFirst)
            report(MessageId::whenElseFirst, placeOfFirst(&branch));
        else if (afterElse)
            report(MessageId::whenElseLast, placeOfFirst(&branch));
        if (!isElse) useType(branch.typeName, &branch, true);
        const std::unordered_set<std::string_view> before = readTexts;
        valueOf(branch.value.get());
        readTexts = before;
        isFirst = false;
        afterElse = afterElse || isElse;
    }
}

} // namespace Orvane
