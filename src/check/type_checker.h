// The walk over all bodies of a source, in the order in which they are translated.
//
// Made and run once per source by checkTypes(). Every expression is looked at once; what is said
// about it goes to the list of the caller. Like the generator, nothing recurses along what may be
// long in a source: chains of operators and ladders of else-ifs are walked in loops.
//
//     TypeChecker(source, libraries, found).run();
#pragma once

#include "check/library_functions.h"
#include "check/parsed_source.h"
#include "check/program_names.h"
#include "check/scopes.h"
#include "check/value_types.h"

#include <optional>
#include <string>
#include <string_view>
#include <unordered_set>
#include <vector>

namespace Orvane {

class TypeChecker {
public:
    TypeChecker(const ParsedSource& source, const LibraryFunctions& libraries,
                std::vector<Diagnostic>& found);

    void run();

private:
    enum class BodyKind : unsigned char { method, freeFunction, scriptFunction, handler };
    struct Body {
        BodyKind kind = BodyKind::handler;
        const FuncDef* function = nullptr; // none for handlers
        const UserFunction* entry = nullptr;
        const ClassDef* owner = nullptr;   // of a method
        ValueType result = ValueType::big; // handlers: what Windows is answered
        int loops = 0;
        bool deferred = false; // inside of `defer`, whose body returns for itself
    };
    // A parameter of a function that is called.
    struct Wanted {
        ValueType type = ValueType::dynamic;
        bool variable = false; // changed for the caller
    };
    // A function that a call may mean.
    struct Candidate {
        std::vector<Wanted> parameters{};
        ValueType result = ValueType::unknown;
    };
    struct FieldUse {
        std::string_view className;
        std::string_view field;
        ByteRange place;
    };
    // A condition that is a variable alone.
    struct ContentUse {
        std::size_t variable;
        const void* node;
    };
    struct TypeUse {
        std::string_view name;
        const void* node; // in which the name stands
        bool isTest;      // named by is() or when
    };

    // ---- Messages (type_checker.cpp) ----
    Diagnostic& report(MessageId id, ByteRange place,
                       std::initializer_list<std::string_view> arguments = {});
    ByteRange placeOf(const void* node) const { return source.rangeOf(node); }
    // The name token of a declaration: the first token of that spelling in the node's range.
    ByteRange placeOfName(const void* node, std::string_view name) const;
    ByteRange placeOfLast(const void* node) const; // its last token
    ByteRange placeOfFirst(const void* node) const;

    // ---- Declarations (type_check_declarations.cpp) ----
    void checkClasses();
    void checkMethod(const ClassDef& definition, const ClassMethod& method);
    void checkFunctions();
    void checkFunction(const FuncDef& function, BodyKind kind);
    void checkFunctionName(const UserFunction& function);
    void checkHandlers();
    void checkHandler(const StmtList& body);
    void checkDuplicateMethod(const ClassDef& definition, const UserFunction& method);
    void reportSecond(MessageId id, const void* node, const void* first, std::string_view name);
    void checkParameters(const FuncDef& function, bool isMethod);
    void checkMissingReturn(const FuncDef& function, ValueType result);
    static bool alwaysLeaves(const StmtList& statements);
    static bool alwaysLeaves(const Stmt* stmt);
    void checkImports();
    void reportUnknownImports();
    void checkControls();
    void checkColours(const Component& control);
    void checkColour(const Property& property);
    void checkName(std::string_view name, const void* node);
    void reportPending();
    void reportUnknownType(const TypeUse& use);

    // ---- Statements (type_check_statements.cpp) ----
    void checkBody(const StmtList& statements);
    void checkScoped(const StmtList& statements);
    void checkStatement(const Stmt* stmt);
    void checkExprStmt(const ExprStmt& stmt);
    void checkLoneName(const IdentifierExpr& name);
    void checkVarDecl(const VarDeclStmt& stmt);
    void checkFirstValue(const VarDeclStmt& stmt, ValueType declared);
    void checkLostValue(const VarDeclStmt& stmt, ValueType declared, ValueType given);
    void checkFor(const ForStmt& stmt);
    void checkLoopType(const ForStmt& stmt);
    void checkIf(const IfStmt& stmt);
    void checkWhile(const WhileStmt& stmt);
    void checkTry(const TryStmt& stmt);
    void checkReturn(const ReturnStmt& stmt);
    void checkReturnedValue(const ReturnStmt& stmt, ExprType given);
    void checkThrow(const ThrowStmt& stmt);
    void checkDefer(const DeferStmt& stmt);
    void checkExpect(const ExpectStmt& stmt);
    void checkWhen(const WhenStmt& stmt);
    void checkCondition(const Expr* condition);
    void declareLocal(std::string_view name, ValueType type, const void* node);
    void storeContent(const Expr* target, const Expr* value, ValueType type);
    static unsigned contentOf(const Expr* value, ValueType type);
    void useType(std::string_view name, const void* node, bool isTest);

    // ---- Expressions (type_check_expressions.cpp) ----
    ExprType typeOf(const Expr* expr);
    // The same of an expression whose value is used: one without a value is an error.
    ExprType valueOf(const Expr* expr);
    ExprType typeOfChain(const Expr* expr);
    ExprType typeOfLiteral(const LiteralExpr& literal) const;
    ExprType typeOfName(const IdentifierExpr& name);
    void reportUnknownName(const IdentifierExpr& name);
    ExprType typeOfBinary(const BinaryExpr& binary, ExprType left);
    ExprType typeOfAssignment(const BinaryExpr& binary, ExprType left);
    ExprType typeOfBroadcast(const BinaryExpr& binary, ExprType collection);
    ExprType typeOfMember(const BinaryExpr& access, ExprType object);
    ExprType typeOfIndex(const IndexExpr& index, ExprType object);
    ExprType typeOfUnary(const UnaryExpr& unary);
    ExprType typeOfTernary(const TernaryExpr& ternary);
    ExprType typeOfObject(const ObjectCtorExpr& object);
    ExprType typeOfRange(const RangeExpr& range);
    void checkBound(const Expr* bound);
    ExprType typeOfComprehension(const ListComprehensionExpr& list);
    void checkNullComparison(const BinaryExpr& binary);
    void checkWrite(const BinaryExpr& binary);
    void checkTextRead(const BinaryExpr& access);
    bool isControl(const Expr* expr) const;

    // ---- Calls (type_check_calls.cpp) ----
    ExprType typeOfCall(const CallExpr& call);
    ExprType typeOfBuiltIn(const CallExpr& call);
    ExprType callOfVariable(const CallExpr& call, const Symbol& symbol);
    ExprType callOfFunction(const CallExpr& call);
    ExprType callOfLibrary(const CallExpr& call);
    ExprType callOfUnknown(const CallExpr& call);
    void reportUnknownFunction(std::string_view name, ByteRange place);
    ExprType typeOfMemberCall(const CallExpr& call);
    ExprType callOfMethod(const CallExpr& call, std::string_view className,
                          std::string_view method);
    void reportUnknownMethod(const CallExpr& call, const BinaryExpr* access,
                             std::string_view className);
    ExprType typeOfBroadcastCall(const CallExpr& call);
    ExprType settleCall(const CallExpr& call, std::string_view shown,
                        const std::vector<Candidate>& candidates);
    static bool mayBeOfPlatform(std::string_view name, const std::vector<ExprType>& arguments);
    bool isOwnMethod(const CallExpr& call) const;
    bool isVisible(const UserFunction& function) const;
    std::vector<ExprType> typesOf(const ExprList& arguments);
    static bool accepts(const Wanted& parameter, ExprType argument);
    static bool accepts(const Candidate& candidate, const std::vector<ExprType>& arguments);
    void reportCount(const CallExpr& call, std::string_view shown,
                     const std::vector<Candidate>& candidates);
    void reportArgument(const CallExpr& call, std::string_view shown, const Candidate& candidate,
                        const std::vector<ExprType>& arguments);
    static bool meansSilentFunction(std::string_view name, const std::vector<Candidate>& candidates,
                                    const std::vector<ExprType>& arguments);
    bool isWrittenInto(std::string_view libraryFunction);
    void checkCallInMethod(const CallExpr& call, bool isWritten);
    void checkDroppedResult(const Expr* expr);

    // The variable of a handler, a function or a method; controls included in handlers.
    const Symbol* findVariable(std::string_view name);

    const ParsedSource& source;
    const AST& program;
    const LibraryFunctions& libraries;
    std::vector<Diagnostic>& found;
    ProgramNames names;
    Scopes scopes;
    Body body;
    NameMap variableClasses; // as the generator keeps it: never forgets a declaration
    std::string_view allElementName;
    std::string_view initialising;                  // the variable whose first value is looked at
    Symbol controlSymbol;                           // what findVariable() answers for a control
    std::unordered_set<std::string_view> readTexts; // controls whose text the handler has read
    std::unordered_set<std::string_view> writtenFields;
    std::unordered_set<std::string_view> objectClasses;
    std::vector<const std::string_view*> unknownImports; // libraries that are not found
    bool callsUnknownFunctions = false;                  // which are probably theirs
    std::vector<FieldUse> fieldUses;
    std::vector<TypeUse> typeUses;
    std::optional<NameSet> writtenLibraryFunctions; // the closure of the calls
    std::vector<ContentUse> contentUses;
    std::vector<unsigned> contents; // of each dynamic variable, by number: kinds ever stored in it
};

} // namespace Orvane
