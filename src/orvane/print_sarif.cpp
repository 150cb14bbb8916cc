#include "orvane/print_sarif.h"

#include "driver/options.h"

#include <nlohmann/json.hpp>

namespace Orvane {

using Json = nlohmann::ordered_json;

// Only the rules that a result names are listed.
struct SarifWriter::Log {
    std::vector<MessageId> rules;
    Json results = Json::array();

    std::size_t ruleIndex(MessageId id) {
        const auto found = std::find(rules.begin(), rules.end(), id);
        if (found != rules.end()) return static_cast<std::size_t>(found - rules.begin());
        rules.push_back(id);
        return rules.size() - 1;
    }
};

namespace {

std::string_view levelOf(Severity severity) {
    return severity == Severity::error ? "error" : "warning";
}

Json regionOf(const SourceText& source, ByteRange range) {
    const Place start = source.placeOf(range.begin);
    const Place end = source.placeOf(std::max(range.begin, range.end));
    return {{"startLine", start.line},
            {"startColumn", start.column},
            {"endLine", end.line},
            {"endColumn", end.column}};
}

Json locationOf(const SourceText& source, ByteRange range) {
    return {{"physicalLocation",
             {{"artifactLocation", {{"uri", SarifWriter::uriOf(source.path())}}},
              {"region", regionOf(source, range)}}}};
}

Json ruleOf(MessageId id) {
    const Message& message = messageOf(id);
    return {{"id", message.id},
            {"shortDescription", {{"text", message.text}}},
            {"help", {{"text", message.hint}}},
            {"defaultConfiguration", {{"level", levelOf(message.severity)}}}};
}

bool isPlain(char character) {
    return (character >= 'a' && character <= 'z') || (character >= 'A' && character <= 'Z') ||
           (character >= '0' && character <= '9') ||
           std::string_view("-._~/").find(character) != std::string_view::npos;
}

bool hasDrive(std::string_view path) {
    return path.size() > 2 && path[1] == ':' && (path[2] == '\\' || path[2] == '/');
}

} // namespace

SarifWriter::SarifWriter(Output& out_) : out(out_), log(std::make_unique<Log>()) {}
SarifWriter::~SarifWriter() = default;

std::string SarifWriter::uriOf(std::string_view path) {
    constexpr char digits[] = "0123456789ABCDEF";
    std::string uri;
    if (hasDrive(path)) {
        uri = "file:///" + std::string(path.substr(0, 2));
        path.remove_prefix(2);
    } else if (path.starts_with('/')) {
        uri = "file://";
    }
    for (const char character : path) {
        const auto byte = static_cast<unsigned char>(character);
        if (character == '\\')
            uri += '/';
        else if (isPlain(character))
            uri += character;
        else
            uri.append("%").append(1, digits[byte >> 4U]).append(1, digits[byte & 15U]);
    }
    return uri;
}

void SarifWriter::write(const SourceText& source, const Diagnostic& diagnostic) {
    std::string text = diagnostic.text;
    if (!diagnostic.hint.empty()) text += ". " + diagnostic.hint;
    Json related = Json::array();
    for (const Note& note : diagnostic.notes) {
        Json location = locationOf(source, note.range);
        location["message"] = {{"text", note.text}};
        related.push_back(std::move(location));
    }
    Json result = {{"ruleId", messageOf(diagnostic.id).id},
                   {"ruleIndex", log->ruleIndex(diagnostic.id)},
                   {"level", levelOf(diagnostic.severity())},
                   {"message", {{"text", text}}},
                   {"locations", Json::array({locationOf(source, diagnostic.range)})}};
    if (!related.empty()) result["relatedLocations"] = std::move(related);
    log->results.push_back(std::move(result));
}

void SarifWriter::finish() {
    Json rules = Json::array();
    for (const MessageId id : log->rules) rules.push_back(ruleOf(id));
    Json driver = {{"name", "orvane"}, {"version", compilerVersion}, {"rules", std::move(rules)}};
    Json run = {{"tool", {{"driver", std::move(driver)}}},
                {"columnKind", "unicodeCodePoints"},
                {"results", std::move(log->results)}};
    const Json whole = {{"$schema", "https://json.schemastore.org/sarif-2.1.0.json"},
                        {"version", "2.1.0"},
                        {"runs", Json::array({std::move(run)})}};
    out.write(whole.dump(2, ' ', false, Json::error_handler_t::replace) + "\n");
}

} // namespace Orvane
