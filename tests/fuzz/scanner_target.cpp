// Any bytes are scanned as a library file to the end; what is found has the form that the code
// generator relies on.
#include "fuzz/targets.h"

#include "libraries/orlib_scanner.h"

#include <algorithm>
#include <cctype>

namespace Orvane::Fuzzing {

namespace {

bool isWordCharacter(char character) {
    return std::isalnum(static_cast<unsigned char>(character)) || character == '_';
}

bool isWord(std::string_view text) {
    return !text.empty() && std::all_of(text.begin(), text.end(), isWordCharacter);
}

bool isBalanced(std::string_view body) {
    int depth = 0;
    for (const char character : body) {
        if (character == '{') ++depth;
        if (character == '}' && --depth < 0) return false;
    }
    return depth == 0;
}

void checkFunction(const FunctionEntry& entry) {
    require(isWord(entry.name), "a function's name is a word");
    require(isWord(entry.returnType), "a result type is a word");
    require(entry.paramNames.size() == entry.paramTypes.size(), "each parameter has a type");
    require(isBalanced(entry.body), "the braces of a body are in pairs");
}

void checkItem(const OrlibItem& item, std::size_t longest) {
    if (const auto* entry = std::get_if<FunctionEntry>(&item)) return checkFunction(*entry);
    if (const auto* import = std::get_if<OrlibImport>(&item))
        return require(import->path.size() <= longest, "a path comes from the text");
    const auto& directive = std::get<OrlibUsing>(item);
    require(isWord(directive.name), "the word of a using directive is one");
}

} // namespace

void fuzzScanner(Bytes input) {
    OrlibScanner scanner(textOf(input));
    std::size_t count = 0;
    while (const std::optional<OrlibItem> item = scanner.next()) {
        require(++count <= input.size(), "each item takes some of the text");
        checkItem(*item, input.size());
    }
    require(!scanner.next(), "the end stays the end");
}

} // namespace Orvane::Fuzzing
