// Files and paths as the stages see them: names are UTF-8 text on every system.
//
// Used by the library loader and the driver. Nothing here throws for a name that the system does
// not take (too long, a zero byte inside, no valid UTF-8): such a name simply has no file.
//
//     std::optional<std::string> source = readTextFile(pathOf("app.vorla"));
#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

namespace Orvane {

// The path that a text names; empty when the text cannot name a file.
std::filesystem::path pathOf(std::string_view text);

// The full text of a path, with the separators that it has.
std::string textOf(const std::filesystem::path& path);

// Whether anything, a directory included, is there.
bool pathExists(const std::filesystem::path& path);

// Whether both paths lead to one and the same file; false when either has no file.
bool isSameFile(const std::filesystem::path& first, const std::filesystem::path& second);

// Relative to the working directory, without "." and ".." and doubled separators. The text decides,
// not the disk: symbolic links are not followed.
std::filesystem::path absolutePath(const std::filesystem::path& path);

// The working directory; empty when it no longer exists.
std::filesystem::path workingDirectory();

// The whole file in text mode: bytes as they are, but for the line ends of Windows. None when it
// cannot be opened or read, and for a directory or device.
std::optional<std::string> readTextFile(const std::filesystem::path& path);

} // namespace Orvane
