#include "orvane/system.h"

#include "driver/command_line.h"
#include "libraries/files.h"

#include <cerrno>
#include <clocale>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <langinfo.h>
#include <spawn.h>
#include <sys/ioctl.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

namespace Orvane {

namespace {

// As a shell reports it.
unsigned long exitCodeOf(int status) {
    const int code = WIFSIGNALED(status) ? 128 + WTERMSIG(status) : WEXITSTATUS(status);
    return static_cast<unsigned long>(code);
}

std::vector<char*> pointersTo(std::vector<std::string>& texts) {
    std::vector<char*> pointers;
    pointers.reserve(texts.size() + 1);
    for (std::string& text : texts) pointers.push_back(text.data());
    pointers.push_back(nullptr);
    return pointers;
}

std::vector<std::string> englishEnvironment() {
    std::vector<std::string> variables;
    for (char** variable = environ; *variable; ++variable) {
        const std::string_view text = *variable;
        if (!text.starts_with("LC_ALL=") && !text.starts_with("LANGUAGE="))
            variables.emplace_back(text);
    }
    variables.emplace_back("LC_ALL=C.UTF-8");
    return variables;
}

// Signals that this process takes or that its starter ignores have their usual meaning again.
void resetSignals(posix_spawnattr_t& attributes) {
    sigset_t signals;
    sigemptyset(&signals);
    for (const int number : {SIGINT, SIGTERM, SIGQUIT, SIGPIPE}) sigaddset(&signals, number);
    posix_spawnattr_setsigdefault(&attributes, &signals);
}

std::string readToEnd(int descriptor) {
    std::string text;
    char buffer[4096];
    for (;;) {
        const ssize_t count = read(descriptor, buffer, sizeof buffer);
        if (count > 0)
            text.append(buffer, static_cast<std::size_t>(count));
        else if (count == 0 || errno != EINTR)
            return text;
    }
}

unsigned long waitFor(pid_t child) {
    int status = 0;
    while (waitpid(child, &status, 0) < 0)
        if (errno != EINTR) return 1;
    return exitCodeOf(status);
}

// Set by the handler of SIGINT, which can reach nothing else.
volatile std::sig_atomic_t interrupted = 0;

class PosixProgram final : public RunningProgram {
public:
    PosixProgram(pid_t child_, bool hasGroup_) : child(child_), hasGroup(hasGroup_) {}
    ~PosixProgram() override { stop(); }

    std::optional<unsigned long> exitCode() override {
        if (code) return code;
        int status = 0;
        if (waitpid(child, &status, WNOHANG) == child) code = exitCodeOf(status);
        return code;
    }

    unsigned long wait() override {
        if (!code) code = waitFor(child);
        return *code;
    }

    void stop() override {
        using namespace std::chrono_literals;
        if (exitCode()) return;
        send(SIGTERM);
        for (int attempt = 0; attempt < 100 && !exitCode(); ++attempt) sleepFor(20ms);
        if (exitCode()) return;
        send(SIGKILL);
        wait();
    }

private:
    void send(int signal) const { kill(hasGroup ? -child : child, signal); }

    pid_t child;
    bool hasGroup;
    std::optional<unsigned long> code;
};

bool canRun(const std::string& path) { return access(path.c_str(), X_OK) == 0; }

std::string findInPath(const std::string& name) {
    const std::string path = environmentVariable("PATH");
    for (std::size_t begin = 0; begin <= path.size();) {
        const std::size_t end = std::min(path.find(':', begin), path.size());
        std::string candidate = path.substr(begin, end - begin) + "/" + name;
        if (end > begin && canRun(candidate)) return candidate;
        begin = end + 1;
    }
    return {};
}

} // namespace

ConsoleSetup::ConsoleSetup() = default;
ConsoleSetup::~ConsoleSetup() = default;

bool isUsableTerminal(std::FILE* stream) { return isatty(fileno(stream)) == 1; }

std::size_t terminalColumns(std::FILE* stream) {
    winsize size = {};
    return ioctl(fileno(stream), TIOCGWINSZ, &size) == 0 ? size.ws_col : 0;
}

std::string environmentVariable(const char* name) {
    const char* text = std::getenv(name);
    return text ? text : "";
}

CapturedRun runCaptured(const std::string& commandLine) {
    std::vector<std::string> arguments = splitCommandLine(commandLine);
    int ends[2];
    if (arguments.empty() || pipe2(ends, O_CLOEXEC) != 0) return {};
    std::vector<std::string> variables = englishEnvironment();

    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, 0, "/dev/null", O_RDONLY, 0);
    posix_spawn_file_actions_adddup2(&actions, ends[1], 1);
    posix_spawn_file_actions_adddup2(&actions, ends[1], 2);
    posix_spawnattr_t attributes;
    posix_spawnattr_init(&attributes);
    posix_spawnattr_setflags(&attributes, POSIX_SPAWN_SETSIGDEF);
    resetSignals(attributes);
    // A caller that ignores this signal hands that on, and the exit code would be lost.
    std::signal(SIGCHLD, SIG_DFL);
    pid_t child = 0;
    const int failure = posix_spawn(&child, arguments[0].c_str(), &actions, &attributes,
                                    pointersTo(arguments).data(), pointersTo(variables).data());
    posix_spawnattr_destroy(&attributes);
    posix_spawn_file_actions_destroy(&actions);
    close(ends[1]);

    CapturedRun run;
    if (failure == 0) {
        run.output = readToEnd(ends[0]);
        run.code = waitFor(child);
    }
    close(ends[0]);
    return run;
}

std::unique_ptr<RunningProgram> RunningProgram::start(const std::vector<std::string>& arguments,
                                                      Interrupts interrupts) {
    std::vector<std::string> texts = arguments;
    const bool ownGroup = interrupts == Interrupts::own;
    posix_spawnattr_t attributes;
    posix_spawnattr_init(&attributes);
    posix_spawnattr_setflags(
        &attributes,
        static_cast<short>(POSIX_SPAWN_SETSIGDEF | (ownGroup ? POSIX_SPAWN_SETPGROUP : 0)));
    resetSignals(attributes);
    std::signal(SIGCHLD, SIG_DFL);
    pid_t child = 0;
    const int failure = posix_spawnp(&child, texts[0].c_str(), nullptr, &attributes,
                                     pointersTo(texts).data(), environ);
    posix_spawnattr_destroy(&attributes);
    if (failure != 0) return nullptr;
    return std::make_unique<PosixProgram>(child, ownGroup);
}

// The 64-bit loader itself where there is one: Debian's script of the name `wine` looks for a
// 32-bit Wine first.
std::optional<std::vector<std::string>> programStarter() {
    const std::string chosen = environmentVariable("ORVANE_WINE");
    if (!chosen.empty()) return std::vector{chosen};
    for (const char* loader : {"/usr/lib/wine/wine64", "/usr/lib/x86_64-linux-gnu/wine/wine64"})
        if (canRun(loader)) return std::vector<std::string>{loader};
    for (const char* name : {"wine64", "wine"})
        if (std::string path = findInPath(name); !path.empty()) return std::vector{path};
    return std::nullopt;
}

void takeInterrupts() {
    struct sigaction action = {};
    action.sa_handler = [](int) { interrupted = 1; };
    for (const int number : {SIGINT, SIGTERM}) sigaction(number, &action, nullptr);
}

bool isInterrupted() { return interrupted != 0; }

void sleepFor(std::chrono::milliseconds time) { std::this_thread::sleep_for(time); }

unsigned long processNumber() { return static_cast<unsigned long>(getpid()); }

std::FILE* openNewFile(const std::filesystem::path& path) {
    return std::fopen(path.c_str(), "wxb");
}

EncodingState encodingState() {
    std::setlocale(LC_CTYPE, "");
    std::string name = nl_langinfo(CODESET);
    std::setlocale(LC_CTYPE, "C");
    const bool isUtf8 = name == "UTF-8" || name == "utf8";
    return {name, isUtf8, "Set the locale to one with UTF-8: export LC_ALL=C.UTF-8"};
}

} // namespace Orvane
