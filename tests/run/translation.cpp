#include "translation.h"

#include "codegen/code_generator.h"
#include "frontend/lexer.h"
#include "frontend/parser.h"
#include "libraries/orlib_bootloader.h"

#include <algorithm>

using namespace Orvane;

Translation translate(const std::string& source, const ReplacementTable& table, Console& console) {
    Lexer lexer(source, console);
    Parser parser(lexer.tokenize(), console);
    const std::unique_ptr<AST> program = parser.parse();
    TextStream mainStream;
    TextStream importStream;
    int indentLevel = 0;
    CodeGenerator generator(table, mainStream, importStream, indentLevel);
    generator.generate(*program, "main.cpp", "import.hpp", false, table.size() > 0);
    return {mainStream.str(), importStream.str()};
}

std::vector<std::string> libraryFiles(const std::filesystem::path& folder) {
    std::vector<std::string> files;
    for (const auto& entry : std::filesystem::directory_iterator(folder))
        if (entry.path().extension() == ".orlib") files.push_back(entry.path().filename().string());
    std::sort(files.begin(), files.end());
    return files;
}

ReplacementTable loadLibraries(const std::filesystem::path& folder,
                               const std::vector<std::string>& files, Console& console) {
    ReplacementTable table;
    OrlibBootloader bootloader(table, console);
    for (const std::string& file : files) bootloader.load((folder / file).string());
    return table;
}
