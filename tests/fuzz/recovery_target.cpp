// Any bytes give a tree without an exception, and at most the failures that a Recovery holds; the
// first of them exactly when the compiler refuses the source.
#include "fuzz/targets.h"

#include "frontend/lexer.h"
#include "frontend/parser.h"

namespace Orvane::Fuzzing {

namespace {

bool compilerAccepts(const std::vector<Token>& tokens) {
    RecordingConsole console;
    try {
        return Parser(tokens, console).parse() != nullptr;
    } catch (const std::runtime_error&) {
        return false;
    }
}

void checkFirstFailure(const std::vector<Token>& tokens) {
    RecordingConsole console;
    Recovery observed(1);
    Parser parser(tokens, console, nullptr, Parser::Texts::viewed, &observed);
    require(parser.parse() != nullptr, "there is a tree behind an error");
    require(observed.failures().empty() == compilerAccepts(tokens),
            "a source fails when the compiler refuses it");
    require(console.text().empty(), "a recovery prints nothing");
}

void checkRecords(const std::vector<Token>& tokens) {
    RecordingConsole console;
    Recovery recovery;
    PositionTable positions;
    Parser parser(tokens, console, &positions, Parser::Texts::viewed, &recovery);
    require(parser.parse() != nullptr, "there is a tree behind errors");
    require(recovery.failures().size() <= Recovery::mostFailures, "failures are bounded");
    for (const SyntaxFailure& failure : recovery.failures())
        require(failure.found < tokens.size() && failure.construct <= failure.found,
                "a failure is at a token of its construct");
    for (const SkippedTokens& run : recovery.skipped())
        require(run.first <= run.last && run.last < tokens.size(), "skipped tokens are tokens");
    require(console.text().empty(), "a recovery prints nothing");
}

} // namespace

void fuzzRecovery(Bytes input) {
    RecordingConsole console;
    try {
        Lexer lexer(textOf(input), console);
        const std::vector<Token> tokens = lexer.tokenize();
        checkFirstFailure(tokens);
        checkRecords(tokens);
    } catch (const std::out_of_range&) {
    }
}

} // namespace Orvane::Fuzzing
