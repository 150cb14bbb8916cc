#include "codegen/runtime_value.h"

namespace Orvane {

// In a file of its own because an installation compiles it as well.
static constexpr std::string_view valueText =
#include "codegen/runtime_value.inc"
    ;

static constexpr std::string_view acpText =
    R"cpp(// UTF-8 -> ANSI (ACP)
inline std::string utf8_to_acp(const std::string& u8) {
    if (u8.empty()) return std::string();
    int bytes = static_cast<int>(u8.size());
    int units = MultiByteToWideChar(CP_UTF8, 0, u8.data(), bytes, NULL, 0);
    std::wstring wide(static_cast<size_t>(units), L'\0');
    MultiByteToWideChar(CP_UTF8, 0, u8.data(), bytes, &wide[0], units);
    bytes = WideCharToMultiByte(CP_ACP, 0, wide.data(), units, NULL, 0, NULL, NULL);
    std::string ansi(static_cast<size_t>(bytes), '\0');
    WideCharToMultiByte(CP_ACP, 0, wide.data(), units, &ansi[0], bytes, NULL, NULL);
    return ansi;
}
)cpp";

static constexpr std::string_view wideText =
    R"cpp(// UTF-8 -> wide
inline std::wstring utf8_to_wide(const std::string& u8) {
    if (u8.empty()) return std::wstring();
    int bytes = static_cast<int>(u8.size());
    int units = MultiByteToWideChar(CP_UTF8, 0, u8.data(), bytes, NULL, 0);
    std::wstring wide(static_cast<size_t>(units), L'\0');
    MultiByteToWideChar(CP_UTF8, 0, u8.data(), bytes, &wide[0], units);
    return wide;
}
)cpp";

std::string_view runtimeValueText() { return valueText; }

std::string_view utf8ToAcpText() { return acpText; }

std::string_view utf8ToWideText() { return wideText; }

} // namespace Orvane
