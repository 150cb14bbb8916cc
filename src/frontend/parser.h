// Tokens to syntax tree, by recursive descent.
//
// Made by the driver with the lexer's tokens. The first error ends the parse with a
// std::runtime_error whose text is "<message> at line <line>"; a failed consume() has printed
//     [PARSER ERROR] Expected <number>, got <number> at line <line>: <message>
// before, and there is no partial tree. Only with a Recovery does parse() go on behind errors and
// return what it could parse, without a printed line or an exception. Each parse function stands in
// the file of its family: parser_expressions.cpp, parser_statements.cpp, parser_declarations.cpp,
// parser_window.cpp, parser_classes.cpp.
//
//     Parser parser(lexer.tokenize(), console);
//     std::unique_ptr<AST> program = parser.parse();
#pragma once

#include "frontend/console.h"
#include "frontend/recovery.h"
#include "frontend/source_positions.h"
#include "frontend/syntax_tree.h"
#include "frontend/token.h"
#include "frontend/token_sets.h"

#include <memory>
#include <string_view>
#include <vector>

namespace Orvane {

class Parser {
public:
    // Whether the tree has its own copies of names and literals, or views the lexer's text, which
    // must then outlive the tree.
    enum class Texts { copied, viewed };

    // With `positions`, the token range of every node and record is recorded there. With
    // `recovery`, errors are, and only parse() may be called.
    Parser(std::vector<Token> tokens, Console& console, PositionTable* positions = nullptr,
           Texts texts = Texts::copied, Recovery* recovery = nullptr);

    // The whole source. Never null; throws on the first syntax error. Called once.
    std::unique_ptr<AST> parse();

    // Nesting of brackets, blocks and prefix operators that is followed; deeper sources fail with
    // "Expected less nesting". The number keeps the deepest parse and the code generator's walk of
    // its result within a stack of 8 MB, sanitizers included.
    static constexpr int maxNesting = 1000;

    // One construct, for tests and tools; nodes live in this parser's tree.
    uptr<Expr> parseExpression();
    uptr<Stmt> parseStatement();

private:
    // Counts one level of nesting for as long as it lives. Made behind the token that opens the
    // level; throws when there are too many.
    class Nesting {
    public:
        explicit Nesting(Parser& parser_) : parser(parser_) {
            if (parser.nesting >= maxNesting)
                parser.fail("Expected less nesting", parser.previous().line);
            ++parser.nesting;
        }
        Nesting(const Nesting&) = delete;
        Nesting& operator=(const Nesting&) = delete;
        ~Nesting() { --parser.nesting; }

    private:
        Parser& parser;
    };

    // Ranges of the records of a list that still grows, and whose addresses are not final yet.
    using Ranges = std::vector<TokenRange>;

    // ---- Tokens (parser.cpp) ----
    const Token& peekAt(std::size_t offset) const {
        const std::size_t index = current + offset;
        return index < tokens.size() ? tokens[index] : pastEnd;
    }
    const Token& peek() const { return tokens[current]; } // the end token, once it is reached
    const Token& peekNext() const { return peekAt(1); }
    const Token& previous() const { return current > 0 ? tokens[current - 1] : pastEnd; }
    bool isAtEnd() const { return check(TokenType::EndOfInput); }
    bool check(TokenType type) const { return peek().type == type; }
    // The token just consumed; at the end of the input, where nothing is, the last real one.
    const Token& advance() {
        if (!isAtEnd()) ++current;
        return previous();
    }
    bool match(TokenType type) {
        if (!check(type)) return false;
        advance();
        return true;
    }
    const Token& consume(TokenType expected, std::string_view message) {
        if (!check(expected)) return missing(expected, message);
        return advance();
    }
    // consume() of any of several kinds; messages give the identifier's number.
    const Token& consumeAny(TokenSet expected, std::string_view message) {
        if (!expected.has(peek().type)) return missing(TokenType::Identifier, message);
        return advance();
    }
    // The same without a printed line.
    const Token& takeAny(TokenSet expected, std::string_view message) {
        if (!expected.has(peek().type)) return missingAny(expected, message);
        return advance();
    }
    [[noreturn]] void failExpected(TokenType expected, std::string_view message) const;
    [[noreturn]] void fail(std::string_view message, int line) const;

    // ---- Recovery (parser_recovery.cpp): nothing happens without one ----
    // Thrown behind a recorded error up to the list whose element it is in.
    struct GivenUp {};
    // A list of elements while it is parsed; made behind the "{".
    class InList {
    public:
        InList(Parser& parser, Body body) : recovery(parser.recovery) {
            if (recovery) recovery->enter(body, parser.current - 1);
        }
        InList(const InList&) = delete;
        InList& operator=(const InList&) = delete;
        ~InList() {
            if (recovery) recovery->leave();
        }

    private:
        Recovery* recovery;
    };
    // Parses one element of the innermost list.
    template <class Parse>
    void element(Parse parse) {
        if (!recovery) return parse();
        const std::size_t first = current;
        recovery->begin(first);
        try {
            parse();
        } catch (const GivenUp&) {
            resumeBehind(first);
        }
    }
    bool atClose() const {
        return check(TokenType::RightBrace) || leaving() || (recovery && isAtEnd());
    }
    bool leaving() const { return recovery && recovery->leaving(); }
    const Token& missing(TokenType expected, std::string_view message);
    const Token& missingAny(TokenSet expected, std::string_view message);
    [[noreturn]] void giveUp(std::string_view message) const;
    void resumeBehind(std::size_t first);
    void dropBody(std::size_t first);
    bool isScript(std::size_t first) const {
        return first + 2 < tokens.size() && tokens[first + 2].type == TokenType::ScriptKeyword;
    }
    void noteSkipped(std::size_t first);
    void dropMisplaced(Recovery::Misplaced kind, std::size_t first);
    StmtList parseStatementsRecovering();

    Arena& arena() { return ast->arena; }
    // The text of a token for the tree.
    std::string_view keep(const Token& token) {
        return texts == Texts::viewed ? token.text() : arena().text(token.text());
    }

    // ---- Positions ----
    // Without a table nobody asks for tokens that were read long ago, and their memory can serve
    // the nodes.
    TokenRange rangeFrom(std::size_t firstToken) const { return {firstToken, current - 1}; }
    void mark(const void* completed, std::size_t firstToken) {
        if (current >= nextMark) [[unlikely]]
            markOrRelease(completed, firstToken);
    }
    void mark(Ranges& growing, std::size_t firstToken) const {
        if (positions) growing.push_back(rangeFrom(firstToken));
    }
    void markOrRelease(const void* completed, std::size_t firstToken);
    void releaseReadTokens();
    void keepMemoryOfTokens();
    template <class Records>
    void place(const Records& records, const Ranges& ranges) {
        for (std::size_t index = 0; index < ranges.size(); ++index)
            positions->add(&records[index], ranges[index]);
    }
    // Builds a node whose last token has just been consumed.
    template <class Node, class... Arguments>
    uptr<Node> make(std::size_t firstToken, Arguments&&... arguments) {
        uptr<Node> node = arena().make<Node>(std::forward<Arguments>(arguments)...);
        mark(node.get(), firstToken);
        return node;
    }

    // ---- Expressions, lowest precedence first (parser_expressions.cpp) ----
    uptr<Expr> parseAssignment();
    uptr<Expr> parseTernary(std::size_t firstToken, uptr<Expr> condition);
    uptr<Expr> parseBinary(int weakest);
    uptr<Expr> parseUnary();
    uptr<Expr> parsePrimary();
    uptr<Expr> parseIs();
    uptr<Expr> parseTherebe();
    uptr<Expr> parseHave();
    uptr<Expr> parseLiteral();
    uptr<Expr> parseBraceList();
    uptr<Expr> parseGroup();
    uptr<Expr> parseName();
    uptr<Expr> parseObject();
    uptr<Expr> parsePostfix(std::size_t firstToken, uptr<Expr> result);
    uptr<Expr> parseMemberAccess(std::size_t firstToken, uptr<Expr> object);
    uptr<Expr> parseIndex(std::size_t firstToken, uptr<Expr> object);
    uptr<Expr> parseCall(std::size_t firstToken, uptr<Expr> callee);
    uptr<Expr> parseBracketExpr();
    uptr<Expr> parseComprehension(std::size_t firstToken, uptr<Expr> element);
    uptr<Expr> parseRange(std::size_t firstToken, uptr<Expr> start);
    uptr<Expr> parseBracketList(std::size_t firstToken, uptr<Expr> firstElement);

    // ---- Statements (parser_statements.cpp) ----
    uptr<Stmt> parseIfStmt();
    uptr<Stmt> parseReturnStmt();
    uptr<Stmt> parseForStmt();
    uptr<Stmt> parseWhileStmt();
    uptr<Stmt> parseThrowStmt();
    uptr<Stmt> parseTryStmt();
    uptr<Stmt> parseDeferStmt();
    uptr<Stmt> parseExpectStmt();
    uptr<Stmt> parseWhenStmt();
    WhenCase parseWhenCase();
    uptr<Stmt> parseVarDecl();
    uptr<Stmt> parseExprStmt();
    uptr<IfStmt> parseIfRung();
    uptr<Stmt> parseBranch();
    StmtList parseLoopBody();
    StmtList parseStatementsToBrace();
    StmtList parseTryBlock();
    StmtList parseBlock();
    void skipTypeArguments();
    [[noreturn]] void failLoopVariable() const;

    // ---- Declarations (parser_declarations.cpp) ----
    void parseTopLevel(AST& program);
    void parseTypename(AST& program);
    void parseImport(AST& program);
    std::string_view parseModuleName();
    void parseUsing(AST& program);
    Using parseUsingPair();
    Using parseUsingAlias();
    bool atFunction() const;
    uptr<FuncDef> parseFunction();
    List<Parameter> parseParameters();
    Parameter parseParameter();
    void parseScript(AST& program);
    void parseScriptBody(AST& program, Script& script);
    void parseScriptMember(AST& program, Script& script);
    uptr<EventHandler> parseEventHandler();

    // ---- The window (parser_window.cpp) ----
    void parseVorla(AST& program);
    bool atComponent();
    void parseWindowBody(Vorla& window);
    uptr<Component> parseComponent();
    void parseComponentBody(Component& component);
    void parseEvent(Component& component);
    void parseProperty(List<Property>& properties, Ranges& ranges);

    // ---- Classes and ables (parser_classes.cpp) ----
    void parseClass(AST& program);
    void parseClassBody(ClassDef& record);
    bool matchAccess(Access& access);
    void parseClassMember(ClassDef& record, Access access, Ranges& fieldRanges);
    void parseFields(ClassDef& record, ClassField field, Ranges& ranges, std::size_t firstToken);
    uptr<ClassMethod> parseMethod(std::string_view className, std::string_view returnType,
                                  std::size_t firstToken);
    void parseAble(AST& program);
    AbleMethod parseAbleMethod();

    // Records that the AST holds by value, in the order of its lists.
    struct TopLevelRanges {
        Ranges imports, usings, ables, typeNames;
    };

    static constexpr Token pastEnd{};
    static constexpr std::size_t keptTokens = 256; // just read; a parse function may look at them
    static constexpr std::size_t releaseInterval = std::size_t{1} << 14; // tokens, 400 KB

    std::vector<Token> tokens; // ends with an end token; without one behind the given ones, with
                               // one of line 0 and column 0
    std::size_t current = 0;   // index of the next unread token, from 0; never behind the end token
    std::size_t released = 0;  // tokens whose memory the arena has
    std::size_t nextMark;      // mark() has nothing to do before this token
    Console& console;
    PositionTable* positions;
    Texts texts;
    Recovery* recovery;
    std::unique_ptr<AST> ast; // under construction; parse() hands it out
    int nesting = 0;
    std::size_t identifiersEnd = 0; // end of the run of identifiers that atComponent() last saw
    TopLevelRanges topLevel;
};

} // namespace Orvane
