// Library files (.orlib) to the table of library functions.
//
// The driver makes one per build and asks for libraries by name. A file is looked for under each
// search prefix in turn, read once per build, and the files that it imports are loaded before the
// rest of it. Nothing that is wrong with a library stops a build: it is printed and skipped.
//
//     OrlibBootloader bootloader(table, console);
//     bootloader.loadByName("math");   // ./orlib/math.orlib, or the same under the next prefix
#pragma once

#include "frontend/console.h"
#include "libraries/orlib_scanner.h"
#include "libraries/replacement_table.h"

#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace Orvane {

class OrlibBootloader {
public:
    // Fills the table, which the caller owns. The search prefixes are at first "./orlib/",
    // "./Lib/", "../orlib/", "../Lib/" and "./".
    OrlibBootloader(ReplacementTable& table, Console& console);
    OrlibBootloader(const OrlibBootloader&) = delete;
    OrlibBootloader& operator=(const OrlibBootloader&) = delete;

    // Appends a prefix, which ends in a separator, behind those that are there.
    void addSearchPath(std::string prefix);

    // The standard set: normal.orlib. Prints a warning when no prefix has it.
    void loadNormal();

    // One library. Prints "Warning: NAME.orlib not found" when no prefix has it.
    void loadByName(const std::string& name);

    // The file at a path; prints "Error: File not found PATH" when nothing is there.
    void load(const std::string& path);

    // A file that exists, with everything that it imports. A file that is loaded already is left
    // alone; one that is being loaded (it imports itself, directly or not) is an error, printed.
    void loadFile(const std::string& path);

    // The first that exists of PREFIX NAME and, unless the name holds ".orlib", PREFIX NAME.orlib;
    // empty when no prefix has either.
    std::string findFile(const std::string& name) const;

    // The whole file; empty when it cannot be read. Only plain files count: a device would have
    // no end.
    static std::string readFile(const std::string& path);

    // Where an import leads: an absolute path to itself, any other from the directory of the
    // importing file. Empty when nothing is there.
    static std::string resolvePath(const std::string& importPath, const std::string& fromFile);

    static std::string trim(std::string_view text);

    ReplacementTable& getTable() { return table; }

    // The absolute paths of all files that are loaded.
    const std::set<std::string>& loadedFiles() const { return loaded; }

    // The using directives of all files, in load order. They define no function.
    const std::vector<OrlibUsing>& usings() const { return usingPairs; }

private:
    struct OpenFile {
        std::string path; // absolute
        OrlibScanner scanner;
    };
    // The file being read and those that wait for it, innermost last. Kept here and not on the
    // call stack: a chain of imports may be longer than that is deep.
    using ImportChain = std::vector<OpenFile>;

    void openFile(const std::string& path, ImportChain& chain);
    void parseFile(ImportChain& chain);
    void closeFile(ImportChain& chain);
    void followImport(const std::string& importPath, ImportChain& chain);
    void addFunction(FunctionEntry entry);

    ReplacementTable& table;
    Console& console;
    std::set<std::string> loaded;  // absolute paths of files that are complete
    std::set<std::string> loading; // absolute paths of the files of the import chain
    std::vector<std::string> searchPaths;
    std::vector<OrlibUsing> usingPairs;
};

} // namespace Orvane
