// Messages as text:
//
//     app.vorla:12:9: error: no function is called 'prnt' [unknown-function]
//        12 |     prnt("x");
//           |     ^~~~
//           = Write the function, or import the library that has it.
//
// The column counts characters. A range over several lines is underlined on its first one. Notes
// follow with their own place and line.
#pragma once

#include "orvane/report.h"

namespace Orvane {

class TextWriter final : public ReportWriter {
public:
    explicit TextWriter(Output& out_) : out(out_) {}

    void finish() override {}

    // Columns of a source line that are shown where no terminal says how wide it is.
    static constexpr std::size_t lineColumns = 100;

protected:
    void write(const SourceText& source, const Diagnostic& diagnostic) override;

private:
    std::string formatHead(const SourceText& source, ByteRange range, Paint paint,
                           std::string_view kind, std::string_view text) const;
    std::string formatLine(const SourceText& source, ByteRange range, Paint paint) const;
    std::size_t columns() const;

    Output& out;
};

} // namespace Orvane
