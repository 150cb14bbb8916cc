// The fixed texts of import.hpp: the dynamic type that generated programs compute with, and the
// text converters for the Windows API.
//
// Called by the prelude (prelude.cpp), which writes them unchanged: they do not depend on the
// source program. They are read by people who look into a generated program, so they are ordinary
// C++17 with four-space indentation and free of warnings under -Wall -Wextra -Wconversion.
//
//     importStream << runtimeValueText() << utf8ToAcpText();
#pragma once

#include <string_view>

namespace Orvane {

// From "struct Value {" through the free operators + behind it, the last one followed by an empty
// line. Needs windows.h, string, vector, map and memory.
std::string_view runtimeValueText();

// "// UTF-8 -> ANSI (ACP)" and the inline function utf8_to_acp.
std::string_view utf8ToAcpText();

// "// UTF-8 -> wide" and the inline function utf8_to_wide.
std::string_view utf8ToWideText();

} // namespace Orvane
