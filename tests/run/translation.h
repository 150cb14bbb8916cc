// A source text through lexer, parser and code generator in this process, for tests that compile
// the result themselves.
//
//     const ReplacementTable table = loadLibraries("orlib", {"math.orlib"}, console);
//     const Translation program = translate("t.script { void f() { print(1); } }", table, console);
#pragma once

#include "frontend/console.h"
#include "libraries/replacement_table.h"

#include <filesystem>
#include <string>
#include <vector>

struct Translation {
    std::string mainText;   // main.cpp
    std::string importText; // import.hpp
};

// Throws what the parser throws.
Translation translate(const std::string& source, const Orvane::ReplacementTable& table,
                      Orvane::Console& console);

// The library files of a folder, by name.
std::vector<std::string> libraryFiles(const std::filesystem::path& folder);

// What the named files of the folder define, and the files that they import.
Orvane::ReplacementTable loadLibraries(const std::filesystem::path& folder,
                                       const std::vector<std::string>& files,
                                       Orvane::Console& console);
