#include "installation.h"

#include "child.h"
#include "files.h"

#include <windows.h>

namespace Orvane {

// For programs that are linked with runtime.o: it brings their lists and maps, and leaves out what
// is compiled in it.
static const wchar_t* const valuesCompiled = L"-DORVANE_VALUE_COMPILED";

static std::wstring environmentValue(const wchar_t* name) {
    const DWORD room = GetEnvironmentVariableW(name, nullptr, 0);
    std::wstring value(room, L'\0');
    value.resize(GetEnvironmentVariableW(name, value.data(), room));
    return value;
}

// A name that differs between installations: FNV-1a of the path.
static std::wstring shortName(const std::wstring& path) {
    unsigned long long hash = 14695981039346656037ULL;
    for (const wchar_t c : path)
        hash = (hash ^ static_cast<unsigned long long>(c)) * 1099511628211ULL;
    return std::to_wstring(hash);
}

Installation::Installation(const std::wstring& launcher, bool withSymbols)
    : toolsFolder(folderOf(folderOf(launcher))), launcherPath(launcher),
      compilerPath(toolsFolder + L"\\mingw64\\bin\\g++.exe"),
      headerHasSymbols(withSymbols), headerFolders{toolsFolder + L"\\fast"} {
    const std::wstring data = environmentValue(L"LOCALAPPDATA");
    if (!data.empty()) headerFolders.push_back(data + L"\\Orvane\\" + shortName(toolsFolder));
    if (withSymbols)
        for (std::wstring& folder : headerFolders) folder += L"\\symbols";
}

// Calls the function with the full path of everything in a folder.
template <typename Function>
static void forEachEntry(const std::wstring& folder, Function function) {
    WIN32_FIND_DATAW found = {};
    const HANDLE search = FindFirstFileW((folder + L"\\*").c_str(), &found);
    if (search == INVALID_HANDLE_VALUE) return;
    do {
        const std::wstring name = found.cFileName;
        if (name != L"." && name != L"..") function(folder + L'\\' + name);
    } while (FindNextFileW(search, &found));
    FindClose(search);
}

// Everything that the header depends on and that may change: the compiler, this program, the
// headers of the installation. Those of the compiler come and go with it.
std::wstring Installation::formatState(const std::wstring& folder) const {
    std::wstring state = formatFileState(launcherPath) + formatFileState(compilerPath);
    forEachEntry(
        toolsFolder + L"\\mingw64\\libexec\\gcc\\x86_64-w64-mingw32",
        [&](const std::wstring& version) { state += formatFileState(version + L"\\cc1plus.exe"); });
    for (const wchar_t* name : {L"include", L"orlib", L"parameter"})
        forEachEntry(toolsFolder + L'\\' + name,
                     [&](const std::wstring& path) { state += formatFileState(path); });
    state += formatFileState(toolsFolder + L"\\fast\\includes.h") +
             formatFileState(folder + L"\\includes.h.gch");
    if (headerHasSymbols) return state;
    for (const wchar_t* name : {L"runtime.cpp", L"runtime.options", L"memory.h", L"texts.h",
                                L"entries.h", L"lists.h", L"value.h"})
        state += formatFileState(toolsFolder + L"\\fast\\" + name);
    return state + formatFileState(folder + L"\\runtime.o");
}

bool Installation::isUsable(const std::wstring& folder) const {
    return isFile(folder + L"\\includes.h.gch") && isFile(folder + L"\\includes.h") &&
           readFile(folder + L"\\made") == utf8Of(formatState(folder));
}

// The lock is a file that nobody else can open meanwhile; it opens again with the end of its owner.
// In a folder that cannot be written there is none.
static HANDLE openLock(const std::wstring& folder) {
    CreateDirectoryW(folderOf(folderOf(folder)).c_str(), nullptr);
    CreateDirectoryW(folderOf(folder).c_str(), nullptr);
    CreateDirectoryW(folder.c_str(), nullptr);
    return CreateFileW((folder + L"\\lock").c_str(), GENERIC_WRITE, 0, nullptr, OPEN_ALWAYS,
                       FILE_ATTRIBUTE_NORMAL, nullptr);
}

std::wstring Installation::findHeader() const {
    if (!isFile(toolsFolder + L"\\fast\\includes.h")) return {};
    for (const std::wstring& folder : headerFolders)
        if (isUsable(folder)) return folder;
    for (const std::wstring& folder : headerFolders) {
        const HANDLE lock = openLock(folder);
        if (lock == INVALID_HANDLE_VALUE && GetLastError() == ERROR_SHARING_VIOLATION) return {};
        if (lock == INVALID_HANDLE_VALUE) continue;
        const bool made = isUsable(folder) || makeHeader(folder);
        CloseHandle(lock);
        return made ? folder : std::wstring();
    }
    return {};
}

void Installation::forgetFailures() const {
    for (const std::wstring& folder : headerFolders) DeleteFileW((folder + L"\\failed").c_str());
}

void Installation::discardHeader(const std::wstring& folder) const {
    DeleteFileW((folder + L"\\made").c_str());
}

static bool isYoungerThanAnHour(const std::wstring& path) {
    WIN32_FILE_ATTRIBUTE_DATA data = {};
    if (!GetFileAttributesExW(path.c_str(), GetFileExInfoStandard, &data)) return false;
    FILETIME now = {};
    GetSystemTimeAsFileTime(&now);
    const auto ticks = [](const FILETIME& time) {
        return (static_cast<long long>(time.dwHighDateTime) << 32) | time.dwLowDateTime;
    };
    constexpr long long hour = 3600LL * 10000000;
    return ticks(now) - ticks(data.ftLastWriteTime) < hour;
}

// Called with the folder locked. A failure (no room, say) is not repeated within the hour. The
// header comes into its place complete, and "made" behind it.
bool Installation::makeHeader(const std::wstring& folder) const {
    if (isYoungerThanAnHour(folder + L"\\failed")) return false;
    const std::wstring made = folder + L"\\made";
    DeleteFileW(made.c_str());
    if (bringTexts(folder) && precompile(folder) && (headerHasSymbols || compileRuntime(folder)) &&
        replaceFile(folder + L"\\new.gch", folder + L"\\includes.h.gch") &&
        writeFile(made, utf8Of(formatState(folder))))
        return true;
    DeleteFileW((folder + L"\\new.gch").c_str());
    DeleteFileW((folder + L"\\new.o").c_str());
    writeFile(folder + L"\\failed", "");
    return false;
}

// What the header is made of, in the folder where it is to be.
bool Installation::bringTexts(const std::wstring& folder) const {
    const std::wstring fast = toolsFolder + L"\\fast";
    if (folder == fast) return true;
    for (const wchar_t* name : {L"\\includes.h", L"\\entries.h", L"\\lists.h"})
        if (!CopyFileW((fast + name).c_str(), (folder + name).c_str(), FALSE)) return false;
    return true;
}

// With -g it would serve programs without debug information, too, but where a function has options
// of its own, as in the type of values, the compiler then follows all variables in vain: a tenth of
// a second for each build.
bool Installation::precompile(const std::wstring& folder) const {
    Arguments arguments = {compilerPath,
                           L"-std=c++17",
                           L"-Og",
                           headerHasSymbols ? L"-g" : L"-g0",
                           L"-finput-charset=UTF-8",
                           L"-mwindows",
                           L"-I" + toolsFolder + L"\\include",
                           L"-I" + toolsFolder + L"\\orlib",
                           L"-I" + toolsFolder + L"\\parameter",
                           L"-x",
                           L"c++-header",
                           folder + L"\\includes.h",
                           L"-o",
                           folder + L"\\new.gch"};
    if (!headerHasSymbols) arguments.push_back(valuesCompiled);
    std::string messages;
    return runChild(compilerPath, joinArguments(arguments), &messages) == 0;
}

bool Installation::compileRuntime(const std::wstring& folder) const {
    const std::wstring made = folder + L"\\new.o";
    const Arguments arguments = {compilerPath,
                                 L"@" + toolsFolder + L"\\fast\\runtime.options",
                                 L"-I" + toolsFolder + L"\\include",
                                 L"-c",
                                 toolsFolder + L"\\fast\\runtime.cpp",
                                 L"-o",
                                 made};
    std::string messages;
    return runChild(compilerPath, joinArguments(arguments), &messages) == 0 &&
           replaceFile(made, folder + L"\\runtime.o");
}

// With debug information all functions are compiled with the program, so that one can step into
// them.
Arguments Installation::headerArguments(const std::wstring& folder) const {
    Arguments arguments = {L"-include", folder + L"\\includes.h"};
    if (headerHasSymbols) return arguments;
    arguments.push_back(valuesCompiled);
    arguments.push_back(folder + L"\\runtime.o");
    return arguments;
}

} // namespace Orvane
