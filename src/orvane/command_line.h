// The command line: orvane COMMAND [arguments].
//
// Reading it prints nothing and looks at no file; it gives a request or says what is wrong.
//
//     const CommandLineResult result = readCommandLine({"build", "app.vorla", "--normal"});
//     // result.request.command == Command::build, result.request.compilerOptions == {"--normal"}
#pragma once

#include "orvane/report.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace Orvane {

enum class Command { none, check, build, run, watch, create, doctor, explain };

struct CommandRequest {
    Command command = Command::none;
    bool help = false;    // of the command, or of the whole program
    bool version = false; // nothing else counts then
    bool verbose = false;
    bool check = true; // false for --no-check
    Format format = Format::text;
    std::string templateName = "form";
    std::vector<std::string> names;            // files, for `new` a name, for `explain` ids
    std::vector<std::string> compilerOptions;  // of orvanec
    std::vector<std::string> programArguments; // behind "--"
};

struct CommandLineResult {
    CommandRequest request;
    std::string mistake; // a sentence without a full stop; empty when the line is right
    std::string wayOut;  // a sentence, or empty
};

struct CommandName {
    Command command;
    std::string_view name;
    std::string_view summary; // for the list of commands
};
const std::vector<CommandName>& commandNames();

// The arguments without the program's name.
CommandLineResult readCommandLine(const std::vector<std::string>& arguments);

// The text for --help: of all commands, or of one.
std::string helpText(Command command);

} // namespace Orvane
