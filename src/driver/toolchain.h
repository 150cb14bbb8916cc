// Where g++ is and how it is called.
//
// Everything is derived from the place where g++.exe was found, which is looked for beside the
// compiler, one directory above, and in tools/bin. Only the existence of files is asked for;
// nothing is started here.
//
//     const auto toolchain = locateToolchain(baseDirectory(platform.executablePath()),
//                                            workingDirectory());
//     if (toolchain) platform.run(formatCommandLine(*toolchain, mainCpp, executable, debug));
#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace Orvane {

struct Toolchain {
    std::filesystem::path gxx;
    std::filesystem::path installRoot; // holds include, orlib and parameter
    std::optional<std::filesystem::path> resourceObject;
};

// The directory of the compiler's executable; the working directory when the path is unknown or as
// long as Platform::executablePathLimit, since it may have been cut then.
std::filesystem::path baseDirectory(const std::string& executablePath);

// The five directories that may hold g++.exe, in the order in which they are tried.
std::vector<std::filesystem::path> candidateDirectories(const std::filesystem::path& baseDir,
                                                        const std::filesystem::path& workingDir);

// None when no candidate holds g++.exe. The PATH is not searched.
std::optional<Toolchain> locateToolchain(const std::filesystem::path& baseDir,
                                         const std::filesystem::path& workingDir);

// The directory that everything else is found from: the compiler's own, or that of g++ when the
// text of its path contains "tools" anywhere.
std::filesystem::path toolRootFor(const std::filesystem::path& gxxDir,
                                  const std::filesystem::path& baseDir);

// resource.o in the directory, else in its parent; none when neither has one.
std::optional<std::filesystem::path> findResourceObject(const std::filesystem::path& toolRoot);

// Every path stands in double quotes, with nothing escaped inside.
std::string formatCommandLine(const Toolchain& toolchain, const std::filesystem::path& mainCpp,
                              const std::filesystem::path& executable, bool debug);

} // namespace Orvane
