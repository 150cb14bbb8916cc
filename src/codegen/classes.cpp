// Classes. An instance is a Value whose map holds the fields; every method becomes a free function
// of import.hpp that takes the instance as its first parameter.

#include "codegen/code_generator.h"

#include <algorithm>
#include <utility>

namespace Orvane {

namespace {

using ClassInfo = CodeGeneratorCore::ClassInfo;
using ClassMethodInfo = CodeGeneratorCore::ClassMethodInfo;

ClassMethodInfo describeMethod(const ClassMethod& method) {
    ClassMethodInfo info;
    info.returnType = method.returnType;
    info.params.reserve(method.params.size());
    for (const Parameter& parameter : method.params)
        info.params.emplace_back(parameter.typeName, parameter.name);
    info.isConstructor = method.isConstructor;
    return info;
}

ClassInfo describeClass(const ClassDef& definition) {
    ClassInfo info;
    for (const ClassField& field : definition.fields) info.fieldNames.emplace(field.name);
    for (const auto& method : definition.methods)
        info.methods.insert_or_assign(std::string(method->name), describeMethod(*method));
    return info;
}

// Methods take whole numbers as int; functions of scripts take them as long long.
std::string_view formatParameterType(std::string_view type) {
    if (type == "int" || type == "bool" || type == "double") return type;
    if (type == "string" || type == "String") return "std::string";
    return "Value";
}

// void Point__move(Value _this, int dx) {
void writeMethodHead(TextStream& stream, std::string_view className, std::string_view methodName,
                     const ClassMethodInfo& method) {
    const bool returnsNothing = method.returnType.empty() || method.returnType == "void";
    stream << (returnsNothing ? "void " : "Value ") << className << "__" << methodName
           << "(Value _this";
    for (const auto& [type, name] : method.params)
        stream << ", " << formatParameterType(type) << ' ' << name;
    stream << ") {\n";
}

bool isParameter(const ClassMethodInfo& method, std::string_view name) {
    const auto hasName = [&](const auto& parameter) { return parameter.second == name; };
    return std::any_of(method.params.begin(), method.params.end(), hasName);
}

} // namespace

// The whole table stands before the first method is written, so that methods may call those of
// classes further down. Of two classes of one name the later one is in the table; the methods of
// both are written, each against the fields of its own class.
void CodeGenerator::generateAllClasses(const AST& program) {
    classTable.clear();
    for (const auto& definition : program.classes)
        classTable.insert_or_assign(std::string(definition->name), describeClass(*definition));

    auxOut << "// ===== Class helpers generated =====\n";
    for (const auto& definition : program.classes) {
        const ClassInfo info = describeClass(*definition);
        for (const auto& method : definition->methods)
            generateClassMethod(definition->name, info, *method);
    }
}

// void Point__move(Value _this, int dx) {
// BODY
// }
//
// Bodies are written to the main stream, which changes texts with the import stream meanwhile.
void CodeGenerator::generateClassMethod(std::string_view className, const ClassInfo& classInfo,
                                        const ClassMethod& method) {
    const Observation observation(*this, auxOut, &method);
    const ClassMethodInfo info = describeMethod(method);
    writeMethodHead(auxOut, className, method.name, info);
    exchangeTexts();
    generateClassMethodBody(className, classInfo, info, method.body);
    exchangeTexts();
    auxOut << "}\n\n";
}

// auto& FIELD = _this["FIELD"];
// _this["PARAMETER"] = PARAMETER;
// STATEMENTS
//
// A field that has the name of a parameter gets no reference; a constructor stores the parameter
// into it instead.
void CodeGenerator::generateClassMethodBody(std::string_view, const ClassInfo& classInfo,
                                            const ClassMethodInfo& method, const StmtList& body) {
    for (const std::string& field : classInfo.fieldNames)
        if (!isParameter(method, field)) write("auto& ", field, " = _this[\"", field, "\"];\n");
    if (method.isConstructor)
        for (const auto& [type, name] : method.params)
            if (classInfo.fieldNames.contains(name)) write("_this[\"", name, "\"] = ", name, ";\n");
    generateBody(body);
}

} // namespace Orvane
