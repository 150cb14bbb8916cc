#include "libraries/orlib_bootloader.h"

#include "temporary_directory.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <sys/stat.h>

using namespace Orvane;

namespace {

// A loader that works in a directory of its own.
class Bootloader : public testing::Test {
protected:
    std::string path(std::string_view name) const { return directory.text(name); }
    std::string functions() const {
        std::string names;
        for (const auto& [name, entries] : table.entries())
            for (const FunctionEntry& entry : entries) names += name + ":" + entry.body + " ";
        return names;
    }

    TemporaryDirectory directory;
    WorkingDirectory inside{directory.path()};
    RecordingConsole console;
    ReplacementTable table;
    OrlibBootloader loader{table, console};
};

// ---- Finding ----

TEST_F(Bootloader, FindsALibraryUnderOrlibBeforeLib) {
    directory.write("orlib/ui.orlib", "int a() {}");
    directory.write("Lib/ui.orlib", "int b() {}");
    EXPECT_EQ(loader.findFile("ui"), "./orlib/ui.orlib");
    loader.loadByName("ui");
    EXPECT_EQ(functions(), "a: ");
}

TEST_F(Bootloader, SearchesTheFivePrefixesInOrder) {
    directory.write("work/here", "");
    const WorkingDirectory deeper(directory.path() / "work");
    directory.write("work/ui.orlib", "x");
    EXPECT_EQ(loader.findFile("ui"), "./ui.orlib");
    directory.write("Lib/ui.orlib", "x");
    EXPECT_EQ(loader.findFile("ui"), "../Lib/ui.orlib");
    directory.write("orlib/ui.orlib", "x");
    EXPECT_EQ(loader.findFile("ui"), "../orlib/ui.orlib");
    directory.write("work/Lib/ui.orlib", "x");
    EXPECT_EQ(loader.findFile("ui"), "./Lib/ui.orlib");
    directory.write("work/orlib/ui.orlib", "x");
    EXPECT_EQ(loader.findFile("ui"), "./orlib/ui.orlib");
}

TEST_F(Bootloader, TheNameAsItIsComesBeforeTheNameWithTheExtension) {
    directory.write("orlib/ui.orlib", "int a() {}");
    directory.write("orlib/ui", "int b() {}");
    EXPECT_EQ(loader.findFile("ui"), "./orlib/ui");
}

TEST_F(Bootloader, AnEarlierPrefixWinsOverALaterExactName) {
    directory.write("orlib/ui.orlib", "int a() {}");
    directory.write("Lib/ui", "int b() {}");
    EXPECT_EQ(loader.findFile("ui"), "./orlib/ui.orlib");
}

TEST_F(Bootloader, ANameWithTheExtensionIsLookedUpOnlyAsItIs) {
    directory.write("orlib/ui.orlib.orlib", "x");
    EXPECT_EQ(loader.findFile("ui.orlib"), "");
    directory.write("Lib/ui.orlib", "x");
    EXPECT_EQ(loader.findFile("ui.orlib"), "./Lib/ui.orlib");
    directory.write("orlib/a.orlib.b.orlib", "x");
    EXPECT_EQ(loader.findFile("a.orlib.b"), "");
}

TEST_F(Bootloader, AddedSearchPathsComeLast) {
    directory.write("more/ui.orlib", "x");
    EXPECT_EQ(loader.findFile("ui"), "");
    loader.addSearchPath(path("more/"));
    EXPECT_EQ(loader.findFile("ui"), path("more/ui.orlib"));
    directory.write("ui.orlib", "x");
    EXPECT_EQ(loader.findFile("ui"), "./ui.orlib");
}

TEST_F(Bootloader, NothingIsFoundForALongNameOrOneWithAZeroByte) {
    directory.write("orlib/ui", "x");
    EXPECT_EQ(loader.findFile(std::string(5000, 'x')), "");
    EXPECT_EQ(loader.findFile(std::string("ui\0x", 4)), "");
}

// ---- Loading by name ----

TEST_F(Bootloader, AMissingLibraryIsAWarning) {
    loader.loadByName("nothing");
    EXPECT_EQ(console.text(), "Warning: nothing.orlib not found\n");
    EXPECT_EQ(table.size(), 0u);
}

TEST_F(Bootloader, AMissingStandardSetIsAWarningAndLeavesTheTableEmpty) {
    loader.loadNormal();
    EXPECT_EQ(console.text(), "Warning: normal.orlib not found\n");
    EXPECT_EQ(table.size(), 0u);
}

TEST_F(Bootloader, TheStandardSetIsNormalOrlibBeforeNormal) {
    directory.write("orlib/normal", "int a() {}");
    directory.write("Lib/normal.orlib", "int b() {}");
    loader.loadNormal();
    EXPECT_EQ(functions(), "b: ");
}

TEST_F(Bootloader, TheStandardSetMayBeAFileWithoutExtension) {
    directory.write("Lib/normal", "int a() {}");
    loader.loadNormal();
    EXPECT_EQ(console.text(), "Loading: " + path("Lib/normal") + "\n  function: a\n");
}

TEST_F(Bootloader, LoadPrintsTheFileAndItsFunctions) {
    directory.write("orlib/ui.orlib",
                    "int one() { return 1; }\nvalue two(value a) { return a; }\n");
    loader.loadByName("ui");
    EXPECT_EQ(console.text(),
              "Loading: " + path("orlib/ui.orlib") + "\n  function: one\n  function: two\n");
    EXPECT_EQ(table.size(), 2u);
    ASSERT_NE(table.get("two"), nullptr);
    EXPECT_EQ(table.get("two")->paramTypes, std::vector<std::string>{"value"});
    EXPECT_EQ(table.get("two")->body, "return a;");
}

TEST_F(Bootloader, AFileIsLoadedOnceHoweverItIsNamed) {
    directory.write("orlib/ui.orlib", "int a() {}");
    loader.loadByName("ui");
    console.clear();
    loader.loadByName("ui");
    loader.loadByName("ui.orlib");
    loader.load(path("orlib/../orlib/./ui.orlib"));
    EXPECT_EQ(console.text(), "");
    EXPECT_EQ(table.size(), 1u);
}

TEST_F(Bootloader, LoadingAPathWithNothingThereIsAnError) {
    loader.load("absent.orlib");
    EXPECT_EQ(console.text(), "Error: File not found absent.orlib\n");
}

TEST_F(Bootloader, TheTableIsTheOneGiven) { EXPECT_EQ(&loader.getTable(), &table); }

TEST_F(Bootloader, TrimTakesBlanksFromBothEnds) {
    EXPECT_EQ(OrlibBootloader::trim("\t a \n"), "a");
}

// ---- Files that cannot be read ----

TEST_F(Bootloader, AnEmptyFileIsAWarning) {
    directory.write("orlib/ui.orlib", "");
    loader.loadByName("ui");
    EXPECT_EQ(console.text(), "Loading: " + path("orlib/ui.orlib") + "\nWarning: Cannot read " +
                                  path("orlib/ui.orlib") + "\n");
}

TEST_F(Bootloader, ABlankFileIsNoWarning) {
    directory.write("orlib/ui.orlib", "\n");
    loader.loadByName("ui");
    EXPECT_EQ(console.text(), "Loading: " + path("orlib/ui.orlib") + "\n");
}

TEST_F(Bootloader, ADirectoryInPlaceOfALibraryCannotBeRead) {
    std::filesystem::create_directories("orlib/ui");
    directory.write("orlib/ui.orlib", "int a() {}");
    loader.loadByName("ui");
    EXPECT_EQ(console.text(),
              "Loading: " + path("orlib/ui") + "\nWarning: Cannot read " + path("orlib/ui") + "\n");
}

TEST_F(Bootloader, AnEmptyNameLeadsToADirectory) {
    loader.loadByName("");
    EXPECT_EQ(console.text(), "Loading: " + path("") + "\nWarning: Cannot read " + path("") + "\n");
}

TEST_F(Bootloader, APipeAndADeviceCannotBeRead) {
    std::filesystem::create_directories("orlib");
    ASSERT_EQ(mkfifo("orlib/pipe.orlib", 0600), 0);
    loader.loadByName("pipe");
    EXPECT_NE(console.text().find("Warning: Cannot read " + path("orlib/pipe.orlib") + "\n"),
              std::string::npos);
    EXPECT_EQ(OrlibBootloader::readFile("/dev/zero"), "");
}

TEST_F(Bootloader, ReadFileGivesTheWholeText) {
    directory.write("a", std::string("x\r\n\0y", 5));
    EXPECT_EQ(OrlibBootloader::readFile("a"), std::string("x\r\n\0y", 5));
    EXPECT_EQ(OrlibBootloader::readFile("absent"), "");
}

TEST_F(Bootloader, AFileThatCannotBeReadIsNotTriedAgain) {
    directory.write("orlib/ui.orlib", "");
    loader.loadByName("ui");
    console.clear();
    loader.loadByName("ui");
    EXPECT_EQ(console.text(), "");
}

// ---- Imports ----

TEST_F(Bootloader, AnImportedFileIsLoadedBeforeTheRestOfTheFile) {
    directory.write("orlib/a.orlib", "int first() {}\nimport \"b.orlib\"\nint last() {}");
    directory.write("orlib/b.orlib", "int middle() {}");
    loader.loadByName("a");
    EXPECT_EQ(console.text(), "Loading: " + path("orlib/a.orlib") +
                                  "\n"
                                  "  function: first\n"
                                  "Loading: " +
                                  path("orlib/b.orlib") +
                                  "\n"
                                  "  function: middle\n"
                                  "  function: last\n");
}

TEST_F(Bootloader, AnOverloadOfAnImportedFileComesEarlier) {
    directory.write("orlib/a.orlib", "import \"b.orlib\" int f() { a }");
    directory.write("orlib/b.orlib", "int f() { b }");
    loader.loadByName("a");
    EXPECT_EQ(table.get("f")->body, "b");
    EXPECT_EQ(table.size(), 2u);
}

TEST_F(Bootloader, ImportsAreRelativeToTheImportingFile) {
    directory.write("orlib/a.orlib", "import \"sub/b.orlib\"");
    directory.write("orlib/sub/b.orlib", "import \"../c.orlib\" int b() {}");
    directory.write("orlib/c.orlib", "int c() {}");
    loader.loadByName("a");
    EXPECT_EQ(functions(), "b: c: ");
    EXPECT_NE(console.text().find("Loading: " + path("orlib/c.orlib") + "\n"), std::string::npos);
}

TEST_F(Bootloader, AnAbsoluteImportIsUsedAsItIs) {
    directory.write("elsewhere/b.orlib", "int b() {}");
    directory.write("orlib/a.orlib", "import \"" + path("elsewhere/b.orlib") + "\"");
    loader.loadByName("a");
    EXPECT_EQ(functions(), "b: ");
}

TEST_F(Bootloader, ResolvePathIsEmptyWhenNothingIsThere) {
    directory.write("orlib/a.orlib", "x");
    directory.write("orlib/b.orlib", "x");
    EXPECT_EQ(OrlibBootloader::resolvePath("b.orlib", path("orlib/a.orlib")),
              path("orlib/b.orlib"));
    EXPECT_EQ(OrlibBootloader::resolvePath("b", path("orlib/a.orlib")), "");
    EXPECT_EQ(OrlibBootloader::resolvePath(path("orlib/b.orlib"), "anywhere"),
              path("orlib/b.orlib"));
    EXPECT_EQ(OrlibBootloader::resolvePath("/absent/b.orlib", path("orlib/a.orlib")), "");
    EXPECT_EQ(OrlibBootloader::resolvePath(std::string("b.orlib\0x", 9), path("orlib/a.orlib")),
              "");
}

TEST_F(Bootloader, AMissingImportIsAWarningAndTheRestIsRead) {
    directory.write("orlib/a.orlib", "import \"gone.orlib\" int f() {}");
    loader.loadByName("a");
    EXPECT_EQ(console.text(), "Loading: " + path("orlib/a.orlib") +
                                  "\n"
                                  "Warning: import not found: gone.orlib (from " +
                                  path("orlib/a.orlib") +
                                  ")\n"
                                  "  function: f\n");
}

TEST_F(Bootloader, TwoFilesThatImportEachOtherAreLoadedOnceWithOneError) {
    directory.write("orlib/a.orlib", "import \"b.orlib\" int a() {}");
    directory.write("orlib/b.orlib", "import \"a.orlib\" int b() {}");
    loader.loadByName("a");
    EXPECT_EQ(console.text(), "Loading: " + path("orlib/a.orlib") +
                                  "\n"
                                  "Loading: " +
                                  path("orlib/b.orlib") +
                                  "\n"
                                  "Error: Circular import detected: " +
                                  path("orlib/a.orlib") +
                                  "\n"
                                  "  function: b\n"
                                  "  function: a\n");
    EXPECT_EQ(functions(), "a: b: ");
}

TEST_F(Bootloader, ALibraryThatImportsItselfIsACycle) {
    directory.write("orlib/a.orlib", "import \"./../orlib/a.orlib\" int a() {}");
    loader.loadByName("a");
    EXPECT_EQ(console.text(), "Loading: " + path("orlib/a.orlib") +
                                  "\n"
                                  "Error: Circular import detected: " +
                                  path("orlib/a.orlib") +
                                  "\n"
                                  "  function: a\n");
}

TEST_F(Bootloader, AFileThatTwoOthersImportIsReadOnce) {
    directory.write("orlib/a.orlib", "import \"b.orlib\" import \"c.orlib\"");
    directory.write("orlib/b.orlib", "import \"d.orlib\"");
    directory.write("orlib/c.orlib", "import \"d.orlib\"");
    directory.write("orlib/d.orlib", "int d() {}");
    loader.loadByName("a");
    EXPECT_EQ(functions(), "d: ");
    EXPECT_EQ(console.text().find("Circular"), std::string::npos);
}

TEST_F(Bootloader, UsingDirectivesAreRecordedAndDefineNothing) {
    directory.write("orlib/a.orlib", "using mode \"fast\"; import \"b.orlib\" using z \"1\";");
    directory.write("orlib/b.orlib", "using y \"2\";");
    loader.loadByName("a");
    ASSERT_EQ(loader.usings().size(), 3u);
    EXPECT_EQ(loader.usings()[0].name + "=" + loader.usings()[0].value, "mode=fast");
    EXPECT_EQ(loader.usings()[1].name + "=" + loader.usings()[1].value, "y=2");
    EXPECT_EQ(loader.usings()[2].name + "=" + loader.usings()[2].value, "z=1");
    EXPECT_EQ(table.size(), 0u);
}

TEST_F(Bootloader, NamesWithBlanksAndOtherLettersWork) {
    directory.write("orlib/größe 计.orlib", "import \"ä b.orlib\"");
    directory.write("orlib/ä b.orlib", "int f() {}");
    loader.loadByName("größe 计");
    EXPECT_EQ(console.text(), "Loading: " + path("orlib/größe 计.orlib") +
                                  "\nLoading: " + path("orlib/ä b.orlib") + "\n  function: f\n");
}

// ---- Size ----

// Each file imports the next one; the last defines a function.
void writeChain(const TemporaryDirectory& directory, int length) {
    for (int number = 0; number < length; ++number)
        directory.write("orlib/c" + std::to_string(number) + ".orlib",
                        "import \"c" + std::to_string(number + 1) + ".orlib\"");
    directory.write("orlib/c" + std::to_string(length) + ".orlib", "int deepest() {}");
}

TEST_F(Bootloader, AThousandImportsDeepWork) {
    writeChain(directory, 1000);
    loader.loadByName("c0");
    EXPECT_EQ(functions(), "deepest: ");
}

TEST_F(Bootloader, TwentyThousandImportsDeepWork) {
    writeChain(directory, 20'000);
    loader.loadByName("c0");
    EXPECT_EQ(functions(), "deepest: ");
}

TEST_F(Bootloader, TenThousandLibrariesWork) {
    for (int number = 0; number < 10'000; ++number) {
        const std::string name = "lib" + std::to_string(number);
        directory.write("orlib/" + name + ".orlib", "int " + name + "() {}");
        loader.loadByName(name);
    }
    EXPECT_EQ(table.size(), 10'000u);
}

// ---- Failures from outside ----

// Fails at the first message that holds a given text.
class FailingConsole final : public Console {
public:
    explicit FailingConsole(std::string trigger_) : trigger(std::move(trigger_)) {}
    void write(std::string_view text) override {
        if (!failed && text.find(trigger) != std::string_view::npos) {
            failed = true;
            throw std::runtime_error("console failed");
        }
        recorded += text;
    }
    std::string recorded;

private:
    std::string trigger;
    bool failed = false;
};

TEST_F(Bootloader, AnInterruptedFileIsNotTakenForACycleLater) {
    directory.write("orlib/a.orlib", "import \"b.orlib\" int a() {}");
    directory.write("orlib/b.orlib", "int b() {}");
    FailingConsole failing("function: b");
    OrlibBootloader interrupted(table, failing);
    EXPECT_THROW(interrupted.loadByName("a"), std::runtime_error);
    failing.recorded.clear();
    interrupted.loadByName("a");
    EXPECT_EQ(failing.recorded, "Loading: " + path("orlib/a.orlib") +
                                    "\n"
                                    "Loading: " +
                                    path("orlib/b.orlib") + "\n  function: b\n  function: a\n");
}

} // namespace
