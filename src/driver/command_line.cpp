#include "driver/command_line.h"

#include <utility>

namespace Orvane {

std::vector<std::string> splitCommandLine(std::string_view commandLine) {
    std::vector<std::string> arguments;
    std::string argument;
    bool isOpen = false; // an argument has begun, if only with a quote
    bool isQuoted = false;
    for (const char character : commandLine) {
        if (character == ' ' && !isQuoted) {
            if (isOpen) arguments.push_back(std::exchange(argument, {}));
            isOpen = false;
            continue;
        }
        isOpen = true;
        if (character == '"')
            isQuoted = !isQuoted;
        else
            argument += character;
    }
    if (isOpen) arguments.push_back(std::move(argument));
    return arguments;
}

} // namespace Orvane
