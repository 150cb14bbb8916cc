// A stand-in for the Windows API of the runtime type and of its memory, so that their tests also
// run natively (fast, and under the sanitizers). Windows are texts in memory; the code page is
// UTF-8, and wchar_t holds whole code points as it does on this system.
#pragma once

#include <sys/mman.h>

#include <cstddef>
#include <string>

struct FakeWindow {
    std::string text;
};
typedef FakeWindow* HWND;

enum : unsigned { CP_ACP = 0, CP_UTF8 = 65001 };
enum : unsigned long { WS_OVERLAPPED = 0 };

enum : unsigned long { MEM_COMMIT = 0x1000, MEM_RESERVE = 0x2000 };
enum : unsigned long { PAGE_NOACCESS = 1, PAGE_READWRITE = 4 };

inline void* VirtualAlloc(void* place, size_t size, unsigned long type, unsigned long) {
    if (type == MEM_COMMIT) return mprotect(place, size, PROT_READ | PROT_WRITE) ? nullptr : place;
    void* reserved =
        mmap(nullptr, size, PROT_NONE, MAP_PRIVATE | MAP_ANONYMOUS | MAP_NORESERVE, -1, 0);
    return reserved == MAP_FAILED ? nullptr : reserved;
}

// Something that each thread has at another address.
inline void* NtCurrentTeb() {
    static thread_local char mark;
    return &mark;
}

inline unsigned GetACP() { return CP_UTF8; }

inline HWND CreateWindowExA(unsigned long, const char*, const char* text, unsigned long, int, int,
                            int, int, void*, void*, void*, void*) {
    return new FakeWindow{text};
}
inline void DestroyWindow(HWND window) { delete window; }
inline void SetWindowTextA(HWND window, const char* text) { window->text = text; }
inline int GetWindowTextLengthA(HWND window) { return static_cast<int>(window->text.size()); }
inline int GetWindowTextA(HWND window, char* buffer, int size) {
    const size_t copied = window->text.copy(buffer, static_cast<size_t>(size - 1));
    buffer[copied] = '\0';
    return static_cast<int>(copied);
}

inline int MultiByteToWideChar(unsigned, unsigned long, const char* text, int size, wchar_t* wide,
                               int room) {
    int units = 0;
    for (int at = 0; at < size; ++units) {
        const unsigned char lead = static_cast<unsigned char>(text[at++]);
        const int more = lead < 0x80 ? 0 : lead < 0xE0 ? 1 : lead < 0xF0 ? 2 : 3;
        unsigned long code = more == 0 ? lead : lead & (0x3Fu >> more);
        int found = 0;
        while (found < more && at + found < size && (text[at + found] & 0xC0) == 0x80)
            code = code << 6 | (static_cast<unsigned char>(text[at + found++]) & 0x3Fu);
        // A byte that begins no character becomes one of its own.
        const bool isWhole = found == more && (lead < 0x80 || (lead >= 0xC2 && lead < 0xF5));
        if (isWhole) at += found;
        if (units < room) wide[units] = isWhole ? static_cast<wchar_t>(code) : wchar_t{0xFFFD};
    }
    return units;
}

inline void appendUtf8(std::string& text, unsigned long code) {
    if (code < 0x80) {
        text += static_cast<char>(code);
        return;
    }
    const int more = code < 0x800 ? 1 : code < 0x10000 ? 2 : 3;
    const unsigned long marks[] = {0, 0xC0, 0xE0, 0xF0};
    text += static_cast<char>(marks[more] | code >> (6 * more));
    for (int i = more - 1; i >= 0; --i) text += static_cast<char>(0x80 | (code >> (6 * i) & 0x3F));
}

inline int WideCharToMultiByte(unsigned, unsigned long, const wchar_t* wide, int units, char* text,
                               int room, const char*, int*) {
    std::string converted;
    for (int i = 0; i < units; ++i) appendUtf8(converted, static_cast<unsigned long>(wide[i]));
    if (room > 0) converted.copy(text, static_cast<size_t>(room));
    return static_cast<int>(converted.size());
}
