#include "orvane/print_text.h"

#include "orvane/text_layout.h"

#include <algorithm>

namespace Orvane {

namespace {

constexpr std::size_t gutter = 5; // columns of the line number

std::string rightAligned(std::string_view text, std::size_t width) {
    std::string aligned(width > text.size() ? width - text.size() : 0, ' ');
    return aligned.append(text);
}

} // namespace

// PATH:LINE:COLUMN: KIND: TEXT
std::string TextWriter::formatHead(const SourceText& source, ByteRange range, Paint paint,
                                   std::string_view kind, std::string_view text) const {
    const Place place = source.placeOf(range.begin);
    const std::string where = printable(source.path()) + ":" + std::to_string(place.line) + ":" +
                              std::to_string(place.column) + ":";
    return out.paint(Paint::place, where) + " " + out.paint(paint, std::string(kind) + ":") + " " +
           printable(text);
}

// On a terminal a line does not wrap, but a very narrow one cannot be helped.
std::size_t TextWriter::columns() const {
    constexpr std::size_t least = 40;
    const std::size_t front = gutter + 3;
    if (out.columns() == 0) return lineColumns;
    return std::clamp(out.columns() > front ? out.columns() - front : least, least, lineColumns);
}

//    12 |     prnt("x");
//       |     ^~~~
std::string TextWriter::formatLine(const SourceText& source, ByteRange range, Paint paint) const {
    const std::size_t line = source.placeOf(range.begin).line;
    const std::size_t start = source.offsetOf(line, 1);
    std::string_view text = source.lineText(line);
    std::size_t mark = 0; // a byte order mark is no part of what people see
    if (line == 1 && text.starts_with("\xEF\xBB\xBF")) mark = 3;
    text.remove_prefix(mark);
    const auto inLine = [&](std::size_t offset) {
        return std::max(std::min(offset, source.text().size()), start + mark) - start - mark;
    };
    const ShownLine shown = layOut(
        text, {inLine(range.begin), std::max(inLine(range.end), inLine(range.begin))}, columns());

    const std::string number = std::to_string(line);
    const std::size_t width = std::max(gutter, number.size());
    std::string lines = out.paint(Paint::dim, rightAligned(number, width) + " |");
    if (!shown.text.empty()) lines += " " + shown.text;
    lines += "\n" + out.paint(Paint::dim, std::string(width, ' ') + " |") + " ";
    lines.append(shown.column, ' ');
    return lines + out.paint(paint, "^" + std::string(shown.width - 1, '~')) + "\n";
}

void TextWriter::write(const SourceText& source, const Diagnostic& diagnostic) {
    const bool isError = diagnostic.severity() == Severity::error;
    const Paint paint = isError ? Paint::error : Paint::warning;
    const std::string id = "[" + std::string(messageOf(diagnostic.id).id) + "]";
    // A source that could not be read has no line to show.
    const bool hasLines = !source.text().empty();

    std::string text = formatHead(source, diagnostic.range, paint, isError ? "error" : "warning",
                                  diagnostic.text) +
                       " " + out.paint(Paint::dim, id) + "\n";
    if (hasLines) text += formatLine(source, diagnostic.range, paint);
    if (!diagnostic.hint.empty())
        text += std::string(gutter + 1, ' ') + out.paint(Paint::note, "=") + " " +
                printable(diagnostic.hint) + "\n";
    for (const Note& note : diagnostic.notes) {
        text += formatHead(source, note.range, Paint::note, "note", note.text) + "\n";
        if (hasLines) text += formatLine(source, note.range, Paint::note);
    }
    out.write(text);
}

} // namespace Orvane
