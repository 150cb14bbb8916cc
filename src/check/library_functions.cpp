#include "check/library_functions.h"

#include "driver/library_stage.h"
#include "libraries/files.h"

#include <algorithm>
#include <set>

namespace Orvane {

namespace fs = std::filesystem;

namespace {

constexpr std::string_view suffix = ".orlib";

// Functions that only the libraries' own bodies call begin with this.
constexpr std::string_view helperPrefix = "orx";

std::vector<fs::path> libraryFiles(const fs::path& folder) {
    std::vector<fs::path> files;
    std::error_code error;
    for (fs::directory_iterator entry(folder, error), end; !error && entry != end;
         entry.increment(error))
        if (entry->path().extension() == suffix) files.push_back(entry->path());
    std::sort(files.begin(), files.end());
    return files;
}

std::set<std::string> functionNames(const fs::path& file) {
    std::set<std::string> names;
    OrlibScanner scanner(OrlibBootloader::readFile(textOf(file)));
    while (std::optional<OrlibItem> item = scanner.next())
        if (const auto* function = std::get_if<FunctionEntry>(&*item))
            if (!function->name.starts_with(helperPrefix)) names.insert(function->name);
    return names;
}

// The loader takes the first word for the type.
LibraryParameter parameterOf(const std::string& text) {
    constexpr std::string_view blanks = " \t\n\r\v\f";
    const std::size_t nameStart = text.find_last_of(" \t\n\r\v\f&*") + 1;
    std::string type;
    bool isApart = false;
    for (const char character : text.substr(0, nameStart)) {
        const bool isBlank = blanks.find(character) != std::string_view::npos;
        if (!isBlank && isApart && character != '&' && character != '*') type += ' ';
        if (!isBlank) type += character;
        isApart = isBlank;
    }
    return {type, text.substr(nameStart)};
}

} // namespace

std::vector<LibraryParameter> parametersOf(const FunctionEntry& function) {
    std::vector<LibraryParameter> parameters;
    for (std::size_t index = 0; index < function.paramTypes.size(); ++index)
        parameters.push_back(
            parameterOf(function.paramTypes[index] + " " + function.paramNames[index]));
    return parameters;
}

LibraryFunctions::LibraryFunctions(fs::path installedFolder)
    : bootloader(functions, console), folders{"./orlib", "./Lib", "../orlib", "../Lib", "."} {
    std::error_code error;
    if (installedFolder.empty() || !fs::is_directory(installedFolder, error)) return;
    bootloader.addSearchPath(textOf(installedFolder) + "/");
    folders.push_back(std::move(installedFolder));
}

void LibraryFunctions::load(const AST& program, const Options& options) {
    for (const std::string_view import : program.imports) load(LibraryStage::libraryName(import));
    if (options.normal) load("normal");
    for (const std::string& name : options.libraries) load(name);
}

void LibraryFunctions::load(const std::string& name) {
    LibraryStage stage(bootloader, console);
    stage.load(name);
    loadedAny = loadedAny || stage.hasLoadedAny();
}

std::span<const FunctionEntry> LibraryFunctions::find(std::string_view name) const {
    const auto& entries = functions.entries();
    const auto entry = entries.find(name);
    if (entry == entries.end()) return {};
    return entry->second;
}

bool LibraryFunctions::isInstalled(std::string_view import) const {
    return !bootloader.findFile(LibraryStage::libraryName(import)).empty();
}

const std::vector<std::string>& LibraryFunctions::librariesWith(std::string_view name) const {
    static const std::vector<std::string> none;
    const auto entry = index().find(name);
    return entry == index().end() ? none : entry->second;
}

std::vector<std::string_view> LibraryFunctions::knownNames() const {
    std::vector<std::string_view> names;
    for (const auto& [name, libraries] : index()) names.push_back(name);
    return names;
}

const LibraryFunctions::Index& LibraryFunctions::index() const {
    if (!byName) byName = readFolders(folders);
    return *byName;
}

// Of two files of one name only the first is ever loaded.
LibraryFunctions::Index LibraryFunctions::readFolders(const std::vector<fs::path>& folders) {
    Index found;
    std::set<std::string> seen;
    for (const fs::path& folder : folders)
        for (const fs::path& file : libraryFiles(folder)) {
            const std::string library = textOf(file.stem());
            if (!seen.insert(library).second) continue;
            for (const std::string& name : functionNames(file)) found[name].push_back(library);
        }
    for (auto& [name, libraries] : found) std::sort(libraries.begin(), libraries.end());
    return found;
}

} // namespace Orvane
