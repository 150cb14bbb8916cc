// console_parent.exe PROGRAM ARGUMENTS...: starts a program as orvanec starts the launcher, from a
// process that has a console and hands on no handles, and then prints what stands on that console,
// without the blanks at the ends of its lines, and the exit code.
#include <windows.h>

#include <cstdio>
#include <string>

static std::string textOnConsole(HANDLE screen) {
    std::string text;
    for (SHORT row = 0; row < 10; ++row) {
        char line[120];
        DWORD count = 0;
        if (!ReadConsoleOutputCharacterA(screen, line, 80, COORD{0, row}, &count))
            return "unreadable";
        while (count > 0 && line[count - 1] == ' ') --count;
        text.append(line, count);
        if (count > 0) text += '\n';
    }
    return text;
}

int wmain() {
    std::wstring line = GetCommandLineW();
    line.erase(0, line.find(L' ') + 1);
    FreeConsole();
    if (!AllocConsole()) return 120;
    const HANDLE screen =
        CreateFileW(L"CONOUT$", GENERIC_READ | GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE,
                    nullptr, OPEN_EXISTING, 0, nullptr);
    if (screen == INVALID_HANDLE_VALUE) return 121;
    STARTUPINFOW startup = {};
    startup.cb = sizeof startup;
    startup.dwFlags = STARTF_USESHOWWINDOW;
    PROCESS_INFORMATION process = {};
    if (!CreateProcessW(nullptr, line.data(), nullptr, nullptr, FALSE, CREATE_NO_WINDOW, nullptr,
                        nullptr, &startup, &process))
        return 122;
    DWORD code = 0;
    WaitForSingleObject(process.hProcess, INFINITE);
    GetExitCodeProcess(process.hProcess, &code);
    std::printf("%sexit code %lu\n", textOnConsole(screen).c_str(), code);
    return 0;
}
