#include "orvane/command_line.h"

#include <gtest/gtest.h>

using namespace Orvane;

namespace {

using Words = std::vector<std::string>;

CommandRequest accepted(const Words& arguments) {
    const CommandLineResult result = readCommandLine(arguments);
    EXPECT_EQ(result.mistake, "");
    return result.request;
}

std::string refused(const Words& arguments) {
    const CommandLineResult result = readCommandLine(arguments);
    return result.mistake + "|" + result.wayOut;
}

} // namespace

TEST(OrvaneCommandLine, FilesAndOptionsMayStandInAnyOrder) {
    const CommandRequest request =
        accepted({"build", "--normal", "a.vorla", "--verbose", "b.vorla", "--math"});
    EXPECT_EQ(request.command, Command::build);
    EXPECT_EQ(request.names, (Words{"a.vorla", "b.vorla"}));
    EXPECT_EQ(request.compilerOptions, (Words{"--normal", "--math"}));
    EXPECT_TRUE(request.verbose);
    EXPECT_TRUE(request.check);
    EXPECT_FALSE(accepted({"build", "--no-check", "a.vorla"}).check);
}

TEST(OrvaneCommandLine, FormatTakesItsValueInBothWays) {
    EXPECT_EQ(accepted({"check", "--format=json", "a"}).format, Format::json);
    EXPECT_EQ(accepted({"check", "--format", "sarif", "a"}).format, Format::sarif);
    EXPECT_EQ(accepted({"check", "a"}).format, Format::text);
    EXPECT_EQ(refused({"check", "--format=xml", "a"}),
              "there is no format 'xml'|The formats are text, json and sarif.");
    EXPECT_EQ(refused({"check", "--format"}), "'--format' needs a value|");
}

TEST(OrvaneCommandLine, DashIsStandardInput) {
    EXPECT_EQ(accepted({"check", "-"}).names, Words{"-"});
}

TEST(OrvaneCommandLine, WhatStandsBehindTwoDashesIsForTheProgram) {
    const CommandRequest request = accepted({"run", "a.vorla", "--", "--normal", "x y"});
    EXPECT_EQ(request.names, Words{"a.vorla"});
    EXPECT_EQ(request.programArguments, (Words{"--normal", "x y"}));
    EXPECT_EQ(accepted({"check", "--", "-a.vorla"}).names, Words{"-a.vorla"});
}

TEST(OrvaneCommandLine, HelpOfACommandNeedsNothingElse) {
    EXPECT_TRUE(accepted({"build", "--help", "--nonsense"}).help);
    EXPECT_EQ(accepted({"help", "watch"}).command, Command::watch);
    EXPECT_EQ(accepted({"--help"}).command, Command::none);
    EXPECT_TRUE(accepted({"--version"}).version);
}

TEST(OrvaneCommandLine, UnknownWordsAreRefusedWithTheNearest) {
    EXPECT_EQ(refused({"biuld", "a"}), "there is no command 'biuld'|Did you mean 'build'?");
    EXPECT_EQ(refused({"app.vorla"}),
              "there is no command 'app.vorla'|To build it: orvane build app.vorla");
    EXPECT_EQ(refused({"build", "a", "--verbos"}),
              "unknown option '--verbos'|Did you mean '--verbose'?");
    EXPECT_EQ(refused({"build", "a", "--normel"}),
              "unknown option '--normel'|Did you mean '--normal'?");
    EXPECT_EQ(refused({"check", "a", "--debug"}), "unknown option '--debug'|");
    EXPECT_EQ(refused({"doctor", "--format=json"}), "unknown option '--format=json'|");
}

TEST(OrvaneCommandLine, NamesAreCounted) {
    EXPECT_EQ(refused({"check"}), "no file is given|");
    EXPECT_EQ(refused({"run", "a", "b"}),
              "one file is enough|Arguments for the program stand behind '--'.");
    EXPECT_EQ(refused({"new"}), "no name is given|");
    EXPECT_EQ(refused({"doctor", "a"}), "'doctor' takes no names|");
    EXPECT_TRUE(accepted({"explain"}).names.empty());
}

TEST(OrvaneCommandLine, TemplatesAreTheFourThatThereAre) {
    for (const char* name : {"form", "notepad", "list", "empty"})
        EXPECT_EQ(accepted({"new", "x", "--template", name}).templateName, name);
    EXPECT_EQ(refused({"new", "x", "--template=game"}),
              "there is no template 'game'|The templates are empty, form, list, notepad.");
}

TEST(OrvaneCommandLine, EveryCommandHasItsHelp) {
    for (const CommandName& command : commandNames()) {
        const std::string usage = "Usage: orvane " + std::string(command.name);
        EXPECT_NE(helpText(command.command).find(usage), std::string::npos) << command.name;
        EXPECT_NE(helpText(Command::none).find("\n  " + std::string(command.name) + " "),
                  std::string::npos);
    }
}
