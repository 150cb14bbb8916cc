// Texts of up to 15 letters, which the C++ library keeps in the text itself.
//
// Every value has two, and copying them is most of what copying a value is. Here they are always
// written as whole 16 bytes, the final zero among them, and copied so: a processor waits when it
// reads together what has just been written in parts. Included once, by runtime.cpp.
#pragma once

#include <cstddef>
#include <string>

namespace OrvaneValues {

// What the C++ library has in a text.
struct TextParts {
    const char* letters;
    std::size_t size;
    char own[16];
};
static_assert(sizeof(std::string) == sizeof(TextParts), "the C++ library has other texts");

using Letters [[gnu::vector_size(16)]] = char;

// The text of the first letters; the one behind them is a zero.
[[gnu::always_inline]] inline std::string shortText(Letters letters, std::size_t size) noexcept {
    std::string text;
    char* place = reinterpret_cast<char*>(&text);
    __builtin_memcpy(place + offsetof(TextParts, size), &size, sizeof(size));
    __builtin_memcpy(place + offsetof(TextParts, own), &letters, sizeof(letters));
    return text;
}

// A copy of a text of up to 15 letters. 16 bytes can be read of every text.
[[gnu::always_inline]] inline std::string shortText(const std::string& text) noexcept {
    Letters letters;
    __builtin_memcpy(&letters, text.data(), sizeof(letters));
    return shortText(letters, text.size());
}

// The text of a literal. Without the asm the compiler would write a constant in two halves.
template <std::size_t size>
[[gnu::always_inline]] inline std::string shortText(const char (&literal)[size]) noexcept {
    static_assert(size <= sizeof(Letters), "too long for a short text");
    Letters letters = {};
    for (std::size_t at = 0; at + 1 < size; ++at) letters[at] = literal[at];
    asm("" : "+x"(letters));
    return shortText(letters, size - 1);
}

} // namespace OrvaneValues
