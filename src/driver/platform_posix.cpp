#include "driver/command_line.h"
#include "driver/platform.h"

#include <cerrno>
#include <csignal>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

namespace Orvane {

std::string SystemPlatform::executablePath() const {
    char buffer[executablePathLimit];
    const ssize_t length = readlink("/proc/self/exe", buffer, sizeof buffer);
    return length > 0 ? std::string(buffer, static_cast<std::size_t>(length)) : std::string();
}

// As a shell reports it: the exit code, or 128 and the number of the signal that ended the child.
static unsigned long exitCodeOf(int status) {
    const int code = WIFSIGNALED(status) ? 128 + WTERMSIG(status) : WEXITSTATUS(status);
    return static_cast<unsigned long>(code);
}

namespace {

// The signals by which a user ends a build. While a child runs they are taken here and handed on to
// it, so that the child is gone, and has cleared away what it had begun, before this process ends
// by the same signal: a compiler left alone would write an executable that nobody waits for.
class EndingSignals {
public:
    EndingSignals() {
        sigemptyset(&taken);
        for (const int number : {SIGINT, SIGTERM, SIGHUP, SIGCHLD}) sigaddset(&taken, number);
        sigprocmask(SIG_BLOCK, &taken, &before);
    }
    EndingSignals(const EndingSignals&) = delete;
    EndingSignals& operator=(const EndingSignals&) = delete;
    // A signal that was handed on takes effect here; one that is ignored never does.
    ~EndingSignals() {
        if (last != 0) (void)raise(last);
        sigprocmask(SIG_SETMASK, &before, nullptr);
    }

    // The child gets the signals as this process got them.
    std::optional<pid_t> start(char** arguments) const {
        posix_spawnattr_t attributes;
        posix_spawnattr_init(&attributes);
        posix_spawnattr_setsigmask(&attributes, &before);
        posix_spawnattr_setflags(&attributes, POSIX_SPAWN_SETSIGMASK);
        pid_t child = 0;
        const int error =
            posix_spawn(&child, arguments[0], nullptr, &attributes, arguments, environ);
        posix_spawnattr_destroy(&attributes);
        if (error != 0) return std::nullopt;
        return child;
    }

    // The exit code of the child; none when the system does not tell.
    std::optional<unsigned long> waitFor(pid_t child) {
        for (;;) {
            int status = 0;
            const pid_t ended = waitpid(child, &status, WNOHANG);
            if (ended == child) return exitCodeOf(status);
            if (ended < 0 && errno == EINTR) continue;
            if (ended < 0) return std::nullopt;
            int number = 0;
            if (sigwait(&taken, &number) != 0 || number == SIGCHLD) continue;
            kill(child, number);
            last = number;
        }
    }

private:
    int last = 0; // the last signal that was handed on, 0 for none
    sigset_t taken{};
    sigset_t before{};
};

} // namespace

std::optional<unsigned long> SystemPlatform::run(const std::string& commandLine) {
    std::vector<std::string> arguments = splitCommandLine(commandLine);
    if (arguments.empty()) return std::nullopt;
    std::vector<char*> pointers;
    pointers.reserve(arguments.size() + 1);
    for (std::string& argument : arguments) pointers.push_back(argument.data());
    pointers.push_back(nullptr);

    // A caller that ignores this signal hands that on, and the child's exit code would be lost.
    std::signal(SIGCHLD, SIG_DFL);
    EndingSignals signals;
    const std::optional<pid_t> child = signals.start(pointers.data());
    if (!child) return std::nullopt;
    return signals.waitFor(*child);
}

} // namespace Orvane
