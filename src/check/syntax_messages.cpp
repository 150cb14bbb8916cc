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

constexpr TokenSet statementWords = {
    TokenType::IfKeyword,    TokenType::ReturnKeyword, TokenType::ForKeyword,
    TokenType::WhileKeyword, TokenType::ThrowKeyword,  TokenType::TryKeyword,
    TokenType::DeferKeyword, TokenType::ExpectKeyword, TokenType::WhenKeyword,
};

Description describeStatementOutside(const FailedSyntax& at, const SkippedTokens& run) {
    if (!statementWords.has(at.type(run.first))) return std::nullopt;
    return makeDiagnostic(MessageId::statementOutside, at.range(run.first), {at.text(run.first)});
}

// NAME . NAME {  at the top level, with "on" in front of it or without.
Description describeHandlerOutside(const FailedSyntax& at, const SkippedTokens& run) {
    const std::size_t name = run.first + (at.is(run.first, TokenType::OnKeyword) ? 1 : 0);
    if (run.body != Body::topLevel || !at.is(name, TokenType::Identifier) ||
        !at.is(name + 1, TokenType::Dot) || !at.is(name + 2, TokenType::Identifier) ||
        !at.is(name + 3, TokenType::LeftBrace))
        return std::nullopt;
    return makeDiagnostic(MessageId::handlerOutside, at.range(name, name + 2),
                          {at.written(name, name + 2)});
}

Description describeControlOutside(const FailedSyntax& at, const SkippedTokens& run) {
    const bool outside = run.body == Body::topLevel || run.body == Body::script;
    if (!outside || !at.is(run.first, TokenType::TypeKeyword) ||
        !at.is(run.first + 1, TokenType::Identifier) || !at.is(run.first + 2, TokenType::LeftBrace))
        return std::nullopt;
    return makeDiagnostic(MessageId::controlOutside, at.range(run.first, run.first + 1),
                          {at.written(run.first, run.first + 1)});
}

Description describeKeywordControl(const FailedSyntax& at, const SkippedTokens& run) {
    if (run.body != Body::window || !at.is(run.first, TokenType::TypeKeyword) ||
        !at.isKeyword(run.first + 1) || !at.is(run.first + 2, TokenType::LeftBrace))
        return std::nullopt;
    return makeDiagnostic(MessageId::keywordNamesControl, at.range(run.first + 1),
                          {at.text(run.first + 1)});
}

Description describeEvent(const FailedSyntax& at, const SkippedTokens& run) {
    if (run.body != Body::component || !at.is(run.first, TokenType::Identifier) ||
        !at.is(run.first + 1, TokenType::LeftBrace))
        return std::nullopt;
    std::string_view name = at.text(run.first);
    if (name.starts_with("on") && name.size() > 2) name.remove_prefix(2);
    return makeDiagnostic(MessageId::eventWithoutOn, at.range(run.first),
                          {at.text(run.first), name});
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

// The byte order mark, and the "on" of an event whose name is refused behind it.
bool isMarkOrEvent(const ParsedSource& source, const SkippedTokens& run) {
    const auto& tokens = source.tokens();
    if (run.first == 0 && source.rangeOf(TokenRange{0, run.last}).end == 3 &&
        source.source().text().starts_with("\xEF\xBB\xBF"))
        return true;
    return run.body == Body::window && run.first == run.last &&
           tokens[run.first].type == TokenType::OnKeyword;
}

Diagnostic describeSkip(const ParsedSource& source, const SkippedTokens& run) {
    constexpr RunRule rules[] = {
        describeSemicolons,       describeBraces,         describeVariable,
        describeStatementOutside, describeHandlerOutside, describeControlOutside,
        describeKeywordControl,   describeEvent,          describeFunction,
        describeNested,           describeProperty,
    };
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
    for (const SkippedTokens& run : runs)
        if (!isMarkOrEvent(source, run)) found.push_back(describeSkip(source, run));
    return found;
}

std::vector<Diagnostic> refuseSkipped(std::vector<Diagnostic>& skipped, const Diagnostic& failure) {
    auto cause = skipped.end();
    for (auto each = skipped.begin(); each != skipped.end(); ++each)
        if (each->range.begin <= failure.range.begin) cause = each;
    if (cause == skipped.end()) return {failure};
    Diagnostic refused =
        makeDiagnostic(MessageId::misplacedCode, cause->range, {cause->text, cause->hint});
    refused.notes.push_back({failure.range, "the compiler gives up here: " + failure.text});
    skipped.erase(cause);
    return {refused};
}

void dropRemainders(std::vector<Diagnostic>& skipped, const std::vector<Diagnostic>& unclosed) {
    std::erase_if(skipped, [&](const Diagnostic& run) {
        return std::any_of(unclosed.begin(), unclosed.end(), [&](const Diagnostic& text) {
            return run.range.begin > text.range.begin && run.range.begin < text.range.end;
        });
    });
}

} // namespace Orvane
