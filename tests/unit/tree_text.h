// Syntax trees as short text, for expectations in tests.
//
//     a + 1                  (+ a 1)              f(x)           (call f x)
//     a.f(x)                 (apply (. a f) x)    x[0]           (index x 0)
//     [1..5, 2]              (range 1 5 2)        {1, 2}         (array 1 2)
//     c ? a : b              (? c a b)            -x             (- x)
//     [e for v in xs]        (each e v xs)        P { x = 1 }    (new P (x 1))
//     is(e, int)             (is e int)           "a"  #FFF      "a"  #FFF
//     int x = 1;             (var int x 1)        f();           (expr (call f))
//     if (a) b; else c;      (if a (then (expr b)) (else (expr c)))
//     for (int i : xs) f();  (for int i xs (expr (call f)))
//     while (a) { }          (while a)            { b; }         (block (expr b))
//     try {} catch (e) {}    (try () e ())        return;        (return)
//     when (v) { is int -> 1; else -> 2; }        (when v (int 1) (else 2))
//
// An empty name is written "-". Only for trees of ordinary size: the functions recurse.
#pragma once

#include "frontend/syntax_tree.h"

#include <string>
#include <string_view>

namespace Orvane::Testing {

inline std::string textOf(const Expr* expr);
inline std::string textOf(const Stmt* stmt);

inline std::string nameText(std::string_view name) {
    return name.empty() ? "-" : std::string(name);
}

// "(head part part)", leaving out the empty parts.
template <class... Parts>
std::string form(std::string_view head, const Parts&... parts) {
    std::string text = "(" + std::string(head);
    const auto add = [&](const std::string& part) {
        if (!part.empty()) text += " " + part;
    };
    (add(std::string(parts)), ...);
    return text + ")";
}

// The items' texts with blanks between them.
template <class Items, class ToText>
std::string joined(const Items& items, ToText toText) {
    std::string text;
    for (const auto& item : items) {
        if (!text.empty()) text += " ";
        text += toText(item);
    }
    return text;
}

template <class Nodes>
std::string textOfAll(const Nodes& nodes) {
    return joined(nodes, [](const auto& node) { return textOf(node.get()); });
}

inline std::string literalText(const Value& value) {
    return value.isString() ? "\"" + value.asString() + "\"" : value.toString();
}

inline std::string callText(const CallExpr& call) {
    if (!call.callee) return form("call", nameText(call.name), textOfAll(call.args));
    const std::string callee = textOf(call.callee.get());
    return call.name.empty() ? form("apply", callee, textOfAll(call.args))
                             : form("call-with-name-and-callee", call.name, callee);
}

inline std::string rangeText(const RangeExpr& range) {
    const std::string label(range.label);
    return form("range", textOf(range.start.get()), textOf(range.end.get()),
                textOf(range.step.get()), label);
}

// Empty for a null pointer.
inline std::string textOf(const Expr* expr) {
    if (!expr) return "";
    if (auto* n = nodeCast<IdentifierExpr>(expr)) return nameText(n->name);
    if (auto* n = nodeCast<LiteralExpr>(expr)) return literalText(n->value);
    if (auto* n = nodeCast<UnaryExpr>(expr)) return form(n->op, textOf(n->operand.get()));
    if (auto* n = nodeCast<BinaryExpr>(expr))
        return form(n->op, textOf(n->left.get()), textOf(n->right.get()));
    if (auto* n = nodeCast<CallExpr>(expr)) return callText(*n);
    if (auto* n = nodeCast<ArrayExpr>(expr)) return form("array", textOfAll(n->elements));
    if (auto* n = nodeCast<IndexExpr>(expr))
        return form("index", textOf(n->object.get()), textOf(n->index.get()));
    if (auto* n = nodeCast<RangeExpr>(expr)) return rangeText(*n);
    if (auto* n = nodeCast<TernaryExpr>(expr))
        return form("?", textOf(n->condition.get()), textOf(n->thenExpr.get()),
                    textOf(n->elseExpr.get()));
    if (auto* n = nodeCast<ListComprehensionExpr>(expr))
        return form("each", textOf(n->expr.get()), nameText(n->varName), textOf(n->iterable.get()),
                    textOf(n->condition.get()));
    if (auto* n = nodeCast<IsExpr>(expr))
        return form("is", textOf(n->expr.get()), nameText(n->typeName));
    if (auto* n = nodeCast<TherebeExpr>(expr))
        return form("therebe", nameText(n->kind), nameText(n->name));
    if (auto* n = nodeCast<HaveExpr>(expr))
        return form("have", nameText(n->className), nameText(n->memberName));
    if (auto* n = nodeCast<ObjectCtorExpr>(expr))
        return form("new", nameText(n->className), joined(n->fields, [](const auto& field) {
                        return form(field.first, textOf(field.second.get()));
                    }));
    return "(unknown expression)";
}

inline std::string ifText(const IfStmt& node) {
    return form("if", textOf(node.condition.get()), form("then", textOfAll(node.thenBranch)),
                node.elseBranch.empty() ? "" : form("else", textOfAll(node.elseBranch)));
}

// Empty for a null pointer.
inline std::string textOf(const Stmt* stmt) {
    if (!stmt) return "";
    if (auto* n = nodeCast<ExprStmt>(stmt)) return form("expr", textOf(n->expr.get()));
    if (auto* n = nodeCast<ReturnStmt>(stmt)) return form("return", textOf(n->value.get()));
    if (auto* n = nodeCast<ThrowStmt>(stmt)) return form("throw", textOf(n->value.get()));
    if (auto* n = nodeCast<DeferStmt>(stmt)) return form("defer", textOf(n->stmt.get()));
    if (auto* n = nodeCast<ExpectStmt>(stmt))
        return form("expect", textOf(n->condition.get()), textOf(n->message.get()));
    if (auto* n = nodeCast<WhenStmt>(stmt))
        return form("when", textOf(n->subject.get()), joined(n->cases, [](const WhenCase& entry) {
                        return form(entry.typeName, textOf(entry.value.get()));
                    }));
    if (auto* n = nodeCast<VarDeclStmt>(stmt))
        return form("var", nameText(n->typeName), nameText(n->name), textOf(n->initializer.get()));
    if (auto* n = nodeCast<IfStmt>(stmt)) return ifText(*n);
    if (auto* n = nodeCast<WhileStmt>(stmt))
        return form("while", textOf(n->condition.get()), textOfAll(n->body));
    if (auto* n = nodeCast<ForStmt>(stmt))
        return form("for", nameText(n->varType), nameText(n->varName), textOf(n->iterable.get()),
                    textOfAll(n->body));
    if (auto* n = nodeCast<TryStmt>(stmt))
        return form("try", "(" + textOfAll(n->tryBody) + ")", nameText(n->catchVar),
                    "(" + textOfAll(n->catchBody) + ")");
    if (auto* n = nodeCast<BlockStmt>(stmt)) return form("block", textOfAll(n->statements));
    return "(unknown statement)";
}

// "(name type)" for each parameter.
inline std::string textOf(const List<Parameter>& parameters) {
    return "(" +
           joined(parameters,
                  [](const Parameter& parameter) {
                      return form(nameText(parameter.name), nameText(parameter.typeName));
                  }) +
           ")";
}

// (func RESULT NAME (PARAMETERS) BODY)
inline std::string textOf(const FuncDef& function) {
    return form("func", nameText(function.returnType), nameText(function.name),
                textOf(function.params), textOfAll(function.body));
}

inline std::string accessText(Access access) {
    if (access == Access::unspecified) return "";
    return access == Access::publicMember ? "public" : "private";
}

// (class NAME (field TYPE NAME ACCESS) ... (method RESULT NAME (PARAMETERS) ACCESS BODY) ...); the
// constructor says "constructor" for "method".
inline std::string textOf(const ClassDef& record) {
    const std::string fields = joined(record.fields, [](const ClassField& field) {
        return form("field", nameText(field.typeName), nameText(field.name),
                    accessText(field.access));
    });
    const std::string methods = joined(record.methods, [](const uptr<ClassMethod>& method) {
        return form(method->isConstructor ? "constructor" : "method", nameText(method->returnType),
                    nameText(method->name), textOf(method->params), accessText(method->access),
                    textOfAll(method->body));
    });
    return form("class", nameText(record.name), fields, methods);
}

// (able NAME (RESULT NAME (PARAMETERS)) ...)
inline std::string textOf(const AbleDef& able) {
    return form("able", nameText(able.name), joined(able.methods, [](const AbleMethod& method) {
                    return form(nameText(method.returnType), nameText(method.name),
                                textOf(method.params));
                }));
}

inline std::string textOf(const List<Property>& properties) {
    return joined(properties, [](const Property& property) {
        return form(property.name, textOf(property.value.get()));
    });
}

// (KIND NAME (PROPERTY VALUE) ... (on EVENT BODY) ...), events in name order
inline std::string textOf(const Component& component) {
    return form(component.type, nameText(component.name), textOf(component.properties),
                joined(component.events, [](const auto& event) {
                    return form("on", event.first, textOfAll(event.second));
                }));
}

// (vorla NAME (PROPERTY VALUE) ... COMPONENT ...)
inline std::string textOf(const Vorla& window) {
    return form("vorla", nameText(window.name), textOf(window.properties),
                joined(window.components,
                       [](const uptr<Component>& component) { return textOf(*component); }));
}

// (script (on TARGET EVENT BODY) ... FUNCTION ...)
inline std::string textOf(const Script& script) {
    const std::string handlers = joined(script.handlers, [](const uptr<EventHandler>& handler) {
        return form("on", nameText(handler->targetName), nameText(handler->eventName),
                    textOfAll(handler->body));
    });
    return form("script", handlers, joined(script.functions, [](const uptr<FuncDef>& function) {
                    return textOf(*function);
                }));
}

// Everything, in the order of the AST's members. Imports: (import "x"); usings: (using k "v") and
// (alias NAME TYPE); declared type names: (typename T).
inline std::string textOf(const AST& program) {
    const auto records = [](const auto& items) {
        return joined(items, [](const auto& item) { return textOf(*item); });
    };
    const std::string all = form(
        "program",
        joined(program.imports,
               [](std::string_view name) { return "(import \"" + std::string(name) + "\")"; }),
        joined(program.usings,
               [](const Using& entry) {
                   return entry.isAlias
                              ? form("alias", entry.key, entry.value)
                              : form("using", entry.key, "\"" + std::string(entry.value) + "\"");
               }),
        program.window ? textOf(*program.window) : "",
        program.script ? textOf(*program.script) : "", records(program.classes),
        joined(program.ables, [](const AbleDef& able) { return textOf(able); }),
        records(program.functions),
        joined(program.typeNames, [](std::string_view name) { return form("typename", name); }));
    return all == "(program)" ? "" : all.substr(9, all.size() - 10);
}

} // namespace Orvane::Testing
