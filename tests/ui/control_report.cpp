#include "control_report.h"

#include <commctrl.h>

#include <cstdio>

std::string escaped(const std::string& text) {
    std::string result;
    for (const char character : text) {
        if (character == '\n')
            result += "\\n";
        else if (character == '\r')
            result += "\\r";
        else if (character == '\\')
            result += "\\\\";
        else
            result += character;
    }
    return result;
}

std::string unescaped(const std::string& text) {
    std::string result;
    for (size_t place = 0; place < text.size(); ++place) {
        const char next = place + 1 < text.size() ? text[place + 1] : '\0';
        const bool pair = text[place] == '\\' && (next == 'n' || next == 'r' || next == '\\');
        if (pair) ++place;
        result += !pair ? text[place] : next == 'n' ? '\n' : next == 'r' ? '\r' : '\\';
    }
    return result;
}

bool isListBox(HWND window) { return _stricmp(windowClass(window).c_str(), "LISTBOX") == 0; }

namespace {

unsigned long styleOf(HWND window) {
    return static_cast<unsigned long>(GetWindowLongW(window, GWL_STYLE));
}

RECT placeInWindow(HWND window, HWND child) {
    RECT area;
    GetWindowRect(child, &area);
    MapWindowPoints(nullptr, window, reinterpret_cast<POINT*>(&area), 2);
    return area;
}

bool isDocked(HWND window, HWND child) {
    RECT inner;
    GetClientRect(window, &inner);
    const RECT area = placeInWindow(window, child);
    return area.left == 0 && area.right == inner.right && area.bottom == inner.bottom;
}

// A status bar and a combo box take their height from the font, and a list box shows whole lines
// only: such a height is not a figure to compare.
std::string placeText(HWND window, HWND child) {
    const std::string type = windowClass(child);
    if (type == STATUSCLASSNAMEA && isDocked(window, child)) return "docked";
    const RECT area = placeInWindow(window, child);
    const bool fitted = type == "ComboBox" || type == "ListBox";
    const std::string height = fitted ? "fitted" : std::to_string(area.bottom - area.top);
    return std::to_string(area.left) + "," + std::to_string(area.top) + " " +
           std::to_string(area.right - area.left) + "x" + height;
}

std::string lineText(HWND target, bool list, int index) {
    wchar_t text[1024] = L"";
    sendMessage(target, list ? LB_GETTEXT : CB_GETLBTEXT, static_cast<WPARAM>(index),
                reinterpret_cast<LPARAM>(text));
    return toUtf8(text);
}

int number(HWND target, UINT message, WPARAM wParam = 0) {
    return static_cast<int>(sendMessage(target, message, wParam, 0));
}

} // namespace

void printFrame(HWND window) {
    RECT area;
    GetWindowRect(window, &area);
    std::printf("window %s %ldx%ld style=%08lx title=%s\n", windowClass(window).c_str(),
                area.right - area.left, area.bottom - area.top, styleOf(window),
                escaped(windowText(window)).c_str());
}

void printControl(HWND window, HWND child) {
    std::printf("%d %s %s style=%08lx text=%s\n", GetDlgCtrlID(child), windowClass(child).c_str(),
                placeText(window, child).c_str(), styleOf(child),
                escaped(windowText(child)).c_str());
}

void printItems(const ProgramUnderTest& program, HWND target) {
    const bool tab = windowClass(target) == "SysTabControl32", list = isListBox(target);
    const UINT countMessage = tab ? TCM_GETITEMCOUNT : list ? LB_GETCOUNT : CB_GETCOUNT;
    const UINT selectionMessage = tab ? TCM_GETCURSEL : list ? LB_GETCURSEL : CB_GETCURSEL;
    std::printf("%d selected=%d items:", GetDlgCtrlID(target), number(target, selectionMessage));
    const int count = number(target, countMessage);
    for (int index = 0; index < count; ++index) {
        const std::string text =
            tab ? program.tabItemText(target, index) : lineText(target, list, index);
        std::printf(" [%s]", escaped(text).c_str());
    }
    std::printf("\n");
}

// The two kinds ask for their limits in different ways: a progress bar has one message for both,
// whose first argument chooses the lower one.
void printRange(HWND target) {
    const bool slider = windowClass(target) == TRACKBAR_CLASSA;
    const int low = slider ? number(target, TBM_GETRANGEMIN) : number(target, PBM_GETRANGE, TRUE);
    const int high = slider ? number(target, TBM_GETRANGEMAX) : number(target, PBM_GETRANGE);
    const int position = number(target, slider ? TBM_GETPOS : PBM_GETPOS);
    std::printf("%d range: %d to %d, position: %d\n", GetDlgCtrlID(target), low, high, position);
}
