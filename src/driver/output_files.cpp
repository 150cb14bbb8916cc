#include "driver/output_files.h"

#include "libraries/files.h"

#include <system_error>

namespace Orvane {

namespace fs = std::filesystem;

OutputFiles outputFilesFor(std::string_view sourceFile) {
    const fs::path source = absolutePath(pathOf(sourceFile));
    const fs::path directory = source.parent_path() / "code_generation";
    fs::path executable = source;
    executable.replace_extension(".exe");
    return {source, directory, directory / "main.cpp", directory / "import.hpp", executable};
}

bool wouldOverwriteSource(const fs::path& path, const OutputFiles& files) {
    return path == files.source || isSameFile(path, files.source);
}

// Opening a pipe would wait for somebody to read it.
TextFile::TextFile(const fs::path& path) {
    std::error_code error;
    if (!fs::is_fifo(path, error)) file.open(path, std::ios::binary | std::ios::trunc);
    constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";
    take(byteOrderMark);
}

void TextFile::take(std::string_view piece) {
    file.write(piece.data(), static_cast<std::streamsize>(piece.size()));
}

bool TextFile::close() {
    file.close();
    return !file.fail();
}

bool writeFile(const fs::path& path, std::string_view text) {
    TextFile file(path);
    file.take(text);
    return file.close();
}

bool removeIntermediates(const OutputFiles& files) {
    std::error_code mainError;
    std::error_code importError;
    const bool isMainRemoved = fs::remove(files.mainCpp, mainError);
    const bool isImportRemoved = fs::remove(files.importHpp, importError);
    return isMainRemoved && isImportRemoved;
}

} // namespace Orvane
