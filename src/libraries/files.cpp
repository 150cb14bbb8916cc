#include "libraries/files.h"

#include "frontend/large_memory.h"

#include <algorithm>
#include <fstream>
#include <system_error>

#ifdef _WIN32
#include <windows.h>
#endif

namespace Orvane {

namespace fs = std::filesystem;

namespace {

#ifdef _WIN32
// NUL, CON, COM1 and the like are names of devices in every folder; asked for the full path, the
// system gives that of the device.
bool namesDevice(const fs::path& path) {
    constexpr DWORD roomForPrefix = 1 << 15;
    std::wstring full(roomForPrefix, L'\0');
    full.resize(GetFullPathNameW(path.c_str(), roomForPrefix, full.data(), nullptr) %
                roomForPrefix);
    return full.starts_with(L"\\\\.\\");
}
#else
bool namesDevice(const fs::path&) { return false; }
#endif

// POSIX systems open a directory like a file and fail only when it is read. A device may have no
// end, or wait for somebody at it.
bool isDirectoryOrDevice(const fs::path& path) {
    std::error_code error;
    const fs::file_type type = fs::status(path, error).type();
    return type == fs::file_type::directory || type == fs::file_type::character ||
           type == fs::file_type::block || namesDevice(path);
}

} // namespace

fs::path pathOf(std::string_view text) {
    // The system would take the part before a zero byte for the whole name.
    if (text.find('\0') != std::string_view::npos) return {};
    try {
        return fs::path(std::u8string(text.begin(), text.end()));
    } catch (const std::system_error&) {
        // Windows names files in UTF-16, and text that is no UTF-8 has no counterpart there.
        return {};
    }
}

std::string textOf(const fs::path& path) {
    try {
        const std::u8string text = path.u8string();
        return std::string(text.begin(), text.end());
    } catch (const std::system_error&) {
        // A half of a surrogate pair in a Windows name.
        return {};
    }
}

bool pathExists(const fs::path& path) {
    std::error_code error;
    return fs::exists(path, error);
}

bool isSameFile(const fs::path& first, const fs::path& second) {
    std::error_code error;
    return fs::equivalent(first, second, error);
}

fs::path absolutePath(const fs::path& path) {
    std::error_code error;
    const fs::path absolute = fs::absolute(path, error);
    return (error ? path : absolute).lexically_normal();
}

fs::path workingDirectory() {
    std::error_code error;
    return fs::current_path(error);
}

std::optional<std::string> readTextFile(const fs::path& path) {
    if (isDirectoryOrDevice(path)) return std::nullopt;
    std::ifstream file(path);
    if (!file) return std::nullopt;

    // One read takes a file of known size whole; the one byte more shows that it has ended. Pipes
    // and files that grow meanwhile take further reads.
    std::error_code error;
    const std::uintmax_t size = fs::file_size(path, error);
    constexpr std::size_t usualSize = std::size_t{1} << 16;
    std::string text;
    text.reserve(error ? usualSize : static_cast<std::size_t>(size) + 1);
    expectFilling(text.data(), text.capacity());
    text.resize(text.capacity());
    std::size_t length = 0;
    for (;;) {
        file.read(text.data() + length, static_cast<std::streamsize>(text.size() - length));
        length += static_cast<std::size_t>(file.gcount());
        if (!file) break;
        text.resize(text.size() + std::max(text.size(), usualSize));
    }
    if (file.bad()) return std::nullopt;
    text.resize(length);
    return text;
}

} // namespace Orvane
