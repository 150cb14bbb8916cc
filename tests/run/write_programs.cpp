// Writes translated programs for the tests to compile:
//
//     write_programs value FOLDER                  import.hpp with the runtime type
//     write_programs all FOLDER ORLIB              import.hpp with every library function
//     write_programs every FOLDER ORLIB            the same, called with every kind of operand
//     write_programs some FOLDER ORLIB LIBRARY...  import.hpp with the functions of those libraries
//     write_programs these FOLDER ORLIB NAME...    import.hpp with the functions of these names
//     write_programs single FOLDER ORLIB           NAME/import.hpp for every function alone
//     write_programs sweep FOLDER ORLIB            import.hpp with every library function, and
//     calls.h
//                                                  with a row {NAME, PARAMETERS, CALL} for each
//                                                  form
//
// A library function is called with dynamic values, alone and by "every" also with each kind of C++
// operand that a script can give it; a parameter that is changed for the caller always gets a
// variable.
#include "translation.h"

#include <cstdio>
#include <exception>
#include <filesystem>
#include <fstream>
#include <stdexcept>

using namespace Orvane;

namespace {

const std::vector<std::string> allArguments = {"a", "1", "2.5", "\"t\"", "true", "{1}"};

// The C++ library takes two iterators of the same type before a library function takes two lists.
bool isTakenByCpp(const std::string& name, const FunctionEntry& entry,
                  const std::string& argument) {
    return name == "sort" && entry.paramNames.size() == 2 && argument != "a";
}

std::string callOf(const FunctionEntry& entry, const std::string& argument) {
    std::string call = "    " + entry.name + "(";
    for (std::size_t i = 0; i < entry.paramTypes.size(); ++i) {
        if (i > 0) call += ", ";
        call += entry.paramTypes[i].back() == '&' ? "a" : argument;
    }
    return call + ");\n";
}

// All forms of a name, those with C++ parameters included.
std::string callsOf(const std::string& name, const std::vector<FunctionEntry>& entries,
                    const std::vector<std::string>& arguments) {
    std::string calls;
    for (const FunctionEntry& entry : entries)
        for (const std::string& argument : arguments)
            if (!isTakenByCpp(name, entry, argument)) calls += callOf(entry, argument);
    return calls;
}

std::string sourceOf(const std::string& calls) {
    return "t.script {\n  void callThem() {\n    value a = 1;\n" + calls + "  }\n}\n";
}

bool isHelper(const std::string& name) { return name.compare(0, 3, "orx") == 0; }

void writeProgram(const std::filesystem::path& folder, const std::string& source,
                  const ReplacementTable& table) {
    RecordingConsole console;
    const Translation program = translate(source, table, console);
    std::filesystem::create_directories(folder);
    std::ofstream(folder / "main.cpp") << program.mainText;
    std::ofstream importFile(folder / "import.hpp");
    importFile << program.importText;
    importFile.close();
    if (!importFile) throw std::runtime_error("cannot write " + (folder / "import.hpp").string());
}

void writeAll(const std::filesystem::path& folder, const ReplacementTable& table,
              const std::vector<std::string>& arguments = {"a"}) {
    std::string calls;
    for (const auto& [name, entries] : table.entries())
        if (!isHelper(name)) calls += callsOf(name, entries, arguments);
    writeProgram(folder, sourceOf(calls + "    print(1);\n"), table);
}

// The named functions, in all their forms, and what they need.
void writeThese(const std::filesystem::path& folder, const ReplacementTable& table,
                const std::vector<std::string>& names) {
    std::string calls;
    for (const std::string& name : names) {
        if (!table.exists(name)) throw std::runtime_error("no library function " + name);
        calls += callsOf(name, table.entries().at(name), {"a"});
    }
    writeProgram(folder, sourceOf(calls + "    print(1);\n"), table);
}

void writeSingles(const std::filesystem::path& folder, const ReplacementTable& table) {
    for (const auto& [name, entries] : table.entries())
        if (!isHelper(name))
            writeProgram(folder / name, sourceOf(callsOf(name, entries, allArguments)), table);
}

// The n-th argument of a row of calls.h, from the list of values that the call gets.
std::string swept(const std::string& type, std::size_t n) {
    const std::string argument = "a[" + std::to_string(n) + "]";
    if (type == "const char*") return argument + ".stringVal.c_str()";
    if (type == "int") return argument + ".asInt()";
    if (type == "double") return argument + ".asFloat()";
    return argument;
}

std::string sweptCall(const FunctionEntry& entry) {
    std::string arguments;
    for (std::size_t i = 0; i < entry.paramTypes.size(); ++i)
        arguments += (i > 0 ? ", " : "") + swept(entry.paramTypes[i], i);
    return "{\"" + entry.name + "\", " + std::to_string(entry.paramTypes.size()) +
           ", [](std::vector<Value>& a) { static_cast<void>(a); static_cast<void>(" + entry.name +
           "(" + arguments + ")); }},\n";
}

void writeSweep(const std::filesystem::path& folder, const ReplacementTable& table) {
    writeAll(folder, table);
    std::ofstream calls(folder / "calls.h");
    for (const auto& [name, entries] : table.entries())
        if (!isHelper(name))
            for (const FunctionEntry& entry : entries) calls << sweptCall(entry);
    calls.close();
    if (!calls) throw std::runtime_error("cannot write " + (folder / "calls.h").string());
}

void run(const std::vector<std::string>& words) {
    if (words.size() == 2 && words[0] == "value") {
        // Called by a handler, so that the header holds no function of the script: the test
        // includes it in several translation units.
        return writeProgram(words[1], "vorla W { button b { on click { print(1); alert(1); } } }",
                            ReplacementTable());
    }
    if (words.size() < 3)
        throw std::runtime_error(
            "usage: value|all|every|some|these|single|sweep FOLDER [ORLIB [LIBRARY...]]");
    RecordingConsole console;
    if (words[0] == "some") {
        std::vector<std::string> files;
        for (std::size_t i = 3; i < words.size(); ++i) files.push_back(words[i] + ".orlib");
        return writeAll(words[1], loadLibraries(words[2], files, console));
    }
    const ReplacementTable table = loadLibraries(words[2], libraryFiles(words[2]), console);
    if (words[0] == "these") {
        const std::vector<std::string> names(words.begin() + 3, words.end());
        return writeThese(words[1], table, names);
    }
    if (words[0] == "all") return writeAll(words[1], table);
    if (words[0] == "every") return writeAll(words[1], table, allArguments);
    if (words[0] == "single") return writeSingles(words[1], table);
    if (words[0] == "sweep") return writeSweep(words[1], table);
    throw std::runtime_error("unknown kind of program: " + words[0]);
}

} // namespace

int main(int count, char** words) {
    try {
        run(std::vector<std::string>(words + 1, words + count));
        return 0;
    } catch (const std::exception& error) {
        std::fprintf(stderr, "write_programs: %s\n", error.what());
        return 1;
    }
}
