// Messages as one JSON object; docs/orvane.md describes its fields.
#pragma once

#include "orvane/report.h"

#include <memory>

namespace Orvane {

class JsonWriter final : public ReportWriter {
public:
    explicit JsonWriter(Output& out);
    ~JsonWriter() override;

    // Writes the object: until then nothing leaves.
    void finish() override;

protected:
    void write(const SourceText& source, const Diagnostic& diagnostic) override;

private:
    struct Document;
    Output& out;
    std::unique_ptr<Document> document;
};

} // namespace Orvane
