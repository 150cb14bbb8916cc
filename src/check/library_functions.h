// What the libraries offer to a source: the functions that are loaded, with their signatures, and
// where those stand that are not.
//
// Loads as a build does: the imports of the source, the standard set, the libraries of the command
// line; from the search folders in the working directory, then from the installation. Made once per
// file that is checked.
//
//     LibraryFunctions libraries("/opt/orvane/orlib");
//     libraries.load(source.tree(), options);
//     libraries.find("trim");          // the overloads, or nothing
//     libraries.librariesWith("trim"); // {"string"}
#pragma once

#include "driver/options.h"
#include "frontend/console.h"
#include "frontend/syntax_tree.h"
#include "libraries/orlib_bootloader.h"

#include <filesystem>
#include <map>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace Orvane {

// A parameter of a library function as it stands in the file: the last word is its name, all before
// it the type, one blank between two words and none before & and *: {"const Value&", "list"}.
struct LibraryParameter {
    std::string type;
    std::string name;
};

std::vector<LibraryParameter> parametersOf(const FunctionEntry& function);

class LibraryFunctions {
public:
    // The folder of the installation's libraries; one that does not exist counts as empty.
    explicit LibraryFunctions(std::filesystem::path installedFolder = {});
    LibraryFunctions(const LibraryFunctions&) = delete;
    LibraryFunctions& operator=(const LibraryFunctions&) = delete;

    void load(const AST& program, const Options& options);

    // One library; "normal" is the standard set.
    void load(const std::string& name);

    // The loaded functions of a name, in the order of their files. Empty for an unknown name.
    std::span<const FunctionEntry> find(std::string_view name) const;
    const ReplacementTable& table() const { return functions; }

    // Whether library functions are written into the program at all.
    bool anyLoaded() const { return loadedAny; }

    // Whether a library of the name is found. `import "path/name.orlib"` asks for "name".
    bool isInstalled(std::string_view import) const;

    // The libraries, loaded or not, whose files have a function of the name, in byte order. Helpers
    // of the libraries themselves do not count. The files are read at the first call.
    const std::vector<std::string>& librariesWith(std::string_view name) const;

    // All names that librariesWith() knows, in byte order; for suggestions.
    std::vector<std::string_view> knownNames() const;

private:
    using Index = std::map<std::string, std::vector<std::string>, std::less<>>;
    const Index& index() const;
    static Index readFolders(const std::vector<std::filesystem::path>& folders);

    RecordingConsole console; // nobody reads it: what is missing has messages of its own
    ReplacementTable functions;
    OrlibBootloader bootloader;
    std::vector<std::filesystem::path> folders; // in the order of the search
    bool loadedAny = false;
    mutable std::optional<Index> byName; // filled when first asked for
};

} // namespace Orvane
