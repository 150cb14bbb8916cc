#include "frontend/parser.h"

#include "frontend/large_memory.h"

#include <stdexcept>
#include <string>

namespace Orvane {

Parser::Parser(std::vector<Token> tokens_, Console& console_, PositionTable* positions_,
               Texts texts_, Recovery* recovery_)
    : tokens(std::move(tokens_)), nextMark(positions_  ? 0
                                           : recovery_ ? noToken
                                                       : releaseInterval),
      console(console_), positions(positions_), texts(texts_), recovery(recovery_),
      ast(std::make_unique<AST>()) {
    if (tokens.empty() || tokens.back().type != TokenType::EndOfInput) tokens.push_back(pastEnd);
}

// program = { declaration } ;
std::unique_ptr<AST> Parser::parse() {
    while (!isAtEnd() && !leaving()) element([this] { parseTopLevel(*ast); });
    place(ast->imports, topLevel.imports);
    place(ast->usings, topLevel.usings);
    place(ast->ables, topLevel.ables);
    place(ast->typeNames, topLevel.typeNames);
    if (released > 0) keepMemoryOfTokens();
    return std::move(ast);
}

void Parser::markOrRelease(const void* completed, std::size_t firstToken) {
    if (positions)
        positions->add(completed, rangeFrom(firstToken));
    else
        releaseReadTokens();
}

// The parser never goes back. The tokens of a large source take as much memory as its tree, which
// therefore grows into that of the tokens far behind.
void Parser::releaseReadTokens() {
    const std::size_t end = current - keptTokens;
    arena().reuse(tokens.data() + released, (end - released) * sizeof(Token));
    released = end;
    nextMark = current + releaseInterval;
}

// The tree has no tokens of its own, but stands where they stood.
void Parser::keepMemoryOfTokens() {
    arena().giveBackRest();
    arena().keep(std::move(tokens));
}

void Parser::failExpected(TokenType expected, std::string_view message) const {
    const Token& got = peek();
    console.print("[PARSER ERROR] Expected %d, got %d at line %d: %.*s\n", numberOf(expected),
                  numberOf(got.type), got.line, static_cast<int>(message.size()), message.data());
    fail(message, got.line);
}

void Parser::fail(std::string_view message, int line) const {
    if (recovery) giveUp(message);
    throw std::runtime_error(std::string(message) + " at line " + std::to_string(line));
}

} // namespace Orvane
