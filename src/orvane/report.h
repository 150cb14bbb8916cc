// How messages leave the command: as text for people, as JSON or as SARIF for programs.
//
// A command makes one writer for its run, hands it the messages of one file after the other and
// ends with finish().
//
//     auto writer = makeReportWriter(Format::text, out);
//     writer->add(source, diagnostics);
//     writer->finish();
//     return writer->errors() > 0 ? 1 : 0;
#pragma once

#include "check/message.h"
#include "check/source_text.h"
#include "orvane/output.h"

#include <memory>
#include <set>
#include <span>
#include <string>
#include <vector>

namespace Orvane {

enum class Format { text, json, sarif };

class ReportWriter {
public:
    ReportWriter() = default;
    ReportWriter(const ReportWriter&) = delete;
    ReportWriter& operator=(const ReportWriter&) = delete;
    virtual ~ReportWriter() = default;

    void add(const SourceText& source, std::span<const Diagnostic> diagnostics);

    // Once, behind the last file.
    virtual void finish() = 0;

    std::size_t errors() const { return errorCount; }
    std::size_t warnings() const { return warningCount; }
    // All that were added, those without a message included; one that was added twice counts once.
    std::size_t files() const { return paths.size(); }

protected:
    virtual void write(const SourceText& source, const Diagnostic& diagnostic) = 0;

private:
    std::size_t errorCount = 0;
    std::size_t warningCount = 0;
    std::set<std::string> paths;
};

std::unique_ptr<ReportWriter> makeReportWriter(Format format, Output& out);

// "2 errors and 1 warning in 3 files", "1 warning"; empty without any.
std::string summaryOf(const ReportWriter& report);

} // namespace Orvane
