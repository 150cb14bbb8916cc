// The files that a build makes, and how they are written and removed.
//
//     OutputFiles files = outputFilesFor("src/app.vorla");
//     // files.mainCpp   /home/ada/src/code_generation/main.cpp
//     // files.executable   /home/ada/src/app.exe
#pragma once

#include "codegen/text_stream.h"

#include <filesystem>
#include <fstream>
#include <string_view>

namespace Orvane {

// All paths are absolute. Everything lies beside the source, wherever the working directory is.
struct OutputFiles {
    std::filesystem::path source;
    std::filesystem::path directory;
    std::filesystem::path mainCpp;
    std::filesystem::path importHpp;
    std::filesystem::path executable;
};

OutputFiles outputFilesFor(std::string_view sourceFile);

// Whether writing to the path would overwrite the source.
bool wouldOverwriteSource(const std::filesystem::path& path, const OutputFiles& files);

// A file being written: the UTF-8 byte-order mark and the text, with line ends as they are.
class TextFile final : public TextSink {
public:
    // An older file of the path is emptied.
    explicit TextFile(const std::filesystem::path& path);
    void take(std::string_view piece) override;
    // False when anything of the text did not reach the file.
    bool close();

private:
    std::ofstream file;
};

// A file of one piece. False when anything of it did not reach the file.
bool writeFile(const std::filesystem::path& path, std::string_view text);

// Deletes both C++ files. False when one of them could not be deleted or was gone already.
bool removeIntermediates(const OutputFiles& files);

} // namespace Orvane
