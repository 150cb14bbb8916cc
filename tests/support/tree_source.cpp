#include "support/tree_source.h"

#include <charconv>
#include <vector>

namespace Orvane {

namespace {

// How strongly an expression holds together, from the loosest to the tightest; one that is looser
// than its place allows is put into brackets.
enum Strength { trailingMember, choice, equality, comparison, sum, product, prefix, primary };

// Whether a chain of "." "[" "(" begins with a name: only such a chain is one primary.
bool beginsWithName(const Expr* expr) {
    for (;;) {
        if (nodeCast<IdentifierExpr>(expr)) return true;
        if (auto* call = nodeCast<CallExpr>(expr)) {
            if (!call->callee) return true;
            expr = call->callee.get();
        } else if (auto* index = nodeCast<IndexExpr>(expr)) {
            expr = index->object.get();
        } else {
            auto* member = nodeCast<BinaryExpr>(expr);
            if (!member || !(member->op == ".")) return false;
            expr = member->left.get();
        }
    }
}

Strength strengthOf(const BinaryExpr& binary) {
    const std::string_view op = binary.op;
    if (op == ".") return beginsWithName(&binary) ? primary : trailingMember;
    if (op == "=") return choice;
    if (op == "==" || op == "!=") return equality;
    if (op == "+" || op == "-") return sum;
    return op == "*" || op == "/" || op == "%" ? product : comparison;
}

Strength strengthOf(const Expr& expr) {
    if (auto* binary = nodeCast<BinaryExpr>(&expr)) return strengthOf(*binary);
    if (nodeCast<TernaryExpr>(&expr)) return choice;
    return nodeCast<UnaryExpr>(&expr) ? prefix : primary;
}

void writeText(std::string& out, std::string_view text) {
    out += '"';
    for (const char character : text) {
        if (character == '"' || character == '\\') out += '\\';
        if (character == '\0')
            out += "\\u0000"; // the byte itself would end the text
        else
            out += character;
    }
    out += '"';
}

// Digits, a point and digits, as many as it takes to read the same number again.
void writeFloating(std::string& out, double number) {
    char digits[800];
    const auto end =
        std::to_chars(digits, digits + sizeof digits, number, std::chars_format::fixed);
    const std::string_view written(digits, end.ptr);
    out += written;
    if (written.find('.') == std::string_view::npos) out += ".0";
}

void writeLiteral(std::string& out, const Value& value) {
    if (value.isString())
        writeText(out, value.textView());
    else if (value.isFloat())
        writeFloating(out, value.asFloat());
    else
        out += value.toString(); // whole numbers, colours, true, false and null
}

void write(std::string& out, const Expr& expr);

void writeAt(std::string& out, const Expr& expr, Strength loosest) {
    const bool inBrackets = strengthOf(expr) < loosest;
    if (inBrackets) out += '(';
    write(out, expr);
    if (inBrackets) out += ')';
}

template <class Items, class Write>
void writeList(std::string& out, const Items& items, Write writeItem) {
    bool isFirst = true;
    for (const auto& item : items) {
        if (!isFirst) out += ", ";
        isFirst = false;
        writeItem(item);
    }
}

void writeAll(std::string& out, const ExprList& expressions) {
    writeList(out, expressions, [&](const auto& item) { write(out, *item); });
}

// a + b + c; the chain of one strength leans to the left and is walked in a loop.
void writeOperators(std::string& out, const BinaryExpr& last) {
    const Strength strength = strengthOf(last);
    std::vector<const BinaryExpr*> chain;
    const Expr* first = &last;
    while (strengthOf(*first) == strength) {
        chain.push_back(nodeCast<BinaryExpr>(first));
        first = chain.back()->left.get();
    }
    writeAt(out, *first, strength);
    for (auto link = chain.rbegin(); link != chain.rend(); ++link) {
        out += ' ';
        out += std::string_view((*link)->op);
        out += ' ';
        writeAt(out, *(*link)->right, static_cast<Strength>(strength + 1));
    }
}

void writeMember(std::string& out, const BinaryExpr& member) {
    if (strengthOf(member) == primary) {
        write(out, *member.left);
    } else { // (1 + a).name
        out += '(';
        write(out, *member.left);
        out += ')';
    }
    out += '.';
    write(out, *member.right);
}

void writeBinary(std::string& out, const BinaryExpr& binary) {
    if (binary.op == ".") return writeMember(out, binary);
    if (!(binary.op == "=")) return writeOperators(out, binary);
    writeAt(out, *binary.left, equality);
    out += " = ";
    writeAt(out, *binary.right, choice);
}

void writeTernary(std::string& out, const TernaryExpr& ternary) {
    writeAt(out, *ternary.condition, equality);
    out += " ? ";
    write(out, *ternary.thenExpr);
    out += " : ";
    write(out, *ternary.elseExpr);
}

void writeCall(std::string& out, const CallExpr& call) {
    if (call.callee)
        write(out, *call.callee);
    else
        out += call.name;
    out += '(';
    writeAll(out, call.args);
    out += ')';
}

void writeRange(std::string& out, const RangeExpr& range) {
    out += '[';
    write(out, *range.start);
    out += " .. ";
    write(out, *range.end);
    if (range.step) {
        out += ", ";
        write(out, *range.step);
    }
    out += ']';
}

void writeComprehension(std::string& out, const ListComprehensionExpr& comprehension) {
    out += '[';
    write(out, *comprehension.expr);
    out += " for ";
    out += comprehension.varName;
    out += " in ";
    write(out, *comprehension.iterable);
    if (comprehension.condition) {
        out += " where ";
        write(out, *comprehension.condition);
    }
    out += ']';
}

void writeObject(std::string& out, const ObjectCtorExpr& object) {
    out += object.className;
    out += " {";
    writeList(out, object.fields, [&](const auto& field) {
        out += field.first;
        out += " = ";
        write(out, *field.second);
    });
    out += '}';
}

void writeTest(std::string& out, std::string_view word, std::string_view first,
               std::string_view second) {
    for (const std::string_view part : {word, std::string_view("("), first, std::string_view(", "),
                                        second, std::string_view(")")})
        out += part;
}

void writeSimple(std::string& out, const Expr& expr) {
    if (auto* name = nodeCast<IdentifierExpr>(&expr))
        out += name->name;
    else if (auto* literal = nodeCast<LiteralExpr>(&expr))
        writeLiteral(out, literal->value);
    else if (auto* therebe = nodeCast<TherebeExpr>(&expr))
        writeTest(out, "therebe", therebe->kind, therebe->name);
    else if (auto* have = nodeCast<HaveExpr>(&expr))
        writeTest(out, "have", have->className, have->memberName);
    else if (auto* is = nodeCast<IsExpr>(&expr))
        writeTest(out, "is", sourceOf(*is->expr), is->typeName);
}

void write(std::string& out, const Expr& expr) {
    if (auto* node = nodeCast<BinaryExpr>(&expr)) return writeBinary(out, *node);
    if (auto* node = nodeCast<TernaryExpr>(&expr)) return writeTernary(out, *node);
    if (auto* node = nodeCast<CallExpr>(&expr)) return writeCall(out, *node);
    if (auto* node = nodeCast<RangeExpr>(&expr)) return writeRange(out, *node);
    if (auto* node = nodeCast<ListComprehensionExpr>(&expr)) return writeComprehension(out, *node);
    if (auto* node = nodeCast<ObjectCtorExpr>(&expr)) return writeObject(out, *node);
    if (auto* node = nodeCast<UnaryExpr>(&expr)) {
        out += std::string_view(node->op);
        return writeAt(out, *node->operand, prefix);
    }
    if (auto* node = nodeCast<ArrayExpr>(&expr)) {
        out += '{';
        writeAll(out, node->elements);
        out += '}';
    } else if (auto* index = nodeCast<IndexExpr>(&expr)) {
        write(out, *index->object);
        out += '[';
        write(out, *index->index);
        out += ']';
    } else {
        writeSimple(out, expr);
    }
}

// ---- Statements ----

void write(std::string& out, const Stmt& stmt);

void writeBlock(std::string& out, const StmtList& statements) {
    out += "{\n";
    for (const auto& statement : statements) write(out, *statement);
    out += "}\n";
}

void writeWithHead(std::string& out, std::string_view head, const Expr* value) {
    out += head;
    if (value) {
        out += ' ';
        write(out, *value);
    }
    out += ";\n";
}

// A statement that begins with a brace is a block: an expression that does needs brackets.
void writeExpression(std::string& out, const Expr& expr) {
    const std::string text = sourceOf(expr);
    out += text.starts_with('{') ? "(" + text + ")" : text;
    out += ";\n";
}

void writeIf(std::string& out, const IfStmt& ladder) {
    const IfStmt* rung = &ladder;
    for (;;) {
        out += "if (";
        write(out, *rung->condition);
        out += ") ";
        write(out, *rung->thenBranch.front());
        if (rung->elseBranch.empty()) return;
        out += "else ";
        const IfStmt* const next = nodeCast<IfStmt>(rung->elseBranch.front());
        if (!next) return write(out, *rung->elseBranch.front());
        rung = next;
    }
}

void writeFor(std::string& out, const ForStmt& loop) {
    out += "for (";
    out += loop.varType;
    out += ' ';
    out += loop.varName;
    out += " : ";
    write(out, *loop.iterable);
    out += ") ";
    writeBlock(out, loop.body);
}

void writeWhen(std::string& out, const WhenStmt& when) {
    out += "when (";
    write(out, *when.subject);
    out += ") {\n";
    for (const WhenCase& branch : when.cases) {
        out += branch.typeName == "else" ? "" : "is ";
        out += branch.typeName;
        out += " ->";
        writeWithHead(out, "", branch.value.get());
    }
    out += "}\n";
}

void writeTry(std::string& out, const TryStmt& attempt) {
    out += "try ";
    writeBlock(out, attempt.tryBody);
    out += "catch (";
    out += attempt.catchVar;
    out += ") ";
    writeBlock(out, attempt.catchBody);
}

void writeVariable(std::string& out, const VarDeclStmt& variable) {
    out += variable.typeName;
    out += ' ';
    out += variable.name;
    writeWithHead(out, variable.initializer ? " =" : "", variable.initializer.get());
}

void writeExpect(std::string& out, const ExpectStmt& expectation) {
    out += "expect ";
    write(out, *expectation.condition);
    writeWithHead(out, expectation.message ? "," : "", expectation.message.get());
}

void write(std::string& out, const Stmt& stmt) {
    if (auto* node = nodeCast<ExprStmt>(&stmt)) return writeExpression(out, *node->expr);
    if (auto* node = nodeCast<VarDeclStmt>(&stmt)) return writeVariable(out, *node);
    if (auto* node = nodeCast<IfStmt>(&stmt)) return writeIf(out, *node);
    if (auto* node = nodeCast<ForStmt>(&stmt)) return writeFor(out, *node);
    if (auto* node = nodeCast<WhenStmt>(&stmt)) return writeWhen(out, *node);
    if (auto* node = nodeCast<TryStmt>(&stmt)) return writeTry(out, *node);
    if (auto* node = nodeCast<ExpectStmt>(&stmt)) return writeExpect(out, *node);
    if (auto* node = nodeCast<BlockStmt>(&stmt)) return writeBlock(out, node->statements);
    if (auto* node = nodeCast<ReturnStmt>(&stmt))
        return writeWithHead(out, "return", node->value.get());
    if (auto* node = nodeCast<ThrowStmt>(&stmt))
        return writeWithHead(out, "throw", node->value.get());
    if (auto* node = nodeCast<WhileStmt>(&stmt)) {
        out += "while (";
        write(out, *node->condition);
        out += ") ";
        return writeBlock(out, node->body);
    }
    if (auto* node = nodeCast<DeferStmt>(&stmt)) {
        out += "defer ";
        write(out, *node->stmt);
    }
}

// ---- Declarations ----

// "a b c", leaving out empty words.
void writeWords(std::string& out, std::initializer_list<std::string_view> words) {
    std::string_view separator;
    for (const std::string_view word : words) {
        if (word.empty()) continue;
        out += separator;
        out += word;
        separator = " ";
    }
}

void writeParameters(std::string& out, const List<Parameter>& parameters) {
    out += '(';
    writeList(out, parameters, [&](const Parameter& parameter) {
        writeWords(out, {parameter.typeName, parameter.name});
    });
    out += ')';
}

void writeFunction(std::string& out, const FuncDef& function, std::string_view access = {}) {
    writeWords(out, {access, function.returnType, function.name});
    writeParameters(out, function.params);
    out += ' ';
    writeBlock(out, function.body);
}

std::string_view wordOf(Access access) {
    if (access == Access::unspecified) return "";
    return access == Access::publicMember ? "public" : "private";
}

void writeClass(std::string& out, const ClassDef& record) {
    writeWords(out, {"class", record.name, "{\n"});
    for (const ClassField& field : record.fields) {
        writeWords(out, {wordOf(field.access), field.typeName, field.name});
        out += ";\n";
    }
    for (const auto& method : record.methods) writeFunction(out, *method, wordOf(method->access));
    out += "}\n";
}

void writeAble(std::string& out, const AbleDef& able) {
    writeWords(out, {"able", able.name, "{\n"});
    for (const AbleMethod& method : able.methods) {
        writeWords(out, {method.returnType, method.name});
        writeParameters(out, method.params);
        out += ";\n";
    }
    out += "}\n";
}

void writeProperties(std::string& out, const List<Property>& properties) {
    for (const Property& property : properties) {
        writeWords(out, {property.name, "="});
        writeWithHead(out, "", property.value.get());
    }
}

void writeControl(std::string& out, const Component& control) {
    writeWords(out, {control.type, control.name, "{\n"});
    writeProperties(out, control.properties);
    for (const auto& [event, body] : control.events) {
        writeWords(out, {"on", event, ""});
        writeBlock(out, body);
    }
    out += "}\n";
}

void writeWindow(std::string& out, const Vorla& window) {
    writeWords(out, {"vorla", window.name, "{\n"});
    writeProperties(out, window.properties);
    for (const auto& control : window.components) writeControl(out, *control);
    out += "}\n";
}

void writeScript(std::string& out, const Script& script) {
    out += "any.script {\n";
    for (const auto& handler : script.handlers) {
        writeWords(out, {"on", handler->targetName, ".", handler->eventName});
        writeBlock(out, handler->body);
    }
    for (const auto& function : script.functions) writeFunction(out, *function);
    out += "}\n";
}

void writeUsing(std::string& out, const Using& entry) {
    if (entry.isAlias) {
        writeWords(out, {"using type", entry.key, "=", entry.value});
    } else {
        writeWords(out, {"using", entry.key});
        writeText(out, entry.value);
    }
    out += ";\n";
}

} // namespace

std::string sourceOf(const Expr& expression) {
    std::string out;
    write(out, expression);
    return out;
}

std::string sourceOf(const Stmt& statement) {
    std::string out;
    write(out, statement);
    return out;
}

std::string sourceOf(const AST& program) {
    std::string out;
    for (const std::string_view name : program.imports) {
        out += "import ";
        writeText(out, name);
        out += ";\n";
    }
    for (const Using& entry : program.usings) writeUsing(out, entry);
    if (program.window) writeWindow(out, *program.window);
    if (program.script) writeScript(out, *program.script);
    for (const auto& record : program.classes) writeClass(out, *record);
    for (const AbleDef& able : program.ables) writeAble(out, able);
    for (const auto& function : program.functions) writeFunction(out, *function);
    for (const std::string_view name : program.typeNames) {
        writeWords(out, {"typename", name});
        out += ";\n";
    }
    return out;
}

} // namespace Orvane
