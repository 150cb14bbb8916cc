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

std::optional<unsigned long> SystemPlatform::run(const std::string& commandLine) {
    std::vector<std::string> arguments = splitCommandLine(commandLine);
    if (arguments.empty()) return std::nullopt;
    std::vector<char*> pointers;
    pointers.reserve(arguments.size() + 1);
    for (std::string& argument : arguments) pointers.push_back(argument.data());
    pointers.push_back(nullptr);

    // A caller that ignores this signal hands that on, and the child's exit code would be lost.
    std::signal(SIGCHLD, SIG_DFL);
    pid_t child = 0;
    if (posix_spawn(&child, pointers[0], nullptr, nullptr, pointers.data(), environ) != 0)
        return std::nullopt;
    int status = 0;
    while (waitpid(child, &status, 0) < 0)
        if (errno != EINTR) return std::nullopt;
    return exitCodeOf(status);
}

} // namespace Orvane
