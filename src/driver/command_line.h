// Command line text to arguments, for systems that start a program with a list of them.
//
//     splitCommandLine("\"/my tools/g++.exe\" -g");   // {"/my tools/g++.exe", "-g"}
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace Orvane {

// Cuts at blanks outside double quotes and drops the quotes. There are no escapes: a backslash is
// part of a path, and a quote inside a path ends or begins a quoted stretch like any other.
std::vector<std::string> splitCommandLine(std::string_view commandLine);

} // namespace Orvane
