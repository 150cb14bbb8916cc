#include "orvane/program_libraries.h"

#include "driver/library_stage.h"
#include "libraries/files.h"

#include <system_error>

namespace Orvane {

namespace fs = std::filesystem;

ProgramLibraries::ProgramLibraries(const fs::path& installation, const Options& options_)
    : options(options_), bootloader(functions, console) {
    const fs::path installed = installation / "orlib";
    std::error_code error;
    if (fs::is_directory(installed, error))
        bootloader.addSearchPath(Orvane::textOf(installed) + "/");
}

void ProgramLibraries::load(const AST& program) {
    LibraryStage stage(bootloader, console);
    stage.run(program.imports, options);
    anyLoaded = stage.hasLoadedAny();
}

const FunctionEntry* ProgramLibraries::findEntry(const void* node) const {
    for (const auto& [name, entries] : functions.entries())
        for (const FunctionEntry& entry : entries)
            if (&entry == node) return &entry;
    return nullptr;
}

// In messages the path is the one from the working directory, where the file lies below it.
const SourceText& ProgramLibraries::textOf(const std::string& path) {
    const auto known = texts.find(path);
    if (known != texts.end()) return known->second;
    const fs::path near = pathOf(path).lexically_relative(workingDirectory());
    const bool isBelow = !near.empty() && *near.begin() != "..";
    std::string shown = isBelow ? Orvane::textOf(near) : path;
    return texts.try_emplace(path, std::move(shown), OrlibBootloader::readFile(path)).first->second;
}

// A body stands in its file as it stands in the table. Two functions may have the same one: the
// name in front of it, behind the body before, tells them apart.
std::optional<ProgramLibraries::BodyPlace> ProgramLibraries::find(const FunctionEntry& entry) {
    if (entry.body.empty()) return std::nullopt;
    for (const std::string& path : files()) {
        const SourceText& file = textOf(path);
        const std::string& text = file.text();
        for (std::size_t at = text.find(entry.body); at != std::string::npos;
             at = text.find(entry.body, at + 1)) {
            const std::size_t brace = text.rfind('{', at);
            if (brace == std::string::npos) continue;
            const std::size_t before = text.find_last_of("{}", brace == 0 ? 0 : brace - 1);
            const std::size_t from = before == std::string::npos || brace == 0 ? 0 : before;
            const std::string_view head = std::string_view(text).substr(from, brace - from);
            if (head.find(entry.name) != std::string_view::npos) return BodyPlace{&file, at};
        }
    }
    return std::nullopt;
}

} // namespace Orvane
