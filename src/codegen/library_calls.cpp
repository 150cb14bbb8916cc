#include "codegen/library_calls.h"

#include <algorithm>
#include <cctype>

namespace Orvane {

namespace {

constexpr std::size_t farthestBracket = 63;

bool isWordCharacter(char character) {
    return std::isalnum(static_cast<unsigned char>(character)) || character == '_';
}

bool isBlank(char character) {
    return character == ' ' || character == '\t' || character == '\n' || character == '\r';
}

// Whether the text, which begins right behind a word, makes that word a call.
bool opensArguments(std::string_view behind) {
    behind = behind.substr(0, farthestBracket + 1);
    const auto bracket = std::find_if_not(behind.begin(), behind.end(), isBlank);
    return bracket != behind.end() && *bracket == '(';
}

std::string_view cppTypeWord(std::string_view type) { return type == "value" ? "Value" : type; }

} // namespace

// Names of library functions consist of letters, digits and underscores (the loader reads no
// others), so a name that begins and ends at a word boundary is a whole word: one walk over the
// words of the body finds them all, however many functions the table holds.
void collectLibraryCalls(std::string_view body, const ReplacementTable& table, NameSet& names) {
    while (!body.empty()) {
        const auto start = std::find_if(body.begin(), body.end(), isWordCharacter);
        const auto end = std::find_if_not(start, body.end(), isWordCharacter);
        const std::string_view word(start, end);
        body = std::string_view(end, body.end());
        if (opensArguments(body) && table.exists(word)) names.emplace(word);
    }
}

NameSet closeOverLibraryCalls(const ReplacementTable& table, NameSet names) {
    std::vector<std::string> unread(names.begin(), names.end());
    while (!unread.empty()) {
        NameSet called;
        const auto entries = table.getAll(unread.back());
        unread.pop_back();
        for (const FunctionEntry* entry : entries) collectLibraryCalls(entry->body, table, called);
        for (const std::string& name : called)
            if (names.insert(name).second) unread.push_back(name);
    }
    return names;
}

std::string formatLibrarySignature(const FunctionEntry& entry) {
    std::string text(cppTypeWord(entry.returnType));
    text += " " + entry.name + "(";
    const std::size_t count = std::min(entry.paramNames.size(), entry.paramTypes.size());
    for (std::size_t i = 0; i < count; ++i) {
        if (i > 0) text += ", ";
        text += cppTypeWord(entry.paramTypes[i]);
        text += " " + entry.paramNames[i];
    }
    return text + ")";
}

} // namespace Orvane
