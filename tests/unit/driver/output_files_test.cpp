#include "driver/output_files.h"

#include "temporary_directory.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

using namespace Orvane;

namespace fs = std::filesystem;

namespace {

class OutputFilesTest : public testing::Test {
protected:
    TemporaryDirectory directory;
    WorkingDirectory inside{directory.path()};
};

TEST_F(OutputFilesTest, LieBesideTheSource) {
    const OutputFiles files = outputFilesFor("sub/app.vorla");
    EXPECT_EQ(files.source, directory.path() / "sub/app.vorla");
    EXPECT_EQ(files.directory, directory.path() / "sub/code_generation");
    EXPECT_EQ(files.mainCpp, directory.path() / "sub/code_generation/main.cpp");
    EXPECT_EQ(files.importHpp, directory.path() / "sub/code_generation/import.hpp");
    EXPECT_EQ(files.executable, directory.path() / "sub/app.exe");
}

TEST_F(OutputFilesTest, AnAbsoluteSourceDoesNotDependOnTheWorkingDirectory) {
    EXPECT_EQ(outputFilesFor("/srv/x/../app.vorla").executable, "/srv/app.exe");
}

TEST_F(OutputFilesTest, PathsAreNormalised) {
    EXPECT_EQ(outputFilesFor("./a/../app.vorla").mainCpp,
              directory.path() / "code_generation/main.cpp");
}

TEST_F(OutputFilesTest, OnlyTheLastExtensionIsReplaced) {
    EXPECT_EQ(outputFilesFor("/a.b.vorla").executable, "/a.b.exe");
    EXPECT_EQ(outputFilesFor("/app").executable, "/app.exe");
    EXPECT_EQ(outputFilesFor("/app.").executable, "/app.exe");
    EXPECT_EQ(outputFilesFor("/v1.0/app").executable, "/v1.0/app.exe");
    EXPECT_EQ(outputFilesFor("/.vorla").executable, "/.vorla.exe");
}

TEST_F(OutputFilesTest, ASourceThatIsItsOwnExecutableIsNoticed) {
    EXPECT_TRUE(wouldOverwriteSource("/w/app.exe", outputFilesFor("/w/app.exe")));
    EXPECT_FALSE(wouldOverwriteSource("/w/app.exe", outputFilesFor("/w/app.vorla")));
    directory.write("app.vorla", "x");
    fs::create_hard_link("app.vorla", "app.exe");
    EXPECT_TRUE(wouldOverwriteSource("app.exe", outputFilesFor("app.vorla")));
}

TEST_F(OutputFilesTest, AFileIsWrittenBehindAByteOrderMarkWithItsLineEnds) {
    EXPECT_TRUE(writeFile("a.txt", "x\n\r\n\xC3\xA4"));
    EXPECT_EQ(directory.read("a.txt"), "\xEF\xBB\xBFx\n\r\n\xC3\xA4");
}

TEST_F(OutputFilesTest, AnEmptyFileIsTheMarkAlone) {
    EXPECT_TRUE(writeFile("a.txt", ""));
    EXPECT_EQ(directory.read("a.txt"), "\xEF\xBB\xBF");
}

TEST_F(OutputFilesTest, ALongerFileIsReplacedWhole) {
    directory.write("a.txt", std::string(10'000, 'x'));
    EXPECT_TRUE(writeFile("a.txt", "y"));
    EXPECT_EQ(directory.read("a.txt"), "\xEF\xBB\xBFy");
}

TEST_F(OutputFilesTest, AFileThatCannotBeOpenedIsNotWritten) {
    EXPECT_FALSE(writeFile("absent/a.txt", "x"));
    fs::create_directory("directory");
    EXPECT_FALSE(writeFile("directory", "x"));
}

TEST_F(OutputFilesTest, APipeInPlaceOfTheFileIsNotWaitedFor) {
    ASSERT_EQ(mkfifo("pipe", 0600), 0);
    EXPECT_FALSE(writeFile("pipe", "x"));
}

TEST_F(OutputFilesTest, AFullDiskIsNoticedForShortAndLongTexts) {
    ASSERT_TRUE(fs::exists("/dev/full"));
    EXPECT_FALSE(writeFile("/dev/full", "x"));
    EXPECT_FALSE(writeFile("/dev/full", std::string(1'000'000, 'x')));
}

TEST_F(OutputFilesTest, BothIntermediatesAreRemovedAndTheirDirectoryStays) {
    const OutputFiles files = outputFilesFor("app.vorla");
    directory.write("code_generation/main.cpp", "x");
    directory.write("code_generation/import.hpp", "x");
    EXPECT_TRUE(removeIntermediates(files));
    EXPECT_TRUE(fs::is_directory("code_generation"));
    EXPECT_TRUE(fs::is_empty("code_generation"));
}

TEST_F(OutputFilesTest, AnIntermediateThatIsGoneCountsAsNotRemoved) {
    const OutputFiles files = outputFilesFor("app.vorla");
    directory.write("code_generation/import.hpp", "x");
    EXPECT_FALSE(removeIntermediates(files));
    EXPECT_FALSE(directory.has("code_generation/import.hpp"));
    directory.write("code_generation/main.cpp", "x");
    EXPECT_FALSE(removeIntermediates(files));
    EXPECT_FALSE(directory.has("code_generation/main.cpp"));
}

TEST_F(OutputFilesTest, AnIntermediateThatCannotBeRemovedIsNoticed) {
    const OutputFiles files = outputFilesFor("app.vorla");
    directory.write("code_generation/main.cpp/in the way", "x");
    directory.write("code_generation/import.hpp", "x");
    EXPECT_FALSE(removeIntermediates(files));
}

} // namespace
