#include "orvane/print_json.h"

#include "driver/options.h"

#include <nlohmann/json.hpp>

namespace Orvane {

using Json = nlohmann::ordered_json;

struct JsonWriter::Document {
    Json diagnostics = Json::array();
};

namespace {

Json jsonOf(const Place& place) {
    return {{"line", place.line}, {"column", place.column}, {"byteColumn", place.byteColumn}};
}

Json jsonOf(const SourceText& source, ByteRange range) {
    return {{"start", jsonOf(source.placeOf(range.begin))},
            {"end", jsonOf(source.placeOf(std::max(range.begin, range.end)))}};
}

Json jsonOf(const SourceText& source, const Note& note) {
    return {{"message", note.text}, {"range", jsonOf(source, note.range)}};
}

} // namespace

JsonWriter::JsonWriter(Output& out_) : out(out_), document(std::make_unique<Document>()) {}
JsonWriter::~JsonWriter() = default;

void JsonWriter::write(const SourceText& source, const Diagnostic& diagnostic) {
    Json notes = Json::array();
    for (const Note& note : diagnostic.notes) notes.push_back(jsonOf(source, note));
    const bool isError = diagnostic.severity() == Severity::error;
    document->diagnostics.push_back({
        {"file", source.path()},
        {"range", jsonOf(source, diagnostic.range)},
        {"severity", isError ? "error" : "warning"},
        {"id", messageOf(diagnostic.id).id},
        {"message", diagnostic.text},
        {"hint", diagnostic.hint},
        {"notes", std::move(notes)},
    });
}

void JsonWriter::finish() {
    const Json whole = {
        {"format", "orvane-diagnostics"},
        {"formatVersion", 1},
        {"tool", {{"name", "orvane"}, {"version", compilerVersion}}},
        {"files", files()},
        {"errors", errors()},
        {"warnings", warnings()},
        {"diagnostics", std::move(document->diagnostics)},
    };
    // A broken byte in a name or text becomes U+FFFD: the result is UTF-8 in any case.
    out.write(whole.dump(2, ' ', false, Json::error_handler_t::replace) + "\n");
}

} // namespace Orvane
