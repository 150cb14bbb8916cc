// What the check of types says about a program, in a form to compare with:
//
//     EXPECT_EQ(said(inHandler("prnt(1);")), "unknown-function <prnt> no function is called
//     'prnt'\n");
#pragma once

#include "check/types.h"

#include <algorithm>
#include <string>
#include <vector>

namespace Orvane::Testing {

// One line for each diagnostic, in the order of the source: id, underlined text, message.
inline std::string said(const std::string& program, const std::vector<std::string>& names = {}) {
    const ParsedSource source("test.vorla", program);
    LibraryFunctions libraries(ORVANE_LIBRARY_FOLDER);
    for (const std::string& name : names) libraries.load(name);
    std::vector<Diagnostic> found = source.diagnostics();
    if (found.empty()) checkTypes(source, libraries, found);
    std::stable_sort(found.begin(), found.end(), [](const Diagnostic& a, const Diagnostic& b) {
        return a.range.begin < b.range.begin;
    });
    std::string lines;
    for (const Diagnostic& diagnostic : found) {
        lines += messageOf(diagnostic.id).id;
        lines += " <";
        lines += source.source().part(diagnostic.range);
        lines += "> " + diagnostic.text + "\n";
    }
    return lines;
}

// A window with some controls, and statements in the handler of its button.
inline std::string inHandler(const std::string& statements, const std::string& before = "") {
    return before + "vorla Test { entry name { } button ok { on click { " + statements + " } } }";
}

// The hint of the only diagnostic.
inline std::string hintOf(const std::string& program, const std::vector<std::string>& names = {}) {
    const ParsedSource source("test.vorla", program);
    LibraryFunctions libraries(ORVANE_LIBRARY_FOLDER);
    for (const std::string& name : names) libraries.load(name);
    std::vector<Diagnostic> found;
    checkTypes(source, libraries, found);
    return found.size() == 1 ? found.front().hint : std::to_string(found.size()) + " messages";
}

} // namespace Orvane::Testing
