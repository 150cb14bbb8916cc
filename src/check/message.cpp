#include "check/message.h"

namespace Orvane {

namespace {

// Gaps are one digit in braces; a gap without its argument stays as it is.
std::string fillGaps(std::string_view pattern, std::initializer_list<std::string_view> arguments) {
    std::string text;
    for (std::size_t at = 0; at < pattern.size(); ++at) {
        const bool gap = pattern[at] == '{' && at + 2 < pattern.size() && pattern[at + 2] == '}';
        const auto number = gap ? static_cast<std::size_t>(pattern[at + 1] - '0') : 0;
        if (gap && number < arguments.size()) {
            text += arguments.begin()[number];
            at += 2;
        } else {
            text += pattern[at];
        }
    }
    return text;
}

} // namespace

std::vector<std::string_view> messageIds() {
    std::vector<std::string_view> ids;
    ids.reserve(messages.size());
    for (const Message& message : messages) ids.push_back(message.id);
    return ids;
}

std::optional<MessageId> findMessage(std::string_view id) {
    for (std::size_t index = 0; index < messages.size(); ++index)
        if (messages[index].id == id) return static_cast<MessageId>(index);
    return std::nullopt;
}

Diagnostic makeDiagnostic(MessageId id, ByteRange range,
                          std::initializer_list<std::string_view> arguments) {
    const Message& message = messageOf(id);
    return {id, range, fillGaps(message.text, arguments), fillGaps(message.hint, arguments), {}};
}

} // namespace Orvane
