#include "driver/library_stage.h"

#include "temporary_directory.h"

#include <gtest/gtest.h>

#include <stdexcept>

using namespace Orvane;

namespace {

// Throws whenever a message holds a given text: the way a loader fails that has run out of
// something.
class FailingConsole final : public Console {
public:
    void write(std::string_view text) override {
        if (trigger.empty() || text.find(trigger) == std::string_view::npos)
            recorded += text;
        else if (throwsNumber)
            throw 5;
        else
            throw std::runtime_error("disk gone");
    }
    std::string trigger;
    bool throwsNumber = false;
    std::string recorded;
};

class LibraryStageTest : public testing::Test {
protected:
    std::string path(std::string_view name) const { return directory.text(name); }

    TemporaryDirectory directory;
    WorkingDirectory inside{directory.path()};
    FailingConsole console;
    ReplacementTable table;
    OrlibBootloader bootloader{table, console};
    LibraryStage stage{bootloader, console};
};

TEST_F(LibraryStageTest, WithNothingToLoadTheTableIsNotPrinted) {
    stage.run({}, {});
    EXPECT_EQ(console.recorded, "  (no libraries to load)\n\n");
    EXPECT_FALSE(stage.hasLoadedAny());
}

TEST_F(LibraryStageTest, LoadsImportsThenTheStandardSetThenTheCommandLine) {
    directory.write("orlib/ui.orlib", "int fromImport() {}");
    directory.write("orlib/normal.orlib", "int fromSet() {}");
    directory.write("orlib/math.orlib", "int fromOption() {}");
    Options options;
    options.normal = true;
    options.libraries = {"math"};
    stage.run({"ui"}, options);
    EXPECT_EQ(console.recorded, "  -> orlib/ui.orlib ... Loading: " + path("orlib/ui.orlib") +
                                    "\n  function: fromImport\nOK\n"
                                    "Loading: " +
                                    path("orlib/normal.orlib") +
                                    "\n  function: fromSet\n"
                                    "  -> normal (standard set) ... OK\n"
                                    "  -> orlib/math.orlib ... Loading: " +
                                    path("orlib/math.orlib") +
                                    "\n  function: fromOption\nOK\n"
                                    "ReplacementTable (3 functions):\n"
                                    "  fromImport() -> int\n"
                                    "  fromOption() -> int\n"
                                    "  fromSet() -> int\n"
                                    "\n");
    EXPECT_TRUE(stage.hasLoadedAny());
}

TEST_F(LibraryStageTest, ALibraryNamedTwiceHasTwoLines) {
    directory.write("orlib/math.orlib", "int f() {}");
    Options options;
    options.libraries = {"math", "math"};
    stage.run({}, options);
    EXPECT_EQ(console.recorded, "  -> orlib/math.orlib ... Loading: " + path("orlib/math.orlib") +
                                    "\n  function: f\nOK\n"
                                    "  -> orlib/math.orlib ... OK\n"
                                    "ReplacementTable (1 functions):\n  f() -> int\n\n");
}

TEST_F(LibraryStageTest, AnImportOfNormalIsTheStandardSetLoadedOnce) {
    directory.write("orlib/normal.orlib", "int f() {}");
    Options options;
    options.normal = true;
    stage.run({"lib/normal.orlib", "normal"}, options);
    EXPECT_EQ(console.recorded, "Loading: " + path("orlib/normal.orlib") +
                                    "\n  function: f\n"
                                    "  -> normal (standard set) ... OK\n"
                                    "ReplacementTable (1 functions):\n  f() -> int\n\n");
}

TEST_F(LibraryStageTest, AMissingStandardSetIsAWarningAndCountsAsLoaded) {
    Options options;
    options.normal = true;
    stage.run({}, options);
    EXPECT_EQ(console.recorded, "Warning: normal.orlib not found\n"
                                "  -> normal (standard set) ... OK\n"
                                "ReplacementTable (0 functions):\n\n");
    EXPECT_TRUE(stage.hasLoadedAny());
}

TEST_F(LibraryStageTest, AMissingLibraryIsAWarningBeforeItsOk) {
    stage.load("math");
    EXPECT_EQ(console.recorded, "  -> orlib/math.orlib ... Warning: math.orlib not found\nOK\n");
    EXPECT_TRUE(stage.hasLoadedAny());
}

TEST_F(LibraryStageTest, ALibraryThatFailsHasItsFailLineAndTheNextOneIsLoaded) {
    directory.write("orlib/math.orlib", "int f() {}");
    directory.write("orlib/io.orlib", "int g() {}");
    console.trigger = "orlib/math.orlib\n";
    Options options;
    options.libraries = {"math", "io"};
    stage.run({}, options);
    EXPECT_EQ(console.recorded, "  -> orlib/math.orlib ... FAIL: disk gone\n"
                                "  -> orlib/io.orlib ... Loading: " +
                                    path("orlib/io.orlib") +
                                    "\n  function: g\nOK\n"
                                    "ReplacementTable (1 functions):\n  g() -> int\n\n");
    EXPECT_TRUE(stage.hasLoadedAny());
}

TEST_F(LibraryStageTest, WhenEveryLibraryFailsNoneIsLoaded) {
    directory.write("orlib/math.orlib", "int f() {}");
    console.trigger = "Loading";
    stage.load("math");
    EXPECT_EQ(console.recorded, "  -> orlib/math.orlib ... FAIL: disk gone\n");
    EXPECT_FALSE(stage.hasLoadedAny());
}

TEST_F(LibraryStageTest, AStandardSetThatFailsIsTriedAgain) {
    directory.write("orlib/normal.orlib", "int f() {}");
    console.trigger = "Loading";
    stage.load("normal");
    EXPECT_EQ(console.recorded, "  -> normal ... FAIL: disk gone\n");
    EXPECT_FALSE(stage.hasLoadedAny());
    console.trigger.clear();
    stage.load("normal");
    EXPECT_EQ(console.recorded, "  -> normal ... FAIL: disk gone\n"
                                "Loading: " +
                                    path("orlib/normal.orlib") +
                                    "\n  function: f\n"
                                    "  -> normal (standard set) ... OK\n");
}

TEST_F(LibraryStageTest, OtherExceptionsAreNotCaught) {
    directory.write("orlib/math.orlib", "int f() {}");
    console.trigger = "Loading";
    console.throwsNumber = true;
    EXPECT_THROW(stage.load("math"), int);
    EXPECT_FALSE(stage.hasLoadedAny());
}

TEST(LibraryName, LosesItsSuffixAndItsDirectories) {
    EXPECT_EQ(LibraryStage::libraryName("ui"), "ui");
    EXPECT_EQ(LibraryStage::libraryName("ui.orlib"), "ui");
    EXPECT_EQ(LibraryStage::libraryName("a/b/ui.orlib"), "ui");
    EXPECT_EQ(LibraryStage::libraryName("a\\b\\ui"), "ui");
    EXPECT_EQ(LibraryStage::libraryName("a\\b/ui"), "ui");
    EXPECT_EQ(LibraryStage::libraryName("a/b\\ui"), "ui");
}

TEST(LibraryName, OnlyTheLastSuffixGoes) {
    EXPECT_EQ(LibraryStage::libraryName("ui.orlib.orlib"), "ui.orlib");
    EXPECT_EQ(LibraryStage::libraryName("ui.orlib/x"), "x");
    EXPECT_EQ(LibraryStage::libraryName("ui.ORLIB"), "ui.ORLIB");
}

TEST(LibraryName, MayBecomeEmpty) {
    EXPECT_EQ(LibraryStage::libraryName(".orlib"), "");
    EXPECT_EQ(LibraryStage::libraryName("a/"), "");
    EXPECT_EQ(LibraryStage::libraryName(""), "");
    EXPECT_EQ(LibraryStage::libraryName("orlib"), "orlib");
}

} // namespace
