#include "corpus.h"

#include "support/program_generator.h"

#include <gtest/gtest.h>

#include <filesystem>

using namespace Orvane;

namespace {

const std::vector<CorpusProgram>& corpus() {
    static const std::vector<CorpusProgram> programs = readCorpus();
    return programs;
}

// "name (ids)" of every program that the condition picks, a line for each.
template <class Condition>
std::string listPrograms(Condition isPicked) {
    std::string list;
    for (const CorpusProgram& program : corpus())
        if (isPicked(program)) list += program.name + " (" + program.ids() + ")\n";
    return list;
}

std::string errorsIn(const std::vector<Diagnostic>& diagnostics) {
    std::string errors;
    for (const Diagnostic& diagnostic : diagnostics)
        if (diagnostic.severity() == Severity::error) errors += diagnostic.text + "\n";
    return errors;
}

} // namespace

TEST(Corpus, holdsHundredsOfProgramsOfEachOutcome) {
    std::size_t refused = 0;
    for (const CorpusProgram& program : corpus()) refused += program.isRefused ? 1 : 0;
    EXPECT_GE(refused, 250u);
    EXPECT_GE(corpus().size() - refused, 300u);
}

TEST(Corpus, hasNoFalseErrors) {
    EXPECT_EQ(listPrograms([](const CorpusProgram& program) {
                  return !program.isRefused && program.saysError();
              }),
              "");
}

TEST(Corpus, hasNoWarningsAboutProgramsThatBehave) {
    EXPECT_EQ(listPrograms([](const CorpusProgram& program) {
                  return !program.isRefused && !program.misleads && !program.diagnostics.empty();
              }),
              "");
}

TEST(Corpus, refusesWhatIsRefused) {
    std::size_t refused = 0, found = 0;
    for (const CorpusProgram& program : corpus()) {
        refused += program.isRefused ? 1 : 0;
        found += program.isRefused && program.saysError() ? 1 : 0;
    }
    EXPECT_GE(found * 100, refused * 98) << listPrograms(
        [](const CorpusProgram& program) { return program.isRefused && !program.saysError(); });
}

TEST(Corpus, hasNothingToSayAboutTheExamples) {
    std::size_t examples = 0;
    for (const auto& entry : std::filesystem::directory_iterator(ORVANE_SOURCE_ROOT "/examples")) {
        if (entry.path().extension() != ".vorla") continue;
        ++examples;
        for (const Diagnostic& diagnostic : checkText(readText(entry.path().string())))
            ADD_FAILURE() << entry.path().filename() << ": " << diagnostic.text << " at byte "
                          << diagnostic.range.begin;
    }
    EXPECT_GE(examples, 7u);
}

// That the C++ compiler accepts these programs is tested with the compiled programs.
TEST(Corpus, hasNoErrorsInSensibleProgramsMadeUpByChance) {
    for (std::uint64_t seed = 1; seed <= 2000; ++seed) {
        const std::string errors =
            errorsIn(checkText(generateProgram(ProgramStyle::sensible, seed)));
        ASSERT_EQ(errors, "") << "seed " << seed;
    }
}
