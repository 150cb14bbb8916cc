#pragma once

#include <windows.h>

#include <string>
#include <vector>

// The text of this program is UTF-8 everywhere but in calls of the system.
std::string toUtf8(const std::wstring& text);
std::wstring toWide(const std::string& text);

// A GUI program started for a test, and its windows. Owns the process: what still runs when the
// object goes away is ended.
//
//     ProgramUnderTest program("Z:\\build\\app.exe");
//     HWND window = program.waitForWindow("Notes", 10000);
//
// All waits are in milliseconds and end early when the program ends.
class ProgramUnderTest {
public:
    explicit ProgramUnderTest(const std::string& path); // throws std::runtime_error
    ~ProgramUnderTest();
    ProgramUnderTest(const ProgramUnderTest&) = delete;
    ProgramUnderTest& operator=(const ProgramUnderTest&) = delete;

    // The first visible top-level window that is no dialog and has the text in its title; null when
    // none comes.
    HWND waitForWindow(const std::string& titlePart, DWORD milliseconds) const;
    // A visible dialog (a message box is one); null when none comes.
    HWND waitForDialog(DWORD milliseconds) const;
    // A menu that has opened at the mouse or from the bar; null when none comes.
    HWND waitForMenu(DWORD milliseconds) const;
    // False when the program still runs after that time.
    bool waitForEnd(DWORD milliseconds, DWORD& exitCode) const;

    // Text of an item of a tab control: the control wants a buffer in its own process.
    std::string tabItemText(HWND tab, int index) const;

private:
    bool hasEnded() const;

    HANDLE process = nullptr;
    DWORD processId = 0;
};

// SendMessage with a limit of twenty seconds; 0 when the program does not answer.
LRESULT sendMessage(HWND window, UINT message, WPARAM wParam, LPARAM lParam);

std::string windowText(HWND window);
std::string windowClass(HWND window);
std::vector<HWND> childWindows(HWND parent);
