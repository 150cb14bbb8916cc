// What the command needs from the operating system besides what the compiler's Platform gives:
// terminals, programs that are captured or stopped, Ctrl-C. Written once per system, in
// system_posix.cpp and system_windows.cpp.
#pragma once

#include <chrono>
#include <cstdio>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace Orvane {

// While it lives, the console of Windows takes UTF-8 as this program writes it; elsewhere nothing.
class ConsoleSetup {
public:
    ConsoleSetup();
    ConsoleSetup(const ConsoleSetup&) = delete;
    ConsoleSetup& operator=(const ConsoleSetup&) = delete;
    ~ConsoleSetup();

private:
    unsigned before = 0; // code page to go back to; 0 for none
};

// Whether the stream leads to a terminal that follows escape sequences.
bool isUsableTerminal(std::FILE* stream);

// 0 when the terminal does not tell.
std::size_t terminalColumns(std::FILE* stream);

// Empty when there is no such variable.
std::string environmentVariable(const char* name);

struct CapturedRun {
    std::optional<unsigned long> code; // none when the program could not be started
    std::string output;                // standard output and standard error as they came
};

// Runs a command line as Platform::run does, with its messages in English where it has others, and
// waits for its end. Programs that it leaves behind and that keep the output open are waited for.
CapturedRun runCaptured(const std::string& commandLine);

// A program that runs beside this one, with the same standard streams.
class RunningProgram {
public:
    // Whether Ctrl-C reaches the program too, or only this one, which then stops it.
    enum class Interrupts { shared, own };

    virtual ~RunningProgram() = default;

    // The first argument is the program's path or, without a separator, its name in PATH. Null when
    // it cannot be started.
    static std::unique_ptr<RunningProgram> start(const std::vector<std::string>& arguments,
                                                 Interrupts interrupts);

    // The exit code once the program has ended; elsewhere than on Windows 128 and the number of
    // the signal that ended it.
    virtual std::optional<unsigned long> exitCode() = 0;
    virtual unsigned long wait() = 0;

    // Asks the program to end and makes it end when it does not.
    virtual void stop() = 0;
};

// The command that programs made for Windows are started with, in front of their path: nothing on
// Windows, Wine elsewhere. None without Wine.
std::optional<std::vector<std::string>> programStarter();

// From the first call on, Ctrl-C does not end this process; isInterrupted() tells of it.
void takeInterrupts();
bool isInterrupted();

void sleepFor(std::chrono::milliseconds time);

unsigned long processNumber();

// For writing bytes as they are; null when the file is there already or cannot be made.
std::FILE* openNewFile(const std::filesystem::path& path);

// How this process takes names and texts, and what to do when that is not UTF-8.
struct EncodingState {
    std::string name;
    bool isUtf8;
    std::string wayOut;
};
EncodingState encodingState();

} // namespace Orvane
