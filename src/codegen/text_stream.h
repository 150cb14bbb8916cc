// The text under construction: an in-memory stream of one growing buffer.
//
// Numbers are written as a standard stream writes them in its default format: integers in decimal,
// doubles with up to six significant digits ("%g").
//
//     TextStream out;
//     out << "int x = " << 5 << ";\n";
//     out.view();   // "int x = 5;\n"
//
// A text that may become longer than the memory for it can be passed on piece by piece:
//
//     out.passOn(file, 1'000'000);   // file is a TextSink
//     ...
//     file.take(out.view());         // the rest
#pragma once

#include <algorithm>
#include <charconv>
#include <concepts>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <memory>
#include <string>
#include <string_view>
#include <utility>

namespace Orvane {

// Takes the pieces of a text, in their order.
class TextSink {
public:
    TextSink() = default;
    TextSink(const TextSink&) = delete;
    TextSink& operator=(const TextSink&) = delete;
    virtual ~TextSink() = default;
    virtual void take(std::string_view piece) = 0;
};

class TextStream {
public:
    TextStream& operator<<(std::string_view piece) {
        piece.copy(roomFor(piece.size()), piece.size());
        length += piece.size();
        return *this;
    }
    // A literal: its length is known here, so that copying it takes an instruction or two.
    template <std::size_t size>
    TextStream& operator<<(const char (&literal)[size]) {
        constexpr std::size_t characters = size - 1;
        if constexpr (characters > 0) // memcpy wants a buffer even for nothing
            std::memcpy(roomFor(characters), literal, characters);
        length += characters;
        return *this;
    }
    TextStream& operator<<(char character) {
        *roomFor(1) = character;
        ++length;
        return *this;
    }
    template <std::integral Number>
    TextStream& operator<<(Number number) {
        char* const place = roomFor(longestNumber);
        length += static_cast<std::size_t>(std::to_chars(place, place + longestNumber, number).ptr -
                                           place);
        return *this;
    }
    TextStream& operator<<(double number) {
        constexpr int significantDigits = 6;
        char* const place = roomFor(longestNumber);
        length +=
            static_cast<std::size_t>(std::to_chars(place, place + longestNumber, number,
                                                   std::chars_format::general, significantDigits)
                                         .ptr -
                                     place);
        return *this;
    }

    void fill(std::size_t count, char character) {
        std::fill_n(roomFor(count), count, character);
        length += count;
    }
    std::string_view view() const { return {buffer.get(), length}; }
    std::string str() const { return std::string(view()); }
    void clear() { length = 0; }

    // From now on the sink takes what is written whenever it comes to more than so many bytes;
    // view() is what it has not taken yet. The sink is borrowed.
    void passOn(TextSink& sink_, std::size_t limit_) {
        sink = &sink_;
        limit = limit_;
    }

    // Exchanges texts with the other stream, and where they are passed on to, without a copy.
    void swap(TextStream& other) noexcept {
        std::swap(buffer, other.buffer);
        std::swap(length, other.length);
        std::swap(capacity, other.capacity);
        std::swap(allocated, other.allocated);
        std::swap(sink, other.sink);
        std::swap(limit, other.limit);
    }

private:
    struct Release {
        void operator()(char* memory) const noexcept { std::free(memory); }
    };

    // The place to write the next bytes to.
    char* roomFor(std::size_t bytes) {
        if (bytes > capacity - length) [[unlikely]]
            makeRoom(bytes);
        return buffer.get() + length;
    }

    void makeRoom(std::size_t bytes);
    void prepare(std::size_t bytes);
    void grow(std::size_t bytes);

    static constexpr std::size_t longestNumber = 32;

    std::unique_ptr<char, Release> buffer;
    std::size_t length = 0;    // bytes written
    std::size_t capacity = 0;  // bytes of the buffer that are ready to be written
    std::size_t allocated = 0; // bytes that the buffer has room for
    TextSink* sink = nullptr;
    std::size_t limit = std::numeric_limits<std::size_t>::max(); // bytes held at most for the sink
};

} // namespace Orvane
