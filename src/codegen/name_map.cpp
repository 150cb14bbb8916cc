#include "codegen/name_map.h"

#include <algorithm>
#include <cstring>

namespace Orvane {

namespace {

constexpr std::size_t firstSlots = 16;

template <class Number>
std::uint64_t load(const char* bytes) {
    Number number;
    std::memcpy(&number, bytes, sizeof number);
    return number;
}

std::uint64_t mix(std::uint64_t bits) {
    constexpr std::uint64_t oddFactor = 0x9E37'79B9'7F4A'7C15; // 2 to the 64 by the golden ratio
    bits *= oddFactor;
    return bits ^ (bits >> 32);
}

// Names are short: most are covered by their first and last eight bytes, which may overlap.
std::uint32_t hashOf(std::string_view name) {
    const char* const start = name.data();
    const std::size_t length = name.size();
    std::uint64_t bits = length;
    if (length >= 8) {
        for (std::size_t at = 0; at + 8 < length; at += 8)
            bits = mix(bits ^ load<std::uint64_t>(start + at));
        bits ^= load<std::uint64_t>(start + length - 8);
    } else if (length >= 4) {
        bits = mix(bits ^ load<std::uint32_t>(start));
        bits ^= load<std::uint32_t>(start + length - 4);
    } else {
        for (const char character : name) bits = bits << 8 | static_cast<unsigned char>(character);
    }
    return static_cast<std::uint32_t>(mix(mix(bits)));
}

} // namespace

std::optional<std::string_view> NameMap::find(std::string_view name) const {
    if (slots.empty()) return std::nullopt;
    const Slot& slot = slots[slotOf(name, hashOf(name))];
    if (slot.entry == 0) return std::nullopt;
    const Entry& entry = entries[slot.entry - 1];
    if (!entry.isThere) return std::nullopt;
    return std::string_view(entry.target, entry.targetLength);
}

void NameMap::set(std::string_view name, std::string_view target) {
    if (slots.size() < (entries.size() + 1) * 2) growSlots();
    const std::uint32_t hash = hashOf(name);
    Slot& slot = slots[slotOf(name, hash)];
    if (slot.entry == 0) {
        entries.push_back({name, nullptr, 0, false});
        slot = {hash, static_cast<std::uint32_t>(entries.size())};
    }
    Entry& entry = entries[slot.entry - 1];
    if (!entry.isThere) ++count;
    entry = {name, target.data(), static_cast<std::uint32_t>(target.size()), true};
}

void NameMap::erase(std::string_view name) {
    if (slots.empty()) return;
    const Slot& slot = slots[slotOf(name, hashOf(name))];
    if (slot.entry == 0 || !entries[slot.entry - 1].isThere) return;
    entries[slot.entry - 1].isThere = false;
    --count;
}

void NameMap::clear() {
    entries.clear();
    slots.clear();
    count = 0;
}

// There always is a free slot: half of them are.
std::size_t NameMap::slotOf(std::string_view name, std::uint32_t hash) const {
    const std::size_t mask = slots.size() - 1;
    std::size_t at = hash & mask;
    for (; slots[at].entry != 0; at = (at + 1) & mask)
        if (slots[at].hash == hash && entries[slots[at].entry - 1].name == name) break;
    return at;
}

void NameMap::growSlots() {
    std::vector<Slot> larger(std::max(slots.size() * 2, firstSlots));
    const std::size_t mask = larger.size() - 1;
    for (const Slot& slot : slots) {
        if (slot.entry == 0) continue;
        std::size_t at = slot.hash & mask;
        while (larger[at].entry != 0) at = (at + 1) & mask;
        larger[at] = slot;
    }
    slots = std::move(larger);
}

bool operator==(const NameMap& first, const NameMap& second) {
    const auto isInSecond = [&](const NameMap::Entry& entry) {
        return !entry.isThere ||
               second.find(entry.name) == std::string_view(entry.target, entry.targetLength);
    };
    return first.size() == second.size() &&
           std::all_of(first.entries.begin(), first.entries.end(), isInSecond);
}

} // namespace Orvane
