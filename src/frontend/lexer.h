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
#include <vector>

namespace Orvane {

class Lexer {
public:
    Lexer(std::string source, Console& console);
    Lexer(const Lexer&) = delete; // tokens view this object's texts
    Lexer& operator=(const Lexer&) = delete;

    std::vector<Token> tokenize();

private:
    char peek() const { return source[position]; } // 0 at the end
    char peekNext() const { return atEnd() ? '\0' : source[position + 1]; }
    bool atEnd() const { return position >= source.size(); }
    int column() const { return static_cast<int>(position - lineStart) + 1; }
    char advance();
    void startLine();
    void skipWhitespace();
    void skipComment();
    bool atComment() const;
    Token readToken();
    Token readIdentifier();
    Token readNumber();
    Token readString();
    Token readChar();
    Token readColor();
    Token readOperator();

    void readPlainText();
    void readEscape(std::string& text);
    void readCodePoint(std::string& text);
    void skipCharacter();
    bool hexAhead(std::size_t offset, unsigned& code) const;
    std::string_view textFrom(std::size_t start) const {
        return std::string_view(source).substr(start, position - start);
    }

    std::string source;
    std::size_t position = 0;  // byte index of the next unread character, from 0
    std::size_t lineStart = 0; // byte index of the current line's first character
    int line = 1;
    std::deque<std::string> decoded; // contents of literals that are not plain pieces of the source
    Console& console;
};

} // namespace Orvane
