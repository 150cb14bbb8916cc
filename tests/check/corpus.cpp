#include "corpus.h"

#include "check/check.h"

#include <algorithm>
#include <fstream>
#include <set>
#include <sstream>
#include <stdexcept>

namespace Orvane {

namespace {

const std::string root = ORVANE_SOURCE_ROOT;

} // namespace

std::string readText(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    if (!file) throw std::runtime_error("cannot read " + path);
    std::ostringstream text;
    text << file.rdbuf();
    return text.str();
}

bool CorpusProgram::saysError() const {
    return std::any_of(diagnostics.begin(), diagnostics.end(), [](const Diagnostic& diagnostic) {
        return diagnostic.severity() == Severity::error;
    });
}

std::string CorpusProgram::ids() const {
    std::set<std::string_view> ids;
    for (const Diagnostic& diagnostic : diagnostics) ids.insert(messageOf(diagnostic.id).id);
    std::string text;
    for (const std::string_view id : ids) text += (text.empty() ? "" : " ") + std::string(id);
    return text;
}

std::vector<Diagnostic> checkText(const std::string& text) {
    const ParsedSource source("app.vorla", text);
    LibraryFunctions libraries(root + "/orlib");
    libraries.load(source.tree(), {});
    return checkSource(source, libraries, {});
}

// The first three columns, name, verdict and behaviour, are never quoted.
std::vector<CorpusProgram> readCorpus() {
    std::vector<CorpusProgram> programs;
    std::istringstream table(readText(root + "/tests/check/corpus.csv"));
    std::string line;
    std::getline(table, line); // the names of the columns
    while (std::getline(table, line)) {
        std::istringstream columns(line);
        CorpusProgram program;
        std::string verdict, behaviour;
        std::getline(columns, program.name, ',');
        std::getline(columns, verdict, ',');
        std::getline(columns, behaviour, ',');
        program.isRefused = verdict != "accepted";
        program.misleads = behaviour == "misleads";
        program.diagnostics =
            checkText(readText(root + "/tests/check/corpus/" + program.name + ".vorla"));
        programs.push_back(std::move(program));
    }
    return programs;
}

} // namespace Orvane
