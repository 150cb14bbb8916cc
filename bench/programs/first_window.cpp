// first_window TITLE PROGRAM...: starts each program and prints the milliseconds until its window
// of that title is shown and answers a message, which it does behind its first painting.
#include <windows.h>

#include <cstdio>
#include <string>

static double milliseconds() {
    LARGE_INTEGER now, perSecond;
    QueryPerformanceCounter(&now);
    QueryPerformanceFrequency(&perSecond);
    return static_cast<double>(now.QuadPart) * 1000 / static_cast<double>(perSecond.QuadPart);
}

static double timeUntilShown(const char* title, const char* program) {
    STARTUPINFOA how = {};
    how.cb = sizeof(how);
    PROCESS_INFORMATION started = {};
    std::string command = '"' + std::string(program) + '"';
    const double start = milliseconds();
    if (!CreateProcessA(NULL, &command[0], NULL, NULL, FALSE, 0, NULL, NULL, &how, &started))
        return -1;
    double shown = -1;
    while (shown < 0 && milliseconds() - start < 30000) {
        HWND window = FindWindowA(NULL, title);
        DWORD_PTR answer = 0;
        if (window && IsWindowVisible(window) &&
            SendMessageTimeoutA(window, WM_NULL, 0, 0, SMTO_NORMAL, 10000, &answer))
            shown = milliseconds() - start;
        else
            Sleep(0);
    }
    TerminateProcess(started.hProcess, 0);
    WaitForSingleObject(started.hProcess, 10000);
    CloseHandle(started.hThread);
    CloseHandle(started.hProcess);
    return shown;
}

int main(int count, char** words) {
    for (int at = 2; at < count; ++at) {
        const double taken = timeUntilShown(words[1], words[at]);
        if (taken < 0) return 1;
        std::printf("%.2f\n", taken);
        std::fflush(stdout);
    }
    return count > 2 ? 0 : 2;
}
