#include "check/program_names.h"

#include "codegen/control_kinds.h"

#include <algorithm>

namespace Orvane {

namespace {

void collectScriptCalls(const Script* script, NameSet& names) {
    if (!script) return;
    for (const auto& function : script->functions)
        CodeGeneratorCore::collectCalls(function->body, names);
    for (const auto& handler : script->handlers)
        CodeGeneratorCore::collectCalls(handler->body, names);
}

template <class Map>
std::vector<std::string_view> keysOf(const Map& map) {
    std::vector<std::string_view> keys;
    keys.reserve(map.size());
    for (const auto& entry : map) keys.push_back(entry.first);
    std::sort(keys.begin(), keys.end());
    return keys;
}

template <class Functions>
std::span<const UserFunction> overloads(const Functions& functions, std::string_view name) {
    const auto entry = functions.find(name);
    if (entry == functions.end()) return {};
    return entry->second;
}

} // namespace

ProgramNames::ProgramNames(const AST& program) {
    for (const auto& definition : program.classes) addClass(*definition);
    for (const auto& function : program.functions) addFunction(*function, true);
    if (program.script)
        for (const auto& function : program.script->functions) addFunction(*function, false);
    if (program.window) addWindow(*program.window);
    for (const AbleDef& able : program.ables) typeNames.insert(able.name);
    for (const std::string_view name : program.typeNames) typeNames.insert(name);
    for (const Using& entry : program.usings)
        if (entry.isAlias) typeNames.insert(entry.key);
    collectCalledNames(program);
}

// A free function named main is not written.
void ProgramNames::addFunction(const FuncDef& function, bool hasPrototype) {
    if (hasPrototype && function.name == "main") return;
    UserFunction entry{.definition = &function, .hasPrototype = hasPrototype};
    entry.result =
        function.returnType == "void" ? ValueType::nothing : functionType(function.returnType);
    for (const Parameter& parameter : function.params)
        entry.parameters.push_back(functionType(parameter.typeName));
    if (!hasPrototype) entry.order = scriptFunctions++;
    functions[function.name].push_back(std::move(entry));
}

void ProgramNames::addClass(const ClassDef& definition) {
    if (classes.contains(definition.name)) twice.insert(definition.name);
    classes[definition.name] = &definition;
    typeNames.insert(definition.name);
    for (const auto& method : definition.methods) {
        UserFunction entry{.definition = method.get(), .order = methodCount++};
        const bool returnsNothing = method->returnType.empty() || method->returnType == "void";
        entry.result = returnsNothing ? ValueType::nothing : ValueType::dynamic;
        for (const Parameter& parameter : method->params)
            entry.parameters.push_back(methodParameterType(parameter.typeName));
        methods[definition.name][method->name].push_back(std::move(entry));
    }
}

void ProgramNames::addWindow(const Vorla& window) {
    for (const auto& control : window.components) controls.emplace(control->name, control.get());
}

// As the generator looks for them: not in methods and not in properties.
void ProgramNames::collectCalledNames(const AST& program) {
    collectScriptCalls(program.script.get(), called);
    for (const auto& function : program.functions)
        CodeGeneratorCore::collectCalls(function->body, called);
    if (!program.window) return;
    for (const auto& control : program.window->components)
        for (const auto& [event, body] : control->events)
            CodeGeneratorCore::collectCalls(body, called);
}

std::span<const UserFunction> ProgramNames::functionsOf(std::string_view name) const {
    return overloads(functions, name);
}

std::span<const UserFunction> ProgramNames::methodsOf(std::string_view className,
                                                      std::string_view method) const {
    const auto entry = methods.find(className);
    if (entry == methods.end()) return {};
    return overloads(entry->second, method);
}

void ProgramNames::markChange(const FuncDef& method) {
    for (auto& [className, byName] : methods) {
        const auto entry = byName.find(method.name);
        if (entry == byName.end()) continue;
        for (UserFunction& function : entry->second)
            if (function.definition == &method) function.changesObject = true;
    }
}

const ClassDef* ProgramNames::classOf(std::string_view name) const {
    const auto entry = classes.find(name);
    return entry == classes.end() ? nullptr : entry->second;
}

bool ProgramNames::hasMethod(const ClassDef& definition, std::string_view method) {
    return std::any_of(definition.methods.begin(), definition.methods.end(),
                       [&](const auto& candidate) { return candidate->name == method; });
}

bool ProgramNames::hasField(const ClassDef& definition, std::string_view field) {
    return std::any_of(definition.fields.begin(), definition.fields.end(),
                       [&](const ClassField& candidate) { return candidate.name == field; });
}

const Component* ProgramNames::controlOf(std::string_view name) const {
    const auto entry = controls.find(name);
    return entry == controls.end() ? nullptr : entry->second;
}

const Component* ProgramNames::handleOf(std::string_view name) const {
    const Component* control = controlOf(name);
    return control && hasHandle(*control) ? control : nullptr;
}

std::vector<std::string_view> ProgramNames::functionNames() const { return keysOf(functions); }

std::vector<std::string_view> ProgramNames::controlNames() const { return keysOf(controls); }

std::vector<std::string_view> ProgramNames::typeNameList() const {
    std::vector<std::string_view> names(typeNames.begin(), typeNames.end());
    std::sort(names.begin(), names.end());
    return names;
}

ValueType ProgramNames::functionType(std::string_view type) {
    if (type == "int") return ValueType::big;
    if (type == "double") return ValueType::floating;
    if (type == "string") return ValueType::text;
    if (type == "bool") return ValueType::truth;
    if (type == "void") return ValueType::unknown; // no parameter can have it
    return ValueType::dynamic;
}

ValueType ProgramNames::methodParameterType(std::string_view type) {
    if (type == "int") return ValueType::integer;
    if (type == "String") return ValueType::text;
    if (type == "void") return ValueType::dynamic;
    return functionType(type);
}

} // namespace Orvane
