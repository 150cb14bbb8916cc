#include "driver/output_files.h"

#include "libraries/files.h"

#include <fstream>
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

bool writeFile(const fs::path& path, std::string_view text) {
    constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";
    std::ofstream file(path, std::ios::binary | std::ios::trunc);
    file.write(byteOrderMark.data(), byteOrderMark.size());
    file.write(text.data(), static_cast<std::streamsize>(text.size()));
    file.close();
    return !file.fail();
}

bool removeIntermediates(const OutputFiles& files) {
    std::error_code mainError;
    std::error_code importError;
    const bool isMainRemoved = fs::remove(files.mainCpp, mainError);
    const bool isImportRemoved = fs::remove(files.importHpp, importError);
    return isMainRemoved && isImportRemoved;
}

} // namespace Orvane
