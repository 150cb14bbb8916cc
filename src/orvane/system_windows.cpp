#include "orvane/system.h"

#include <cstdlib>
#include <fcntl.h>
#include <io.h>
#include <windows.h>

namespace Orvane {

namespace {

// Closes itself.
class Handle {
public:
    explicit Handle(HANDLE handle_ = nullptr) : handle(handle_) {}
    Handle(Handle&& other) noexcept : handle(other.handle) { other.handle = nullptr; }
    Handle(const Handle&) = delete;
    Handle& operator=(const Handle&) = delete;
    ~Handle() { close(); }
    void close() {
        if (handle && handle != INVALID_HANDLE_VALUE) CloseHandle(handle);
        handle = nullptr;
    }
    HANDLE get() const { return handle; }

private:
    HANDLE handle;
};

HANDLE handleOf(std::FILE* stream) {
    return reinterpret_cast<HANDLE>(_get_osfhandle(_fileno(stream)));
}

// The rules by which the C runtime cuts a command line again: quotes around everything, and
// backslashes doubled where they stand in front of a quote.
std::string quoted(const std::string& argument) {
    std::string text = "\"";
    std::size_t backslashes = 0;
    for (const char character : argument) {
        if (character == '"') text.append(backslashes + 1, '\\');
        backslashes = character == '\\' ? backslashes + 1 : 0;
        text += character;
    }
    return text.append(backslashes, '\\') + '"';
}

std::string commandLineOf(const std::vector<std::string>& arguments) {
    std::string line;
    for (const std::string& argument : arguments) {
        if (!line.empty()) line += ' ';
        line += quoted(argument);
    }
    return line;
}

std::string readToEnd(HANDLE pipe) {
    std::string text;
    char buffer[4096];
    DWORD count = 0;
    while (ReadFile(pipe, buffer, sizeof buffer, &count, nullptr) && count > 0)
        text.append(buffer, count);
    std::erase(text, '\r');
    return text;
}

unsigned long waitFor(HANDLE process) {
    DWORD code = 1;
    WaitForSingleObject(process, INFINITE);
    GetExitCodeProcess(process, &code);
    return code;
}

// Set by the handler of Ctrl-C, which runs in a thread of its own and can reach nothing else.
volatile LONG interrupted = 0;

BOOL WINAPI noteInterrupt(DWORD event) {
    if (event != CTRL_C_EVENT && event != CTRL_BREAK_EVENT) return FALSE;
    InterlockedExchange(&interrupted, 1);
    return TRUE;
}

class WindowsProgram final : public RunningProgram {
public:
    WindowsProgram(HANDLE process_, HANDLE job_) : process(process_), job(job_) {}
    ~WindowsProgram() override { stop(); }

    std::optional<unsigned long> exitCode() override {
        if (WaitForSingleObject(process.get(), 0) != WAIT_OBJECT_0) return std::nullopt;
        return waitFor(process.get());
    }
    unsigned long wait() override { return waitFor(process.get()); }

    // With everything that it has started.
    void stop() override {
        if (exitCode()) return;
        TerminateJobObject(job.get(), 1);
        TerminateProcess(process.get(), 1);
        wait();
    }

private:
    Handle process;
    Handle job;
};

} // namespace

ConsoleSetup::ConsoleSetup() {
    const UINT current = GetConsoleOutputCP();
    if (current != 0 && current != CP_UTF8 && SetConsoleOutputCP(CP_UTF8)) before = current;
}

ConsoleSetup::~ConsoleSetup() {
    if (before != 0) SetConsoleOutputCP(before);
}

bool isUsableTerminal(std::FILE* stream) {
    const HANDLE handle = handleOf(stream);
    DWORD mode = 0;
    return GetConsoleMode(handle, &mode) &&
           SetConsoleMode(handle, mode | ENABLE_VIRTUAL_TERMINAL_PROCESSING);
}

std::size_t terminalColumns(std::FILE* stream) {
    CONSOLE_SCREEN_BUFFER_INFO info = {};
    if (!GetConsoleScreenBufferInfo(handleOf(stream), &info)) return 0;
    return static_cast<std::size_t>(info.srWindow.Right - info.srWindow.Left + 1);
}

std::string environmentVariable(const char* name) {
    const char* text = std::getenv(name);
    return text ? text : "";
}

CapturedRun runCaptured(const std::string& commandLine) {
    SECURITY_ATTRIBUTES inherited = {sizeof inherited, nullptr, TRUE};
    HANDLE readEnd = nullptr;
    HANDLE writeEnd = nullptr;
    if (!CreatePipe(&readEnd, &writeEnd, &inherited, 0)) return {};
    const Handle output(readEnd);
    Handle input(writeEnd);
    SetHandleInformation(readEnd, HANDLE_FLAG_INHERIT, 0);
    const Handle nothing(CreateFileA("NUL", GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE,
                                     &inherited, OPEN_EXISTING, 0, nullptr));

    STARTUPINFOA startup = {};
    startup.cb = sizeof startup;
    startup.dwFlags = STARTF_USESHOWWINDOW | STARTF_USESTDHANDLES;
    startup.hStdInput = nothing.get();
    startup.hStdOutput = input.get();
    startup.hStdError = input.get();
    PROCESS_INFORMATION started = {};
    std::string modifiable = commandLine;
    if (!CreateProcessA(nullptr, modifiable.data(), nullptr, nullptr, TRUE, CREATE_NO_WINDOW,
                        nullptr, nullptr, &startup, &started))
        return {};
    const Handle process(started.hProcess);
    const Handle thread(started.hThread);
    input.close();
    CapturedRun run;
    run.output = readToEnd(output.get());
    run.code = waitFor(process.get());
    return run;
}

std::unique_ptr<RunningProgram> RunningProgram::start(const std::vector<std::string>& arguments,
                                                      Interrupts interrupts) {
    std::string line = commandLineOf(arguments);
    STARTUPINFOA startup = {};
    startup.cb = sizeof startup;
    PROCESS_INFORMATION started = {};
    const DWORD group = interrupts == Interrupts::own ? CREATE_NEW_PROCESS_GROUP : 0;
    if (!CreateProcessA(nullptr, line.data(), nullptr, nullptr, TRUE, CREATE_SUSPENDED | group,
                        nullptr, nullptr, &startup, &started))
        return nullptr;
    const Handle thread(started.hThread);
    const HANDLE job = CreateJobObjectA(nullptr, nullptr);
    JOBOBJECT_EXTENDED_LIMIT_INFORMATION limits = {};
    limits.BasicLimitInformation.LimitFlags = JOB_OBJECT_LIMIT_KILL_ON_JOB_CLOSE;
    // What is in the job ends with this process, also when that is ended from outside.
    SetInformationJobObject(job, JobObjectExtendedLimitInformation, &limits, sizeof limits);
    AssignProcessToJobObject(job, started.hProcess);
    ResumeThread(started.hThread);
    return std::make_unique<WindowsProgram>(started.hProcess, job);
}

std::optional<std::vector<std::string>> programStarter() { return std::vector<std::string>(); }

void takeInterrupts() { SetConsoleCtrlHandler(noteInterrupt, TRUE); }

bool isInterrupted() { return InterlockedCompareExchange(&interrupted, 0, 0) != 0; }

void sleepFor(std::chrono::milliseconds time) { Sleep(static_cast<DWORD>(time.count())); }

unsigned long processNumber() { return GetCurrentProcessId(); }

// The C runtime of older systems does not know "x".
std::FILE* openNewFile(const std::filesystem::path& path) {
    const HANDLE handle = CreateFileW(path.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_NEW,
                                      FILE_ATTRIBUTE_NORMAL, nullptr);
    if (handle == INVALID_HANDLE_VALUE) return nullptr;
    const int descriptor = _open_osfhandle(reinterpret_cast<intptr_t>(handle), _O_BINARY);
    return descriptor < 0 ? nullptr : _fdopen(descriptor, "wb");
}

EncodingState encodingState() {
    const UINT page = GetACP();
    return {"code page " + std::to_string(page), page == CP_UTF8,
            "Windows 10 version 1903 or later gives this program UTF-8; earlier versions do not."};
}

} // namespace Orvane
