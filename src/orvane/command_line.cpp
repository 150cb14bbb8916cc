#include "orvane/command_line.h"

#include "check/nearest_name.h"
#include "driver/options.h"
#include "orvane/embedded.h"

#include <algorithm>

namespace Orvane {

namespace {

bool isBuilding(Command command) {
    return command == Command::build || command == Command::run || command == Command::watch;
}

bool isReporting(Command command) { return command == Command::check || command == Command::build; }

// Which options a command has besides --help and those of orvanec.
struct OptionName {
    std::string_view name;
    bool (*belongsTo)(Command);
};
constexpr OptionName optionNames[] = {
    {"--format", isReporting},
    {"--verbose", isBuilding},
    {"--no-check", isBuilding},
    {"--template", [](Command command) { return command == Command::create; }},
};

bool hasOption(Command command, std::string_view name) {
    return std::any_of(std::begin(optionNames), std::end(optionNames), [&](const OptionName& one) {
        return one.name == name && one.belongsTo(command);
    });
}

// `check` takes those that decide which functions there are.
bool isCompilerOption(Command command, const std::string& argument) {
    if (command != Command::check && !isBuilding(command)) return false;
    if (command == Command::check && (argument == "--debug" || argument == "--keep-cpp"))
        return false;
    return scanArguments({argument, "source"}).request == Request::Build;
}

std::vector<std::string_view> optionCandidates(Command command) {
    std::vector<std::string_view> names = {"--help"};
    for (const OptionName& option : optionNames)
        if (option.belongsTo(command)) names.push_back(option.name);
    if (isBuilding(command)) names.insert(names.end(), {"--debug", "--keep-cpp"});
    if (isBuilding(command) || command == Command::check)
        names.insert(names.end(), {"--normal", "--math", "--string", "--array", "--io", "--win32"});
    return names;
}

std::string didYouMean(std::string_view name) {
    return name.empty() ? "" : "Did you mean '" + std::string(name) + "'?";
}

class Reader {
public:
    explicit Reader(const std::vector<std::string>& arguments_) : arguments(arguments_) {}

    CommandLineResult read() {
        if (arguments.empty()) return fail("no command is given", "");
        readCommand();
        while (result.mistake.empty() && !isEnd()) readArgument(next());
        if (result.mistake.empty() && !result.request.help && !result.request.version) checkNames();
        return std::move(result);
    }

private:
    bool isEnd() const { return position == arguments.size(); }
    const std::string& next() { return arguments[position++]; }
    CommandRequest& request() { return result.request; }

    CommandLineResult fail(std::string mistake, std::string wayOut) {
        result.mistake = std::move(mistake);
        result.wayOut = std::move(wayOut);
        return result;
    }

    void readCommand() {
        const std::string& word = next();
        if (word == "--version" || word == "-V") {
            request().version = true;
            position = arguments.size();
        } else if (word == "--help" || word == "-h" || word == "help") {
            request().help = true;
            if (!isEnd()) findCommand(next());
            position = arguments.size();
        } else {
            findCommand(word);
        }
    }

    void findCommand(const std::string& word) {
        std::vector<std::string_view> names;
        for (const CommandName& command : commandNames()) {
            if (command.name == word) {
                request().command = command.command;
                return;
            }
            names.push_back(command.name);
        }
        std::string wayOut = didYouMean(nearestName(word, names));
        if (word.ends_with(".vorla")) wayOut = "To build it: orvane build " + word;
        fail("there is no command '" + word + "'", wayOut);
    }

    void readArgument(const std::string& argument) {
        if (argument == "--") return readProgramArguments();
        if (argument == "--help" || argument == "-h") {
            request().help = true;
            position = arguments.size();
            return;
        }
        if (argument.size() > 1 && argument.front() == '-') return readOption(argument);
        request().names.push_back(argument);
    }

    // Behind it everything belongs to the program, or is a name that begins with "-".
    void readProgramArguments() {
        auto& target = request().command == Command::run || request().command == Command::watch
                           ? request().programArguments
                           : request().names;
        while (!isEnd()) target.push_back(next());
    }

    void readOption(const std::string& argument) {
        const std::size_t equals = argument.find('=');
        const std::string name = argument.substr(0, equals);
        if (!hasOption(request().command, name)) return readCompilerOption(argument);
        const bool takesValue = name == "--format" || name == "--template";
        if (!takesValue && equals != std::string::npos) {
            fail("'" + name + "' takes no value", "");
            return;
        }
        if (name == "--verbose") request().verbose = true;
        if (name == "--no-check") request().check = false;
        if (takesValue) readValue(name, argument, equals);
    }

    // --format=json or --format json
    void readValue(const std::string& name, const std::string& argument, std::size_t equals) {
        if (equals == std::string::npos && isEnd()) {
            fail("'" + name + "' needs a value", "");
            return;
        }
        const std::string value =
            equals == std::string::npos ? next() : argument.substr(equals + 1);
        if (name == "--format")
            readFormat(value);
        else
            readTemplate(value);
    }

    void readFormat(const std::string& value) {
        if (value == "text")
            request().format = Format::text;
        else if (value == "json")
            request().format = Format::json;
        else if (value == "sarif")
            request().format = Format::sarif;
        else
            fail("there is no format '" + value + "'", "The formats are text, json and sarif.");
    }

    void readTemplate(const std::string& value) {
        std::string names;
        for (const EmbeddedText& text : programTemplates()) {
            names.append(names.empty() ? "" : ", ").append(text.name);
            if (text.name == value) {
                request().templateName = value;
                return;
            }
        }
        fail("there is no template '" + value + "'", "The templates are " + names + ".");
    }

    void readCompilerOption(const std::string& argument) {
        if (isCompilerOption(request().command, argument))
            request().compilerOptions.push_back(argument);
        else
            fail("unknown option '" + argument + "'",
                 didYouMean(nearestName(argument, optionCandidates(request().command))));
    }

    void checkNames() {
        const std::size_t count = request().names.size();
        switch (request().command) {
        case Command::check:
        case Command::build:
            if (count == 0) fail("no file is given", "");
            break;
        case Command::run:
        case Command::watch:
            if (count != 1)
                fail(count == 0 ? "no file is given" : "one file is enough",
                     count == 0 ? "" : "Arguments for the program stand behind '--'.");
            break;
        case Command::create:
            if (count != 1) fail(count == 0 ? "no name is given" : "one name is enough", "");
            break;
        case Command::doctor:
            if (count != 0) fail("'doctor' takes no names", "");
            break;
        case Command::explain:
        case Command::none:
            break;
        }
    }

    const std::vector<std::string>& arguments;
    std::size_t position = 0;
    CommandLineResult result;
};

} // namespace

CommandLineResult readCommandLine(const std::vector<std::string>& arguments) {
    return Reader(arguments).read();
}

} // namespace Orvane
