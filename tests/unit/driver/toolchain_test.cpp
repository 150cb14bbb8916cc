#include "driver/toolchain.h"

#include "driver/platform.h"
#include "temporary_directory.h"

#include <gtest/gtest.h>

using namespace Orvane;

namespace fs = std::filesystem;

namespace {

// ---- Where the compiler is ----

TEST(BaseDirectory, IsThatOfTheExecutable) {
    EXPECT_EQ(baseDirectory("/opt/orvane/orvanec"), "/opt/orvane");
}

TEST(BaseDirectory, IsTheWorkingDirectoryWhenThePathIsUnknown) {
    EXPECT_EQ(baseDirectory(""), fs::current_path());
}

TEST(BaseDirectory, IsTheWorkingDirectoryForAPathOf260CharactersOrMore) {
    const std::string longest = "/" + std::string(250, 'd') + "/orvanec";
    ASSERT_EQ(longest.size(), 259u);
    EXPECT_EQ(baseDirectory(longest), "/" + std::string(250, 'd'));
    EXPECT_EQ(baseDirectory("/" + longest), fs::current_path());
    EXPECT_EQ(baseDirectory("/longer" + longest), fs::current_path());
}

// ---- Where g++ is ----

TEST(Candidates, AreFiveDirectoriesInOrder) {
    EXPECT_EQ(candidateDirectories("/opt/orvane/bin", "/home/u"),
              (std::vector<fs::path>{"/opt/orvane/bin", "/opt/orvane", "/opt/orvane/bin/tools/bin",
                                     "/opt/orvane/tools/bin", "/home/u/tools/bin"}));
}

class LocateToolchain : public testing::Test {
protected:
    std::optional<Toolchain> locate() const {
        return locateToolchain(directory.path() / "a/b", directory.path() / "work");
    }
    // With everything in place from the last candidate on, each one in front of it wins.
    std::string found(std::string_view added) const {
        directory.write(added, "");
        return locate().value().gxx.lexically_relative(directory.path()).string();
    }

    TemporaryDirectory directory;
};

TEST_F(LocateToolchain, FindsNothingWhereNothingIs) {
    directory.write("a/b/g++", "");
    directory.write("work/g++.exe", "");
    EXPECT_FALSE(locate().has_value());
}

TEST_F(LocateToolchain, TriesTheCandidatesInOrder) {
    EXPECT_EQ(found("work/tools/bin/g++.exe"), "work/tools/bin/g++.exe");
    EXPECT_EQ(found("a/tools/bin/g++.exe"), "a/tools/bin/g++.exe");
    EXPECT_EQ(found("a/b/tools/bin/g++.exe"), "a/b/tools/bin/g++.exe");
    EXPECT_EQ(found("a/g++.exe"), "a/g++.exe");
    EXPECT_EQ(found("a/b/g++.exe"), "a/b/g++.exe");
}

TEST_F(LocateToolchain, TheOneBesideTheCompilerWinsOverToolsBin) {
    directory.write("a/b/tools/bin/g++.exe", "");
    directory.write("a/b/g++.exe", "");
    const Toolchain toolchain = locate().value();
    EXPECT_EQ(toolchain.gxx, directory.path() / "a/b/g++.exe");
    EXPECT_EQ(toolchain.installRoot, directory.path() / "a");
}

TEST_F(LocateToolchain, InAToolsDirectoryEverythingIsRelativeToThat) {
    directory.write("a/b/tools/bin/g++.exe", "");
    directory.write("a/b/resource.o", "");
    directory.write("a/resource.o", "");
    Toolchain toolchain = locate().value();
    EXPECT_EQ(toolchain.installRoot, directory.path() / "a/b/tools");
    EXPECT_EQ(toolchain.resourceObject, std::nullopt);
    directory.write("a/b/tools/resource.o", "");
    toolchain = locate().value();
    EXPECT_EQ(toolchain.resourceObject, directory.path() / "a/b/tools/resource.o");
    directory.write("a/b/tools/bin/resource.o", "");
    toolchain = locate().value();
    EXPECT_EQ(toolchain.resourceObject, directory.path() / "a/b/tools/bin/resource.o");
}

TEST_F(LocateToolchain, OtherwiseEverythingIsRelativeToTheCompiler) {
    directory.write("a/g++.exe", "");
    Toolchain toolchain = locate().value();
    EXPECT_EQ(toolchain.installRoot, directory.path() / "a");
    EXPECT_EQ(toolchain.resourceObject, std::nullopt);
    directory.write("a/resource.o", "");
    toolchain = locate().value();
    EXPECT_EQ(toolchain.resourceObject, directory.path() / "a/resource.o");
    directory.write("a/b/resource.o", "");
    toolchain = locate().value();
    EXPECT_EQ(toolchain.resourceObject, directory.path() / "a/b/resource.o");
}

TEST_F(LocateToolchain, AnyPathWithToolsInItsTextCounts) {
    directory.write("devtools/bin/g++.exe", "");
    const fs::path base = directory.path() / "devtools/bin";
    const Toolchain toolchain = locateToolchain(base, directory.path()).value();
    EXPECT_EQ(toolchain.installRoot, directory.path() / "devtools");
    directory.write("devtools/x/g++.exe", "");
    const Toolchain above =
        locateToolchain(directory.path() / "devtools/x/y", directory.path()).value();
    EXPECT_EQ(above.gxx, directory.path() / "devtools/x/g++.exe");
    EXPECT_EQ(above.installRoot, directory.path() / "devtools");
}

TEST(ToolRoot, FollowsTheTextOfTheDirectory) {
    EXPECT_EQ(toolRootFor("/opt/x", "/opt/x/bin"), "/opt/x/bin");
    EXPECT_EQ(toolRootFor("/opt/tools/bin", "/opt"), "/opt/tools/bin");
    EXPECT_EQ(toolRootFor("/my-tool-box/bin", "/base"), "/base");
    EXPECT_EQ(toolRootFor("/any/mytoolset", "/base"), "/any/mytoolset");
    EXPECT_EQ(toolRootFor("/opt/Tools/bin", "/opt"), "/opt");
}

// ---- How g++ is called ----

TEST(CommandLine, HoldsEveryPieceInOrder) {
    const Toolchain toolchain{"/r/tools/bin/g++.exe", "/r/tools", fs::path("/r/tools/resource.o")};
    EXPECT_EQ(formatCommandLine(toolchain, "/w/code_generation/main.cpp", "/w/app.exe", true),
              "\"/r/tools/bin/g++.exe\" -std=c++17 -Og -g -finput-charset=UTF-8 "
              "\"/w/code_generation/main.cpp\" \"/r/tools/resource.o\" -o \"/w/app.exe\" "
              "-I\"/r/tools/include\" -I\"/r/tools/orlib\" -I\"/r/tools/parameter\" "
              "-luser32 -lgdi32 -lkernel32 -lcomctl32 -lcomdlg32 -lshell32 -ladvapi32 -mwindows");
}

TEST(CommandLine, WithoutDebugAndResourceTheyLeaveNoTrace) {
    const Toolchain toolchain{"/r/g++.exe", "/", std::nullopt};
    EXPECT_EQ(formatCommandLine(toolchain, "/m.cpp", "/a.exe", false),
              "\"/r/g++.exe\" -std=c++17 -Og -finput-charset=UTF-8 \"/m.cpp\" -o \"/a.exe\" "
              "-I\"/include\" -I\"/orlib\" -I\"/parameter\" "
              "-luser32 -lgdi32 -lkernel32 -lcomctl32 -lcomdlg32 -lshell32 -ladvapi32 -mwindows");
}

TEST(CommandLine, PathsKeepTheirBlanksAndQuotes) {
    const Toolchain toolchain{"/my tools/g++.exe", "/ä 计", std::nullopt};
    EXPECT_EQ(formatCommandLine(toolchain, "/a\"b.cpp", "/c d.exe", false),
              "\"/my tools/g++.exe\" -std=c++17 -Og -finput-charset=UTF-8 \"/a\"b.cpp\" -o "
              "\"/c d.exe\" -I\"/ä 计/include\" -I\"/ä 计/orlib\" -I\"/ä 计/parameter\" "
              "-luser32 -lgdi32 -lkernel32 -lcomctl32 -lcomdlg32 -lshell32 -ladvapi32 -mwindows");
}

} // namespace
