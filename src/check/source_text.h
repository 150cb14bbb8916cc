// A source file as the user sees it: lines and columns of byte offsets.
//
// Owns the text. Lines end with LF or CR LF; a byte order mark counts as part of line 1, but not of
// its columns.
//
//     SourceText source("app.vorla", "value a;\nvalue b;\n");
//     source.placeOf(15);   // line 2, column 7
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace Orvane {

// A part of a source: from the first byte up to, not including, the last; offsets from 0.
struct ByteRange {
    std::size_t begin = 0;
    std::size_t end = 0;
    friend bool operator==(const ByteRange&, const ByteRange&) = default;
};

struct Place {
    std::size_t line = 1;       // from 1
    std::size_t column = 1;     // from 1, in characters (code points; a broken byte counts as one)
    std::size_t byteColumn = 1; // from 1, in bytes
};

class SourceText {
public:
    SourceText(std::string path, std::string text);

    const std::string& path() const { return filePath; }
    const std::string& text() const { return content; }
    std::string_view part(ByteRange range) const;

    // Offsets behind the end count as the end.
    Place placeOf(std::size_t offset) const;

    // The offset of a line and byte column as tokens carry them, both from 1.
    std::size_t offsetOf(std::size_t line, std::size_t byteColumn) const;

    std::size_t lineCount() const { return lineStarts.size(); }

    // Without its line end. Lines from 1; none behind the last.
    std::string_view lineText(std::size_t line) const;

private:
    std::string filePath;
    std::string content;
    std::vector<std::size_t> lineStarts; // by line, from 0; ascending
};

} // namespace Orvane
