#include "driver/options.h"
#include "orvane/commands.h"
#include "orvane/system.h"

#include <exception>

namespace Orvane {

namespace {

int runCommand(const CommandRequest& request, Output& out, Output& err) {
    switch (request.command) {
    case Command::check:
        return runCheck(request, out, err);
    case Command::build:
        return runBuild(request, out, err);
    case Command::run:
        return runRun(request, err);
    case Command::watch:
        return runWatch(request, err);
    case Command::create:
        return runNew(request, out, err);
    case Command::doctor:
        return runDoctor(out);
    case Command::explain:
        return runExplain(request, out, err);
    case Command::none:
        break;
    }
    return wrongUse;
}

int refuse(const CommandLineResult& line, bool hasArguments, Output& err) {
    if (!hasArguments) {
        err.write(helpText(Command::none));
        return wrongUse;
    }
    std::string help = "orvane --help";
    for (const CommandName& command : commandNames())
        if (command.command == line.request.command)
            help = "orvane " + std::string(command.name) + " --help";
    err.write("orvane: " + line.mistake + "\n");
    if (!line.wayOut.empty()) err.write(line.wayOut + "\n");
    err.write("How it is used: " + help + "\n");
    return wrongUse;
}

int run(const std::vector<std::string>& arguments) {
    Output out(stdout);
    Output err(stderr);
    const CommandLineResult line = readCommandLine(arguments);
    if (!line.mistake.empty()) return refuse(line, !arguments.empty(), err);
    if (line.request.version) {
        out.write("Orvane Compiler v" + std::string(compilerVersion) + "\n");
        return allIsWell;
    }
    if (line.request.help) {
        out.write(helpText(line.request.command));
        return allIsWell;
    }
    try {
        return runCommand(line.request, out, err);
    } catch (const std::exception& error) {
        err.write("orvane: " + std::string(error.what()) + "\n");
        return somethingIsWrong;
    }
}

} // namespace

} // namespace Orvane

int main(int count, char** arguments) {
    const Orvane::ConsoleSetup console;
    // A process may be started without even its own name.
    return Orvane::run(count > 1 ? std::vector<std::string>(arguments + 1, arguments + count)
                                 : std::vector<std::string>());
}
