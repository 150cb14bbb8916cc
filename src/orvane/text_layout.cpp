#include "orvane/text_layout.h"

#include <algorithm>
#include <iterator>
#include <vector>

namespace Orvane {

namespace {

constexpr char32_t replacement = 0xFFFD;
constexpr std::string_view replacementText = "\xEF\xBF\xBD";
constexpr std::string_view cut = "...";
constexpr std::size_t tabWidth = 4;

struct CharacterRange {
    char32_t first;
    char32_t last;
};

// Marks that stand on the character in front of them.
constexpr CharacterRange combining[] = {
    {0x0300, 0x036F}, {0x0483, 0x0489}, {0x0591, 0x05BD}, {0x0610, 0x061A},
    {0x064B, 0x065F}, {0x0900, 0x0902}, {0x0E31, 0x0E31}, {0x0E34, 0x0E3A},
    {0x0E47, 0x0E4E}, {0x1AB0, 0x1AFF}, {0x1DC0, 0x1DFF}, {0x200B, 0x200F},
    {0x20D0, 0x20FF}, {0xFE00, 0xFE0F}, {0xFE20, 0xFE2F}, {0xFEFF, 0xFEFF},
};

// East Asian characters and pictures.
constexpr CharacterRange wide[] = {
    {0x1100, 0x115F},   {0x2E80, 0x303E},   {0x3041, 0x33FF},   {0x3400, 0x4DBF},
    {0x4E00, 0x9FFF},   {0xA000, 0xA4CF},   {0xAC00, 0xD7A3},   {0xF900, 0xFAFF},
    {0xFE30, 0xFE6F},   {0xFF00, 0xFF60},   {0xFFE0, 0xFFE6},   {0x1F300, 0x1F64F},
    {0x1F680, 0x1F6FF}, {0x1F900, 0x1F9FF}, {0x20000, 0x3FFFD},
};

template <std::size_t size>
bool isIn(const CharacterRange (&ranges)[size], char32_t character) {
    return std::any_of(std::begin(ranges), std::end(ranges), [&](const CharacterRange& range) {
        return character >= range.first && character <= range.last;
    });
}

bool isControl(char32_t character) {
    return character < 0x20 || (character >= 0x7F && character < 0xA0);
}

// How many bytes a first byte announces; 0 for one that begins no character.
std::size_t announcedLength(unsigned char first) {
    if (first < 0x80) return 1;
    if (first >= 0xC2 && first < 0xE0) return 2;
    if (first >= 0xE0 && first < 0xF0) return 3;
    if (first >= 0xF0 && first < 0xF5) return 4;
    return 0;
}

// Too long a spelling, half of a pair, or behind the last code point.
bool isMisspelt(char32_t value, std::size_t length) {
    constexpr char32_t least[] = {0, 0, 0x80, 0x800, 0x10000};
    return value < least[length] || (value >= 0xD800 && value < 0xE000) || value > 0x10FFFF;
}

// One character of a line and the columns it takes.
struct Cell {
    std::size_t byte;
    std::size_t column;
    std::size_t width;
    std::string text;
};

std::vector<Cell> cellsOf(std::string_view line) {
    std::vector<Cell> cells;
    std::size_t column = 0;
    for (std::size_t byte = 0; byte < line.size();) {
        const DecodedCharacter character = decodeCharacter(line.substr(byte));
        Cell cell{byte, column, columnsOf(character.value),
                  std::string(line.substr(byte, character.length))};
        if (character.value == '\t') {
            cell.width = tabWidth - column % tabWidth;
            cell.text.assign(cell.width, ' ');
        } else if (character.value == replacement || isControl(character.value)) {
            cell.width = 1;
            cell.text = replacementText;
        }
        byte += character.length;
        column += cell.width;
        cells.push_back(std::move(cell));
    }
    return cells;
}

// The column of the character that holds a byte of the line.
std::size_t columnAt(const std::vector<Cell>& cells, std::size_t byte) {
    const auto behind =
        std::upper_bound(cells.begin(), cells.end(), byte,
                         [](std::size_t wanted, const Cell& cell) { return wanted < cell.byte; });
    return behind == cells.begin() ? 0 : std::prev(behind)->column;
}

// The column behind the last character that begins in front of a byte of the line.
std::size_t columnBehind(const std::vector<Cell>& cells, std::size_t byte) {
    const auto behind =
        std::lower_bound(cells.begin(), cells.end(), byte,
                         [](const Cell& cell, std::size_t wanted) { return cell.byte < wanted; });
    if (behind == cells.begin()) return 0;
    return std::prev(behind)->column + std::prev(behind)->width;
}

std::string textBetween(const std::vector<Cell>& cells, std::size_t first, std::size_t last) {
    std::string text;
    for (const Cell& cell : cells)
        if (cell.column >= first && cell.column + cell.width <= last) text += cell.text;
    return text;
}

// Some of the line stays visible in front of the part.
constexpr std::size_t contextInFront = 20;

ShownLine cutAround(const std::vector<Cell>& cells, std::size_t begin, std::size_t end,
                    std::size_t columns) {
    const std::size_t length = cells.back().column + cells.back().width;
    const bool fromStart = end + cut.size() <= columns || begin < contextInFront + cut.size();
    const std::size_t wanted = fromStart ? 0 : begin - contextInFront;
    // A wide character is not cut in two.
    const std::size_t first = std::find_if(cells.begin(), cells.end(), [&](const Cell& cell) {
                                  return cell.column >= wanted;
                              })->column;
    const std::string_view front = first > 0 ? cut : "";
    std::size_t last = first + columns - front.size();
    if (last < length) last -= cut.size();

    ShownLine shown;
    shown.text = front;
    shown.text += textBetween(cells, first, last);
    if (last < length) shown.text += cut;
    shown.column = front.size() + begin - first;
    shown.width = std::max(std::min(end, last), begin + 1) - begin;
    return shown;
}

void trimEnd(std::string& text) {
    const std::size_t last = text.find_last_not_of(' ');
    text.erase(last == std::string::npos ? 0 : last + 1);
}

// The bytes near the part: the rest of a line of many thousands is not looked at. Gives the number
// of bytes that were left out in front.
std::size_t narrow(std::string_view& line, const ByteRange& part, std::size_t columns) {
    const std::size_t reach = columns * 8;
    const auto continues = [&](std::size_t at) {
        return (static_cast<unsigned char>(line[at]) & 0xC0U) == 0x80U;
    };
    std::size_t last = std::min(line.size(), std::min(part.end, part.begin + reach) + reach);
    while (last < line.size() && continues(last)) ++last;
    std::size_t first = part.begin > reach ? part.begin - reach : 0;
    while (first > 0 && continues(first)) --first;
    line = line.substr(first, last - first);
    return first;
}

} // namespace

DecodedCharacter decodeCharacter(std::string_view text) {
    const auto first = static_cast<unsigned char>(text.front());
    const std::size_t length = announcedLength(first);
    if (length == 1) return {first, 1};
    if (length == 0 || length > text.size()) return {replacement, 1};
    char32_t value = first & (0x7FU >> length);
    for (std::size_t at = 1; at < length; ++at) {
        const auto byte = static_cast<unsigned char>(text[at]);
        if ((byte & 0xC0U) != 0x80U) return {replacement, 1};
        value = (value << 6U) | (byte & 0x3FU);
    }
    if (isMisspelt(value, length)) return {replacement, 1};
    return {value, length};
}

std::size_t columnsOf(char32_t character) {
    if (character < 0x300) return 1;
    if (isIn(combining, character)) return 0;
    return isIn(wide, character) ? 2 : 1;
}

std::string printable(std::string_view text) {
    std::string shown;
    while (!text.empty()) {
        const DecodedCharacter character = decodeCharacter(text);
        if (character.value == replacement || isControl(character.value))
            shown += replacementText;
        else
            shown += text.substr(0, character.length);
        text.remove_prefix(character.length);
    }
    return shown;
}

ShownLine layOut(std::string_view line, ByteRange part, std::size_t columns) {
    part.begin = std::min(part.begin, line.size());
    part.end = std::clamp(part.end, part.begin, line.size());
    const std::size_t left = narrow(line, part, columns);
    const std::vector<Cell> cells = cellsOf(line);
    const std::size_t length = cells.empty() ? 0 : cells.back().column + cells.back().width;
    const std::size_t from = part.begin - left;
    const std::size_t begin = from < line.size() ? columnAt(cells, from) : length;
    const std::size_t end = std::max(columnBehind(cells, part.end - left), begin + 1);

    ShownLine shown;
    if (length <= columns && left == 0) {
        shown = {textBetween(cells, 0, length), begin, end - begin};
    } else {
        shown = cutAround(cells, begin, end, columns);
    }
    trimEnd(shown.text);
    return shown;
}

} // namespace Orvane
