#include "check/suppression.h"

#include "check/nearest_name.h"

#include <algorithm>
#include <set>
#include <string>
#include <utility>

namespace Orvane {

namespace {

constexpr std::string_view mark = "orvane: allow";
constexpr std::string_view forFile = "-file";
constexpr std::size_t wholeFile = 0; // in place of a line, which count from 1

bool isBlank(char letter) { return letter == ' ' || letter == '\t'; }
bool isSeparator(char letter) { return isBlank(letter) || letter == ',' || letter == '\r'; }

// Reads the comments of one source.
class AllowReader {
public:
    explicit AllowReader(const ParsedSource& source_)
        : source(source_), text(source_.source().text()) {}

    void read() {
        for (std::size_t at = text.find(mark); at != text.npos; at = text.find(mark, at + 1))
            if (beginsComment(at)) readComment(at + mark.size());
    }

    bool allows(const Diagnostic& diagnostic) const {
        const std::size_t line = source.source().placeOf(diagnostic.range.begin).line;
        return allowed.contains({wholeFile, diagnostic.id}) ||
               allowed.contains({line, diagnostic.id});
    }

    std::vector<Diagnostic> complaints;

private:
    // Directly behind "//", which is not part of a token.
    bool beginsComment(std::size_t at) const {
        while (at > 0 && isBlank(text[at - 1])) --at;
        if (!text.substr(0, at).ends_with("//")) return false;
        const std::size_t token = tokenBehind(at);
        return token == 0 || source.tokenRange(token - 1).end <= at - 2;
    }

    // The index of the first token that begins at the offset or behind it.
    std::size_t tokenBehind(std::size_t offset) const {
        std::size_t first = 0, last = source.tokens().size();
        while (first < last) {
            const std::size_t middle = (first + last) / 2;
            if (source.tokenRange(middle).begin < offset)
                first = middle + 1;
            else
                last = middle;
        }
        return first;
    }

    std::size_t lineOf(std::size_t offset) const { return source.source().placeOf(offset).line; }

    // The line that a comment without "-file" counts for.
    std::size_t lineFor(std::size_t at) const {
        const std::size_t token = tokenBehind(at);
        if (token > 0 && lineOf(source.tokenRange(token - 1).end) == lineOf(at)) return lineOf(at);
        return token < source.tokens().size() ? lineOf(source.tokenRange(token).begin) : lineOf(at);
    }

    void readComment(std::size_t at) {
        std::size_t line = wholeFile;
        if (text.substr(at).starts_with(forFile))
            at += forFile.size();
        else
            line = lineFor(at);
        const std::size_t end = std::min(text.find('\n', at), text.size());
        while (at < end) {
            while (at < end && isSeparator(text[at])) ++at;
            const std::size_t begin = at;
            while (at < end && !isSeparator(text[at])) ++at;
            if (at > begin) readId({begin, at}, line);
        }
    }

    void readId(ByteRange range, std::size_t line) {
        const std::string id(source.source().part(range));
        const auto message = findMessage(id);
        if (!message)
            complain(range, "no message is called '" + id + "'", hintFor(id));
        else if (messageOf(*message).severity == Severity::error)
            complain(range, "'" + id + "' is an error and cannot be switched off",
                     "Mend what it is about, and remove the comment.");
        else
            allowed.insert({line, *message});
    }

    static std::string hintFor(std::string_view id) {
        const std::string_view meant = nearestName(id, messageIds());
        if (meant.empty()) return "Write ids as they stand in brackets behind the warnings.";
        return "Write '" + std::string(meant) + "' if you mean that.";
    }

    void complain(ByteRange range, std::string_view what, std::string_view hint) {
        complaints.push_back(makeDiagnostic(MessageId::unknownAllow, range, {what, hint}));
    }

    const ParsedSource& source;
    std::string_view text;
    std::set<std::pair<std::size_t, MessageId>> allowed;
};

} // namespace

void suppressWarnings(const ParsedSource& source, std::vector<Diagnostic>& found) {
    AllowReader reader(source);
    reader.read();
    found.insert(found.end(), reader.complaints.begin(), reader.complaints.end());
    std::erase_if(found, [&](const Diagnostic& diagnostic) {
        return diagnostic.severity() == Severity::warning && reader.allows(diagnostic);
    });
}

} // namespace Orvane
