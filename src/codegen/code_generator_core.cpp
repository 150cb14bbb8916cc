#include "codegen/code_generator_core.h"

namespace Orvane {

CodeGeneratorCore::CodeGeneratorCore(TextStream& mainStream, TextStream& importStream,
                                     int& indentLevel_)
    : out(mainStream), auxOut(importStream), indentLevel(indentLevel_) {}

void CodeGeneratorCore::setTables(const ClassTable* classTable, NameMap* variableClasses,
                                  const NameTable* functions) {
    classes = classTable;
    varClasses = variableClasses;
    knownFunctions = functions;
}

const CodeGeneratorCore::ClassInfo* CodeGeneratorCore::findClass(std::string_view name) const {
    if (!classes) return nullptr;
    const auto entry = classes->find(name);
    return entry == classes->end() ? nullptr : &entry->second;
}

// ---- Lines ----

void CodeGeneratorCore::addLine(std::string_view text) {
    writeIndent();
    out << text << '\n';
}

void CodeGeneratorCore::writeIndent() {
    constexpr int unit = 4;
    if (indentLevel > 0 && indentLevel <= maxIndent)
        out.fill(static_cast<std::size_t>(indentLevel) * unit, ' ');
}

void CodeGeneratorCore::writePiece(std::string_view text) { out << text; }
void CodeGeneratorCore::writePiece(char character) { out << character; }
void CodeGeneratorCore::writePiece(int number) { out << number; }
void CodeGeneratorCore::writePiece(double number) { out << number; }
void CodeGeneratorCore::writePiece(const uptr<Expr>& expr) { generateExpr(expr.get()); }

void CodeGeneratorCore::writePiece(const ExprList& exprs) {
    std::string_view separator;
    for (const auto& expr : exprs) {
        out << separator;
        generateExpr(expr.get());
        separator = ", ";
    }
}

// ---- Observation ----

void CodeGeneratorCore::noteBegin(const void* node, const TextStream& stream) const {
    const bool isMain = (&stream == &out) != areTextsExchanged;
    observer->begin(node, isMain ? GeneratedText::main : GeneratedText::import,
                    stream.view().size());
}

void CodeGeneratorCore::noteEnd(const TextStream& stream) const {
    const bool isMain = (&stream == &out) != areTextsExchanged;
    observer->end(isMain ? GeneratedText::main : GeneratedText::import, stream.view().size());
}

void CodeGeneratorCore::exchangeTexts() {
    out.swap(auxOut);
    areTextsExchanged = !areTextsExchanged;
}

// ---- Dispatch ----

// Inside both callers: a call between them would cost every node of every program.
[[gnu::always_inline]] inline void CodeGeneratorCore::genExpr(const Expr* expr) {
    if (const auto* literal = nodeCast<LiteralExpr>(expr)) return genLiteral(*literal);
    if (const auto* identifier = nodeCast<IdentifierExpr>(expr)) return genIdentifier(*identifier);
    if (const auto* binary = nodeCast<BinaryExpr>(expr)) return genBinary(*binary);
    if (const auto* unary = nodeCast<UnaryExpr>(expr)) return genUnary(*unary);
    if (const auto* call = nodeCast<CallExpr>(expr)) return genCall(*call);
    if (const auto* array = nodeCast<ArrayExpr>(expr)) return genArray(*array);
    if (const auto* index = nodeCast<IndexExpr>(expr)) return genIndex(*index);
    if (const auto* object = nodeCast<ObjectCtorExpr>(expr)) return genObjectCtor(*object);
    if (const auto* range = nodeCast<RangeExpr>(expr)) return genRange(*range);
    if (const auto* ternary = nodeCast<TernaryExpr>(expr)) return genTernary(*ternary);
    if (const auto* test = nodeCast<IsExpr>(expr)) return genIs(*test);
    if (const auto* test = nodeCast<TherebeExpr>(expr)) return genTherebe(*test);
    if (const auto* test = nodeCast<HaveExpr>(expr)) return genHave(*test);
    if (const auto* list = nodeCast<ListComprehensionExpr>(expr)) return genListComp(*list);
    write("/* unknown expr */");
}

[[gnu::always_inline]] inline void CodeGeneratorCore::genStmt(const Stmt* stmt) {
    if (const auto* declaration = nodeCast<VarDeclStmt>(stmt)) return genVarDecl(*declaration);
    if (const auto* expression = nodeCast<ExprStmt>(stmt)) return genExprStmt(*expression);
    if (const auto* branch = nodeCast<IfStmt>(stmt)) return genIf(*branch);
    if (const auto* exit = nodeCast<ReturnStmt>(stmt)) return genReturn(*exit);
    if (const auto* block = nodeCast<BlockStmt>(stmt)) return genBlock(*block);
    if (const auto* loop = nodeCast<ForStmt>(stmt)) return genFor(*loop);
    if (const auto* loop = nodeCast<WhileStmt>(stmt)) return genWhile(*loop);
    if (const auto* exit = nodeCast<ThrowStmt>(stmt)) return genThrow(*exit);
    if (const auto* attempt = nodeCast<TryStmt>(stmt)) return genTry(*attempt);
    if (const auto* cleanup = nodeCast<DeferStmt>(stmt)) return genDefer(*cleanup);
    if (const auto* check = nodeCast<ExpectStmt>(stmt)) return genExpect(*check);
    if (const auto* choice = nodeCast<WhenStmt>(stmt)) return genWhen(*choice);
    addLine("/* unknown stmt */");
}

void CodeGeneratorCore::generateExpr(const Expr* expr) {
    if (!expr) return;
    if (observer) [[unlikely]]
        return generateObserved(expr);
    genExpr(expr);
}

void CodeGeneratorCore::generateStmt(const Stmt* stmt) {
    if (!stmt) return;
    if (observer) [[unlikely]]
        return generateObserved(stmt);
    genStmt(stmt);
}

void CodeGeneratorCore::generateObserved(const Expr* expr) {
    noteBegin(expr, out);
    genExpr(expr);
    noteEnd(out);
}

void CodeGeneratorCore::generateObserved(const Stmt* stmt) {
    noteBegin(stmt, out);
    genStmt(stmt);
    noteEnd(out);
}

} // namespace Orvane
