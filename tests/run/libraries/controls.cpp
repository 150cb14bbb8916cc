// Library functions of controls, window, clipboard and timers on controls of a real window.
#include "import.hpp"

#include "checks.h"

static int commandsSeen = 0;

static LRESULT CALLBACK windowProcedure(HWND window, UINT message, WPARAM first, LPARAM second) {
    if (message == WM_COMMAND && LOWORD(first) == 7) ++commandsSeen;
    if (message == WM_DESTROY) PostQuitMessage(0);
    return DefWindowProcA(window, message, first, second);
}

static HWND openWindow() {
    INITCOMMONCONTROLSEX controls = {sizeof controls, ICC_WIN95_CLASSES};
    InitCommonControlsEx(&controls);
    WNDCLASSEXA type = {};
    type.cbSize = sizeof type;
    type.lpfnWndProc = windowProcedure;
    type.lpszClassName = "ChecksClass";
    RegisterClassExA(&type);
    return CreateWindowExA(0, "ChecksClass", "Checks", WS_OVERLAPPEDWINDOW, 0, 0, 400, 300, NULL,
                           NULL, NULL, NULL);
}

static HWND parent = NULL;

static Value makeControl(const char* type, DWORD style, int id) {
    return Value::makeHandle((void*)CreateWindowExA(0, type, "", WS_CHILD | WS_VISIBLE | style, 10,
                                                    20, 100, 30, parent, (HMENU)(INT_PTR)id, NULL,
                                                    NULL));
}

static Value listOf(std::initializer_list<Value> elements) { return std::vector<Value>(elements); }

static void testTexts() {
    Value entry = makeControl("EDIT", ES_AUTOHSCROLL, 1);
    CHECK(setText(entry, "hello") && getText(entry) == "hello" && entry.isHandle());
    CHECK(setText(entry, 6.0) && getText(entry) == "6" && getNumber(entry) == 6);
    CHECK(setText(entry, "x") && getNumber(entry).isNull() && clearText(entry) &&
          getText(entry).empty());
    CHECK(setText(entry, " 2.5") && getNumber(entry) == 2.5);
    CHECK(appendText(entry, "0") && getText(entry) == " 2.50");
    CHECK_EQUAL(entry["text"].toString(), " 2.50");
    CHECK(entry.isString() && setText(entry, "again") && getText(entry) == "again");
    CHECK(selectAll(entry) && setReadOnly(entry, true) && setMaxLength(entry, 5));
    CHECK(setPassword(entry, true) && setPassword(entry, false));

    Value area = makeControl("EDIT", ES_MULTILINE | ES_AUTOVSCROLL, 2);
    CHECK(setText(area, "a\nb") && getText(area) == "a\nb");
    CHECK_EQUAL(GetWindowTextLengthA((HWND)area.handleVal), 4);
    CHECK(appendText(area, "\nc") && getText(area) == "a\nb\nc");

    Value label = makeControl("STATIC", 0, 3);
    CHECK(setText(label, "L") && appendText(label, "M") && getText(label) == "LM" &&
          !selectAll(label));
}

static void testStates() {
    Value box = makeControl("BUTTON", BS_AUTOCHECKBOX, 4);
    CHECK(!isChecked(box) && setChecked(box, true) && isChecked(box) && setChecked(box, 0) &&
          !isChecked(box));
    CHECK(isEnabled(box) && setEnabled(box, false) && !isEnabled(box) && setEnabled(box, 1));
    CHECK(hide(box) && !isVisible(box) && moveTo(box, 5, 6) && resizeTo(box, 70, 80));
    CHECK_EQUAL(getBounds(box).toString(), "[5, 6, 70, 80]");
    CHECK(setBounds(box, 1, 2, 3, 4) && getBounds(box).toString() == "[1, 2, 3, 4]");
    CHECK(show(box) && setVisible(box, false) && isControl(box));
}

static void testList(const Value& list) {
    CHECK(itemTotal(list) == 0 && getSelected(list) == -1 && getSelectedText(list).empty());
    CHECK(addItem(list, "one") == 0 && addItem(list, 2.0) == 1 &&
          addItems(list, listOf({"x", "y"})) == 4);
    CHECK_EQUAL(getItems(list).toString(), "[one, 2, x, y]");
    CHECK(getItem(list, 1) == "2" && getItem(list, 9).empty() && getItem(list, -1).empty());
    CHECK(selectItem(list, 2) && getSelected(list) == 2 && getSelectedText(list) == "x");
    CHECK(selectText(list, "one") && getSelected(list) == 0 && !selectText(list, "none"));
    CHECK(!selectItem(list, 99) && findItem(list, "y") == 3 && findItem(list, "Y") == -1);
    CHECK(insertItem(list, 0, "zero") == 0 && getItem(list, 0) == "zero" && removeItem(list, 0));
    CHECK(setItem(list, 1, "two") && getItem(list, 1) == "two" && getSelected(list) == 0);
    CHECK(setItems(list, listOf({"a", "one"})) && getSelectedText(list) == "one");
    CHECK(!removeItem(list, 7) && clearItems(list) && itemTotal(list) == 0);
}

static void testRanges() {
    Value slider = makeControl("msctls_trackbar32", 0, 5),
          bar = makeControl("msctls_progress32", 0, 6);
    CHECK(setRange(slider, 0, 50) && setValue(slider, 20) && getValue(slider) == 20);
    CHECK(setRange(slider, 0, 10) && getValue(slider) == 10);
    CHECK(setRange(bar, 0, 100000) && setValue(bar, 70000) && getValue(bar) == 70000);
    Value status = makeControl("msctls_statusbar32", 0, 8);
    CHECK(setStatus(status, "ready") && !setStatus(bar, "ready"));
}

static void testNothingIsRefusedQuietly() {
    Value dead = makeControl("EDIT", 0, 9);
    DestroyWindow((HWND)dead.handleVal);
    for (const Value& nothing :
         {Value(), Value(7), Value("x"), Value(std::vector<Value>()), dead}) {
        CHECK(!setText(nothing, "x") && getText(nothing).empty() && !show(nothing) &&
              !setFocus(nothing));
        CHECK(addItem(nothing, "x") == -1 && itemTotal(nothing) == -1 && !clearItems(nothing));
        CHECK(getValue(nothing) == -1 && !setValue(nothing, 1) && getNumber(nothing).isNull());
        CHECK(!isChecked(nothing) && !setEnabled(nothing, 1) &&
              getBounds(nothing).arrayVal.empty());
        CHECK(getItems(nothing).arrayVal.empty() && !setItems(nothing, listOf({1})) &&
              !isControl(nothing));
    }
    Value box = makeControl("BUTTON", 0, 10);
    CHECK(addItem(box, "x") == -1 && !clearItems(box) && getValue(box) == -1 &&
          !setRange(box, 0, 1));
}

static void testWindowFunctions() {
    CHECK(mainWindow().handleVal == (void*)parent && getTitle() == "Checks");
    CHECK(setTitle("New title") && getTitle() == "New title");
    CHECK(setWindowSize(320, 200) && centerWindow() && setTopmost(true) && setTopmost(false));
    RECT inner;
    GetClientRect(parent, &inner);
    CHECK(inner.right == 320 && inner.bottom == 200);
}

static void testClipboard() {
    CHECK(clipboardSetText("line\n\xC3\xA4\xE4\xB8\xAD") &&
          clipboardGetText() == "line\n\xC3\xA4\xE4\xB8\xAD");
    CHECK(clipboardSetText("") && clipboardGetText().empty());
}

static int ticksSeen = 0;

// Until a timer of Windows has ticked so often, once in 100 ms.
static void runMessages(int ticks) {
    ticksSeen = 0;
    const UINT_PTR timer = SetTimer(NULL, 0, 100, [](HWND, UINT, UINT_PTR, DWORD) { ++ticksSeen; });
    MSG message;
    while (ticksSeen < ticks && GetMessageA(&message, NULL, 0, 0) > 0) DispatchMessageA(&message);
    KillTimer(NULL, timer);
}

// Held up by other programs, both timers tick late; the one of 20 ms still ticks more often.
static void testTimers() {
    Value target = makeControl("BUTTON", 0, 7);
    commandsSeen = 0;
    CHECK(startTimer(target, 20));
    runMessages(5);
    const int seen = commandsSeen;
    CHECK(seen > 5 && stopTimer(target) && !stopTimer(target));
    runMessages(1);
    CHECK_EQUAL(commandsSeen, seen);
    CHECK(startTimer(7, 20));
    runMessages(5);
    CHECK(commandsSeen - seen > 5 && stopTimer(7) && !startTimer("x", 20));
}

static void testMessageBox() {
    // Answered by a timer of this thread, as a user would press the button.
    SetTimer(NULL, 0, 100, [](HWND, UINT, UINT_PTR id, DWORD) {
        HWND box = FindWindowA("#32770", "Question");
        if (!box) return;
        PostMessageA(box, WM_COMMAND, IDYES, 0);
        KillTimer(NULL, id);
    });
    CHECK(messageBoxYesNo("Really?", "Question"));
}

int main() {
    parent = openWindow();
    CHECK(parent != NULL);
    testTexts();
    testStates();
    testList(makeControl("LISTBOX", 0, 11));
    testList(makeControl("COMBOBOX", CBS_DROPDOWN, 12));
    testList(makeControl("SysTabControl32", 0, 13));
    testRanges();
    testNothingIsRefusedQuietly();
    testWindowFunctions();
    testClipboard();
    testTimers();
    testMessageBox();
    CHECK(closeWindow());
    return finishChecks();
}
