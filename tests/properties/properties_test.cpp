// What holds for every program, tried on generated ones with the seeds from 0 on. The environment
// variable ORVANE_PROPERTY_PROGRAMS tells how many of each style; without it there are enough for
// every run of the tests.
#include "frontend/lexer.h"
#include "frontend/parser.h"
#include "fuzz/source_checks.h"
#include "fuzz/targets.h"
#include "libraries/replacement_table.h"
#include "run/translation.h"
#include "support/program_generator.h"
#include "support/token_pieces.h"
#include "support/tree_source.h"

#include <cstdlib>
#include <map>
#include <set>

#include <gtest/gtest.h>

namespace {

using namespace Orvane;

std::uint64_t programCount() {
    const char* const wanted = std::getenv("ORVANE_PROPERTY_PROGRAMS");
    return wanted ? std::stoull(wanted) : 3000;
}

template <class Check>
void forEachProgram(ProgramStyle style, Check check) {
    for (std::uint64_t seed = 0; seed < programCount(); ++seed) {
        SCOPED_TRACE((style == ProgramStyle::wild ? "wild seed " : "sensible seed ") +
                     std::to_string(seed));
        check(generateProgram(style, seed));
        if (testing::Test::HasFailure()) return;
    }
}

template <class Check>
void forEachProgram(Check check) {
    forEachProgram(ProgramStyle::sensible, check);
    if (!testing::Test::HasFailure()) forEachProgram(ProgramStyle::wild, check);
}

std::unique_ptr<AST> parsed(const std::string& source) {
    std::unique_ptr<AST> program = Fuzzing::parse(source);
    EXPECT_NE(program, nullptr) << source;
    return program;
}

// Blanks, line breaks and comments; a blank in front, so that a "/" before it begins no comment.
std::string filler(Choices& choices) {
    static constexpr std::string_view fillers[] = {
        " ",           "\n",          "\t\r\n  ",       " /* } */ ", " // \"{\n",
        " /* \n\n */", " /**/ /***/", " // /* none \n", " \v\f ",    " /* // */ // */\n"};
    return std::string(choices.pick(fillers));
}

std::string withFillers(const std::string& source, Choices& choices) {
    RecordingConsole console;
    Lexer lexer(source, console);
    const std::vector<Token> tokens = lexer.tokenize();
    std::string filled;
    for (const std::string_view piece : piecesOf(source, tokens)) {
        filled += choices.oneIn(3) ? filler(choices) : "";
        filled += piece;
    }
    return filled + filler(choices);
}

// How often each name and literal stands in the source. What stands in front of ".script" counts
// for nothing in the language.
std::map<std::string, int> wordsOf(const std::string& source) {
    constexpr TokenSet counted =
        identifiers | TokenSet{TokenType::IntegerLiteral, TokenType::FloatLiteral,
                               TokenType::StringLiteral, TokenType::ColorLiteral};
    RecordingConsole console;
    Lexer lexer(source, console);
    const std::vector<Token> tokens = lexer.tokenize();
    std::map<std::string, int> words;
    for (std::size_t at = 0; at < tokens.size(); ++at) {
        const bool isScript = at + 2 < tokens.size() && tokens[at + 1].type == TokenType::Dot &&
                              tokens[at + 2].type == TokenType::ScriptKeyword;
        if (counted.has(tokens[at].type) && !isScript) ++words[std::string(tokens[at].text())];
    }
    return words;
}

// The words of the source that the other one has less often.
std::map<std::string, int> missingWords(const std::string& source, const std::string& other) {
    std::map<std::string, int> missing = wordsOf(source);
    const std::map<std::string, int> kept = wordsOf(other);
    std::erase_if(missing, [&](const auto& entry) {
        const auto found = kept.find(entry.first);
        return found != kept.end() && found->second >= entry.second;
    });
    return missing;
}

// Both texts, or why there are none.
std::string outcomeOf(const std::string& source) {
    RecordingConsole console;
    try {
        const Translation program = translate(source, ReplacementTable(), console);
        return program.importText + program.mainText;
    } catch (const std::exception& error) {
        return error.what();
    }
}

TEST(Properties, ASeedAlwaysGivesTheSameProgramAndSeedsGiveDifferentOnes) {
    std::set<std::string> programs;
    forEachProgram([&](const std::string& source) { programs.insert(source); });
    const std::uint64_t count = programCount();
    EXPECT_GT(programs.size(), count * 2 - count / 10); // few are so short that two may be equal
    forEachProgram([&](const std::string& source) { EXPECT_TRUE(programs.contains(source)); });
}

TEST(Properties, PiecesBetweenTokenBoundariesGiveTheSameTokens) {
    forEachProgram([](const std::string& source) {
        EXPECT_NO_THROW(Fuzzing::fuzzLexer(
            {reinterpret_cast<const std::uint8_t*>(source.data()), source.size()}));
    });
}

TEST(Properties, ATreeWrittenAsSourceIsParsedToAnEqualTree) {
    forEachProgram([](const std::string& source) {
        const std::unique_ptr<AST> program = parsed(source);
        if (program) {
            EXPECT_NO_THROW(Fuzzing::checkTreeAsSource(*program));
        }
    });
}

// Wild programs write numbers with more digits than they need, and properties that a later one of
// the same name replaces.
TEST(Properties, TheTreeOfASensibleProgramHoldsEveryNameAndLiteral) {
    forEachProgram(ProgramStyle::sensible, [](const std::string& source) {
        const std::unique_ptr<AST> program = parsed(source);
        if (program) {
            EXPECT_EQ(missingWords(source, sourceOf(*program)), (std::map<std::string, int>()))
                << source;
        }
    });
}

TEST(Properties, TranslationsAreEqualButForCountersAndEndAtTheFirstIndentation) {
    forEachProgram([](const std::string& source) {
        const std::unique_ptr<AST> program = parsed(source);
        if (program) {
            EXPECT_NO_THROW(Fuzzing::checkTranslation(*program));
        }
    });
}

TEST(Properties, CommentsAndBlanksBetweenTokensChangeNeitherFile) {
    SeededChoices choices(1);
    forEachProgram([&](const std::string& source) {
        EXPECT_EQ(outcomeOf(withFillers(source, choices)), outcomeOf(source));
    });
}

// One byte of a program changed, left out or doubled: an error at most.
TEST(Properties, DamagedProgramsAreRefusedOrTranslated) {
    SeededChoices choices(2);
    forEachProgram([&](const std::string& source) {
        std::string damaged = source;
        if (damaged.empty()) return;
        const std::size_t at = choices.below(damaged.size());
        switch (choices.below(3)) {
        case 0:
            damaged[at] = static_cast<char>(choices.below(256));
            break;
        case 1:
            damaged.erase(at, 1 + choices.below(5));
            break;
        default:
            damaged.insert(at, damaged.substr(at, 1 + choices.below(40)));
        }
        EXPECT_NO_THROW({
            const std::unique_ptr<AST> program = Fuzzing::parse(damaged);
            if (program) Fuzzing::checkTranslation(*program);
        }) << damaged;
    });
}

} // namespace
