// Statements. A function for each form is called behind its keyword.
//
// A level of nesting is a brace, or a branch or body without braces. A ladder of else-ifs is one
// level however long it is.
#include "frontend/parser.h"

#include <stdexcept>
#include <string>

namespace Orvane {

namespace {

constexpr TokenSet caseTypes = resultTypes | identifiers;

} // namespace

uptr<Stmt> Parser::parseStatement() {
    switch (peek().type) {
    case TokenType::IfKeyword:
        return advance(), parseIfStmt();
    case TokenType::ReturnKeyword:
        return advance(), parseReturnStmt();
    case TokenType::ForKeyword:
        return advance(), parseForStmt();
    case TokenType::WhileKeyword:
        return advance(), parseWhileStmt();
    case TokenType::ThrowKeyword:
        return advance(), parseThrowStmt();
    case TokenType::TryKeyword:
        return advance(), parseTryStmt();
    case TokenType::DeferKeyword:
        return advance(), parseDeferStmt();
    case TokenType::ExpectKeyword:
        return advance(), parseExpectStmt();
    case TokenType::WhenKeyword:
        return advance(), parseWhenStmt();
    default:
        break;
    }
    const std::size_t first = current;
    if (match(TokenType::LeftBrace)) {
        StmtList statements = parseStatementsToBrace();
        return make<BlockStmt>(first, std::move(statements));
    }
    const bool userType = check(TokenType::Identifier) && peekNext().type == TokenType::Identifier;
    return userType || declarationTypes.has(peek().type) ? parseVarDecl() : parseExprStmt();
}

// variable = TYPE [ typeArguments ] NAME [ "=" expression ] ";" ;
//
// Behind a type keyword a built-in type name may serve as the name; behind an identifier, which is
// a type only in front of another one, it cannot.
uptr<Stmt> Parser::parseVarDecl() {
    const std::size_t first = current;
    const std::string_view typeName = keep(advance());
    skipTypeArguments();
    const std::string_view name = keep(takeAny(plainNames, "Expected variable name"));
    uptr<Expr> initializer;
    if (match(TokenType::Assign)) initializer = parseExpression();
    consume(TokenType::Semicolon, "Expected ';'");
    return make<VarDeclStmt>(first, typeName, name, std::move(initializer));
}

// typeArguments = "<" { anything } ">" ;  balanced, and not kept
void Parser::skipTypeArguments() {
    if (!match(TokenType::Less)) return;
    for (int depth = 1; depth > 0 && !isAtEnd(); advance()) {
        if (check(TokenType::Less)) ++depth;
        if (check(TokenType::Greater)) --depth;
    }
}

uptr<Stmt> Parser::parseExprStmt() {
    const std::size_t first = current;
    uptr<Expr> expr = parseExpression();
    consume(TokenType::Semicolon, "Expected ';'");
    return make<ExprStmt>(first, std::move(expr));
}

// ifStatement = "if" "(" expression ")" statement [ "else" statement ] ;
//
// A ladder is read in a loop: each rung goes into the else branch of the one before.
uptr<Stmt> Parser::parseIfStmt() {
    Ranges ranges;
    mark(ranges, current - 1);
    uptr<IfStmt> ladder = parseIfRung();
    std::vector<IfStmt*> rungs{};
    IfStmt* last = ladder.get();
    if (positions) rungs.push_back(last);
    while (match(TokenType::ElseKeyword)) {
        if (!match(TokenType::IfKeyword)) {
            last->elseBranch.push_back(parseBranch());
            break;
        }
        mark(ranges, current - 1);
        uptr<IfStmt> rung = parseIfRung();
        IfStmt* const next = rung.get();
        last->elseBranch.push_back(std::move(rung));
        last = next;
        if (positions) rungs.push_back(last);
    }
    for (std::size_t index = 0; index < rungs.size(); ++index)
        mark(rungs[index], ranges[index].first);
    return ladder;
}

uptr<IfStmt> Parser::parseIfRung() {
    consume(TokenType::LeftParen, "Expected '('");
    uptr<Expr> condition = parseExpression();
    consume(TokenType::RightParen, "Expected ')'");
    StmtList thenBranch(arena());
    thenBranch.push_back(parseBranch());
    return arena().make<IfStmt>(std::move(condition), std::move(thenBranch), StmtList(arena()));
}

// One nested statement; a brace counts its own level.
uptr<Stmt> Parser::parseBranch() {
    if (check(TokenType::LeftBrace)) return parseStatement();
    const Nesting level(*this);
    return parseStatement();
}

// A body whose block, if it is one, is dissolved into its statements.
StmtList Parser::parseLoopBody() {
    if (match(TokenType::LeftBrace)) return parseStatementsToBrace();
    StmtList body(arena());
    body.push_back(parseBranch());
    return body;
}

// { statement } "}" ;
//
// Does not stop at the end of the input: there the next statement is the error.
StmtList Parser::parseStatementsToBrace() {
    const Nesting level(*this);
    if (recovery) return parseStatementsRecovering();
    StmtList statements(arena());
    while (!match(TokenType::RightBrace)) statements.push_back(parseStatement());
    return statements;
}

// block = "{" { statement } "}" ;
StmtList Parser::parseBlock() {
    consume(TokenType::LeftBrace, "Expected '{'");
    const Nesting level(*this);
    if (recovery) return parseStatementsRecovering();
    StmtList statements(arena());
    while (!check(TokenType::RightBrace) && !isAtEnd()) statements.push_back(parseStatement());
    consume(TokenType::RightBrace, "Expected '}'");
    return statements;
}

// whileStatement = "while" "(" expression ")" statement ;
uptr<Stmt> Parser::parseWhileStmt() {
    const std::size_t first = current - 1;
    consume(TokenType::LeftParen, "Expected '('");
    uptr<Expr> condition = parseExpression();
    consume(TokenType::RightParen, "Expected ')'");
    StmtList body = parseLoopBody();
    return make<WhileStmt>(first, std::move(condition), std::move(body));
}

// forStatement = "for" "(" [ TYPE ] NAME ":" expression ")" statement ;
uptr<Stmt> Parser::parseForStmt() {
    const std::size_t first = current - 1;
    consume(TokenType::LeftParen, "Expected '('");
    std::string_view varType;
    std::string_view varName;
    if (declarationTypes.has(peek().type)) {
        varType = keep(advance());
        varName = keep(consume(TokenType::Identifier, "Expected variable name after type"));
    } else if (check(TokenType::Identifier)) {
        if (peekNext().type == TokenType::Identifier) varType = keep(advance());
        varName = keep(consume(TokenType::Identifier, "Expected variable name"));
    } else {
        failLoopVariable();
    }
    consume(TokenType::Colon, "Expected ':' in for-each");
    uptr<Expr> iterable = parseExpression();
    consume(TokenType::RightParen, "Expected ')'");
    StmtList body = parseLoopBody();
    return make<ForStmt>(first, varType, varName, std::move(iterable), std::move(body));
}

void Parser::failLoopVariable() const {
    if (recovery) giveUp("Expected type keyword or variable name");
    const Token& got = peek();
    throw std::runtime_error("Expected type keyword or variable name at line " +
                             std::to_string(got.line) + " (got '" + std::string(got.text()) +
                             "' type=" + std::to_string(numberOf(got.type)) + ")");
}

// returnStatement = "return" [ expression ] ";" ;
uptr<Stmt> Parser::parseReturnStmt() {
    const std::size_t first = current - 1;
    uptr<Expr> value;
    if (!check(TokenType::Semicolon)) value = parseExpression();
    consume(TokenType::Semicolon, "Expected ';'");
    return make<ReturnStmt>(first, std::move(value));
}

// throwStatement = "throw" expression ";" ;
uptr<Stmt> Parser::parseThrowStmt() {
    const std::size_t first = current - 1;
    uptr<Expr> value = parseExpression();
    consume(TokenType::Semicolon, "Expected ';'");
    return make<ThrowStmt>(first, std::move(value));
}

// expectStatement = "expect" expression [ "," expression ] ";" ;
uptr<Stmt> Parser::parseExpectStmt() {
    const std::size_t first = current - 1;
    uptr<Expr> condition = parseExpression();
    uptr<Expr> message;
    if (match(TokenType::Comma)) message = parseExpression();
    consume(TokenType::Semicolon, "Expected ';'");
    return make<ExpectStmt>(first, std::move(condition), std::move(message));
}

// deferStatement = "defer" statement ;
uptr<Stmt> Parser::parseDeferStmt() {
    const std::size_t first = current - 1;
    uptr<Stmt> deferred = parseBranch();
    return make<DeferStmt>(first, std::move(deferred));
}

// tryStatement = "try" block "catch" "(" NAME ")" block ;
uptr<Stmt> Parser::parseTryStmt() {
    const std::size_t first = current - 1;
    StmtList tryBody = parseTryBlock();
    consume(TokenType::CatchKeyword, "Expected 'catch'");
    consume(TokenType::LeftParen, "Expected '('");
    const std::string_view variable =
        keep(consume(TokenType::Identifier, "Expected catch variable"));
    consume(TokenType::RightParen, "Expected ')'");
    StmtList catchBody = parseTryBlock();
    return make<TryStmt>(first, std::move(tryBody), variable, std::move(catchBody));
}

StmtList Parser::parseTryBlock() {
    consume(TokenType::LeftBrace, "Expected '{'");
    return parseStatementsToBrace();
}

// whenStatement = "when" "(" expression ")" "{" { whenCase } "}" ;
uptr<Stmt> Parser::parseWhenStmt() {
    const std::size_t first = current - 1;
    consume(TokenType::LeftParen, "Expected '(' after 'when'");
    uptr<Expr> subject = parseExpression();
    consume(TokenType::RightParen, "Expected ')' after when condition");
    consume(TokenType::LeftBrace, "Expected '{' after when");
    const Nesting level(*this);
    const InList list(*this, Body::whenCases);
    List<WhenCase> cases(arena());
    Ranges ranges;
    while (!atClose() && !isAtEnd()) {
        element([&] {
            const std::size_t firstOfCase = current;
            cases.push_back(parseWhenCase());
            mark(ranges, firstOfCase);
        });
    }
    consume(TokenType::RightBrace, "Expected '}' after when");
    place(cases, ranges);
    return make<WhenStmt>(first, std::move(subject), std::move(cases));
}

// whenCase = ( "is" TYPE | "else" ) "->" expression ";" ;
WhenCase Parser::parseWhenCase() {
    std::string_view typeName = spellingOf(TokenType::ElseKeyword);
    const Token& kind = takeAny({TokenType::IsKeyword, TokenType::ElseKeyword},
                                "Expected 'is' or 'else' in when statement");
    if (kind.type == TokenType::IsKeyword)
        typeName = keep(takeAny(caseTypes, "Expected type name after 'is' in when statement"));
    consume(TokenType::Arrow, "Expected '->' in when case");
    uptr<Expr> value = parseExpression();
    consume(TokenType::Semicolon, "Expected ';' after when case");
    return {typeName, std::move(value)};
}

} // namespace Orvane
