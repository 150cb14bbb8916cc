// Memory of one syntax tree.
//
// Nodes, their child lists and their names are carved from one Arena and released with it in one
// step. Destroying a tree therefore never recurses, however long a chain such as a + b + c + ...
// is, and building one costs no allocation per node.
//
//     Arena arena;
//     uptr<IdentifierExpr> name = arena.make<IdentifierExpr>(arena.text("speed"));
#pragma once

#include <cstring>
#include <memory>
#include <memory_resource>
#include <string_view>
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

class Arena {
public:
    Arena() = default;
    Arena(const Arena&) = delete;
    Arena& operator=(const Arena&) = delete;
    ~Arena() {
        for (auto entry = endings.rbegin(); entry != endings.rend(); ++entry)
            entry->destroy(entry->node);
    }

    // Builds a node. A type that says holdsOnlyArenaMemory is never destroyed, only released; any
    // other is destroyed with the arena.
    template <class Node, class... Arguments>
    uptr<Node> make(Arguments&&... arguments) {
        void* memory = pool.allocate(sizeof(Node), alignof(Node));
        Node* node = new (memory) Node(std::forward<Arguments>(arguments)...);
        if constexpr (!Node::holdsOnlyArenaMemory)
            endings.push_back({node, [](void* object) { static_cast<Node*>(object)->~Node(); }});
        return uptr<Node>(node);
    }

    // A copy of the text that lives as long as the arena.
    std::string_view text(std::string_view source) {
        if (source.empty()) return {};
        char* copy = static_cast<char*>(pool.allocate(source.size(), 1));
        std::memcpy(copy, source.data(), source.size());
        return {copy, source.size()};
    }

    std::pmr::memory_resource* resource() { return &pool; }

private:
    struct Ending {
        void* node;
        void (*destroy)(void*);
    };

    // The first block is small, so that a tree of one page costs no more than a page.
    static constexpr std::size_t firstBlockBytes = 4096;
    std::pmr::monotonic_buffer_resource pool{firstBlockBytes};
    std::vector<Ending> endings;
};

// A growing list inside an arena; it can only be made with one, never on the general heap.
template <class Item>
class List : public std::pmr::vector<Item> {
public:
    explicit List(Arena& arena) : std::pmr::vector<Item>(arena.resource()) {}
    // For containers in an arena, which hand their own memory on to the lists inside them.
    List(List&& other, const std::pmr::polymorphic_allocator<Item>& allocator)
        : std::pmr::vector<Item>(std::move(other), allocator) {}
    List(List&& other) noexcept = default;
    List& operator=(List&& other) = default;
};

} // namespace Orvane
