// Fixed texts that every generated import.hpp holds, kept once in tests/golden/shared, so that an
// expectation shows what is its own. A line
//
//     @@include runtime_value.txt
//
// in an expected import.hpp stands for the whole of that file.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace Orvane::Golden {

class SharedTexts {
public:
    explicit SharedTexts(const std::filesystem::path& folder_) : folder(folder_) {}

    // The stored form with its include lines replaced. An unknown name throws std::runtime_error.
    std::string expand(const std::string& stored) const;

    // The stored form of a complete text; a fixed text that has changed is written to its file.
    std::string collapse(const std::string& complete) const;

    // Files in the folder that no include line can name.
    std::vector<std::filesystem::path> findStrayFiles() const;

private:
    std::string includedText(const std::string& line) const;

    std::filesystem::path folder;
};

} // namespace Orvane::Golden
