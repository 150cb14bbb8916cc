// What a case gives and what it is expected to give: file names and contents. An expectation is the
// case's folder expected/; a name in one of them only is a difference too.
//
//     stdout       everything printed
//     main.cpp     the generated files with their byte-order mark; missing when none were written
//     import.hpp   (as SharedTexts stores it)
//     status       the exit status, of fail_ cases whose run ends by itself
//     exception    the message, of fail_ cases whose run ends with an exception
#pragma once

#include "shared_texts.h"

#include <filesystem>
#include <map>
#include <string>

namespace Orvane::Golden {

using Outcome = std::map<std::string, std::string>;

Outcome readExpectation(const std::filesystem::path& folder, const SharedTexts& shared);

// Makes the folder hold this outcome and nothing else; files that are right are not touched.
void writeExpectation(const std::filesystem::path& folder, const Outcome& outcome,
                      const SharedTexts& shared);

// For a reader: one part per file that differs, with a unified diff; empty when all is equal.
std::string describeDifferences(const Outcome& expected, const Outcome& actual);

} // namespace Orvane::Golden
