// Source text to tokens.
//
// Made by the driver once per build. It keeps its own copy of the source, in which it decodes
// literals; the tokens view it, so the lexer must outlive its tokens and whatever views their
// texts. Problems are printed and lexing goes on; only a number that does not fit its type throws
// (std::out_of_range). Given a list for them, the lexer adds each problem, such numbers included.
//
//     Lexer lexer("vorla Main { }", console);
//     std::vector<Token> tokens = lexer.tokenize();   // ends with exactly one EndOfInput token
#pragma once

#include "frontend/console.h"
#include "frontend/token.h"

#include <string>
#include <string_view>
#include <vector>

namespace Orvane {

struct LexicalProblem {
    enum class Kind {
        unterminatedText,
        unterminatedCharacter,
        unclosedCharacter, // something else follows where the closing quote should stand
        numberTooLarge,
    };
    Kind kind{};
    std::size_t offset = 0; // of the literal's first byte in the source, from 0
};

class Lexer {
public:
    Lexer(std::string source, Console& console, std::vector<LexicalProblem>* problems = nullptr);
    Lexer(const Lexer&) = delete; // tokens view this object's texts
    Lexer& operator=(const Lexer&) = delete;

    std::vector<Token> tokenize();

private:
    char peek() const { return *next; } // 0 at the end
    char peekNext() const { return atEnd() ? '\0' : next[1]; }
    bool atEnd() const { return next == end; }
    int columnOf(const char* character) const {
        return static_cast<int>(character - lineStart) + 1;
    }
    char advance();
    void startLine();
    void skipWhitespace();
    void skipComment();
    bool atComment() const;
    bool readTokens(std::vector<Token>& tokens, std::size_t count);
    Token readToken();
    Token readIdentifier();
    Token readNumber();
    Token readString();
    Token readChar();
    Token readColor();
    Token readOperator();

    // Decoded content grows where the literal itself stands: no escape is shorter than what it
    // stands for. These take the place to write to and return the place behind what they wrote.
    char* readContent(char* target);
    char* readEscape(char* target);
    char* readCodePoint(char* target);

    void skipPlainText();
    void skipCharacter();
    void note(LexicalProblem::Kind kind, const char* literal);
    void tryValue(const Token& number);
    bool hexAhead(std::size_t offset, unsigned& code) const;
    Token tokenFrom(const char* start, TokenType type) const {
        return {type, std::string_view(start, static_cast<std::size_t>(next - start)), line,
                columnOf(start)};
    }

    std::string source;
    char* next = source.data();             // the next unread character
    const char* end = next + source.size(); // where the zero byte behind the source is
    const char* lineStart = next;           // the current line's first character
    int line = 1;
    Console& console;
    std::vector<LexicalProblem>* problems;
};

} // namespace Orvane
