// Declarations as other languages write them, and names that cannot be names.
#include "check/syntax_failure.h"

namespace Orvane {

namespace {

constexpr TokenSet typeWords = resultTypes | identifiers;

bool isOutside(const FailedSyntax& failed) {
    return failed.facts().body == Body::topLevel || failed.facts().body == Body::script;
}

// The index of the "(" of a function's head; noToken when the construct is none.
std::size_t parametersOf(const FailedSyntax& failed) {
    const std::size_t first = failed.construct();
    const bool members =
        failed.facts().body == Body::classMembers || failed.facts().body == Body::ableMethods;
    if ((!isOutside(failed) && !members) || !typeWords.has(failed.type(first))) return noToken;
    if (failed.is(first + 1, TokenType::LeftParen)) return first + 1;
    return failed.isWord(first + 1) && failed.is(first + 2, TokenType::LeftParen) ? first + 2
                                                                                  : noToken;
}

// A word of the language that stands alone where a name should.
Description describeKeywordName(const FailedSyntax& failed) {
    const std::size_t at = failed.found();
    if (!failed.expects(TokenType::Identifier) || !failed.isKeyword(at)) return std::nullopt;
    constexpr TokenSet behind = {TokenType::LeftBrace, TokenType::RightParen, TokenType::Comma,
                                 TokenType::Semicolon, TokenType::Assign,     TokenType::Colon,
                                 TokenType::LeftParen, TokenType::Dot};
    if (!behind.has(failed.type(at + 1))) return std::nullopt;
    const bool type = declarationTypes.has(failed.type(at));
    if (failed.asks("Expected param name") && !type && failed.is(at + 1, TokenType::LeftParen))
        return std::nullopt;
    return makeDiagnostic(MessageId::keywordAsName, failed.range(at), {failed.text(at)});
}

// NAME ( ... ) ;  and  TYPE NAME ( ... ) ;
Description describeBodiless(const FailedSyntax& failed) {
    const std::size_t paren = parametersOf(failed);
    if (paren == noToken || failed.facts().body == Body::ableMethods) return std::nullopt;
    const std::size_t first = failed.construct();
    const bool typed = paren == first + 2;
    const bool ended =
        failed.expects(TokenType::LeftBrace) && failed.is(failed.found(), TokenType::Semicolon);
    const bool argument = failed.asks("Expected param name") && failed.found() == paren + 1 &&
                          (failed.beginsValue(paren + 1) || failed.is(paren + 1, TokenType::Minus));
    if (isOutside(failed) && !typed && (ended || argument))
        return makeDiagnostic(MessageId::callOutside, failed.range(first), {failed.text(first)});
    if (!ended) return std::nullopt;
    return makeDiagnostic(MessageId::functionWithoutBody, failed.range(paren - 1),
                          {failed.text(paren - 1)});
}

Description describeParameter(const FailedSyntax& failed) {
    const std::size_t paren = parametersOf(failed);
    const std::size_t at = failed.found();
    if (paren == noToken || at < paren) return std::nullopt;
    const bool ends = failed.is(at, TokenType::RightParen) || failed.is(at, TokenType::Comma);
    if (failed.asks("Expected param name") && ends && parameterTypes.has(failed.type(at - 1)))
        return makeDiagnostic(MessageId::parameterWithoutName, failed.range(at - 1));
    if (failed.is(at, TokenType::LeftBracket))
        return makeDiagnostic(MessageId::arrayDeclaration, failed.range(at));
    const bool closer = failed.asks("Expected ')'");
    if (closer && failed.is(at, TokenType::Assign))
        return makeDiagnostic(MessageId::defaultArgument, failed.range(at));
    const bool sign = failed.is(at, TokenType::Colon) || failed.is(at, TokenType::Arrow);
    const bool type = typeWords.has(failed.type(at + 1)) && !failed.beginsLine(at + 1) &&
                      !failed.is(at + 2, TokenType::LeftParen);
    if (sign && type && (closer || failed.expects(TokenType::LeftBrace)))
        return makeDiagnostic(MessageId::typeBehindName, failed.range(at));
    return std::nullopt;
}

Description describeClass(const FailedSyntax& failed) {
    const std::size_t at = failed.found();
    if (failed.asks("Expected '{' after class name") && !failed.beginsLine(at) &&
        !failed.is(at, TokenType::Semicolon))
        return makeDiagnostic(MessageId::classInheritance, failed.range(at));
    if (failed.facts().body != Body::classMembers) return std::nullopt;
    if (failed.asks("Expected name") && failed.isKeyword(at) && at == failed.construct() + 1)
        return makeDiagnostic(MessageId::declarationWord, failed.range(at - 1),
                              {failed.text(at - 1)});
    if (failed.expects(TokenType::Semicolon) && failed.is(at, TokenType::Assign))
        return makeDiagnostic(MessageId::fieldInitialiser, failed.range(at), {"NAME"});
    if (failed.expects(TokenType::Semicolon) && failed.is(at, TokenType::LeftBracket))
        return makeDiagnostic(MessageId::arrayDeclaration, failed.range(at));
    return std::nullopt;
}

Description describeControl(const FailedSyntax& failed) {
    const std::size_t first = failed.construct();
    if (!failed.asks("Expected component name") || failed.facts().body != Body::window ||
        !failed.is(failed.found(), TokenType::LeftBrace))
        return std::nullopt;
    if (failed.is(first - 1, TokenType::OnKeyword))
        return makeDiagnostic(MessageId::windowEvent, failed.range(first - 1, first));
    return makeDiagnostic(MessageId::componentWithoutName, failed.range(first),
                          {failed.text(first)});
}

// on EVENT { ... } in a script
Description describeHandler(const FailedSyntax& failed) {
    const std::size_t first = failed.construct();
    if (!failed.asks("Expected '.'") || !failed.is(first, TokenType::OnKeyword) ||
        !failed.is(failed.found(), TokenType::LeftBrace))
        return std::nullopt;
    return makeDiagnostic(MessageId::handlerWithoutControl, failed.range(first, first + 1),
                          {failed.text(first + 1)});
}

Description describeImport(const FailedSyntax& failed) {
    const std::size_t first = failed.construct();
    if (!failed.is(first, TokenType::ImportKeyword) || failed.found() != first + 1)
        return std::nullopt;
    return makeDiagnostic(MessageId::importForm, failed.range(first, first + 1));
}

} // namespace

Description describeDeclaration(const FailedSyntax& failed) {
    static constexpr SyntaxRule rules[] = {
        describeControl, describeKeywordName, describeBodiless, describeParameter,
        describeClass,   describeHandler,     describeImport,
    };
    return firstOf(rules, failed);
}

} // namespace Orvane
