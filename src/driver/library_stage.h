// The stage that loads libraries: what a build wants loaded, in which order, with one line each.
//
//     LibraryStage stage(bootloader, console);
//     stage.load("math");   //   -> orlib/math.orlib ... OK
#pragma once

#include "driver/options.h"
#include "frontend/console.h"
#include "libraries/orlib_bootloader.h"

#include <string>
#include <string_view>
#include <vector>

namespace Orvane {

class LibraryStage {
public:
    LibraryStage(OrlibBootloader& bootloader, Console& console);

    // The imports of the source, the standard set, the libraries of the command line; then the
    // table of functions. A library that fails has its FAIL line and the build goes on.
    void run(const std::vector<std::string_view>& imports, const Options& options);

    // One library. "normal" is the standard set, which is loaded once. Lets everything through
    // that is no standard exception.
    void load(const std::string& name);

    // Whether any library has loaded without an exception. One that was not found has: it printed
    // its warning.
    bool hasLoadedAny() const { return anyLibraryLoaded; }

    // The name in an import: without the suffix .orlib, and without directories.
    static std::string libraryName(std::string_view import);

private:
    void loadStandardSet();

    OrlibBootloader& bootloader;
    Console& console;
    bool normalLoaded = false;
    bool anyLibraryLoaded = false;
};

} // namespace Orvane
