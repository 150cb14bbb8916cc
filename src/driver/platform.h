// What the driver needs from the operating system besides files.
//
// The driver gets a Platform& from main(); tests pass one that pretends to be installed somewhere
// and records what it is asked to start. SystemPlatform is written once per system, in
// platform_windows.cpp and platform_posix.cpp.
//
//     SystemPlatform platform;
//     std::optional<unsigned long> code = platform.run("\"C:\\tools\\bin\\g++.exe\" -v");
#pragma once

#include <cstddef>
#include <optional>
#include <string>

namespace Orvane {

class Platform {
public:
    // Room for the path of the executable, in bytes: MAX_PATH of Windows, and the same elsewhere.
    static constexpr std::size_t executablePathLimit = 260;

    Platform() = default;
    Platform(const Platform&) = delete;
    Platform& operator=(const Platform&) = delete;
    virtual ~Platform() = default;

    // The full path of the running executable: empty when the system does not tell, cut at
    // executablePathLimit bytes when it is longer.
    virtual std::string executablePath() const = 0;

    // Starts the program that the command line names first, without a window and without a shell,
    // and waits for its end. The result is its exit code, none when it could not be started.
    virtual std::optional<unsigned long> run(const std::string& commandLine) = 0;
};

class SystemPlatform final : public Platform {
public:
    std::string executablePath() const override;
    std::optional<unsigned long> run(const std::string& commandLine) override;
};

} // namespace Orvane
