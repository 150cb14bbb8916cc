// The command line: orvanec <source.vorla> [options...]
//
// Scanning prints nothing; it gives the driver a value that says what to do.
//
//     CommandLine line = scanArguments({"app.vorla", "--math", "--debug"});
//     // line.request == Request::Build, line.options.libraries == {"math"}
#pragma once

#include "frontend/console.h"

#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace Orvane {

inline constexpr const char* compilerVersion = "6.0.0";

struct Options {
    std::string sourceFile; // as given; never empty in a build
    bool normal = false;    // load the standard set
    bool debug = false;
    bool keepCpp = false;
    std::vector<std::string> libraries; // names in the order given, duplicates kept
};

enum class Request { Build, ShowHelp, RejectArgument, RejectMissingSource };

struct CommandLine {
    Request request = Request::Build;
    Options options;             // for Build
    std::string unknownArgument; // for RejectArgument
};

// The arguments without the program's name.
CommandLine scanArguments(const std::vector<std::string>& arguments);

void printUsage(Console& console);

// The libraries that the command line can name, each of which an installation has.
std::span<const std::string_view> libraryNames();

} // namespace Orvane
