#include "frontend/keywords.h"

namespace Orvane {

namespace {

struct Slot {
    std::string_view word;
    TokenType type = TokenType::Identifier;
};

constexpr std::size_t slotCount = 512; // a power of two, several times the number of words
using Slots = std::array<Slot, slotCount>;

constexpr std::size_t slotOf(std::string_view word) {
    const auto byte = [&](std::size_t index) { return static_cast<unsigned char>(word[index]); };
    return (byte(0) * 7U + byte(word.size() / 2) * 31U + byte(word.size() - 1) * 3U +
            word.size() * 61U) %
           slotCount;
}

// The slot of the word, or the free slot where it belongs.
constexpr std::size_t find(const Slots& slots, std::string_view word) {
    std::size_t slot = slotOf(word);
    while (!slots[slot].word.empty() && slots[slot].word != word) slot = (slot + 1) % slotCount;
    return slot;
}

// Later words win: the built-in types come first, so that those with a keyword kind keep it.
constexpr Slots fillSlots() {
    Slots slots{};
    const auto enter = [&](std::string_view word, TokenType type) {
        slots[find(slots, word)] = {word, type};
    };
    for (const std::string_view name : standardTypes) enter(name, TokenType::TypeKeyword);
#define TOKEN(name, spelling)                                                                      \
    if (numberOf(TokenType::name) < keywordCount) enter(spelling, TokenType::name);
#include "frontend/tokens.def"
#undef TOKEN
    return slots;
}

constexpr Slots slots = fillSlots();

} // namespace

TokenType wordKind(std::string_view word) { return slots[find(slots, word)].type; }

} // namespace Orvane
