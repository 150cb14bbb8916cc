// Brackets, braces, commas and semicolons that are missing or too many.
#include "check/syntax_failure.h"

namespace Orvane {

namespace {

constexpr TokenSet closers = {TokenType::RightParen, TokenType::RightBracket,
                              TokenType::RightBrace};
constexpr TokenSet statementWords = {
    TokenType::IfKeyword,    TokenType::ReturnKeyword, TokenType::ForKeyword,
    TokenType::WhileKeyword, TokenType::ThrowKeyword,  TokenType::TryKeyword,
    TokenType::DeferKeyword, TokenType::ExpectKeyword, TokenType::WhenKeyword,
    TokenType::ElseKeyword,  TokenType::RightBrace,    TokenType::EndOfInput,
};

std::string_view openerOf(TokenType closer) {
    return closer == TokenType::RightParen ? "(" : closer == TokenType::RightBracket ? "[" : "{";
}

int indentationOf(const FailedSyntax& failed, std::size_t at) {
    while (!failed.beginsLine(at)) --at;
    return failed.token(at).column;
}

// What an opener belongs to: the words in front of it.
std::string ownerOf(const FailedSyntax& failed, std::size_t opener) {
    if (opener == 0 || opener == noToken) return {};
    const std::size_t before = opener - 1;
    if (failed.is(opener, TokenType::LeftBrace)) {
        std::size_t first = opener;
        while (first > 0 && !failed.beginsLine(first) && opener - first < 30) --first;
        return first < opener ? std::string(failed.written(first, before)) : std::string{};
    }
    if (!failed.isWord(before)) return {};
    return std::string(failed.text(before));
}

void addOpener(Diagnostic& diagnostic, const FailedSyntax& failed, std::size_t opener) {
    if (opener == noToken) return;
    const std::string owner = ownerOf(failed, opener);
    std::string text = "'" + std::string(failed.text(opener)) + "' ";
    text += owner.empty() ? "is open here" : "of '" + owner + "' is open here";
    diagnostic.notes.push_back({failed.range(opener), std::move(text)});
}

// Braces close the innermost opener, so that one missing in the middle is missed at the end. The
// first closer that stands further left than its opener's line tells which opener it is.
std::size_t findUnclosedBrace(const FailedSyntax& failed, std::size_t innermost) {
    std::vector<std::size_t> open;
    for (std::size_t at = 0; at < failed.found(); ++at) {
        if (failed.is(at, TokenType::LeftBrace)) open.push_back(at);
        if (!failed.is(at, TokenType::RightBrace) || open.empty()) continue;
        if (failed.beginsLine(at) && failed.token(at).column < indentationOf(failed, open.back()) &&
            failed.token(at).line != failed.token(open.back()).line)
            return open.back();
        open.pop_back();
    }
    return innermost;
}

Description describeBrace(const FailedSyntax& failed) {
    const bool atEnd = failed.is(failed.found(), TokenType::EndOfInput);
    if (!failed.expects(TokenType::RightBrace) && !(atEnd && failed.asksForValue()))
        return std::nullopt;
    std::size_t opener = failed.facts().opener;
    if (atEnd) opener = findUnclosedBrace(failed, opener);
    if (!failed.is(opener, TokenType::LeftBrace)) return std::nullopt;
    Diagnostic diagnostic =
        makeDiagnostic(MessageId::missingBrace,
                       atEnd ? failed.behind(failed.found() - 1) : failed.range(failed.found()),
                       {failed.describe(failed.found())});
    addOpener(diagnostic, failed, opener);
    return diagnostic;
}

Description describeTrailingComma(const FailedSyntax& failed) {
    const std::size_t at = failed.found();
    if (!failed.is(at - 1, TokenType::Comma) || !closers.has(failed.type(at))) return std::nullopt;
    return makeDiagnostic(MessageId::trailingComma, failed.range(at - 1));
}

Description describeExtraCloser(const FailedSyntax& failed) {
    const std::size_t at = failed.found();
    const TokenType type = failed.type(at);
    if (type != TokenType::RightParen && type != TokenType::RightBracket) return std::nullopt;
    const bool fits =
        failed.expects(TokenType::Semicolon) || (failed.asksForValue() && at == failed.construct());
    if (!fits || failed.facts().opener != noToken) return std::nullopt;
    return makeDiagnostic(MessageId::extraCloser, failed.range(at),
                          {failed.text(at), openerOf(type)});
}

Description describeComma(const FailedSyntax& failed) {
    const std::size_t at = failed.found();
    if (!closers.has(failed.facts().expected) || failed.facts().opener == noToken ||
        !failed.beginsValue(at) || !failed.endsValue(at - 1) ||
        failed.isOneOf(failed.facts().opener - 1, {"if", "while", "when", "catch", "for"}))
        return std::nullopt;
    const bool newStatement = failed.beginsLine(at) &&
                              failed.token(at).column <= indentationOf(failed, failed.construct());
    if (newStatement) return std::nullopt;
    return makeDiagnostic(MessageId::missingComma, failed.behind(at - 1), {failed.describe(at)});
}

Description describeCloser(const FailedSyntax& failed) {
    const TokenType expected = failed.facts().expected;
    if (!closers.has(expected)) return std::nullopt;
    Diagnostic diagnostic =
        makeDiagnostic(MessageId::missingCloser, failed.behind(failed.found() - 1),
                       {spellingOf(expected), failed.describe(failed.found())});
    addOpener(diagnostic, failed, failed.facts().opener);
    return diagnostic;
}

// Where a statement begins, or a value stands, the ";" of the one before is missing; elsewhere
// something in the statement is wrong.
Description describeSemicolon(const FailedSyntax& failed) {
    const std::size_t at = failed.found();
    if (!failed.expects(TokenType::Semicolon) || at == 0) return std::nullopt;
    const bool newLine = failed.beginsLine(at) && failed.isWord(at);
    if (!newLine && !statementWords.has(failed.type(at))) return std::nullopt;
    return makeDiagnostic(MessageId::missingSemicolon, failed.behind(at - 1));
}

Description describeOpener(const FailedSyntax& failed) {
    const std::size_t at = failed.found();
    if (failed.expects(TokenType::LeftParen) && failed.isKeyword(at - 1))
        return makeDiagnostic(MessageId::missingParenthesis, failed.behind(at - 1),
                              {failed.text(at - 1)});
    if (failed.expects(TokenType::LeftBrace))
        return makeDiagnostic(MessageId::missingBlock, failed.behind(at - 1),
                              {failed.describe(at)});
    return std::nullopt;
}

Description describeNesting(const FailedSyntax& failed) {
    if (!failed.asks("Expected less nesting")) return std::nullopt;
    return makeDiagnostic(MessageId::tooDeep, failed.range(failed.found()));
}

} // namespace

Description describeMissing(const FailedSyntax& failed) {
    static constexpr SyntaxRule rules[] = {
        describeNesting, describeTrailingComma, describeBrace,  describeExtraCloser,
        describeComma,   describeSemicolon,     describeCloser, describeOpener,
    };
    return firstOf(rules, failed);
}

} // namespace Orvane
