#include "libraries/orlib_scanner.h"

#include <algorithm>
#include <array>

namespace Orvane {

namespace {

constexpr std::size_t none = std::string::npos;

// `double` is not among them: a fractional result is returned as a `value`.
constexpr std::array<std::string_view, 4> returnTypes = {"value", "int", "bool", "string"};

bool isReturnType(std::string_view word) {
    return std::find(returnTypes.begin(), returnTypes.end(), word) != returnTypes.end();
}

bool isSpace(char character) {
    return character == ' ' || (character >= '\t' && character <= '\r');
}

bool isWordCharacter(char character) {
    return (character >= 'a' && character <= 'z') || (character >= 'A' && character <= 'Z') ||
           character == '_';
}

bool isNameCharacter(char character) {
    return isWordCharacter(character) || (character >= '0' && character <= '9');
}

// TYPE blanks NAME. One word alone is the name of a `value`; an empty piece is no parameter.
void addParameter(std::string_view piece, FunctionEntry& entry) {
    piece = OrlibScanner::trim(piece);
    if (piece.empty()) return;
    const auto typeEnd = std::find_if(piece.begin(), piece.end(), isSpace);
    const auto nameStart = std::find_if_not(typeEnd, piece.end(), isSpace);
    const std::string first(piece.begin(), typeEnd);
    const bool isNameAlone = nameStart == piece.end();
    entry.paramTypes.push_back(isNameAlone ? "value" : first);
    entry.paramNames.push_back(isNameAlone ? first : std::string(nameStart, piece.end()));
}

// [ parameter { "," parameter } ]
void addParameters(std::string_view list, FunctionEntry& entry) {
    std::size_t start = 0;
    for (std::size_t comma; (comma = list.find(',', start)) != none; start = comma + 1)
        addParameter(list.substr(start, comma - start), entry);
    addParameter(list.substr(start), entry);
}

} // namespace

std::string_view OrlibScanner::trim(std::string_view text) {
    constexpr std::string_view blanks = " \t\n\r";
    const std::size_t first = text.find_first_not_of(blanks);
    if (first == none) return {};
    return text.substr(first, text.find_last_not_of(blanks) - first + 1);
}

// { using | import | function | anything else }
std::optional<OrlibItem> OrlibScanner::next() {
    while ((position = skipSpace(position)) < text.size()) {
        OrlibUsing directive;
        if (parseUsing(position, directive)) return directive;
        OrlibImport import;
        if (parseImport(position, import)) return import;
        FunctionEntry entry;
        if (parseFunction(position, entry)) return entry;
        skipUnknown();
    }
    return std::nullopt;
}

// A word that is no return type goes together with the character behind it. Everything else goes
// character by character, so that a malformed function does not hide the next one.
void OrlibScanner::skipUnknown() {
    const std::size_t end = wordEnd(position);
    const std::string_view word = std::string_view(text).substr(position, end - position);
    position = word.empty() || isReturnType(word) ? position + 1 : end + 1;
}

// "using" NAME '"' VALUE '"' ";"
bool OrlibScanner::parseUsing(std::size_t& pos, OrlibUsing& directive) {
    std::size_t at = pos;
    if (!skipWord(at, "using")) return false;
    const std::size_t nameStart = skipSpace(at);
    at = nameEnd(nameStart);
    if (at == nameStart) return false;
    const std::string_view name = std::string_view(text).substr(nameStart, at - nameStart);
    at = skipSpace(at);
    std::string value;
    if (!skipQuoted(at, value)) return false;
    at = skipSpace(at);
    if (at >= text.size() || text[at] != ';') return false;
    directive = {std::string(name), std::move(value)};
    pos = at + 1;
    return true;
}

// "import" '"' PATH '"'
bool OrlibScanner::parseImport(std::size_t& pos, OrlibImport& directive) {
    std::size_t at = pos;
    if (!skipWord(at, "import")) return false;
    at = skipSpace(at);
    if (!skipQuoted(at, directive.path)) return false;
    pos = at;
    return true;
}

// TYPE NAME "(" parameters ")" anything "{" body "}"
//
// The name and the "(" touch. The body ends at the brace that balances its first one; braces in
// strings and comments of the body count as well.
bool OrlibScanner::parseFunction(std::size_t& pos, FunctionEntry& entry) {
    const std::string_view all = text;
    const std::size_t typeStart = skipSpace(pos);
    const std::size_t typeEnd = wordEnd(typeStart);
    const std::string_view type = all.substr(typeStart, typeEnd - typeStart);
    if (!isReturnType(type)) return false;

    const std::size_t nameStart = skipSpace(typeEnd);
    const std::size_t open = nameEnd(nameStart);
    if (open == nameStart || open >= text.size() || text[open] != '(') return false;
    const std::size_t close = find(closingParenthesis, open);
    if (close == none) return false;
    const std::size_t bodyOpen = find(openingBrace, close);
    if (bodyOpen == none) return false;
    const std::size_t bodyClose = closingBrace(bodyOpen);
    if (bodyClose == none) return false;

    entry.name = all.substr(nameStart, open - nameStart);
    entry.returnType = type;
    addParameters(all.substr(open + 1, close - open - 1), entry);
    entry.body = trim(all.substr(bodyOpen + 1, bodyClose - bodyOpen - 1));
    pos = bodyClose + 1;
    return true;
}

bool OrlibScanner::skipWord(std::size_t& pos, std::string_view word) const {
    if (text.compare(pos, word.size(), word) != 0) return false;
    const std::size_t end = pos + word.size();
    if (end < text.size() && isNameCharacter(text[end])) return false;
    pos = end;
    return true;
}

bool OrlibScanner::skipQuoted(std::size_t& pos, std::string& content) {
    if (pos >= text.size() || text[pos] != '"') return false;
    const std::size_t end = find(quote, pos + 1);
    if (end == none) return false;
    content = text.substr(pos + 1, end - pos - 1);
    pos = end + 1;
    return true;
}

std::size_t OrlibScanner::skipSpace(std::size_t pos) const {
    while (pos < text.size() && isSpace(text[pos])) ++pos;
    return pos;
}

std::size_t OrlibScanner::wordEnd(std::size_t pos) const {
    while (pos < text.size() && isWordCharacter(text[pos])) ++pos;
    return pos;
}

// int1int1int1... holds a return type in front of every digit, and the name behind each of them
// reaches to the end of the run.
std::size_t OrlibScanner::nameEnd(std::size_t pos) {
    if (pos >= knownNameStart && pos < knownNameEnd) return knownNameEnd;
    knownNameStart = pos;
    knownNameEnd = pos;
    while (knownNameEnd < text.size() && isNameCharacter(text[knownNameEnd])) ++knownNameEnd;
    return knownNameEnd;
}

std::size_t OrlibScanner::find(Search& search, std::size_t pos) const {
    if (pos >= search.from && pos <= search.found) return search.found;
    search.from = pos;
    search.found = text.find(search.character, pos);
    return search.found;
}

// A partner that is found ends a function, so its text is not looked at again. A search that
// failed has seen the text to its end: it must not happen for every open brace.
std::size_t OrlibScanner::closingBrace(std::size_t open) {
    if (!unclosed.empty() && unclosed[open]) return none;
    std::size_t depth = 0;
    for (std::size_t pos = open; pos < text.size(); ++pos) {
        if (text[pos] == '{') ++depth;
        if (text[pos] == '}' && --depth == 0) return pos;
    }
    findUnclosedBraces();
    return none;
}

// From the end to the start: an open brace takes one of the closing braces behind it that are
// still free, and is unclosed when there is none.
void OrlibScanner::findUnclosedBraces() {
    unclosed.assign(text.size(), false);
    std::size_t free = 0;
    for (std::size_t pos = text.size(); pos-- > 0;) {
        if (text[pos] == '}') ++free;
        if (text[pos] != '{') continue;
        if (free > 0)
            --free;
        else
            unclosed[pos] = true;
    }
}

} // namespace Orvane
