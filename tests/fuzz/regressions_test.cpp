// Inputs that once broke a target, kept in regressions/TARGET, and some that every target must
// bear.
#include "fuzz/targets.h"

#include <filesystem>
#include <fstream>
#include <iterator>

#include <gtest/gtest.h>

namespace {

using namespace Orvane::Fuzzing;

void runAll(std::string_view text) {
    const Bytes bytes(reinterpret_cast<const std::uint8_t*>(text.data()), text.size());
    for (const Target& target : targets)
        EXPECT_NO_THROW(target.run(bytes)) << "target " << target.name;
}

TEST(FuzzRegressions, AllTargetsBearEveryInputThatBrokeOneOfThem) {
    std::size_t count = 0;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(ORVANE_REGRESSIONS)) {
        if (!entry.is_regular_file()) continue;
        SCOPED_TRACE(entry.path().string());
        std::ifstream file(entry.path(), std::ios::binary);
        runAll(std::string(std::istreambuf_iterator<char>(file), {}));
        ++count;
    }
    EXPECT_GT(count, 0U);
}

TEST(FuzzRegressions, AllTargetsBearEmptyInputAndEverySingleByte) {
    runAll("");
    for (int byte = 0; byte < 256; ++byte) runAll(std::string(1, static_cast<char>(byte)));
}

TEST(FuzzRegressions, AllTargetsBearRepeatedSigns) {
    for (const char* sign :
         {"(", "{", "[", "-", "a.", "a(", "if (a) ", "a ? ", "import ", "\"", "@@@ a\n"}) {
        std::string text;
        for (int count = 0; count < 1500; ++count) text += sign;
        SCOPED_TRACE(sign);
        runAll(text);
        runAll("void f() {" + text);
        runAll("int f() { " + text + " }");
    }
}

} // namespace
