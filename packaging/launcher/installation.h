// The installation that the launcher belongs to, its precompiled header, and the functions that are
// compiled beside the header.
//
// Found from the launcher's own place, TOOLS\bin\g++.exe:
//
//     TOOLS\mingw64\bin\g++.exe    the C++ compiler
//     TOOLS\fast\includes.h        what all programs include, with entries.h and lists.h
//     TOOLS\fast\runtime.cpp       the functions that programs need not compile themselves
//     TOOLS\fast\includes.h.gch    the precompiled header, made by the first build
//     TOOLS\fast\runtime.o         the compiled functions, made with it
//     TOOLS\fast\made              names, sizes and times of what it is valid for
//     TOOLS\fast\symbols           a header for programs with debug information
//
// Where TOOLS\fast cannot be written, the header lies in the user's local application data.
#pragma once

#include "arguments.h"

#include <string>
#include <vector>

namespace Orvane {

class Installation {
public:
    // The header is to serve a program with debug information or one without.
    Installation(const std::wstring& launcher, bool withSymbols);

    const std::wstring& tools() const { return toolsFolder; }
    const std::wstring& compiler() const { return compilerPath; }

    // The folder of a header that is valid now, made for the purpose if need be. Empty when there
    // is none: the build then goes on without. Two launchers do not wait for each other.
    std::wstring findHeader() const;

    // What a build with the header in this folder has in front of its own arguments.
    Arguments headerArguments(const std::wstring& folder) const;

    // Has a header made even if that failed not long ago.
    void forgetFailures() const;

    // Has the next build make another header.
    void discardHeader(const std::wstring& folder) const;

private:
    std::wstring formatState(const std::wstring& folder) const;
    bool isUsable(const std::wstring& folder) const;
    bool makeHeader(const std::wstring& folder) const;
    bool bringTexts(const std::wstring& folder) const;
    bool precompile(const std::wstring& folder) const;
    bool compileRuntime(const std::wstring& folder) const;

    std::wstring toolsFolder;
    std::wstring launcherPath;
    std::wstring compilerPath;
    bool headerHasSymbols;
    std::vector<std::wstring> headerFolders; // in the order in which they are looked at
};

} // namespace Orvane
