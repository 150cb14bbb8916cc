// A Windows program in the place of the C++ compiler behind the launcher. Appends the command line
// that it got, as UTF-8, to the file calls beside itself and writes the file behind -o. Files
// beside it change that:
//
//     header_fails      making a precompiled header fails
//     runtime_fails     compiling runtime.cpp fails
//     header_damaged    a compile with a precompiled header fails
//     program_fails     every compile fails with an error and the exit code 3
//     wait              it makes the file waiting and goes on when wait is gone
#include <windows.h>

#include <cstdio>
#include <string>
#include <string_view>

static std::wstring beside(const wchar_t* name) {
    wchar_t path[32768];
    GetModuleFileNameW(nullptr, path, 32768);
    const std::wstring text = path;
    return text.substr(0, text.rfind(L'\\') + 1) + name;
}

static bool has(const wchar_t* name) {
    return GetFileAttributesW(beside(name).c_str()) != INVALID_FILE_ATTRIBUTES;
}

static void write(const std::wstring& path, const wchar_t* mode, const std::string& text) {
    if (FILE* file = _wfopen(path.c_str(), mode)) {
        std::fwrite(text.data(), 1, text.size(), file);
        std::fclose(file);
    }
}

static std::string utf8(const wchar_t* text) {
    const int size = WideCharToMultiByte(CP_UTF8, 0, text, -1, nullptr, 0, nullptr, nullptr);
    std::string result(static_cast<std::size_t>(size), '\0');
    WideCharToMultiByte(CP_UTF8, 0, text, -1, result.data(), size, nullptr, nullptr);
    result.pop_back();
    return result;
}

static void waitIfTold() {
    if (has(L"wait")) write(beside(L"waiting"), L"wb", "");
    while (has(L"wait")) Sleep(20);
}

static int fail(const char* message, int code) {
    std::fputs(message, stderr);
    return code;
}

int wmain(int count, wchar_t** arguments) {
    write(beside(L"calls"), L"ab", utf8(GetCommandLineW()) + "\n");
    std::wstring output;
    bool makesHeader = false;
    bool usesHeader = false;
    bool makesRuntime = false;
    for (int i = 1; i < count; ++i) {
        const std::wstring_view argument = arguments[i];
        if (argument == L"-o" && i + 1 < count) output = arguments[i + 1];
        makesHeader = makesHeader || argument == L"c++-header";
        usesHeader = usesHeader || argument == L"-include";
        makesRuntime = makesRuntime || argument.find(L"\\runtime.cpp") != argument.npos;
    }
    if (!output.empty()) write(output, L"wb", "half");
    waitIfTold();
    if (makesHeader && has(L"header_fails")) return 1;
    if (usesHeader && has(L"header_damaged")) return fail("includes.h.gch: damaged\n", 1);
    if (makesRuntime && has(L"runtime_fails")) return 1;
    if (!makesHeader && !makesRuntime && has(L"program_fails"))
        return fail("main.cpp:1:1: error: \xC3\xA4 is wrong\n", 3);
    const wchar_t* setting = _wgetenv(L"CPATH");
    if (!output.empty()) write(output, L"wb", "complete " + utf8(setting ? setting : L""));
    return 0;
}
