// Statements as other languages write them.
#include "check/syntax_failure.h"

namespace Orvane {

namespace {

constexpr TokenSet typeWords = resultTypes | identifiers;

// TYPE NAME at the beginning of a statement, with type arguments or without.
bool atDeclaration(const FailedSyntax& failed) {
    const std::size_t first = failed.construct();
    return failed.inStatements() && typeWords.has(failed.type(first)) &&
           (declarationTypes.has(failed.type(first)) ||
            failed.is(first + 1, TokenType::Identifier));
}

Description describeFor(const FailedSyntax& failed) {
    const std::size_t at = failed.found();
    if (!failed.asks("Expected ':' in for-each") &&
        !failed.asks("Expected type keyword or variable name"))
        return std::nullopt;
    if (failed.is(at, TokenType::Assign) || failed.is(at, TokenType::Semicolon))
        return makeDiagnostic(MessageId::countingFor, failed.range(at));
    if (failed.isOneOf(at, {"in", "of", "each"}))
        return makeDiagnostic(MessageId::forIn, failed.range(at), {failed.text(at)});
    return std::nullopt;
}

Description describeElseIf(const FailedSyntax& failed) {
    const std::size_t at = failed.construct();
    if (!failed.inStatements() ||
        !failed.isOneOf(at, {"elif", "elseif", "elsif", "ElseIf", "elsIf", "elseIf"}))
        return std::nullopt;
    return makeDiagnostic(MessageId::elseIfWord, failed.range(at), {failed.text(at)});
}

Description describeThen(const FailedSyntax& failed) {
    for (std::size_t back = 0; back < 3; ++back) {
        const std::size_t at = failed.found() - back;
        if (failed.isOneOf(at, {"then", "Then", "THEN"}))
            return makeDiagnostic(MessageId::thenWord, failed.range(at));
        if (failed.is(at, TokenType::Semicolon)) break;
    }
    return std::nullopt;
}

Description describeBlockEnd(const FailedSyntax& failed) {
    const std::size_t at = failed.construct();
    if (!failed.isOneOf(at, {"end", "End", "END", "endif", "fi", "wend", "next", "Next", "done",
                             "endwhile", "endfor", "esac"}) ||
        failed.found() > at + 2 || failed.found() == at ||
        (failed.found() == at + 2 && !failed.beginsLine(at + 1)))
        return std::nullopt;
    if (failed.is(at + 1, TokenType::LeftBrace)) return std::nullopt;
    return makeDiagnostic(MessageId::blockEndWord, failed.range(at), {failed.text(at)});
}

Description describeElse(const FailedSyntax& failed) {
    const std::size_t at = failed.construct();
    if (failed.found() != at || !failed.is(at, TokenType::ElseKeyword)) return std::nullopt;
    if (!failed.inStatements()) return std::nullopt;
    return makeDiagnostic(MessageId::loneElse, failed.range(at));
}

Description describeSwitch(const FailedSyntax& failed) {
    const std::size_t at = failed.construct();
    if (!failed.inStatements()) return std::nullopt;
    if (failed.isOneOf(at, {"switch", "Select", "match"}))
        return makeDiagnostic(MessageId::noSwitch, failed.range(at));
    if (failed.isOneOf(at, {"do", "Do"}))
        return makeDiagnostic(MessageId::noDoLoop, failed.range(at));
    return std::nullopt;
}

// A word with a block that is none of the language's.
Description describeWord(const FailedSyntax& failed) {
    const std::size_t first = failed.construct();
    if (!failed.inStatements() || !failed.is(first, TokenType::Identifier)) return std::nullopt;
    const bool block = failed.is(failed.found(), TokenType::LeftBrace) &&
                       failed.is(failed.found() - 1, TokenType::RightParen) &&
                       failed.is(first + 1, TokenType::LeftParen);
    const bool known =
        failed.isOneOf(first, {"foreach", "until", "unless", "repeat", "loop", "goto", "finally",
                               "case", "default", "print", "raise", "pass", "with", "lock",
                               "delete", "import", "from", "begin"});
    const bool loop = failed.text(first) == "foreach" && failed.is(first + 1, TokenType::LeftParen);
    if (loop) return makeDiagnostic(MessageId::forIn, failed.range(first), {"foreach"});
    if (!block && !(known && failed.found() <= first + 2)) return std::nullopt;
    if (!block && (failed.is(first + 1, TokenType::LeftParen) || failed.beginsLine(failed.found())))
        return std::nullopt;
    return makeDiagnostic(MessageId::unknownStatement, failed.range(first), {failed.text(first)});
}

Description describeTry(const FailedSyntax& failed) {
    if (!failed.expects(TokenType::CatchKeyword)) return std::nullopt;
    return makeDiagnostic(MessageId::tryWithoutCatch, failed.behind(failed.found() - 1));
}

// catch (TYPE NAME)
Description describeCatch(const FailedSyntax& failed) {
    std::size_t name = failed.found();
    if (failed.asks("Expected catch variable")) ++name;
    if (!failed.isWord(name) || !failed.isWord(name - 1) ||
        !failed.is(name - 2, TokenType::LeftParen) || !failed.is(name - 3, TokenType::CatchKeyword))
        return std::nullopt;
    return makeDiagnostic(MessageId::typedCatch, failed.range(name - 1, name));
}

Description describeCase(const FailedSyntax& failed) {
    if (failed.facts().body != Body::whenCases) return std::nullopt;
    if (!failed.asks("Expected 'is' or 'else' in when statement") &&
        !failed.asks("Expected '->' in when case") &&
        !failed.asks("Expected type name after 'is' in when statement"))
        return std::nullopt;
    return makeDiagnostic(MessageId::whenCase, failed.range(failed.found()));
}

Description describeFunctionInside(const FailedSyntax& failed) {
    const std::size_t first = failed.construct();
    if (!failed.inStatements()) return std::nullopt;
    const bool word = failed.isOneOf(first, {"function", "def", "fn", "func", "sub", "fun"}) &&
                      failed.isWord(first + 1) && failed.is(first + 2, TokenType::LeftParen);
    const bool typed = failed.is(first, TokenType::VoidKeyword) && failed.isWord(first + 1);
    if (word || typed)
        return makeDiagnostic(MessageId::nestedFunction, failed.range(first, first + 1));
    if (!atDeclaration(failed) || failed.found() != first + 2 ||
        !failed.is(first + 2, TokenType::LeftParen))
        return std::nullopt;
    std::size_t closer = first + 3;
    while (!failed.is(closer, TokenType::RightParen) && !failed.is(closer, TokenType::Semicolon) &&
           !failed.is(closer, TokenType::EndOfInput))
        ++closer;
    if (failed.is(closer + 1, TokenType::LeftBrace))
        return makeDiagnostic(MessageId::nestedFunction, failed.range(first, first + 1));
    return makeDiagnostic(MessageId::declarationWithArguments, failed.range(first + 2),
                          {failed.text(first), failed.text(first + 1)});
}

Description describeDeclarationWord(const FailedSyntax& failed) {
    const std::size_t first = failed.construct();
    if (!failed.inStatements() || failed.found() > first + 3 || failed.found() == first)
        return std::nullopt;
    if (!failed.isOneOf(first, {"var", "let", "dim", "Dim", "const", "auto", "local", "static",
                                "final", "my", "unsigned", "long", "mut"}) ||
        !failed.isWord(first + 1))
        return std::nullopt;
    return makeDiagnostic(MessageId::declarationWord, failed.range(first), {failed.text(first)});
}

Description describeVariables(const FailedSyntax& failed) {
    if (!atDeclaration(failed)) return std::nullopt;
    const std::size_t at = failed.found();
    if (failed.is(at, TokenType::LeftBracket))
        return makeDiagnostic(MessageId::arrayDeclaration, failed.range(at));
    if (failed.expects(TokenType::Semicolon) && failed.is(at, TokenType::Comma))
        return makeDiagnostic(MessageId::severalVariables, failed.range(at));
    if (failed.expects(TokenType::Semicolon) && failed.is(at, TokenType::Colon) &&
        at == failed.construct() + 2)
        return makeDiagnostic(MessageId::typeBehindName, failed.range(at));
    return std::nullopt;
}

// NAME < TYPE
Description describeTypeArguments(const FailedSyntax& failed) {
    const std::size_t at = failed.found();
    const std::size_t first = failed.construct();
    if (!failed.is(first, TokenType::Identifier) || !failed.is(first + 1, TokenType::Less) ||
        at != first + 2 || !declarationTypes.has(failed.type(at)))
        return std::nullopt;
    return makeDiagnostic(MessageId::typeArguments, failed.range(first, at), {failed.text(first)});
}

Description describeEmpty(const FailedSyntax& failed) {
    const std::size_t at = failed.found();
    if (!failed.inStatements() || !failed.is(at, TokenType::Semicolon) || !failed.asksForValue())
        return std::nullopt;
    const bool first = at == failed.construct();
    const bool body =
        failed.is(at - 1, TokenType::RightParen) || failed.is(at - 1, TokenType::ElseKeyword);
    if (!first && !body) return std::nullopt;
    return makeDiagnostic(MessageId::emptyStatement, failed.range(at));
}

// The sign behind a type: in variables, parameters and fields alike.
Description describePointer(const FailedSyntax& failed) {
    const std::size_t at = failed.found();
    const bool sign = failed.is(at, TokenType::Star) ||
                      (failed.is(at, TokenType::Unknown) && failed.text(at) == "&");
    const bool name = failed.asks("Expected variable name") || failed.asks("Expected param name") ||
                      failed.asks("Expected name") || failed.asks("Expected field name");
    const bool parameter = failed.asks("Expected ')'") && failed.isWord(at + 1) &&
                           failed.facts().body != Body::statements &&
                           failed.is(at - 1, TokenType::Identifier);
    if (!sign || !(name || parameter)) return std::nullopt;
    return makeDiagnostic(MessageId::pointerType, failed.range(at));
}

// A word of the language where a value or a statement should begin.
Description describeMisplaced(const FailedSyntax& failed) {
    const std::size_t at = failed.found();
    if (!failed.asksForValue() || !failed.isKeyword(at)) return std::nullopt;
    return makeDiagnostic(MessageId::misplacedWord, failed.range(at), {failed.text(at)});
}

} // namespace

Description describeStatement(const FailedSyntax& failed) {
    static constexpr SyntaxRule rules[] = {
        describeFor,
        describeElseIf,
        describeThen,
        describeBlockEnd,
        describeElse,
        describeSwitch,
        describeTry,
        describeCatch,
        describeCase,
        describeDeclarationWord,
        describeFunctionInside,
        describeWord,
        describePointer,
        describeVariables,
        describeTypeArguments,
        describeEmpty,
        describeMisplaced,
    };
    return firstOf(rules, failed);
}

} // namespace Orvane
