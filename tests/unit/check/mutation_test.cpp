// Every program of the golden cases and examples with one token left out or put in twice: what the
// compiler refuses gets an error near the place, and next to nothing that only follows from it.
#include "check/parsed_source.h"
#include "frontend/parser.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <sstream>

using namespace Orvane;

namespace {

std::string readAll(const std::filesystem::path& path) {
    std::ifstream file(path, std::ios::binary);
    std::ostringstream text;
    text << file.rdbuf();
    return text.str();
}

std::vector<std::string> listPrograms() {
    std::vector<std::string> programs;
    for (const char* folder : {"tests/golden", "examples"})
        for (const auto& entry : std::filesystem::recursive_directory_iterator(
                 std::filesystem::path(ORVANE_SOURCE_ROOT) / folder))
            if (entry.path().extension() == ".vorla" && entry.file_size() < 6000)
                programs.push_back(readAll(entry.path()));
    std::sort(programs.begin(), programs.end());
    return programs;
}

struct Refusal {
    bool refused = false;
    std::size_t line = 0; // where the compiler gives up
};

Refusal compile(const std::string& text) {
    RecordingConsole console;
    Lexer lexer(text, console);
    const std::vector<Token> tokens = lexer.tokenize();
    Recovery observed(1);
    Parser(tokens, console, nullptr, Parser::Texts::viewed, &observed).parse();
    if (observed.failures().empty()) return {};
    const Token& found = tokens[observed.failures().front().found];
    return {true, static_cast<std::size_t>(found.line)};
}

struct Tally {
    std::size_t refused = 0, exactlyOne = 0, errors = 0, far = 0;
};

// Near is the line of the change, the line where the compiler gives up, or next to one of them.
bool isNear(std::size_t line, std::size_t changed, std::size_t failed) {
    const auto beside = [line](std::size_t other) {
        return line + 1 >= other && line <= other + 1;
    };
    return beside(changed) || beside(failed);
}

void judge(const std::string& text, std::size_t changedLine, Tally& tally) {
    const Refusal refusal = compile(text);
    const ParsedSource source("mutated.vorla", text);
    ASSERT_EQ(source.isAccepted(), !refusal.refused) << text;
    std::size_t errors = 0;
    bool near = false;
    for (const Diagnostic& diagnostic : source.diagnostics()) {
        if (diagnostic.severity() != Severity::error) continue;
        ++errors;
        const std::size_t line = source.source().placeOf(diagnostic.range.begin).line;
        near = near || isNear(line, changedLine, refusal.line);
    }
    ASSERT_EQ(errors > 0, refusal.refused) << text;
    ASSERT_LE(errors, Recovery::mostFailures) << text;
    if (!refusal.refused) return;
    ++tally.refused;
    tally.errors += errors;
    tally.exactlyOne += errors == 1 ? 1 : 0;
    tally.far += near ? 0 : 1;
}

template <class Change>
void mutateAll(Change change, Tally& tally) {
    for (const std::string& program : listPrograms()) {
        RecordingConsole console;
        std::vector<LexicalProblem> problems;
        Lexer lexer(program, console, &problems);
        if (lexer.tokenize().empty() || !problems.empty() || compile(program).refused) continue;
        const ParsedSource source("app.vorla", program);
        for (std::size_t at = 0; at + 1 < source.tokens().size(); at += 3) {
            std::string text = program;
            change(text, source.tokenRange(at));
            judge(text, static_cast<std::size_t>(source.tokens()[at].line), tally);
        }
    }
}

void expectGood(const Tally& tally) {
    ASSERT_GT(tally.refused, 500u);
    const auto share = [&](std::size_t part) {
        return static_cast<double>(part) / static_cast<double>(tally.refused);
    };
    testing::Test::RecordProperty("refused", std::to_string(tally.refused));
    testing::Test::RecordProperty("errors", std::to_string(share(tally.errors)));
    EXPECT_GE(share(tally.exactlyOne), 0.95) << tally.exactlyOne << " of " << tally.refused;
    EXPECT_LE(share(tally.errors), 1.06) << tally.errors << " for " << tally.refused;
    EXPECT_LE(share(tally.far), 0.01) << tally.far << " of " << tally.refused;
}

} // namespace

TEST(Mutations, aTokenLeftOutGivesOneErrorNearby) {
    Tally tally;
    mutateAll([](std::string& text,
                 ByteRange token) { text.replace(token.begin, token.end - token.begin, " "); },
              tally);
    expectGood(tally);
}

TEST(Mutations, aTokenWrittenTwiceGivesOneErrorNearby) {
    Tally tally;
    mutateAll(
        [](std::string& text, ByteRange token) {
            text.insert(token.end, " " + text.substr(token.begin, token.end - token.begin));
        },
        tally);
    expectGood(tally);
}
