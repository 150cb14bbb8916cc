#include "check/syntax_failure.h"

#include <algorithm>

namespace Orvane {

namespace {

constexpr TokenSet literals = {TokenType::IntegerLiteral, TokenType::FloatLiteral,
                               TokenType::StringLiteral,  TokenType::CharLiteral,
                               TokenType::ColorLiteral,   TokenType::TrueKeyword,
                               TokenType::FalseKeyword,   TokenType::NullKeyword};

} // namespace

bool FailedSyntax::isOneOf(std::size_t at, std::initializer_list<std::string_view> words) const {
    return isWord(at) && std::find(words.begin(), words.end(), text(at)) != words.end();
}

bool FailedSyntax::beginsLine(std::size_t at) const {
    return at == 0 || token(at).line != token(at - 1).line;
}

bool FailedSyntax::beginsValue(std::size_t at) const {
    return literals.has(type(at)) || is(at, TokenType::Identifier);
}

bool FailedSyntax::endsValue(std::size_t at) const {
    return beginsValue(at) || is(at, TokenType::RightParen) || is(at, TokenType::RightBracket);
}

bool FailedSyntax::touchesPrevious(std::size_t at) const {
    return at > 0 && at < source.tokens().size() &&
           source.tokenRange(at - 1).end == source.tokenRange(at).begin;
}

ByteRange FailedSyntax::range(std::size_t first, std::size_t last) const {
    const std::size_t end = source.tokens().size() - 1;
    return source.rangeOf(TokenRange{std::min(first, end), std::min(last, end)});
}

ByteRange FailedSyntax::behind(std::size_t at) const {
    const std::size_t end = range(at).end;
    return {end, end};
}

std::string_view FailedSyntax::written(std::size_t first, std::size_t last) const {
    return source.source().part(range(first, last));
}

std::string FailedSyntax::describe(std::size_t at) const {
    constexpr std::size_t longest = 40;
    if (is(at, TokenType::EndOfInput)) return "the end of the file";
    std::string_view shown = written(at, at);
    if (is(at, TokenType::StringLiteral))
        return shown.size() > longest ? "a text" : "the text " + std::string(shown);
    return "'" + std::string(shown.substr(0, longest)) + "'";
}

} // namespace Orvane
