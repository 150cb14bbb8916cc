// Expressions other than chains (chains.cpp) and those that build lists (lists.cpp).

#include "codegen/code_generator_core.h"

#include <algorithm>

namespace Orvane {

namespace {

// The escape that stands for a byte below 32, a quote or a backslash; empty where the byte itself
// is written.
std::string_view formatEscape(char character, char (&buffer)[5]) {
    constexpr std::string_view digits = "0123456789abcdef";
    const auto byte = static_cast<unsigned char>(character);
    switch (byte) {
    case '"':
        return "\\\"";
    case '\\':
        return "\\\\";
    case '\n':
        return "\\n";
    case '\r':
        return "\\r";
    case '\t':
        return "\\t";
    case 0:
        return "\\0";
    default:
        break;
    }
    if (byte >= 32) return {};
    buffer[0] = '\\';
    buffer[1] = 'x';
    buffer[2] = digits[byte >> 4U];
    buffer[3] = digits[byte & 15U];
    return {buffer, 4};
}

void appendEscaped(TextStream& out, std::string_view text) {
    std::size_t written = 0;
    for (std::size_t at = 0; at < text.size(); ++at) {
        char buffer[5];
        const std::string_view escape = formatEscape(text[at], buffer);
        if (escape.empty()) continue;
        out << text.substr(written, at - written) << escape;
        written = at + 1;
    }
    out << text.substr(written);
}

std::string_view formatBool(bool flag) { return flag ? "true" : "false"; }

} // namespace

// ---- Literals and names ----

std::string CodeGeneratorCore::escapeString(std::string_view text) {
    TextStream escaped;
    appendEscaped(escaped, text);
    return escaped.str();
}

// 5    2.5    std::string("text")    true    std::string("#FF0000")    nullptr
void CodeGeneratorCore::genLiteral(const LiteralExpr& literal) {
    const Value& value = literal.value;
    if (value.isInt()) {
        write(value.asInt());
    } else if (value.isFloat()) {
        write(value.asFloat());
    } else if (value.isString()) {
        write("std::string(\"");
        appendEscaped(out, value.textView());
        write("\")");
    } else if (value.isBool()) {
        write(formatBool(value.asBool()));
    } else if (value.isColor()) {
        write("std::string(\"", value.textView(), "\")");
    } else {
        write("nullptr");
    }
}

void CodeGeneratorCore::genIdentifier(const IdentifierExpr& identifier) { write(identifier.name); }

// ---- Operators ----

// (-x)    !(x)
// An operator that the language does not have writes nothing, not even its operand.
void CodeGeneratorCore::genUnary(const UnaryExpr& unary) {
    if (unary.op == "-")
        write("(-", unary.operand, ")");
    else if (unary.op == "!")
        write("!(", unary.operand, ")");
}

// ((bool)(CONDITION) ? (Value)(THEN) : (Value)(ELSE))
void CodeGeneratorCore::genTernary(const TernaryExpr& ternary) {
    write("((bool)(", ternary.condition, ") ? (Value)(", ternary.thenExpr, ") : (Value)(",
          ternary.elseExpr, "))");
}

// ---- Arrays and objects ----

// std::vector<Value>{a, b}
void CodeGeneratorCore::genArray(const ArrayExpr& array) {
    write("std::vector<Value>{", array.elements, "}");
}

// ([&]() -> Value { Value _o = Value::makeObject("Point");_o["x"] = 1; _o["y"] = 2; return _o; })()
void CodeGeneratorCore::genObjectCtor(const ObjectCtorExpr& object) {
    write("([&]() -> Value { Value _o = Value::makeObject(\"", object.className, "\");");
    for (const auto& [field, value] : object.fields) write("_o[\"", field, "\"] = ", value, "; ");
    write("return _o; })()");
}

// ---- Type and existence tests ----

// (Value)(((Value)(X)).typeName == "TYPE")
void CodeGeneratorCore::genIs(const IsExpr& test) {
    if (test.typeName == "class")
        genIsClass(test);
    else
        write("(Value)(((Value)(", test.expr, ")).typeName == \"", test.typeName, "\")");
}

// Whether X is an instance of a class of the program. Without classes the two lines with _classes
// are left out, and the test is false for every value.
//
// (Value)([&](const Value& _v) -> bool {
//     static const char* _builtins[] = {"int",...};
//     for (auto _s : _builtins) if (_v.typeName == _s) return false;
//     static const char* _classes[] = {"Circle","Shape"};
//     for (auto _s : _classes) if (_v.typeName == _s) return true;
//     return false;
// }(X))
void CodeGeneratorCore::genIsClass(const IsExpr& test) {
    write("(Value)([&](const Value& _v) -> bool {\n");
    {
        IndentScope body(indentLevel);
        addLine("static const char* _builtins[] = "
                "{\"int\",\"double\",\"string\",\"bool\",\"color\",\"array\",\"map\",\"handle\","
                "\"value\"};");
        addLine("for (auto _s : _builtins) if (_v.typeName == _s) return false;");
        if (classes && !classes->empty()) {
            writeIndent();
            write("static const char* _classes[] = {");
            std::string_view separator;
            for (const auto& [name, info] : *classes) {
                write(separator, "\"", name, "\"");
                separator = ",";
            }
            write("};\n");
            addLine("for (auto _s : _classes) if (_v.typeName == _s) return true;");
        }
        addLine("return false;");
    }
    writeIndent();
    write("}(", test.expr, "))");
}

// (Value)(true) /* have(Shape, .area) */
void CodeGeneratorCore::genHave(const HaveExpr& test) {
    write("(Value)(", formatBool(hasMember(test)), ") /* have(", test.className, ", ",
          test.memberName, ") */");
}

bool CodeGeneratorCore::hasMember(const HaveExpr& test) const {
    std::string_view member = test.memberName;
    if (member.starts_with('.')) member.remove_prefix(1);
    const ClassInfo* info = findClass(test.className);
    return info && (info->methods.contains(member) || info->fieldNames.contains(member));
}

// (Value)(false) /* therebe(class, Shape) */
void CodeGeneratorCore::genTherebe(const TherebeExpr& test) {
    write("(Value)(", formatBool(exists(test)), ") /* therebe(", test.kind, ", ", test.name,
          ") */");
}

// Every kind but `class` asks for a function: a method of any class or a function of the program.
bool CodeGeneratorCore::exists(const TherebeExpr& test) const {
    if (test.kind == "class") return findClass(test.name) != nullptr;
    const auto hasMethod = [&](const auto& entry) {
        return entry.second.methods.contains(test.name);
    };
    if (classes && std::any_of(classes->begin(), classes->end(), hasMethod)) return true;
    return knownFunctions && knownFunctions->contains(test.name);
}

} // namespace Orvane
