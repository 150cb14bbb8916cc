#include "driver/options.h"

#include <gtest/gtest.h>

using namespace Orvane;

namespace {

using Texts = std::vector<std::string>;

TEST(Options, OneSourceFileIsEnough) {
    const CommandLine line = scanArguments({"app.vorla"});
    EXPECT_EQ(line.request, Request::Build);
    EXPECT_EQ(line.options.sourceFile, "app.vorla");
    EXPECT_FALSE(line.options.normal);
    EXPECT_FALSE(line.options.debug);
    EXPECT_FALSE(line.options.keepCpp);
    EXPECT_EQ(line.options.libraries, Texts{});
}

TEST(Options, FlagsMayStandBeforeAndBehindTheSource) {
    const CommandLine line = scanArguments({"--debug", "--normal", "app.vorla", "--keep-cpp"});
    EXPECT_EQ(line.request, Request::Build);
    EXPECT_EQ(line.options.sourceFile, "app.vorla");
    EXPECT_TRUE(line.options.normal);
    EXPECT_TRUE(line.options.debug);
    EXPECT_TRUE(line.options.keepCpp);
}

TEST(Options, TheStandardSetIsAFlagAndNoLibraryName) {
    const CommandLine line = scanArguments({"--normal", "a", "--normal"});
    EXPECT_TRUE(line.options.normal);
    EXPECT_EQ(line.options.libraries, Texts{});
}

TEST(Options, LibrariesAreKeptInOrderWithDuplicates) {
    const CommandLine line = scanArguments({"--math", "a", "--io", "--math"});
    EXPECT_EQ(line.options.libraries, (Texts{"math", "io", "math"}));
}

TEST(Options, AllKnownLibrariesAreAccepted) {
    const Texts names = {"math",  "math2",  "string", "text",   "array",   "container",
                         "list",  "tree",   "dict",   "set",    "queue",   "stack",
                         "io",    "file",   "win32",  "color",  "time",    "json",
                         "regex", "crypto", "http",   "system", "numeric", "log"};
    ASSERT_EQ(names.size(), 24u);
    Texts arguments = {"a.vorla"};
    for (const std::string& name : names) arguments.push_back("--" + name);
    const CommandLine line = scanArguments(arguments);
    EXPECT_EQ(line.request, Request::Build);
    EXPECT_EQ(line.options.libraries, names);
}

TEST(Options, NoArgumentsLackASource) {
    EXPECT_EQ(scanArguments({}).request, Request::RejectMissingSource);
    EXPECT_EQ(scanArguments({"--debug", "--math"}).request, Request::RejectMissingSource);
}

TEST(Options, AnEmptyArgumentIsNoSource) {
    EXPECT_EQ(scanArguments({""}).request, Request::RejectMissingSource);
    const CommandLine line = scanArguments({"", "app.vorla"});
    EXPECT_EQ(line.request, Request::Build);
    EXPECT_EQ(line.options.sourceFile, "app.vorla");
}

TEST(Options, ASecondSourceIsAnUnknownArgument) {
    const CommandLine line = scanArguments({"a.vorla", "b.vorla", "c.vorla"});
    EXPECT_EQ(line.request, Request::RejectArgument);
    EXPECT_EQ(line.unknownArgument, "b.vorla");
}

TEST(Options, AnUnknownOptionIsNamedWhole) {
    const CommandLine line = scanArguments({"a.vorla", "--foo", "--bar"});
    EXPECT_EQ(line.request, Request::RejectArgument);
    EXPECT_EQ(line.unknownArgument, "--foo");
}

TEST(Options, TwoDashesAloneAreUnknown) {
    const CommandLine line = scanArguments({"a.vorla", "--"});
    EXPECT_EQ(line.request, Request::RejectArgument);
    EXPECT_EQ(line.unknownArgument, "--");
}

TEST(Options, NamesMustMatchExactly) {
    for (const char* argument :
         {"--Math", "--math ", "--math.orlib", "---math", "--mat", "--DEBUG"})
        EXPECT_EQ(scanArguments({"a", argument}).unknownArgument, argument);
}

TEST(Options, OneDashMakesASourceName) {
    EXPECT_EQ(scanArguments({"-x"}).options.sourceFile, "-x");
    EXPECT_EQ(scanArguments({"-"}).options.sourceFile, "-");
    EXPECT_EQ(scanArguments({"a", "-x"}).unknownArgument, "-x");
}

TEST(Options, HelpEndsTheScan) {
    EXPECT_EQ(scanArguments({"--help"}).request, Request::ShowHelp);
    EXPECT_EQ(scanArguments({"--help", "--foo"}).request, Request::ShowHelp);
    EXPECT_EQ(scanArguments({"a.vorla", "--debug", "--help"}).request, Request::ShowHelp);
}

TEST(Options, AnErrorBeforeHelpWins) {
    const CommandLine line = scanArguments({"--foo", "--help"});
    EXPECT_EQ(line.request, Request::RejectArgument);
    EXPECT_EQ(line.unknownArgument, "--foo");
}

TEST(Options, UsageListsEveryOption) {
    RecordingConsole console;
    printUsage(console);
    EXPECT_EQ(
        console.text(),
        "Orvane Compiler v6.0.0\n"
        "Usage: orvanec <source.vorla> [options...]\n"
        "Options:\n"
        "  --normal       Load all standard libraries at once (equivalent to --string --array --io "
        "--math --win32)\n"
        "  --<libname>    Load orlib/<libname>.orlib individually (repeatable, e.g. --math "
        "--debug)\n"
        "  --debug        Generate debug info in the output C++ code (breakpoints, logging)\n"
        "  --keep-cpp     Keep generated C++ intermediate files after compilation\n"
        "  --help         Show this help message\n");
}

} // namespace
