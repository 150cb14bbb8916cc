#include "support/token_pieces.h"

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

} // namespace Orvane
