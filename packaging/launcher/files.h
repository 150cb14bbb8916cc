// The few file operations of the launcher, on paths of any length and in any language.
#pragma once

#include <string>

namespace Orvane {

// The full path of the running program.
std::wstring pathOfThisProgram();

// The folder that a path lies in, without a backslash at its end; empty for a bare name.
std::wstring folderOf(const std::wstring& path);

bool isFile(const std::wstring& path);
bool isFolder(const std::wstring& path);

// One line with the path, its size in bytes and the time of its last change, or with the word
// "none".
std::wstring formatFileState(const std::wstring& path);

// The bytes of a file; empty when it cannot be read.
std::string readFile(const std::wstring& path);

// False when anything of it did not reach the file.
bool writeFile(const std::wstring& path, const std::string& content);

// Puts a complete file into the place of another. A scanner that looks at new executables may hold
// one of them for a moment, so a refusal is tried again for a second.
bool replaceFile(const std::wstring& from, const std::wstring& to);

std::string utf8Of(const std::wstring& text);

// What the system says about the error that the last call in this thread left behind.
std::wstring describeLastError();

} // namespace Orvane
