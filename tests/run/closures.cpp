// closures ORLIB: for each function that programs can name, the helpers that come into a program
// with it, by the compiler's own rule. The output is compared with closures.txt.
#include "codegen/library_calls.h"
#include "translation.h"

#include <cstdio>
#include <exception>

using namespace Orvane;

static bool isHelper(const std::string& name) { return name.compare(0, 3, "orx") == 0; }

static void printClosure(const ReplacementTable& table, const std::string& name) {
    std::printf("%s:", name.c_str());
    for (const std::string& needed : closeOverLibraryCalls(table, {name}))
        if (needed != name) std::printf(" %s", needed.c_str());
    std::printf("\n");
}

int main(int count, char** words) {
    try {
        if (count != 2) throw std::runtime_error("usage: closures ORLIB");
        RecordingConsole console;
        const ReplacementTable table = loadLibraries(words[1], libraryFiles(words[1]), console);
        for (const auto& [name, entries] : table.entries())
            if (!isHelper(name)) printClosure(table, name);
        return 0;
    } catch (const std::exception& error) {
        std::fprintf(stderr, "closures: %s\n", error.what());
        return 1;
    }
}
