// Names of which each stands for another one, and names that are only looked up.
//
// A generator asks for the type of every declaration and remembers every variable, so that a large
// source has a hundred thousand questions and half as many names. Names and what they stand for are
// views, most often of the tree's texts; their owners must outlive the map.
//
//     NameMap types = {{"Count", "int"}};
//     types.set("n", "Count");
//     types.find("n");       // "Count"
//     types.find("other");   // std::nullopt
//     NameBinding loop(types, "n", "double"); // until it ends
#pragma once

#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <optional>
#include <string_view>
#include <utility>
#include <vector>

namespace Orvane {

class NameMap {
public:
    NameMap() = default;
    NameMap(std::initializer_list<std::pair<std::string_view, std::string_view>> pairs) {
        for (const auto& [name, target] : pairs) set(name, target);
    }

    // What the name stands for; nothing for a name that is not there.
    std::optional<std::string_view> find(std::string_view name) const;
    bool contains(std::string_view name) const { return find(name).has_value(); }

    // From now on the name stands for the target, whatever it stood for before.
    void set(std::string_view name, std::string_view target);
    void erase(std::string_view name);
    void clear();

    std::size_t size() const { return count; }
    bool empty() const { return count == 0; }
    friend bool operator==(const NameMap& first, const NameMap& second);

private:
    // Entries stand in the order in which they came, and the slots say where: the slot of a name is
    // the first one from its hash on that is free or has an entry of this name. An erased entry
    // keeps its place for the name's return.
    struct Entry {
        std::string_view name;
        const char* target;
        std::uint32_t targetLength; // bytes
        bool isThere;
    };
    struct Slot {
        std::uint32_t hash = 0;
        std::uint32_t entry = 0; // from 1; 0 for a free slot
    };

    std::size_t slotOf(std::string_view name, std::uint32_t hash) const;
    void growSlots();

    std::vector<Entry> entries;
    std::vector<Slot> slots; // a power of two, at least twice as many as entries; or none
    std::size_t count = 0;   // entries that are there
};

// Binds a name in a map while it lives and puts back what the map held under that name alone:
// names that were declared meanwhile stay.
class NameBinding {
public:
    NameBinding(NameMap& map_, std::string_view name_, std::string_view target)
        : map(map_), name(name_), hidden(map_.find(name_)) {
        map.set(name, target);
    }
    NameBinding(const NameBinding&) = delete;
    NameBinding& operator=(const NameBinding&) = delete;
    ~NameBinding() {
        if (hidden)
            map.set(name, *hidden);
        else
            map.erase(name);
    }

private:
    NameMap& map;
    std::string_view name;
    std::optional<std::string_view> hidden;
};

class NameTable {
public:
    void insert(std::string_view name) { names.set(name, name); }
    bool contains(std::string_view name) const { return names.contains(name); }
    void clear() { names.clear(); }

private:
    NameMap names;
};

} // namespace Orvane
