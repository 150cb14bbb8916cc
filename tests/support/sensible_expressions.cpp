#include "support/sensible_expressions.h"

namespace Orvane {

namespace {

constexpr std::string_view nouns[] = {"price", "width", "total",  "order",  "client", "weight",
                                      "speed", "limit", "amount", "factor", "score",  "level"};
constexpr std::string_view sentences[] = {"ready",
                                          "two words",
                                          "a \\\"quoted\\\" word",
                                          "line\\nbreak",
                                          "tab\\tstop",
                                          "back\\\\slash",
                                          "caf\\u00e9",
                                          "\\ud83d\\ude00",
                                          "50 %",
                                          "gr\xc3\xbc\xc3\x9f",
                                          "it's",
                                          "// no comment",
                                          "{ } ( )",
                                          "a\nbroken line"};

constexpr Kind n = Kind::integer, s = Kind::text, t = Kind::truth, v = Kind::dynamic,
               c = Kind::control;

// Functions whose result type does not depend on which of several of one name is meant.
const std::vector<Function>& libraryFunctions() {
    static const std::vector<Function> functions = {
        {"toInt", n, {v}, "math"},           {"toDouble", v, {v}, "math"},
        {"toBool", t, {v}, "math"},          {"isNumber", t, {v}, "math"},
        {"equals", t, {v, v}, "math"},       {"lessThan", t, {v, v}, "math"},
        {"between", t, {v, v, v}, "math"},   {"both", t, {v, v}, "math"},
        {"either", t, {v, v}, "math"},       {"addInt", v, {v, v}, "math"},
        {"divInt", v, {v, v}, "math"},       {"modInt", v, {v, v}, "math"},
        {"length", n, {v}, "string"},        {"isEmpty", t, {v}, "string"},
        {"contains", t, {v, v}, "string"},   {"startsWith", t, {v, v}, "string"},
        {"toUpper", s, {v}, "string"},       {"toLower", s, {v}, "string"},
        {"trim", s, {v}, "string"},          {"replaceAll", s, {v, v, v}, "string"},
        {"padLeft", s, {v, v, v}, "string"}, {"textOf", s, {v}, "string"},
        {"split", v, {v, v}, "string"},      {"join", s, {v, v}, "string"},
        {"getAt", v, {v, v}, "array"},       {"concat", v, {v, v}, "array"},
        {"flatten", v, {v}, "array"},        {"chunk", v, {v, v}, "array"},
        {"setText", t, {c, v}, "win32"},     {"getText", s, {c}, "win32"},
        {"setEnabled", t, {c, t}, "win32"},  {"show", t, {c}, "win32"},
        {"addItem", n, {c, v}, "win32"},     {"getSelected", n, {c}, "win32"},
        {"isChecked", t, {c}, "win32"},      {"getValue", n, {c}, "win32"},
        {"setColors", t, {c, s, s}, "win32"}};
    return functions;
}

} // namespace

// ---- Text ----

void SensibleExpressions::line(const std::string& content) {
    if (choices.oneIn(20)) text += std::string(indent, ' ') + "// a remark: \"{\n";
    text += std::string(indent, ' ') + content;
    if (choices.oneIn(30)) text += " /* another */";
    text += '\n';
}

void SensibleExpressions::open(const std::string& head) {
    line(head + " {");
    indent += 4;
}

void SensibleExpressions::close(const std::string& tail) {
    indent -= 4;
    line("}" + tail);
}

std::string SensibleExpressions::newName() {
    return std::string(choices.pick(nouns)) + std::to_string(++names);
}

std::string SensibleExpressions::sentence() {
    return "\"" + std::string(choices.pick(sentences)) + "\"";
}
std::string SensibleExpressions::number(std::size_t bound) {
    return std::to_string(choices.below(bound));
}

// ---- What is known ----

bool SensibleExpressions::isImported(std::string_view library) const {
    for (const std::string_view known : libraries)
        if (known == library) return true;
    return false;
}

bool SensibleExpressions::mayCall(const Function& function) const {
    if (!function.library.empty() && (inMethod || !isImported(function.library))) return false;
    for (const Kind kind : function.parameters)
        if (kind == Kind::control && !find(kind)) return false;
    return true;
}

const Variable* SensibleExpressions::find(Kind kind) const {
    for (const Variable& variable : variables)
        if (variable.kind == kind) return &variable;
    return nullptr;
}

const Variable* SensibleExpressions::anyVariable(Kind kind) {
    std::vector<const Variable*> found;
    for (const Variable& variable : variables)
        if (variable.kind == kind) found.push_back(&variable);
    return found.empty() ? nullptr : choices.pick(found);
}

const Function* SensibleExpressions::anyFunction(std::optional<Kind> result) {
    std::vector<const Function*> found;
    const auto collect = [&](const std::vector<Function>& functions) {
        for (const Function& function : functions)
            if (function.result == result && mayCall(function)) found.push_back(&function);
    };
    collect(ownFunctions);
    if (result) collect(libraryFunctions());
    return found.empty() ? nullptr : choices.pick(found);
}

const Class* SensibleExpressions::findClass(const std::string& name) const {
    for (const Class& known : classes)
        if (known.name == name) return &known;
    return nullptr;
}

// ---- Expressions ----

std::string SensibleExpressions::operand(const std::string& expression) {
    return expression.find_first_of(" -!?") == std::string::npos ? expression
                                                                 : "(" + expression + ")";
}

std::string SensibleExpressions::call(const Function& function, int depth) {
    return function.name + "(" + arguments(function, depth) + ")";
}

std::string SensibleExpressions::arguments(const Function& function, int depth) {
    std::string list;
    for (const Kind kind : function.parameters) {
        if (!list.empty()) list += ", ";
        list += kind == Kind::dynamic ? anything(depth - 1) : of(kind, depth - 1);
    }
    return list;
}

std::string SensibleExpressions::variableOr(Kind kind, const std::string& otherwise) {
    const Variable* variable = anyVariable(kind);
    return variable && choices.oneIn(2) ? variable->name : otherwise;
}

std::string SensibleExpressions::callOr(Kind kind, int depth, const std::string& otherwise) {
    const Function* function = anyFunction(kind);
    return function ? call(*function, depth) : otherwise;
}

std::string SensibleExpressions::of(Kind kind, int depth) {
    switch (kind) {
    case Kind::integer:
        return integer(depth);
    case Kind::floating:
        return floating(depth);
    case Kind::text:
        return textual(depth);
    case Kind::truth:
        return truth(depth);
    case Kind::control:
        return anyVariable(kind)->name;
    default:
        return dynamic(depth);
    }
}

std::string SensibleExpressions::integer(int depth) {
    const std::string leaf = variableOr(Kind::integer, number(100));
    if (depth <= 0) return leaf;
    switch (choices.below(6)) {
    case 5:
        return callOr(Kind::integer, depth, leaf);
    case 4:
        return "-" + operand(integer(depth - 1));
    case 3: // nothing is divided by zero
        return operand(integer(depth - 1)) + (choices.oneIn(2) ? " / " : " % ") +
               std::to_string(1 + choices.below(9));
    case 2:
        return integer(depth - 1) + " + " + integer(depth - 1) + " * " + number(10);
    case 1:
        return operand(integer(depth - 1)) + " - " + operand(integer(depth - 1));
    default:
        return leaf;
    }
}

std::string SensibleExpressions::floating(int depth) {
    const std::string leaf = variableOr(Kind::floating, number(50) + "." + number(100) + "5");
    if (depth <= 0) return leaf;
    switch (choices.below(4)) {
    case 3:
        return operand(floating(depth - 1)) + " / 2.5";
    case 2:
        return operand(floating(depth - 1)) + " * " + operand(integer(depth - 1));
    case 1:
        return operand(floating(depth - 1)) + " + " + operand(floating(depth - 1));
    default:
        return leaf;
    }
}

std::string SensibleExpressions::textual(int depth) {
    const std::string leaf = variableOr(Kind::text, sentence());
    if (depth <= 0) return leaf;
    switch (choices.below(3)) {
    case 2:
        return callOr(Kind::text, depth, leaf);
    case 1:
        return textual(depth - 1) + " + " + textual(depth - 1);
    default:
        return leaf;
    }
}

std::string SensibleExpressions::truth(int depth) {
    const std::string leaf = variableOr(Kind::truth, choices.oneIn(2) ? "false" : "true");
    if (depth <= 0) return leaf;
    switch (choices.below(6)) {
    case 5:
        return callOr(Kind::truth, depth, leaf);
    case 4:
        return "!" + operand(truth(depth - 1));
    case 3:
        return operand(textual(depth - 1)) + (choices.oneIn(2) ? " != " : " == ") +
               operand(textual(depth - 1));
    case 2:
        return operand(dynamic(depth - 1)) + " == " + operand(scalar(depth - 1));
    case 1:
        return operand(integer(depth - 1)) + comparison() + operand(integer(depth - 1));
    default:
        return leaf;
    }
}

std::string SensibleExpressions::comparison() {
    static constexpr std::string_view operators[] = {" < ", " > ", " <= ", " >= ", " == ", " != "};
    return std::string(choices.pick(operators));
}

std::string SensibleExpressions::condition(int depth) {
    return choices.oneIn(4) ? test(depth - 1) : truth(depth);
}

std::string SensibleExpressions::test(int depth) {
    static constexpr std::string_view typeNames[] = {"int", "double", "string", "bool", "array"};
    const std::string className = classes.empty() ? "Nothing" : choices.pick(classes).name;
    switch (choices.below(4)) {
    case 3:
        return "therebe(class, " + className + ")";
    case 2:
        return "have(" + className + ", ." + newName() + ")";
    case 1:
        return "is(" + scalar(depth) + ", " + (classes.empty() ? "map" : "class") + ")";
    default:
        return "is(" + scalar(depth) + ", " + std::string(choices.pick(typeNames)) + ")";
    }
}

std::string SensibleExpressions::scalar(int depth) {
    static constexpr Kind kinds[] = {Kind::integer, Kind::text, Kind::floating, Kind::truth,
                                     Kind::dynamic};
    return of(choices.pick(kinds), depth);
}

std::string SensibleExpressions::dynamic(int depth) {
    const Variable* variable = anyVariable(Kind::dynamic);
    const std::string leaf = variable ? variable->name : "[1..3]";
    if (depth <= 0) return leaf;
    switch (choices.below(9)) {
    case 8:
        return condition(depth - 1) + " ? " + operand(scalar(depth - 1)) + " : " +
               operand(scalar(depth - 1));
    case 7:
        return listElement(leaf);
    case 6:
        return objectMember(depth, leaf);
    case 5:
        return "[" + integer(depth - 1) + ".." + integer(0) + "]";
    case 4:
        return comprehension(depth);
    case 3:
        return test(depth - 1);
    case 2:
        return callOr(Kind::dynamic, depth, leaf);
    case 1: {
        static constexpr std::string_view operators[] = {" + ", " - ", " * ", " / ", " % "};
        return operand(dynamic(depth - 1)) + std::string(choices.pick(operators)) +
               operand(scalar(depth - 1));
    }
    default:
        return leaf;
    }
}

std::string SensibleExpressions::listElement(const std::string& otherwise) {
    const Variable* list = anyVariable(Kind::list);
    return list ? list->name + "[" + number(list->length) + "]" : otherwise;
}

std::string SensibleExpressions::objectMember(int depth, const std::string& otherwise) {
    const Variable* object = anyVariable(Kind::object);
    if (!object) return otherwise;
    const Class& type = *findClass(object->className);
    if (!type.methods.empty() && choices.oneIn(2)) {
        const Function& method = choices.pick(type.methods);
        if (method.result) return object->name + "." + call(method, depth);
    }
    const std::string& field = choices.pick(type.fields);
    return choices.oneIn(3) ? object->name + "[\"" + field + "\"]" : object->name + "." + field;
}

std::string SensibleExpressions::comprehension(int depth) {
    const Variable* list = anyVariable(Kind::list);
    const std::string source = list ? list->name : "[1..5]";
    const std::size_t before = variables.size();
    const std::string item = newName();
    variables.push_back({item, Kind::dynamic});
    std::string made = "[" + scalar(depth - 1) + " for " + item + " in " + source;
    if (choices.oneIn(2)) made += " where " + condition(depth - 1);
    variables.resize(before, {{}, Kind::dynamic});
    return made + "]";
}

std::string SensibleExpressions::listOf(std::size_t length, int depth) {
    std::string list = "{";
    for (std::size_t index = 0; index < length; ++index)
        list += (index > 0 ? ", " : "") + scalar(depth - 1);
    return list + "}";
}

std::string SensibleExpressions::objectOf(const Class& type, int depth) {
    std::string object = type.name + " { ";
    for (std::size_t index = 0; index < type.fields.size(); ++index)
        object += (index > 0 ? ", " : "") + type.fields[index] + " = " + scalar(depth - 1);
    return object + " }";
}

std::string SensibleExpressions::anything(int depth) {
    switch (choices.below(6)) {
    case 5:
        return depth > 0 ? listOf(choices.below(4), depth) : "{}";
    case 4:
        return "null";
    default:
        return scalar(depth);
    }
}

} // namespace Orvane
