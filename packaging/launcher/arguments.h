// Command lines as Windows programs read them, and the one command that the launcher knows.
//
//     std::vector<std::wstring> args = splitArguments(L"g++.exe -o \"a b.exe\"");
//     // g++.exe, -o, a b.exe
//
// Nothing here calls Windows, so the tests run on every system.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

namespace Orvane {

using Arguments = std::vector<std::wstring>;

// The arguments of a command line, the program's name first.
Arguments splitArguments(const std::wstring& commandLine);

// What stands behind the program's name, untouched: the blanks in front of the first argument,
// quotes and backslashes included.
std::wstring textBehindProgram(const std::wstring& commandLine);

// A text that splitArguments reads as exactly this argument. Everything but plain names and options
// is put in quotes, which also keeps * and ? from being taken as patterns for file names.
std::wstring quoteArgument(const std::wstring& argument);

// All arguments, quoted where needed, with one blank between two.
std::wstring joinArguments(const Arguments& arguments);

// Whether one of the options asks for debug information.
bool asksForSymbols(const Arguments& arguments);

// The place of the executable's path in the arguments (which begin with the program's name) when
// they are the compiler's command for a program: its fixed options, one main.cpp, objects,
// libraries, the three header folders of the installation whose tools folder is given, and nothing
// else.
std::optional<std::size_t> findProgramOutput(const Arguments& arguments, const std::wstring& tools);

} // namespace Orvane
