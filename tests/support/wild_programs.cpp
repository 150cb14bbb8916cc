// Programs along the grammar of docs/language.md, rule by rule, without a thought for meaning.
//
// Each function writes one construct, token by token; between tokens stand blanks, line breaks and
// comments. `depth` counts what may still be nested; at 0 only leaves are written.
#include "support/program_generator.h"

#include <array>

namespace Orvane {

namespace {

using Words = std::string_view;

constexpr Words names[] = {"a",     "b",   "total",  "Point",    "_x",    "item9", "all",   "on1",
                           "start", "new", "switch", "Shape",    "click", "x",     "y",     "width",
                           "title", "min", "max",    "src",      "items", "print", "alert", "_this",
                           "std",   "e",   "near",   "internal", "s",     "status"};
// Types of variables and parameters; the first row also stand behind a "." and in front of "=".
constexpr Words valueWords[] = {"value", "int",   "double",    "string",
                                "bool",  "array", "container", "map"};
constexpr Words builtInWords[] = {
    "type",     "button",  "text",   "entry",    "textarea", "checkbox", "radio",
    "combobox", "listbox", "slider", "progress", "panel",    "group",    "tab",
    "canvas",   "picture", "menu",   "timer",    "window",   "color",    "font",
    "position", "size",    "rect",   "cursor",   "icon"};
constexpr Words otherWords[] = {
    "script", "macro",  "pointer", "is",    "return",  "if",     "else", "for",     "while", "in",
    "where",  "try",    "catch",   "throw", "private", "public", "true", "false",   "null",  "cpp",
    "defer",  "expect", "therebe", "have",  "when",    "file",   "void", "function"};
constexpr Words punctuation[] = {";",  ",",  "+",  "->", ":", "?", "&&",
                                 "||", "==", "..", "@",  "(", "]"};
constexpr Words texts[] = {"",           "text",      "#FF0000",
                           "#12345",     "#ZZZZZZ",   "a b",
                           "\\n\\t\\\"", "\\u00e9",   "\\ud83d\\ude00",
                           "\\ud800",    "%s%n",      "two\nlines",
                           "\\",         "//",        "/*",
                           "{",          "Arial, 12", "\xff\x80",
                           "\\q",        "\x01",      "|"};

class WildProgram {
public:
    explicit WildProgram(Choices& choices_) : choices(choices_) {}

    // program = { declaration } ;
    std::string write() {
        for (std::size_t count = some(12); count > 0; --count) declaration();
        return std::move(text);
    }

private:
    static constexpr int deepest = 5;
    static constexpr std::size_t enoughTokens = 4000; // from then on only leaves are written

    // ---- Tokens ----
    void token(std::string_view spelling) {
        text += spelling;
        ++tokens;
        separator();
    }
    void separator() {
        switch (choices.below(24)) {
        case 23:
            text += " /* a comment * of \"some\"\n lines */";
            break;
        case 22:
            text += " // to the end of the line { \"\n";
            break;
        case 21:
            text += "\t \r\n";
            break;
        case 20:
        case 19:
            text += '\n';
            break;
        default:
            text += ' ';
        }
    }
    std::size_t some(std::size_t most) { return choices.below(most + 1); }
    bool maybe() { return choices.below(2) == 1; }
    void name() { token(choices.pick(names)); }
    void valueWord() { token(choices.pick(valueWords)); }
    void builtInWord() { token(choices.pick(builtInWords)); }
    void memberName() {
        const std::size_t kind = choices.below(4);
        kind == 3 ? valueWord() : kind == 2 ? builtInWord() : name();
    }
    void plainName() { choices.oneIn(4) ? builtInWord() : name(); }
    void declarationType() { choices.oneIn(4) ? builtInWord() : valueWord(); }
    void parameterType() { choices.oneIn(6) ? token("function") : declarationType(); }
    void resultType() { choices.oneIn(6) ? token("void") : parameterType(); }
    void anyType() { maybe() ? name() : resultType(); }
    void word() {
        const std::size_t kind = choices.below(3);
        kind == 2 ? token(choices.pick(otherWords)) : kind == 1 ? valueWord() : name();
    }
    void string() {
        std::string literal = "\"";
        const std::string_view content = choices.pick(texts);
        literal += content == "\\" ? std::string_view("\\\\") : content;
        token(literal + '"');
    }
    void literal() {
        switch (choices.below(9)) {
        case 0:
        case 1:
            return token(std::to_string(choices.below(1000)));
        case 2:
            return string();
        case 3:
            return token(std::to_string(choices.below(300)) + "." +
                         std::to_string(choices.below(300)));
        case 4:
            return token(choices.pick(
                std::array<Words, 6>{"'c'", "'\\n'", "'\xc3\xa9'", "'\\u0041'", "'\"'", "''' "}));
        case 5:
            return token(choices.pick(
                std::array<Words, 5>{"#3366CC", "#F00", "#", "#abcdef0123", "#00000000"}));
        case 6:
            return token(maybe() ? "true" : "false");
        case 7:
            return token("null");
        default:
            return token(choices.pick(std::array<Words, 4>{"2147483647", "0", "007", "0.000001"}));
        }
    }

    // ---- Expressions ----
    bool atLeaves(int depth) const { return depth <= 0 || tokens > enoughTokens; }

    void expression(int depth) {
        choice(depth);
        while (choices.oneIn(10)) {
            token(".");
            name();
        }
    }
    void choice(int depth) {
        operations(depth);
        if (atLeaves(depth)) return;
        const std::size_t kind = choices.below(12);
        if (kind == 11) {
            token("?");
            expression(depth - 1);
            token(":");
            expression(depth - 1);
        } else if (kind == 10) {
            token("=");
            choice(depth - 1);
        }
    }
    void operations(int depth) {
        static constexpr Words operators[] = {
            "+", "-", "*", "/", "%", "==", "!=", "<", ">", "<=", ">="};
        prefix(depth);
        if (atLeaves(depth)) return;
        while (choices.oneIn(3)) {
            token(choices.pick(operators));
            prefix(depth - 1);
        }
    }
    void prefix(int depth) {
        while (choices.oneIn(8)) token(maybe() ? "!" : "-");
        primary(depth);
    }
    void primary(int depth) {
        if (atLeaves(depth)) return maybe() ? name() : literal();
        switch (choices.below(9)) {
        case 0:
            return name();
        case 1:
        case 2:
            return literal();
        case 3:
        case 4:
            return chain(depth - 1);
        case 5:
            token("(");
            expression(depth - 1);
            return token(")");
        case 6:
            return list(depth - 1);
        case 7:
            return object(depth - 1);
        default:
            return test(depth - 1);
        }
    }
    void chain(int depth) {
        name();
        for (std::size_t count = 1 + some(3); count > 0; --count) {
            switch (choices.below(3)) {
            case 0:
                token(".");
                memberName();
                break;
            case 1:
                token("[");
                expression(depth);
                token("]");
                break;
            default:
                token("(");
                arguments(depth, some(3));
                token(")");
            }
        }
    }
    void arguments(int depth, std::size_t count) {
        for (std::size_t index = 0; index < count; ++index) {
            if (index > 0) token(",");
            expression(depth);
        }
    }
    void list(int depth) {
        const std::size_t kind = choices.below(4);
        if (kind == 0) {
            token("{");
            arguments(depth, some(4));
            return token("}");
        }
        token("[");
        if (kind == 1)
            arguments(depth, 1 + some(4));
        else if (kind == 2)
            range(depth);
        else
            comprehension(depth);
        token("]");
    }
    void range(int depth) {
        expression(depth);
        token("..");
        arguments(depth, 1 + some(1));
    }
    void comprehension(int depth) {
        expression(depth);
        token("for");
        name();
        token("in");
        expression(depth);
        if (!maybe()) return;
        token("where");
        expression(depth);
    }
    void object(int depth) {
        name();
        token("{");
        const std::size_t count = some(3);
        for (std::size_t index = 0; index < count; ++index) {
            if (index > 0) token(",");
            name();
            token("=");
            expression(depth);
        }
        token("}");
    }
    void test(int depth) {
        switch (choices.below(3)) {
        case 0:
            token("is");
            token("(");
            expression(depth);
            token(",");
            choices.oneIn(4) ? token("class") : memberName();
            break;
        case 1:
            token("have");
            token("(");
            name();
            token(",");
            if (maybe()) token(".");
            name();
            break;
        default:
            token("therebe");
            token("(");
            token(choices.pick(std::array<Words, 5>{"class", "function", "map", "able", "thing"}));
            token(",");
            name();
        }
        token(")");
    }

    // ---- Statements ----
    void block(int depth) {
        token("{");
        const std::size_t most = atLeaves(depth) ? 1 : 5;
        for (std::size_t count = some(most); count > 0; --count) statement(depth - 1);
        token("}");
    }
    void statement(int depth) {
        if (atLeaves(depth)) return expressionStatement(depth);
        switch (choices.below(14)) {
        case 0:
        case 1:
            return expressionStatement(depth);
        case 2:
        case 3:
        case 4:
            return variable(depth);
        case 5:
            return block(depth);
        case 6:
            return ifStatement(depth);
        case 7:
            token("while");
            return condition(depth), statement(depth - 1);
        case 8:
            return forStatement(depth);
        case 9:
            return returnStatement(depth);
        case 10:
            return tryStatement(depth);
        case 11:
            token("defer");
            return statement(depth - 1);
        case 12:
            return expectStatement(depth);
        default:
            return whenStatement(depth);
        }
    }
    // A statement that begins with "{" is a block, and so an expression that does needs brackets.
    void expressionStatement(int depth) {
        const std::size_t start = text.size();
        expression(depth);
        if (text[start] == '{') {
            text.insert(start, "(");
            token(")");
        }
        token(";");
    }
    void variable(int depth) {
        if (maybe()) {
            name();
            name();
        } else {
            declarationType();
            if (choices.oneIn(6)) typeArguments();
            plainName();
        }
        if (!choices.oneIn(4)) {
            token("=");
            expression(depth - 1);
        }
        token(";");
    }
    void typeArguments() {
        token("<");
        if (maybe()) token("int");
        if (choices.oneIn(3)) {
            token(", map");
            typeArguments();
        }
        token(">");
    }
    void condition(int depth) {
        token("(");
        expression(depth - 1);
        token(")");
    }
    void ifStatement(int depth) {
        token("if");
        condition(depth);
        statement(depth - 1);
        while (choices.oneIn(4)) {
            token("else if");
            condition(depth);
            statement(depth - 1);
        }
        if (!maybe()) return;
        token("else");
        statement(depth - 1);
    }
    void forStatement(int depth) {
        token("for");
        token("(");
        const std::size_t kind = choices.below(3);
        if (kind == 1) declarationType();
        if (kind == 2) name();
        name();
        token(":");
        expression(depth - 1);
        token(")");
        statement(depth - 1);
    }
    void returnStatement(int depth) {
        const bool throws = choices.oneIn(3);
        token(throws ? "throw" : "return");
        if (throws || maybe()) expression(depth - 1);
        token(";");
    }
    void tryStatement(int depth) {
        token("try");
        block(depth - 1);
        token("catch");
        token("(");
        name();
        token(")");
        block(depth - 1);
    }
    void expectStatement(int depth) {
        token("expect");
        expression(depth - 1);
        if (maybe()) {
            token(",");
            expression(depth - 1);
        }
        token(";");
    }
    void whenStatement(int depth) {
        token("when");
        condition(depth);
        token("{");
        for (std::size_t count = some(3); count > 0; --count) {
            if (choices.oneIn(4)) {
                token("else");
            } else {
                token("is");
                anyType();
            }
            token("->");
            expression(depth - 1);
            token(";");
        }
        token("}");
    }

    // ---- Declarations ----
    void declaration() {
        switch (choices.below(13)) {
        case 0:
            return token(";");
        case 1:
            return import();
        case 2:
            return usingDeclaration();
        case 3:
            token("typename");
            name();
            return token(";");
        case 4:
        case 5:
            return classDeclaration();
        case 6:
            return able();
        case 7:
        case 8:
            return window();
        case 9:
        case 10:
            return script();
        case 11:
            return function();
        default:
            return stray();
        }
    }
    // Words that fit nowhere are passed over; the semicolons keep them from becoming something.
    void stray() {
        token(";");
        switch (choices.below(4)) {
        case 0:
            token(choices.pick(otherWords));
            break;
        case 1:
            token(choices.pick(punctuation));
            break;
        case 2:
            valueWord();
            break;
        default:
            literal();
        }
        token(";");
    }
    void import() {
        token("import");
        if (maybe()) {
            string();
        } else {
            word();
            while (choices.oneIn(3)) {
                token(maybe() ? "." : "/");
                word();
            }
        }
        if (maybe()) token(";");
    }
    void usingDeclaration() {
        token("using");
        if (maybe()) {
            token("type");
            name();
            token("=");
            maybe() ? name() : parameterType();
        } else {
            word();
            string();
        }
        token(";");
    }
    void parameters() {
        token("(");
        const std::size_t count = some(3);
        for (std::size_t index = 0; index < count; ++index) {
            if (index > 0) token(",");
            const std::size_t kind = choices.below(3);
            if (kind == 1) name();
            if (kind == 2) parameterType();
            name();
        }
        token(")");
    }
    void function() {
        if (maybe()) anyType();
        name();
        parameters();
        block(deepest);
    }
    void classDeclaration() {
        token("class");
        name();
        token("{");
        for (std::size_t count = some(5); count > 0; --count) member();
        token("}");
    }
    void member() {
        if (choices.oneIn(4)) {
            token(maybe() ? "public" : "private");
            if (maybe()) token(":");
        }
        const bool isMethod = maybe();
        if (!isMethod || maybe()) {
            anyType();
            if (choices.oneIn(6)) typeArguments();
        }
        name();
        if (isMethod) {
            parameters();
            return block(3);
        }
        while (choices.oneIn(3)) {
            token(",");
            name();
        }
        token(";");
    }
    void able() {
        token("able");
        name();
        token("{");
        for (std::size_t count = some(3); count > 0; --count) {
            if (maybe()) {
                anyType();
                if (choices.oneIn(6)) typeArguments();
            }
            name();
            parameters();
            token(";");
        }
        token("}");
    }

    void window() {
        token("vorla");
        name();
        token("{");
        for (std::size_t count = some(8); count > 0; --count) {
            const std::size_t kind = choices.below(5);
            if (kind == 0)
                property();
            else if (kind == 4 && maybe())
                stray();
            else
                control();
        }
        token("}");
    }
    void property() {
        static constexpr Words keys[] = {
            "x",     "y",   "width", "height",     "text",  "items", "min",     "max",
            "value", "src", "color", "background", "group", "title", "checked", "font"};
        maybe() ? memberName() : token(choices.pick(keys));
        token("=");
        switch (choices.below(4)) {
        case 0:
            literal();
            break;
        case 1:
            token("[");
            string();
            token(",");
            string();
            token("]");
            break;
        default:
            expression(3);
        }
        if (maybe()) token(";");
    }
    void control() {
        choices.oneIn(6) ? name() : builtInWord();
        name();
        token("{");
        for (std::size_t count = some(5); count > 0; --count) {
            switch (choices.below(6)) {
            case 5:
                stray();
                break;
            case 4:
                token("on");
                name();
                block(3);
                break;
            default:
                property();
            }
        }
        token("}");
    }
    void script() {
        name();
        token(".");
        token("script");
        token("{");
        for (std::size_t count = some(5); count > 0; --count) {
            switch (choices.below(5)) {
            case 0:
                stray();
                break;
            case 1:
                classDeclaration();
                break;
            case 2:
                function();
                break;
            default:
                if (maybe()) token("on");
                name();
                token(".");
                name();
                block(deepest);
            }
        }
        token("}");
    }

    Choices& choices;
    std::string text;
    std::size_t tokens = 0;
};

} // namespace

std::string generateWildProgram(Choices& choices) { return WildProgram(choices).write(); }

} // namespace Orvane
