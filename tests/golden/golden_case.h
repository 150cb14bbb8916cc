// The cases below tests/golden, as they lie on the disk.
//
//     tests/golden/<area>/<case>/
//         app.vorla            the source
//         options              one line of command-line options (may be missing)
//         *.orlib, orlib/      libraries (may be missing)
//         no-compile           why g++ cannot compile the result (may be missing)
//         expected/            the whole outcome; see outcome.h
//
// A case whose name begins with fail_ must end with a failure, every other one must not.
#pragma once

#include <filesystem>
#include <iosfwd>
#include <string>
#include <vector>

namespace Orvane::Golden {

struct GoldenCase {
    std::string name; // "<area>/<case>"
    std::filesystem::path folder;

    bool mustFail() const;
};

// How GoogleTest names a case in its messages.
std::ostream& operator<<(std::ostream& stream, const GoldenCase& golden);

// In the order of their names. Every folder in an area is a case.
std::vector<GoldenCase> findCases(const std::filesystem::path& root);

// Files and folders that the layout has no place for; what lies in expected/ is compared with the
// outcome and is not looked at here. The folder "shared" and the files in the root are left alone.
std::vector<std::filesystem::path> findStrayFiles(const std::filesystem::path& root);

std::string readFile(const std::filesystem::path& path); // throws std::runtime_error
void writeFile(const std::filesystem::path& path, const std::string& text);

} // namespace Orvane::Golden
