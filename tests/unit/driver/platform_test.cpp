#include "driver/platform.h"

#include "temporary_directory.h"

#include <gtest/gtest.h>

#include <csignal>
#include <sys/stat.h>

using namespace Orvane;

namespace fs = std::filesystem;

namespace {

class SystemPlatformTest : public testing::Test {
protected:
    // A program in a directory with a blank in its name.
    void writeProgram(std::string_view text, mode_t mode = 0755) const {
        directory.write("my tools/g++.exe", text);
        ASSERT_EQ(chmod(directory.text("my tools/g++.exe").c_str(), mode), 0);
    }
    std::string command() const { return "\"" + directory.text("my tools/g++.exe") + "\""; }

    TemporaryDirectory directory;
    SystemPlatform platform;
};

TEST_F(SystemPlatformTest, KnowsItsOwnExecutable) {
    const fs::path path = platform.executablePath();
    EXPECT_TRUE(path.is_absolute());
    EXPECT_EQ(path, fs::canonical("/proc/self/exe"));
}

TEST_F(SystemPlatformTest, GivesTheExitCode) {
    writeProgram("#!/bin/sh\nexit $1\n");
    EXPECT_EQ(platform.run(command() + " 0"), 0UL);
    EXPECT_EQ(platform.run(command() + " 3"), 3UL);
    EXPECT_EQ(platform.run(command() + " 255"), 255UL);
}

TEST_F(SystemPlatformTest, ASignalGives128AndItsNumber) {
    writeProgram("#!/bin/sh\nkill -$1 $$\n");
    EXPECT_EQ(platform.run(command() + " KILL"), 137UL);
    EXPECT_EQ(platform.run(command() + " SEGV"), 139UL);
}

TEST_F(SystemPlatformTest, ArgumentsArriveAsTheyAreWithoutAShell) {
    const std::string list = directory.text("list");
    writeProgram("#!/bin/sh\nprintf '<%s>' \"$@\" > '" + list + "'\n");
    EXPECT_EQ(platform.run(command() + " -I\"/a b\" \"\" '$HOME' `x` * a\\b ä;计"), 0UL);
    EXPECT_EQ(directory.read("list"), "<-I/a b><><'$HOME'><`x`><*><a\\b><ä;计>");
}

TEST_F(SystemPlatformTest, WhatCannotStartHasNoExitCode) {
    EXPECT_EQ(platform.run("\"" + directory.text("absent") + "\" -v"), std::nullopt);
    writeProgram("#!/bin/sh\nexit 0\n", 0644);
    EXPECT_EQ(platform.run(command()), std::nullopt);
    writeProgram("no program at all\n");
    EXPECT_EQ(platform.run(command()), std::nullopt);
    writeProgram("#!/absent/interpreter\n");
    EXPECT_EQ(platform.run(command()), std::nullopt);
    EXPECT_EQ(platform.run("\"" + directory.text("my tools") + "\""), std::nullopt);
    EXPECT_EQ(platform.run(""), std::nullopt);
}

TEST_F(SystemPlatformTest, ACallerThatIgnoresChildrenGetsTheExitCodeToo) {
    writeProgram("#!/bin/sh\nexit 3\n");
    const auto before = std::signal(SIGCHLD, SIG_IGN);
    EXPECT_EQ(platform.run(command()), 3UL);
    std::signal(SIGCHLD, before);
}

} // namespace
