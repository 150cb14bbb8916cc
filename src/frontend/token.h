// Tokens: what the lexer gives and the parser reads.
#pragma once

#include "frontend/value.h"

#include <array>
#include <cstdint>
#include <string_view>
#include <unordered_set>

namespace Orvane {

// The numeric values 0 to 79 are printed in messages and therefore fixed; tokens.def lists them.
enum class TokenType : unsigned char {
#define TOKEN(name, spelling) name,
#include "frontend/tokens.def"
#undef TOKEN
};

inline constexpr int tokenTypeCount = 80;
inline constexpr int keywordCount = 44; // kinds 0 to 43 are words

constexpr int numberOf(TokenType type) { return static_cast<int>(type); }

// By number; see spellingOf.
inline constexpr std::array<std::string_view, tokenTypeCount> spellings = {
#define TOKEN(name, spelling) spelling,
#include "frontend/tokens.def"
#undef TOKEN
};

// The source spelling of an operator, punctuation or keyword kind; a description for the others.
constexpr std::string_view spellingOf(TokenType type) {
    return spellings[static_cast<std::size_t>(numberOf(type))];
}

// One token. Its text is a view of the lexer's copy of the source, so that tokens may be copied
// freely and live as long as their lexer. A source of a megabyte has some 200,000 of them: the
// order of the members keeps each at 24 bytes.
class Token {
public:
    Token() = default;
    Token(TokenType type_, std::string_view text_, int line_, int column_)
        : start(text_.data()), length(static_cast<std::uint32_t>(text_.size())), line(line_),
          column(column_), type(type_) {}

    // As in the source; for texts and characters the decoded content.
    std::string_view text() const { return {start, length}; }

    // The literal's value for number, text, character and colour tokens (the last three as a
    // "string" Value that views the token's text); a null Value for every other kind.
    Value value() const;

private:
    const char* start = nullptr;
    std::uint32_t length = 0; // bytes

public:
    int line = 0;   // of the first character, from 1
    int column = 0; // of the first character, from 1, in bytes
    TokenType type = TokenType::EndOfInput;
};

// The names of the built-in types and control kinds. As tokens they have the kind TypeKeyword
// unless they are keywords of their own.
inline constexpr std::array<std::string_view, 33> standardTypes = {
    "value",    "int",     "double", "string",   "bool",     "array",    "container",
    "map",      "button",  "text",   "entry",    "textarea", "checkbox", "radio",
    "combobox", "listbox", "slider", "progress", "panel",    "group",    "tab",
    "canvas",   "picture", "menu",   "timer",    "window",   "color",    "font",
    "position", "size",    "rect",   "cursor",   "icon",
};

// The same names for look-up.
const std::unordered_set<std::string_view>& standardTypeSet();

} // namespace Orvane
