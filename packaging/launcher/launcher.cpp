// An installation on Windows has this program as tools\bin\g++.exe. It starts the C++ compiler in
// tools\mingw64 with the same arguments and
//
//   * -static, so that a program needs no DLL of the compiler,
//   * -s, unless -g is given: a quarter of the size,
//   * for the command with which orvanec builds a program: the precompiled header of the includes
//     that all programs share, the compiled functions of their type of values, and an executable
//     that comes into its place only when it is complete,
//
// waits for it and gives back its exit code. gxx-wrapper.sh is its counterpart on Linux.
//
//     g++.exe --orvane-make-pch     makes that header now and says so when it cannot
#include "arguments.h"
#include "child.h"
#include "files.h"
#include "installation.h"

#include <windows.h>

namespace Orvane {

// Settings of another toolchain on this machine would lead the compiler astray.
static void clearToolchainSettings() {
    for (const wchar_t* name :
         {L"CPATH", L"C_INCLUDE_PATH", L"CPLUS_INCLUDE_PATH", L"LIBRARY_PATH", L"GCC_EXEC_PREFIX",
          L"COMPILER_PATH", L"DEPENDENCIES_OUTPUT", L"SUNPRO_DEPENDENCIES"})
        SetEnvironmentVariableW(name, nullptr);
}

static int exitCodeOf(long long result, const Installation& installation) {
    if (result >= 0) return static_cast<int>(result);
    say(L"cannot start \"" + installation.compiler() + L"\": " + describeLastError());
    return 1;
}

static int makeHeaderNow(const Installation& installation) {
    installation.forgetFailures();
    if (!installation.findHeader().empty()) return 0;
    say(L"the precompiled header could not be made; builds work without it, only slower");
    return 1;
}

// A failed compile is repeated without the header, so that its messages, and whether it fails at
// all, never come from a damaged one. If it was that, the next build makes another.
static int compile(const Installation& installation, const std::wstring& arguments) {
    const std::wstring program = quoteArgument(installation.compiler());
    const std::wstring header = installation.findHeader();
    if (!header.empty()) {
        std::string messages;
        const std::wstring line =
            program + L' ' + joinArguments(installation.headerArguments(header)) + L' ' + arguments;
        if (runChild(installation.compiler(), line, &messages) == 0) {
            passOn(messages);
            return 0;
        }
    }
    const long long result = runChild(installation.compiler(), program + L' ' + arguments);
    if (result == 0 && !header.empty()) installation.discardHeader(header);
    return exitCodeOf(result, installation);
}

// Builds under another name in the same folder; only a complete executable gets its own.
static int buildProgram(const Installation& installation, Arguments arguments, std::size_t output) {
    const std::wstring executable = arguments[output];
    const std::wstring folder = folderOf(executable);
    const std::wstring finished = (folder.empty() ? L"" : folder + L"\\") +
                                  std::wstring(L".orvane-") +
                                  std::to_wstring(GetCurrentProcessId()) + L".exe";
    arguments[output] = finished;
    arguments.erase(arguments.begin());
    int status = compile(installation, joinArguments(arguments));
    if (status == 0 && !replaceFile(finished, executable)) {
        say(L"cannot write \"" + executable + L"\": " + describeLastError());
        status = 1;
    }
    if (status != 0) DeleteFileW(finished.c_str());
    return status;
}

static int launch(const std::wstring& commandLine) {
    Arguments arguments = splitArguments(commandLine);
    const bool withSymbols = asksForSymbols(arguments);
    const Installation installation(pathOfThisProgram(), withSymbols);
    if (!isFile(installation.compiler())) {
        say(L"the C++ compiler is missing: put the folder \"mingw64\" of the Windows package into \"" +
            installation.tools() + L"\", so that \"" + installation.compiler() + L"\" is there");
        return 1;
    }
    clearToolchainSettings();
    if (arguments.size() == 2 && arguments[1] == L"--orvane-make-pch")
        return makeHeaderNow(installation);

    const std::wstring linking = withSymbols ? L" -static" : L" -static -s";
    if (const auto output = findProgramOutput(arguments, installation.tools())) {
        arguments.push_back(L"-static");
        if (!withSymbols) arguments.push_back(L"-s");
        return buildProgram(installation, arguments, *output);
    }
    const std::wstring line =
        quoteArgument(installation.compiler()) + textBehindProgram(commandLine) + linking;
    return exitCodeOf(runChild(installation.compiler(), line), installation);
}

} // namespace Orvane

int main() {
    Orvane::joinConsoleOfParent();
    return Orvane::launch(GetCommandLineW());
}
