// What a source declares for all of its bodies: functions, classes with their methods, controls and
// the names of types; and which functions it calls where the translation looks for calls.
//
//     ProgramNames names(source.tree());
//     names.functionsOf("greet").front().parameters;
#pragma once

#include "check/value_types.h"
#include "codegen/code_generator_core.h"
#include "frontend/syntax_tree.h"

#include <span>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <vector>

namespace Orvane {

// One function as C++ sees it, whether it is a function of the source or a method.
struct UserFunction {
    const FuncDef* definition = nullptr;
    std::vector<ValueType> parameters{}; // without the object of a method
    ValueType result = ValueType::nothing;
    bool hasPrototype = false;  // may be called from everywhere
    std::size_t order = 0;      // where it stands among those without one, from 0
    bool changesObject = false; // a method that assigns to fields
};

class ProgramNames {
public:
    explicit ProgramNames(const AST& program);

    std::span<const UserFunction> functionsOf(std::string_view name) const;

    // All methods of a class name, those of an earlier class of the same name included.
    std::span<const UserFunction> methodsOf(std::string_view className,
                                            std::string_view method) const;
    void markChange(const FuncDef& method);

    // The class that counts under the name; null when there is none.
    const ClassDef* classOf(std::string_view name) const;
    bool isDeclaredTwice(std::string_view className) const { return twice.contains(className); }
    static bool hasMethod(const ClassDef& definition, std::string_view method);
    static bool hasField(const ClassDef& definition, std::string_view field);

    // A control that handlers know, or any control; null when there is none.
    const Component* handleOf(std::string_view name) const;
    const Component* controlOf(std::string_view name) const;

    // Whether the source says what the type is: a class, an able, a typename or an alias.
    bool declaresType(std::string_view name) const { return typeNames.contains(name); }

    const NameSet& calledNames() const { return called; }

    std::vector<std::string_view> functionNames() const;
    std::vector<std::string_view> controlNames() const;
    std::vector<std::string_view> typeNameList() const;

    // The C++ type that the parameter or result of a function has, and the parameter of a method.
    static ValueType functionType(std::string_view type);
    static ValueType methodParameterType(std::string_view type);

private:
    using Functions = std::unordered_map<std::string_view, std::vector<UserFunction>>;
    void addFunction(const FuncDef& function, bool hasPrototype);
    void addClass(const ClassDef& definition);
    void addWindow(const Vorla& window);
    void collectCalledNames(const AST& program);

    Functions functions;
    std::unordered_map<std::string_view, Functions> methods; // by class
    std::unordered_map<std::string_view, const ClassDef*> classes;
    std::unordered_map<std::string_view, const Component*> controls;
    std::unordered_set<std::string_view> twice; // classes declared more than once
    std::unordered_set<std::string_view> typeNames;
    NameSet called;
    std::size_t scriptFunctions = 0;
    std::size_t methodCount = 0;
};

} // namespace Orvane
