#include "frontend/recovery.h"

#include "frontend/token_sets.h"

#include <algorithm>

namespace Orvane {

namespace {

using Tokens = Recovery::Tokens;

constexpr TokenSet statementWords = {
    TokenType::IfKeyword,    TokenType::ReturnKeyword, TokenType::ForKeyword,
    TokenType::WhileKeyword, TokenType::ThrowKeyword,  TokenType::TryKeyword,
    TokenType::DeferKeyword, TokenType::ExpectKeyword, TokenType::WhenKeyword,
};
constexpr TokenSet endings = {TokenType::RightBrace, TokenType::EndOfInput};
constexpr TokenSet closers = {TokenType::RightBrace, TokenType::RightParen,
                              TokenType::RightBracket};
constexpr TokenSet openers = {TokenType::LeftBrace, TokenType::LeftParen, TokenType::LeftBracket};
constexpr TokenSet behindNames = {TokenType::LeftBrace, TokenType::RightParen, TokenType::Comma,
                                  TokenType::Semicolon, TokenType::Assign,     TokenType::Colon};
constexpr TokenSet typeWords = resultTypes | identifiers;

bool isWord(TokenType type) { return numberOf(type) <= numberOf(TokenType::Identifier); }
bool isKeyword(TokenType type) { return numberOf(type) < keywordCount; }

TokenType typeAt(Tokens tokens, std::size_t at) {
    return at < tokens.size() ? tokens[at].type : TokenType::EndOfInput;
}

bool beginsLine(Tokens tokens, std::size_t at) {
    return at == 0 || tokens[at].line != tokens[at - 1].line;
}

// The column of the first token of the token's line.
int indentationOf(Tokens tokens, std::size_t at) {
    while (!beginsLine(tokens, at)) --at;
    return tokens[at].column;
}

// The closer of the bracket or brace; noToken when there is none nearby. The bound keeps a source
// of nothing but openers from taking quadratic time.
std::size_t closerOf(Tokens tokens, std::size_t opener) {
    constexpr std::size_t farthest = 2000;
    std::size_t depth = 0;
    for (std::size_t at = opener; at < tokens.size() && at < opener + farthest; ++at) {
        if (openers.has(tokens[at].type)) ++depth;
        if (closers.has(tokens[at].type) && --depth == 0) return at;
    }
    return noToken;
}

// Brackets and braces that are open between two tokens, by index.
class OpenBrackets {
public:
    OpenBrackets(Tokens tokens_, std::size_t begin, std::size_t end) : tokens(tokens_) {
        for (std::size_t at = begin; at < end; ++at) pass(at);
    }
    void pass(std::size_t at) {
        const TokenType type = tokens[at].type;
        if (openers.has(type)) indices.push_back(at);
        if (closers.has(type) && !indices.empty()) indices.pop_back();
    }
    bool empty() const { return indices.empty(); }
    std::size_t innermost() const { return indices.empty() ? noToken : indices.back(); }
    bool hasBrace() const {
        for (const std::size_t index : indices)
            if (tokens[index].type == TokenType::LeftBrace) return true;
        return false;
    }

private:
    Tokens tokens;
    std::vector<std::size_t> indices;
};

// [ TYPE ] NAME "(" ... ")" "{"  where the name may be a keyword behind a type.
bool atFunctionHeader(Tokens tokens, std::size_t at) {
    std::size_t paren = at + 1;
    if (typeAt(tokens, paren) != TokenType::LeftParen) {
        if (!typeWords.has(typeAt(tokens, at)) || !isWord(typeAt(tokens, paren))) return false;
        ++paren;
    } else if (typeAt(tokens, at) != TokenType::Identifier) {
        return false;
    }
    if (typeAt(tokens, paren) != TokenType::LeftParen) return false;
    const std::size_t closer = closerOf(tokens, paren);
    return closer != noToken && typeAt(tokens, closer + 1) == TokenType::LeftBrace;
}

// A word, a name and "{".
bool atNamedBody(Tokens tokens, std::size_t at) {
    return isWord(typeAt(tokens, at)) && typeAt(tokens, at + 1) == TokenType::Identifier &&
           typeAt(tokens, at + 2) == TokenType::LeftBrace;
}

bool atScript(Tokens tokens, std::size_t at) {
    return typeAt(tokens, at) == TokenType::Identifier &&
           typeAt(tokens, at + 1) == TokenType::Dot &&
           typeAt(tokens, at + 2) == TokenType::ScriptKeyword &&
           typeAt(tokens, at + 3) == TokenType::LeftBrace;
}

// [ "on" ] NAME "." NAME "{"
bool atHandler(Tokens tokens, std::size_t at) {
    if (typeAt(tokens, at) == TokenType::OnKeyword) ++at;
    return typeAt(tokens, at) == TokenType::Identifier &&
           typeAt(tokens, at + 1) == TokenType::Dot &&
           typeAt(tokens, at + 2) == TokenType::Identifier &&
           typeAt(tokens, at + 3) == TokenType::LeftBrace;
}

// TYPE NAME and further on in the line "{", without what ends something in between.
bool atBrokenHead(Tokens tokens, std::size_t at) {
    if (!beginsLine(tokens, at) || !resultTypes.has(typeAt(tokens, at)) ||
        typeAt(tokens, at + 1) != TokenType::Identifier)
        return false;
    for (std::size_t next = at + 2; next < tokens.size() && !beginsLine(tokens, next); ++next) {
        if (tokens[next].type == TokenType::LeftBrace) return next > at + 2;
        if (tokens[next].type == TokenType::Semicolon || tokens[next].type == TokenType::Assign)
            return false;
    }
    return false;
}

// A "}" in the middle of a line whose brackets are closed behind it.
bool atStrayBrace(Tokens tokens, std::size_t at) {
    if (typeAt(tokens, at) != TokenType::RightBrace || beginsLine(tokens, at)) return false;
    const TokenType behind = typeAt(tokens, at + 1);
    return (behind == TokenType::RightParen || behind == TokenType::RightBracket ||
            behind == TokenType::Comma) &&
           !beginsLine(tokens, at + 1);
}

// The cases of a "when" and what looks like them.
bool opensCases(Tokens tokens, std::size_t brace) {
    return typeAt(tokens, brace + 1) == TokenType::IsKeyword &&
           typeAt(tokens, brace + 2) != TokenType::LeftParen;
}

// KIND KEYWORD "{"
bool atKeywordControl(Tokens tokens, std::size_t at) {
    return typeAt(tokens, at) == TokenType::TypeKeyword && isKeyword(typeAt(tokens, at + 1)) &&
           typeAt(tokens, at + 2) == TokenType::LeftBrace;
}

// TYPE NAME and what follows a variable's name.
bool atVariable(Tokens tokens, std::size_t at) {
    const TokenType behind = typeAt(tokens, at + 2);
    return (declarationTypes | identifiers).has(typeAt(tokens, at)) &&
           isWord(typeAt(tokens, at + 1)) &&
           (behind == TokenType::Assign || behind == TokenType::Semicolon);
}

// A keyword in the place of a name.
bool namedByKeyword(Tokens tokens, std::size_t at) {
    if (!isKeyword(tokens[at].type)) return false;
    const TokenType behind = typeAt(tokens, at + 1);
    if (behindNames.has(behind)) return true;
    const TokenType before = at > 0 ? tokens[at - 1].type : TokenType::EndOfInput;
    const bool called = behind == TokenType::LeftParen || behind == TokenType::Dot;
    return called && (before == TokenType::Dot || resultTypes.has(before));
}

// "end if" and the like.
bool endsForeignBlock(Tokens tokens, std::size_t at) {
    return tokens[at].text() == "end" || tokens[at].text() == "End";
}

std::size_t nextLine(Tokens tokens, std::size_t at) {
    do ++at;
    while (typeAt(tokens, at) != TokenType::EndOfInput && !beginsLine(tokens, at));
    return std::min(at, tokens.size() - 1);
}

// Whether the brace opens a list of statements, and no list of values or fields.
bool opensBlock(Tokens tokens, std::size_t brace) {
    const std::size_t closer = closerOf(tokens, brace);
    if (closer == noToken || closer == brace + 1 || beginsLine(tokens, brace + 1)) {
        const TokenType before = brace > 0 ? tokens[brace - 1].type : TokenType::EndOfInput;
        if (before == TokenType::RightParen || closer == noToken) return true;
    }
    for (std::size_t at = brace + 1; at < closer; ++at)
        if (tokens[at].type == TokenType::Semicolon) return true;
    return false;
}

} // namespace

void Recovery::begin(std::size_t construct) {
    open.back().construct = construct;
    keptLists = noToken;
    resumeAt = noToken;
}

void Recovery::stop(Tokens tokens) {
    keptLists = 0;
    resumeAt = tokens.size() - 1;
}

void Recovery::add(Tokens tokens, const SyntaxFailure& failure) {
    recorded.push_back(failure);
    firstNewFailure = failure.found + 1;
    if (recorded.size() >= limit || typeAt(tokens, failure.found) == TokenType::EndOfInput)
        stop(tokens);
}

void Recovery::record(Tokens tokens, std::size_t at, TokenType expected, std::string_view message) {
    const OpenList& list = open.back();
    const bool remains = at == firstNewFailure && at > 0 &&
                         tokens[at].type == TokenType::Semicolon && !recorded.empty();
    const bool known = at < firstNewFailure || remains || isRemainder(tokens, at) ||
                       (expected == TokenType::RightParen && supposedParen == list.construct);
    if (known) return;
    std::size_t opener = OpenBrackets(tokens, list.construct, at).innermost();
    if (opener == noToken && expected == TokenType::RightBrace) opener = list.opener;
    add(tokens, {at, expected, message, list.construct, list.body, opener});
}

// What is left of a statement whose beginning has failed.
bool Recovery::isRemainder(Tokens tokens, std::size_t at) const {
    const OpenList& list = open.back();
    if (!list.afterFailure || list.body != Body::statements) return false;
    switch (tokens[list.construct].type) {
    case TokenType::ElseKeyword:
    case TokenType::CatchKeyword:
    case TokenType::RightParen:
    case TokenType::RightBracket:
    case TokenType::Comma:
    case TokenType::Semicolon:
        return at == list.construct;
    case TokenType::WhileKeyword:
        return tokens[at].type == TokenType::Semicolon;
    default:
        return false;
    }
}

Recovery::Remedy Recovery::missing(Tokens tokens, std::size_t at, TokenType expected,
                                   std::string_view message) {
    if (leaving()) return expected == TokenType::RightBrace ? Remedy::suppose : Remedy::giveUp;
    if (endsListsAt(tokens, open.back().construct)) return Remedy::giveUp;
    record(tokens, at, expected, message);
    if (leaving()) return expected == TokenType::RightBrace ? Remedy::suppose : Remedy::giveUp;
    if (supposes(tokens, at, expected)) return Remedy::suppose;
    const TokenType found = tokens[at].type;
    const auto stands = [&](TokenType instead) { return found == instead; };
    switch (expected) {
    case TokenType::Identifier:
        return namedByKeyword(tokens, at) ? Remedy::take : Remedy::giveUp;
    case TokenType::Assign:
        return stands(TokenType::Equal) || stands(TokenType::Colon) ? Remedy::take : Remedy::giveUp;
    case TokenType::Colon:
        return stands(TokenType::InKeyword) ? Remedy::take : Remedy::giveUp;
    case TokenType::Arrow:
        return stands(TokenType::Colon) ? Remedy::take : Remedy::giveUp;
    default:
        return Remedy::giveUp;
    }
}

void Recovery::failed(Tokens tokens, std::size_t at, std::string_view message) {
    if (leaving() || endsListsAt(tokens, open.back().construct)) return;
    record(tokens, at, TokenType::EndOfInput, message);
}

// Whether the missing token is best supposed where it should stand: what follows begins something
// new, or is made to follow it.
bool Recovery::supposes(Tokens tokens, std::size_t at, TokenType expected) {
    const TokenType found = tokens[at].type;
    const bool newLine = beginsLine(tokens, at);
    const bool begins =
        statementWords.has(found) || (endings.has(found) && !atStrayBrace(tokens, at));
    const std::size_t construct = open.back().construct;
    const bool newStatement = newLine && tokens[at].column <= indentationOf(tokens, construct);
    switch (expected) {
    case TokenType::Semicolon:
        if (!newLine && endsForeignBlock(tokens, construct)) return false;
        return begins || found == TokenType::ElseKeyword || (newLine && isWord(found));
    case TokenType::RightParen:
    case TokenType::RightBracket:
        return begins || newStatement || found == TokenType::LeftBrace ||
               found == TokenType::Semicolon ||
               (expected == TokenType::RightBracket && found == TokenType::RightParen);
    case TokenType::LeftBrace:
        return newLine && !newStatement && isWord(found);
    case TokenType::LeftParen:
        if (at == 0 || !statementWords.has(tokens[at - 1].type) ||
            tokens[at - 1].type == TokenType::ForKeyword)
            return false;
        supposedParen = construct;
        return true;
    default:
        return false;
    }
}

// A declaration at the beginning of the current element that belongs to a list around this one
// tells that a "}" is missing in front of it.
bool Recovery::endsListsAt(Tokens tokens, std::size_t at) {
    if (limit == 1 || open.size() == 1) return false;
    const std::size_t kept = listsKeptAt(tokens, at);
    if (kept == noToken) return false;
    const OpenList& list = open.back();
    if (at >= firstNewFailure)
        add(tokens, {at, TokenType::RightBrace, "Expected '}'", at, list.body, list.opener});
    if (leaving()) return true;
    keptLists = kept;
    resumeAt = at;
    return true;
}

// How many of the open lists go on when the declaration at the token belongs to an outer one;
// noToken when it does not.
std::size_t Recovery::listsKeptAt(Tokens tokens, std::size_t at) const {
    const TokenType type = typeAt(tokens, at);
    const TokenType next = typeAt(tokens, at + 1);
    const OpenList& list = open.back();
    if (list.body == Body::statements && beginsLine(tokens, at) &&
        (type == TokenType::ElseKeyword || type == TokenType::CatchKeyword)) {
        const bool closes = tokens[at].column <= indentationOf(tokens, list.opener);
        return closes && open.size() > 2 ? open.size() - 1 : noToken;
    }
    if (type == TokenType::VorlaKeyword || type == TokenType::AbleKeyword)
        return next == TokenType::Identifier ? 1 : noToken;
    if (type == TokenType::ImportKeyword || type == TokenType::UsingKeyword ||
        type == TokenType::TypenameKeyword)
        return isWord(next) || next == TokenType::StringLiteral ? 1 : noToken;
    if (atScript(tokens, at)) return 1;
    if (!beginsLine(tokens, at)) return noToken;
    if (type == TokenType::ClassKeyword && atNamedBody(tokens, at))
        return listsOf(tokens, at, {Body::script, Body::topLevel});
    if (type == TokenType::OnKeyword) return listsOf(tokens, at, {Body::component, Body::script});
    if (atFunctionHeader(tokens, at))
        return listsOf(tokens, at, {Body::classMembers, Body::script, Body::topLevel});
    if (plainNames.has(type) && atNamedBody(tokens, at)) return listsOf(tokens, at, {Body::window});
    return noToken;
}

// The innermost list around the current one, of one of these kinds, whose current element is
// indented at least as far as the token.
std::size_t Recovery::listsOf(Tokens tokens, std::size_t at,
                              std::initializer_list<Body> bodies) const {
    for (std::size_t index = open.size() - 1; index-- > 0;) {
        const OpenList& list = open[index];
        if (tokens[at].column > indentationOf(tokens, list.construct)) continue;
        if (std::find(bodies.begin(), bodies.end(), list.body) != bodies.end()) return index + 1;
    }
    return noToken;
}

std::size_t Recovery::resume(Tokens tokens, std::size_t at) {
    if (resumeAt != noToken) return resumeAt;
    if (limit == 1) return tokens.size() - 1;
    open.back().afterFailure = true;
    return body() == Body::statements ? resumeStatement(tokens, at) : resumeMember(tokens, at);
}

// Behind the ";" of the statement that failed, or at what begins the next one.
std::size_t Recovery::resumeStatement(Tokens tokens, std::size_t at) const {
    const std::size_t first = open.back().construct;
    const TokenType type = tokens[first].type;
    if (at == first && (type == TokenType::ElseKeyword || type == TokenType::CatchKeyword))
        return first + 1;
    if (endsForeignBlock(tokens, first)) return nextLine(tokens, first);
    // A word that the language does not know in front of a block.
    if (type == TokenType::Identifier && typeAt(tokens, first + 1) == TokenType::LeftBrace &&
        opensBlock(tokens, first + 1))
        return first + 1;
    if (at == first) ++at;
    const int indentation = indentationOf(tokens, first);
    OpenBrackets brackets(tokens, first, at);
    for (; typeAt(tokens, at) != TokenType::EndOfInput; ++at) {
        const Token& token = tokens[at];
        if (beginsLine(tokens, at)) {
            const bool closes = closers.has(token.type) && !brackets.empty();
            if (token.column < indentation || (token.column == indentation && !closes)) return at;
            if (statementWords.has(token.type)) return at;
        }
        if (token.type == TokenType::Semicolon &&
            (brackets.empty() || type != TokenType::ForKeyword))
            return at + 1;
        if (token.type == TokenType::LeftBrace && opensBlock(tokens, at)) {
            if (tokens[first].text() != "switch" && !opensCases(tokens, at)) return at;
            const std::size_t closer = closerOf(tokens, at);
            return closer == noToken ? at : closer + 1;
        }
        const bool stray = atStrayBrace(tokens, at) && !brackets.empty();
        if (stray && !brackets.hasBrace()) continue;
        if (token.type == TokenType::RightBrace && !brackets.hasBrace()) return at;
        brackets.pass(at);
    }
    return at;
}

// Behind the ";" of the member or declaration that failed, at its body, or at the next one.
std::size_t Recovery::resumeMember(Tokens tokens, std::size_t at) const {
    const std::size_t first = open.back().construct;
    constexpr TokenSet lines = {TokenType::ImportKeyword, TokenType::UsingKeyword,
                                TokenType::TypenameKeyword};
    if (lines.has(tokens[first].type) && tokens[first].line == tokens[at].line)
        return nextLine(tokens, at);
    if (tokens[first].type == TokenType::LeftBrace) return first + 1;
    if (at == first) ++at;
    at = std::min(at, tokens.size() - 1);
    const int indentation = indentationOf(tokens, first);
    OpenBrackets brackets(tokens, first, at);
    for (; typeAt(tokens, at) != TokenType::EndOfInput; ++at) {
        const Token& token = tokens[at];
        const bool opens = token.type == TokenType::LeftBrace;
        if (beginsLine(tokens, at) && !opens) {
            const bool closes = closers.has(token.type) && !brackets.empty();
            if (token.column < indentation || (token.column == indentation && !closes)) return at;
        }
        if (token.type == TokenType::Semicolon && !brackets.hasBrace()) return at + 1;
        if (opens && !brackets.hasBrace() && tokens[at - 1].type != TokenType::Assign) return at;
        if (token.type == TokenType::RightBrace && !brackets.hasBrace())
            return body() == Body::topLevel ? at + 1 : at;
        brackets.pass(at);
    }
    return at;
}

void Recovery::skip(std::size_t first, std::size_t last) {
    if (!unread.empty() && unread.back().last + 1 == first && unread.back().body == body())
        unread.back().last = last;
    else
        unread.push_back({first, last, body()});
}

Recovery::Misplaced Recovery::misplacedAt(Tokens tokens, std::size_t at) {
    if (limit == 1) return Misplaced::nothing;
    if (endsListsAt(tokens, at)) return Misplaced::outer;
    const Body in = body();
    const TokenType type = tokens[at].type;
    const bool outside = in == Body::topLevel || in == Body::script;
    if (statementWords.has(type)) return Misplaced::statement;
    if (type != TokenType::TypeKeyword && atFunctionHeader(tokens, at)) return Misplaced::function;
    if (in == Body::topLevel && atHandler(tokens, at)) return Misplaced::handler;
    if (type == TokenType::OnKeyword) return Misplaced::nothing;
    if (in == Body::window && atKeywordControl(tokens, at)) {
        add(tokens, {at + 1, TokenType::Identifier, "Expected component name", at, in, noToken});
        return leaving() ? Misplaced::outer : Misplaced::component;
    }
    if (in == Body::component && type == TokenType::Identifier &&
        typeAt(tokens, at + 1) == TokenType::LeftBrace)
        return Misplaced::event;
    if (atNamedBody(tokens, at))
        return in == Body::component && plainNames.has(type) ? Misplaced::component
                                                             : Misplaced::tokens;
    if (outside && atBrokenHead(tokens, at)) {
        add(tokens, {at + 2, TokenType::LeftParen, "Expected '('", at, in, noToken});
        return leaving() ? Misplaced::outer : Misplaced::head;
    }
    if (outside && atVariable(tokens, at)) return Misplaced::tokens;
    if (type == TokenType::ColorLiteral && beginsLine(tokens, at)) return Misplaced::tokens;
    return Misplaced::nothing;
}

// A line that begins like a preprocessor's; otherwise up to the ";" or the end of the braces.
std::size_t Recovery::endOfMisplaced(Tokens tokens, std::size_t at) {
    const bool oneLine = tokens[at].type == TokenType::ColorLiteral;
    const int indentation = indentationOf(tokens, at);
    for (std::size_t next = at;; ++next) {
        const TokenType type = typeAt(tokens, next);
        if (type == TokenType::EndOfInput) return next - 1;
        if (next > at && beginsLine(tokens, next) &&
            (oneLine || tokens[next].column <= indentation))
            return next - 1;
        if (!oneLine && type == TokenType::Semicolon) return next;
        if (type == TokenType::RightBrace) return next > at ? next - 1 : next;
        if (type != TokenType::LeftBrace) continue;
        const std::size_t closer = closerOf(tokens, next);
        if (closer == noToken) return next;
        next = closer;
        if (typeAt(tokens, next + 1) != TokenType::Semicolon) return next;
    }
}

} // namespace Orvane
