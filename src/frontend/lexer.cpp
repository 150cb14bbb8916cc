#include "frontend/lexer.h"

#include "frontend/keywords.h"
#include "frontend/large_memory.h"

#include <algorithm>
#include <cstring>
#include <stdexcept>

namespace Orvane {

namespace {

// The character classes of the C locale. Bytes from 128 on are in none of them.
enum CharClass : unsigned char {
    blank = 1,
    digit = 2,
    hexDigit = 4,
    wordStart = 8,
    wordPart = 16,
    pairEnd = 64,   // the second of an operator of two characters
    plainText = 32, // inside a text, everything that stands for itself and is no line break
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
    mark("=&|>.", pairEnd);
    for (unsigned char& classes : table) classes |= plainText;
    for (const char character : {'"', '\\', '\n', '\0'})
        table[static_cast<unsigned char>(character)] &= static_cast<unsigned char>(~plainText);
    return table;
}

constexpr auto characterClasses = classifyCharacters();

bool is(char character, CharClass wanted) {
    return (characterClasses[static_cast<unsigned char>(character)] & wanted) != 0;
}

// The first character that is not of the class; the zero byte behind the source is of none.
char* skipAll(char* at, CharClass wanted) {
    while (is(*at, wanted)) ++at;
    return at;
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

// Returns the place behind the sequence.
char* writeUtf8(char* target, unsigned code) {
    const auto append = [&](unsigned byte) { *target++ = static_cast<char>(byte); };
    if (code < 0x80) return append(code), target;
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
    return target;
}

bool isHighSurrogate(unsigned code) { return code >= 0xD800 && code < 0xDC00; }
bool isLowSurrogate(unsigned code) { return code >= 0xDC00 && code < 0xE000; }
constexpr unsigned replacementCharacter = 0xFFFD;

// The kind of an operator of two characters, or Unknown.
TokenType pairKind(char first, char second) {
    switch (second) {
    case '=':
        if (first == '=') return TokenType::Equal;
        if (first == '!') return TokenType::NotEqual;
        if (first == '<') return TokenType::LessEqual;
        return first == '>' ? TokenType::GreaterEqual : TokenType::Unknown;
    case '&':
        return first == '&' ? TokenType::AndAnd : TokenType::Unknown;
    case '|':
        return first == '|' ? TokenType::OrOr : TokenType::Unknown;
    case '>':
        return first == '-' ? TokenType::Arrow : TokenType::Unknown;
    case '.':
        return first == '.' ? TokenType::DotDot : TokenType::Unknown;
    default:
        return TokenType::Unknown;
    }
}

// The kinds of the operators and punctuation of one character, by that character.
constexpr std::array<TokenType, 256> listSingleKinds() {
    std::array<TokenType, 256> kinds{};
    kinds.fill(TokenType::Unknown);
    for (const TokenType type :
         {TokenType::Assign,      TokenType::Plus,         TokenType::Minus,
          TokenType::Star,        TokenType::Slash,        TokenType::Percent,
          TokenType::Less,        TokenType::Greater,      TokenType::Not,
          TokenType::Dot,         TokenType::Question,     TokenType::LeftBrace,
          TokenType::RightBrace,  TokenType::LeftParen,    TokenType::RightParen,
          TokenType::LeftBracket, TokenType::RightBracket, TokenType::Semicolon,
          TokenType::Comma,       TokenType::Colon})
        kinds[static_cast<unsigned char>(spellingOf(type).front())] = type;
    return kinds;
}

constexpr auto singleKinds = listSingleKinds();

} // namespace

Lexer::Lexer(std::string source_, Console& console_, std::vector<LexicalProblem>* problems_)
    : source(std::move(source_)), console(console_), problems(problems_) {}

std::vector<Token> Lexer::tokenize() {
    // A token for every five characters is usual. The bound keeps a source of nothing but blanks
    // or one long comment from taking memory that no token needs. Halving the guess, rather than
    // cutting it, lets a vector that doubles have room for all but a fifth of the densest source
    // when it moves for the last time.
    constexpr std::size_t largestGuess = 1U << 24;
    std::size_t guess = source.size() / 5 + 2;
    while (guess > largestGuess) guess /= 2;
    std::vector<Token> tokens;
    tokens.reserve(guess);
    std::size_t room = 0;
    do {
        room = std::min(tokens.capacity() - tokens.size(), fillingStep / sizeof(Token));
        expectFilling(tokens.data() + tokens.size(), room * sizeof(Token));
        room = std::max(room, std::size_t{1}); // without room the vector grows
    } while (readTokens(tokens, room));
    tokens.push_back(tokenFrom(next, TokenType::EndOfInput));
    return tokens;
}

// So many more tokens; false when the source ends before. A token is written where it stays:
// copying one that has just been written member by member would wait for all of them.
bool Lexer::readTokens(std::vector<Token>& tokens, std::size_t count) {
    while (count > 0) {
        skipWhitespace();
        if (atComment()) {
            skipComment();
        } else if (peek() != '\0' || !atEnd()) {
            new (&tokens.emplace_back()) Token(readToken());
            --count;
        } else {
            return false;
        }
    }
    return true;
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

// Only white space, block comments and literals hold line breaks; everything else moves `next`
// alone, and the column follows from it.
char Lexer::advance() {
    const char character = *next++;
    if (character == '\n') startLine();
    return character;
}

void Lexer::startLine() {
    ++line;
    lineStart = next;
}

void Lexer::skipWhitespace() {
    char* at = next;
    for (; is(*at, blank); ++at) {
        if (*at != '\n') continue;
        ++line;
        lineStart = at + 1;
    }
    next = at;
}

bool Lexer::atComment() const { return peek() == '/' && (peekNext() == '/' || peekNext() == '*'); }

// "//" up to a line break or zero byte, both left unread; "/*" up to and including "*/", or to the
// end of the input when it is not closed.
void Lexer::skipComment() {
    const bool untilLineEnd = peekNext() == '/';
    next += 2;
    if (untilLineEnd) {
        next += std::strcspn(next, "\n");
        return;
    }
    while (!atEnd()) {
        if (advance() != '*' || peek() != '/') continue;
        ++next;
        return;
    }
}

Token Lexer::readIdentifier() {
    const char* const start = next;
    next = skipAll(next + 1, wordPart);
    return tokenFrom(start, wordKind({start, static_cast<std::size_t>(next - start)}));
}

// digits [ "." digits ]
Token Lexer::readNumber() {
    const char* const start = next;
    TokenType type = TokenType::IntegerLiteral;
    next = skipAll(next, digit);
    if (peek() == '.' && is(peekNext(), digit)) {
        type = TokenType::FloatLiteral;
        next = skipAll(next + 1, digit);
    }
    const Token token = tokenFrom(start, type);
    // Nine digits always fit 32 bits and 300 always fit a double; only longer ones are tried.
    const std::size_t safeLength = type == TokenType::IntegerLiteral ? 9 : 300;
    if (token.text().size() > safeLength) tryValue(token);
    return token;
}

void Lexer::tryValue(const Token& number) {
    try {
        (void)number.value();
    } catch (const std::out_of_range&) {
        if (!problems) throw;
        note(LexicalProblem::Kind::numberTooLarge, number.text().data());
    }
}

void Lexer::note(LexicalProblem::Kind kind, const char* literal) {
    if (problems) problems->push_back({kind, static_cast<std::size_t>(literal - source.data())});
}

// Moves over text that stands for itself: up to a quote, a backslash or a zero byte.
void Lexer::skipPlainText() {
    for (;;) {
        next = skipAll(next, plainText);
        if (peek() != '\n') return;
        advance();
    }
}

Token Lexer::readString() {
    const int startingLine = line;
    const int startingColumn = columnOf(next);
    char* const content = ++next;
    skipPlainText();
    const char* const contentEnd = peek() == '\\' ? readContent(next) : next;
    if (peek() == '"') {
        ++next;
    } else {
        console.print("Error: Unterminated string literal at line %d, col %d\n", startingLine,
                      startingColumn);
        note(LexicalProblem::Kind::unterminatedText, content - 1);
    }
    return {TokenType::StringLiteral,
            std::string_view(content, static_cast<std::size_t>(contentEnd - content)), startingLine,
            startingColumn};
}

// The rest of a text's content, from its first backslash on.
char* Lexer::readContent(char* target) {
    while (peek() == '\\') {
        target = readEscape(target);
        const char* const plain = next;
        skipPlainText();
        const auto length = static_cast<std::size_t>(next - plain);
        std::memmove(target, plain, length);
        target += length;
    }
    return target;
}

// Writes what the escape at the backslash stands for. A backslash in front of the end or of a
// zero byte, neither of which belongs to a literal's content, stands for nothing.
char* Lexer::readEscape(char* target) {
    ++next;
    if (peek() == '\0') return target;
    const char escape = advance();
    switch (escape) {
    case 'n':
        *target = '\n';
        break;
    case 'r':
        *target = '\r';
        break;
    case 't':
        *target = '\t';
        break;
    case 'u':
        return readCodePoint(target);
    default:
        *target = escape;
        break;
    }
    return target + 1;
}

// Four hexadecimal digits at this distance from the current character.
bool Lexer::hexAhead(std::size_t offset, unsigned& code) const {
    code = 0;
    if (static_cast<std::size_t>(end - next) < offset + 4) return false;
    for (const char* digitAt = next + offset; digitAt < next + offset + 4; ++digitAt) {
        if (!is(*digitAt, hexDigit)) return false;
        code = code * 16 + hexValue(*digitAt);
    }
    return true;
}

// Behind "\u": four digits, and a second such escape when the two are a surrogate pair. Half a
// pair becomes the replacement character; without four digits the letter stands for itself.
char* Lexer::readCodePoint(char* target) {
    unsigned code = 0;
    if (!hexAhead(0, code)) {
        *target = 'u';
        return target + 1;
    }
    next += 4;
    unsigned low = 0;
    if (isHighSurrogate(code) && peek() == '\\' && peekNext() == 'u' && hexAhead(2, low) &&
        isLowSurrogate(low)) {
        next += 6;
        code = 0x10000 + ((code - 0xD800) << 10) + (low - 0xDC00);
    } else if (isHighSurrogate(code) || isLowSurrogate(code)) {
        code = replacementCharacter;
    }
    return writeUtf8(target, code);
}

// Moves over one character: a whole UTF-8 sequence, or what there is of it.
void Lexer::skipCharacter() {
    const int length = sequenceLength(advance());
    for (int count = 1; count < length && isContinuation(peek()); ++count) ++next;
}

// Exactly one character stands between the quotes; nothing is skipped to find the closing one.
Token Lexer::readChar() {
    const int startingLine = line;
    const int startingColumn = columnOf(next);
    char* const content = ++next;
    const char* contentEnd = content;
    if (peek() == '\\') {
        contentEnd = readEscape(content);
    } else if (!atEnd()) {
        skipCharacter();
        contentEnd = next;
    }
    if (atEnd()) {
        console.print("Error: Unterminated character literal at line %d, col %d\n", startingLine,
                      startingColumn);
        note(LexicalProblem::Kind::unterminatedCharacter, content - 1);
    } else if (peek() == '\'') {
        ++next;
    } else {
        console.print("Warning: Missing closing quote in char literal at line %d\n", startingLine);
        note(LexicalProblem::Kind::unclosedCharacter, content - 1);
    }
    return {TokenType::CharLiteral,
            std::string_view(content, static_cast<std::size_t>(contentEnd - content)), startingLine,
            startingColumn};
}

Token Lexer::readColor() {
    const char* const start = next;
    next = skipAll(next + 1, hexDigit);
    return tokenFrom(start, TokenType::ColorLiteral);
}

Token Lexer::readOperator() {
    const char* const start = next;
    TokenType type = TokenType::Unknown;
    if (is(next[1], pairEnd)) type = pairKind(next[0], next[1]);
    if (type != TokenType::Unknown) {
        next += 2;
    } else {
        type = singleKinds[static_cast<unsigned char>(*next)];
        ++next;
    }
    return tokenFrom(start, type);
}

} // namespace Orvane
