// Going on behind errors. Everything here runs with a Recovery only, except missing() and
// missingAny(), which without one fail.
#include "frontend/parser.h"

namespace Orvane {

const Token& Parser::missing(TokenType expected, std::string_view message) {
    if (!recovery) failExpected(expected, message);
    switch (recovery->missing(tokens, current, expected, message)) {
    case Recovery::Remedy::suppose:
        return previous();
    case Recovery::Remedy::take:
        return advance();
    case Recovery::Remedy::giveUp:
        break;
    }
    throw GivenUp{};
}

const Token& Parser::missingAny(TokenSet expected, std::string_view message) {
    if (!recovery) fail(message, peek().line);
    const bool name = expected.has(TokenType::Identifier);
    return missing(name ? TokenType::Identifier : TokenType::EndOfInput, message);
}

// Nesting that is too deep ends the parse: every level around would fail again.
void Parser::giveUp(std::string_view message) const {
    recovery->failed(tokens, current, message);
    if (nesting >= maxNesting) recovery->stop(tokens);
    throw GivenUp{};
}

void Parser::resumeBehind(std::size_t first) {
    current = recovery->resume(tokens, current);
    if (recovery->leaving()) return;
    if (check(TokenType::LeftBrace) && recovery->body() != Body::statements)
        element([&] { dropBody(first); });
    if (current <= first && !isAtEnd()) current = first + 1;
}

// The body of a member or declaration whose head has failed, for the errors in it.
void Parser::dropBody(std::size_t first) {
    advance();
    const Body body = recovery->body();
    const TokenType kind = tokens[first].type;
    const bool event = first > 0 && tokens[first - 1].type == TokenType::OnKeyword;
    if (kind == TokenType::ClassKeyword)
        parseClassBody(*arena().make<ClassDef>(arena()));
    else if (kind == TokenType::VorlaKeyword)
        parseWindowBody(*arena().make<Vorla>(arena()));
    else if (body == Body::topLevel && isScript(first))
        parseScriptBody(*ast, *arena().make<Script>(arena()));
    else if (body == Body::window && !event)
        parseComponentBody(*arena().make<Component>(arena()));
    else
        parseStatementsRecovering();
}

// { statement } "}" ;
StmtList Parser::parseStatementsRecovering() {
    const InList list(*this, Body::statements);
    StmtList statements(arena());
    while (!atClose()) element([&] { statements.push_back(parseStatement()); });
    consume(TokenType::RightBrace, "Expected '}'");
    return statements;
}

// Called behind tokens that the grammar skips. What they begin is dropped as a whole when it is
// something known.
void Parser::noteSkipped(std::size_t first) {
    if (!recovery) return;
    const Recovery::Misplaced kind = recovery->misplacedAt(tokens, first);
    if (kind == Recovery::Misplaced::nothing) return recovery->skip(first, current - 1);
    if (kind == Recovery::Misplaced::outer) throw GivenUp{};
    current = first;
    dropMisplaced(kind, first);
}

void Parser::dropMisplaced(Recovery::Misplaced kind, std::size_t first) {
    const Nesting level(*this);
    std::size_t last = first;
    if (kind == Recovery::Misplaced::tokens) last = Recovery::endOfMisplaced(tokens, first);
    if (kind == Recovery::Misplaced::component) last = first + 1;
    const bool refused =
        kind == Recovery::Misplaced::head ||
        (kind == Recovery::Misplaced::component && recovery->body() == Body::window);
    if (!refused) recovery->skip(first, last);
    if (kind == Recovery::Misplaced::tokens) {
        current = last + 1;
    } else if (kind == Recovery::Misplaced::statement) {
        parseStatement();
    } else if (kind == Recovery::Misplaced::component) {
        advance(), advance();
        if (match(TokenType::LeftBrace)) parseComponentBody(*arena().make<Component>(arena()));
    } else if (kind == Recovery::Misplaced::handler) {
        parseEventHandler();
    } else if (kind == Recovery::Misplaced::head) {
        while (!match(TokenType::LeftBrace)) advance();
        parseStatementsRecovering();
    } else if (kind == Recovery::Misplaced::event) {
        advance();
        parseBlock();
    } else {
        if (peekNext().type != TokenType::LeftParen) advance();
        advance();
        parseParameters();
        parseBlock();
    }
}

} // namespace Orvane
