#include "libraries/orlib_bootloader.h"

#include "libraries/files.h"

#include <system_error>
#include <utility>

namespace Orvane {

namespace fs = std::filesystem;

OrlibBootloader::OrlibBootloader(ReplacementTable& table_, Console& console_)
    : table(table_),
      console(console_), searchPaths{"./orlib/", "./Lib/", "../orlib/", "../Lib/", "./"} {}

void OrlibBootloader::addSearchPath(std::string prefix) {
    searchPaths.push_back(std::move(prefix));
}

void OrlibBootloader::loadNormal() {
    for (const char* name : {"normal.orlib", "normal"}) {
        const std::string path = findFile(name);
        if (path.empty()) continue;
        load(path);
        return;
    }
    console.print("Warning: normal.orlib not found\n");
}

void OrlibBootloader::loadByName(const std::string& name) {
    const std::string path = findFile(name);
    if (path.empty())
        console.print("Warning: %s.orlib not found\n", name.c_str());
    else
        load(path);
}

void OrlibBootloader::load(const std::string& path) {
    if (pathExists(pathOf(path)))
        loadFile(path);
    else
        console.print("Error: File not found %s\n", path.c_str());
}

void OrlibBootloader::loadFile(const std::string& path) {
    // Also when a file cannot be finished, it must not stay marked as being loaded.
    struct EndOfChain {
        std::set<std::string>& files;
        ~EndOfChain() { files.clear(); }
    } endOfChain{loading};

    ImportChain chain;
    openFile(path, chain);
    while (!chain.empty()) parseFile(chain);
}

void OrlibBootloader::openFile(const std::string& path, ImportChain& chain) {
    const std::string file = textOf(absolutePath(pathOf(path)));
    if (loading.contains(file)) {
        console.print("Error: Circular import detected: %s\n", file.c_str());
        return;
    }
    if (loaded.contains(file)) return;
    loading.insert(file);
    console.print("Loading: %s\n", file.c_str());
    std::string text = readFile(file);
    if (text.empty()) console.print("Warning: Cannot read %s\n", file.c_str());
    chain.push_back({file, OrlibScanner(std::move(text))});
}

// Reads on in the innermost file, to its end or to its next import.
void OrlibBootloader::parseFile(ImportChain& chain) {
    while (std::optional<OrlibItem> item = chain.back().scanner.next()) {
        if (const auto* import = std::get_if<OrlibImport>(&*item)) {
            followImport(import->path, chain);
            return;
        }
        if (auto* directive = std::get_if<OrlibUsing>(&*item))
            usingPairs.push_back(std::move(*directive));
        else
            addFunction(std::get<FunctionEntry>(std::move(*item)));
    }
    closeFile(chain);
}

void OrlibBootloader::closeFile(ImportChain& chain) {
    loaded.insert(loading.extract(chain.back().path));
    chain.pop_back();
}

void OrlibBootloader::followImport(const std::string& importPath, ImportChain& chain) {
    const std::string& importer = chain.back().path;
    const std::string resolved = resolvePath(importPath, importer);
    if (resolved.empty())
        console.print("Warning: import not found: %s (from %s)\n", importPath.c_str(),
                      importer.c_str());
    else
        openFile(resolved, chain);
}

void OrlibBootloader::addFunction(FunctionEntry entry) {
    console.print("  function: %s\n", entry.name.c_str());
    table.add(std::move(entry));
}

std::string OrlibBootloader::findFile(const std::string& name) const {
    const bool isFileName = name.find(".orlib") != std::string::npos;
    for (const std::string& prefix : searchPaths) {
        std::string candidate = prefix + name;
        if (pathExists(pathOf(candidate))) return candidate;
        if (isFileName) continue;
        candidate += ".orlib";
        if (pathExists(pathOf(candidate))) return candidate;
    }
    return {};
}

std::string OrlibBootloader::readFile(const std::string& path) {
    const fs::path file = pathOf(path);
    std::error_code error;
    if (!fs::is_regular_file(file, error)) return {};
    return readTextFile(file).value_or(std::string());
}

std::string OrlibBootloader::resolvePath(const std::string& importPath,
                                         const std::string& fromFile) {
    const bool isAbsolute = pathOf(importPath).is_absolute();
    const std::string path =
        isAbsolute ? importPath : textOf(pathOf(fromFile).parent_path()) + "/" + importPath;
    return pathExists(pathOf(path)) ? path : std::string();
}

std::string OrlibBootloader::trim(std::string_view text) {
    return std::string(OrlibScanner::trim(text));
}

} // namespace Orvane
