#include "orvane/start_program.h"

#include "libraries/files.h"

namespace Orvane {

std::unique_ptr<RunningProgram> startProgram(const std::filesystem::path& executable,
                                             const std::vector<std::string>& arguments,
                                             RunningProgram::Interrupts interrupts, Output& err) {
    const auto starter = programStarter();
    if (!starter) {
        err.write("orvane: the program is made for Windows, and Wine, which runs such programs "
                  "here, is not installed.\n"
                  "On Debian and Ubuntu: sudo apt-get install wine64\n");
        return nullptr;
    }
    std::vector<std::string> command = *starter;
    command.push_back(textOf(executable));
    command.insert(command.end(), arguments.begin(), arguments.end());
    auto program = RunningProgram::start(command, interrupts);
    if (!program) err.write("orvane: '" + command.front() + "' cannot be started.\n");
    return program;
}

} // namespace Orvane
