// Window functions on a real window with a control of each kind, on dead handles and on values that
// are no controls.
#include "import.hpp"

#include "checks.h"
#include "lists.h"

#include <shlobj.h>

static HWND top = NULL;
static int commands = 0, lastCommand = 0;

static LRESULT CALLBACK windowProcedure(HWND window, UINT message, WPARAM first, LPARAM second) {
    if (message == WM_COMMAND && HIWORD(first) == 0) {
        ++commands;
        lastCommand = LOWORD(first);
    }
    return DefWindowProcA(window, message, first, second);
}

static void openWindow() {
    INITCOMMONCONTROLSEX controls = {sizeof controls, ICC_WIN95_CLASSES};
    InitCommonControlsEx(&controls);
    WNDCLASSEXA type = {};
    type.cbSize = sizeof type;
    type.lpfnWndProc = windowProcedure;
    type.lpszClassName = "ChecksClass";
    RegisterClassExA(&type);
    top = CreateWindowExA(0, "ChecksClass", "Checks", WS_OVERLAPPEDWINDOW, 0, 0, 400, 300, NULL,
                          NULL, NULL, NULL);
    ShowWindow(top, SW_SHOW);
}

static Value control(const char* type, DWORD style, int id) {
    return Value::makeHandle((void*)CreateWindowExA(0, type, "", WS_CHILD | WS_VISIBLE | style, 10,
                                                    20, 100, 30, top, (HMENU)(INT_PTR)id, NULL,
                                                    NULL));
}

static void testTagsAndIds() {
    Value entry = control("EDIT", 0, 20);
    CHECK(setTag(entry, listOf({1, "x"})) && getTag(entry).toString() == "[1, x]" &&
          controlId(entry) == 20);
    CHECK(controlById(20).handleVal == entry.handleVal && controlById(9999).isNull() &&
          controlId(5) == -1);
    CHECK(setFont(entry, "Arial", 12) &&
          setFont(entry, "Arial", 9.5, "bold italic underline strike"));
    CHECK(!setFont(entry, "Arial", 0) && !setFont(entry, "Arial", "big") &&
          setTooltip(entry, "hint \xC3\xA4") && setTooltip(entry, ""));
    CHECK(redraw(entry) && setZOrder(entry, true) && setZOrder(entry, false) &&
          setPlaceholder(entry, "p"));
    DestroyWindow((HWND)entry.handleVal);
    CHECK(getTag(entry).isNull() && !setTag(entry, 1));
}

static void testSelections() {
    Value page = control("EDIT", ES_MULTILINE | ES_AUTOVSCROLL, 21);
    CHECK(setText(page, "a\n\xC3\xA4\xF0\x9F\x98\x80z") && setSelection(page, 2, 2) &&
          getSelection(page) == "\xC3\xA4\xF0\x9F\x98\x80");
    CHECK(getCaret(page) == 4 && replaceSelection(page, "1\n2") && getText(page) == "a\n1\n2z" &&
          getCaret(page) == 5);
    CHECK(undoText(page) && getText(page) == "a\n\xC3\xA4\xF0\x9F\x98\x80z" &&
          setSelection(page, -5, 0) && getCaret(page) == 0);
    CHECK(setSelection(page, 1, 99) && getSelection(page) == "\n\xC3\xA4\xF0\x9F\x98\x80z" &&
          scrollToEnd(page) && setNumeric(page, true));
    CHECK((GetWindowLongA((HWND)page.handleVal, GWL_STYLE) & ES_NUMBER) && setNumeric(page, false));
}

static void testLists() {
    Value many = control("LISTBOX", LBS_MULTIPLESEL | LBS_HASSTRINGS, 22);
    CHECK(addItems(many, listOf({"a", "b", "c"})) == 3 && getSelectedItems(many).arrayVal.empty());
    SendMessageA((HWND)many.handleVal, LB_SETSEL, TRUE, 0);
    SendMessageA((HWND)many.handleVal, LB_SETSEL, TRUE, 2);
    CHECK(getSelectedItems(many).toString() == "[0, 2]" && scrollToEnd(many));
    Value choice = control("COMBOBOX", CBS_DROPDOWN | CBS_HASSTRINGS, 23);
    CHECK(addItems(choice, listOf({"a", "b"})) == 2 && selectItem(choice, 1) &&
          getSelectedItems(choice).toString() == "[1]");
    CHECK(dropDown(choice, true) && dropDown(choice, false) && !dropDown(many, true));
}

static void testPages() {
    Value pages = control("SysTabControl32", 0, 24), one = control("BUTTON", 0, 25),
          two = control("EDIT", 0, 26), both = control("EDIT", 0, 27);
    CHECK(addItem(pages, "General") == 0 && addItem(pages, "Details") == 1 &&
          getItem(pages, 1) == "Details" && selectItem(pages, 1));
    const Value parts = listOf({listOf({one, both}), listOf({two, both})});
    CHECK(showPage(pages, parts) && !isVisible(one) && isVisible(two) && isVisible(both) &&
          selectItem(pages, 0) && showPage(pages, parts));
    CHECK(isVisible(one) && !isVisible(two) && isVisible(both) && !showPage(one, parts) &&
          showPage(pages, 5));
    CHECK(setItem(pages, 0, "First") && getItem(pages, 0) == "First" && itemTotal(pages) == 2);
}

static void testSlidersAndStatus() {
    Value level = control("msctls_trackbar32", 0, 28), bar = control("msctls_progress32", 0, 29),
          foot = control("msctls_statusbar32", 0, 30);
    CHECK(setRange(level, 0, 50) && setValue(level, 99) && getValue(level) == 50 &&
          setStep(level, 2, 20) && !setStep(bar, 1, 1));
    CHECK(setRange(bar, 0, 1000) && setValue(bar, 500) && stepProgress(bar, 100) == 600 &&
          stepProgress(bar, -200) == 400 && stepProgress(level, 1) == -1);
    CHECK(setMarquee(bar, true) && setMarquee(bar, false) && setStatus(foot, "zero") &&
          setStatusParts(foot, listOf({50, -1, 60})));
    int edges[8] = {0};
    CHECK_EQUAL((int)SendMessageA((HWND)foot.handleVal, SB_GETPARTS, 8, (LPARAM)edges), 3);
    RECT inner;
    GetClientRect((HWND)foot.handleVal, &inner);
    CHECK(edges[0] == 50 && edges[1] == inner.right - 60 && edges[2] == inner.right &&
          setStatus(foot, 1, "one") && !setStatus(foot, -1, "x"));
    CHECK(!setStatusParts(foot, 5) && !setStatusParts(foot, listOf({})) &&
          !setStatusParts(bar, listOf({1})));
}

// A picture of one white point.
static std::string smallBitmap() {
    const unsigned char bytes[] = {'B', 'M', 58, 0, 0, 0, 0, 0, 0, 0,   54,  0,   0, 0,  40,
                                   0,   0,   0,  1, 0, 0, 0, 1, 0, 0,   0,   1,   0, 24, 0,
                                   0,   0,   0,  0, 4, 0, 0, 0, 0, 0,   0,   0,   0, 0,  0,
                                   0,   0,   0,  0, 0, 0, 0, 0, 0, 255, 255, 255, 0};
    return std::string((const char*)bytes, sizeof bytes);
}

static void testPictures() {
    Value photo = control("STATIC", SS_BITMAP, 31), label = control("STATIC", 0, 32);
    CHECK(writeFile("p.bmp", smallBitmap()) && setPicture(photo, "p.bmp") &&
          setPicture(photo, "p.bmp") && clearPicture(photo));
    CHECK(!setPicture(photo, "none.bmp") && !setPicture(photo, "none.png") &&
          !setPicture(label, "p.bmp") && !clearPicture(label));
    CHECK(writeFile("bad.png", "no picture") && !setPicture(photo, "bad.png") &&
          writeFile("bad.ico", "x") && !setPicture(photo, "bad.ico"));
    CHECK(writeFile(
        "real.png",
        base64Decode(
            "iVBORw0KGgoAAAANSUhEUgAAAAEAAAABCAYAAAAfFcSJAAAADUlEQVR42mNk+M9QDwADhgGAWjR9awAAAABJRU5ErkJggg==")));
    CHECK(setPicture(photo, "real.png") && clearPicture(photo));
}

static void testMenus() {
    Value target = control("BUTTON", 0, 33);
    CHECK(addMenu("File", listOf({"Save", "-", "Quit \xC3\xA4"}), listOf({target, Value(), 77})) &&
          addMenu("Edit", listOf({"Copy"}), listOf({target})));
    HMENU bar = GetMenu(top), file = GetSubMenu(bar, 0);
    CHECK(GetMenuItemCount(bar) == 2 && GetMenuItemCount(file) == 3 &&
          GetMenuItemID(file, 0) == 33 && GetMenuItemID(file, 2) == 77);
    CHECK(checkMenu("Copy", true) && (GetMenuState(bar, 33, MF_BYCOMMAND) != (UINT)-1) &&
          (GetMenuState(GetSubMenu(bar, 1), 0, MF_BYPOSITION) & MF_CHECKED));
    CHECK(enableMenu("Quit \xC3\xA4", false) &&
          (GetMenuState(file, 2, MF_BYPOSITION) & MF_GRAYED) && enableMenu("Quit \xC3\xA4", true));
    CHECK(setMenuText("Save", "Save all") && !setMenuText("Save", "x") &&
          checkMenu("Save all", true) && !enableMenu("none", true));
    CHECK(setMenuText("File", "Program") && GetMenuItemID(file, 0) == 33 && !addMenu("x", 5, 5) &&
          popupMenu(listOf({})) == -1);
    commands = 0;
    CHECK(clickControl(target) && commands == 1 && lastCommand == 33);
}

static void testWindow() {
    CHECK(setWindowSize(300, 200) && getWindowSize().toString() == "[300, 200]" &&
          setWindowPosition(30, 40) && setResizable(false));
    CHECK(!(GetWindowLongA(top, GWL_STYLE) & WS_THICKFRAME) && setResizable(true) &&
          setMinSize(250, 150));
    SetWindowPos(top, NULL, 0, 0, 20, 20, SWP_NOMOVE | SWP_NOZORDER);
    RECT outer;
    GetWindowRect(top, &outer);
    CHECK(outer.right - outer.left == 250 && outer.bottom - outer.top == 150 && setMinSize(1, 1));
    CHECK(maximizeWindow() && IsZoomed(top) && restoreWindow() && !IsZoomed(top) &&
          minimizeWindow() && IsIconic(top) && restoreWindow());
    CHECK(setOpacity(80) && setOpacity(100) && !setOpacity(5) && !setOpacity("x") &&
          setWindowColor("#102030") && setWindowColor("red") && !setWindowColor("none"));
    CHECK(!setWindowIcon("none.ico") && flashWindow() && setTitle("New \xC3\xA4") &&
          getTitle() == "New \xC3\xA4" && centerWindow() && setTopmost(false));
}

static void testAnchors() {
    CHECK(setWindowSize(300, 200));
    Value corner = control("BUTTON", 0, 34), wide = control("EDIT", 0, 35),
          still = control("EDIT", 0, 36);
    CHECK(anchor(corner, "right bottom") && anchor(wide, "left, top, right, bottom") &&
          anchor(still, "left top") && !anchor(5, "left"));
    CHECK(setWindowSize(350, 220) && getBounds(corner).toString() == "[60, 40, 100, 30]" &&
          getBounds(wide).toString() == "[10, 20, 150, 50]");
    CHECK(getBounds(still).toString() == "[10, 20, 100, 30]" && setWindowSize(300, 200) &&
          getBounds(wide).toString() == "[10, 20, 100, 30]");
}

static void testStatusBarsOfAResizedWindow() {
    CHECK(setWindowSize(300, 200));
    Value plain = control("msctls_statusbar32", 0, 40),
          divided = control("msctls_statusbar32", 0, 41);
    CHECK(setStatusParts(divided, listOf({50, -1, 60})) && setWindowSize(350, 220));
    int edges[8] = {0};
    CHECK_EQUAL((int)SendMessageA((HWND)divided.handleVal, SB_GETPARTS, 8, (LPARAM)edges), 3);
    CHECK(edges[0] == 50 && edges[1] == 290 && edges[2] == 350 &&
          getBounds(plain).arrayVal[2].intVal == 350 && setWindowSize(300, 200));
}

static void testShortcutsAndKeys() {
    Value target = control("BUTTON", 0, 37);
    CHECK(addShortcut("Ctrl+S", target) && addShortcut("ctrl + shift + F4", target) &&
          addShortcut("F5", 37) && addShortcut("Alt+Enter", target));
    CHECK(!addShortcut("", target) && !addShortcut("Ctrl", target) &&
          !addShortcut("Ctrl+Nokey", target) && !addShortcut("A+B", target) &&
          !addShortcut("F5", Value()));
    CHECK(!addShortcut("F25", target) && !isKeyDown("nokey") && !isKeyDown("F13") &&
          !isKeyDown(Value()));
    commands = 0;
    PostMessageA((HWND)target.handleVal, WM_KEYDOWN, VK_F5, 1);
    CHECK(processEvents() && commands == 1 && lastCommand == 37);
}

static void testTimers() {
    Value target = control("BUTTON", 0, 38);
    commands = 0;
    CHECK(!isTimerRunning(target) && startTimer(target, 20) && isTimerRunning(target) &&
          waitMs(300) && commands >= 3);
    CHECK(stopTimer(target) && !isTimerRunning(target) && !stopTimer(target));
    commands = 0;
    CHECK(waitMs(60) && commands == 0 && startTimer(1003, 20) && isTimerRunning(1003) &&
          waitMs(200) && commands >= 2 && lastCommand == 1003 && stopTimer(1003));
    CHECK(waitMs(-5) && waitMs(0) && !startTimer(Value(), 10));
}

static void testDroppedFiles() {
    Value target = control("BUTTON", 0, 39);
    CHECK(droppedFiles().arrayVal.empty() && acceptFiles(target));
    const wchar_t names[] = L"C:\\one.txt\0C:\\\x4E2D.txt\0";
    HGLOBAL memory = GlobalAlloc(GMEM_MOVEABLE | GMEM_ZEROINIT, sizeof(DROPFILES) + sizeof names);
    DROPFILES* drop = (DROPFILES*)GlobalLock(memory);
    drop->pFiles = sizeof(DROPFILES);
    drop->fWide = TRUE;
    memcpy(drop + 1, names, sizeof names);
    GlobalUnlock(memory);
    commands = 0;
    SendMessageA(top, WM_DROPFILES, (WPARAM)memory, 0);
    CHECK(commands == 1 && lastCommand == 39 &&
          droppedFiles().toString() == "[C:\\one.txt, C:\\\xE4\xB8\xAD.txt]");
}

// Another program may keep the clipboard; here a thread does, until it is told to go on or, so that
// whoever waits for it ends as well, for half a minute.
struct ClipboardHolder {
    HANDLE held = CreateEventA(NULL, TRUE, FALSE, NULL);
    HANDLE enough = CreateEventA(NULL, TRUE, FALSE, NULL);
    HANDLE thread = CreateThread(NULL, 0, hold, this, 0, NULL);

    static DWORD WINAPI hold(void* holder) {
        const ClipboardHolder* self = (const ClipboardHolder*)holder;
        OpenClipboard(NULL);
        SetEvent(self->held);
        WaitForSingleObject(self->enough, 30000);
        CloseClipboard();
        return 0;
    }
    bool letGo() { return SetEvent(enough) && WaitForSingleObject(thread, 20000) == WAIT_OBJECT_0; }
};

static void testClipboard() {
    CHECK(clipboardSetText("a\n\xE4\xB8\xAD") && clipboardHasText() &&
          clipboardGetText() == "a\n\xE4\xB8\xAD");
    ClipboardHolder holder;
    CHECK(WaitForSingleObject(holder.held, 20000) == WAIT_OBJECT_0);
    clearError();
    const unsigned long long start = GetTickCount64();
    CHECK(!clipboardSetText("x") && clipboardGetText().empty() &&
          lastError() == "clipboard: in use by another program");
    // Each tries for a fifth of a second; what else the machine has to do may make it more.
    CHECK(GetTickCount64() - start < 10000);
    CHECK(holder.letGo());
    CHECK(clipboardGetText() == "a\n\xE4\xB8\xAD" && clipboardSetText("") &&
          clipboardGetText().empty());
}

static void testRest() {
    CHECK(screenSize().arrayVal.size() == 2 && mousePosition().arrayVal.size() == 2 &&
          !beep("loud") && !lastError().empty());
    CHECK(sendMessage(mainWindow(), WM_GETTEXTLENGTH, 0, 0).intVal > 0 &&
          sendMessage(5, 1, 2, 3) == 0 && hasFocus(mainWindow()) == (GetFocus() == top));
    CHECK(!openUrl("file:///c:/x") && !openUrl("javascript:1") && !openUrl("") &&
          listBoxDialog("t", 5) == -1 && enableEvents());
    CHECK(findWindow("no such window anywhere").isNull() &&
          setColors(mainWindow(), "red", "#fff") && !setColors(mainWindow(), "none", ""));
}

// Every function of controls, with something that is none.
static void testWrongKinds(Value no) {
    CHECK(!setText(no, "x") && getText(no).empty() && !appendText(no, "x") &&
          !setEnabled(no, true) && !isEnabled(no) && !show(no));
    CHECK(!hide(no) && !setVisible(no, 1) && !isVisible(no) && !setFocus(no) && !hasFocus(no) &&
          !moveTo(no, 1, 1) && !resizeTo(no, 1, 1));
    CHECK(!setBounds(no, 1, 1, 1, 1) && getBounds(no).arrayVal.empty() && !setFont(no, "a", 9) &&
          !setColors(no, "red", "") && !setTooltip(no, "x"));
    CHECK(!setTag(no, 1) && getTag(no).isNull() && controlId(no) == -1 && !clickControl(no) &&
          !redraw(no) && !setZOrder(no, 1) && !anchor(no, "left"));
    CHECK(!isChecked(no) && !setChecked(no, 1) && !clearText(no) && !selectAll(no) &&
          getSelection(no).empty() && !setSelection(no, 0, 1));
    CHECK(!replaceSelection(no, "x") && getCaret(no) == -1 && !setReadOnly(no, 1) &&
          !setPlaceholder(no, "x") && !setPassword(no, 1));
    CHECK(!setMaxLength(no, 1) && !setNumeric(no, 1) && getNumber(no).isNull() && !undoText(no) &&
          !scrollToEnd(no) && addItem(no, "x") == -1);
    CHECK(addItems(no, no) == -1 && insertItem(no, 0, "x") == -1 && !removeItem(no, 0) &&
          !clearItems(no) && itemTotal(no) == -1 && getItem(no, 0).empty());
    CHECK(!setItem(no, 0, "x") && getItems(no).arrayVal.empty() && !setItems(no, no) &&
          getSelected(no) == -1 && getSelectedText(no).empty());
    CHECK(!selectItem(no, 0) && !selectText(no, "x") && findItem(no, "x") == -1 &&
          getSelectedItems(no).arrayVal.empty() && !showPage(no, no) && !dropDown(no, 1));
    CHECK(getValue(no) == -1 && !setValue(no, 1) && !setRange(no, 0, 1) && !setStep(no, 1, 1) &&
          stepProgress(no, 1) == -1 && !setMarquee(no, 1));
    CHECK(!setStatus(no, "x") && !setStatus(no, 0, "x") && !setStatusParts(no, no) &&
          !setPicture(no, "x") && !clearPicture(no));
    CHECK(sendMessage(no, 0, 0, 0) == 0 &&
          (no.isNumber() || (!startTimer(no, 5) && !stopTimer(no) && !isTimerRunning(no) &&
                             !addShortcut("F9", no))));
}

int main() {
    CHECK(!setTitle("x") && getTitle().empty() && !closeWindow() && !confirmClose("?") &&
          !acceptFiles(1) && !addMenu("a", listOf({"b"}), 1));
    CHECK(!setMinSize(1, 1) && getWindowSize().arrayVal.empty() && !processEvents() &&
          !waitMs(10) && mousePosition().arrayVal.empty());
    openWindow();
    testTagsAndIds();
    testSelections();
    testLists();
    testPages();
    testSlidersAndStatus();
    testPictures();
    testMenus();
    testWindow();
    testAnchors();
    testStatusBarsOfAResizedWindow();
    testShortcutsAndKeys();
    testTimers();
    testDroppedFiles();
    testClipboard();
    testRest();
    Value dead = control("BUTTON", 0, 99);
    DestroyWindow((HWND)dead.handleVal);
    for (const Value& no : {Value(), Value(1), Value(2.5), Value("text"), Value(true), listOf({1}),
                            Value::makeHandle((void*)0x12345678), dead})
        testWrongKinds(no);
    return finishChecks();
}
