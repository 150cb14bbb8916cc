// A Windows program in the place of g++.exe: writes the command line that it got, as UTF-8, into
// gxx.log beside itself and ends with the code that stands in gxx.code there (0 without that file).
//
//     x86_64-w64-mingw32-g++-posix -municode -static gxx_stand_in.cpp -o g++.exe
#include <windows.h>

#include <cstdio>
#include <string>

static std::string utf8(const wchar_t* text) {
    const int size = WideCharToMultiByte(CP_UTF8, 0, text, -1, nullptr, 0, nullptr, nullptr);
    std::string result(static_cast<std::size_t>(size), '\0');
    WideCharToMultiByte(CP_UTF8, 0, text, -1, result.data(), size, nullptr, nullptr);
    result.pop_back();
    return result;
}

static std::wstring besideThisProgram(const wchar_t* name) {
    wchar_t path[32768];
    GetModuleFileNameW(nullptr, path, 32768);
    std::wstring text = path;
    return text.substr(0, text.rfind(L'\\') + 1) + name;
}

int wmain() {
    FILE* log = _wfopen(besideThisProgram(L"gxx.log").c_str(), L"wb");
    if (!log) return 125;
    const std::string line = utf8(GetCommandLineW());
    std::fwrite(line.data(), 1, line.size(), log);
    std::fclose(log);

    int code = 0;
    if (FILE* file = _wfopen(besideThisProgram(L"gxx.code").c_str(), L"rb")) {
        if (std::fscanf(file, "%d", &code) != 1) code = 125;
        std::fclose(file);
    }
    return code;
}
