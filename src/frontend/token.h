// Tokens: what the lexer gives and the parser reads.
#pragma once

#include "frontend/value.h"

#include <array>
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

// The source spelling of an operator, punctuation or keyword kind; a description for the others.
std::string_view spellingOf(TokenType type);

constexpr int numberOf(TokenType type) { return static_cast<int>(type); }

// One token. Its text is a view: of the lexer's copy of the source, or of the lexer's store of
// decoded literals, so that tokens may be copied freely and live as long as their lexer.
struct Token {
    TokenType type = TokenType::EndOfInput;
    std::string_view text; // as in the source; for texts and characters the decoded content
    int line = 0;          // of the first character, from 1
    int column = 0;        // of the first character, from 1, in bytes

    Token() = default;
    Token(TokenType type_, std::string_view text_, int line_, int column_)
        : type(type_), text(text_), line(line_), column(column_) {}

    // The literal's value for number, text, character and colour tokens (the last three as a
    // "string" Value of the token's text); a null Value for every other kind.
    Value value() const;
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
