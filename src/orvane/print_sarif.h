// Messages as a log in the Static Analysis Results Interchange Format, version 2.1.0. Columns count
// characters ("unicodeCodePoints").
#pragma once

#include "orvane/report.h"

#include <memory>
#include <string>
#include <string_view>

namespace Orvane {

class SarifWriter final : public ReportWriter {
public:
    explicit SarifWriter(Output& out);
    ~SarifWriter() override;

    // Writes the log: until then nothing leaves.
    void finish() override;

    // A path as a URI reference: "/" between folders, everything else that has a meaning in URIs
    // or is not ASCII as %XX. A path that begins at a drive or at the root becomes a file: URI.
    static std::string uriOf(std::string_view path);

protected:
    void write(const SourceText& source, const Diagnostic& diagnostic) override;

private:
    struct Log;
    Output& out;
    std::unique_ptr<Log> log;
};

} // namespace Orvane
