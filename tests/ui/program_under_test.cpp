#include "program_under_test.h"

#include <commctrl.h>

#include <stdexcept>

std::string toUtf8(const std::wstring& text) {
    const int length = static_cast<int>(text.size());
    const int size =
        WideCharToMultiByte(CP_UTF8, 0, text.c_str(), length, nullptr, 0, nullptr, nullptr);
    std::string result(static_cast<size_t>(size), '\0');
    WideCharToMultiByte(CP_UTF8, 0, text.c_str(), length, result.data(), size, nullptr, nullptr);
    return result;
}

std::wstring toWide(const std::string& text) {
    const int length = static_cast<int>(text.size());
    const int size = MultiByteToWideChar(CP_UTF8, 0, text.c_str(), length, nullptr, 0);
    std::wstring result(static_cast<size_t>(size), L'\0');
    MultiByteToWideChar(CP_UTF8, 0, text.c_str(), length, result.data(), size);
    return result;
}

LRESULT sendMessage(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    DWORD_PTR result = 0;
    SendMessageTimeoutW(window, message, wParam, lParam, SMTO_NORMAL, 20000, &result);
    return static_cast<LRESULT>(result);
}

// GetWindowText cannot read the controls of another process; the message can.
std::string windowText(HWND window) {
    const LRESULT length = sendMessage(window, WM_GETTEXTLENGTH, 0, 0);
    // Wine gives the length of the ANSI text for some windows, which may be too small.
    std::wstring text(static_cast<size_t>(length > 0 ? length : 0) * 2 + 256, L'\0');
    const LRESULT copied =
        sendMessage(window, WM_GETTEXT, text.size(), reinterpret_cast<LPARAM>(text.data()));
    text.resize(static_cast<size_t>(copied > 0 ? copied : 0));
    return toUtf8(text);
}

std::string windowClass(HWND window) {
    wchar_t name[128];
    const int length = GetClassNameW(window, name, 128);
    return toUtf8(std::wstring(name, static_cast<size_t>(length)));
}

std::vector<HWND> childWindows(HWND parent) {
    std::vector<HWND> children;
    const auto add = [](HWND child, LPARAM list) -> BOOL {
        reinterpret_cast<std::vector<HWND>*>(list)->push_back(child);
        return TRUE;
    };
    EnumChildWindows(parent, add, reinterpret_cast<LPARAM>(&children));
    return children;
}

namespace {

const char* const dialogClass = "#32770";

// What a search through the top-level windows wants and what it found.
struct Search {
    DWORD processId;
    bool dialog;
    std::string titlePart;
    HWND found;
};

BOOL CALLBACK visitTopLevelWindow(HWND window, LPARAM argument) {
    Search& search = *reinterpret_cast<Search*>(argument);
    DWORD owner = 0;
    GetWindowThreadProcessId(window, &owner);
    if (owner != search.processId || !IsWindowVisible(window)) return TRUE;
    if ((windowClass(window) == dialogClass) != search.dialog) return TRUE;
    if (windowText(window).find(search.titlePart) == std::string::npos) return TRUE;
    search.found = window;
    return FALSE;
}

HWND findTopLevelWindow(DWORD processId, bool dialog, const std::string& titlePart) {
    Search search{processId, dialog, titlePart, nullptr};
    EnumWindows(visitTopLevelWindow, reinterpret_cast<LPARAM>(&search));
    return search.found;
}

} // namespace

ProgramUnderTest::ProgramUnderTest(const std::string& path) {
    std::wstring commandLine = L"\"" + toWide(path) + L"\"";
    STARTUPINFOW startup = {};
    startup.cb = sizeof startup;
    PROCESS_INFORMATION information = {};
    // Without a console, as from the desktop: Wine would let it have none of its own otherwise.
    if (!CreateProcessW(nullptr, commandLine.data(), nullptr, nullptr, FALSE, DETACHED_PROCESS,
                        nullptr, nullptr, &startup, &information))
        throw std::runtime_error("cannot start " + path);
    CloseHandle(information.hThread);
    process = information.hProcess;
    processId = information.dwProcessId;
}

ProgramUnderTest::~ProgramUnderTest() {
    if (!hasEnded()) TerminateProcess(process, 99);
    CloseHandle(process);
}

bool ProgramUnderTest::hasEnded() const { return WaitForSingleObject(process, 0) == WAIT_OBJECT_0; }

HWND ProgramUnderTest::waitForWindow(const std::string& titlePart, DWORD milliseconds) const {
    const DWORD start = GetTickCount();
    for (;;) {
        const HWND window = findTopLevelWindow(processId, false, titlePart);
        if (window || hasEnded() || GetTickCount() - start > milliseconds) return window;
        Sleep(20);
    }
}

HWND ProgramUnderTest::waitForDialog(DWORD milliseconds) const {
    const DWORD start = GetTickCount();
    for (;;) {
        const HWND window = findTopLevelWindow(processId, true, "");
        if (window || hasEnded() || GetTickCount() - start > milliseconds) return window;
        Sleep(20);
    }
}

HWND ProgramUnderTest::waitForMenu(DWORD milliseconds) const {
    const DWORD start = GetTickCount();
    HWND menu = nullptr;
    while (!hasEnded() && GetTickCount() - start <= milliseconds) {
        menu = FindWindowExW(nullptr, menu, L"#32768", nullptr);
        DWORD owner = 0;
        GetWindowThreadProcessId(menu, &owner);
        if (menu && owner == processId && IsWindowVisible(menu)) return menu;
        if (!menu) Sleep(20);
    }
    return nullptr;
}

bool ProgramUnderTest::waitForEnd(DWORD milliseconds, DWORD& exitCode) const {
    if (WaitForSingleObject(process, milliseconds) != WAIT_OBJECT_0) return false;
    return GetExitCodeProcess(process, &exitCode) != 0;
}

std::string ProgramUnderTest::tabItemText(HWND tab, int index) const {
    const DWORD rights = PROCESS_VM_OPERATION | PROCESS_VM_READ | PROCESS_VM_WRITE;
    const HANDLE owner = OpenProcess(rights, FALSE, processId);
    if (!owner) return "";
    const int capacity = 512;
    wchar_t text[capacity] = {};
    // The item stands at the start of the borrowed memory, its text behind it.
    char* memory =
        static_cast<char*>(VirtualAllocEx(owner, nullptr, 4096, MEM_COMMIT, PAGE_READWRITE));
    if (memory) {
        TCITEMW item = {};
        item.mask = TCIF_TEXT;
        item.pszText = reinterpret_cast<wchar_t*>(memory + sizeof item);
        item.cchTextMax = capacity;
        WriteProcessMemory(owner, memory, &item, sizeof item, nullptr);
        sendMessage(tab, TCM_GETITEMW, static_cast<WPARAM>(index),
                    reinterpret_cast<LPARAM>(memory));
        ReadProcessMemory(owner, memory + sizeof item, text, sizeof text - sizeof *text, nullptr);
        VirtualFreeEx(owner, memory, 0, MEM_RELEASE);
    }
    CloseHandle(owner);
    return toUtf8(text);
}
