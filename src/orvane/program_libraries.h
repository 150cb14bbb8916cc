// The libraries of a program, loaded as orvanec loads them, and the places of their functions.
//
//     ProgramLibraries libraries(installation, options);
//     libraries.load(tree);
//     auto place = libraries.find(entry);   // the file and where the function's body begins in it
#pragma once

#include "check/source_text.h"
#include "driver/options.h"
#include "frontend/syntax_tree.h"
#include "libraries/orlib_bootloader.h"

#include <filesystem>
#include <map>
#include <optional>

namespace Orvane {

class ProgramLibraries {
public:
    // `installation` is the folder that holds orlib/.
    ProgramLibraries(const std::filesystem::path& installation, const Options& options);

    void load(const AST& program);

    const ReplacementTable& table() const { return functions; }
    bool hasLoadedAny() const { return anyLoaded; }
    const std::set<std::string>& files() const { return bootloader.loadedFiles(); }

    // Whether the pointer is an entry of the table.
    const FunctionEntry* findEntry(const void* node) const;

    struct BodyPlace {
        const SourceText* file; // stays as long as this object
        std::size_t offset;     // of the body's first byte
    };
    std::optional<BodyPlace> find(const FunctionEntry& entry);

private:
    const SourceText& textOf(const std::string& path);

    const Options options;
    RecordingConsole console;
    ReplacementTable functions;
    OrlibBootloader bootloader;
    bool anyLoaded = false;
    std::map<std::string, SourceText> texts; // by path
};

} // namespace Orvane
