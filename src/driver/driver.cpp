#include "driver/driver.h"

#include "driver/library_stage.h"
#include "driver/toolchain.h"
#include "frontend/lexer.h"
#include "frontend/parser.h"
#include "libraries/files.h"

#include <exception>
#include <memory>
#include <system_error>

namespace Orvane {

namespace fs = std::filesystem;

Driver::Driver(Console& console_, Platform& platform_) : console(console_), platform(platform_) {}

int Driver::run(const std::vector<std::string>& arguments) {
    console.print("=== Orvane Compiler v%s ===\n", compilerVersion);
    const CommandLine line = scanArguments(arguments);
    switch (line.request) {
    case Request::Build:
        return build(line.options);
    case Request::ShowHelp:
        break;
    case Request::RejectArgument:
        console.print("Error: Unknown argument '%s'\n", line.unknownArgument.c_str());
        break;
    case Request::RejectMissingSource:
        console.print("Error: No source file specified.\n");
        break;
    }
    printUsage(console);
    return line.request == Request::ShowHelp ? success : failure;
}

// The tree views the lexer's text, and the generator reads the tree: they live to the end of the
// run. The tokens end with the parser, so that their memory serves the texts.
int Driver::build(const Options& options) {
    std::optional<std::string> source = readSource(options.sourceFile);
    if (!source) return failure;
    const std::size_t sourceBytes = source->size();

    console.print("[2/7] Lexing...\n");
    Lexer lexer(std::move(*source), console);
    std::vector<Token> tokens = lexer.tokenize();
    console.print("  Tokens: %zu\n", tokens.size());

    console.print("[3/6] Parsing...\n");
    const std::unique_ptr<AST> program =
        Parser(std::move(tokens), console, nullptr, Parser::Texts::viewed).parse();
    if (!acceptTree(program.get(), console)) return failure;

    console.print("[4/7] Loading libraries...\n");
    ReplacementTable table;
    OrlibBootloader bootloader(table, console);
    const bool anyLibraryLoaded = loadLibraries(bootloader, *program, options);

    console.print("[5/7] Generating C++ code...\n");
    console.print("  debugMode = %s\n", options.debug ? "true" : "false");
    const OutputFiles files = outputFilesFor(options.sourceFile);
    // When it cannot be made, writing the first file fails and says so.
    std::error_code ignored;
    fs::create_directories(files.directory, ignored);
    const auto generate = [&](TextStream& main, TextStream& import) {
        int indentLevel = 0;
        CodeGenerator(table, main, import, indentLevel)
            .generate(*program, textOf(files.mainCpp), textOf(files.importHpp), options.debug,
                      anyLibraryLoaded);
    };
    GeneratedTexts texts(generate, sourceBytes);
    if (!runGeneration([&] { texts.generate(); }, console)) return failure;
    if (!writeOutputs(files, texts)) return failure;
    return compile(files, options);
}

std::optional<std::string> Driver::readSource(const std::string& sourceFile) {
    console.print("[1/7] Reading source file: %s\n", sourceFile.c_str());
    std::optional<std::string> source = readTextFile(pathOf(sourceFile));
    if (source)
        console.print("  Size: %zu bytes\n", source->size());
    else
        console.print("Error: Cannot open '%s'\n", sourceFile.c_str());
    return source;
}

bool Driver::acceptTree(const AST* program, Console& console) {
    if (program)
        console.print("  AST OK\n");
    else
        console.print("Error: Parse failed \xE2\x80\x94 AST is null.\n");
    return program != nullptr;
}

// An installation has its libraries beside the compiler; they are found from every working
// directory, behind those of the project.
bool Driver::loadLibraries(OrlibBootloader& bootloader, const AST& program,
                           const Options& options) {
    const fs::path installed = baseDirectory(platform.executablePath()) / "orlib";
    std::error_code error;
    if (fs::is_directory(installed, error)) bootloader.addSearchPath(textOf(installed) + "/");
    LibraryStage stage(bootloader, console);
    stage.run(program.imports, options);
    return stage.hasLoadedAny();
}

bool Driver::runGeneration(const std::function<void()>& generation, Console& console) {
    try {
        generation();
        return true;
    } catch (const std::exception& error) {
        console.print("Error: Code generation failed: %s\n", error.what());
    } catch (...) {
        console.print("Error: Unknown exception during code generation\n");
    }
    return false;
}

bool Driver::writeOutputs(const OutputFiles& files, GeneratedTexts& texts) {
    const std::pair<const fs::path&, GeneratedText> outputs[] = {
        {files.mainCpp, GeneratedText::main}, {files.importHpp, GeneratedText::import}};
    for (const auto& [path, which] : outputs)
        if (!writeOutput(path, which, files, texts)) return false;
    console.print("  %s\n  %s\n", textOf(files.mainCpp).c_str(), textOf(files.importHpp).c_str());
    return true;
}

// A text that is generated once more may run out of memory that was there before.
bool Driver::writeOutput(const fs::path& path, GeneratedText which, const OutputFiles& files,
                         GeneratedTexts& texts) {
    bool isWritten = false;
    const auto write = [&] {
        isWritten = !wouldOverwriteSource(path, files) && texts.write(which, path);
    };
    if (!runGeneration(write, console)) return false;
    if (!isWritten) failToWrite(path);
    return isWritten;
}

int Driver::compile(const OutputFiles& files, const Options& options) {
    console.print("[6/6] Compiling with g++...\n");
    if (wouldOverwriteSource(files.executable, files)) return failToWrite(files.executable);
    if (!runGxx(files, options.debug)) return failure;
    console.print("  Output: %s\n", textOf(files.executable).c_str());
    if (!options.keepCpp && removeIntermediates(files))
        console.print("  Intermediate files cleaned.\n");
    console.print("\n=== Build complete! ===\n");
    return success;
}

bool Driver::runGxx(const OutputFiles& files, bool debug) {
    const fs::path baseDir = baseDirectory(platform.executablePath());
    const std::optional<Toolchain> toolchain = locateToolchain(baseDir, workingDirectory());
    if (!toolchain) {
        console.print("Error: g++ not found in any known location.\n");
        return false;
    }
    const std::string command =
        formatCommandLine(*toolchain, files.mainCpp, files.executable, debug);
    console.print("  Command: %s\n", command.c_str());
    const std::optional<unsigned long> code = platform.run(command);
    if (!code)
        console.print("Error: Failed to start compiler.\n");
    else if (*code != 0)
        console.print("Error: Compilation failed (exit code %lu).\n", *code);
    else
        console.print("  Compiled OK\n");
    return code == 0UL;
}

int Driver::failToWrite(const fs::path& path) {
    console.print("Error: Cannot write '%s'\n", textOf(path).c_str());
    return failure;
}

} // namespace Orvane
