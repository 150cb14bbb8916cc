// ui_driver.exe [--alone] PROGRAM: starts a GUI program and works it from outside, on a desktop of
// its own if --alone is given (nothing of it is then seen on the screen). Commands stand on
// standard input (UTF-8), one per line, blank lines and lines that begin with # apart; results go
// to standard output. IDs are those of the controls (1001, 1002, ... in the order of their
// declaration); a line break in a text is written \n. The exit code is 1 when a command failed, and
// then the program is ended.
//
//   window PART          waits for the window with PART in its title; the commands below work on it
//   frame                prints the window's class, size, style and title
//   controls             lists its controls: ID, class, place in the window, size, style, text
//   control ID           prints one of these lines
//   absent ID            fails when a control has the ID
//   text ID              prints a control's text (ID 0: the window's title)
//   expect ID TEXT       waits until the control's text is TEXT
//   changes ID TEXT      waits until it is no longer TEXT
//   click ID             presses a button, and waits for nothing
//   settext ID TEXT      replaces a text; an entry tells its program
//   type ID TEXT         types into a control, character by character
//   select ID INDEX      selects a line of a list box or combo box, as a user does it
//   command ID [CODE]    sends WM_COMMAND: a menu entry, or a control's notification
//   send ID MSG W L      sends any message (numbers) and prints the answer
//   items ID             prints the lines of a list box or combo box, or the pages of a tab control
//   checked ID           prints 1 for a ticked check box or radio button, else 0
//   range ID             prints the range and position of a slider or progress bar
//   image ID             says whether a picture has been loaded
//   key ID CODE          presses a key, given by its virtual code in decimal
//   press ID X Y [2]     clicks at a place of the control by message; 2: a double click
//   messagebox [BUTTON]  waits for a message box, prints it, closes it with the button ID (1: OK)
//   dialog               waits for a message box, prints it and leaves it open
//   nomessagebox         fails when a message box is open
//   answer BUTTON [TEXT] waits for a dialog, puts TEXT into its field, closes it with the button ID
//   fill ID TEXT         waits for a dialog with the field ID, at whatever depth, and puts TEXT in;
//                        of a combo box it chooses the line TEXT
//   push BUTTON          waits for a dialog, prints its title, closes it with the button ID
//   popup                waits for a menu that has opened
//   hold CODE...         holds keys, such as Ctrl (17), down, until the next of these lines
//   focus ID             waits until the control has the keyboard focus
//   strike CODE          presses a key (number) for the control that has the focus
//   mouse ID             clicks with the mouse on the middle of a control (needs a screen)
//   doubleclick ID       the same, twice
//   pixel ID X Y         prints the colour that the screen shows there (needs a screen)
//   shows ID X Y COLOUR  waits until the screen shows #RRGGBB there (needs a screen)
//   say TEXT             prints the text
//   sleep MILLISECONDS
//   close                asks the window to close
//   exit                 waits for the end of the program and prints its exit code

#include "control_report.h"
#include "program_under_test.h"

#include <commctrl.h>

#include <cstdio>
#include <iostream>
#include <map>
#include <sstream>
#include <stdexcept>

namespace {

struct Session {
    const ProgramUnderTest& program;
    HWND window;
};

// How long a program may take for something, in milliseconds: far more than it needs, since the
// machine may be busy; a wait ends as soon as the thing is there.
const DWORD patience = 20000;

using Arguments = std::istringstream;
using Failure = std::runtime_error;

std::string restOf(Arguments& arguments) {
    std::string rest;
    std::getline(arguments >> std::ws, rest);
    return rest;
}

HWND control(const Session& session, int id) {
    const HWND found = id == 0 ? session.window : GetDlgItem(session.window, id);
    if (!found) throw Failure("no control " + std::to_string(id));
    return found;
}

HWND readControl(const Session& session, Arguments& arguments, int& id) {
    if (!(arguments >> id)) throw Failure("a control's ID is needed");
    return control(session, id);
}

HWND readControl(const Session& session, Arguments& arguments) {
    int id = 0;
    return readControl(session, arguments, id);
}

void post(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (!PostMessageW(window, message, wParam, lParam)) throw Failure("the window is gone");
}

// The notification that a control sends to its window.
void notify(const Session& session, int id, int code) {
    const HWND sender = id == 0 ? nullptr : GetDlgItem(session.window, id);
    post(session.window, WM_COMMAND, MAKEWPARAM(id, code), reinterpret_cast<LPARAM>(sender));
}

void runWindow(Session& session, Arguments& arguments) {
    session.window = session.program.waitForWindow(restOf(arguments), 30000);
    if (!session.window) throw Failure("no such window");
    std::printf("window: %s\n", escaped(windowText(session.window)).c_str());
}

void runFrame(Session& session, Arguments&) { printFrame(session.window); }

void runControls(Session& session, Arguments&) {
    for (const HWND child : childWindows(session.window))
        if (GetParent(child) == session.window) printControl(session.window, child);
}

void runControl(Session& session, Arguments& arguments) {
    printControl(session.window, readControl(session, arguments));
}

void runAbsent(Session& session, Arguments& arguments) {
    int id = 0;
    if (!(arguments >> id)) throw Failure("a control's ID is needed");
    if (GetDlgItem(session.window, id)) throw Failure("there is such a control");
    std::printf("%d absent\n", id);
}

void runText(Session& session, Arguments& arguments) {
    int id = 0;
    const HWND target = readControl(session, arguments, id);
    std::printf("%d text: %s\n", id, escaped(windowText(target)).c_str());
}

void runExpect(Session& session, Arguments& arguments) {
    int id = 0;
    const HWND target = readControl(session, arguments, id);
    const std::string wanted = restOf(arguments);
    const DWORD start = GetTickCount();
    std::string text = escaped(windowText(target));
    while (text != wanted && GetTickCount() - start < patience) {
        Sleep(20);
        text = escaped(windowText(target));
    }
    if (text != wanted) throw Failure("the text is '" + text + "'");
    std::printf("%d text: %s\n", id, text.c_str());
}

void runChanges(Session& session, Arguments& arguments) {
    const HWND target = readControl(session, arguments);
    const std::string former = restOf(arguments);
    for (const DWORD start = GetTickCount(); escaped(windowText(target)) == former; Sleep(20))
        if (GetTickCount() - start > patience) throw Failure("the text is still the same");
}

// Posted, not sent: a handler that shows a message box would keep a sender waiting.
void runClick(Session& session, Arguments& arguments) {
    post(readControl(session, arguments), BM_CLICK, 0, 0);
}

void runSetText(Session& session, Arguments& arguments) {
    const HWND target = readControl(session, arguments);
    const std::wstring text = toWide(unescaped(restOf(arguments)));
    sendMessage(target, WM_SETTEXT, 0, reinterpret_cast<LPARAM>(text.c_str()));
}

void runType(Session& session, Arguments& arguments) {
    const HWND target = readControl(session, arguments);
    for (const wchar_t character : toWide(restOf(arguments)))
        sendMessage(target, WM_CHAR, character, 1);
}

// Selecting by message does not notify the program as a user's click does, so that follows.
void runSelect(Session& session, Arguments& arguments) {
    int id = 0, index = 0;
    const HWND target = readControl(session, arguments, id);
    arguments >> index;
    const bool list = isListBox(target);
    const UINT message = list ? LB_SETCURSEL : CB_SETCURSEL;
    if (sendMessage(target, message, static_cast<WPARAM>(index), 0) != index)
        throw Failure("no such line");
    notify(session, id, list ? LBN_SELCHANGE : CBN_SELCHANGE);
}

void runCommand(Session& session, Arguments& arguments) {
    int id = 0, code = 0;
    arguments >> id >> code;
    notify(session, id, code);
}

void runSend(Session& session, Arguments& arguments) {
    int id = 0;
    UINT message = 0;
    long long wParam = 0, lParam = 0;
    const HWND target = readControl(session, arguments, id);
    if (!(arguments >> message >> wParam >> lParam)) throw Failure("three numbers are needed");
    const LRESULT answer =
        sendMessage(target, message, static_cast<WPARAM>(wParam), static_cast<LPARAM>(lParam));
    std::printf("%d answer: %lld\n", id, static_cast<long long>(answer));
}

void runItems(Session& session, Arguments& arguments) {
    printItems(session.program, readControl(session, arguments));
}

void runChecked(Session& session, Arguments& arguments) {
    int id = 0;
    const HWND target = readControl(session, arguments, id);
    std::printf("%d checked: %d\n", id, static_cast<int>(sendMessage(target, BM_GETCHECK, 0, 0)));
}

void runRange(Session& session, Arguments& arguments) {
    printRange(readControl(session, arguments));
}

void runImage(Session& session, Arguments& arguments) {
    int id = 0;
    const HWND target = readControl(session, arguments, id);
    const bool loaded = sendMessage(target, STM_GETIMAGE, IMAGE_BITMAP, 0) != 0;
    std::printf("%d image: %s\n", id, loaded ? "loaded" : "none");
}

// Posted, not typed: without a screen no window has the focus.
void runKey(Session& session, Arguments& arguments) {
    const HWND target = readControl(session, arguments);
    WPARAM code = 0;
    if (!(arguments >> code)) throw Failure("a key's code is needed");
    post(target, WM_KEYDOWN, code, 1);
    post(target, WM_KEYUP, code, static_cast<LPARAM>(0xC0000001));
}

void runPress(Session& session, Arguments& arguments) {
    const HWND target = readControl(session, arguments);
    int x = 0, y = 0, times = 1;
    arguments >> x >> y >> times;
    const LPARAM place = MAKELPARAM(x, y);
    post(target, WM_LBUTTONDOWN, MK_LBUTTON, place);
    post(target, WM_LBUTTONUP, 0, place);
    if (times < 2) return;
    post(target, WM_LBUTTONDBLCLK, MK_LBUTTON, place);
    post(target, WM_LBUTTONUP, 0, place);
}

void printMessageBox(HWND box) {
    const int textId = 0xFFFF; // the ID that every message box gives its text
    std::printf("message box [%s] [%s] buttons:", escaped(windowText(box)).c_str(),
                escaped(windowText(GetDlgItem(box, textId))).c_str());
    for (int button = IDOK; button <= IDNO; ++button)
        if (GetDlgItem(box, button)) std::printf(" %d", button);
    std::printf("\n");
}

HWND openMessageBox(const Session& session) {
    const HWND box = session.program.waitForDialog(patience);
    if (!box) throw Failure("no message box");
    printMessageBox(box);
    return box;
}

void runDialog(Session& session, Arguments&) { openMessageBox(session); }

void runMessageBox(Session& session, Arguments& arguments) {
    int button = IDOK;
    arguments >> button;
    const HWND box = openMessageBox(session);
    post(box, WM_COMMAND, MAKEWPARAM(button, BN_CLICKED),
         reinterpret_cast<LPARAM>(GetDlgItem(box, button)));
    for (const DWORD start = GetTickCount(); IsWindow(box); Sleep(10))
        if (GetTickCount() - start > patience) throw Failure("the message box stays open");
}

void runNoMessageBox(Session& session, Arguments&) {
    if (session.program.waitForDialog(300)) throw Failure("a message box is open");
}

// The only field of a dialog of the library has this ID.
void runAnswer(Session& session, Arguments& arguments) {
    int button = IDOK;
    arguments >> button;
    const std::wstring text = toWide(restOf(arguments));
    const HWND dialog = session.program.waitForDialog(5000);
    if (!dialog) throw Failure("no dialog");
    std::printf("dialog [%s] [%s]\n", escaped(windowText(dialog)).c_str(),
                escaped(windowText(GetDlgItem(dialog, 100))).c_str());
    if (!text.empty())
        sendMessage(GetDlgItem(dialog, 100), WM_SETTEXT, 0, reinterpret_cast<LPARAM>(text.c_str()));
    post(dialog, WM_COMMAND, MAKEWPARAM(button, BN_CLICKED),
         reinterpret_cast<LPARAM>(GetDlgItem(dialog, button)));
    for (const DWORD start = GetTickCount(); IsWindow(dialog); Sleep(10))
        if (GetTickCount() - start > patience) throw Failure("the dialog stays open");
}

// The innermost one: the field of a combo box has the ID of the box.
HWND descendant(HWND parent, int id) {
    HWND found = nullptr;
    for (const HWND child : childWindows(parent))
        if (GetDlgCtrlID(child) == id) found = child;
    return found;
}

std::string idsIn(HWND parent) {
    std::string ids;
    for (const HWND child : childWindows(parent))
        ids += " " + std::to_string(GetDlgCtrlID(child)) + " " + windowClass(child);
    return ids;
}

// A dialog is visible before it is complete, hence the wait for the field.
void runFill(Session& session, Arguments& arguments) {
    int id = 0;
    arguments >> id;
    const std::wstring text = toWide(unescaped(restOf(arguments)));
    const DWORD start = GetTickCount();
    HWND field = nullptr;
    while (!field && GetTickCount() - start < patience) {
        field = descendant(session.program.waitForDialog(20), id);
        if (!field) Sleep(20);
    }
    if (!field) throw Failure("no such field among" + idsIn(session.program.waitForDialog(20)));
    const LPARAM content = reinterpret_cast<LPARAM>(text.c_str());
    if (windowClass(field) != "ComboBox") {
        sendMessage(field, WM_SETTEXT, 0, content);
    } else {
        if (sendMessage(field, CB_SELECTSTRING, static_cast<WPARAM>(-1), content) < 0)
            throw Failure("no such line");
        sendMessage(GetParent(field), WM_COMMAND, MAKEWPARAM(id, CBN_SELCHANGE),
                    reinterpret_cast<LPARAM>(field));
    }
}

void runPush(Session& session, Arguments& arguments) {
    int button = IDOK;
    arguments >> button;
    const HWND dialog = session.program.waitForDialog(patience);
    if (!dialog) throw Failure("no dialog");
    std::printf("dialog [%s] button %d\n", escaped(windowText(dialog)).c_str(), button);
    post(dialog, WM_COMMAND, MAKEWPARAM(button, BN_CLICKED),
         reinterpret_cast<LPARAM>(GetDlgItem(dialog, button)));
    for (const DWORD start = GetTickCount(); IsWindow(dialog) && IsWindowVisible(dialog); Sleep(10))
        if (GetTickCount() - start > patience) throw Failure("the dialog stays open");
}

void runPopup(Session& session, Arguments&) {
    if (!session.program.waitForMenu(patience)) throw Failure("no menu");
    std::printf("a menu is open\n");
}

// The state of the keys belongs to the thread of the program, so this one joins it for the moment.
void runHold(Session& session, Arguments& arguments) {
    const DWORD thread = GetWindowThreadProcessId(session.window, nullptr);
    if (!AttachThreadInput(GetCurrentThreadId(), thread, TRUE)) throw Failure("no common input");
    BYTE keys[256] = {};
    for (int code = 0; arguments >> code;) keys[code & 255] = 0x80;
    const bool held = SetKeyboardState(keys) != 0;
    AttachThreadInput(GetCurrentThreadId(), thread, FALSE);
    if (!held) throw Failure("the keys cannot be held");
}

HWND focused(const Session& session) {
    GUITHREADINFO info = {};
    info.cbSize = sizeof info;
    GetGUIThreadInfo(GetWindowThreadProcessId(session.window, nullptr), &info);
    return info.hwndFocus;
}

void runFocus(Session& session, Arguments& arguments) {
    int id = 0;
    const HWND target = readControl(session, arguments, id);
    const DWORD start = GetTickCount();
    while (focused(session) != target && GetTickCount() - start < patience) Sleep(20);
    if (focused(session) != target)
        throw Failure("the focus is on " + std::to_string(GetDlgCtrlID(focused(session))));
    std::printf("%d has the focus\n", id);
}

void runStrike(Session& session, Arguments& arguments) {
    WPARAM code = 0;
    arguments >> code;
    const HWND target = focused(session) ? focused(session) : session.window;
    post(target, WM_KEYDOWN, code, 1);
    post(target, WM_KEYUP, code, 1);
}

void clickWithMouse(const Session& session, HWND target, int times) {
    RECT area;
    GetWindowRect(target, &area);
    SetForegroundWindow(session.window);
    SetCursorPos((area.left + area.right) / 2, (area.top + area.bottom) / 2);
    for (int click = 0; click < times; ++click) {
        INPUT inputs[2] = {};
        inputs[0].type = inputs[1].type = INPUT_MOUSE;
        inputs[0].mi.dwFlags = MOUSEEVENTF_LEFTDOWN;
        inputs[1].mi.dwFlags = MOUSEEVENTF_LEFTUP;
        SendInput(2, inputs, sizeof(INPUT));
    }
}

void runMouse(Session& session, Arguments& arguments) {
    clickWithMouse(session, readControl(session, arguments), 1);
}

void runDoubleClick(Session& session, Arguments& arguments) {
    clickWithMouse(session, readControl(session, arguments), 2);
}

std::string colourOnScreen(HWND target, int x, int y) {
    POINT place = {x, y};
    ClientToScreen(target, &place);
    const HDC screen = GetDC(nullptr);
    const COLORREF colour = GetPixel(screen, place.x, place.y);
    ReleaseDC(nullptr, screen);
    char text[8];
    std::snprintf(text, sizeof text, "#%02X%02X%02X", GetRValue(colour), GetGValue(colour),
                  GetBValue(colour));
    return text;
}

void runPixel(Session& session, Arguments& arguments) {
    int id = 0, x = 0, y = 0;
    const HWND target = readControl(session, arguments, id);
    arguments >> x >> y;
    std::printf("%d pixel: %s\n", id, colourOnScreen(target, x, y).c_str());
}

// A window is there before it is painted, hence the wait.
void runShows(Session& session, Arguments& arguments) {
    int id = 0, x = 0, y = 0;
    const HWND target = readControl(session, arguments, id);
    arguments >> x >> y;
    const std::string wanted = restOf(arguments);
    const DWORD start = GetTickCount();
    std::string colour = colourOnScreen(target, x, y);
    while (colour != wanted && GetTickCount() - start < patience) {
        Sleep(20);
        colour = colourOnScreen(target, x, y);
    }
    if (colour != wanted) throw Failure("the colour is " + colour);
    std::printf("%d shows %s at %d,%d\n", id, colour.c_str(), x, y);
}

void runSay(Session&, Arguments& arguments) { std::printf("%s\n", restOf(arguments).c_str()); }

void runSleep(Session&, Arguments& arguments) {
    DWORD milliseconds = 0;
    arguments >> milliseconds;
    Sleep(milliseconds);
}

void runClose(Session& session, Arguments&) { post(session.window, WM_CLOSE, 0, 0); }

void runExit(Session& session, Arguments&) {
    DWORD code = 0;
    if (!session.program.waitForEnd(patience, code))
        throw Failure(IsWindow(session.window) ? "the window stays open"
                                               : "the program runs on without its window");
    std::printf("exit code: %lu\n", code);
}

using Command = void (*)(Session&, Arguments&);

const std::map<std::string, Command>& commands() {
    static const std::map<std::string, Command> table = {
        {"window", runWindow},
        {"frame", runFrame},
        {"controls", runControls},
        {"control", runControl},
        {"absent", runAbsent},
        {"text", runText},
        {"expect", runExpect},
        {"changes", runChanges},
        {"click", runClick},
        {"settext", runSetText},
        {"type", runType},
        {"select", runSelect},
        {"command", runCommand},
        {"send", runSend},
        {"items", runItems},
        {"checked", runChecked},
        {"range", runRange},
        {"image", runImage},
        {"key", runKey},
        {"strike", runStrike},
        {"dialog", runDialog},
        {"messagebox", runMessageBox},
        {"nomessagebox", runNoMessageBox},
        {"answer", runAnswer},
        {"fill", runFill},
        {"push", runPush},
        {"popup", runPopup},
        {"hold", runHold},
        {"focus", runFocus},
        {"press", runPress},
        {"mouse", runMouse},
        {"doubleclick", runDoubleClick},
        {"pixel", runPixel},
        {"shows", runShows},
        {"say", runSay},
        {"sleep", runSleep},
        {"close", runClose},
        {"exit", runExit},
    };
    return table;
}

void runLine(Session& session, const std::string& line) {
    Arguments arguments(line);
    std::string name;
    arguments >> name;
    if (name.empty() || name[0] == '#') return;
    const auto command = commands().find(name);
    if (command == commands().end()) throw Failure("unknown command");
    const bool needsWindow = name != "window" && name != "exit" && name != "sleep" && name != "say";
    if (needsWindow && !session.window) throw Failure("no window yet");
    command->second(session, arguments);
}

// Stops at the first failure: what follows would only fail for the same reason.
int runCommands(Session& session) {
    std::string line;
    while (std::getline(std::cin, line)) {
        if (!line.empty() && line.back() == '\r') line.pop_back();
        try {
            runLine(session, line);
        } catch (const Failure& failure) {
            std::printf("FAILED %s: %s\n", line.c_str(), failure.what());
            return 1;
        }
        std::fflush(stdout);
    }
    return 0;
}

} // namespace

// Programs of tests that run side by side would take the focus and the mouse from each other; on a
// desktop of its own each is alone.
void moveToOwnDesktop() {
    const std::string name = "ui_driver_" + std::to_string(GetCurrentProcessId());
    const HDESK desktop =
        CreateDesktopW(toWide(name).c_str(), nullptr, nullptr, 0, GENERIC_ALL, nullptr);
    if (!desktop || !SetThreadDesktop(desktop)) throw Failure("no desktop for the program");
}

int wmain(int argc, wchar_t** argv) {
    const bool alone = argc == 3 && std::wstring(argv[1]) == L"--alone";
    if (argc != 2 && !alone) {
        std::printf("usage: ui_driver [--alone] PROGRAM < COMMANDS\n");
        return 2;
    }
    try {
        if (alone) moveToOwnDesktop();
        const ProgramUnderTest program(toUtf8(argv[argc - 1]));
        Session session{program, nullptr};
        return runCommands(session);
    } catch (const Failure& failure) {
        std::printf("FAILED: %s\n", failure.what());
        return 1;
    }
}
