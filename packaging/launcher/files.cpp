#include "files.h"

#include <windows.h>

namespace Orvane {

std::wstring pathOfThisProgram() {
    std::wstring path(MAX_PATH, L'\0');
    while (true) {
        const DWORD room = static_cast<DWORD>(path.size());
        const DWORD length = GetModuleFileNameW(nullptr, path.data(), room);
        if (length < room) {
            path.resize(length);
            return path;
        }
        path.resize(path.size() * 2);
    }
}

std::wstring folderOf(const std::wstring& path) {
    const std::size_t slash = path.find_last_of(L"/\\");
    return slash == std::wstring::npos ? std::wstring() : path.substr(0, slash);
}

static bool hasAttribute(const std::wstring& path, bool folder) {
    const DWORD attributes = GetFileAttributesW(path.c_str());
    return attributes != INVALID_FILE_ATTRIBUTES &&
           ((attributes & FILE_ATTRIBUTE_DIRECTORY) != 0) == folder;
}

bool isFile(const std::wstring& path) { return hasAttribute(path, false); }

bool isFolder(const std::wstring& path) { return hasAttribute(path, true); }

static unsigned long long join(DWORD high, DWORD low) {
    return (static_cast<unsigned long long>(high) << 32) | low;
}

std::wstring formatFileState(const std::wstring& path) {
    WIN32_FILE_ATTRIBUTE_DATA data = {};
    if (!GetFileAttributesExW(path.c_str(), GetFileExInfoStandard, &data)) return path + L" none\n";
    const FILETIME& time = data.ftLastWriteTime;
    return path + L' ' + std::to_wstring(join(data.nFileSizeHigh, data.nFileSizeLow)) + L' ' +
           std::to_wstring(join(time.dwHighDateTime, time.dwLowDateTime)) + L'\n';
}

std::string readFile(const std::wstring& path) {
    std::string content;
    const HANDLE file = CreateFileW(path.c_str(), GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_DELETE,
                                    nullptr, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (file == INVALID_HANDLE_VALUE) return content;
    char buffer[4096];
    DWORD length = 0;
    while (ReadFile(file, buffer, sizeof buffer, &length, nullptr) && length > 0)
        content.append(buffer, length);
    CloseHandle(file);
    return content;
}

bool writeFile(const std::wstring& path, const std::string& content) {
    const HANDLE file = CreateFileW(path.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS,
                                    FILE_ATTRIBUTE_NORMAL, nullptr);
    if (file == INVALID_HANDLE_VALUE) return false;
    DWORD written = 0;
    const bool complete =
        WriteFile(file, content.data(), static_cast<DWORD>(content.size()), &written, nullptr) &&
        written == content.size();
    return CloseHandle(file) && complete;
}

bool replaceFile(const std::wstring& from, const std::wstring& to) {
    for (int attempt = 0; attempt < 20; ++attempt) {
        if (MoveFileExW(from.c_str(), to.c_str(), MOVEFILE_REPLACE_EXISTING)) return true;
        const DWORD error = GetLastError();
        if (error != ERROR_SHARING_VIOLATION && error != ERROR_ACCESS_DENIED) return false;
        Sleep(50);
        SetLastError(error);
    }
    return false;
}

std::string utf8Of(const std::wstring& text) {
    const int length = static_cast<int>(text.size());
    const int size =
        WideCharToMultiByte(CP_UTF8, 0, text.data(), length, nullptr, 0, nullptr, nullptr);
    std::string bytes(static_cast<std::size_t>(size), '\0');
    WideCharToMultiByte(CP_UTF8, 0, text.data(), length, bytes.data(), size, nullptr, nullptr);
    return bytes;
}

std::wstring describeLastError() {
    const DWORD error = GetLastError();
    wchar_t text[512] = L"";
    FormatMessageW(FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS, nullptr, error, 0,
                   text, 512, nullptr);
    std::wstring message = text;
    while (!message.empty() && (message.back() <= L' ' || message.back() == L'.'))
        message.pop_back();
    return message.empty() ? L"error " + std::to_wstring(error) : message;
}

} // namespace Orvane
