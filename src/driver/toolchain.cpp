#include "driver/toolchain.h"

#include "driver/platform.h"
#include "libraries/files.h"

namespace Orvane {

namespace fs = std::filesystem;

fs::path baseDirectory(const std::string& executablePath) {
    if (executablePath.empty() || executablePath.size() >= Platform::executablePathLimit)
        return workingDirectory();
    return pathOf(executablePath).parent_path();
}

std::vector<fs::path> candidateDirectories(const fs::path& baseDir, const fs::path& workingDir) {
    const fs::path parent = baseDir.parent_path();
    return {baseDir, parent, baseDir / "tools" / "bin", parent / "tools" / "bin",
            workingDir / "tools" / "bin"};
}

fs::path toolRootFor(const fs::path& gxxDir, const fs::path& baseDir) {
    return textOf(gxxDir).find("tools") == std::string::npos ? baseDir : gxxDir;
}

std::optional<fs::path> findResourceObject(const fs::path& toolRoot) {
    for (const fs::path& directory : {toolRoot, toolRoot.parent_path()}) {
        fs::path object = directory / "resource.o";
        if (pathExists(object)) return object;
    }
    return std::nullopt;
}

std::optional<Toolchain> locateToolchain(const fs::path& baseDir, const fs::path& workingDir) {
    for (const fs::path& directory : candidateDirectories(baseDir, workingDir)) {
        const fs::path gxx = directory / "g++.exe";
        if (!pathExists(gxx)) continue;
        const fs::path toolRoot = toolRootFor(directory, baseDir);
        return Toolchain{gxx, toolRoot.parent_path(), findResourceObject(toolRoot)};
    }
    return std::nullopt;
}

// The option and, in double quotes and with nothing escaped, the path.
static void appendPath(std::string& line, std::string_view option, const fs::path& path) {
    line += option;
    line += '"';
    line += textOf(path);
    line += '"';
}

// "G++" -std=c++17 -Og [-g] -finput-charset=UTF-8 "MAIN" ["RESOURCE"] -o "EXE"
// -I"ROOT/include" -I"ROOT/orlib" -I"ROOT/parameter" LIBRARIES
std::string formatCommandLine(const Toolchain& toolchain, const fs::path& mainCpp,
                              const fs::path& executable, bool debug) {
    std::string line;
    appendPath(line, "", toolchain.gxx);
    line += " -std=c++17 -Og";
    if (debug) line += " -g";
    line += " -finput-charset=UTF-8";
    appendPath(line, " ", mainCpp);
    if (toolchain.resourceObject) appendPath(line, " ", *toolchain.resourceObject);
    appendPath(line, " -o ", executable);
    for (const char* directory : {"include", "orlib", "parameter"})
        appendPath(line, " -I", toolchain.installRoot / directory);
    line += " -luser32 -lgdi32 -lkernel32 -lcomctl32 -lcomdlg32 -lshell32 -ladvapi32 -mwindows";
    return line;
}

} // namespace Orvane
