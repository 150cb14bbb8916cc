#include "driver/platform.h"

#include <windows.h>

// Read by the runtime's start-up code: arguments are taken as they are, * and ? included.
extern "C" {
extern int _dowildcard;
int _dowildcard = 0;
}

namespace Orvane {

// The manifest makes UTF-8 the code page of the process, so the functions with an A take and give
// UTF-8, as main() gets its arguments.

std::string SystemPlatform::executablePath() const {
    char buffer[executablePathLimit];
    const DWORD length = GetModuleFileNameA(nullptr, buffer, sizeof buffer);
    return std::string(buffer, length);
}

std::optional<unsigned long> SystemPlatform::run(const std::string& commandLine) {
    std::string modifiable = commandLine;
    STARTUPINFOA startup = {};
    startup.cb = sizeof startup;
    startup.dwFlags = STARTF_USESHOWWINDOW; // with a wShowWindow of 0: hidden
    PROCESS_INFORMATION process = {};
    if (!CreateProcessA(nullptr, modifiable.data(), nullptr, nullptr, FALSE, CREATE_NO_WINDOW,
                        nullptr, nullptr, &startup, &process))
        return std::nullopt;

    DWORD code = 0;
    WaitForSingleObject(process.hProcess, INFINITE);
    GetExitCodeProcess(process.hProcess, &code);
    CloseHandle(process.hProcess);
    CloseHandle(process.hThread);
    return code;
}

} // namespace Orvane
