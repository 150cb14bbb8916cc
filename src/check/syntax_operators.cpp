// Operators, literals and characters that the language does not have.
#include "check/syntax_failure.h"

namespace Orvane {

namespace {

Description describeLogical(const FailedSyntax& failed) {
    const std::size_t at = failed.found();
    const bool both = failed.is(at, TokenType::AndAnd) || failed.isOneOf(at, {"and", "And", "AND"});
    const bool either = failed.is(at, TokenType::OrOr) || failed.isOneOf(at, {"or", "Or", "OR"});
    if (!both && !either) return std::nullopt;
    if (failed.is(at, TokenType::Identifier) && !failed.beginsValue(at + 1)) return std::nullopt;
    return makeDiagnostic(
        MessageId::logicalOperator, failed.range(at),
        {failed.text(at), both ? "Put one 'if' inside another, or write both(a, b)."
                               : "Write one 'if' behind the other, or either(a, b)."});
}

Description describeNot(const FailedSyntax& failed) {
    const std::size_t at = failed.found() - 1;
    if (!failed.isOneOf(at, {"not", "Not", "NOT"}) || !failed.beginsValue(failed.found()))
        return std::nullopt;
    return makeDiagnostic(MessageId::logicalOperator, failed.range(at),
                          {failed.text(at), "Write '!' in front of the condition."});
}

// Signs that the lexer gives as two tokens: the first and the second, and the way out.
struct TwoSigns {
    TokenType first, second;
    std::string_view hint;
};

constexpr TwoSigns unknownPairs[] = {
    {TokenType::Equal, TokenType::Assign, "Write '=='."},
    {TokenType::NotEqual, TokenType::Assign, "Write '!='."},
    {TokenType::Less, TokenType::Greater, "Write '!='."},
    {TokenType::Less, TokenType::Less, "Multiply by a power of two."},
    {TokenType::Greater, TokenType::Greater, "Divide by a power of two."},
    {TokenType::Star, TokenType::Star, "Write pow(a, b), of the library math."},
    {TokenType::Colon, TokenType::Assign, "Write '='."},
    {TokenType::Question, TokenType::Question, "Write a condition with '? :'."},
    {TokenType::Question, TokenType::Dot, "Write '.'."},
    {TokenType::Dot, TokenType::Dot, "Write a range as [0..9]."},
};

Description describePair(const FailedSyntax& failed) {
    for (const std::size_t second : {failed.found(), failed.found() + 1}) {
        if (!failed.touchesPrevious(second)) continue;
        for (const TwoSigns& pair : unknownPairs)
            if (failed.is(second - 1, pair.first) && failed.is(second, pair.second))
                return makeDiagnostic(MessageId::unknownOperator, failed.range(second - 1, second),
                                      {failed.written(second - 1, second), pair.hint});
    }
    return std::nullopt;
}

// "++" and "--": in front of a value the first of "++" fails, behind one the second.
Description describeIncrement(const FailedSyntax& failed) {
    std::size_t second = failed.found();
    if (failed.is(second, TokenType::Plus) && failed.is(second + 1, TokenType::Plus) &&
        !failed.is(second - 1, TokenType::Plus))
        ++second;
    if (failed.is(second - 1, TokenType::Minus) && !failed.is(second, TokenType::Minus)) --second;
    const TokenType sign = failed.type(second);
    if (sign != TokenType::Plus && sign != TokenType::Minus) return std::nullopt;
    if (!failed.is(second - 1, sign) || !failed.touchesPrevious(second)) return std::nullopt;
    std::string_view name = "i";
    if (failed.is(second - 2, TokenType::Identifier))
        name = failed.text(second - 2);
    else if (failed.is(second + 1, TokenType::Identifier))
        name = failed.text(second + 1);
    return makeDiagnostic(MessageId::increment, failed.range(second - 1, second),
                          {failed.written(second - 1, second), name, failed.text(second)});
}

Description describeCompound(const FailedSyntax& failed) {
    constexpr TokenSet signs = {TokenType::Plus, TokenType::Minus, TokenType::Star,
                                TokenType::Slash, TokenType::Percent};
    const std::size_t at = failed.found();
    if (!failed.is(at, TokenType::Assign) || !signs.has(failed.type(at - 1)) ||
        !failed.touchesPrevious(at))
        return std::nullopt;
    const bool named = failed.is(at - 2, TokenType::Identifier);
    return makeDiagnostic(MessageId::compoundAssignment, failed.range(at - 1, at),
                          {failed.text(at - 1), named ? failed.text(at - 2) : "a"});
}

Description describeArrow(const FailedSyntax& failed) {
    const std::size_t at = failed.found();
    if (!failed.is(at, TokenType::Arrow) || !failed.endsValue(at - 1) || !failed.isWord(at + 1) ||
        failed.facts().body == Body::topLevel || failed.facts().body == Body::script)
        return std::nullopt;
    return makeDiagnostic(MessageId::memberArrow, failed.range(at));
}

Description describeScope(const FailedSyntax& failed) {
    const std::size_t at = failed.found();
    if (!failed.is(at, TokenType::Colon) || !failed.is(at + 1, TokenType::Colon))
        return std::nullopt;
    return makeDiagnostic(MessageId::scopeOperator, failed.range(at, at + 1));
}

Description describeTernary(const FailedSyntax& failed) {
    if (!failed.asks("Expected ':' in ternary expression")) return std::nullopt;
    return makeDiagnostic(MessageId::ternaryWithoutColon, failed.behind(failed.found() - 1));
}

Description describeRange(const FailedSyntax& failed) {
    if (!failed.is(failed.found(), TokenType::DotDot)) return std::nullopt;
    return makeDiagnostic(MessageId::rangeWithoutBrackets, failed.range(failed.found()));
}

Description describeEmptyList(const FailedSyntax& failed) {
    const std::size_t at = failed.found();
    if (!failed.asksForValue() || !failed.is(at, TokenType::RightBracket) ||
        !failed.is(at - 1, TokenType::LeftBracket))
        return std::nullopt;
    return makeDiagnostic(MessageId::emptyList, failed.range(at - 1, at));
}

Description describeNew(const FailedSyntax& failed) {
    const std::size_t at = failed.found();
    if (!failed.is(at, TokenType::Identifier) || !failed.isOneOf(at - 1, {"new", "New"}))
        return std::nullopt;
    return makeDiagnostic(MessageId::newWord, failed.range(at - 1), {failed.text(at)});
}

// function (...) { ... }  and  (...) => ...
Description describeFunctionValue(const FailedSyntax& failed) {
    const std::size_t at = failed.found();
    const bool word = failed.asksForValue() && failed.is(at, TokenType::FunctionKeyword) &&
                      failed.is(at + 1, TokenType::LeftParen) && at > failed.construct();
    const bool arrow = failed.is(at, TokenType::Greater) && failed.is(at - 1, TokenType::Assign) &&
                       failed.touchesPrevious(at);
    const bool empty = failed.asksForValue() && failed.is(at, TokenType::RightParen) &&
                       failed.is(at - 1, TokenType::LeftParen) &&
                       failed.is(at + 1, TokenType::Assign) &&
                       failed.is(at + 2, TokenType::Greater);
    if (word) return makeDiagnostic(MessageId::functionValue, failed.range(at));
    if (arrow) return makeDiagnostic(MessageId::functionValue, failed.range(at - 1, at));
    if (empty) return makeDiagnostic(MessageId::functionValue, failed.range(at + 1, at + 2));
    return std::nullopt;
}

Description describeFieldSign(const FailedSyntax& failed) {
    const std::size_t at = failed.found();
    const bool sign = failed.is(at, TokenType::Equal) || failed.is(at, TokenType::Colon);
    if (!failed.asks("Expected '='") || !sign) return std::nullopt;
    return makeDiagnostic(MessageId::fieldSign, failed.range(at), {failed.text(at - 1)});
}

// ---- Literals and characters ----

bool isNumber(TokenType type) {
    return type == TokenType::IntegerLiteral || type == TokenType::FloatLiteral;
}

// 0x10, 1e5, 10f; .5; 5.
Description describeNumber(const FailedSyntax& failed) {
    const std::size_t at = failed.found();
    const auto say = [&](std::size_t first, std::size_t last) {
        return makeDiagnostic(MessageId::numberForm, failed.range(first, last),
                              {failed.written(first, last)});
    };
    if (failed.is(at, TokenType::Identifier) && isNumber(failed.type(at - 1)) &&
        failed.touchesPrevious(at))
        return say(at - 1, at);
    if (failed.asksForValue() && failed.is(at, TokenType::Dot) && isNumber(failed.type(at + 1)) &&
        failed.touchesPrevious(at + 1))
        return say(at, at + 1);
    if (failed.asks("Expected member name") && failed.is(at - 1, TokenType::Dot) &&
        isNumber(failed.type(at - 2)) && failed.touchesPrevious(at - 1))
        return say(at - 2, failed.touchesPrevious(at) && isNumber(failed.type(at)) ? at : at - 1);
    return std::nullopt;
}

Description describePrefix(const FailedSyntax& failed) {
    std::size_t at = failed.found();
    if (failed.is(at, TokenType::Unknown)) ++at;
    if (!failed.is(at, TokenType::StringLiteral) || !failed.touchesPrevious(at))
        return std::nullopt;
    if (!failed.isOneOf(at - 1, {"f", "r", "b", "u", "L", "R", "s"}) &&
        failed.text(at - 1) != "$" && failed.text(at - 1) != "@")
        return std::nullopt;
    return makeDiagnostic(MessageId::textPrefix, failed.range(at - 1));
}

// "say "hello" loud"
Description describeQuote(const FailedSyntax& failed) {
    const std::size_t at = failed.found();
    if (!failed.isWord(at) || !failed.is(at - 1, TokenType::StringLiteral) ||
        !failed.touchesPrevious(at))
        return std::nullopt;
    return makeDiagnostic(MessageId::innerQuote, failed.range(at - 1), {failed.text(at)});
}

Description describeCast(const FailedSyntax& failed) {
    const std::size_t at = failed.found();
    if (!failed.asksForValue() || !valueTypes.has(failed.type(at)) ||
        !failed.is(at - 1, TokenType::LeftParen) || !failed.is(at + 1, TokenType::RightParen))
        return std::nullopt;
    return makeDiagnostic(MessageId::cast, failed.range(at - 1, at + 1), {failed.text(at)});
}

// The run of bytes that no token has, with the words that touch it.
Description describeLetters(const FailedSyntax& failed) {
    std::size_t first = failed.found();
    std::size_t last = first;
    const auto foreign = [&](std::size_t at) {
        return failed.is(at, TokenType::Unknown) && !failed.text(at).empty() &&
               (static_cast<unsigned char>(failed.text(at).front()) & 0x80) != 0;
    };
    if (!foreign(first)) return std::nullopt;
    while (first > 0 && failed.touchesPrevious(first) &&
           (foreign(first - 1) || failed.isWord(first - 1)))
        --first;
    while (failed.touchesPrevious(last + 1) && (foreign(last + 1) || failed.isWord(last + 1)))
        ++last;
    return makeDiagnostic(MessageId::nameLetters, failed.range(first, last),
                          {failed.written(first, last)});
}

Description describeUnknown(const FailedSyntax& failed) {
    const std::size_t at = failed.found();
    if (!failed.is(at, TokenType::Unknown)) return std::nullopt;
    const std::string_view sign = failed.text(at);
    if (sign == "&" || sign == "|" || sign == "^" || sign == "~")
        return makeDiagnostic(MessageId::unknownOperator, failed.range(at),
                              {sign, "There are no operators for bits and no addresses."});
    return makeDiagnostic(MessageId::unknownCharacter, failed.range(at),
                          {failed.describe(at).substr(1, sign.size())});
}

// A line of another language's preprocessor or comment: "#" is a colour here.
Description describeHash(const FailedSyntax& failed) {
    const std::size_t at = failed.construct();
    if (!failed.is(at, TokenType::ColorLiteral) || !failed.beginsLine(at)) return std::nullopt;
    const std::string_view line = failed.written(at, at + 1);
    for (const std::string_view word : {"#include", "#define", "#if", "#pragma", "#endif", "#else"})
        if (line.starts_with(word))
            return makeDiagnostic(MessageId::preprocessorLine, failed.range(at, at + 1));
    return makeDiagnostic(MessageId::commentSign, failed.range(at), {"#"});
}

} // namespace

Description describeOperator(const FailedSyntax& failed) {
    static constexpr SyntaxRule rules[] = {
        describeHash,      describeLogical,   describeNot,   describeFunctionValue, describePair,
        describeIncrement, describeCompound,  describeArrow, describeScope,         describeTernary,
        describeRange,     describeEmptyList, describeNew,   describeFieldSign,     describeNumber,
        describePrefix,    describeLetters,   describeQuote, describeCast,
    };
    return firstOf(rules, failed);
}

Description describeCharacter(const FailedSyntax& failed) { return describeUnknown(failed); }

} // namespace Orvane
