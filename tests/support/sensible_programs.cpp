// Programs that the C++ compiler accepts, with a window, functions, classes and handlers.
//
// Names carry a running number, so that no two are equal and none is a macro or a word of C++.
#include "support/sensible_expressions.h"

namespace Orvane {

namespace {

class SensibleProgram : private SensibleExpressions {
public:
    explicit SensibleProgram(Choices& choices_) : SensibleExpressions(choices_) {}

    std::string write() {
        imports();
        types();
        for (std::size_t count = choices.below(3); count > 0; --count) classDeclaration();
        // What methods call is found for sure when something else calls it, too.
        if (!classes.empty()) line("void say() { alert(\"hello\"); print(\"hello\"); }");
        for (std::size_t count = choices.below(4); count > 0; --count) function();
        window();
        if (choices.oneIn(2)) script();
        return std::move(text);
    }

private:
    static constexpr int deepestBlock = 3;

    // ---- Statements ----
    void block(int depth, std::size_t most) {
        const std::size_t before = variables.size();
        for (std::size_t count = 1 + choices.below(most); count > 0; --count) statement(depth);
        variables.resize(before, {{}, Kind::dynamic});
    }
    void body(const std::string& head, int depth, const std::string& tail = "") {
        open(head);
        block(depth - 1, 3);
        close(tail);
    }
    void statement(int depth) {
        if (depth <= 0 || choices.below(2) == 0) return plainStatement();
        switch (choices.below(9)) {
        case 0:
            return ifStatement(depth);
        case 1:
            return whileStatement(depth);
        case 2:
        case 3:
            return forStatement(depth);
        case 4:
            return tryStatement(depth);
        case 5:
            return deferStatement(depth);
        case 6:
            return whenStatement();
        case 7:
            return expectStatement();
        default:
            return body("", depth);
        }
    }
    void plainStatement() {
        switch (choices.below(9)) {
        case 0:
            return line("print(" + scalar(deepestExpression) + ");");
        case 1:
            return assignment();
        case 2:
            return callStatement();
        case 3:
            return listDeclaration();
        case 4:
            return objectDeclaration();
        case 5:
            return elementAssignment();
        default:
            return declaration();
        }
    }
    void declaration() {
        static constexpr Kind kinds[] = {Kind::integer, Kind::text, Kind::dynamic, Kind::truth,
                                         Kind::floating};
        const Kind kind = choices.pick(kinds);
        const std::string name = newName();
        const std::string value =
            kind == Kind::dynamic ? anything(deepestExpression) : of(kind, deepestExpression);
        line(typeWord(kind) + " " + name + " = " + value + ";");
        variables.push_back({name, kind, {}, 0, true});
    }
    std::string typeWord(Kind kind) {
        switch (kind) {
        case Kind::integer:
            return !integerAlias.empty() && choices.oneIn(3) ? integerAlias : "int";
        case Kind::floating:
            return "double";
        case Kind::text:
            return "string";
        case Kind::truth:
            return "bool";
        default:
            return choices.oneIn(6) ? "map" : "value";
        }
    }
    void listDeclaration() {
        const std::size_t length = 1 + choices.below(4);
        const std::string name = newName();
        line((choices.oneIn(2) ? "array<int> " : "value ") + name + " = " +
             listOf(length, deepestExpression) + ";");
        variables.push_back({name, Kind::list, {}, length});
    }
    void objectDeclaration() {
        if (classes.empty() || inMethod) return declaration();
        const Class& type = choices.pick(classes);
        const std::string name = newName();
        line(type.name + " " + name + " = " + objectOf(type, deepestExpression) + ";");
        variables.push_back({name, Kind::object, type.name});
    }
    void assignment() {
        std::vector<const Variable*> found;
        for (const Variable& variable : variables)
            if (variable.mayBeAssigned) found.push_back(&variable);
        if (found.empty()) return declaration();
        const Variable& target = *choices.pick(found);
        const std::string value = target.kind == Kind::dynamic ? anything(deepestExpression)
                                                               : of(target.kind, deepestExpression);
        line(target.name + " = " + value + ";");
    }
    void callStatement() {
        static const std::optional<Kind> results[] = {std::nullopt, Kind::truth, Kind::integer};
        if (const Function* function = anyFunction(choices.pick(results)))
            return line(call(*function, deepestExpression) + ";");
        const Variable* object = anyVariable(Kind::object);
        if (!object) return line("alert(" + scalar(deepestExpression) + ");");
        const Class& type = *findClass(object->className);
        if (type.methods.empty()) return line(object->name + "." + type.fields[0] + " = 1;");
        const Function& method = choices.pick(type.methods);
        line(object->name + "." + call(method, deepestExpression) + ";");
    }
    void elementAssignment() {
        const Variable* list = anyVariable(Kind::list);
        if (!list) return declaration();
        if (choices.oneIn(3))
            line(list->name + ".all = " + list->name + ".all * " + number(10) + ";");
        else
            line(list->name + "[" + number(list->length) + "] = " + scalar(2) + ";");
    }
    void ifStatement(int depth) {
        open("if (" + condition(deepestExpression) + ")");
        block(depth - 1, 3);
        while (choices.oneIn(4)) {
            close(" else if (" + condition(2) + ") {");
            indent += 4;
            block(depth - 1, 2);
        }
        if (choices.oneIn(2)) {
            close(" else {");
            indent += 4;
            block(depth - 1, 2);
        }
        close();
    }
    void whileStatement(int depth) {
        const std::string counter = newName();
        line("int " + counter + " = 0;");
        variables.push_back({counter, Kind::integer});
        open("while (" + counter + " < " + std::to_string(1 + choices.below(5)) + ")");
        line(counter + " = " + counter + " + 1;");
        block(depth - 1, 3);
        close();
    }
    void forStatement(int depth) {
        const Variable* list = anyVariable(Kind::list);
        const std::string item = newName();
        const std::string from = list && choices.oneIn(2) ? list->name : "[1.." + integer(1) + "]";
        const bool isText = choices.oneIn(4);
        open("for (" + std::string(isText ? "string " : "") + item + " : " + from + ")");
        const std::size_t before = variables.size();
        variables.push_back({item, isText ? Kind::text : Kind::dynamic});
        block(depth - 1, 3);
        variables.resize(before, {{}, Kind::dynamic});
        close();
    }
    void tryStatement(int depth) {
        const std::string problem = newName();
        open("try");
        block(depth - 1, 2);
        if (isImported("io") && !inMethod && choices.oneIn(2)) line("fail(\"a problem\");");
        close(" catch (" + problem + ") {");
        indent += 4;
        line("alert(\"Problem: \" + " + problem + ");");
        block(depth - 1, 2);
        close();
    }
    void deferStatement(int depth) {
        if (choices.oneIn(2)) return body("defer", depth);
        line("defer print(" + scalar(2) + ");");
    }
    void whenStatement() {
        static constexpr std::string_view typeNames[] = {"int",  "double", "string",
                                                         "bool", "array",  "map"};
        open("when (" + scalar(2) + ")");
        for (std::size_t count = 1 + choices.below(3); count > 0; --count)
            line("is " + std::string(choices.pick(typeNames)) + " -> " + scalar(2) + ";");
        if (choices.oneIn(2)) line("else -> " + anything(2) + ";");
        close();
    }
    void expectStatement() {
        const std::string number = integer(2);
        line("expect " + operand(number) + " == " + operand(number) +
             (choices.oneIn(2) ? ", " + textual(2) : "") + ";");
    }

    // ---- Declarations ----
    void imports() {
        static constexpr std::string_view standard[] = {"math", "string", "array", "io", "win32"};
        if (choices.oneIn(3)) {
            libraries.assign(std::begin(standard), std::end(standard));
            line("import normal");
        } else {
            for (const std::string_view library : standard) {
                if (choices.below(2) == 0) continue;
                libraries.push_back(library);
                line("import " + std::string(library) + (choices.oneIn(2) ? ";" : ""));
            }
        }
        line("");
    }
    void types() {
        if (choices.oneIn(3)) line("using author \"somebody\";");
        if (choices.oneIn(3)) line("typename Money" + std::to_string(++names) + ";");
        if (choices.oneIn(4))
            line("able Printable" + std::to_string(++names) +
                 " { string show(int n); void go(); }");
        if (!choices.oneIn(3)) return;
        integerAlias = "Amount" + std::to_string(++names);
        line("using type " + integerAlias + " = int;");
    }
    std::vector<Kind> parameterKinds() {
        static constexpr Kind kinds[] = {Kind::dynamic, Kind::integer, Kind::text, Kind::truth};
        std::vector<Kind> parameters;
        for (std::size_t count = choices.below(4); count > 0; --count)
            parameters.push_back(choices.pick(kinds));
        return parameters;
    }
    // The list as written; the parameters become variables.
    std::string parameterList(const std::vector<Kind>& parameters) {
        std::string list = "(";
        for (const Kind kind : parameters) {
            static constexpr std::string_view words[] = {"int ", "double ", "string ", "bool "};
            const std::string name = newName();
            const bool isTyped = kind != Kind::dynamic;
            if (list.size() > 1) list += ", ";
            if (isTyped) list += words[static_cast<std::size_t>(kind)];
            if (!isTyped && choices.oneIn(2)) list += "value ";
            list += name;
            variables.push_back({name, kind});
        }
        return list + ")";
    }
    void function() {
        static const std::optional<Kind> results[] = {std::nullopt, Kind::integer, Kind::text,
                                                      Kind::dynamic, Kind::truth};
        static constexpr std::string_view words[] = {"int ", "double ", "string ", "bool ",
                                                     "value "};
        const std::optional<Kind> result = choices.pick(results);
        const std::string name = "do" + newName();
        const std::vector<Kind> parameters = parameterKinds();
        const std::string type(result ? words[static_cast<std::size_t>(*result)] : "void ");
        open(type + name + parameterList(parameters));
        block(deepestBlock, 5);
        if (result) line("return " + of(*result, 2) + ";");
        close();
        variables.clear();
        ownFunctions.push_back({name, result, parameters});
    }
    void classDeclaration() {
        Class made;
        made.name = "Record" + std::to_string(++names);
        open("class " + made.name);
        for (std::size_t count = 1 + choices.below(3); count > 0; --count) {
            made.fields.push_back(newName());
            line((choices.oneIn(3) ? "public int " : "value ") + made.fields.back() + ";");
        }
        if (choices.oneIn(3))
            line(made.name + "(value " + made.fields[0] + ") { print(" + made.fields[0] + "); }");
        inMethod = true;
        for (std::size_t count = choices.below(3); count > 0; --count) method(made);
        inMethod = false;
        close();
        classes.push_back(std::move(made));
    }
    void method(Class& made) {
        const bool hasResult = !choices.oneIn(3);
        const std::string name = "get" + newName();
        for (const std::string& field : made.fields)
            variables.push_back({field, Kind::dynamic, {}, 0, true});
        const std::vector<Kind> parameters = parameterKinds();
        open((hasResult ? "value " : "void ") + name + parameterList(parameters));
        block(2, 3);
        if (hasResult) line(choices.oneIn(2) ? "return _this;" : "return " + scalar(2) + ";");
        close();
        variables.clear();
        const std::optional<Kind> result =
            hasResult ? std::optional<Kind>(Kind::dynamic) : std::nullopt;
        made.methods.push_back({name, result, parameters});
    }

    void window() {
        for (std::size_t count = choices.below(7); count > 0; --count)
            controls.push_back(newName());
        open("vorla Main" + std::to_string(++names));
        line("title = " + sentence());
        line("width = " + number(900) + "; height = " + number(700));
        for (const std::string& control : controls) writeControl(control);
        if (choices.oneIn(3)) {
            menu = newName();
            line("menu " + menu + " { items = {\"Open\", \"|\", \"Quit\"} }");
        }
        if (choices.oneIn(4)) line("timer " + newName() + " { }");
        close();
    }
    void writeControl(const std::string& name) {
        static constexpr std::string_view kinds[] = {
            "button", "text",     "entry", "textarea", "checkbox", "radio",   "combobox", "listbox",
            "slider", "progress", "panel", "group",    "tab",      "picture", "canvas",   "status"};
        static constexpr std::string_view events[] = {"click",    "change", "select",
                                                      "dblclick", "scroll", "start"};
        const std::string kind(choices.pick(kinds));
        open(kind + (" " + name));
        line("x = " + number(800) + "; y = " + number(600) + "; width = " + number(300) + ";");
        if (choices.oneIn(2)) line("text = " + sentence());
        if (choices.oneIn(3)) line("items = {\"one\", \"two\"}");
        if (choices.oneIn(3)) line("min = 1; max = " + number(100) + "; value = " + number(100));
        if (choices.oneIn(4)) line("color = #" + std::to_string(100'000 + choices.below(900'000)));
        if (choices.oneIn(5)) line("background = \"#00FFaa\"; group = \"g\"; src = \"a.bmp\";");
        if (choices.oneIn(2)) handler("on " + std::string(choices.pick(events)));
        close();
    }
    void handler(const std::string& head) {
        for (const std::string& control : controls) variables.push_back({control, Kind::control});
        open(head);
        if (!controls.empty() && choices.oneIn(4)) textOfControl();
        block(deepestBlock, 5);
        if (choices.oneIn(4)) line("if (" + condition(2) + ") { return 0; }");
        close();
        variables.clear();
    }
    // At the start of a handler and once: from then on the control's name stands for its text.
    void textOfControl() {
        const std::string name = newName();
        line("string " + name + " = " + variables.front().name + ".text;");
        variables.front() = {name, Kind::text, {}, 0, true};
    }
    void script() {
        open("Main.script");
        for (std::size_t count = choices.below(3); count > 0; --count) function();
        for (std::size_t count = choices.below(3); count > 0 && !controls.empty(); --count)
            handler((choices.oneIn(2) ? "on " : "") + choices.pick(controls) + ".click");
        if (!menu.empty()) handler("on " + menu + "_Open.click");
        close();
    }

    std::string integerAlias;
    std::vector<std::string> controls;
    std::string menu;
};

} // namespace

std::string generateSensibleProgram(Choices& choices) { return SensibleProgram(choices).write(); }

} // namespace Orvane
