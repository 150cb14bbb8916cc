// Expressions that build a list in a loop of their own. They span several lines: the first goes on
// where the stream stands, the others are indented from the level of the statement around them.

#include "codegen/code_generator_core.h"

namespace Orvane {

// An iterable that is no array gives an empty list. Without a condition its line is left out.
//
// ([&]() -> Value {
//     std::vector<Value> _lcr;
//     Value _lcit = ITERABLE;
//     if (_lcit.typeName == "array") {
//         for (size_t _lci = 0; _lci < _lcit.arrayVal.size(); _lci++) {
//             Value VAR = _lcit.arrayVal[_lci];
//             if (!(bool)(CONDITION)) continue;
//             _lcr.push_back(Value(ELEMENT));
//         }
//     }
//     return Value(_lcr);
// })()
void CodeGeneratorCore::genListComp(const ListComprehensionExpr& comprehension) {
    write("([&]() -> Value {\n");
    {
        IndentScope lambda(indentLevel);
        addLine("std::vector<Value> _lcr;");
        addLine("Value _lcit = ", comprehension.iterable, ";");
        addLine("if (_lcit.typeName == \"array\") {");
        {
            IndentScope branch(indentLevel);
            addLine("for (size_t _lci = 0; _lci < _lcit.arrayVal.size(); _lci++) {");
            {
                IndentScope loop(indentLevel);
                addLine("Value ", comprehension.varName, " = _lcit.arrayVal[_lci];");
                if (comprehension.condition)
                    addLine("if (!(bool)(", comprehension.condition, ")) continue;");
                addLine("_lcr.push_back(Value(", comprehension.expr, "));");
            }
            addLine("}");
        }
        addLine("}");
        addLine("return Value(_lcr);");
    }
    writeIndent();
    write("})()");
}

// Both ends count, a step of zero counts as one, a negative step counts down.
//
// ([&]() -> Value {
//     std::vector<Value> _r;
//     long long _si = (long long)(START);
//     long long _ei = (long long)(END);
//     long long _sti = (long long)(STEP);      1ll; without a step
//     if (_sti == 0) _sti = 1ll;
//     for (long long _i = _si; (_sti > 0 ? _i <= _ei : _i >= _ei); _i += _sti) {
//         Value _cur = _i;
//         if (!(bool)(FILTER(_cur))) continue;
//         _r.push_back(_cur);
//     }
//     return Value(_r);
// })()
void CodeGeneratorCore::genRange(const RangeExpr& range) {
    write("([&]() -> Value {\n");
    {
        IndentScope lambda(indentLevel);
        addLine("std::vector<Value> _r;");
        addLine("long long _si = (long long)(", range.start, ");");
        addLine("long long _ei = (long long)(", range.end, ");");
        if (range.step)
            addLine("long long _sti = (long long)(", range.step, ");");
        else
            addLine("long long _sti = 1ll;");
        addLine("if (_sti == 0) _sti = 1ll;");
        addLine("for (long long _i = _si; (_sti > 0 ? _i <= _ei : _i >= _ei); _i += _sti) {");
        {
            IndentScope loop(indentLevel);
            addLine("Value _cur = _i;");
            if (!range.label.empty()) addLine("if (!(bool)(", range.label, "(_cur))) continue;");
            addLine("_r.push_back(_cur);");
        }
        addLine("}");
        addLine("return Value(_r);");
    }
    writeIndent();
    write("})()");
}

} // namespace Orvane
