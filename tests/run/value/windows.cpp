// What touches the Windows API: window texts and the two converters. Natively the stand-in of
// tests/run/native plays the part of the system.
#include "import.hpp"

#include "checks.h"
#include "parts.h"

namespace {

HWND openWindow(const char* text) {
    return CreateWindowExA(0, "STATIC", text, WS_OVERLAPPED, 0, 0, 100, 30, NULL, NULL, NULL, NULL);
}

void testReadingText() {
    HWND h = openWindow("Hello");
    CHECK(h != NULL);
    Value control = Value::makeHandle((void*)h);
    Value& read = control["text"];
    CHECK(&read == &control);
    CHECK(control.isString() && control.stringVal == "Hello" && control.handleVal == (void*)h);

    // It is a string now: a second reading is an entry like any other, and not the window's text.
    SetWindowTextA(h, "Changed");
    CHECK(control["text"].isNull() && control.has("text") && control.stringVal == "Hello");

    Value fresh = Value::makeHandle((void*)h);
    CHECK_EQUAL((fresh["text"] + "!").toString(), "Changed!");
    SetWindowTextA(h, "");
    CHECK_EQUAL(Value::makeHandle((void*)h)["text"].toString(), "");
    DestroyWindow(h);
}

void testLongText() {
    const std::string text(5000, 'y');
    HWND h = openWindow(text.c_str());
    CHECK_EQUAL(Value::makeHandle((void*)h)["text"].stringVal, text);
    CHECK_EQUAL(Value::makeHandle((void*)h)[std::string("text")].stringVal.size(), 5000u);
    DestroyWindow(h);
}

void testOtherEntriesOfAHandle() {
    HWND h = openWindow("Hello");
    Value control = Value::makeHandle((void*)h);
    CHECK(control["caption"].isNull() && control.isHandle());
    control["tag"] = 5;
    CHECK(control["tag"] == 5 && control.isHandle());
    Value none = Value::makeHandle(nullptr);
    CHECK(none["text"].isNull() && none.isHandle());
    // An entry of this name does not hide the window's text.
    none.handleVal = (void*)h;
    CHECK(none["text"].stringVal == "Hello" && none.isString());
    DestroyWindow(h);
}

void testWide() {
    CHECK(utf8_to_wide("").empty());
    CHECK(utf8_to_wide("abc") == L"abc");
    CHECK(utf8_to_wide("\xC3\xA4\xC3\x96\xC3\x9F") == L"\u00E4\u00D6\u00DF");
    CHECK(utf8_to_wide("\xE4\xB8\xAD\xE6\x96\x87") == L"\u4E2D\u6587");
    CHECK(utf8_to_wide("\xF0\x9F\x98\x80") == L"\U0001F600");
    CHECK_EQUAL(utf8_to_wide("\xF0\x9F\x98\x80").size() * sizeof(wchar_t), 4u);
    CHECK_EQUAL(utf8_to_wide(std::string("a\0b", 3)).size(), 3u);
}

// The code page decides what becomes of letters beyond ASCII: under UTF-8 they stay as they are.
void testAcp() {
    CHECK(utf8_to_acp("").empty());
    CHECK_EQUAL(utf8_to_acp("plain"), "plain");
    CHECK_EQUAL(utf8_to_acp(std::string("a\0b", 3)).size(), 3u);
    const std::string texts[] = {"\xC3\xA4\xC3\x96\xC3\x9F", "\xE4\xB8\xAD", "\xF0\x9F\x98\x80"};
    const std::string western[] = {"\xE4\xD6\xDF", "?", "??"};
    for (size_t i = 0; i < 3; ++i) {
        if (GetACP() == CP_UTF8)
            CHECK_EQUAL(utf8_to_acp(texts[i]), texts[i]);
        else if (GetACP() == 1252)
            CHECK_EQUAL(utf8_to_acp(texts[i]), western[i]);
        else
            countCheck(false, "a code page that this test knows", __FILE__, __LINE__);
    }
}

} // namespace

void testWindows() {
    testReadingText();
    testLongText();
    testOtherEntriesOfAHandle();
    testWide();
    testAcp();
}
