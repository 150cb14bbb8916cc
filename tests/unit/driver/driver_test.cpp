#include "driver/driver.h"

#include "driver/fake_platform.h"
#include "temporary_directory.h"

#include <gtest/gtest.h>

#include <stdexcept>

using namespace Orvane;

namespace fs = std::filesystem;

namespace {

const std::string banner = "=== Orvane Compiler v6.0.0 ===\n";
const std::string mark = "\xEF\xBB\xBF";

std::string usage() {
    RecordingConsole console;
    printUsage(console);
    return console.text();
}

// A compiler installed in install/, with g++ beside it, that works on sources in work/.
class DriverTest : public testing::Test {
protected:
    DriverTest() {
        directory.write("install/g++.exe", "");
        directory.write("work/app.vorla", "");
    }

    int run(const std::vector<std::string>& arguments) {
        console.clear();
        const WorkingDirectory inside(directory.path() / "work");
        return Driver(console, platform).run(arguments);
    }
    std::string path(std::string_view name) const { return directory.text(name); }
    bool printed(std::string_view text) const {
        return console.text().find(text) != std::string::npos;
    }
    bool endsWith(std::string_view text) const { return console.text().ends_with(text); }
    std::string command(std::string_view main, std::string_view executable,
                        std::string_view debug = "") const {
        std::string line = "\"" + path("install/g++.exe") + "\" -std=c++17 -Og";
        line.append(debug).append(" -finput-charset=UTF-8 \"").append(path(main));
        line.append("\" -o \"").append(path(executable)).append("\" -I\"").append(path("include"));
        line.append("\" -I\"").append(path("orlib")).append("\" -I\"").append(path("parameter"));
        return line + "\" -luser32 -lgdi32 -lkernel32 -lcomctl32 -lcomdlg32 -lshell32 -ladvapi32 "
                      "-mwindows";
    }

    TemporaryDirectory directory;
    RecordingConsole console;
    FakePlatform platform{directory.text("install/orvanec")};
};

// ---- Command line ----

TEST_F(DriverTest, HelpPrintsBannerAndUsageAndReadsNothing) {
    EXPECT_EQ(run({"--help", "absent.vorla"}), 0);
    EXPECT_EQ(console.text(), banner + usage());
    EXPECT_FALSE(directory.has("work/code_generation"));
}

TEST_F(DriverTest, ASecondSourceIsRejectedWithUsage) {
    EXPECT_EQ(run({"a.vorla", "b.vorla"}), 1);
    EXPECT_EQ(console.text(), banner + "Error: Unknown argument 'b.vorla'\n" + usage());
}

TEST_F(DriverTest, AnUnknownOptionIsRejectedEvenIfSuchALibraryExists) {
    directory.write("work/orlib/foo.orlib", "int f() {}");
    EXPECT_EQ(run({"app.vorla", "--foo"}), 1);
    EXPECT_EQ(console.text(), banner + "Error: Unknown argument '--foo'\n" + usage());
}

TEST_F(DriverTest, AMissingSourceIsRejectedWithUsage) {
    EXPECT_EQ(run({}), 1);
    EXPECT_EQ(console.text(), banner + "Error: No source file specified.\n" + usage());
    EXPECT_EQ(run({"--debug"}), 1);
    EXPECT_EQ(console.text(), banner + "Error: No source file specified.\n" + usage());
}

// ---- A whole build ----

TEST_F(DriverTest, ACompleteBuildPrintsEveryStage) {
    directory.write("work/app.vorla", "vorla Main { }\n");
    EXPECT_EQ(run({"app.vorla"}), 0);
    const std::string gxx = command("work/code_generation/main.cpp", "work/app.exe");
    EXPECT_EQ(console.text(), banner +
                                  "[1/7] Reading source file: app.vorla\n"
                                  "  Size: 15 bytes\n"
                                  "[2/7] Lexing...\n"
                                  "  Tokens: 5\n"
                                  "[3/6] Parsing...\n"
                                  "  AST OK\n"
                                  "[4/7] Loading libraries...\n"
                                  "  (no libraries to load)\n"
                                  "\n"
                                  "[5/7] Generating C++ code...\n"
                                  "  debugMode = false\n"
                                  "  " +
                                  path("work/code_generation/main.cpp") + "\n  " +
                                  path("work/code_generation/import.hpp") +
                                  "\n"
                                  "[6/6] Compiling with g++...\n"
                                  "  Command: " +
                                  gxx +
                                  "\n"
                                  "  Compiled OK\n"
                                  "  Output: " +
                                  path("work/app.exe") +
                                  "\n"
                                  "  Intermediate files cleaned.\n"
                                  "\n=== Build complete! ===\n");
    EXPECT_EQ(platform.commands, std::vector<std::string>{gxx});
}

TEST_F(DriverTest, TheIntermediateFilesGoAndTheirDirectoryStays) {
    EXPECT_EQ(run({"app.vorla"}), 0);
    EXPECT_TRUE(fs::is_empty(directory.path() / "work/code_generation"));
}

TEST_F(DriverTest, TheIntermediateFilesStayOnRequest) {
    EXPECT_EQ(run({"app.vorla", "--keep-cpp"}), 0);
    EXPECT_FALSE(printed("cleaned"));
    EXPECT_TRUE(directory.read("work/code_generation/main.cpp")
                    .starts_with(mark + "// main.cpp - Generated by Orvane\n"
                                        "#include \"import.hpp\"\n"));
    EXPECT_TRUE(directory.read("work/code_generation/import.hpp")
                    .starts_with(mark + "// import.hpp - Generated by Orvane\n"));
}

TEST_F(DriverTest, BothFilesAreCompleteBeforeGxxStarts) {
    std::string main;
    std::string import;
    platform.onRun = [&] {
        main = directory.read("work/code_generation/main.cpp");
        import = directory.read("work/code_generation/import.hpp");
    };
    EXPECT_EQ(run({"app.vorla"}), 0);
    EXPECT_TRUE(main.ends_with("int nCmdShow) { return 0; }\n"));
    EXPECT_TRUE(import.starts_with(mark));
}

TEST_F(DriverTest, EverythingIsPrintedBeforeGxxStarts) {
    std::string before;
    platform.onRun = [&] { before = console.text(); };
    EXPECT_EQ(run({"app.vorla"}), 0);
    EXPECT_TRUE(before.ends_with(platform.commands.at(0) + "\n"));
}

TEST_F(DriverTest, DebugReachesTheGeneratorAndGxx) {
    EXPECT_EQ(run({"app.vorla", "--debug", "--keep-cpp"}), 0);
    EXPECT_TRUE(printed("  debugMode = true\n"));
    EXPECT_EQ(platform.commands.at(0),
              command("work/code_generation/main.cpp", "work/app.exe", " -g"));
    EXPECT_NE(directory.read("work/code_generation/import.hpp").find("DEBUG"), std::string::npos);
}

TEST_F(DriverTest, ASourceElsewhereHasItsOutputBesideIt) {
    directory.write("other place/sub/app.vorla", "");
    EXPECT_EQ(run({"../other place/sub/app.vorla", "--keep-cpp"}), 0);
    EXPECT_TRUE(directory.has("other place/sub/code_generation/main.cpp"));
    EXPECT_TRUE(printed("  Output: " + path("other place/sub/app.exe") + "\n"));
    EXPECT_TRUE(printed("[1/7] Reading source file: ../other place/sub/app.vorla\n"));
    EXPECT_FALSE(directory.has("work/code_generation"));
}

TEST_F(DriverTest, NamesWithBlanksAndOtherLettersWork) {
    directory.write("work/größe 计算.vorla", "");
    EXPECT_EQ(run({"größe 计算.vorla"}), 0);
    EXPECT_EQ(platform.commands.at(0),
              command("work/code_generation/main.cpp", "work/größe 计算.exe"));
}

TEST_F(DriverTest, ASourceWithoutExtensionGetsOne) {
    directory.write("work/app", "");
    EXPECT_EQ(run({"app"}), 0);
    EXPECT_TRUE(printed("  Output: " + path("work/app.exe") + "\n"));
}

TEST_F(DriverTest, AnEmptySourceBuilds) {
    EXPECT_EQ(run({"app.vorla"}), 0);
    EXPECT_TRUE(printed("  Size: 0 bytes\n[2/7] Lexing...\n  Tokens: 1\n"));
}

TEST_F(DriverTest, LexicalErrorsDoNotStopTheBuild) {
    directory.write("work/app.vorla", "'");
    EXPECT_EQ(run({"app.vorla"}), 0);
    EXPECT_TRUE(printed("=== Build complete! ===\n"));
}

// ---- Libraries ----

TEST_F(DriverTest, LibrariesOfTheProjectAreFoundFromTheWorkingDirectory) {
    directory.write("work/orlib/math.orlib", "int f() {}");
    EXPECT_EQ(run({"app.vorla", "--math", "--math"}), 0);
    EXPECT_TRUE(printed("  -> orlib/math.orlib ... Loading: " + path("work/orlib/math.orlib") +
                        "\n  function: f\nOK\n  -> orlib/math.orlib ... OK\n"
                        "ReplacementTable (1 functions):\n  f() -> int\n\n[5/7]"));
}

TEST_F(DriverTest, LibrariesBesideTheCompilerComeLast) {
    directory.write("install/orlib/math.orlib", "int installed() {}");
    EXPECT_EQ(run({"app.vorla", "--math"}), 0);
    EXPECT_TRUE(printed("Loading: " + path("install/orlib/math.orlib") + "\n"));
    directory.write("work/math.orlib", "int own() {}");
    EXPECT_EQ(run({"app.vorla", "--math"}), 0);
    EXPECT_TRUE(printed("Loading: " + path("work/math.orlib") + "\n"));
    EXPECT_FALSE(printed("installed"));
}

TEST_F(DriverTest, AFileNamedOrlibBesideTheCompilerIsNoSearchPath) {
    directory.write("install/orlib", "");
    EXPECT_EQ(run({"app.vorla", "--math"}), 0);
    EXPECT_TRUE(printed("Warning: math.orlib not found\nOK\n"));
}

TEST_F(DriverTest, ImportsAreLoadedInSourceOrder) {
    directory.write("work/app.vorla", "import \"sub/b.orlib\"\nimport a\n");
    directory.write("work/orlib/a.orlib", "int f() { a }");
    directory.write("work/orlib/b.orlib", "int f() { b }");
    EXPECT_EQ(run({"app.vorla"}), 0);
    const std::size_t first = console.text().find("  -> orlib/b.orlib ... ");
    const std::size_t second = console.text().find("  -> orlib/a.orlib ... ");
    EXPECT_LT(first, second);
    EXPECT_NE(second, std::string::npos);
}

TEST_F(DriverTest, TheStandardSetOfOptionAndImportIsPrintedOnce) {
    directory.write("work/app.vorla", "import \"normal\"");
    directory.write("work/orlib/normal.orlib", "int f() {}");
    EXPECT_EQ(run({"app.vorla", "--normal"}), 0);
    const std::string line = "  -> normal (standard set) ... OK\n";
    const std::size_t first = console.text().find(line);
    ASSERT_NE(first, std::string::npos);
    EXPECT_EQ(console.text().find(line, first + 1), std::string::npos);
}

TEST_F(DriverTest, LibraryFunctionsThatAreCalledReachTheProgram) {
    directory.write("work/orlib/math.orlib", "int fortyTwo() { return 42; }");
    directory.write("work/app.vorla", "vorla Main { button b { on click { fortyTwo(); } } }");
    EXPECT_EQ(run({"app.vorla", "--math", "--keep-cpp"}), 0);
    EXPECT_NE(directory.read("work/code_generation/import.hpp").find("int fortyTwo() {\n"),
              std::string::npos);
}

// ---- Failures ----

TEST_F(DriverTest, ASourceThatIsNotThereCannotBeOpened) {
    EXPECT_EQ(run({"absent.vorla"}), 1);
    EXPECT_EQ(console.text(), banner + "[1/7] Reading source file: absent.vorla\n"
                                       "Error: Cannot open 'absent.vorla'\n");
}

TEST_F(DriverTest, ADirectoryCannotBeOpenedAsSource) {
    EXPECT_EQ(run({"../work"}), 1);
    EXPECT_EQ(console.text(), banner + "[1/7] Reading source file: ../work\n"
                                       "Error: Cannot open '../work'\n");
}

TEST_F(DriverTest, ASyntaxErrorLeavesTheDriverUncaught) {
    directory.write("work/app.vorla", "vorla {");
    EXPECT_THROW(run({"app.vorla"}), std::runtime_error);
    EXPECT_TRUE(endsWith("[3/6] Parsing...\n"
                         "[PARSER ERROR] Expected 44, got 69 at line 1: Expected vorla name\n"));
    EXPECT_TRUE(platform.commands.empty());
}

TEST_F(DriverTest, AParserWithoutATreeIsAnError) {
    EXPECT_FALSE(Driver::acceptTree(nullptr, console));
    EXPECT_EQ(console.text(), "Error: Parse failed \xE2\x80\x94 AST is null.\n");
}

TEST_F(DriverTest, ATreeIsAccepted) {
    const AST program;
    EXPECT_TRUE(Driver::acceptTree(&program, console));
    EXPECT_EQ(console.text(), "  AST OK\n");
}

TEST_F(DriverTest, AGeneratorThatThrowsIsReportedWithItsMessage) {
    const auto generation = [] { throw std::invalid_argument("bad colour"); };
    EXPECT_FALSE(Driver::runGeneration(generation, console));
    EXPECT_EQ(console.text(), "Error: Code generation failed: bad colour\n");
}

TEST_F(DriverTest, AGeneratorThatThrowsAnythingElseIsReportedToo) {
    EXPECT_FALSE(Driver::runGeneration([] { throw 5; }, console));
    EXPECT_EQ(console.text(), "Error: Unknown exception during code generation\n");
}

TEST_F(DriverTest, AFailedGenerationWritesNoFile) {
    directory.write("work/app.vorla", "vorla Main { text t { color = \"#12345G\"; } }");
    directory.write("work/code_generation/main.cpp", "old");
    EXPECT_EQ(run({"app.vorla"}), 1);
    EXPECT_TRUE(printed("  debugMode = false\nError: Code generation failed: "));
    EXPECT_EQ(directory.read("work/code_generation/main.cpp"), "old");
    EXPECT_TRUE(platform.commands.empty());
}

TEST_F(DriverTest, AFileInPlaceOfTheOutputDirectoryCannotBeWrittenInto) {
    directory.write("work/code_generation", "in the way");
    EXPECT_EQ(run({"app.vorla"}), 1);
    EXPECT_TRUE(endsWith("  debugMode = false\nError: Cannot write '" +
                         path("work/code_generation/main.cpp") + "'\n"));
    EXPECT_EQ(directory.read("work/code_generation"), "in the way");
}

TEST_F(DriverTest, ADirectoryInPlaceOfTheSecondFileLeavesTheFirst) {
    directory.write("work/code_generation/import.hpp/in the way", "");
    EXPECT_EQ(run({"app.vorla"}), 1);
    EXPECT_TRUE(
        endsWith("Error: Cannot write '" + path("work/code_generation/import.hpp") + "'\n"));
    EXPECT_TRUE(directory.has("work/code_generation/main.cpp"));
    EXPECT_TRUE(platform.commands.empty());
}

TEST_F(DriverTest, AFullDiskIsAFailureToWrite) {
    fs::create_directory(directory.path() / "work/code_generation");
    fs::create_symlink("/dev/full", directory.path() / "work/code_generation/import.hpp");
    EXPECT_EQ(run({"app.vorla"}), 1);
    EXPECT_TRUE(
        endsWith("Error: Cannot write '" + path("work/code_generation/import.hpp") + "'\n"));
    EXPECT_TRUE(platform.commands.empty());
}

TEST_F(DriverTest, ASourceNamedLikeItsExecutableIsNotOverwritten) {
    directory.write("work/app.exe", "vorla Main { }");
    EXPECT_EQ(run({"app.exe"}), 1);
    EXPECT_TRUE(endsWith("[6/6] Compiling with g++...\nError: Cannot write '" +
                         path("work/app.exe") + "'\n"));
    EXPECT_EQ(directory.read("work/app.exe"), "vorla Main { }");
    EXPECT_TRUE(directory.has("work/code_generation/main.cpp"));
    EXPECT_TRUE(directory.has("work/code_generation/import.hpp"));
    EXPECT_TRUE(platform.commands.empty());
}

TEST_F(DriverTest, ASourceThatAnOutputFileLeadsToIsNotOverwritten) {
    directory.write("work/main.cpp", "vorla Main { }");
    fs::create_directory_symlink(".", directory.path() / "work/code_generation");
    EXPECT_EQ(run({"main.cpp"}), 1);
    EXPECT_EQ(directory.read("work/main.cpp"), "vorla Main { }");
    EXPECT_TRUE(endsWith("Error: Cannot write '" + path("work/code_generation/main.cpp") + "'\n"));
}

TEST_F(DriverTest, WithoutGxxTheFilesStay) {
    platform.executable = path("elsewhere/bin/orvanec");
    EXPECT_EQ(run({"app.vorla"}), 1);
    EXPECT_TRUE(endsWith("[6/6] Compiling with g++...\n"
                         "Error: g++ not found in any known location.\n"));
    EXPECT_TRUE(directory.has("work/code_generation/main.cpp"));
    EXPECT_TRUE(directory.has("work/code_generation/import.hpp"));
}

TEST_F(DriverTest, AGxxThatDoesNotStartIsReportedBehindItsCommand) {
    platform.exitCode = std::nullopt;
    EXPECT_EQ(run({"app.vorla"}), 1);
    EXPECT_TRUE(
        endsWith("  Command: " + platform.commands.at(0) + "\nError: Failed to start compiler.\n"));
    EXPECT_TRUE(directory.has("work/code_generation/main.cpp"));
}

TEST_F(DriverTest, AGxxThatFailsIsReportedWithItsCodeAndTheFilesStay) {
    platform.exitCode = 3;
    EXPECT_EQ(run({"app.vorla"}), 1);
    EXPECT_TRUE(endsWith("\nError: Compilation failed (exit code 3).\n"));
    EXPECT_TRUE(directory.has("work/code_generation/main.cpp"));
    EXPECT_TRUE(directory.has("work/code_generation/import.hpp"));
}

TEST_F(DriverTest, AnExitCodeIsPrintedUnsigned) {
    platform.exitCode = 0xC0000005UL;
    EXPECT_EQ(run({"app.vorla"}), 1);
    EXPECT_TRUE(endsWith("\nError: Compilation failed (exit code 3221225477).\n"));
}

TEST_F(DriverTest, FilesThatCannotBeDeletedAreNoError) {
    platform.onRun = [&] { fs::remove(directory.path() / "work/code_generation/main.cpp"); };
    EXPECT_EQ(run({"app.vorla"}), 0);
    EXPECT_TRUE(endsWith("  Compiled OK\n  Output: " + path("work/app.exe") +
                         "\n\n=== Build complete! ===\n"));
}

TEST_F(DriverTest, APathOf260CharactersMakesItLookInTheWorkingDirectory) {
    const std::string deep = path("install") + "/" + std::string(260, 'd') + "/orvanec";
    platform.executable = deep.substr(0, Platform::executablePathLimit);
    directory.write("work/g++.exe", "");
    EXPECT_EQ(run({"app.vorla"}), 0);
    EXPECT_TRUE(platform.commands.at(0).starts_with("\"" + path("work/g++.exe") + "\""));
}

TEST_F(DriverTest, AResourceObjectIsPassedToGxx) {
    directory.write("install/resource.o", "");
    EXPECT_EQ(run({"app.vorla"}), 0);
    EXPECT_NE(
        platform.commands.at(0).find("main.cpp\" \"" + path("install/resource.o") + "\" -o \""),
        std::string::npos);
}

TEST_F(DriverTest, OneDriverBuildsSeveralTimes) {
    directory.write("work/second.vorla", "vorla Two { }");
    Driver driver(console, platform);
    const WorkingDirectory inside(directory.path() / "work");
    EXPECT_EQ(driver.run({"app.vorla"}), 0);
    EXPECT_EQ(driver.run({"second.vorla"}), 0);
    EXPECT_EQ(platform.commands.size(), 2u);
}

} // namespace
