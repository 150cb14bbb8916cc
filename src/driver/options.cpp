#include "driver/options.h"

#include <algorithm>
#include <array>
#include <string_view>

namespace Orvane {

namespace {

// Words of the command line itself; no library is ever asked for by one of them.
constexpr std::array<std::string_view, 4> reservedNames = {"normal", "debug", "keep-cpp", "help"};

// The libraries that can be named. A file that merely lies in a search path cannot.
constexpr std::array<std::string_view, 25> knownLibraries = {
    "normal", "math",  "math2",  "string", "text",   "array",   "container", "list",  "tree",
    "dict",   "set",   "queue",  "stack",  "io",     "file",    "win32",     "color", "time",
    "json",   "regex", "crypto", "http",   "system", "numeric", "log"};

template <std::size_t size>
bool contains(const std::array<std::string_view, size>& names, std::string_view name) {
    return std::find(names.begin(), names.end(), name) != names.end();
}

// True for the three options that are switched on by their presence.
bool setFlag(std::string_view argument, Options& options) {
    if (argument == "--normal") return options.normal = true;
    if (argument == "--debug") return options.debug = true;
    if (argument == "--keep-cpp") return options.keepCpp = true;
    return false;
}

// Whether the argument has a place: the source file or a known name behind two dashes.
bool takeArgument(const std::string& argument, Options& options) {
    if (!argument.starts_with("--")) {
        if (!options.sourceFile.empty()) return false;
        options.sourceFile = argument;
        return true;
    }
    std::string name = argument.substr(2);
    if (contains(reservedNames, name)) return true;
    if (!contains(knownLibraries, name)) return false;
    options.libraries.push_back(std::move(name));
    return true;
}

} // namespace

CommandLine scanArguments(const std::vector<std::string>& arguments) {
    CommandLine line;
    for (const std::string& argument : arguments) {
        if (setFlag(argument, line.options)) continue;
        if (argument == "--help") return {Request::ShowHelp, {}, {}};
        if (!takeArgument(argument, line.options)) return {Request::RejectArgument, {}, argument};
    }
    if (line.options.sourceFile.empty()) line.request = Request::RejectMissingSource;
    return line;
}

std::span<const std::string_view> libraryNames() { return knownLibraries; }

void printUsage(Console& console) {
    console.print("Orvane Compiler v%s\n", compilerVersion);
    console.print("Usage: orvanec <source.vorla> [options...]\n");
    console.print("Options:\n");
    console.print("  --normal       Load all standard libraries at once (equivalent to --string "
                  "--array --io --math --win32)\n");
    console.print("  --<libname>    Load orlib/<libname>.orlib individually (repeatable, e.g. "
                  "--math --debug)\n");
    console.print("  --debug        Generate debug info in the output C++ code (breakpoints, "
                  "logging)\n");
    console.print("  --keep-cpp     Keep generated C++ intermediate files after compilation\n");
    console.print("  --help         Show this help message\n");
}

} // namespace Orvane
