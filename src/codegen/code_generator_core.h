// Translation of expressions and statements to C++ text.
//
// Base of CodeGenerator, which sets the tables and calls generateExpr and generateStmt for every
// body. Text goes straight into the main stream; nothing is reported: what cannot be translated
// becomes a C++ comment or a default value, and g++ has the last word. Every operation leaves
// the indentation level as it found it.
//
//     TextStream mainStream, importStream;
//     int indentLevel = 0;
//     CodeGeneratorCore core(mainStream, importStream, indentLevel);
//     core.generateExpr(expression);   // a + 1 gives (a + 1)
#pragma once

#include "codegen/generation_observer.h"
#include "codegen/name_map.h"
#include "codegen/text_stream.h"
#include "frontend/syntax_tree.h"

#include <map>
#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace Orvane {

// Names in byte order, found by string_view without a copy.
using NameSet = std::set<std::string, std::less<>>;

class CodeGeneratorCore {
public:
    struct ClassMethodInfo {
        std::string returnType;
        std::vector<std::pair<std::string, std::string>> params; // type, name
        bool isConstructor = false; // stores parameters named like fields into the instance
    };
    struct ClassInfo {
        NameSet fieldNames;
        std::map<std::string, ClassMethodInfo, std::less<>> methods;
    };
    using ClassTable = std::map<std::string, ClassInfo, std::less<>>;

    CodeGeneratorCore(TextStream& mainStream, TextStream& importStream, int& indentLevel);
    CodeGeneratorCore(const CodeGeneratorCore&) = delete;
    CodeGeneratorCore& operator=(const CodeGeneratorCore&) = delete;
    virtual ~CodeGeneratorCore() = default;

    // The tables that translation looks names up in; any may stay null. The owner keeps them alive.
    void setTables(const ClassTable* classTable, NameMap* variableClasses,
                   const NameTable* functions);

    // Who is told where the text of each node lies; null, as it is at first, for nobody.
    void setObserver(GenerationObserver* observer_) { observer = observer_; }

    // indentLevel times four spaces, the text and a line break, to the main stream. Several pieces
    // (texts, numbers, expressions) make one line: addLine("return ", stmt.value, ";").
    void addLine(std::string_view text);
    template <class First, class Second, class... Rest>
    void addLine(const First& first, const Second& second, const Rest&... rest) {
        writeIndent();
        write(first, second, rest...);
        out << '\n';
    }

    // One expression, in the place where the stream stands; nothing for null.
    void generateExpr(const Expr* expr);
    // One statement with its line breaks; nothing for null.
    void generateStmt(const Stmt* stmt);

    // The text as the inside of a C++ string literal.
    static std::string escapeString(std::string_view text);

    // Adds the names of all functions called anywhere inside, filter functions of ranges included.
    static void collectCalls(const Expr* expr, NameSet& names);
    static void collectCalls(const Stmt* stmt, NameSet& names);
    static void collectCalls(const StmtList& statements, NameSet& names);

    // Follows the map from a name until it ends; stops where a name comes up a second time.
    static std::string_view resolveType(std::string_view name, const NameMap& typeMap);

    // The class that a variable was declared with, aliases followed; empty for other names.
    static std::string_view declaredClass(std::string_view variable, const NameMap& typeMap);
    // The C++ type for a declared type: int, double, std::string, bool, or Value for all others.
    static std::string_view generateVarDeclType(std::string_view name, const NameMap& typeMap);

    // The deepest indentation that is written, in levels; lines deeper inside start at the margin.
    // Only a ladder of else-ifs gets there: each rung is written inside the one before, and its
    // text would grow with the square of its length. Everything that the parser lets through
    // otherwise nests less deeply.
    static constexpr int maxIndent = 1000;

protected:
    // ---- Expressions (expressions.cpp, chains.cpp, lists.cpp) ----
    void genLiteral(const LiteralExpr& literal);
    void genIdentifier(const IdentifierExpr& identifier);
    void genUnary(const UnaryExpr& unary);
    void genTernary(const TernaryExpr& ternary);
    void genArray(const ArrayExpr& array);
    void genObjectCtor(const ObjectCtorExpr& object);
    void genIs(const IsExpr& test);
    void genHave(const HaveExpr& test);
    void genTherebe(const TherebeExpr& test);
    void genBinary(const BinaryExpr& binary);
    void genIndex(const IndexExpr& index);
    void genCall(const CallExpr& call);
    void genListComp(const ListComprehensionExpr& comprehension);
    void genRange(const RangeExpr& range);

    // ---- Statements (statements.cpp, declarations.cpp) ----
    void genVarDecl(const VarDeclStmt& stmt);
    void genFor(const ForStmt& stmt);
    void genExprStmt(const ExprStmt& stmt);
    void genIf(const IfStmt& stmt);
    void genBlock(const BlockStmt& stmt);
    void genWhile(const WhileStmt& stmt);
    void genReturn(const ReturnStmt& stmt);
    void genThrow(const ThrowStmt& stmt);
    void genTry(const TryStmt& stmt);
    void genDefer(const DeferStmt& stmt);
    void genExpect(const ExpectStmt& stmt);
    void genWhen(const WhenStmt& stmt);
    void generateBody(const StmtList& statements); // at the level that stands

    // ---- Observation: nothing happens without an observer ----
    // Observes what is written into a stream while it lives.
    class Observation {
    public:
        Observation(const CodeGeneratorCore& core_, const TextStream& stream_, const void* node)
            : core(core_), stream(stream_) {
            if (core.observer) core.noteBegin(node, stream);
        }
        Observation(const Observation&) = delete;
        Observation& operator=(const Observation&) = delete;
        ~Observation() {
            if (core.observer) core.noteEnd(stream);
        }

    private:
        const CodeGeneratorCore& core;
        const TextStream& stream;
    };
    void noteBegin(const void* node, const TextStream& stream) const;
    void noteEnd(const TextStream& stream) const;

    // The two texts change places, so that what is written to `out` goes into import.hpp; a second
    // call changes them back.
    void exchangeTexts();

    // The spaces of the current level, without a line break behind them.
    void writeIndent();

    // Pieces one behind the other: texts and numbers as they are, an expression by generateExpr, a
    // list of expressions separated by ", ". A template of generated text is written as one call:
    //     write("(", binary.left, " ", binary.op, " ", binary.right, ")");
    template <class... Pieces>
    void write(const Pieces&... pieces) {
        (writePiece(pieces), ...);
    }

    // Null without a table of classes or without a class of that name.
    const ClassInfo* findClass(std::string_view name) const;

    TextStream& out;    // main.cpp
    TextStream& auxOut; // import.hpp
    int& indentLevel;   // owned by the caller of the generator
    const ClassTable* classes = nullptr;
    NameMap* varClasses = nullptr;             // variable or alias name -> declared type name
    const NameTable* knownFunctions = nullptr; // functions of the program
    // The collection of the broadcast assignment whose right side is being written, or empty.
    std::string_view allElementName;
    int uniqueCounter = 0; // numbers the locals of `when` and `defer`; only grows

private:
    template <std::size_t size>
    void writePiece(const char (&literal)[size]) {
        out << literal;
    }
    // Not inline: bodies nest as deep as the source does, and every inlined piece makes the frames
    // of the functions that write them larger.
    void writePiece(std::string_view text);
    void writePiece(char character);
    void writePiece(int number);
    void writePiece(double number);
    void writePiece(const uptr<Expr>& expr);
    void writePiece(const ExprList& exprs);
    void writeLines(const StmtList& statements); // one level deeper than what stands
    void genExpr(const Expr* expr);
    void genStmt(const Stmt* stmt);
    void generateObserved(const Expr* expr);
    void generateObserved(const Stmt* stmt);

    // ---- Chains (chains.cpp) ----
    // What follows the operand of a node that is being written; the first two have a second one.
    enum class Rest : unsigned char {
        operatorAndRight,
        bracketAndIndex,
        closeOperation,
        closeIndex,
        memberName,
        broadcastAssignment,
        broadcastCall,
    };
    // Nodes whose front and first operand, or both, are written, outermost first. A chain of a
    // million operators stands here whole; apart, node and rest take nine bytes instead of sixteen.
    struct OpenNodes {
        std::vector<const Expr*> nodes;
        std::vector<Rest> rests; // one per node

        std::size_t size() const { return nodes.size(); }
        void push(const Expr* node, Rest rest) {
            nodes.push_back(node);
            rests.push_back(rest);
        }
        void pop() {
            nodes.pop_back();
            rests.pop_back();
        }
    };
    void genChain(const Expr* expr);
    bool stepLeft(const Expr*& node);
    void openNode(const Expr* node, Rest rest);
    const Expr* openBinary(const BinaryExpr& binary);
    const Expr* openMember(const BinaryExpr& access);
    bool stepRight(const Expr*& node);
    void writeRest(const Expr& node, Rest rest);
    void genBroadcastAssignment(const BinaryExpr& binary);
    void genBroadcastCall(const CallExpr& call);
    void genMemberCall(const CallExpr& call);

    // ---- Type and existence tests (expressions.cpp) ----
    void genIsClass(const IsExpr& test);
    bool hasMember(const HaveExpr& test) const;
    bool exists(const TherebeExpr& test) const;

    // ---- Parts of statements (statements.cpp) ----
    void genExpectFailure(const ExpectStmt& stmt);
    void genWhenCase(const WhenCase& branch, bool isFirst, int number);

    GenerationObserver* observer = nullptr;
    bool areTextsExchanged = false;
    OpenNodes openNodes; // the chains that are being written
};

// Raises the indentation level for the lifetime of a scope.
class IndentScope {
public:
    explicit IndentScope(int& level_, int by_ = 1) : level(level_), by(by_) { level += by; }
    IndentScope(const IndentScope&) = delete;
    IndentScope& operator=(const IndentScope&) = delete;
    ~IndentScope() { level -= by; }

private:
    int& level;
    int by;
};

} // namespace Orvane
