#include "check/platform_names.h"

#include <algorithm>
#include <cctype>
#include <cstdint>
#include <string>

namespace Orvane {

namespace {

// A Bloom filter in hexadecimal digits, the lowest bit of a digit first.
constexpr std::string_view filter =
#include "check/platform_names.inc"
    ;
constexpr std::uint64_t filterBits = filter.size() * 4;
constexpr int filterHashes = 9;

// Words of C++17 that are none of the language, in byte order.
constexpr std::string_view cppWords[] = {
    "alignas",      "alignof",   "and",          "and_eq",    "asm",
    "auto",         "bitand",    "bitor",        "break",     "case",
    "char",         "char16_t",  "char32_t",     "compl",     "const",
    "const_cast",   "constexpr", "continue",     "decltype",  "default",
    "delete",       "do",        "dynamic_cast", "enum",      "explicit",
    "export",       "extern",    "float",        "friend",    "goto",
    "inline",       "long",      "mutable",      "namespace", "new",
    "noexcept",     "not",       "not_eq",       "nullptr",   "operator",
    "or",           "or_eq",     "protected",    "register",  "reinterpret_cast",
    "short",        "signed",    "sizeof",       "static",    "static_assert",
    "static_cast",  "struct",    "switch",       "template",  "this",
    "thread_local", "typedef",   "typeid",       "union",     "unsigned",
    "virtual",      "volatile",  "wchar_t",      "xor",       "xor_eq",
};

// Those of them that may stand before brackets: operators and types. In byte order.
constexpr std::string_view callableWords[] = {
    "alignof", "char",  "char16_t", "char32_t", "compl",  "float",    "long",    "noexcept",
    "not",     "short", "signed",   "sizeof",   "typeid", "unsigned", "wchar_t",
};

// Macros of the headers that stand for nothing, for a number or for a word of C++; those that
// somebody might take as a name, in byte order.
constexpr std::string_view windowsWords[] = {
    "ABSOLUTE", "CALLBACK", "CONST",    "DELETE",   "EOF",      "ERROR",  "FALSE", "FAR",
    "IGNORE",   "IN",       "INFINITE", "INFINITY", "NAN",      "NEAR",   "NULL",  "OPAQUE",
    "OPTIONAL", "OUT",      "PASCAL",   "PLANES",   "RELATIVE", "STRICT", "TRUE",  "VOID",
    "WINDING",  "cdecl",    "errno",    "far",      "near",     "pascal",
};

// Functions of C and of Windows that take neither a dynamic value nor a string, in byte order.
constexpr std::string_view plainFunctions[] = {
    "Beep",        "GetKeyState", "MessageBeep",   "MessageBox",
    "MessageBoxA", "PlaySound",   "SetWindowText", "SetWindowTextA",
    "ShowWindow",  "Sleep",       "abs",           "acos",
    "asin",        "atan",        "atan2",         "atof",
    "atoi",        "cbrt",        "ceil",          "cos",
    "cosh",        "count",       "distance",      "exit",
    "exp",         "fabs",        "find",          "floor",
    "fmod",        "fopen",       "fprintf",       "getenv",
    "gmtime",      "hypot",       "includes",      "isalpha",
    "isdigit",     "left",        "localtime",     "log",
    "log10",       "log2",        "mktime",        "pow",
    "printf",      "puts",        "remove",        "reverse",
    "right",       "rotate",      "round",         "shuffle",
    "sin",         "sinh",        "sort",          "sprintf",
    "sqrt",        "srand",       "strlen",        "system",
    "tan",         "tanh",        "time",          "tolower",
    "toupper",     "trunc",       "unique",
};

// Macros with arguments, and names that stand for one, in byte order. Those with an underscore are
// left out.
constexpr std::string_view macroFunctions =
    " ARRAYSIZE BTYPE CMYK CacheLineFlush CopyCursor CopyMemory CreateDialog CreateDialogA"
    " CreateDialogIndirect CreateDialogIndirectA CreateDialogIndirectW CreateDialogW"
    " CreateWindow CreateWindowA CreateWindowW DECREF DefHookProc DefineHandleTable DialogBox"
    " DialogBoxA DialogBoxIndirect DialogBoxIndirectA DialogBoxIndirectW DialogBoxW EIRESID"
    " EnumTaskWindows ExitWindows FAILED FillMemory FreeModule FreeProcInstance GetBValue"
    " GetCValue GetCallersEflags GetCurrentTime GetFreeSpace GetGValue GetKValue GetMValue"
    " GetNextWindow GetRValue GetScode GetSysModalWindow GetWindowTask GetYValue GlobalDiscard"
    " GlobalLRUNewest GlobalLRUOldest HIBYTE HIWORD Handle64ToHandle HandleToHandle32"
    " HandleToHandle64 HandleToUlong HasOverlappedIoCompleted INCREF INDEXTOOVERLAYMASK"
    " INDEXTOSTATEIMAGEMASK ISARY ISFCN ISPTR ISTAG Int32x32To64 Int64ShllMod32 Int64ShraMod32"
    " Int64ShrlMod32 InterlockedDecrementSizeT InterlockedExchangeAddSizeT"
    " InterlockedIncrementSizeT IsEqualCLSID IsEqualFMTID IsEqualIID IsReparseTagMicrosoft"
    " IsReparseTagNameSurrogate LANGIDFROMLCID LOBYTE LOWORD LimitEmsPages LocalDiscard"
    " LockSegment MAKEINTATOM MAKEINTRESOURCE MAKEINTRESOURCEA MAKEINTRESOURCEW MAKEIPADDRESS"
    " MAKEIPRANGE MAKELANGID MAKELCID MAKELONG MAKELPARAM MAKELRESULT MAKEPOINTS MAKEROP4"
    " MAKESORTLCID MAKEWORD MAKEWPARAM MakeProcInstance MoveMemory NEXTRAWINPUTBLOCK OSVER"
    " PALETTEINDEX PALETTERGB POINTSTOPOINT POINTTOPOINTS PRIMARYLANGID PostAppMessage"
    " PostAppMessageA PostAppMessageW PreFetchCacheLine PrefetchForWrite"
    " ProcThreadAttributeValue PropagateResult Ptr64ToPtr PtrToPtr64 RGB ReadForWriteAccess"
    " ReadTimeStampCounter ResultFromScode RotateLeft32 RotateRight32 RtlCopyMemory"
    " RtlEqualMemory RtlFillMemory RtlMoveMemory RtlZeroMemory SORTIDFROMLCID"
    " SORTVERSIONFROMLCID SPVER SUBLANGID SUBVER SUCCEEDED SetSwapAreaSize SetSysModalWindow"
    " TEXT UInt32x32To64 UintToPtr UlongToHandle UlongToPtr UnlockResource UnlockSegment Yield"
    " ZeroMemory alloca isascii iscsym iscsymf offsetof timerclear timercmp timerisset toascii ";

// Functions of C and of Windows that have no parameters but a result, in byte order.
constexpr std::string_view bareFunctions =
    " AllocConsole AnyPopup AreFileApisANSI CancelShutdown CloseClipboard CommDlgExtendedError"
    " ConvertFiberToThread CountClipboardFormats CreateMenu CreatePopupMenu"
    " CreateThreadpoolCleanupGroup CreateTimerQueue DestroyCaret EmptyClipboard"
    " EnableMouseInPointerForThread EndMenu FreeConsole GdiFlush GdiGetBatchLimit GetACP"
    " GetActiveProcessorGroupCount GetActiveWindow GetCapture GetCaretBlinkTime"
    " GetClipboardOwner GetClipboardSequenceNumber GetClipboardViewer GetCommandLineA"
    " GetCommandLineW GetConsoleAliasExesLengthA GetConsoleAliasExesLengthW GetConsoleCP"
    " GetConsoleOutputCP GetConsoleWindow GetCurrentFiber GetCurrentProcess GetCurrentProcessId"
    " GetCurrentProcessToken GetCurrentProcessorNumber GetCurrentThread"
    " GetCurrentThreadEffectiveToken GetCurrentThreadId GetCurrentThreadToken GetCursor"
    " GetDesktopWindow GetDialogBaseUnits GetDoubleClickTime GetDpiForSystem"
    " GetEnabledXStateFeatures GetEnvironmentStrings GetEnvironmentStringsW GetErrorMode"
    " GetFiberData GetFocus GetForegroundWindow GetInputState GetKBCodePage GetLargePageMinimum"
    " GetLastError GetLogicalDrives GetMUILanguage GetMaximumProcessorGroupCount"
    " GetMenuCheckMarkDimensions GetMessageExtraInfo GetMessagePos GetMessageTime GetOEMCP"
    " GetOpenClipboardWindow GetProcessHeap GetProcessWindowStation GetShellWindow"
    " GetSystemDEPPolicy GetSystemDefaultLCID GetSystemDefaultLangID GetSystemDefaultUILanguage"
    " GetThreadDpiAwarenessContext GetThreadDpiHostingBehavior GetThreadErrorMode"
    " GetThreadLocale GetThreadUILanguage GetTickCount GetTickCount64 GetUnpredictedMessagePos"
    " GetUserDefaultLCID GetUserDefaultLangID GetUserDefaultUILanguage GetVersion"
    " ImmCreateContext InSendMessage InitNetworkAddressControl IsDebuggerPresent"
    " IsMouseInPointerEnabled IsMousePointerEnabled IsProcessDPIAware IsSystemResumeAutomatic"
    " IsThreadAFiber IsWow64Message LZStart LockWorkStation NtCurrentTeb"
    " RegDisablePredefinedCache RegDisablePredefinedCacheEx ReleaseCapture RevertToSelf"
    " SHLoadNonloadedIconOverlayIdentifiers SetProcessDPIAware SoundSentry SwitchToThread"
    " TlsAlloc UnregisterApplicationRecoveryCallback UnregisterApplicationRestart"
    " WTSGetActiveConsoleSessionId WTSGetServiceSessionId WTSIsServerContainer WaitMessage clock"
    " fcloseall fgetchar flushall getchar getpid getwchar localeconv rand rmtmp tmpfile"
    " wglGetCurrentContext wglGetCurrentDC ";

// Functions of C and of Windows that take one number and give nothing.
constexpr std::string_view silentFunctions =
    " ExitProcess ExitThread FatalExit PostQuitMessage SetLastError Sleep exit srand ";

// Functions of C and of Windows with the parameters that a function of a program can have.
struct Signature {
    std::string_view name;
    std::size_t count;
    ValueType parameter; // each of them
};
constexpr Signature sameFunctions[] = {
    {"ReplyMessage", 1, ValueType::big}, {"abs", 1, ValueType::big},
    {"abs", 1, ValueType::floating},     {"difftime", 2, ValueType::big},
    {"div", 2, ValueType::big},          {"lldiv", 2, ValueType::big},
};

// Types and variables of the C++ library that stand beside a function of the same name, in byte
// order.
constexpr std::string_view cppTypes[] = {
    "allocator", "byte",     "conditional", "exception", "extent", "greater", "hash",
    "ignore",    "iterator", "less",        "locale",    "minus",  "modulus", "multiplies",
    "negate",    "nothrow",  "pair",        "plus",      "rank",   "tuple",   "vector",
};

// Function templates of the C++ library, in byte order.
constexpr std::string_view templateFunctions[] = {
    "advance", "begin",  "clamp",  "copy", "count",   "data",     "distance",  "empty",
    "end",     "equal",  "fill",   "find", "forward", "generate", "get",       "includes",
    "max",     "merge",  "min",    "move", "next",    "prev",     "remove",    "replace",
    "reverse", "rotate", "search", "size", "sort",    "swap",     "transform", "unique",
};

template <std::size_t Count>
bool contains(const std::string_view (&sorted)[Count], std::string_view name) {
    return std::binary_search(std::begin(sorted), std::end(sorted), name);
}

// Of a list with a blank around each name.
bool containsWord(std::string_view list, std::string_view name) {
    return list.find(' ' + std::string(name) + ' ') != std::string_view::npos;
}

std::uint64_t hashOf(std::string_view name) {
    std::uint64_t value = 0xCBF29CE484222325U; // FNV-1a
    for (const char letter : name)
        value = (value ^ static_cast<unsigned char>(letter)) * 0x100000001B3U;
    return value;
}

bool isConstantName(std::string_view name) {
    return name.find('_') != std::string_view::npos &&
           std::none_of(name.begin(), name.end(),
                        [](unsigned char letter) { return std::islower(letter) != 0; });
}

unsigned digitAt(std::size_t index) {
    const char digit = filter[index];
    return static_cast<unsigned>(digit <= '9' ? digit - '0' : digit - 'a' + 10);
}

} // namespace

ReservedWord reservedWord(std::string_view name) {
    if (contains(cppWords, name)) return ReservedWord::cpp;
    return contains(windowsWords, name) ? ReservedWord::windows : ReservedWord::none;
}

bool isCalledLikeFunction(std::string_view word) { return contains(callableWords, word); }

bool mayBePlatformName(std::string_view name) {
    if (isConstantName(name)) return true;
    const std::uint64_t hash = hashOf(name);
    const std::uint64_t step = hash >> 32U | 1U;
    for (std::uint64_t number = 0; number < filterHashes; ++number) {
        const std::uint64_t bit = (hash + number * step) % filterBits;
        if ((digitAt(bit / 4) >> bit % 4 & 1U) == 0) return false;
    }
    return true;
}

bool isPlainPlatformFunction(std::string_view name) { return contains(plainFunctions, name); }

bool isMacroFunction(std::string_view name) { return containsWord(macroFunctions, name); }

bool isSilentFunction(std::string_view name) { return containsWord(silentFunctions, name); }

bool isBareFunction(std::string_view name) { return containsWord(bareFunctions, name); }

bool isPlatformSignature(std::string_view name, std::span<const ValueType> parameters) {
    const auto isSame = [&](const Signature& signature) {
        return signature.name == name && signature.count == parameters.size() &&
               std::all_of(parameters.begin(), parameters.end(),
                           [&](ValueType type) { return type == signature.parameter; });
    };
    return std::any_of(std::begin(sameFunctions), std::end(sameFunctions), isSame);
}

bool isTemplateFunction(std::string_view name) { return contains(templateFunctions, name); }

bool isCppType(std::string_view name) { return contains(cppTypes, name); }

} // namespace Orvane
