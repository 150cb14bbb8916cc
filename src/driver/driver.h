// One invocation of the compiler: the command line, the numbered stages, the exit status.
//
// Made by main() with the console to print on and the system to run on; tests make it with
// replacements for both.
//
//     Driver driver(console, platform);
//     int status = driver.run({"app.vorla", "--keep-cpp"});
#pragma once

#include "codegen/code_generator.h"
#include "driver/generated_texts.h"
#include "driver/options.h"
#include "driver/output_files.h"
#include "driver/platform.h"
#include "frontend/console.h"
#include "frontend/syntax_tree.h"
#include "libraries/orlib_bootloader.h"

#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace Orvane {

class Driver {
public:
    Driver(Console& console, Platform& platform);

    // The arguments without the program's name. The result is the exit status: 0 for a complete
    // build or a request for help, 1 for every failure that is reported. A syntax error leaves as
    // the parser's exception, which nothing here catches.
    int run(const std::vector<std::string>& arguments);

    // Whether the parser gave a tree; tells the user.
    static bool acceptTree(const AST* program, Console& console);

    // Whether the generation ran to its end; an exception is reported and stops here.
    static bool runGeneration(const std::function<void()>& generation, Console& console);

private:
    int build(const Options& options);
    std::optional<std::string> readSource(const std::string& sourceFile);
    bool loadLibraries(OrlibBootloader& bootloader, const AST& program, const Options& options);
    bool writeOutputs(const OutputFiles& files, GeneratedTexts& texts);
    bool writeOutput(const std::filesystem::path& path, GeneratedText which,
                     const OutputFiles& files, GeneratedTexts& texts);
    int compile(const OutputFiles& files, const Options& options);
    bool runGxx(const OutputFiles& files, bool debug);
    int failToWrite(const std::filesystem::path& path);

    static constexpr int success = 0;
    static constexpr int failure = 1;

    Console& console;
    Platform& platform;
};

} // namespace Orvane
