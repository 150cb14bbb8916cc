// Calls every library function with every kind of argument that it is not made for.
//
//     sweep.exe some|all REPORT PLACE [FIRST]
//
// No function may throw, crash, ask for memory without bounds or take long: each call of the sweep
// is such a check. The file PLACE always holds the call that is under way, so that a sudden end of
// the program names its culprit; with FIRST the calls before that number are left out. REPORT gets
// a line for every call that did not go well, and at the end the counts. The program ends with 0
// when all calls were made, whatever they did, and with 4 when one of them does not come back.
//
// "some" gives all parameters the same value, and each its own; "all" also combines every two
// values.
#include "import.hpp"

#include "exclusions.h"
#include "values.h"

#include <cstring>
#include <new>

struct Row {
    const char* name;
    int parameters;
    void (*call)(std::vector<Value>&);
};

static const Row rows[] = {
#include "calls.h"
};

// No reasonable result needs as much; an allocation of it is a parameter taken at its word.
static const size_t largestPiece = 256u << 20;
static const double longestSeconds = 2;
static const int hangingSeconds = 100;

void* operator new(size_t size) {
    void* piece = size > largestPiece ? nullptr : malloc(size > 0 ? size : 1);
    if (!piece) throw std::bad_alloc();
    return piece;
}
void operator delete(void* piece) noexcept { free(piece); }
void operator delete(void* piece, size_t) noexcept { free(piece); }

static FILE* report = nullptr;
static HANDLE place = INVALID_HANDLE_VALUE;
static std::string current;
static long long number = 0, first = 0, made = 0;
static ULONGLONG startedAt = 0;

static void say(const std::string& what) {
    fputs((current + ": " + what + "\n").c_str(), report);
    fflush(report);
}

static double processorSeconds() {
    FILETIME begun, ended, kernel, user;
    GetThreadTimes(GetCurrentThread(), &begun, &ended, &kernel, &user);
    auto ticks = [](FILETIME t) { return ((long long)t.dwHighDateTime << 32) + t.dwLowDateTime; };
    return (double)(ticks(kernel) + ticks(user)) / 1e7;
}

static DWORD WINAPI watch(void*) {
    for (;;) {
        Sleep(1000);
        ULONGLONG since = startedAt;
        if (since != 0 && GetTickCount64() - since > hangingSeconds * 1000ULL) {
            say("HANGS");
            ExitProcess(4);
        }
    }
}

// The number, for the next start, and the words, for the reader, always in a line of the same
// length.
static void notePlace() {
    char line[200];
    snprintf(line, sizeof line, "%lld %-170.170s\n", number, current.c_str());
    DWORD done = 0;
    SetFilePointer(place, 0, NULL, FILE_BEGIN);
    WriteFile(place, line, (DWORD)strlen(line), &done, NULL);
}

static void callGuarded(const Row& row, std::vector<Value>& arguments) {
    try {
        row.call(arguments);
    } catch (const std::exception& error) {
        say(std::string("THROWN ") + error.what());
    } catch (const char* text) {
        say(std::string("THROWN ") + text);
    } catch (...) {
        say("THROWN");
    }
}

// The folder is put back, so that relative names stay in the folder of the sweep.
static void makeCall(const Row& row, std::vector<Value> arguments, const std::string& what) {
    if (++number <= first) return;
    current = std::string(row.name) + "/" + std::to_string(row.parameters) + " with " + what;
    notePlace();
    static wchar_t folder[MAX_PATH] = L"";
    if (!folder[0]) GetCurrentDirectoryW(MAX_PATH, folder);
    const double before = processorSeconds();
    startedAt = GetTickCount64();
    callGuarded(row, arguments);
    startedAt = 0;
    const double seconds = processorSeconds() - before;
    if (seconds > longestSeconds) say("SLOW " + std::to_string(seconds) + " s");
    SetCurrentDirectoryW(folder);
    ++made;
}

static std::vector<Value> same(const Row& row, const Value& value) {
    return std::vector<Value>((size_t)row.parameters, value);
}

static void callWithSame(const Row& row, const std::vector<Hostile>& values) {
    for (const Hostile& one : values) makeCall(row, same(row, one.value), one.name);
}

// Every parameter another value, the first of them each value in turn.
static void callWithMixed(const Row& row, const std::vector<Hostile>& values) {
    for (size_t n = 0; n < values.size(); ++n) {
        std::vector<Value> arguments;
        std::string what;
        for (size_t i = 0; i < (size_t)row.parameters; ++i) {
            const Hostile& one = values[(n + 7 * i) % values.size()];
            arguments.push_back(one.value);
            what += (i > 0 ? ", " : "") + std::string(one.name);
        }
        makeCall(row, arguments, what);
    }
}

// The first parameter one value, all others another.
static void callWithPairs(const Row& row, const std::vector<Hostile>& firsts,
                          const std::vector<Hostile>& others) {
    for (const Hostile& head : firsts)
        for (const Hostile& tail : others) {
            std::vector<Value> arguments = same(row, tail.value);
            arguments[0] = head.value;
            makeCall(row, arguments, std::string(head.name) + ", " + tail.name);
        }
}

static std::vector<Hostile> controls() {
    HWND top = CreateWindowExA(0, "STATIC", "Sweep", WS_OVERLAPPEDWINDOW, 0, 0, 400, 300, NULL,
                               NULL, NULL, NULL);
    const std::pair<const char*, DWORD> kinds[] = {
        // Without wrapping: Wine's control takes half a minute to break a word of 30,000 letters.
        {"EDIT", ES_MULTILINE | ES_AUTOVSCROLL | ES_AUTOHSCROLL},
        {"LISTBOX", LBS_NOTIFY},
        {"COMBOBOX", CBS_DROPDOWN},
        {"BUTTON", 0},
        {PROGRESS_CLASSA, 0},
        {TRACKBAR_CLASSA, 0},
        {"STATIC", SS_NOTIFY},
        {WC_TABCONTROLA, 0},
    };
    std::vector<Hostile> made = {{"window", Value::makeHandle((void*)top)}};
    for (const auto& [type, style] : kinds)
        made.push_back({type, Value::makeHandle((void*)CreateWindowExA(
                                  0, type, "", WS_CHILD | WS_VISIBLE | style, 10, 20, 100, 30, top,
                                  (HMENU)(INT_PTR)(100 + made.size()), NULL, NULL))});
    return made;
}

// Each value of the others beside one of the controls in turn.
static void callWithControls(const Row& row, const std::vector<Hostile>& living,
                             const std::vector<Hostile>& values) {
    for (size_t n = 0; n < values.size(); ++n) {
        const Hostile& control = living[n % living.size()];
        std::vector<Value> arguments = same(row, values[n].value);
        arguments[0] = control.value;
        makeCall(row, arguments, std::string(control.name) + ", " + values[n].name);
    }
}

static void sweepRow(const Row& row, bool all) {
    static const std::vector<Hostile> values = hostileValues();
    static const std::vector<Hostile> living = controls();
    if (row.parameters == 0) return makeCall(row, {}, "nothing");
    callWithSame(row, values);
    if (isListed(calledLess, row.name) && !all) return;
    if (row.parameters > 1) callWithMixed(row, values);
    if (row.parameters > 1 && all) callWithPairs(row, values, values);
    if (isListed(notOnControls, row.name)) return;
    callWithSame(row, living);
    if (row.parameters > 1) callWithControls(row, living, values);
    if (row.parameters > 1 && all) callWithPairs(row, living, values);
}

int main(int count, char** words) {
    if (count < 4) return 2;
    const bool all = strcmp(words[1], "all") == 0;
    report = fopen(words[2], "a");
    place = CreateFileA(words[3], GENERIC_WRITE, FILE_SHARE_READ, NULL, CREATE_ALWAYS, 0, NULL);
    if (!report || place == INVALID_HANDLE_VALUE) return 2;
    if (count > 4) first = atoll(words[4]);
    INITCOMMONCONTROLSEX common = {sizeof common, ICC_WIN95_CLASSES};
    InitCommonControlsEx(&common);
    SetErrorMode(SEM_FAILCRITICALERRORS | SEM_NOGPFAULTERRORBOX);
    CreateThread(NULL, 0, watch, NULL, 0, NULL);
    std::map<std::string, int> called;
    for (const Row& row : rows)
        if (!isListed(neverCalled, row.name)) {
            ++called[row.name];
            sweepRow(row, all);
        }
    fputs((std::to_string(called.size()) + " functions, " + std::to_string(made) + " calls\n")
              .c_str(),
          report);
    fclose(report);
    return 0;
}
