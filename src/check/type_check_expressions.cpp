// Expressions: what type each has, and what C++ has no operator for.
#include "check/member_access.h"
#include "check/nearest_name.h"
#include "check/platform_names.h"
#include "check/type_checker.h"

#include <cmath>
#include <cstdio>
#include <utility>

namespace Orvane {

namespace {

const BinaryExpr* asAll(const Expr* expr) {
    const auto* access = asMember(expr);
    return access && memberName(*access) == "all" ? access : nullptr;
}

// The operand of a chain node that the walk goes on with; null for all other nodes.
const Expr* leftOperand(const Expr* node) {
    if (const auto* binary = nodeCast<BinaryExpr>(node)) return binary->left.get();
    if (const auto* index = nodeCast<IndexExpr>(node)) return index->object.get();
    return nullptr;
}

// A double is written with six digits, and without a point when nothing stands behind it.
bool isWrittenAsDouble(double number) {
    const double fraction = std::abs(number - std::round(number));
    if (fraction > std::abs(number) * 1e-4 && fraction > 1e-4) return true; // as nearly all are
    char text[32];
    std::snprintf(text, sizeof text, "%g", number);
    return std::string_view(text).find_first_of(".e") != std::string_view::npos;
}

// The name at the very left of a.b[c].d
const IdentifierExpr* rootOf(const Expr* expr) {
    while (const Expr* left = leftOperand(expr)) expr = left;
    return nodeCast<IdentifierExpr>(expr);
}

bool isArithmetic(OperatorText op) {
    return op == "+" || op == "-" || op == "*" || op == "/" || op == "%";
}

constexpr ExprType dynamicValue{ValueType::dynamic, false};

} // namespace

ExprType TypeChecker::valueOf(const Expr* expr) {
    const ExprType type = typeOf(expr);
    if (type.type != ValueType::nothing && type.type != ValueType::stream) return type;
    report(MessageId::noValue, placeOf(expr));
    return {};
}

ExprType TypeChecker::typeOf(const Expr* expr) {
    if (!expr) return {};
    if (const auto* literal = nodeCast<LiteralExpr>(expr)) return typeOfLiteral(*literal);
    if (const auto* name = nodeCast<IdentifierExpr>(expr)) return typeOfName(*name);
    if (leftOperand(expr)) return typeOfChain(expr);
    if (const auto* unary = nodeCast<UnaryExpr>(expr)) return typeOfUnary(*unary);
    if (const auto* call = nodeCast<CallExpr>(expr)) return typeOfCall(*call);
    if (const auto* array = nodeCast<ArrayExpr>(expr)) {
        for (const auto& element : array->elements) valueOf(element.get());
        return {ValueType::list};
    }
    if (const auto* object = nodeCast<ObjectCtorExpr>(expr)) return typeOfObject(*object);
    if (const auto* range = nodeCast<RangeExpr>(expr)) return typeOfRange(*range);
    if (const auto* ternary = nodeCast<TernaryExpr>(expr)) return typeOfTernary(*ternary);
    if (const auto* test = nodeCast<IsExpr>(expr)) {
        valueOf(test->expr.get());
        if (test->typeName != "class") useType(test->typeName, test, true);
        return dynamicValue;
    }
    if (const auto* list = nodeCast<ListComprehensionExpr>(expr)) return typeOfComprehension(*list);
    return dynamicValue; // have() and therebe()
}

// ---- Literals and names ----

ExprType TypeChecker::typeOfLiteral(const LiteralExpr& literal) const {
    const Value& value = literal.value;
    if (value.isInt()) return {value.asInt() == 0 ? ValueType::zero : ValueType::integer};
    if (value.isFloat()) {
        if (isWrittenAsDouble(value.asFloat())) return {ValueType::floating};
        return {value.asFloat() == 0 ? ValueType::unknown : ValueType::integer};
    }
    if (value.isBool()) return {ValueType::truth};
    if (value.isNull()) return {ValueType::null};
    return {ValueType::text};
}

const Symbol* TypeChecker::findVariable(std::string_view name) {
    if (const Symbol* symbol = scopes.find(name)) return symbol;
    if (body.kind != BodyKind::handler || !names.handleOf(name)) return nullptr;
    controlSymbol = {name, ValueType::dynamic, SymbolKind::control};
    return &controlSymbol;
}

ExprType TypeChecker::typeOfName(const IdentifierExpr& name) {
    if (const Symbol* symbol = findVariable(name.name)) {
        if (name.name == initialising && symbol->kind == SymbolKind::variable)
            report(MessageId::usesItself, placeOf(&name), {name.name});
        return {symbol->type, true};
    }
    if (!names.functionsOf(name.name).empty())
        report(MessageId::functionWithoutCall, placeOf(&name), {name.name});
    reportUnknownName(name);
    return {};
}

// What the headers, the window procedure and the translation itself declare is left alone.
void TypeChecker::reportUnknownName(const IdentifierExpr& name) {
    const std::string_view text = name.name;
    if (reservedWord(text) == ReservedWord::cpp) {
        report(MessageId::reservedName, placeOf(&name), {text, "C++"});
        return;
    }
    const bool ofTranslation =
        (text.starts_with('_') && text != "_this") || text.find("__") != std::string_view::npos;
    if (ofTranslation || !names.functionsOf(text).empty() || libraries.table().exists(text) ||
        mayBePlatformName(text))
        return;
    if (body.kind == BodyKind::handler) {
        for (const std::string_view known : {"hWnd", "msg", "wParam", "lParam", "hInst", "hMainWnd",
                                             "brushCache", "WndProc", "CreateControls"})
            if (text == known) return;
        if (text.starts_with("h_") && names.handleOf(text.substr(2))) return;
    } else if (names.handleOf(text)) {
        report(MessageId::controlInFunction, placeOf(&name), {text});
        return;
    }
    std::vector<std::string_view> candidates = scopes.names();
    if (body.kind == BodyKind::handler)
        for (const std::string_view control : names.controlNames()) candidates.push_back(control);
    const std::string_view nearest = nearestName(text, candidates);
    Diagnostic& message = report(MessageId::unknownVariable, placeOf(&name), {text});
    if (!nearest.empty()) message.hint = "Did you mean '" + std::string(nearest) + "'?";
}

// ---- Chains ----

// Walks down the left operands, then types the nodes from the innermost on.
ExprType TypeChecker::typeOfChain(const Expr* expr) {
    std::vector<const Expr*> nodes;
    ExprType type;
    bool typed = false;
    while (const Expr* left = leftOperand(expr)) {
        const auto* all = asAll(expr);
        const auto* collection = all ? nodeCast<IdentifierExpr>(all->left) : nullptr;
        if (collection && !allElementName.empty() && collection->name == allElementName) {
            type = {ValueType::dynamic, true}; // the element that the loop has come to
            typed = true;
            break;
        }
        nodes.push_back(expr);
        expr = left;
    }
    if (!typed) type = typeOf(expr);
    for (; !nodes.empty(); nodes.pop_back()) {
        if (const auto* index = nodeCast<IndexExpr>(nodes.back()))
            type = typeOfIndex(*index, type);
        else
            type = typeOfBinary(static_cast<const BinaryExpr&>(*nodes.back()), type);
    }
    return type;
}

ExprType TypeChecker::typeOfBinary(const BinaryExpr& binary, ExprType left) {
    if (binary.op == ".") return typeOfMember(binary, left);
    if (binary.op == "=") return typeOfAssignment(binary, left);
    const ExprType right = typeOf(binary.right.get());
    const ValueType result = resultOf(binary.op, left.type, right.type);
    if (result == ValueType::impossible) {
        const bool empty = left.type == ValueType::nothing || right.type == ValueType::nothing;
        if (empty)
            report(
                MessageId::noValue,
                placeOf(left.type == ValueType::nothing ? binary.left.get() : binary.right.get()));
        else
            report(MessageId::wrongOperands, placeOf(&binary),
                   {binary.op, describe(left.type), describe(right.type)});
        return {};
    }
    if (binary.op == "==" || binary.op == "!=") {
        const bool nulls = left.type == ValueType::null || right.type == ValueType::null;
        const bool values = left.type == ValueType::dynamic || right.type == ValueType::dynamic;
        if (nulls && values) checkNullComparison(binary);
    }
    return {result};
}

void TypeChecker::checkNullComparison(const BinaryExpr& binary) {
    report(MessageId::nullComparison, placeOf(&binary), {binary.op == "==" ? "false" : "true"});
}

ExprType TypeChecker::typeOfAssignment(const BinaryExpr& binary, ExprType left) {
    if (asAll(binary.left.get())) return typeOfBroadcast(binary, left);
    checkWrite(binary);
    const ExprType right = valueOf(binary.right.get());
    const bool isObject = left.type == ValueType::dynamic || left.type == ValueType::text;
    const bool stored = left.isVariable || isObject || left.type == ValueType::unknown;
    if (!stored) {
        report(MessageId::notAssignable, placeOf(binary.left.get()));
        return {};
    }
    storeContent(binary.left.get(), binary.right.get(), right.type);
    if (canAssign(left.type, right.type)) return {left.type, true};
    Diagnostic& message = report(MessageId::wrongAssignment, placeOf(binary.right.get()),
                                 {describe(right.type), describe(left.type)});
    if (right.type == ValueType::dynamic) {
        if (isWhole(left.type)) message.hint = "Convert it: toInt(...) of the library 'math'.";
        if (left.type == ValueType::floating)
            message.hint = "Convert it: toDouble(...) of the library 'math'.";
        if (left.type == ValueType::truth)
            message.hint = "Convert it: toBool(...) of the library 'math'.";
        if (left.type == ValueType::text)
            message.hint = "Declare the variable as 'value', or convert with a new variable: "
                           "string t = \"\" + x;";
    }
    return {left.type, true};
}

// A control is a copy of its handle, so its properties are nobody's; a method has a copy of its
// object, whose change is lost unless it is returned.
void TypeChecker::checkWrite(const BinaryExpr& binary) {
    const IdentifierExpr* root = rootOf(binary.left.get());
    if (root && body.kind == BodyKind::method) {
        const Symbol* symbol = scopes.find(root->name);
        const bool ofObject =
            symbol && (symbol->kind == SymbolKind::field || root->name == "_this");
        if (ofObject && body.function) names.markChange(*body.function);
    }
    const BinaryExpr* access = asMember(binary.left.get());
    if (!access) return;
    writtenFields.insert(memberName(*access));
    if (isControl(access->left.get()))
        report(MessageId::controlPropertyWrite, placeOf(access),
               {memberName(*access), static_cast<const IdentifierExpr&>(*access->left).name});
}

bool TypeChecker::isControl(const Expr* expr) const {
    const auto* name = nodeCast<IdentifierExpr>(expr);
    return name && body.kind == BodyKind::handler && !scopes.find(name->name) &&
           names.handleOf(name->name);
}

// x.all = y goes through the elements of a variable and has no value.
ExprType TypeChecker::typeOfBroadcast(const BinaryExpr& binary, ExprType collection) {
    const auto* all = asAll(binary.left.get());
    const auto* name = nodeCast<IdentifierExpr>(all->left);
    const std::string_view outer =
        std::exchange(allElementName, name ? name->name : std::string_view());
    valueOf(binary.right.get());
    allElementName = outer;
    const bool fits = collection.type == ValueType::unknown ||
                      (collection.type == ValueType::dynamic && collection.isVariable);
    if (!fits) report(MessageId::allOfNoList, placeOf(all), {describe(collection.type)});
    return {ValueType::nothing};
}

// x.all stands for x itself.
ExprType TypeChecker::typeOfMember(const BinaryExpr& access, ExprType object) {
    const std::string_view member = memberName(access);
    if (member == "all") return object;
    if (object.type == ValueType::dynamic) {
        if (member == "text") checkTextRead(access);
        const auto* name = nodeCast<IdentifierExpr>(access.left);
        if (name) {
            const std::string_view className =
                CodeGeneratorCore::declaredClass(name->name, variableClasses);
            const ClassDef* definition = names.classOf(className);
            if (definition && !ProgramNames::hasField(*definition, member))
                fieldUses.push_back({className, member, placeOf(access.right.get())});
        }
        return {ValueType::dynamic, true};
    }
    const bool indexable = isWhole(object.type) || object.type == ValueType::truth ||
                           object.type == ValueType::character;
    if (object.type == ValueType::unknown || indexable) return {}; // x["name"] counts in "name"
    report(MessageId::memberOfTyped, placeOf(&access), {member, describe(object.type)});
    return {};
}

// The first reading turns the handler's value of the control into the text.
void TypeChecker::checkTextRead(const BinaryExpr& access) {
    if (!isControl(access.left.get())) return;
    const std::string_view name = static_cast<const IdentifierExpr&>(*access.left).name;
    const bool repeated = !readTexts.insert(name).second;
    if (repeated || body.loops > 0) report(MessageId::secondText, placeOf(&access), {name});
}

ExprType TypeChecker::typeOfIndex(const IndexExpr& index, ExprType object) {
    const ExprType position = valueOf(index.index.get());
    if (const auto* key = nodeCast<LiteralExpr>(index.index))
        if (key->value.isString()) writtenFields.insert(key->value.textView());
    const ValueType element = elementOf(object.type, position.type);
    if (element != ValueType::impossible) return {element, true};
    report(MessageId::wrongIndex, placeOf(&index),
           {describe(object.type), describe(position.type)});
    return {};
}

// ---- Other operators ----

ExprType TypeChecker::typeOfUnary(const UnaryExpr& unary) {
    const ValueType type = typeOf(unary.operand.get()).type;
    if (type == ValueType::stream && unary.op == "!") return {ValueType::truth};
    if (type == ValueType::nothing || type == ValueType::stream) {
        report(MessageId::noValue, placeOf(unary.operand.get()));
        return {};
    }
    if (type == ValueType::unknown)
        return unary.op == "!" ? ExprType{ValueType::truth} : ExprType{};
    const bool takesIt = unary.op == "!" ? canBeCondition(type) && type != ValueType::null
                                         : isNumber(type) || type == ValueType::character ||
                                               type == ValueType::dynamic;
    if (!takesIt) {
        report(MessageId::wrongOperand, placeOf(&unary), {unary.op, describe(type)});
        return {};
    }
    if (unary.op == "!") return {ValueType::truth};
    if (type == ValueType::dynamic || type == ValueType::floating || type == ValueType::big)
        return {type};
    return {ValueType::integer};
}

ExprType TypeChecker::typeOfTernary(const TernaryExpr& ternary) {
    checkCondition(ternary.condition.get());
    const std::unordered_set<std::string_view> before = readTexts;
    valueOf(ternary.thenExpr.get());
    const std::unordered_set<std::string_view> afterThen = std::exchange(readTexts, before);
    valueOf(ternary.elseExpr.get());
    readTexts.insert(afterThen.begin(), afterThen.end());
    return dynamicValue;
}

// ---- Lists and objects ----

ExprType TypeChecker::typeOfObject(const ObjectCtorExpr& object) {
    objectClasses.insert(object.className);
    const ClassDef* definition = names.classOf(object.className);
    for (const auto& field : object.fields) {
        valueOf(field.second.get());
        if (!definition || ProgramNames::hasField(*definition, field.first)) {
            writtenFields.insert(field.first);
            continue;
        }
        fieldUses.push_back({object.className, field.first, placeOfFirst(&field)});
    }
    return dynamicValue;
}

ExprType TypeChecker::typeOfRange(const RangeExpr& range) {
    checkBound(range.start.get());
    checkBound(range.end.get());
    if (range.step) checkBound(range.step.get());
    return dynamicValue;
}

void TypeChecker::checkBound(const Expr* bound) {
    const ExprType type = valueOf(bound);
    if (type.type == ValueType::text || type.type == ValueType::list)
        report(MessageId::wrongBound, placeOf(bound), {describe(type.type)});
}

ExprType TypeChecker::typeOfComprehension(const ListComprehensionExpr& list) {
    valueOf(list.iterable.get());
    scopes.open();
    checkName(list.varName, &list);
    scopes.declare({list.varName, ValueType::dynamic, SymbolKind::variable});
    ++body.loops;
    if (list.condition) checkCondition(list.condition.get());
    valueOf(list.expr.get());
    --body.loops;
    scopes.close();
    return dynamicValue;
}

// ---- Conditions ----

// Arithmetic with dynamic values never gives a truth value, and nothing else counts as true.
void TypeChecker::checkCondition(const Expr* condition) {
    const ExprType type = typeOf(condition);
    if (type.type == ValueType::nothing) {
        report(MessageId::noValue, placeOf(condition));
        return;
    }
    if (!canBeCondition(type.type)) {
        report(MessageId::wrongCondition, placeOf(condition), {describe(type.type)});
        return;
    }
    if (const auto* name = nodeCast<IdentifierExpr>(condition)) {
        const Symbol* symbol = scopes.find(name->name);
        if (symbol && symbol->number > 0) contentUses.push_back({symbol->number, name});
        return;
    }
    const auto* binary = nodeCast<BinaryExpr>(condition);
    if (!binary) return;
    if (binary->op == "=")
        report(MessageId::assignmentAsCondition, placeOf(condition));
    else if (type.type == ValueType::dynamic && isArithmetic(binary->op))
        report(MessageId::conditionNotBool, placeOf(condition));
    else if (asMember(condition) && memberName(*binary) == "text" && isControl(binary->left.get()))
        report(MessageId::conditionNotBool, placeOf(condition));
}

} // namespace Orvane
