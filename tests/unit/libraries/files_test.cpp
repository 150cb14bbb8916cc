#include "libraries/files.h"

#include "temporary_directory.h"

#include <gtest/gtest.h>

using namespace Orvane;

namespace {

TEST(Files, TextOfAPathIsTheTextItWasMadeFrom) {
    for (const char* name :
         {"a.vorla", "dir with blank/ü.vorla", "程序/计算.vorla", "./x/../y", ""})
        EXPECT_EQ(textOf(pathOf(name)), name);
}

TEST(Files, ANameWithAZeroByteNamesNoFile) {
    const TemporaryDirectory directory;
    directory.write("a", "x");
    const std::string name = directory.text("a") + std::string("\0b", 2);
    EXPECT_TRUE(pathExists(pathOf(directory.text("a"))));
    EXPECT_FALSE(pathExists(pathOf(name)));
    EXPECT_EQ(readTextFile(pathOf(name)), std::nullopt);
}

TEST(Files, ANameTooLongForTheSystemHasNoFile) {
    EXPECT_FALSE(pathExists(pathOf(std::string(100'000, 'n'))));
    EXPECT_EQ(readTextFile(pathOf(std::string(100'000, 'n'))), std::nullopt);
}

TEST(Files, ADirectoryExistsButHasNoText) {
    const TemporaryDirectory directory;
    EXPECT_TRUE(pathExists(directory.path()));
    EXPECT_EQ(readTextFile(directory.path()), std::nullopt);
}

TEST(Files, ADeviceHasNoText) {
    EXPECT_EQ(readTextFile("/dev/null"), std::nullopt);
    EXPECT_EQ(readTextFile("/dev/zero"), std::nullopt);
}

TEST(Files, AnEmptyFileHasAnEmptyText) {
    const TemporaryDirectory directory;
    directory.write("empty", "");
    EXPECT_EQ(readTextFile(directory.path() / "empty"), "");
}

TEST(Files, BytesAreReadAsTheyAre) {
    const TemporaryDirectory directory;
    std::string bytes;
    for (int round = 0; round < 5000; ++round)
        for (int byte = 0; byte < 256; ++byte) bytes += static_cast<char>(byte);
    directory.write("bytes", bytes);
    EXPECT_EQ(readTextFile(directory.path() / "bytes"), bytes);
}

TEST(Files, AbsolutePathsHaveNoDots) {
    const TemporaryDirectory directory;
    const WorkingDirectory inside(directory.path());
    EXPECT_EQ(textOf(absolutePath("./x")), directory.text("x"));
    EXPECT_EQ(textOf(absolutePath("a/../x")), directory.text("x"));
    EXPECT_EQ(textOf(absolutePath("a//b")), directory.text("a/b"));
    EXPECT_EQ(textOf(absolutePath(directory.path() / "y")), directory.text("y"));
}

TEST(Files, TheSameFileIsRecognisedUnderAnotherName) {
    const TemporaryDirectory directory;
    directory.write("a", "x");
    directory.write("b", "x");
    std::filesystem::create_symlink("a", directory.path() / "link");
    EXPECT_TRUE(isSameFile(directory.path() / "a", directory.path() / "." / "a"));
    EXPECT_TRUE(isSameFile(directory.path() / "a", directory.path() / "link"));
    EXPECT_FALSE(isSameFile(directory.path() / "a", directory.path() / "b"));
    EXPECT_FALSE(isSameFile(directory.path() / "a", directory.path() / "absent"));
    EXPECT_FALSE(isSameFile(directory.path() / "absent", directory.path() / "absent"));
}

TEST(Files, AVanishedWorkingDirectoryIsNoError) {
    const TemporaryDirectory directory;
    std::filesystem::create_directory(directory.path() / "gone");
    const WorkingDirectory inside(directory.path() / "gone");
    std::filesystem::remove(directory.path() / "gone");
    EXPECT_TRUE(workingDirectory().empty());
    EXPECT_EQ(textOf(absolutePath("x")), "x");
}

} // namespace
