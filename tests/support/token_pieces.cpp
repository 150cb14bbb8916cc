#include "support/token_pieces.h"

#include <algorithm>

namespace Orvane {

namespace {

std::vector<std::size_t> lineStartsOf(std::string_view source) {
    std::vector<std::size_t> starts = {0};
    for (std::size_t at = 0; at < source.size(); ++at)
        if (source[at] == '\n') starts.push_back(at + 1);
    return starts;
}

} // namespace

std::vector<std::size_t> offsetsOf(std::string_view source, const std::vector<Token>& tokens) {
    const std::vector<std::size_t> lineStarts = lineStartsOf(source);
    std::vector<std::size_t> offsets;
    for (const Token& token : tokens) {
        if (token.type == TokenType::EndOfInput) break;
        offsets.push_back(lineStarts.at(static_cast<std::size_t>(token.line - 1)) +
                          static_cast<std::size_t>(token.column - 1));
    }
    return offsets;
}

std::vector<std::string_view> piecesOf(std::string_view source, const std::vector<Token>& tokens) {
    const std::vector<std::size_t> offsets = offsetsOf(source, tokens);
    std::vector<std::string_view> pieces;
    for (std::size_t index = 0; index < offsets.size(); ++index) {
        const std::size_t end = index + 1 < offsets.size() ? offsets[index + 1] : source.size();
        pieces.push_back(source.substr(offsets[index], end - offsets[index]));
    }
    return pieces;
}

namespace {

constexpr auto npos = std::string_view::npos;

// Behind the comment or the blanks that the text begins with; 0 without either.
std::size_t fillerLength(std::string_view text) {
    if (text.starts_with("//")) return std::min(text.find_first_of({"\n\0", 2}), text.size());
    if (text.starts_with("/*")) {
        const std::size_t end = text.find("*/", 2);
        return end == npos ? text.size() : end + 2;
    }
    return std::min(text.find_first_not_of(" \t\r\n\v\f"), text.size());
}

// A text in quotes, as it stands in the source: to its closing quote, a zero byte or the end.
std::size_t quotedLength(std::string_view text) {
    for (std::size_t at = 1; at < text.size(); ++at) {
        if (text[at] == '\0') return at;
        if (text[at] == '"') return at + 1;
        if (text[at] == '\\' && at + 1 < text.size() && text[at + 1] != '\0') ++at;
    }
    return text.size();
}

// A character in quotes, of which the last may be missing. One of four bytes that is spelled by its
// number is spelled by two numbers.
std::size_t characterLength(std::string_view text, std::string_view content) {
    std::size_t length = 1 + content.size();
    if (text.substr(1).starts_with("\\")) {
        const auto digits = text.substr(std::min<std::size_t>(3, text.size())).substr(0, 4);
        const bool isNumber =
            text.substr(2).starts_with("u") && digits.size() == 4 &&
            digits.find_first_not_of("0123456789ABCDEFabcdef") == std::string_view::npos;
        length = content.empty() ? 2 : !isNumber ? 3 : content.size() == 4 ? 13 : 7;
    }
    return text.substr(std::min(length, text.size())).starts_with("'") ? length + 1 : length;
}

} // namespace

bool isSpelledRight(const Token& token) {
    const auto consistsOf = [&](std::string_view characters) {
        return token.text().find_first_not_of(characters) == std::string_view::npos;
    };
    constexpr std::string_view separators = " \t\r\n\v\f{}()[];,:?\"'#+-*/%=!<>&|.";
    if (token.type >= TokenType::Assign && token.type <= TokenType::Colon)
        return token.text() == spellingOf(token.type);
    switch (token.type) {
    case TokenType::Unknown:
        return token.text().size() == 1;
    case TokenType::IntegerLiteral:
        return consistsOf("0123456789");
    case TokenType::FloatLiteral:
        return consistsOf("0123456789.");
    case TokenType::ColorLiteral:
        return token.text().starts_with('#') && consistsOf("#0123456789ABCDEFabcdef");
    case TokenType::StringLiteral:
    case TokenType::CharLiteral:
        return true;
    default:
        return token.text().find_first_of(separators) == std::string_view::npos;
    }
}

bool isFiller(std::string_view text) {
    while (!text.empty()) {
        const std::size_t length = fillerLength(text);
        if (length == 0) return false;
        text.remove_prefix(length);
    }
    return true;
}

bool holdsNothingElse(std::string_view piece, const Token& token) {
    if (token.type == TokenType::StringLiteral) return isFiller(piece.substr(quotedLength(piece)));
    const std::size_t length = token.type == TokenType::CharLiteral
                                   ? characterLength(piece, token.text())
                                   : token.text().size();
    return length <= piece.size() && isFiller(piece.substr(length));
}

} // namespace Orvane
