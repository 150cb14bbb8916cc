// Declared types, and the statements that declare variables.

#include "codegen/code_generator_core.h"

#include <optional>
#include <set>

namespace Orvane {

namespace {

// How a type word of the source appears in C++. All other types are Value and convert nothing.
struct LocalType {
    std::string_view name;
    std::string_view cppType;
    std::string_view conversion; // takes the content out of a Value
};
constexpr LocalType localTypes[] = {
    {"int", "int", ".asInt()"},
    {"double", "double", ".asFloat()"},
    {"string", "std::string", ".asString()"},
    {"bool", "bool", ".asBool()"},
};
constexpr LocalType dynamicType = {"value", "Value", ""};

const LocalType& findLocalType(std::string_view resolvedName) {
    for (const LocalType& type : localTypes)
        if (type.name == resolvedName) return type;
    return dynamicType;
}

// How the variable of a `for` is made from the element _e. A word that is not here is the name of
// a class.
struct LoopType {
    std::string_view name;
    std::string_view cppType;
    std::string_view element;
};
constexpr LoopType loopTypes[] = {
    {"", "Value", "_e"},
    {"value", "Value", "_e"},
    {"Value", "Value", "_e"},
    {"int", "int", "(int)(double)(_e)"},
    {"double", "double", "(double)(_e)"},
    {"string", "std::string", "_e.toString()"},
    {"std::string", "std::string", "_e.toString()"},
    {"bool", "bool", "(bool)(_e)"},
};
constexpr LoopType classLoopType = {"class", "Value", "_e"};

const LoopType& findLoopType(std::string_view name) {
    for (const LoopType& type : loopTypes)
        if (type.name == name) return type;
    return classLoopType;
}

} // namespace

// ---- Types ----

std::string_view CodeGeneratorCore::resolveType(std::string_view name, const NameMap& typeMap) {
    std::set<std::string_view> seen;
    std::optional<std::string_view> target = typeMap.find(name);
    while (target && *target != name && seen.insert(name).second) {
        name = *target;
        target = typeMap.find(name);
    }
    return name;
}

std::string_view CodeGeneratorCore::declaredClass(std::string_view variable,
                                                  const NameMap& typeMap) {
    const std::optional<std::string_view> declared = typeMap.find(variable);
    return declared ? resolveType(*declared, typeMap) : std::string_view();
}

std::string_view CodeGeneratorCore::generateVarDeclType(std::string_view name,
                                                        const NameMap& typeMap) {
    return findLocalType(resolveType(name, typeMap)).cppType;
}

// ---- Declarations ----

// The initialiser stands on a line of its own, at the margin:
//
// int NAME =
// Value(INITIALISER).asInt();
//
// Without an initialiser that line is "nullptr;", whatever the type.
void CodeGeneratorCore::genVarDecl(const VarDeclStmt& stmt) {
    const LocalType& type =
        findLocalType(varClasses ? resolveType(stmt.typeName, *varClasses) : stmt.typeName);
    addLine(type.cppType, " ", stmt.name, " = ");
    if (!stmt.initializer)
        write("nullptr");
    else if (type.conversion.empty())
        write(stmt.initializer);
    else
        write("Value(", stmt.initializer, ")", type.conversion);
    write(";\n");

    // Under the declared name, so that method calls find the class.
    if (type.cppType == "Value" && varClasses) varClasses->set(stmt.name, stmt.typeName);
}

// A value that is no array is visited as an empty one.
//
// {
//     Value _it = ITERABLE;
//     auto& _arr = _it.arrayVal;
//     for (size_t _k = 0; _k < _arr.size(); ++_k) {
//         Value _e = _arr[_k];
//         int NAME = (int)(double)(_e);
//         BODY
//     }
// }
void CodeGeneratorCore::genFor(const ForStmt& stmt) {
    const LoopType& type = findLoopType(stmt.varType);
    addLine("{");
    {
        IndentScope block(indentLevel);
        addLine("Value _it = ", stmt.iterable, ";");
        addLine("auto& _arr = _it.arrayVal;");
        addLine("for (size_t _k = 0; _k < _arr.size(); ++_k) {");
        {
            IndentScope loop(indentLevel);
            addLine("Value _e = _arr[_k];");
            addLine(type.cppType, " ", stmt.varName, " = ", type.element, ";");
            std::optional<NameBinding> binding;
            if (&type == &classLoopType && varClasses)
                binding.emplace(*varClasses, stmt.varName, stmt.varType);
            generateBody(stmt.body);
        }
        addLine("}");
    }
    addLine("}");
}

} // namespace Orvane
