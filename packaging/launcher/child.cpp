#include "child.h"

#include "files.h"

#include <windows.h>

namespace Orvane {

// Its process list is the launcher alone when the console was made for it.
static bool hasOwnConsole() {
    DWORD ids[2];
    return GetConsoleProcessList(ids, 2) == 1;
}

static bool isConsole(HANDLE handle) {
    DWORD mode = 0;
    return GetConsoleMode(handle, &mode) != 0;
}

static bool isOpen(HANDLE handle) {
    return handle != nullptr && handle != INVALID_HANDLE_VALUE &&
           GetFileType(handle) != FILE_TYPE_UNKNOWN;
}

static void openStandard(DWORD which, const wchar_t* name) {
    HANDLE handle =
        CreateFileW(name, GENERIC_READ | GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr,
                    OPEN_EXISTING, 0, nullptr);
    if (handle == INVALID_HANDLE_VALUE)
        handle =
            CreateFileW(L"NUL", GENERIC_READ | GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE,
                        nullptr, OPEN_EXISTING, 0, nullptr);
    SetStdHandle(which, handle);
}

void joinConsoleOfParent() {
    struct Standard {
        DWORD which;
        const wchar_t* name;
        bool replace;
    };
    Standard standards[] = {{STD_INPUT_HANDLE, L"CONIN$", false},
                            {STD_OUTPUT_HANDLE, L"CONOUT$", false},
                            {STD_ERROR_HANDLE, L"CONOUT$", false}};
    const bool own = hasOwnConsole();
    bool any = false;
    for (Standard& standard : standards) {
        const HANDLE handle = GetStdHandle(standard.which);
        standard.replace = !isOpen(handle) || (own && isConsole(handle));
        any = any || standard.replace;
    }
    if (!any) return;
    if (own) FreeConsole();
    AttachConsole(ATTACH_PARENT_PROCESS);
    for (const Standard& standard : standards)
        if (standard.replace) openStandard(standard.which, standard.name);
}

static void writeAll(HANDLE handle, const char* bytes, std::size_t count) {
    DWORD written = 0;
    while (count > 0 && WriteFile(handle, bytes, static_cast<DWORD>(count), &written, nullptr) &&
           written > 0) {
        bytes += written;
        count -= written;
    }
}

void say(const std::wstring& text) {
    const std::wstring line = L"g++.exe: " + text + L"\r\n";
    const HANDLE handle = GetStdHandle(STD_ERROR_HANDLE);
    DWORD written = 0;
    if (isConsole(handle)) {
        WriteConsoleW(handle, line.data(), static_cast<DWORD>(line.size()), &written, nullptr);
    } else {
        const std::string bytes = utf8Of(line);
        writeAll(handle, bytes.data(), bytes.size());
    }
}

void passOn(const std::string& text) {
    writeAll(GetStdHandle(STD_ERROR_HANDLE), text.data(), text.size());
}

// A job that ends what runs in it when its last handle goes, the launcher's.
static HANDLE createJob() {
    const HANDLE job = CreateJobObjectW(nullptr, nullptr);
    JOBOBJECT_EXTENDED_LIMIT_INFORMATION limits = {};
    limits.BasicLimitInformation.LimitFlags = JOB_OBJECT_LIMIT_KILL_ON_JOB_CLOSE;
    if (job != nullptr)
        SetInformationJobObject(job, JobObjectExtendedLimitInformation, &limits, sizeof limits);
    return job;
}

static HANDLE inheritableCopy(HANDLE handle) {
    HANDLE copy = nullptr;
    const HANDLE self = GetCurrentProcess();
    DuplicateHandle(self, handle, self, &copy, 0, TRUE, DUPLICATE_SAME_ACCESS);
    return copy;
}

static void closeAll(const STARTUPINFOW& startup) {
    for (const HANDLE handle : {startup.hStdInput, startup.hStdOutput, startup.hStdError})
        if (handle != nullptr) CloseHandle(handle);
}

static void readAll(HANDLE pipe, std::string& text) {
    char buffer[4096];
    DWORD length = 0;
    while (ReadFile(pipe, buffer, sizeof buffer, &length, nullptr) && length > 0)
        text.append(buffer, length);
}

// Suspended until it is in the job, so that nothing of it escapes.
static HANDLE startInJob(const std::wstring& program, std::wstring commandLine, HANDLE job,
                         STARTUPINFOW& startup) {
    PROCESS_INFORMATION process = {};
    if (!CreateProcessW(program.c_str(), commandLine.data(), nullptr, nullptr, TRUE,
                        CREATE_SUSPENDED, nullptr, nullptr, &startup, &process))
        return nullptr;
    if (job != nullptr) AssignProcessToJobObject(job, process.hProcess);
    ResumeThread(process.hThread);
    CloseHandle(process.hThread);
    return process.hProcess;
}

long long runChild(const std::wstring& program, const std::wstring& commandLine,
                   std::string* capture) {
    HANDLE pipeRead = nullptr;
    HANDLE pipeWrite = nullptr;
    if (capture != nullptr && !CreatePipe(&pipeRead, &pipeWrite, nullptr, 0)) return -1;

    STARTUPINFOW startup = {};
    startup.cb = sizeof startup;
    startup.dwFlags = STARTF_USESTDHANDLES;
    startup.hStdInput = inheritableCopy(GetStdHandle(STD_INPUT_HANDLE));
    startup.hStdOutput = inheritableCopy(capture ? pipeWrite : GetStdHandle(STD_OUTPUT_HANDLE));
    startup.hStdError = inheritableCopy(capture ? pipeWrite : GetStdHandle(STD_ERROR_HANDLE));
    const HANDLE job = createJob();
    const HANDLE process = startInJob(program, commandLine, job, startup);
    const DWORD error = GetLastError();
    closeAll(startup);
    if (pipeWrite != nullptr) CloseHandle(pipeWrite);

    long long code = -1;
    if (process != nullptr) {
        if (capture != nullptr) readAll(pipeRead, *capture);
        DWORD exitCode = 0;
        WaitForSingleObject(process, INFINITE);
        GetExitCodeProcess(process, &exitCode);
        code = exitCode;
        CloseHandle(process);
    }
    if (pipeRead != nullptr) CloseHandle(pipeRead);
    if (job != nullptr) CloseHandle(job);
    SetLastError(error);
    return code;
}

} // namespace Orvane
