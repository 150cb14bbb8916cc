#include "frontend/lexer.h"

#include "frontend/keywords.h"

#include <algorithm>

namespace Orvane {

namespace {

// The character classes of the C locale. Bytes from 128 on are in none of them.
enum CharClass : unsigned char {
    blank = 1,
    digit = 2,
    hexDigit = 4,
    wordStart = 8,
    wordPart = 16,
};

constexpr std::array<unsigned char, 256> classifyCharacters() {
    std::array<unsigned char, 256> table{};
    const auto mark = [&](std::string_view characters, int classes) {
        for (const char character : characters)
            table[static_cast<unsigned char>(character)] |= static_cast<unsigned char>(classes);
    };
    mark(" \t\n\v\f\r", blank);
    mark("0123456789", digit | hexDigit | wordPart);
    mark("abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ_", wordStart | wordPart);
    mark("abcdefABCDEF", hexDigit);
    return table;
}

constexpr auto characterClasses = classifyCharacters();

bool is(char character, CharClass wanted) {
    return (characterClasses[static_cast<unsigned char>(character)] & wanted) != 0;
}

bool isContinuation(char character) {
    return (static_cast<unsigned char>(character) & 0xC0) == 0x80;
}

// Bytes of the UTF-8 sequence that begins with this byte; 1 for a byte that begins none.
int sequenceLength(char first) {
    const auto byte = static_cast<unsigned char>(first);
    if (byte >= 0xF0 && byte <= 0xF4) return 4;
    if (byte >= 0xE0 && byte < 0xF0) return 3;
    if (byte >= 0xC2 && byte < 0xE0) return 2;
    return 1;
}

unsigned hexValue(char character) {
    if (is(character, digit)) return static_cast<unsigned>(character - '0');
    return static_cast<unsigned>((character | 0x20) - 'a') + 10;
}

void appendUtf8(std::string& text, unsigned code) {
    const auto append = [&](unsigned byte) { text += static_cast<char>(byte); };
    if (code < 0x80) return append(code);
    if (code < 0x800) {
        append(0xC0 | (code >> 6));
    } else {
        if (code < 0x10000) {
            append(0xE0 | (code >> 12));
        } else {
            append(0xF0 | (code >> 18));
            append(0x80 | ((code >> 12) & 0x3F));
        }
        append(0x80 | ((code >> 6) & 0x3F));
    }
    append(0x80 | (code & 0x3F));
}

bool isHighSurrogate(unsigned code) { return code >= 0xD800 && code < 0xDC00; }
bool isLowSurrogate(unsigned code) { return code >= 0xDC00 && code < 0xE000; }
constexpr unsigned replacementCharacter = 0xFFFD;

// The kind of an operator of two characters, or Unknown.
TokenType pairKind(char first, char second) {
    if (second == '=') {
        switch (first) {
        case '=':
            return TokenType::Equal;
        case '!':
            return TokenType::NotEqual;
        case '<':
            return TokenType::LessEqual;
        case '>':
            return TokenType::GreaterEqual;
        default:
            return TokenType::Unknown;
        }
    }
    if (first == '&' && second == '&') return TokenType::AndAnd;
    if (first == '|' && second == '|') return TokenType::OrOr;
    if (first == '-' && second == '>') return TokenType::Arrow;
    if (first == '.' && second == '.') return TokenType::DotDot;
    return TokenType::Unknown;
}

TokenType singleKind(char character) {
    switch (character) {
    case '=':
        return TokenType::Assign;
    case '+':
        return TokenType::Plus;
    case '-':
        return TokenType::Minus;
    case '*':
        return TokenType::Star;
    case '/':
        return TokenType::Slash;
    case '%':
        return TokenType::Percent;
    case '<':
        return TokenType::Less;
    case '>':
        return TokenType::Greater;
    case '!':
        return TokenType::Not;
    case '.':
        return TokenType::Dot;
    case '?':
        return TokenType::Question;
    case '{':
        return TokenType::LeftBrace;
    case '}':
        return TokenType::RightBrace;
    case '(':
        return TokenType::LeftParen;
    case ')':
        return TokenType::RightParen;
    case '[':
        return TokenType::LeftBracket;
    case ']':
        return TokenType::RightBracket;
    case ';':
        return TokenType::Semicolon;
    case ',':
        return TokenType::Comma;
    case ':':
        return TokenType::Colon;
    default:
        return TokenType::Unknown;
    }
}

} // namespace

Lexer::Lexer(std::string source_, Console& console_)
    : source(std::move(source_)), console(console_) {}

std::vector<Token> Lexer::tokenize() {
    // A token for every five characters is usual. The bound keeps a source of nothing but blanks
    // or one long comment from taking memory that no token needs.
    constexpr std::size_t largestGuess = 1U << 22;
    std::vector<Token> tokens;
    tokens.reserve(std::min(source.size() / 5 + 2, largestGuess));
    for (;;) {
        skipWhitespace();
        if (atEnd()) break;
        if (atComment())
            skipComment();
        else
            tokens.push_back(readToken());
    }
    tokens.emplace_back(TokenType::EndOfInput, std::string_view(), line, column());
    return tokens;
}

Token Lexer::readToken() {
    const char first = peek();
    if (is(first, wordStart)) return readIdentifier();
    if (is(first, digit)) return readNumber();
    switch (first) {
    case '#':
        return readColor();
    case '"':
        return readString();
    case '\'':
        return readChar();
    default:
        return readOperator();
    }
}

// Only white space, block comments and literals hold line breaks; everything else moves `position`
// alone, and the column follows from it.
char Lexer::advance() {
    const char character = source[position++];
    if (character == '\n') startLine();
    return character;
}

void Lexer::startLine() {
    ++line;
    lineStart = position;
}

void Lexer::skipWhitespace() {
    while (is(peek(), blank)) advance();
}

bool Lexer::atComment() const { return peek() == '/' && (peekNext() == '/' || peekNext() == '*'); }

// "//" up to a line break or zero byte, both left unread; "/*" up to and including "*/", or to the
// end of the input when it is not closed.
void Lexer::skipComment() {
    const bool untilLineEnd = peekNext() == '/';
    position += 2;
    if (untilLineEnd) {
        while (peek() != '\n' && peek() != '\0') ++position;
        return;
    }
    while (!atEnd()) {
        if (advance() != '*' || peek() != '/') continue;
        ++position;
        return;
    }
}

Token Lexer::readIdentifier() {
    const std::size_t start = position;
    const int startingColumn = column();
    while (is(peek(), wordPart)) ++position;
    const std::string_view word = textFrom(start);
    return {wordKind(word), word, line, startingColumn};
}

// digits [ "." digits ]
Token Lexer::readNumber() {
    const std::size_t start = position;
    const int startingColumn = column();
    TokenType type = TokenType::IntegerLiteral;
    while (is(peek(), digit)) ++position;
    if (peek() == '.' && is(peekNext(), digit)) {
        type = TokenType::FloatLiteral;
        ++position;
        while (is(peek(), digit)) ++position;
    }
    const Token token(type, textFrom(start), line, startingColumn);
    // Nine digits always fit 32 bits and 300 always fit a double; only longer ones are tried.
    const std::size_t safeLength = type == TokenType::IntegerLiteral ? 9 : 300;
    if (token.text.size() > safeLength) (void)token.value();
    return token;
}

// Moves over text that stands for itself: up to a quote, a backslash or a zero byte.
void Lexer::readPlainText() {
    while (peek() != '"' && peek() != '\\' && peek() != '\0') advance();
}

Token Lexer::readString() {
    const int startingLine = line;
    const int startingColumn = column();
    ++position;
    const std::size_t start = position;
    readPlainText();
    std::string_view text = textFrom(start);
    if (peek() == '\\') {
        std::string& content = decoded.emplace_back(text);
        while (peek() == '\\') {
            readEscape(content);
            const std::size_t plain = position;
            readPlainText();
            content += textFrom(plain);
        }
        text = content;
    }
    if (peek() == '"')
        ++position;
    else
        console.print("Error: Unterminated string literal at line %d, col %d\n", startingLine,
                      startingColumn);
    return {TokenType::StringLiteral, text, startingLine, startingColumn};
}

// Appends what the escape at the backslash stands for. A backslash in front of the end or of a
// zero byte, neither of which belongs to a literal's content, stands for nothing.
void Lexer::readEscape(std::string& text) {
    ++position;
    if (peek() == '\0') return;
    const char escape = advance();
    switch (escape) {
    case 'n':
        text += '\n';
        break;
    case 'r':
        text += '\r';
        break;
    case 't':
        text += '\t';
        break;
    case 'u':
        readCodePoint(text);
        break;
    default:
        text += escape;
        break;
    }
}

// Four hexadecimal digits at this distance from the current character.
bool Lexer::hexAhead(std::size_t offset, unsigned& code) const {
    code = 0;
    for (std::size_t index = position + offset; index < position + offset + 4; ++index) {
        if (index >= source.size() || !is(source[index], hexDigit)) return false;
        code = code * 16 + hexValue(source[index]);
    }
    return true;
}

// Behind "\u": four digits, and a second such escape when the two are a surrogate pair. Half a
// pair becomes the replacement character; without four digits the letter stands for itself.
void Lexer::readCodePoint(std::string& text) {
    unsigned code = 0;
    if (!hexAhead(0, code)) {
        text += 'u';
        return;
    }
    position += 4;
    unsigned low = 0;
    if (isHighSurrogate(code) && source.compare(position, 2, "\\u") == 0 && hexAhead(2, low) &&
        isLowSurrogate(low)) {
        position += 6;
        code = 0x10000 + ((code - 0xD800) << 10) + (low - 0xDC00);
    } else if (isHighSurrogate(code) || isLowSurrogate(code)) {
        code = replacementCharacter;
    }
    appendUtf8(text, code);
}

// Moves over one character: a whole UTF-8 sequence, or what there is of it.
void Lexer::skipCharacter() {
    const int length = sequenceLength(advance());
    for (int count = 1; count < length && isContinuation(peek()); ++count) ++position;
}

// Exactly one character stands between the quotes; nothing is skipped to find the closing one.
Token Lexer::readChar() {
    const int startingLine = line;
    const int startingColumn = column();
    ++position;
    const std::size_t start = position;
    std::string_view text;
    if (peek() == '\\') {
        std::string& content = decoded.emplace_back();
        readEscape(content);
        text = content;
    } else if (!atEnd()) {
        skipCharacter();
        text = textFrom(start);
    }
    if (atEnd())
        console.print("Error: Unterminated character literal at line %d, col %d\n", startingLine,
                      startingColumn);
    else if (peek() == '\'')
        ++position;
    else
        console.print("Warning: Missing closing quote in char literal at line %d\n", startingLine);
    return {TokenType::CharLiteral, text, startingLine, startingColumn};
}

Token Lexer::readColor() {
    const std::size_t start = position;
    const int startingColumn = column();
    ++position;
    while (is(peek(), hexDigit)) ++position;
    return {TokenType::ColorLiteral, textFrom(start), line, startingColumn};
}

Token Lexer::readOperator() {
    const std::size_t start = position;
    const int startingColumn = column();
    TokenType type = pairKind(peek(), peekNext());
    position += type == TokenType::Unknown ? 1 : 2;
    if (type == TokenType::Unknown) type = singleKind(source[start]);
    return {type, textFrom(start), line, startingColumn};
}

} // namespace Orvane
