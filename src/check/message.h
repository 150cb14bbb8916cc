// All messages of the checks, in one table.
//
// A check makes a Diagnostic from an id of the table, the range it is about and the texts that fill
// the message's gaps; the commands print it. The ids are what users write to switch a message off
// and to ask for its page.
//
//     diagnostics.push_back(makeDiagnostic(MessageId::unknownFunction, range, {"prnt"}));
#pragma once

#include "check/source_text.h"

#include <array>
#include <initializer_list>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace Orvane {

enum class Severity { error, warning };

enum class MessageId {
#define MESSAGE(name, id, severity, text, hint) name,
#include "check/messages_command.def"
#include "check/messages_misleading.def"
#include "check/messages_syntax.def"
#include "check/messages_types.def"
#undef MESSAGE
};

struct Message {
    std::string_view id;
    Severity severity;
    std::string_view text;
    std::string_view hint;
};

// By MessageId.
inline constexpr std::array messages = {
#define MESSAGE(name, id, severity, text, hint) Message{id, Severity::severity, text, hint},
#include "check/messages_command.def"
#include "check/messages_misleading.def"
#include "check/messages_syntax.def"
#include "check/messages_types.def"
#undef MESSAGE
};

constexpr const Message& messageOf(MessageId id) { return messages[static_cast<std::size_t>(id)]; }

// The ids of all messages, in the order of the table.
std::vector<std::string_view> messageIds();

// Nothing when no message has the id.
std::optional<MessageId> findMessage(std::string_view id);

// A second place that belongs to a message, such as the bracket that was never closed.
struct Note {
    ByteRange range;
    std::string text;
};

struct Diagnostic {
    MessageId id;
    ByteRange range;  // of the source that was checked
    std::string text; // without file, line and id
    std::string hint; // empty when there is nothing to say
    std::vector<Note> notes;

    Severity severity() const { return messageOf(id).severity; }
};

// The message of the table with {0}, {1} ... replaced, in its text and in its hint.
Diagnostic makeDiagnostic(MessageId id, ByteRange range,
                          std::initializer_list<std::string_view> arguments = {});

} // namespace Orvane
