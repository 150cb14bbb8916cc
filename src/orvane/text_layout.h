// A line of a source as it is shown above its underline.
//
// Tabs go to the next multiple of four columns, a wide character takes two, a combining one none.
// What would disturb a terminal (control characters, broken UTF-8) is shown as U+FFFD. A line that
// is too long is cut on both sides of the part that matters, with "..." in the place of the rest.
//
//     ShownLine shown = layOut("\tprnt(\"x\");", {1, 5}, 100);
//     // shown.text "    prnt(\"x\");", shown.column 4, shown.width 4
#pragma once

#include "check/source_text.h"

#include <string>
#include <string_view>

namespace Orvane {

struct ShownLine {
    std::string text;       // without blanks at its end
    std::size_t column = 0; // where the underline begins, in columns of `text` from 0
    std::size_t width = 1;  // columns of the underline; at least 1
};

// `part` counts bytes of the line, from 0; what lies behind the line's end does not count. The
// text has at most `columns` columns, which are at least 40.
ShownLine layOut(std::string_view line, ByteRange part, std::size_t columns);

// Text for a message: control characters and broken UTF-8 shown as U+FFFD, the rest as it is.
std::string printable(std::string_view text);

// The columns that a code point takes on a terminal: 0, 1 or 2.
std::size_t columnsOf(char32_t character);

// The code point at the beginning of a text that is not empty, and its bytes. A byte that begins no
// character counts as one, U+FFFD.
struct DecodedCharacter {
    char32_t value;
    std::size_t length;
};
DecodedCharacter decodeCharacter(std::string_view text);

} // namespace Orvane
