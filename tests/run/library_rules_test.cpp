// Rules that every library file keeps, so that its functions are found, do not drag each other into
// a program, and can be called with dynamic values.
#include "translation.h"

#include <gtest/gtest.h>

#include <fstream>
#include <map>
#include <regex>
#include <set>
#include <sstream>

namespace Orvane {
namespace {

const std::filesystem::path folder = ORVANE_ORLIB;

std::string readText(const std::filesystem::path& path) {
    std::ifstream file(path, std::ios::binary);
    std::ostringstream text;
    text << file.rdbuf();
    return text.str();
}

// The definitions of a file as a reader sees them: the lines that begin with a type and a name.
std::vector<std::string> definedNames(const std::string& text) {
    const std::regex definition("^(value|int|bool|string|double|void) ([A-Za-z0-9_]+)\\(.*\\{$");
    std::vector<std::string> names;
    std::istringstream lines(text);
    for (std::string line; std::getline(lines, line);) {
        std::smatch match;
        if (std::regex_match(line, match, definition)) names.push_back(match[2]);
    }
    return names;
}

// "const char* pattern" is read as the type const and the name "char* pattern".
std::string lastWord(const std::string& name) { return name.substr(name.rfind(' ') + 1); }

// The type as it is written: all before the last word.
std::string wholeType(const FunctionEntry& entry, std::size_t index) {
    const std::string text = entry.paramTypes[index] + " " + entry.paramNames[index];
    return text.substr(0, text.rfind(' '));
}

bool changesAnArgument(const FunctionEntry& entry) {
    for (std::size_t i = 0; i < entry.paramTypes.size(); ++i)
        if (wholeType(entry, i) == "Value&") return true;
    return false;
}

bool isHelper(const std::string& name) { return name.compare(0, 3, "orx") == 0; }

// A form for literals, which the C function of the same name would take otherwise.
bool takesLiterals(const FunctionEntry& entry) {
    static const std::set<std::string> cNames = {"atoi",   "atof",   "gmtime", "localtime",
                                                 "mktime", "printf", "sprintf"};
    const std::string first = entry.paramTypes.empty() ? "" : wholeType(entry, 0);
    return cNames.count(entry.name) > 0 &&
           (first == "int" || first == "double" || first == "const char*");
}

ReplacementTable everything() {
    RecordingConsole console;
    return loadLibraries(folder, libraryFiles(folder), console);
}

// Calls fn(name, entry) for every function of every library.
template <typename Function>
void forEachFunction(const ReplacementTable& table, Function fn) {
    for (const auto& [name, entries] : table.entries())
        for (const FunctionEntry& entry : entries) fn(name, entry);
}

// The names that a body calls: a word with a parenthesis behind it.
std::set<std::string> calledNames(const std::string& body) {
    static const std::regex call("([A-Za-z0-9_]+)\\s*\\(");
    std::set<std::string> names;
    for (std::sregex_iterator at(body.begin(), body.end(), call), end; at != end; ++at)
        names.insert((*at)[1]);
    return names;
}

TEST(LibraryFiles, existWithTheStandardSet) {
    const auto files = libraryFiles(folder);
    for (const char* name : {"array.orlib", "container.orlib", "io.orlib", "math.orlib",
                             "normal.orlib", "orxcore.orlib", "string.orlib", "win32.orlib"})
        EXPECT_NE(std::find(files.begin(), files.end(), name), files.end()) << name;
}

TEST(LibraryFiles, areReadWithoutASkippedFunction) {
    for (const std::string& file : libraryFiles(folder)) {
        std::string expected;
        for (const std::string& name : definedNames(readText(folder / file)))
            expected += "  function: " + name + "\n";
        RecordingConsole console;
        loadLibraries(folder, {file}, console);
        // What the file itself defines comes last, behind what its imports define.
        ASSERT_GE(console.text().size(), expected.size()) << file;
        EXPECT_EQ(console.text().substr(console.text().size() - expected.size()), expected) << file;
    }
}

// A form that takes a C++ number stands beside the one that takes a value and is not counted.
TEST(LibraryFiles, holdAllFunctionsOfData) {
    const std::map<std::string, int> expected = {
        {"array", 34}, {"color", 38},  {"container", 31}, {"dict", 23},  {"list", 24},
        {"math", 40},  {"math2", 32},  {"numeric", 39},   {"queue", 17}, {"set", 16},
        {"stack", 17}, {"string", 38}, {"text", 32},      {"time", 36},  {"tree", 20}};
    const std::regex definition("\n(value|int|bool|string) ([A-Za-z0-9_]+)\\((.*)\\) \\{");
    for (const auto& [name, count] : expected) {
        const std::string text = readText(folder / (name + ".orlib"));
        int found = 0;
        for (std::sregex_iterator at(text.begin(), text.end(), definition), end; at != end; ++at) {
            const std::string parameters = (*at)[3];
            const bool isForLiterals =
                parameters.compare(0, 4, "int ") == 0 || parameters.compare(0, 7, "double ") == 0;
            if (!isHelper((*at)[2]) && !isForLiterals) ++found;
        }
        EXPECT_EQ(found, count) << name;
    }
}

TEST(LibraryFiles, loadWithoutAWarning) {
    RecordingConsole console;
    const ReplacementTable table = loadLibraries(folder, libraryFiles(folder), console);
    EXPECT_EQ(console.text().find("Warning:"), std::string::npos);
    EXPECT_EQ(console.text().find("Error:"), std::string::npos);
    EXPECT_GT(table.size(), 200u);
}

TEST(LibraryFiles, standardSetHoldsItsFiveLibraries) {
    RecordingConsole console;
    const ReplacementTable normal = loadLibraries(folder, {"normal.orlib"}, console);
    RecordingConsole other;
    const ReplacementTable five = loadLibraries(
        folder, {"string.orlib", "array.orlib", "io.orlib", "math.orlib", "win32.orlib"}, other);
    EXPECT_EQ(normal.size(), five.size());
    for (const auto& [name, entries] : five.entries()) EXPECT_TRUE(normal.exists(name)) << name;
}

TEST(LibraryFunctions, carryAPublicNameOrTheHelperPrefix) {
    RecordingConsole console;
    const ReplacementTable core = loadLibraries(folder, {"orxcore.orlib"}, console);
    forEachFunction(core, [](const std::string& name, const FunctionEntry&) {
        EXPECT_TRUE(isHelper(name)) << name;
    });
}

TEST(LibraryFunctions, callHelpersOnly) {
    const ReplacementTable table = everything();
    forEachFunction(table, [&table](const std::string& name, const FunctionEntry& entry) {
        for (const std::string& called : calledNames(entry.body))
            EXPECT_TRUE(isHelper(called) || !table.exists(called))
                << name << " would bring " << called << " into a program";
    });
}

TEST(LibraryFunctions, takeDynamicValues) {
    forEachFunction(everything(), [](const std::string& name, const FunctionEntry& entry) {
        if (isHelper(name)) return;
        for (std::size_t i = 0; i < entry.paramTypes.size(); ++i) {
            const std::string type = wholeType(entry, i);
            const bool isForLiterals = takesLiterals(entry);
            EXPECT_TRUE(type == "value" || type == "const Value&" || type == "Value&" ||
                        isForLiterals)
                << name << ": " << type;
        }
    });
}

// A list, a dict or a long text is copied for a `value`. Beside an argument that is changed one is
// needed, for it may be a part of that; and so it is where the copy becomes the result.
TEST(LibraryFunctions, ofDataCopyNoArgumentThatTheyOnlyRead) {
    const std::map<std::string, std::string> ownCopies = {
        {"concat", "a"},        {"flatten", "list"},    {"chunk", "list"},
        {"shuffle", "list"},    {"zip", "a b"},         {"dictMerge", "a"},
        {"dictOmit", "d"},      {"queueToList", "q"},   {"toList", "x"},
        {"toDict", "x"},        {"mergeValues", "a b"}, {"jsonMerge", "a"},
        {"cumulative", "list"}, {"histogram", "list"},  {"matrixMultiply", "a"},
        {"transpose", "m"},     {"determinant", "m"},   {"solveLinear", "m"},
        {"median", "list"},     {"percentile", "list"}, {"orxNewNode", "v"}};
    RecordingConsole console;
    const ReplacementTable table = loadLibraries(
        folder, {"array.orlib", "color.orlib",   "container.orlib", "crypto.orlib", "dict.orlib",
                 "io.orlib",    "json.orlib",    "list.orlib",      "log.orlib",    "math.orlib",
                 "math2.orlib", "numeric.orlib", "queue.orlib",     "regex.orlib",  "set.orlib",
                 "stack.orlib", "string.orlib",  "text.orlib",      "time.orlib",   "tree.orlib"},
        console);
    std::set<std::string> seen;
    forEachFunction(table, [&](const std::string& name, const FunctionEntry& entry) {
        std::string copied;
        for (std::size_t i = 0; i < entry.paramTypes.size(); ++i)
            if (wholeType(entry, i) == "value")
                copied += (copied.empty() ? "" : " ") + entry.paramNames[i];
        if (copied.empty() || changesAnArgument(entry)) return;
        const auto known = ownCopies.find(name);
        EXPECT_EQ(copied, known == ownCopies.end() ? "" : known->second) << name;
        seen.insert(name);
    });
    EXPECT_EQ(seen.size(), ownCopies.size());
}

// A list cannot change while a function reads an element of it.
TEST(LibraryFunctions, thatChangeAnArgumentCopyTheOthers) {
    forEachFunction(everything(), [](const std::string& name, const FunctionEntry& entry) {
        if (isHelper(name) || !changesAnArgument(entry)) return;
        for (std::size_t i = 0; i < entry.paramTypes.size(); ++i)
            EXPECT_NE(wholeType(entry, i), "const Value&") << name;
    });
}

TEST(LibraryFunctions, differInTheNumberOfParameters) {
    const ReplacementTable table = everything();
    for (const auto& [name, entries] : table.entries()) {
        std::set<std::size_t> counts;
        for (const FunctionEntry& entry : entries) {
            const bool isForLiterals = takesLiterals(entry);
            if (isHelper(name) || isForLiterals) continue;
            EXPECT_TRUE(counts.insert(entry.paramTypes.size()).second) << name;
        }
        EXPECT_TRUE(!isHelper(name) || entries.size() == 1u) << name;
    }
}

TEST(LibraryFunctions, haveACommentWithTheirParameters) {
    for (const std::string& file : libraryFiles(folder)) {
        RecordingConsole console;
        const std::string text = readText(folder / file);
        const ReplacementTable table = loadLibraries(folder, {file}, console);
        const auto names = definedNames(text);
        for (const std::string& name : std::set<std::string>(names.begin(), names.end())) {
            for (const FunctionEntry* entry : table.getAll(name)) {
                std::string comment = "// " + name + "(";
                for (std::size_t i = 0; i < entry->paramNames.size(); ++i)
                    comment += (i > 0 ? ", " : "") + lastWord(entry->paramNames[i]);
                EXPECT_NE(text.find(comment + "): "), std::string::npos) << file << ": " << comment;
            }
        }
    }
}

TEST(LibraryFunctions, useEveryHelper) {
    const ReplacementTable table = everything();
    std::set<std::string> called;
    forEachFunction(table, [&called](const std::string& name, const FunctionEntry& entry) {
        for (const std::string& callee : calledNames(entry.body))
            if (callee != name) called.insert(callee);
    });
    forEachFunction(table, [&called](const std::string& name, const FunctionEntry&) {
        EXPECT_TRUE(!isHelper(name) || called.count(name) == 1) << name << " is called by nothing";
    });
}

TEST(LibraryFunctions, bringOnlyTheirHelpersIntoAProgram) {
    const ReplacementTable table = everything();
    RecordingConsole console;
    const Translation program =
        translate("t.script { void f() { value a = 1; addItem(a, a); } }", table, console);
    EXPECT_NE(program.importText.find("int addItem(Value c, Value s) {"), std::string::npos);
    EXPECT_NE(program.importText.find("string orxWide(const string& s) {"), std::string::npos);
    EXPECT_EQ(program.importText.find("getItem("), std::string::npos);
    EXPECT_EQ(program.importText.find("orxReadAll("), std::string::npos);
}

TEST(LibraryFunctions, addNothingToAnEmptyProgramButTheHeaderOfTheirSection) {
    RecordingConsole console;
    const ReplacementTable normal = loadLibraries(folder, {"normal.orlib"}, console);
    Translation with = translate("vorla Empty { }", normal, console);
    const Translation without = translate("vorla Empty { }", ReplacementTable(), console);
    const std::string header = "\n// ===== orlib function implementations =====\n";
    const std::size_t place = with.importText.find(header);
    ASSERT_NE(place, std::string::npos);
    with.importText.erase(place, header.size());
    EXPECT_EQ(with.importText, without.importText);
    EXPECT_EQ(with.mainText, without.mainText);
}

} // namespace
} // namespace Orvane
