// Source text to tokens.
//
// Made by the driver once per build. It keeps its own copy of the source and of decoded literals;
// the tokens view them, so the lexer must outlive its tokens. Problems are printed and lexing goes
// on; only a number that does not fit its type throws (std::out_of_range).
//
//     Lexer lexer("vorla Main { }", console);
//     std::vector<Token> tokens = lexer.tokenize();   // ends with exactly one EndOfInput token
#pragma once

#include "frontend/console.h"
#include "frontend/token.h"

#include <deque>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace Orvane {

class Lexer {
public:
    Lexer(std::string source, Console& console);
    Lexer(const Lexer&) = delete; // tokens view this object's texts
    Lexer& operator=(const Lexer&) = delete;

    std::vector<Token> tokenize();

private:
    void initKeywords();

    char peek() const;
    char peekNext() const;
    char advance();
    void skipWhitespace();
    void skipComment();
    Token readIdentifier();
    Token readNumber();
    Token readString();
    Token readChar();
    Token readColor();
    Token readOperator();

    std::string source;
    std::size_t position = 0; // byte index, from 0
    int line = 1;
    int column = 1;
    std::unordered_map<std::string_view, TokenType> keywords;
    std::deque<std::string> decoded; // contents of literals that are not plain pieces of the source
    Console& console;
};

} // namespace Orvane
