// Compares the whole outcome of every case below tests/golden with what is expected; see
// golden_case.h for the layout. With ORVANE_UPDATE_GOLDEN set the expectations are written instead.

#include "case_run.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>

namespace Orvane::Golden {
namespace {

const std::filesystem::path root = ORVANE_GOLDEN_ROOT;

// A word of the path for GoogleTest: letters, digits and underscores only.
std::string testName(const testing::TestParamInfo<GoldenCase>& info) {
    std::string name = info.param.name;
    std::replace_if(
        name.begin(), name.end(), [](unsigned char c) { return !std::isalnum(c); }, '_');
    return name;
}

class Golden : public testing::TestWithParam<GoldenCase> {};
INSTANTIATE_TEST_SUITE_P(Cases, Golden, testing::ValuesIn(findCases(root)), testName);

TEST_P(Golden, GivesWhatIsExpected) {
    const GoldenCase& golden = GetParam();
    const SharedTexts shared(root / "shared");
    const std::filesystem::path folder = golden.folder / "expected";
    const Outcome actual = runCase(golden);
    if (std::getenv("ORVANE_UPDATE_GOLDEN")) writeExpectation(folder, actual, shared);

    const bool failed = actual.contains("status") || actual.contains("exception");
    EXPECT_EQ(failed, golden.mustFail()) << "the name of a case that fails begins with fail_";
    const std::string differences = describeDifferences(readExpectation(folder, shared), actual);
    EXPECT_TRUE(differences.empty())
        << golden.name << ":\n"
        << differences << "To accept the new output: make golden-update";
}

TEST(GoldenFolder, HoldsCases) { EXPECT_FALSE(findCases(root).empty()); }

TEST(GoldenFolder, HoldsNoStrayFiles) {
    EXPECT_EQ(findStrayFiles(root), std::vector<std::filesystem::path>());
    EXPECT_EQ(SharedTexts(root / "shared").findStrayFiles(), std::vector<std::filesystem::path>());
}

} // namespace
} // namespace Orvane::Golden
