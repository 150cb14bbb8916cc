// The text under construction: an in-memory stream of one growing buffer.
//
// Numbers are written as a standard stream writes them in its default format: integers in decimal,
// doubles with up to six significant digits ("%g").
//
//     TextStream out;
//     out << "int x = " << 5 << ";\n";
//     out.view();   // "int x = 5;\n"
#pragma once

#include <charconv>
#include <concepts>
#include <cstdio>
#include <string>
#include <string_view>
#include <utility>

namespace Orvane {

class TextStream {
public:
    TextStream& operator<<(std::string_view piece) {
        text += piece;
        return *this;
    }
    TextStream& operator<<(char character) {
        text += character;
        return *this;
    }
    template <std::integral Number>
    TextStream& operator<<(Number number) {
        char digits[24];
        const auto end = std::to_chars(digits, digits + sizeof digits, number).ptr;
        text.append(digits, end);
        return *this;
    }
    TextStream& operator<<(double number) {
        char digits[32];
        const int length = std::snprintf(digits, sizeof digits, "%g", number);
        text.append(digits, static_cast<std::size_t>(length));
        return *this;
    }

    void fill(std::size_t count, char character) { text.append(count, character); }
    std::string_view view() const { return text; }
    std::string str() const { return text; }
    void clear() { text.clear(); }

    // Takes the whole text out and leaves the stream empty; for setting text aside.
    std::string take() { return std::exchange(text, {}); }
    // Puts the text in the place of the stream's own; writing goes on behind it.
    void restore(std::string kept) { text = std::move(kept); }

private:
    std::string text;
};

} // namespace Orvane
