// Memory of one syntax tree.
//
// Nodes and their child lists are carved from one Arena and released with it in one step.
// Destroying a tree therefore never recurses, however long a chain such as a + b + c + ... is, and
// building one costs no allocation per node.
//
//     Arena arena;
//     uptr<IdentifierExpr> name = arena.make<IdentifierExpr>(arena.text("speed"));
#pragma once

#include "frontend/large_memory.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <memory>
#include <memory_resource>
#include <new>
#include <string_view>
#include <type_traits>
#include <utility>
#include <vector>

namespace Orvane {

// The arena gives the memory back, so letting go of one node does nothing.
struct ReleasedWithArena {
    template <class Node>
    void operator()(Node*) const noexcept {}
};

// The one owner of a node: moves, never copies. The memory lives as long as the node's arena.
template <class Node>
using uptr = std::unique_ptr<Node, ReleasedWithArena>;

class Arena final : private std::pmr::memory_resource {
public:
    Arena() = default;
    Arena(const Arena&) = delete;
    Arena& operator=(const Arena&) = delete;
    ~Arena() override {
        for (auto entry = endings.rbegin(); entry != endings.rend(); ++entry)
            entry->destroy(entry->node);
    }

    // Builds a node. A type that says holdsOnlyArenaMemory is never destroyed, only released; any
    // other is destroyed with the arena, unless it says that it owns no memory.
    template <class Node, class... Arguments>
    uptr<Node> make(Arguments&&... arguments) {
        static_assert(alignof(Node) <= unit);
        void* memory = allocateBytes(sizeof(Node));
        Node* node = new (memory) Node(std::forward<Arguments>(arguments)...);
        if (needsEnding(*node))
            endings.push_back({node, [](void* object) { static_cast<Node*>(object)->~Node(); }});
        return uptr<Node>(node);
    }

    // A copy of the text that lives as long as the arena.
    std::string_view text(std::string_view source) {
        if (source.empty()) return {};
        char* copy = static_cast<char*>(allocateBytes(source.size()));
        std::memcpy(copy, source.data(), source.size());
        return {copy, source.size()};
    }

    // Takes memory that nobody reads any more, for what comes next: it has its pages already, and
    // the processor still has it at hand. Start and size are multiples of 8, and it must stay its
    // owner's for as long as the arena lives. Pieces that follow one another make one; of others
    // only the last is used.
    void reuse(void* start, std::size_t bytes) {
        std::byte* const piece = static_cast<std::byte*>(start);
        if (piece == next + available) {
            available += bytes;
        } else if (piece == spare + spareBytes) {
            spareBytes += bytes;
        } else {
            giveBack(spare, spareBytes);
            spare = piece;
            spareBytes = bytes;
        }
    }

    // Takes an owner of such memory, and lets it go behind the last node.
    template <class Owner>
    void keep(Owner owner) {
        kept.push_back(std::make_shared<Owner>(std::move(owner)));
    }

    // Says that hardly anything comes any more: what is left goes back to the system.
    void giveBackRest() {
        giveBack(next, available);
        giveBack(spare, spareBytes);
    }

    // Raw memory for as long as the arena lives, aligned for pointers and numbers.
    void* allocateBytes(std::size_t bytes) {
        const std::size_t rounded = (bytes + unit - 1) / unit * unit;
        if (rounded > available) [[unlikely]]
            return allocateInNewBlock(rounded);
        std::byte* const memory = next;
        next += rounded;
        available -= rounded;
        return memory;
    }

    // For standard containers inside the arena.
    std::pmr::memory_resource* resource() { return this; }

private:
    struct Ending {
        void* node;
        void (*destroy)(void*);
    };

    template <class Node>
    static bool needsEnding(const Node& node) {
        if constexpr (Node::holdsOnlyArenaMemory)
            return false;
        else if constexpr (requires { node.ownsMemory(); })
            return node.ownsMemory();
        else
            return true;
    }

    // The first block is small, so that a tree of one page costs no more than a page; the largest
    // bounds what the last one leaves unused. What would take much of a block gets one of its own,
    // and the rest of the current one stays in use.
    void* allocateInNewBlock(std::size_t bytes) {
        if (bytes <= spareBytes) {
            next = std::exchange(spare, nullptr);
            available = std::exchange(spareBytes, 0);
        } else if (bytes > largestBlockBytes / 4) {
            return newBlock(bytes);
        } else {
            available = std::max(bytes, nextBlockBytes);
            nextBlockBytes = std::min(nextBlockBytes * 2, largestBlockBytes);
            next = newBlock(available);
            expectFilling(next, available);
        }
        return allocateBytes(bytes);
    }

    std::byte* newBlock(std::size_t bytes) {
        blocks.push_back(std::make_unique_for_overwrite<std::byte[]>(bytes));
        return blocks.back().get();
    }

    void* do_allocate(std::size_t bytes, std::size_t) override { return allocateBytes(bytes); }
    void do_deallocate(void*, std::size_t, std::size_t) override {}
    bool do_is_equal(const std::pmr::memory_resource& other) const noexcept override {
        return this == &other;
    }

    static constexpr std::size_t unit = 8;
    static constexpr std::size_t firstBlockBytes = 4096;
    static constexpr std::size_t largestBlockBytes = fillingStep;

    std::byte* next = nullptr;  // the free rest of the last block
    std::size_t available = 0;  // and its size, a multiple of the unit
    std::byte* spare = nullptr; // memory to go on in before a new block is made
    std::size_t spareBytes = 0;
    std::size_t nextBlockBytes = firstBlockBytes;
    std::vector<std::unique_ptr<std::byte[]>> blocks;
    std::vector<Ending> endings;
    std::vector<std::shared_ptr<void>> kept; // owners of memory that is reused
};

// A growing list inside an arena; it can only be made with one, never on the general heap. What it
// has outgrown stays in the arena until the end, and its items are released, never destroyed.
template <class Item>
class List {
public:
    explicit List(Arena& arena_) : arena(&arena_) {}
    List(const List&) = delete;
    List& operator=(const List&) = delete;
    List(List&& other) noexcept
        : arena(other.arena), items(std::exchange(other.items, nullptr)),
          count(std::exchange(other.count, 0)), capacity(std::exchange(other.capacity, 0)) {}
    List& operator=(List&& other) noexcept {
        arena = other.arena;
        items = std::exchange(other.items, nullptr);
        count = std::exchange(other.count, 0);
        capacity = std::exchange(other.capacity, 0);
        return *this;
    }

    bool empty() const { return count == 0; }
    std::size_t size() const { return count; }
    Item* begin() { return items; }
    Item* end() { return items + count; }
    const Item* begin() const { return items; }
    const Item* end() const { return items + count; }
    Item& operator[](std::size_t index) { return items[index]; }
    const Item& operator[](std::size_t index) const { return items[index]; }
    Item& front() { return items[0]; }
    const Item& front() const { return items[0]; }
    Item& back() { return items[count - 1]; }
    const Item& back() const { return items[count - 1]; }

    void push_back(Item item) { emplace_back(std::move(item)); }
    template <class... Arguments>
    Item& emplace_back(Arguments&&... arguments) {
        if (count == capacity) grow();
        return *new (items + count++) Item(std::forward<Arguments>(arguments)...);
    }

private:
    // Most lists are the one branch of an `if` or the few arguments of a call.
    static constexpr std::uint32_t firstCapacity = 2;
    // From so many items on, what a list has outgrown goes back to the system.
    static constexpr std::uint32_t largeCount = std::uint32_t{1} << 17;

    void grow() {
        static_assert(alignof(Item) <= alignof(void*));
        capacity = capacity == 0 ? firstCapacity : capacity * 2;
        void* const memory = arena->allocateBytes(capacity * sizeof(Item));
        Item* const larger = static_cast<Item*>(memory);
        for (std::size_t index = 0; index < count; ++index)
            new (larger + index) Item(std::move(items[index]));
        if (count >= largeCount) giveBack(items, count * sizeof(Item));
        items = larger;
    }

    Arena* arena;
    Item* items = nullptr;
    std::uint32_t count = 0;
    std::uint32_t capacity = 0;
};

} // namespace Orvane
