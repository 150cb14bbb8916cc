// Sentences of g++ in the words of the language.

#include "orvane/gxx_output.h"

#include <array>
#include <optional>
#include <utility>

namespace Orvane {

namespace {

using Texts = std::vector<std::string>;

struct Word {
    std::string_view cpp;
    std::string_view ours;
};

// Longer spellings first. A type stands between quotes or commas, so parts of other words are safe.
constexpr Word typeWords[] = {
    {"std::__cxx11::basic_string<char>", "string"},
    {"std::__cxx11::string", "string"},
    {"std::string", "string"},
    {"std::basic_string<char>", "string"},
    {"std::vector<Value>", "list"},
    {"std::nullptr_t", "null"},
    {"long long int", "int"},
    {"long long", "int"},
    {"const char*", "text"},
    {"HWND", "control"},
};

std::string_view withoutConst(std::string_view type) {
    if (type.starts_with("const ") && type != "const char*") type.remove_prefix(6);
    while (type.ends_with('&')) type.remove_suffix(1);
    return type;
}

std::string typeWord(std::string_view type) {
    type = withoutConst(type);
    for (const Word& word : typeWords)
        if (type == word.cpp) return std::string(word.ours);
    if (type == "Value") return "value";
    return std::string(type);
}

// The text matched against a pattern in which * stands for any text; what the stars stand for.
std::optional<Texts> match(std::string_view text, std::string_view pattern) {
    Texts found;
    std::size_t star = pattern.find('*');
    if (!text.starts_with(pattern.substr(0, star))) return std::nullopt;
    text.remove_prefix(std::min(star, pattern.size()));
    while (star != std::string_view::npos) {
        pattern.remove_prefix(star + 1);
        star = pattern.find('*');
        const std::string_view piece = pattern.substr(0, star);
        const std::size_t at = piece.empty() ? text.size() : text.find(piece);
        if (at == std::string_view::npos) return std::nullopt;
        found.emplace_back(text.substr(0, at));
        text.remove_prefix(at + piece.size());
    }
    return found;
}

enum class Part { text, type, function };

struct Sentence {
    std::string_view pattern;
    std::string_view words; // {0}, {1} ... are the parts
    std::array<Part, 3> parts;
};

// In the order in which they are tried.
constexpr Sentence sentences[] = {
    {"'*' was not declared in this scope*", "nothing is called '{0}' here", {}},
    {"no match for 'operator*' (operand types are '*' and '*')",
     "'{0}' does not work with {1} and {2}",
     {Part::text, Part::type, Part::type}},
    {"no match for 'operator*' (operand type is '*')",
     "'{0}' does not work with {1}",
     {Part::text, Part::type}},
    {"invalid operands of types '*' and '*' to binary 'operator*'",
     "'{2}' does not work with {0} and {1}",
     {Part::type, Part::type, Part::text}},
    {"ambiguous overload for 'operator*' (operand types are '*' and '*')",
     "'{0}' can mean several things with {1} and {2}",
     {Part::text, Part::type, Part::type}},
    {"too few arguments to function '*'", "too few arguments for '{0}'", {Part::function}},
    {"too many arguments to function '*'", "too many arguments for '{0}'", {Part::function}},
    {"no matching function for call to '*'",
     "'{0}' does not take these arguments",
     {Part::function}},
    {"call of overloaded '*' is ambiguous",
     "which '{0}' is meant cannot be told from the arguments",
     {Part::function}},
    {"could not convert '*' from '*' to '*'",
     "{1} stands where {2} is needed",
     {Part::text, Part::type, Part::type}},
    {"cannot convert '*' to '*' in*",
     "{0} stands where {1} is needed",
     {Part::type, Part::type, Part::text}},
    {"cannot convert '*' to '*'", "{0} stands where {1} is needed", {Part::type, Part::type}},
    {"invalid conversion from '*' to '*'",
     "{0} stands where {1} is needed",
     {Part::type, Part::type}},
    {"conversion from '*' to non-scalar type '*' requested",
     "{0} stands where {1} is needed",
     {Part::type, Part::type}},
    {"conflicting declaration '* *'", "'{1}' is declared twice", {}},
    {"redeclaration of '* *'", "'{1}' is declared twice", {}},
    {"redefinition of '*'", "'{0}' is written twice", {Part::function}},
    {"'*' cannot be used as a function", "'{0}' is no function", {}},
    {"void value not ignored as it ought to be", "this gives nothing, and a value is needed", {}},
    {"return-statement with a value, in function returning '*'",
     "a function that gives nothing cannot return a value",
     {}},
    {"return-statement with no value, in function returning '*'",
     "'return' needs a value here",
     {}},
    {"undefined reference to '*'", "nothing is called '{0}'", {Part::function}},
};

// The bare name in "long long int add(long long int, Value)".
std::string functionName(std::string_view signature) {
    signature = signature.substr(0, signature.find('('));
    const std::size_t blank = signature.find_last_of(" *&:");
    if (blank != std::string_view::npos) signature.remove_prefix(blank + 1);
    return std::string(signature);
}

std::string partOf(std::string_view text, Part part) {
    if (part == Part::type) return typeWord(text);
    if (part == Part::function) return functionName(text);
    return std::string(text);
}

std::string fill(const Sentence& sentence, const Texts& found) {
    std::string text;
    for (std::size_t at = 0; at < sentence.words.size(); ++at) {
        if (sentence.words[at] != '{') {
            text += sentence.words[at];
            continue;
        }
        const auto number = static_cast<std::size_t>(sentence.words[at + 1] - '0');
        text += partOf(found[number], sentence.parts[number]);
        at += 2;
    }
    return text;
}

// "value of type 'X'" and the like keep their sentence; only the type words change.
std::string withTypeWords(std::string_view message) {
    std::string text(message);
    for (const Word& word : typeWords) {
        for (std::size_t at = text.find(word.cpp); at != std::string::npos;
             at = text.find(word.cpp, at + word.ours.size()))
            text.replace(at, word.cpp.size(), word.ours);
    }
    return text;
}

// 'LONG' {aka 'long int'} is what the user sees as LONG.
std::string withoutAliases(std::string_view message) {
    constexpr std::string_view front = " {aka '";
    constexpr std::string_view back = "'}";
    std::string text(message);
    for (std::size_t at = text.find(front); at != std::string::npos; at = text.find(front, at)) {
        const std::size_t end = text.find(back, at);
        if (end == std::string::npos) break;
        text.erase(at, end + back.size() - at);
    }
    return text;
}

} // namespace

std::string inPlainWords(std::string_view original) {
    const std::string message = withoutAliases(original);
    for (const Sentence& sentence : sentences)
        if (const auto found = match(message, sentence.pattern)) return fill(sentence, *found);
    return withTypeWords(message);
}

} // namespace Orvane
