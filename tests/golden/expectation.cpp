#include "expectation.h"

#include "golden_case.h"
#include "unit/temporary_directory.h"

#include <cstdio>

namespace fs = std::filesystem;

namespace Orvane::Golden {

namespace {

const std::string fileWithSharedTexts = "import.hpp";

Outcome readFiles(const fs::path& folder) {
    Outcome files;
    for (const fs::directory_entry& entry : fs::directory_iterator(folder))
        files[entry.path().filename().string()] = readFile(entry.path());
    return files;
}

// What `command` prints. Only fixed commands over our own temporary paths come here.
std::string outputOf(const std::string& command) {
    std::string output;
    std::FILE* pipe = popen(command.c_str(), "r");
    if (!pipe) return "(cannot run " + command + ")\n";
    char buffer[4096];
    for (std::size_t size; (size = std::fread(buffer, 1, sizeof buffer, pipe)) > 0;)
        output.append(buffer, size);
    pclose(pipe);
    return output;
}

std::string unifiedDiff(const std::string& name, const std::string& expected,
                        const std::string& actual) {
    const TemporaryDirectory directory;
    directory.write("expected", expected);
    directory.write("actual", actual);
    return outputOf("cd '" + directory.path().string() + "' && diff -a -u --label 'expected/" +
                    name + "' --label 'actual/" + name + "' expected actual");
}

} // namespace

Outcome readExpectation(const fs::path& folder, const SharedTexts& shared) {
    if (!fs::is_directory(folder)) return {};
    Outcome expectation = readFiles(folder);
    const auto found = expectation.find(fileWithSharedTexts);
    if (found != expectation.end()) found->second = shared.expand(found->second);
    return expectation;
}

void writeExpectation(const fs::path& folder, const Outcome& outcome, const SharedTexts& shared) {
    fs::create_directories(folder);
    for (const auto& [name, text] : readFiles(folder))
        if (!outcome.contains(name)) fs::remove_all(folder / name);
    for (const auto& [name, text] : outcome) {
        const std::string stored = name == fileWithSharedTexts ? shared.collapse(text) : text;
        const fs::path file = folder / name;
        if (!fs::exists(file) || readFile(file) != stored) writeFile(file, stored);
    }
}

std::string describeDifferences(const Outcome& expected, const Outcome& actual) {
    std::string report;
    for (const auto& [name, text] : expected) {
        const auto found = actual.find(name);
        if (found == actual.end())
            report += "expected/" + name + " is there, but the run gave none\n";
        else if (found->second != text)
            report += unifiedDiff(name, text, found->second);
    }
    for (const auto& [name, text] : actual)
        if (!expected.contains(name))
            report += "expected/" + name + " is missing; the run gave " +
                      std::to_string(text.size()) + " bytes\n";
    return report;
}

} // namespace Orvane::Golden
