#include "orvane/gxx_output.h"

#include <charconv>
#include <optional>

namespace Orvane {

namespace {

void replaceAll(std::string& text, std::string_view what, std::string_view by) {
    for (std::size_t at = text.find(what); at != std::string::npos;
         at = text.find(what, at + by.size()))
        text.replace(at, what.size(), by);
}

// g++ writes quotes by the locale.
std::string plainQuotes(std::string_view line) {
    std::string text(line);
    for (const std::string_view quote : {"\xE2\x80\x98", "\xE2\x80\x99", "`"})
        replaceAll(text, quote, "'");
    return text;
}

// Takes ":NUMBER" off the end.
std::optional<std::size_t> takeNumber(std::string_view& text) {
    const std::size_t colon = text.rfind(':');
    if (colon == std::string_view::npos || colon + 1 == text.size()) return std::nullopt;
    std::size_t number = 0;
    const char* last = text.data() + text.size();
    const auto result = std::from_chars(text.data() + colon + 1, last, number);
    if (result.ec != std::errc() || result.ptr != last) return std::nullopt;
    text = text.substr(0, colon);
    return number;
}

// FILE:LINE:COLUMN or FILE:LINE
GxxPlace readPlace(std::string_view text) {
    const auto last = takeNumber(text);
    if (!last) return {};
    const auto before = takeNumber(text);
    GxxPlace place{std::string(text), before.value_or(*last), before ? *last : 0};
    return place;
}

struct Marked {
    std::string_view place;
    std::string_view text;
};

// The parts of a line around a mark such as ": error: ".
std::optional<Marked> splitAt(std::string_view line, std::string_view mark) {
    const std::size_t at = line.find(mark);
    if (at == std::string_view::npos) return std::nullopt;
    return Marked{line.substr(0, at), line.substr(at + mark.size())};
}

std::optional<Marked> findError(std::string_view line) {
    for (const std::string_view mark : {": error: ", ": fatal error: ", ": sorry, unimplemented: "})
        if (const auto found = splitAt(line, mark)) return found;
    return std::nullopt;
}

// PATH/ld: FILE.o:main.cpp:(.text+0x12): undefined reference to 'name'
std::optional<std::string_view> findLinkError(std::string_view line) {
    for (const std::string_view mark : {"undefined reference to ", "multiple definition of "}) {
        const std::size_t at = line.find(mark);
        if (at != std::string_view::npos) return line.substr(at);
    }
    return std::nullopt;
}

class Reader {
public:
    void readLine(std::string_view line) {
        if (const auto error = findError(line)) return addError(*error);
        if (const auto note = splitAt(line, ": note: ")) {
            if (!errors.empty()) errors.back().users.push_back(readPlace(note->place));
            return;
        }
        if (const auto user = splitAt(line, ":   required from "))
            return users.push_back(readPlace(user->place));
        if (const auto text = findLinkError(line)) errors.push_back({{}, {}, std::string(*text)});
    }

    std::vector<GxxError> take() { return std::move(errors); }

private:
    void addError(const Marked& error) {
        errors.push_back({readPlace(error.place), std::move(users), std::string(error.text)});
        users.clear();
    }

    std::vector<GxxError> errors;
    std::vector<GxxPlace> users; // of the error that comes next
};

} // namespace

std::vector<GxxError> readGxxOutput(std::string_view output) {
    Reader reader;
    while (!output.empty()) {
        const std::size_t end = std::min(output.find('\n'), output.size());
        std::string_view line = output.substr(0, end);
        if (line.ends_with('\r')) line.remove_suffix(1);
        reader.readLine(plainQuotes(line));
        output.remove_prefix(std::min(end + 1, output.size()));
    }
    return reader.take();
}

} // namespace Orvane
