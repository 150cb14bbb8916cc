// The texts of --help.

#include "orvane/command_line.h"

namespace Orvane {

namespace {

constexpr std::string_view libraryOptions =
    "  --normal           the standard libraries: string, array, io, math and win32\n"
    "  --LIBRARY          one library, such as --math; may be repeated\n";

constexpr std::string_view buildOptions =
    "  --debug            debug information in the program\n"
    "  --keep-cpp         keep the generated C++ in code_generation/\n"
    "  --no-check         build without checking first\n"
    "  --verbose          show all that the compiler and the C++ compiler print\n";

constexpr std::string_view formatOption =
    "  --format=FORMAT    text (for people), json or sarif (for programs)\n";

constexpr std::string_view checkUsage =
    "Tells what is wrong with sources. Nothing is built or written.\n\n"
    "Usage: orvane check FILE... [options]\n\n"
    "FILE may be -, which is standard input. Without a message all is well.\n\n"
    "Options:\n";

constexpr std::string_view buildUsage =
    "Checks sources and makes an executable of each, beside its source.\n\n"
    "Usage: orvane build FILE... [options]\n\n"
    "Options:\n";

constexpr std::string_view helpOption = "  --help             this text\n";

std::string compose(std::initializer_list<std::string_view> parts) {
    std::string text;
    for (const std::string_view part : parts) text += part;
    return text;
}

std::string generalHelp() {
    std::string text = "Checks, builds and runs programs for Windows.\n"
                       "\n"
                       "Usage: orvane COMMAND [arguments]\n"
                       "\n"
                       "Commands:\n";
    for (const CommandName& command : commandNames()) {
        constexpr std::size_t width = 10;
        text.append("  ").append(command.name);
        text.append(width - command.name.size(), ' ').append(command.summary).append("\n");
    }
    return text + "\n"
                  "  orvane COMMAND --help    how a command is used\n"
                  "  orvane --version         the version\n"
                  "\n"
                  "Exit status: 0 all is well, 1 something is wrong with the program,\n"
                  "2 the command was used wrongly. Colours appear on a terminal only, and not at\n"
                  "all when the variable NO_COLOR is set.\n";
}

} // namespace

const std::vector<CommandName>& commandNames() {
    static const std::vector<CommandName> names = {
        {Command::check, "check", "tell what is wrong with sources, building nothing"},
        {Command::build, "build", "check sources and make executables"},
        {Command::run, "run", "build a program and start it"},
        {Command::watch, "watch", "run a program anew whenever its source is saved"},
        {Command::create, "new", "begin a program from a template"},
        {Command::doctor, "doctor", "look whether the installation works here"},
        {Command::explain, "explain", "read more about a message"},
    };
    return names;
}

std::string helpText(Command command) {
    switch (command) {
    case Command::check:
        return compose({checkUsage, libraryOptions, formatOption, helpOption});
    case Command::build:
        return compose({buildUsage, libraryOptions, buildOptions, formatOption, helpOption});
    case Command::run:
        return compose(
            {"Builds a program and starts it. The exit status is the program's.\n\n"
             "Usage: orvane run FILE [options] [-- ARGUMENTS...]\n\n"
             "ARGUMENTS are handed to the program. On Linux it is started by Wine, or by\n"
             "what the variable ORVANE_WINE names.\n\n"
             "Options:\n",
             libraryOptions, buildOptions, helpOption});
    case Command::watch:
        return compose(
            {"Builds a program and starts it, and does both again whenever the source or\n"
             "a library of the project is saved. Ctrl-C ends it and the program.\n\n"
             "Usage: orvane watch FILE [options] [-- ARGUMENTS...]\n\n"
             "Options:\n",
             libraryOptions, buildOptions, helpOption});
    case Command::create:
        return compose(
            {"Writes NAME.vorla, a small program to begin with. A file that is there\n"
             "already is left alone.\n\n"
             "Usage: orvane new NAME [options]\n\n"
             "Options:\n"
             "  --template=TEMPLATE  form (entries and a button), notepad (a text and a\n"
             "                       menu), list (a list that grows) or empty (a window)\n"
             "  --help               this text\n"});
    case Command::doctor:
        return compose(
            {"Looks whether everything that a build needs is in its place and works:\n"
             "the installation, the C++ compiler, the libraries, UTF-8, write access.\n\n"
             "Usage: orvane doctor\n"});
    case Command::explain:
        return compose({"Prints the page of a message: what it means, an example, the way out.\n\n"
                        "Usage: orvane explain [ID...]\n\n"
                        "ID is what stands in brackets behind a message, such as\n"
                        "unknown-function. Without one all messages are listed.\n"});
    case Command::none:
        break;
    }
    return generalHelp();
}

} // namespace Orvane
