#include "check/parsed_source.h"

#include "check/lexical_problems.h"
#include "check/syntax_messages.h"
#include "frontend/parser.h"

#include <algorithm>

namespace Orvane {

ParsedSource::ParsedSource(std::string path, std::string text)
    : sourceText(std::move(path), std::move(text)), lexer(sourceText.text(), console, &problems),
      program(std::make_unique<AST>()) {
    parse();
}

// The compiler's own way first: a file that it accepts has no errors, whatever it looks like.
void ParsedSource::parse() {
    tokenList = lexer.tokenize();
    parseAsCompiler();
    if (!accepted) parseOnBehindErrors();
    std::stable_sort(found.begin(), found.end(),
                     [](const Diagnostic& one, const Diagnostic& other) {
                         return one.range.begin < other.range.begin;
                     });
}

void ParsedSource::parseAsCompiler() {
    if (holdsLargeNumber(problems)) return;
    Recovery observed(1);
    positions.reserve(tokenList.size()); // most nodes have a token of their own
    auto tree = Parser(tokenList, console, &positions, Parser::Texts::copied, &observed).parse();
    accepted = observed.failures().empty();
    if (!accepted) {
        found.push_back(describeFailure(*this, observed.failures().front()));
        return;
    }
    program = std::move(tree);
    found = describeSkipped(*this, observed.skipped());
    std::vector<Diagnostic> unclosed = describeUnclosed(sourceText, problems);
    dropRemainders(found, unclosed);
    for (Diagnostic& diagnostic : unclosed) found.push_back(std::move(diagnostic));
}

// What is found this way replaces the one error of the compiler's way, which is not lost, though,
// when it is in something that is skipped here.
void ParsedSource::parseOnBehindErrors() {
    const std::vector<Diagnostic> first = std::move(found);
    LexicalReport literals = examineLiterals(sourceText);
    found = std::move(literals.diagnostics);
    if (!literals.repairs.empty()) {
        repairedText = std::move(literals.repaired);
        repaired.emplace(repairedText, console);
        tokenList = repaired->tokenize();
    }
    positions = {};
    Recovery recovery;
    program = Parser(tokenList, console, &positions, Parser::Texts::copied, &recovery).parse();
    addFailures(recovery.failures(), literals.repairs);
    std::vector<Diagnostic> skipped = describeSkipped(*this, recovery.skipped());
    if (found.empty()) found = refuseSkipped(skipped, first.front());
    for (Diagnostic& diagnostic : skipped) found.push_back(std::move(diagnostic));
}

// What fails on the line of a repaired literal is the literal's doing.
void ParsedSource::addFailures(const std::vector<SyntaxFailure>& failures,
                               const std::vector<ByteRange>& repairs) {
    const auto lineOf = [this](std::size_t offset) { return sourceText.placeOf(offset).line; };
    for (const SyntaxFailure& failure : failures) {
        if (found.size() >= Recovery::mostFailures) return;
        const std::size_t line = lineOf(tokenRange(failure.found).begin);
        const auto onLine = [&](const ByteRange& repair) { return lineOf(repair.end) == line; };
        if (std::none_of(repairs.begin(), repairs.end(), onLine))
            found.push_back(describeFailure(*this, failure));
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
    if (token.type != TokenType::StringLiteral && token.type != TokenType::CharLiteral)
        return {begin, begin + token.text().size()};
    return {begin, endOfLiteral(repairedText.empty() ? sourceText.text() : repairedText, begin)};
}

} // namespace Orvane
