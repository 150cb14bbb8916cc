// The stand-in for the Windows API with what the libraries of data need beyond the runtime type, so
// that their tests also run natively. Clocks show the time of Central Europe: an hour ahead of UTC,
// two from the last Sunday of March to the last Sunday of October, each change at 1:00 UTC. Names
// of days and months are English, numbers are written like 1,234.5.
#pragma once

#include "../native/windows.h"

#include <chrono>
#include <climits>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <cwctype>

typedef unsigned short WORD;
typedef unsigned int DWORD;
typedef unsigned int UINT;
typedef unsigned int LCTYPE;
typedef long LONG;
typedef int BOOL;
typedef wchar_t* LPWSTR;
typedef const wchar_t* LPCWSTR;
typedef void* HANDLE;

enum : WORD {
    C1_UPPER = 1,
    C1_LOWER = 2,
    C1_DIGIT = 4,
    C1_SPACE = 8,
    C1_BLANK = 0x40,
    C1_ALPHA = 0x100,
    CT_CTYPE1 = 1
};
enum {
    LOCALE_USER_DEFAULT = 0x400,
    LOCALE_SDECIMAL = 14,
    LOCALE_STHOUSAND = 15,
    LOCALE_SDAYNAME1 = 0x2A,
    LOCALE_SABBREVDAYNAME1 = 0x31,
    LOCALE_SMONTHNAME1 = 0x38,
    LOCALE_SABBREVMONTHNAME1 = 0x44
};

inline BOOL IsWindow(HWND window) { return window != nullptr; }
inline unsigned long long GetTickCount64() { return 123456789; }
inline DWORD GetCurrentProcessId() { return 4711; }
inline HANDLE GetCurrentProcess() { return nullptr; }

// Latin, Greek and Cyrillic letters; the rest has no case.
inline bool isFakeUpper(wchar_t c) {
    return (c >= L'A' && c <= L'Z') || (c >= 0xC0 && c <= 0xDE && c != 0xD7) ||
           (c >= 0x391 && c <= 0x3A9) || (c >= 0x410 && c <= 0x42F);
}
inline bool isFakeLower(wchar_t c) {
    return (c >= L'a' && c <= L'z') || (c >= 0xDF && c <= 0xFE && c != 0xF7) ||
           (c >= 0x3B1 && c <= 0x3C9) || (c >= 0x430 && c <= 0x44F);
}
inline DWORD CharUpperBuffW(LPWSTR text, DWORD units) {
    for (DWORD i = 0; i < units; ++i)
        if (isFakeLower(text[i]) && text[i] != 0xDF) text[i] -= 0x20;
    return units;
}
inline DWORD CharLowerBuffW(LPWSTR text, DWORD units) {
    for (DWORD i = 0; i < units; ++i)
        if (isFakeUpper(text[i])) text[i] += 0x20;
    return units;
}
inline BOOL GetStringTypeW(DWORD, LPCWSTR text, int units, WORD* types) {
    for (int i = 0; i < units; ++i) {
        const wchar_t c = text[i];
        const bool isIdeograph = c >= 0x3400 && c < 0xA000;
        types[i] = isFakeUpper(c)               ? C1_UPPER | C1_ALPHA
                   : isFakeLower(c)             ? C1_LOWER | C1_ALPHA
                   : isIdeograph                ? C1_ALPHA
                   : c >= 0x660 && c <= 0x669   ? C1_DIGIT
                   : c == L' ' || c == 0xA0     ? C1_SPACE | C1_BLANK
                   : (c >= 9 && c <= 13)        ? C1_SPACE
                   : c == 0x3000 || c == 0x2003 ? C1_SPACE
                                                : 0;
    }
    return 1;
}

inline int GetLocaleInfoW(unsigned, LCTYPE type, LPWSTR text, int room) {
    static const wchar_t* const days[] = {L"Monday", L"Tuesday",  L"Wednesday", L"Thursday",
                                          L"Friday", L"Saturday", L"Sunday"};
    static const wchar_t* const months[] = {L"January",   L"February", L"March",    L"April",
                                            L"May",       L"June",     L"July",     L"August",
                                            L"September", L"October",  L"November", L"December"};
    std::wstring found;
    if (type == LOCALE_SDECIMAL) found = L".";
    if (type == LOCALE_STHOUSAND) found = L",";
    if (type >= LOCALE_SDAYNAME1 && type < LOCALE_SDAYNAME1 + 7)
        found = days[type - LOCALE_SDAYNAME1];
    if (type >= LOCALE_SABBREVDAYNAME1 && type < LOCALE_SABBREVDAYNAME1 + 7)
        found = std::wstring(days[type - LOCALE_SABBREVDAYNAME1], 3);
    if (type >= LOCALE_SMONTHNAME1 && type < LOCALE_SMONTHNAME1 + 12)
        found = months[type - LOCALE_SMONTHNAME1];
    if (type >= LOCALE_SABBREVMONTHNAME1 && type < LOCALE_SABBREVMONTHNAME1 + 12)
        found = std::wstring(months[type - LOCALE_SABBREVMONTHNAME1], 3);
    if (found.empty() || static_cast<int>(found.size()) >= room) return 0;
    std::wmemcpy(text, found.c_str(), found.size() + 1);
    return static_cast<int>(found.size()) + 1;
}

struct FILETIME {
    DWORD dwLowDateTime;
    DWORD dwHighDateTime;
};
struct SYSTEMTIME {
    WORD wYear, wMonth, wDayOfWeek, wDay, wHour, wMinute, wSecond, wMilliseconds;
};
struct TIME_ZONE_INFORMATION {
    LONG Bias;
};
union LARGE_INTEGER {
    long long QuadPart;
};

inline long long fileTicks(const FILETIME& file) {
    return static_cast<long long>(file.dwHighDateTime) << 32 | file.dwLowDateTime;
}
inline FILETIME fileTime(long long ticks) {
    return {static_cast<DWORD>(ticks & 0xFFFFFFFF), static_cast<DWORD>(ticks >> 32)};
}
inline void GetSystemTimeAsFileTime(FILETIME* now) {
    using namespace std::chrono;
    const auto since = system_clock::now().time_since_epoch();
    *now = fileTime(duration_cast<microseconds>(since).count() * 10 + 116444736000000000LL);
}
inline BOOL GetProcessTimes(HANDLE, FILETIME* begun, FILETIME* ended, FILETIME* kernel,
                            FILETIME* user) {
    static FILETIME first;
    if (first.dwHighDateTime == 0) GetSystemTimeAsFileTime(&first);
    *begun = *ended = *kernel = *user = first;
    return 1;
}
inline BOOL FileTimeToSystemTime(const FILETIME* file, SYSTEMTIME* fields) {
    const std::time_t seconds = fileTicks(*file) / 10000000 - 11644473600LL;
    std::tm parts;
    if (!gmtime_r(&seconds, &parts)) return 0;
    *fields = {static_cast<WORD>(parts.tm_year + 1900), static_cast<WORD>(parts.tm_mon + 1),
               static_cast<WORD>(parts.tm_wday),        static_cast<WORD>(parts.tm_mday),
               static_cast<WORD>(parts.tm_hour),        static_cast<WORD>(parts.tm_min),
               static_cast<WORD>(parts.tm_sec),         0};
    return 1;
}
inline BOOL SystemTimeToFileTime(const SYSTEMTIME* fields, FILETIME* file) {
    std::tm parts = std::tm();
    parts.tm_year = fields->wYear - 1900;
    parts.tm_mon = fields->wMonth - 1;
    parts.tm_mday = fields->wDay;
    parts.tm_hour = fields->wHour;
    parts.tm_min = fields->wMinute;
    parts.tm_sec = fields->wSecond;
    *file = fileTime((static_cast<long long>(timegm(&parts)) + 11644473600LL) * 10000000);
    return 1;
}
inline BOOL GetTimeZoneInformationForYear(WORD, void*, TIME_ZONE_INFORMATION* zone) {
    zone->Bias = -60;
    return 1;
}
// 1:00 UTC on the last Sunday of a month, in seconds since 1970.
inline long long lastSunday(int year, int month, int days) {
    std::tm parts = std::tm();
    parts.tm_year = year - 1900;
    parts.tm_mon = month - 1;
    parts.tm_mday = days;
    parts.tm_hour = 1;
    const std::time_t last = timegm(&parts);
    return last - static_cast<long long>(parts.tm_wday) * 86400;
}
inline BOOL SystemTimeToTzSpecificLocalTime(const TIME_ZONE_INFORMATION*, const SYSTEMTIME* utc,
                                            SYSTEMTIME* local) {
    FILETIME file;
    SystemTimeToFileTime(utc, &file);
    const long long seconds = fileTicks(file) / 10000000 - 11644473600LL;
    const bool isSummer =
        seconds >= lastSunday(utc->wYear, 3, 31) && seconds < lastSunday(utc->wYear, 10, 31);
    file = fileTime(fileTicks(file) + (isSummer ? 7200 : 3600) * 10000000LL);
    return FileTimeToSystemTime(&file, local);
}
inline BOOL QueryPerformanceCounter(LARGE_INTEGER* ticks) {
    ticks->QuadPart = std::chrono::steady_clock::now().time_since_epoch().count();
    return 1;
}
inline BOOL QueryPerformanceFrequency(LARGE_INTEGER* each) {
    using Period = std::chrono::steady_clock::period;
    each->QuadPart = Period::den / Period::num;
    return 1;
}
