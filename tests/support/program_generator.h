// Programs made up by chance, for tests that want many of them.
//
// A generator asks a Choices for every decision that it makes. With SeededChoices the same seed
// gives the same program on every machine; with ByteChoices the bytes of a fuzzer's input decide,
// so that changing a byte changes the program and not its form. When a ByteChoices has run out of
// bytes it answers 0 for ever, and every decision is arranged so that 0 leads to an end.
//
// The benchmark has a generator of its own: its texts must stay as they are for as long as its
// figures are compared, while these change with the language.
//
//     SeededChoices choices(17);
//     std::string source = generateProgram(ProgramStyle::sensible, choices);
#pragma once

#include <cstddef>
#include <cstdint>
#include <random>
#include <span>
#include <string>
#include <string_view>

namespace Orvane {

class Choices {
public:
    Choices() = default;
    Choices(const Choices&) = delete;
    Choices& operator=(const Choices&) = delete;
    virtual ~Choices() = default;

    // A number from 0 to bound - 1; `bound` is at least 1.
    virtual std::size_t below(std::size_t bound) = 0;

    // True once in `count` times, and never when there is nothing left to choose from.
    bool oneIn(std::size_t count) { return below(count) == count - 1 && count > 1; }

    template <class Items>
    const auto& pick(const Items& items) {
        return items[below(std::size(items))];
    }
};

class SeededChoices final : public Choices {
public:
    explicit SeededChoices(std::uint64_t seed) : random(seed) {}
    std::size_t below(std::size_t bound) override {
        return static_cast<std::size_t>(random() % bound);
    }

private:
    std::mt19937_64 random;
};

// The bytes must outlive it. Small bounds take one byte, larger ones two.
class ByteChoices final : public Choices {
public:
    explicit ByteChoices(std::span<const std::uint8_t> bytes_) : bytes(bytes_) {}
    std::size_t below(std::size_t bound) override;

private:
    std::size_t nextByte();

    std::span<const std::uint8_t> bytes;
};

enum class ProgramStyle {
    // Programs as one would write them: they compile without an error of the C++ compiler, loops
    // end, positions exist. They import libraries of the standard set only.
    sensible,
    // Everything that the grammar accepts, however odd. They parse; whether the C++ compiler takes
    // them is another matter. A colour may be one that the code generator refuses.
    wild,
};

// One source text, of some 20 to 300 lines.
std::string generateProgram(ProgramStyle style, Choices& choices);
std::string generateProgram(ProgramStyle style, std::uint64_t seed);

// The two styles; see sensible_programs.cpp and wild_programs.cpp.
std::string generateSensibleProgram(Choices& choices);
std::string generateWildProgram(Choices& choices);

} // namespace Orvane
