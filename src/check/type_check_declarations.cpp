// What stands around the statements: classes, functions, handlers, controls and imports, in the
// order in which the translation writes their bodies.
#include "check/nearest_name.h"
#include "check/platform_names.h"
#include "check/type_checker.h"
#include "codegen/control_settings.h"
#include "frontend/keywords.h"

#include <algorithm>
#include <cctype>
#include <map>
#include <set>

namespace Orvane {

namespace {

bool isParameter(const FuncDef& function, std::string_view name) {
    return std::any_of(function.params.begin(), function.params.end(),
                       [&](const Parameter& parameter) { return parameter.name == name; });
}

// The ids that controls and the targets of handlers get, in the order in which they are given out.
class ControlIds {
public:
    int idOf(const std::string& key) {
        return ids.try_emplace(key, static_cast<int>(ids.size())).first->second;
    }

private:
    std::map<std::string, int> ids;
};

// The bodies of handlers in the order in which they are written: by control, those of the window
// first. Menu entries are controls of their own, behind their menu.
std::vector<const StmtList*> handlersInOrder(const AST& program) {
    ControlIds ids;
    std::multimap<int, const StmtList*> ordered;
    for (const auto& control : program.window->components) {
        ids.idOf(std::string(control->name));
        if (control->type != "menu") continue;
        for (const std::string& item : readControlSettings(*control).items)
            if (item != "|") ids.idOf(std::string(control->name) + "_" + item);
    }
    for (const auto& control : program.window->components)
        for (const auto& [event, statements] : control->events)
            ordered.emplace(ids.idOf(std::string(control->name)), &statements);
    if (program.script)
        for (const auto& handler : program.script->handlers)
            ordered.emplace(ids.idOf(std::string(handler->targetName)), &handler->body);
    std::vector<const StmtList*> bodies;
    for (const auto& [id, statements] : ordered) bodies.push_back(statements);
    return bodies;
}

bool isTypeWord(std::string_view name) { return wordKind(name) != TokenType::Identifier; }

// The type names that values carry when the program runs.
bool isRuntimeType(std::string_view name) {
    constexpr std::string_view known[] = {"null",  "int",      "double",    "string",
                                          "bool",  "array",    "map",       "handle",
                                          "color", "function", "container", "class"};
    return std::find(std::begin(known), std::end(known), name) != std::end(known);
}

bool isHexColour(std::string_view text) {
    return text.size() == 7 && text[0] == '#' &&
           std::all_of(text.begin() + 1, text.end(),
                       [](unsigned char digit) { return std::isxdigit(digit) != 0; });
}

bool isColourName(std::string_view text) {
    return !text.empty() && std::all_of(text.begin(), text.end(), [](unsigned char letter) {
        return std::isalpha(letter) != 0 && std::islower(letter) != 0;
    });
}

} // namespace

// ---- Names ----

// A word of C++ or of the Windows headers as a name.
void TypeChecker::checkName(std::string_view name, const void* node) {
    const ReservedWord word = reservedWord(name);
    if (word == ReservedWord::none) return;
    report(MessageId::reservedName, placeOfName(node, name),
           {name, word == ReservedWord::cpp ? "C++" : "the Windows headers"});
}

void TypeChecker::checkParameters(const FuncDef& function, bool isMethod) {
    std::set<std::string_view> seen;
    if (isMethod) seen.insert("_this");
    for (const Parameter& parameter : function.params) {
        checkName(parameter.name, &parameter);
        if (!seen.insert(parameter.name).second)
            report(MessageId::duplicateParameter, placeOfLast(&parameter), {parameter.name});
        useType(parameter.typeName, &parameter, false);
        const ValueType type = isMethod ? ProgramNames::methodParameterType(parameter.typeName)
                                        : ProgramNames::functionType(parameter.typeName);
        scopes.declare({parameter.name, type, SymbolKind::parameter, &parameter});
    }
}

// ---- Classes ----

void TypeChecker::checkClasses() {
    for (const auto& definition : program.classes) {
        if (!definition->methods.empty())
            for (const ClassField& field : definition->fields) checkName(field.name, &field);
        for (const auto& method : definition->methods) checkMethod(*definition, *method);
    }
}

void TypeChecker::checkMethod(const ClassDef& definition, const ClassMethod& method) {
    const auto overloads = names.methodsOf(definition.name, method.name);
    const auto entry =
        std::find_if(overloads.begin(), overloads.end(),
                     [&](const UserFunction& function) { return function.definition == &method; });
    if (entry == overloads.end()) return;
    body = {.kind = BodyKind::method,
            .function = &method,
            .entry = &*entry,
            .owner = &definition,
            .result = entry->result};
    checkDuplicateMethod(definition, *entry);
    readTexts.clear();
    scopes.open();
    scopes.declare({"_this", ValueType::dynamic, SymbolKind::parameter});
    checkParameters(method, true);
    std::set<std::string_view> fields;
    for (const ClassField& field : definition.fields)
        if (!isParameter(method, field.name) && fields.insert(field.name).second)
            scopes.declare({field.name, ValueType::dynamic, SymbolKind::field, &field});
    checkBody(method.body);
    scopes.close();
    checkMissingReturn(method, entry->result);
}

// Every method is written, also those of two classes of one name.
void TypeChecker::checkDuplicateMethod(const ClassDef& definition, const UserFunction& method) {
    const std::string_view name = method.definition->name;
    for (const UserFunction& earlier : names.methodsOf(definition.name, name)) {
        if (earlier.definition == method.definition) return;
        if (earlier.parameters != method.parameters) continue;
        reportSecond(MessageId::duplicateMethod, method.definition, earlier.definition, name);
        return;
    }
}

void TypeChecker::reportSecond(MessageId id, const void* node, const void* first,
                               std::string_view name) {
    report(id, placeOfName(node, name), {name})
        .notes.push_back({placeOfName(first, name), "the first one stands here"});
}

// ---- Functions ----

void TypeChecker::checkFunctions() {
    for (const auto& function : program.functions)
        if (function->name != "main") checkFunction(*function, BodyKind::freeFunction);
    if (!program.script) return;
    for (const auto& function : program.script->functions)
        checkFunction(*function, BodyKind::scriptFunction);
}

// A name that the headers leave to no function, or to none with these parameters.
void TypeChecker::checkFunctionName(const UserFunction& function) {
    const std::string_view name = function.definition->name;
    checkName(name, function.definition);
    const bool isTaken = isMacroFunction(name) || name == "WinMain" || name == "wWinMain" ||
                         (function.parameters.empty() && isBareFunction(name)) ||
                         isPlatformSignature(name, function.parameters);
    if (!isTaken) return;
    const bool isOfC = std::none_of(name.begin(), name.end(),
                                    [](unsigned char letter) { return std::isupper(letter) != 0; });
    report(MessageId::reservedName, placeOfName(function.definition, name),
           {name, isOfC ? "the C library" : "the Windows headers"});
}

void TypeChecker::checkFunction(const FuncDef& function, BodyKind kind) {
    const auto overloads = names.functionsOf(function.name);
    const auto entry =
        std::find_if(overloads.begin(), overloads.end(), [&](const UserFunction& candidate) {
            return candidate.definition == &function;
        });
    if (entry == overloads.end()) return;
    checkFunctionName(*entry);
    for (const UserFunction& earlier : overloads) {
        if (earlier.definition == &function) break;
        if (earlier.parameters != entry->parameters) continue;
        reportSecond(MessageId::duplicateFunction, &function, earlier.definition, function.name);
        break;
    }
    body = {.kind = kind, .function = &function, .entry = &*entry, .result = entry->result};
    readTexts.clear();
    scopes.open();
    checkParameters(function, false);
    for (const Parameter& parameter : function.params)
        variableClasses.set(parameter.name,
                            parameter.typeName.empty() ? "value" : parameter.typeName);
    checkBody(function.body);
    scopes.close();
    checkMissingReturn(function, entry->result);
}

void TypeChecker::checkMissingReturn(const FuncDef& function, ValueType result) {
    if (result == ValueType::nothing || alwaysLeaves(function.body)) return;
    report(MessageId::missingReturn, placeOfName(&function, function.name), {function.name});
}

bool TypeChecker::alwaysLeaves(const StmtList& statements) {
    return std::any_of(statements.begin(), statements.end(),
                       [](const auto& statement) { return alwaysLeaves(statement.get()); });
}

// Walks a ladder of else-ifs in a loop.
bool TypeChecker::alwaysLeaves(const Stmt* stmt) {
    while (const auto* branch = nodeCast<IfStmt>(stmt)) {
        if (branch->elseBranch.empty() || !alwaysLeaves(branch->thenBranch)) return false;
        stmt = branch->elseBranch.front().get();
    }
    if (nodeCast<ReturnStmt>(stmt) || nodeCast<ThrowStmt>(stmt)) return true;
    if (const auto* block = nodeCast<BlockStmt>(stmt)) return alwaysLeaves(block->statements);
    if (const auto* attempt = nodeCast<TryStmt>(stmt))
        return alwaysLeaves(attempt->tryBody) && alwaysLeaves(attempt->catchBody);
    if (const auto* loop = nodeCast<WhileStmt>(stmt)) {
        const auto* literal = nodeCast<LiteralExpr>(loop->condition);
        return literal && literal->value.isBool() && literal->value.asBool();
    }
    if (const auto* expression = nodeCast<ExprStmt>(stmt)) {
        const auto* call = nodeCast<CallExpr>(expression->expr);
        return call && (call->name == "fail" || call->name == "exit");
    }
    return false;
}

// ---- Handlers ----

// Without a window no handler is written.
void TypeChecker::checkHandlers() {
    if (!program.window) return;
    for (const StmtList* statements : handlersInOrder(program)) checkHandler(*statements);
}

void TypeChecker::checkHandler(const StmtList& statements) {
    body = {};
    readTexts.clear();
    scopes.open();
    checkBody(statements);
    scopes.close();
}

// ---- Controls ----

void TypeChecker::checkControls() {
    if (!program.window) return;
    const bool anyHandler =
        (program.script && !program.script->handlers.empty()) ||
        std::any_of(program.window->components.begin(), program.window->components.end(),
                    [](const auto& control) { return !control->events.empty(); });
    std::map<std::string_view, const Component*> seen;
    std::map<std::string_view, const Component*> menus;
    for (const auto& control : program.window->components) {
        checkColours(*control);
        if (control->type == "timer") continue;
        const bool isMenu = control->type == "menu";
        if (anyHandler && !isMenu) checkName(control->name, control.get());
        const auto [first, isNew] = (isMenu ? menus : seen).emplace(control->name, control.get());
        if (!isNew)
            reportSecond(MessageId::duplicateControl, control.get(), first->second, control->name);
    }
}

// Of several properties of one name the last one counts.
void TypeChecker::checkColours(const Component& control) {
    for (const std::string_view name : {"color", "background"}) {
        const Property* last = nullptr;
        for (const Property& property : control.properties) {
            const Value* value = property.name == name ? literalOf(property) : nullptr;
            if (value && (value->isString() || value->isColor())) last = &property;
        }
        if (last) checkColour(*last);
    }
}

// Whatever is not #RRGGBB goes into the program as it is written.
void TypeChecker::checkColour(const Property& property) {
    const std::string_view text = literalOf(property)->textView();
    if (text.empty() || isHexColour(text)) return;
    if (text[0] != '#' && (!isColourName(text) || mayBePlatformName(text))) return;
    report(MessageId::unknownColour, placeOf(property.value.get()), {text});
}

// ---- Imports ----

void TypeChecker::checkImports() {
    for (const std::string_view& import : program.imports)
        if (import != "normal" && !libraries.isInstalled(import)) unknownImports.push_back(&import);
}

// Without a call that needs it the program is built all the same.
void TypeChecker::reportUnknownImports() {
    const MessageId id =
        callsUnknownFunctions ? MessageId::neededLibrary : MessageId::unknownLibrary;
    for (const std::string_view* import : unknownImports)
        report(id, placeOfLast(import), {*import});
}

// ---- What the end of the source decides ----

// Any word may stand for a dynamic value, so only one that is nearly a type of the source is wrong.
void TypeChecker::reportUnknownType(const TypeUse& use) {
    const std::string_view nearest = nearestName(use.name, names.typeNameList());
    if (nearest.empty()) return;
    report(MessageId::unknownType, placeOfName(use.node, use.name), {use.name, nearest});
}

// Types are collected, since an object may make a class known further down.
void TypeChecker::useType(std::string_view name, const void* node, bool isTest) {
    if (name.empty() || names.declaresType(name)) return;
    const bool known = isTest ? isRuntimeType(name) : isTypeWord(name) || name == "Value";
    if (!known) typeUses.push_back({name, node, isTest});
}

void TypeChecker::reportPending() {
    reportUnknownImports();
    for (const TypeUse& use : typeUses) {
        if (objectClasses.contains(use.name)) continue;
        if (use.isTest)
            report(MessageId::neverTrueTest, placeOfName(use.node, use.name), {use.name});
        else
            reportUnknownType(use);
    }
    constexpr unsigned maybeTrue = 1U;
    for (const ContentUse& use : contentUses)
        if ((contents[use.variable - 1] & maybeTrue) == 0)
            report(MessageId::conditionNotBool, placeOf(use.node));
    for (const FieldUse& use : fieldUses) {
        if (writtenFields.contains(use.field) || names.isDeclaredTwice(use.className)) continue;
        const ClassDef* definition = names.classOf(use.className);
        std::vector<std::string_view> fields;
        for (const ClassField& field : definition->fields) fields.push_back(field.name);
        Diagnostic& message =
            report(MessageId::unknownField, use.place, {use.className, use.field});
        const std::string_view nearest = nearestName(use.field, fields);
        if (!nearest.empty()) message.hint = "Did you mean '" + std::string(nearest) + "'?";
    }
}

} // namespace Orvane
