// A failure with the tokens around it: what the rules of syntax_messages.h look at.
//
// A rule is a function that returns a message when the tokens show its confusion for certain, and
// nothing otherwise.
#pragma once

#include "check/message.h"
#include "check/parsed_source.h"
#include "frontend/recovery.h"
#include "frontend/token_sets.h"

#include <initializer_list>
#include <optional>
#include <string>
#include <string_view>

namespace Orvane {

class FailedSyntax {
public:
    FailedSyntax(const ParsedSource& source_, const SyntaxFailure& failure_)
        : source(source_), failure(failure_) {}

    const SyntaxFailure& facts() const { return failure; }
    std::size_t found() const { return failure.found; }
    std::size_t construct() const { return failure.construct; }
    bool expects(TokenType type) const { return failure.expected == type; }
    // The parser's own words; they tell apart what the kind of token does not.
    bool asks(std::string_view words) const { return failure.message == words; }
    bool asksForValue() const { return asks("Expected expression"); }
    bool inStatements() const { return failure.body == Body::statements; }

    // Indices before the first token (wrapped around) and behind the last one are the end.
    const Token& token(std::size_t at) const {
        const auto& tokens = source.tokens();
        return at < tokens.size() ? tokens[at] : tokens.back();
    }
    TokenType type(std::size_t at) const { return token(at).type; }
    bool is(std::size_t at, TokenType wanted) const { return type(at) == wanted; }
    std::string_view text(std::size_t at) const { return token(at).text(); }
    bool isOneOf(std::size_t at, std::initializer_list<std::string_view> words) const;
    bool isWord(std::size_t at) const {
        return numberOf(type(at)) <= numberOf(TokenType::Identifier);
    }
    bool isKeyword(std::size_t at) const { return numberOf(type(at)) < keywordCount; }
    bool beginsLine(std::size_t at) const;
    bool beginsValue(std::size_t at) const;
    bool endsValue(std::size_t at) const;
    // No blank between the token and the one before.
    bool touchesPrevious(std::size_t at) const;

    ByteRange range(std::size_t first, std::size_t last) const;
    ByteRange range(std::size_t at) const { return range(at, at); }
    // Empty, directly behind a token.
    ByteRange behind(std::size_t at) const;
    // As written, with everything between the two tokens.
    std::string_view written(std::size_t first, std::size_t last) const;

    // "the end of the file", "the text \"abc\"" and the like.
    std::string describe(std::size_t at) const;

private:
    const ParsedSource& source;
    const SyntaxFailure& failure;
};

using Description = std::optional<Diagnostic>;
using SyntaxRule = Description (*)(const FailedSyntax&);

// In the order in which they are tried: operators and literals, statements, declarations.
Description describeOperator(const FailedSyntax& failed);
Description describeStatement(const FailedSyntax& failed);
Description describeDeclaration(const FailedSyntax& failed);
// A character that the language does not know.
Description describeCharacter(const FailedSyntax& failed);
// A bracket, brace or ";" that is not there.
Description describeMissing(const FailedSyntax& failed);

// The first message of a table of rules.
template <std::size_t count>
Description firstOf(const SyntaxRule (&rules)[count], const FailedSyntax& failed) {
    for (const SyntaxRule rule : rules)
        if (Description description = rule(failed)) return description;
    return std::nullopt;
}

} // namespace Orvane
