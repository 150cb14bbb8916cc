#include "orvane/report.h"

#include "orvane/print_json.h"
#include "orvane/print_sarif.h"
#include "orvane/print_text.h"

namespace Orvane {

namespace {

std::string counted(std::size_t count, std::string_view what) {
    std::string text = std::to_string(count);
    text.append(" ").append(what);
    if (count != 1) text += 's';
    return text;
}

} // namespace

void ReportWriter::add(const SourceText& source, std::span<const Diagnostic> diagnostics) {
    paths.insert(source.path());
    for (const Diagnostic& diagnostic : diagnostics) {
        ++(diagnostic.severity() == Severity::error ? errorCount : warningCount);
        write(source, diagnostic);
    }
}

std::unique_ptr<ReportWriter> makeReportWriter(Format format, Output& out) {
    switch (format) {
    case Format::json:
        return std::make_unique<JsonWriter>(out);
    case Format::sarif:
        return std::make_unique<SarifWriter>(out);
    case Format::text:
        break;
    }
    return std::make_unique<TextWriter>(out);
}

std::string summaryOf(const ReportWriter& report) {
    std::string text;
    if (report.errors() > 0) text = counted(report.errors(), "error");
    if (report.errors() > 0 && report.warnings() > 0) text += " and ";
    if (report.warnings() > 0) text += counted(report.warnings(), "warning");
    if (!text.empty() && report.files() > 1) text += " in " + counted(report.files(), "file");
    return text;
}

} // namespace Orvane
