// The command explain.

#include "orvane/commands.h"

#include "check/message.h"
#include "check/nearest_name.h"
#include "orvane/embedded.h"

#include <algorithm>

namespace Orvane {

namespace {

const EmbeddedText* findPage(std::string_view id) {
    for (const EmbeddedText& page : messagePages())
        if (page.name == id) return &page;
    return nullptr;
}

// Headings without their marks, samples indented, everything else as it stands.
std::string formatPage(std::string_view page, const Output& out) {
    std::string text;
    bool isSample = false;
    while (!page.empty()) {
        const std::size_t end = std::min(page.find('\n'), page.size());
        const std::string_view line = page.substr(0, end);
        page.remove_prefix(std::min(end + 1, page.size()));
        if (line.starts_with("```")) {
            isSample = !isSample;
        } else if (isSample) {
            text.append(line.empty() ? "" : "    ").append(line).append("\n");
        } else if (line.starts_with('#')) {
            text += out.paint(Paint::heading, line.substr(line.find_first_not_of("# "))) + "\n";
        } else {
            text.append(line).append("\n");
        }
    }
    return text;
}

// The gaps of a message as dots.
std::string withoutGaps(std::string_view pattern) {
    std::string text;
    for (std::size_t at = 0; at < pattern.size(); ++at) {
        const bool isGap = pattern[at] == '{' && at + 2 < pattern.size() && pattern[at + 2] == '}';
        text += isGap ? "..." : std::string(1, pattern[at]);
        if (isGap) at += 2;
    }
    return text;
}

void listMessages(Output& out) {
    std::size_t width = 0;
    for (const Message& message : messages) width = std::max(width, message.id.size());
    auto sorted = messages;
    std::sort(sorted.begin(), sorted.end(),
              [](const Message& first, const Message& second) { return first.id < second.id; });
    std::string text;
    for (const Message& message : sorted) {
        const bool isError = message.severity == Severity::error;
        text.append(message.id).append(width - message.id.size() + 2, ' ');
        text += out.paint(isError ? Paint::error : Paint::warning, isError ? "error  " : "warning");
        text.append("  ").append(withoutGaps(message.text)).append("\n");
    }
    out.write(text);
}

int refuseId(const std::string& id, Output& err) {
    const std::string_view nearest = nearestName(id, messageIds());
    err.write("orvane: no message has the id '" + id + "'\n");
    if (!nearest.empty()) err.write("Did you mean '" + std::string(nearest) + "'?\n");
    err.write("All messages: orvane explain\n");
    return wrongUse;
}

} // namespace

int runExplain(const CommandRequest& request, Output& out, Output& err) {
    if (request.names.empty()) listMessages(out);
    bool isFirst = true;
    for (const std::string& id : request.names) {
        if (!findMessage(id)) return refuseId(id, err);
        const EmbeddedText* page = findPage(id);
        if (!isFirst) out.write("\n");
        out.write(page ? formatPage(page->text, out) : id + "\n");
        isFirst = false;
    }
    return allIsWell;
}

} // namespace Orvane
