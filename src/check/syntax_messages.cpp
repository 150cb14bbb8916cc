#include "check/syntax_messages.h"

#include "check/syntax_failure.h"

#include <algorithm>

namespace Orvane {

namespace {

// The parser's words for what it expects, and ours. Several of its messages say the same.
struct Wording {
    std::string_view asked, said;
};

constexpr Wording wordings[] = {
    {"Expected expression", "a value"},
    {"Expected member name", "the name of a member"},
    {"Expected field name", "the name of a field"},
    {"Expected param name", "the name of a parameter"},
    {"Expected variable name", "the name of a variable"},
    {"Expected variable name after type", "the name of the loop's variable"},
    {"Expected type keyword or variable name", "the name of the loop's variable"},
    {"Expected ':' in for-each", "':' and the list"},
    {"Expected catch variable", "the name for what was thrown"},
    {"Expected class name", "the name of a class"},
    {"Expected able name", "the name of the able"},
    {"Expected vorla name", "the name of the window"},
    {"Expected component name", "the name of the control"},
    {"Expected event name", "the name of an event"},
    {"Expected target name", "the name of a control"},
    {"Expected method name in able", "the name of a method"},
    {"Expected name", "a field or a method"},
    {"Expected typename name", "the name of a type"},
    {"Expected type alias name", "the new name of the type"},
    {"Expected type name", "a type"},
    {"Expected using key", "a word"},
    {"Expected using value", "a text in double quotes"},
    {"Expected type name as second argument to is()", "the name of a type"},
    {"Expected kind (class/function) in therebe()", "'class' or 'function'"},
    {"Expected name in therebe()", "a name"},
    {"Expected variable name after 'for' in list comprehension", "the name of a variable"},
    {"Expected 'in' in list comprehension", "'in'"},
};

std::string expectedBy(const SyntaxFailure& failure) {
    for (const Wording& wording : wordings)
        if (wording.asked == failure.message) return std::string(wording.said);
    return "'" + std::string(spellingOf(failure.expected)) + "'";
}

// What remains: in words what was expected and what stands there.
Description describePlainly(const FailedSyntax& failed) {
    const std::size_t at = failed.found();
    const bool atEnd = failed.is(at, TokenType::EndOfInput);
    return makeDiagnostic(MessageId::syntaxError, atEnd ? failed.behind(at - 1) : failed.range(at),
                          {expectedBy(failed.facts()), failed.describe(at)});
}

// ---- What is skipped ----

using RunRule = Description (*)(const FailedSyntax&, const SkippedTokens&);

Description describeSemicolons(const FailedSyntax& at, const SkippedTokens& run) {
    if (!at.is(run.first, TokenType::Semicolon) || run.first != run.last) return std::nullopt;
    return makeDiagnostic(MessageId::extraSemicolon, at.range(run.first));
}

Description describeBraces(const FailedSyntax& at, const SkippedTokens& run) {
    if (!at.is(run.first, TokenType::RightBrace)) return std::nullopt;
    return makeDiagnostic(MessageId::extraBrace, at.range(run.first));
}

Description describeVariable(const FailedSyntax& at, const SkippedTokens& run) {
    constexpr TokenSet types = declarationTypes | identifiers;
    const bool outside = run.body == Body::topLevel || run.body == Body::script;
    const bool ended =
        at.is(run.first + 2, TokenType::Assign) || at.is(run.first + 2, TokenType::Semicolon);
    if (!outside || !types.has(at.type(run.first)) || !at.isWord(run.first + 1) || !ended)
        return std::nullopt;
    return makeDiagnostic(MessageId::variableOutside, at.range(run.first, run.first + 1),
                          {at.text(run.first + 1)});
}

Description describeFunction(const FailedSyntax& at, const SkippedTokens& run) {
    if (run.body != Body::window && run.body != Body::component) return std::nullopt;
    const std::size_t name = at.is(run.first + 1, TokenType::LeftParen) ? run.first : run.first + 1;
    if (!at.isWord(run.first) || !at.isWord(name) || !at.is(name + 1, TokenType::LeftParen))
        return std::nullopt;
    return makeDiagnostic(MessageId::functionInWindow, at.range(name), {at.text(name)});
}

Description describeNested(const FailedSyntax& at, const SkippedTokens& run) {
    if (run.body != Body::component || !at.isWord(run.first) ||
        !at.is(run.first + 1, TokenType::Identifier) || !at.is(run.first + 2, TokenType::LeftBrace))
        return std::nullopt;
    return makeDiagnostic(MessageId::nestedControl, at.range(run.first, run.first + 1),
                          {at.written(run.first, run.first + 1)});
}

Description describeProperty(const FailedSyntax& at, const SkippedTokens& run) {
    if (run.body != Body::window && run.body != Body::component) return std::nullopt;
    if (!memberNames.has(at.type(run.first))) return std::nullopt;
    return makeDiagnostic(MessageId::propertyWithoutValue, at.range(run.first),
                          {at.text(run.first)});
}

// As far as the run goes on its first line.
Description describeRun(const FailedSyntax& at, const SkippedTokens& run) {
    std::size_t last = run.first;
    while (last < run.last && !at.beginsLine(last + 1)) ++last;
    return makeDiagnostic(MessageId::skippedTokens, at.range(run.first, last),
                          {at.written(run.first, last)});
}

Diagnostic describeSkip(const ParsedSource& source, const SkippedTokens& run) {
    constexpr RunRule rules[] = {describeSemicolons, describeBraces, describeVariable,
                                 describeFunction,   describeNested, describeProperty};
    const SyntaxFailure nothing;
    const FailedSyntax at(source, nothing);
    for (const RunRule rule : rules)
        if (Description description = rule(at, run)) return *std::move(description);
    return *describeRun(at, run);
}

} // namespace

Diagnostic describeFailure(const ParsedSource& source, const SyntaxFailure& failure) {
    static constexpr SyntaxRule rules[] = {describeDeclaration, describeOperator, describeStatement,
                                           describeCharacter,   describeMissing,  describePlainly};
    return *firstOf(rules, FailedSyntax(source, failure));
}

std::vector<Diagnostic> describeSkipped(const ParsedSource& source,
                                        const std::vector<SkippedTokens>& runs) {
    std::vector<Diagnostic> found;
    for (const SkippedTokens& run : runs) found.push_back(describeSkip(source, run));
    return found;
}

} // namespace Orvane
