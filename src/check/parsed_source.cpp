#include "check/parsed_source.h"

#include "frontend/parser.h"

#include <exception>

namespace Orvane {

ParsedSource::ParsedSource(std::string path, std::string text)
    : sourceText(std::move(path), std::move(text)), lexer(sourceText.text(), console),
      program(std::make_unique<AST>()) {
    parse();
}

void ParsedSource::parse() {
    try {
        tokenList = lexer.tokenize();
        program = Parser(tokenList, console, &positions).parse();
    } catch (const std::exception& error) {
        found.push_back(makeDiagnostic(MessageId::syntaxError, {}, {error.what()}));
    }
}

ByteRange ParsedSource::rangeOf(const void* node) const {
    const auto range = tokensOf(node);
    return range ? rangeOf(*range) : ByteRange{};
}

ByteRange ParsedSource::rangeOf(TokenRange range) const {
    return {tokenRange(range.first).begin, tokenRange(range.last).end};
}

ByteRange ParsedSource::tokenRange(std::size_t index) const {
    const Token& token = tokenList[index];
    const std::size_t begin = sourceText.offsetOf(static_cast<std::size_t>(token.line),
                                                  static_cast<std::size_t>(token.column));
    // A decoded literal is shorter than its source; it reaches up to its closing quote.
    if (token.type != TokenType::StringLiteral && token.type != TokenType::CharLiteral)
        return {begin, begin + token.text().size()};
    const std::string& text = sourceText.text();
    const char quote = begin < text.size() ? text[begin] : '\0';
    std::size_t end = begin + 1; // behind the opening quote
    while (end < text.size() && text[end] != quote) end += text[end] == '\\' ? 2 : 1;
    return {begin, std::min(end + 1, text.size())};
}

} // namespace Orvane
