#include "arguments.h"

#include <algorithm>
#include <string_view>

namespace Orvane {

static bool isBlank(wchar_t c) { return c == L' ' || c == L'\t'; }

// The name of the program knows no escapes: a quote begins and ends a stretch in which blanks count
// as part of it.
static std::size_t endOfProgram(const std::wstring& line) {
    bool quoted = false;
    std::size_t i = 0;
    for (; i < line.size() && (quoted || !isBlank(line[i])); ++i)
        if (line[i] == L'"') quoted = !quoted;
    return i;
}

std::wstring textBehindProgram(const std::wstring& commandLine) {
    return commandLine.substr(endOfProgram(commandLine));
}

// Backslashes count only in front of a quote: two of them are one, and an odd one makes the quote a
// character of the argument. Inside quotes a doubled quote is one such character as well.
static std::wstring readArgument(const std::wstring& line, std::size_t& i) {
    std::wstring argument;
    bool quoted = false;
    while (i < line.size() && (quoted || !isBlank(line[i]))) {
        const std::size_t start = i;
        while (i < line.size() && line[i] == L'\\') ++i;
        const std::size_t backslashes = i - start;
        if (i == line.size() || line[i] != L'"') {
            argument.append(backslashes, L'\\');
            if (backslashes == 0) argument += line[i++];
            continue;
        }
        argument.append(backslashes / 2, L'\\');
        const bool doubled = quoted && i + 1 < line.size() && line[i + 1] == L'"';
        if (backslashes % 2 == 1) {
            argument += L'"';
        } else if (doubled) {
            argument += L'"';
            ++i;
        } else {
            quoted = !quoted;
        }
        ++i;
    }
    return argument;
}

Arguments splitArguments(const std::wstring& commandLine) {
    std::size_t i = endOfProgram(commandLine);
    std::wstring program = commandLine.substr(0, i);
    program.erase(std::remove(program.begin(), program.end(), L'"'), program.end());
    Arguments arguments = {program};
    while (true) {
        while (i < commandLine.size() && isBlank(commandLine[i])) ++i;
        if (i == commandLine.size()) return arguments;
        arguments.push_back(readArgument(commandLine, i));
    }
}

static bool isPlain(const std::wstring& argument) {
    constexpr std::wstring_view marks = L"-+=_./:\\,";
    return !argument.empty() && std::all_of(argument.begin(), argument.end(), [&](wchar_t c) {
        return (c >= L'a' && c <= L'z') || (c >= L'A' && c <= L'Z') || (c >= L'0' && c <= L'9') ||
               marks.find(c) != std::wstring_view::npos;
    });
}

std::wstring quoteArgument(const std::wstring& argument) {
    if (isPlain(argument)) return argument;
    std::wstring quoted = L"\"";
    std::size_t backslashes = 0;
    for (const wchar_t c : argument) {
        if (c == L'"') quoted.append(backslashes + 1, L'\\');
        backslashes = c == L'\\' ? backslashes + 1 : 0;
        quoted += c;
    }
    quoted.append(backslashes, L'\\');
    return quoted + L'"';
}

std::wstring joinArguments(const Arguments& arguments) {
    std::wstring line;
    for (const std::wstring& argument : arguments) {
        if (!line.empty()) line += L' ';
        line += quoteArgument(argument);
    }
    return line;
}

static bool startsWith(const std::wstring& text, std::wstring_view start) {
    return text.compare(0, start.size(), start) == 0;
}

bool asksForSymbols(const Arguments& arguments) {
    return std::any_of(arguments.begin(), arguments.end(), [](const std::wstring& argument) {
        const bool level = argument.size() == 3 && argument[2] >= L'0' && argument[2] <= L'9';
        return argument == L"-g" || (level && startsWith(argument, L"-g")) ||
               startsWith(argument, L"-ggdb");
    });
}

// Whether both texts name one folder: letters of the ASCII range in either case, both slashes
// alike.
static bool isSameFolder(const std::wstring& a, const std::wstring& b) {
    const auto plain = [](wchar_t c) {
        if (c == L'/') return L'\\';
        return c >= L'A' && c <= L'Z' ? static_cast<wchar_t>(c - L'A' + L'a') : c;
    };
    return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                      [&](wchar_t left, wchar_t right) { return plain(left) == plain(right); });
}

static bool isFixedOption(const std::wstring& argument) {
    constexpr std::wstring_view options[] = {L"-std=c++17", L"-Og", L"-g", L"-finput-charset=UTF-8",
                                             L"-mwindows"};
    return std::find(std::begin(options), std::end(options), argument) != std::end(options) ||
           startsWith(argument, L"-l");
}

static bool isMainSource(const std::wstring& argument) {
    const std::size_t slash = argument.find_last_of(L"/\\");
    return slash != std::wstring::npos && argument.substr(slash + 1) == L"main.cpp";
}

static bool isObject(const std::wstring& argument) {
    return argument.size() > 2 && argument.substr(argument.size() - 2) == L".o";
}

std::optional<std::size_t> findProgramOutput(const Arguments& arguments,
                                             const std::wstring& tools) {
    std::optional<std::size_t> output;
    bool ownHeaders = false;
    int sources = 0;
    for (std::size_t i = 1; i < arguments.size(); ++i) {
        const std::wstring& argument = arguments[i];
        if (isFixedOption(argument)) continue;
        if (argument == L"-o") {
            if (output || ++i == arguments.size()) return std::nullopt;
            output = i;
        } else if (startsWith(argument, L"-I")) {
            const std::wstring folder = argument.substr(2);
            const bool isInclude = isSameFolder(folder, tools + L"\\include");
            ownHeaders = ownHeaders || isInclude;
            if (!isInclude && !isSameFolder(folder, tools + L"\\orlib") &&
                !isSameFolder(folder, tools + L"\\parameter"))
                return std::nullopt;
        } else if (startsWith(argument, L"-") || !(isMainSource(argument) || isObject(argument))) {
            return std::nullopt;
        } else if (isMainSource(argument)) {
            ++sources;
        }
    }
    return ownHeaders && sources == 1 ? output : std::nullopt;
}

} // namespace Orvane
