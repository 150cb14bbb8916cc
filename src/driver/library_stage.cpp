#include "driver/library_stage.h"

#include <exception>

namespace Orvane {

LibraryStage::LibraryStage(OrlibBootloader& bootloader_, Console& console_)
    : bootloader(bootloader_), console(console_) {}

void LibraryStage::run(const std::vector<std::string_view>& imports, const Options& options) {
    if (!options.normal && options.libraries.empty() && imports.empty()) {
        console.print("  (no libraries to load)\n");
    } else {
        for (const std::string_view import : imports) load(libraryName(import));
        if (options.normal) load("normal");
        for (const std::string& name : options.libraries) load(name);
        bootloader.getTable().print(console);
    }
    console.print("\n");
}

void LibraryStage::load(const std::string& name) {
    if (name == "normal") {
        if (!normalLoaded) loadStandardSet();
        return;
    }
    console.print("  -> orlib/%s.orlib ... ", name.c_str());
    try {
        bootloader.loadByName(name);
        anyLibraryLoaded = true;
        console.print("OK\n");
    } catch (const std::exception& error) {
        console.print("FAIL: %s\n", error.what());
    }
}

void LibraryStage::loadStandardSet() {
    try {
        bootloader.loadNormal();
        normalLoaded = true;
        anyLibraryLoaded = true;
        console.print("  -> normal (standard set) ... OK\n");
    } catch (const std::exception& error) {
        console.print("  -> normal ... FAIL: %s\n", error.what());
    }
}

std::string LibraryStage::libraryName(std::string_view import) {
    if (import.ends_with(".orlib")) import.remove_suffix(std::string_view(".orlib").size());
    const std::size_t separator = import.find_last_of("/\\");
    if (separator != std::string_view::npos) import.remove_prefix(separator + 1);
    return std::string(import);
}

} // namespace Orvane
