#include "check/source_text.h"

#include <algorithm>

namespace Orvane {

namespace {

constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";

bool continuesCharacter(char byte) { return (static_cast<unsigned char>(byte) & 0xC0) == 0x80; }

} // namespace

SourceText::SourceText(std::string path_, std::string text_)
    : filePath(std::move(path_)), content(std::move(text_)) {
    lineStarts.push_back(0);
    for (std::size_t at = content.find('\n'); at != std::string::npos;
         at = content.find('\n', at + 1))
        lineStarts.push_back(at + 1);
}

std::string_view SourceText::part(ByteRange range) const {
    const std::size_t begin = std::min(range.begin, content.size());
    const std::size_t end = std::clamp(range.end, begin, content.size());
    return std::string_view(content).substr(begin, end - begin);
}

Place SourceText::placeOf(std::size_t offset) const {
    offset = std::min(offset, content.size());
    const auto behind = std::upper_bound(lineStarts.begin(), lineStarts.end(), offset);
    const auto line = static_cast<std::size_t>(behind - lineStarts.begin());
    const std::size_t start = lineStarts[line - 1];
    std::string_view before = std::string_view(content).substr(start, offset - start);
    Place place{line, 1, before.size() + 1};
    if (line == 1 && before.starts_with(byteOrderMark)) before.remove_prefix(byteOrderMark.size());
    for (const char byte : before) place.column += continuesCharacter(byte) ? 0 : 1;
    return place;
}

std::size_t SourceText::offsetOf(std::size_t line, std::size_t byteColumn) const {
    if (line == 0) return 0;
    if (line > lineStarts.size()) return content.size();
    return std::min(lineStarts[line - 1] + byteColumn - 1, content.size());
}

std::string_view SourceText::lineText(std::size_t line) const {
    if (line == 0 || line > lineStarts.size()) return {};
    const std::size_t begin = lineStarts[line - 1];
    const std::size_t end = line < lineStarts.size() ? lineStarts[line] : content.size();
    std::string_view shown = part({begin, end});
    if (shown.ends_with('\n')) shown.remove_suffix(1);
    if (shown.ends_with('\r')) shown.remove_suffix(1);
    return shown;
}

} // namespace Orvane
