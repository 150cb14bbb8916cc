// Tokens to syntax tree, by recursive descent.
//
// Made by the driver with the lexer's tokens. The first error ends the parse with a
// std::runtime_error whose text is "<message> at line <line>"; a failed consume() has printed
//     [PARSER ERROR] Expected <number>, got <number> at line <line>: <message>
// before. There is no recovery and no partial tree. Each parse function stands in the file of its
// family: parser_expressions.cpp, parser_statements.cpp, parser_declarations.cpp.
//
//     Parser parser(lexer.tokenize(), console);
//     std::unique_ptr<AST> program = parser.parse();
#pragma once

#include "frontend/console.h"
#include "frontend/source_positions.h"
#include "frontend/syntax_tree.h"
#include "frontend/token.h"

#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace Orvane {

class Parser {
public:
    // With `positions`, the token range of every node and record is recorded there.
    Parser(std::vector<Token> tokens, Console& console, PositionTable* positions = nullptr);

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
    // Counts one level of nesting for as long as it lives; throws when there are too many.
    class Nesting;

    // ---- Tokens (parser.cpp) ----
    const Token& peek() const;     // past the end: an end token with line 0 and column 0
    const Token& peekNext() const; // the same
    const Token& peekAt(std::size_t offset) const;
    const Token& previous() const; // the token just consumed
    bool isAtEnd() const;
    const Token& advance(); // stays on the end token
    bool check(TokenType type) const { return peek().type == type; }
    bool match(TokenType type);
    const Token& consume(TokenType expected, std::string_view message);
    [[noreturn]] void fail(std::string_view message, int line) const;

    std::string_view keep(std::string_view text) { return ast->arena.text(text); }
    template <class Node, class... Arguments>
    uptr<Node> make(std::size_t firstToken, Arguments&&... arguments);

    // ---- Expressions, lowest precedence first (parser_expressions.cpp) ----
    uptr<Expr> parseAssignment();
    uptr<Expr> parseEquality();
    uptr<Expr> parseComparison();
    uptr<Expr> parseTerm();
    uptr<Expr> parseFactor();
    uptr<Expr> parseUnary();
    uptr<Expr> parsePrimary();
    uptr<Expr> parseBracketExpr();

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
    StmtList parseBlock();

    // ---- Declarations (parser_declarations.cpp) ----
    void parseVorla(AST& program);
    void parseScript(AST& program);
    void parseClass(AST& program);
    void parseAble(AST& program);
    void parseImport(AST& program);
    void parseUsing(AST& program);

    std::vector<Token> tokens;
    std::size_t current = 0; // index of the next unread token, from 0
    Console& console;
    PositionTable* positions;
    std::unique_ptr<AST> ast; // under construction; parse() hands it out
    int nesting = 0;
};

} // namespace Orvane
