// std::map<std::string, Value> and what it is made of, for programs that are built with runtime.o.
//
// As with lists (lists.h), the map of a value is one address here, of a tree that is made when the
// first entry comes. Objects are copied with each method call and dictionaries are searched by
// name, so a copy has its entries in one piece of memory, and a tree of many entries has a table of
// them by name beside it. It does all that a map does, by the same names; only an entry that
// extract() or merge() takes out changes its place in memory.
//
// The tree itself is that of the C++ library: its nodes, its iterators, its balancing.
#pragma once

#include <map>
#include <memory>
#include <string>

// Of the rest nothing is asked here that programs do not include anyway.
#ifdef ORVANE_COMPILED_ONCE
#include <algorithm>
#include <new>
#include <stdexcept>
#include <string_view>
#endif

struct Value;

namespace OrvaneValues {

using Link = std::_Rb_tree_node_base;

struct Name;

// The entries of a map and what is done to them. A map without entries mostly has no tree; one that
// was made stays until the map ends or is moved away.
template <class Element>
class EntriesCore {
protected:
    using size_type = std::size_t;
    using value_type = std::pair<const std::string, Element>;
    using Node = std::_Rb_tree_node<value_type>;

    struct Tree {
        Link header;
        size_type size = 0;
        // Nodes up to `behind` came with the tree, in one piece of memory and in their order. As
        // long as they are all that there is, `together` is their number, otherwise 0.
        size_type together = 0;
        Node* behind = nodes();
        // The nodes by name, or nothing: `slots` places, a power of two and at least twice as many
        // as there are nodes. A node stands in the first free place from that of its hash on, which
        // is the number that the upper bits of the hash make.
        Node** table = nullptr;
        size_type slots = 0;
        unsigned shift = 0;

        Tree() noexcept { becomeEmpty(); }
        Node* nodes() noexcept { return reinterpret_cast<Node*>(this + 1); }
        void becomeEmpty() noexcept;
        void addCopy(const value_type& entry);
        void link() noexcept;
        static Link* linkNodes(Node* first, size_type size, Link* parent, unsigned level) noexcept;
        void destroyNodes() noexcept;
        void destroyFrom(Link* node) noexcept;
        void giveBack(Link* node) noexcept;
        void insert(Node* node, Link* parent, bool isLeft) noexcept;
        void erase(Link* node) noexcept;
        void makeTable() noexcept;
        void dropTable() noexcept;
        void enter(Node* node) noexcept;
        void leave(Link* node) noexcept;
    };

    static value_type& entryOf(Link* node) { return *static_cast<Node*>(node)->_M_valptr(); }
    // The tree comes first: when there is no memory for it, there is no node that would be lost.
    template <class... Arguments>
    Node* makeNode(Arguments&&... arguments) const {
        made();
        std::unique_ptr<Node> node(new Node);
        ::new (node->_M_valptr()) value_type(std::forward<Arguments>(arguments)...);
        return node.release();
    }

    [[gnu::always_inline]] Tree& made() const { return own ? *own : make(); }
    Tree& make() const;
    void release() noexcept;
    void copy(const EntriesCore& other);
    void clear() noexcept;
    Element& entry(const std::string& key);
    Element& entryNamed(const char* letters, size_type size);
    Element& existing(const std::string& key) const;
    Link* search(const std::string& key) const noexcept;
    Link* bound(const std::string& key, bool isAbove) const;
    std::pair<Link*, bool> insert(Node* node);
    Link* erase(Link* node) noexcept;
    bool isEqualTo(const EntriesCore& other) const;

    // Made by whoever needs it first, also by what only reads: hence not without care.
    mutable Tree* own = nullptr;

private:
    // Up to this many entries are looked at one by one.
    static constexpr size_type few = 8;

    static Name nameOf(Link* node);
    Element& entryOtherwise(const std::string& key);
    Element& entryNamedOtherwise(const char* letters, size_type size);
    Link* search(const Name& name) const noexcept;
    Link* searchFew(const Name& name) const noexcept;
    template <class IsTheOne>
    Link* searchFrom(size_type hash, IsTheOne isTheOne) const noexcept;
    Link* searchTable(const Name& name) const noexcept;
    Link* searchTableShort(const Name& name) const noexcept;
    Link* searchTree(const std::string& key) const noexcept;
};

// The interface of std::map.
template <class Element>
class Entries : EntriesCore<Element> {
    using Core = EntriesCore<Element>;
    using Core::entryOf;
    using Core::made;
    using Core::own;

public:
    using key_type = std::string;
    using mapped_type = Element;
    using value_type = std::pair<const std::string, Element>;
    using size_type = std::size_t;
    using difference_type = std::ptrdiff_t;
    using key_compare = std::less<std::string>;
    using allocator_type = std::allocator<value_type>;
    using reference = value_type&;
    using const_reference = const value_type&;
    using pointer = value_type*;
    using const_pointer = const value_type*;
    using iterator = std::_Rb_tree_iterator<value_type>;
    using const_iterator = std::_Rb_tree_const_iterator<value_type>;
    using reverse_iterator = std::reverse_iterator<iterator>;
    using const_reverse_iterator = std::reverse_iterator<const_iterator>;

    struct value_compare {
        bool operator()(const value_type& left, const value_type& right) const {
            return left.first < right.first;
        }
    };

    // An entry that was taken out, or none.
    class node_type {
    public:
        using key_type = std::string;
        using mapped_type = Element;
        using allocator_type = Entries::allocator_type;

        bool empty() const noexcept { return !entry; }
        explicit operator bool() const noexcept { return !empty(); }
        std::string& key() const { return entry->first; }
        Element& mapped() const { return entry->second; }
        allocator_type get_allocator() const noexcept { return {}; }
        void swap(node_type& other) noexcept { entry.swap(other.entry); }

    private:
        friend Entries;
        std::unique_ptr<std::pair<std::string, Element>> entry;
    };

    struct insert_return_type {
        iterator position;
        bool inserted;
        node_type node;
    };

    Entries() noexcept = default;
    explicit Entries(const key_compare&, const allocator_type& = {}) noexcept {}
    explicit Entries(const allocator_type&) noexcept {}
    template <class Place, class = typename std::iterator_traits<Place>::iterator_category>
    Entries(Place first, Place last, const key_compare& = {}, const allocator_type& = {})
        : Entries() {
        insert(first, last);
    }
    Entries(std::initializer_list<value_type> entries, const key_compare& = {},
            const allocator_type& = {})
        : Entries() {
        insert(entries);
    }
    Entries(const Entries& other) : Entries() { this->copy(other); }
    Entries(const Entries& other, const allocator_type&) : Entries(other) {}
    [[gnu::always_inline]] Entries(Entries&& other) noexcept { swap(other); }
    Entries(Entries&& other, const allocator_type&) noexcept : Entries(std::move(other)) {}
    Entries& operator=(const Entries& other) {
        if (this != &other) Entries(other).swap(*this);
        return *this;
    }
    // What this map had ends here; the other may be a part of it.
    Entries& operator=(Entries&& other) noexcept {
        Entries(std::move(other)).swap(*this);
        return *this;
    }
    Entries& operator=(std::initializer_list<value_type> entries) {
        return *this = Entries(entries);
    }
    [[gnu::always_inline]] ~Entries() {
        if (own) this->release();
    }
    allocator_type get_allocator() const noexcept { return {}; }
    key_compare key_comp() const { return {}; }
    value_compare value_comp() const { return {}; }

    Element& at(const std::string& key) { return this->existing(key); }
    const Element& at(const std::string& key) const { return this->existing(key); }
    Element& operator[](const std::string& key) { return this->entry(key); }
    // The same for a name that is no std::string.
    Element& named(const char* letters, size_type size) { return this->entryNamed(letters, size); }

    iterator begin() { return iterator(made().header._M_left); }
    iterator end() { return iterator(&made().header); }
    const_iterator begin() const { return cbegin(); }
    const_iterator end() const { return cend(); }
    const_iterator cbegin() const { return const_iterator(made().header._M_left); }
    const_iterator cend() const { return const_iterator(&made().header); }
    reverse_iterator rbegin() { return reverse_iterator(end()); }
    reverse_iterator rend() { return reverse_iterator(begin()); }
    const_reverse_iterator rbegin() const { return crbegin(); }
    const_reverse_iterator rend() const { return crend(); }
    const_reverse_iterator crbegin() const { return const_reverse_iterator(cend()); }
    const_reverse_iterator crend() const { return const_reverse_iterator(cbegin()); }

    // Whether there is a tree, empty or not.
    [[gnu::always_inline]] bool isMade() const noexcept { return own; }
    [[gnu::always_inline]] bool empty() const noexcept { return size() == 0; }
    [[gnu::always_inline]] size_type size() const noexcept { return own ? own->size : 0; }
    size_type max_size() const noexcept { return size_type(-1) / 2 / sizeof(typename Core::Node); }

    void clear() noexcept { Core::clear(); }
    std::pair<iterator, bool> insert(const value_type& entry) {
        return try_emplace(entry.first, entry.second);
    }
    std::pair<iterator, bool> insert(value_type&& entry) {
        return try_emplace(entry.first, std::move(entry.second));
    }
    template <class Entry,
              class = std::enable_if_t<std::is_constructible<value_type, Entry&&>::value>>
    std::pair<iterator, bool> insert(Entry&& entry) {
        return emplace(std::forward<Entry>(entry));
    }
    iterator insert(const_iterator, const value_type& entry) { return insert(entry).first; }
    iterator insert(const_iterator, value_type&& entry) { return insert(std::move(entry)).first; }
    template <class Entry,
              class = std::enable_if_t<std::is_constructible<value_type, Entry&&>::value>>
    iterator insert(const_iterator, Entry&& entry) {
        return emplace(std::forward<Entry>(entry)).first;
    }
    template <class Place, class = typename std::iterator_traits<Place>::iterator_category>
    void insert(Place first, Place last) {
        for (; first != last; ++first) insert(*first);
    }
    void insert(std::initializer_list<value_type> entries) {
        insert(entries.begin(), entries.end());
    }
    template <class... Arguments>
    std::pair<iterator, bool> emplace(Arguments&&... arguments) {
        const auto done = Core::insert(this->makeNode(std::forward<Arguments>(arguments)...));
        return {iterator(done.first), done.second};
    }
    template <class... Arguments>
    iterator emplace_hint(const_iterator, Arguments&&... arguments) {
        return emplace(std::forward<Arguments>(arguments)...).first;
    }
    template <class Key, class... Arguments>
    std::pair<iterator, bool> try_emplace(Key&& key, Arguments&&... arguments) {
        if (Link* found = this->search(key)) return {iterator(found), false};
        return emplace(std::piecewise_construct, std::forward_as_tuple(std::forward<Key>(key)),
                       std::forward_as_tuple(std::forward<Arguments>(arguments)...));
    }
    template <class Key, class... Arguments>
    iterator try_emplace(const_iterator, Key&& key, Arguments&&... arguments) {
        return try_emplace(std::forward<Key>(key), std::forward<Arguments>(arguments)...).first;
    }
    template <class Key, class Given>
    std::pair<iterator, bool> insert_or_assign(Key&& key, Given&& given) {
        Link* found = this->search(key);
        if (!found) return emplace(std::forward<Key>(key), std::forward<Given>(given));
        entryOf(found).second = std::forward<Given>(given);
        return {iterator(found), false};
    }
    template <class Key, class Given>
    iterator insert_or_assign(const_iterator, Key&& key, Given&& given) {
        return insert_or_assign(std::forward<Key>(key), std::forward<Given>(given)).first;
    }
    node_type extract(const_iterator place) {
        node_type taken;
        auto& entry = entryOf(linkOf(place));
        taken.entry.reset(
            new std::pair<std::string, Element>(entry.first, std::move(entry.second)));
        erase(place);
        return taken;
    }
    node_type extract(const std::string& key) {
        Link* found = this->search(key);
        return found ? extract(const_iterator(found)) : node_type();
    }
    insert_return_type insert(node_type&& node) {
        if (!node) return {end(), false, {}};
        if (Link* found = this->search(node.key()))
            return {iterator(found), false, std::move(node)};
        const iterator place = emplace(std::move(node.key()), std::move(node.mapped())).first;
        node.entry.reset();
        return {place, true, {}};
    }
    iterator insert(const_iterator, node_type&& node) {
        auto done = insert(std::move(node));
        node = std::move(done.node);
        return done.position;
    }
    void merge(Entries& other) {
        for (iterator place = other.begin(); place != other.end();) {
            const iterator entry = place++;
            if (count(entry->first) == 0) insert(other.extract(entry));
        }
    }
    void merge(Entries&& other) { merge(other); }
    iterator erase(const_iterator place) { return iterator(Core::erase(linkOf(place))); }
    iterator erase(iterator place) { return iterator(Core::erase(place._M_node)); }
    iterator erase(const_iterator first, const_iterator last) {
        while (first != last) first = erase(first);
        return iterator(linkOf(last));
    }
    size_type erase(const std::string& key) {
        Link* found = this->search(key);
        if (found) Core::erase(found);
        return found ? 1 : 0;
    }
    [[gnu::always_inline]] void swap(Entries& other) noexcept { std::swap(own, other.own); }

    size_type count(const std::string& key) const { return this->search(key) ? 1 : 0; }
    iterator find(const std::string& key) { return placeOr(this->search(key)); }
    const_iterator find(const std::string& key) const { return placeOr(this->search(key)); }
    iterator lower_bound(const std::string& key) { return iterator(this->bound(key, false)); }
    const_iterator lower_bound(const std::string& key) const {
        return iterator(this->bound(key, false));
    }
    iterator upper_bound(const std::string& key) { return iterator(this->bound(key, true)); }
    const_iterator upper_bound(const std::string& key) const {
        return iterator(this->bound(key, true));
    }
    std::pair<iterator, iterator> equal_range(const std::string& key) {
        return {lower_bound(key), upper_bound(key)};
    }
    std::pair<const_iterator, const_iterator> equal_range(const std::string& key) const {
        return {lower_bound(key), upper_bound(key)};
    }

    bool isEqualTo(const Entries& other) const { return Core::isEqualTo(other); }

private:
    static Link* linkOf(const_iterator place) { return const_cast<Link*>(place._M_node); }
    iterator placeOr(Link* found) const { return iterator(found ? found : &made().header); }
};

#ifdef ORVANE_COMPILED_ONCE

// A name that is searched: its first and its last eight letters as numbers, which are all of it up
// to 16. Of a shorter one than eight both are the whole, with zeros behind its letters.
struct Name {
    const char* letters;
    std::size_t size;
    // Which bits of eight letters belong to the name, and how many letters are before the last.
    unsigned long long mask;
    std::size_t before;
    unsigned long long first, last;

    explicit Name(const std::string& text) noexcept;
    Name(const char* text, std::size_t length) noexcept;
    bool isShort() const noexcept { return size <= 16; }
    bool startsAndEndsAs(const std::string& text) const noexcept;
    bool isThatOf(const std::string& text) const noexcept;
    std::size_t hash() const noexcept;
    std::size_t hashShort() const noexcept;

private:
    Name(const char* text, std::size_t length, std::size_t upToEight) noexcept;
};

// The bits of no letter, of one, and so on.
constexpr unsigned long long masks[] = {0,           ~0ull >> 56, ~0ull >> 48,
                                        ~0ull >> 40, ~0ull >> 32, ~0ull >> 24,
                                        ~0ull >> 16, ~0ull >> 8,  ~0ull};

template <class Number>
[[gnu::always_inline]] inline unsigned long long numberAt(const char* letters) noexcept {
    Number number;
    __builtin_memcpy(&number, letters, sizeof(number));
    return number;
}

[[gnu::always_inline]] inline unsigned long long eightAt(const char* letters) noexcept {
    return numberAt<unsigned long long>(letters);
}

// Where no more can be read than fewer than eight letters they are read from both ends, some twice.
inline unsigned long long fewAt(const char* letters, std::size_t size) noexcept {
    if (size >= 4) {
        return numberAt<unsigned>(letters) | numberAt<unsigned>(letters + size - 4)
                                                 << 8 * (size - 4);
    }
    if (size == 0) return 0;
    const auto letter = [&](std::size_t at) {
        return numberAt<unsigned char>(letters + at) << 8 * at;
    };
    return letter(0) | letter(size / 2) | letter(size - 1);
}

[[gnu::always_inline]] inline Name::Name(const char* text, std::size_t length,
                                         std::size_t upToEight) noexcept
    : letters(text), size(length), mask(masks[upToEight]), before(length - upToEight) {}

// Eight bytes can be read of every text, however short it is.
[[gnu::always_inline]] inline Name::Name(const std::string& text) noexcept
    : Name(text.data(), text.size(), text.size() < 8 ? text.size() : 8) {
    first = eightAt(letters) & mask;
    last = eightAt(letters + before) & mask;
}

inline Name::Name(const char* text, std::size_t length) noexcept
    : Name(text, length, length < 8 ? length : 8) {
    first = length < 8 ? fewAt(text, length) : eightAt(text);
    last = length < 8 ? first : eightAt(text + before);
}

[[gnu::always_inline]] inline bool Name::startsAndEndsAs(const std::string& text) const noexcept {
    if (text.size() != size) return false;
    const char* its = text.data();
    return (((eightAt(its) ^ first) | (eightAt(its + before) ^ last)) & mask) == 0;
}

[[gnu::always_inline]] inline bool Name::isThatOf(const std::string& text) const noexcept {
    return startsAndEndsAs(text) &&
           (isShort() || __builtin_memcmp(letters, text.data(), size) == 0);
}

// Multiplied by odd numbers without pattern: every letter has a part in the upper bits.
[[gnu::always_inline]] inline std::size_t Name::hashShort() const noexcept {
    return first * 0x9E3779B97F4A7C15 ^ (last + size) * 0xC2B2AE3D27D4EB4F;
}

inline std::size_t Name::hash() const noexcept {
    return isShort() ? hashShort() : std::hash<std::string_view>()({letters, size});
}

template <class Element>
[[gnu::always_inline]] inline Name EntriesCore<Element>::nameOf(Link* node) {
    return Name(entryOf(node).first);
}

template <class Element>
void EntriesCore<Element>::Tree::becomeEmpty() noexcept {
    header._M_color = std::_S_red;
    header._M_parent = nullptr;
    header._M_left = header._M_right = &header;
    size = together = 0;
}

// Short names are copied as the values' own short texts are.
template <class Element>
struct CopiedName {
    const std::string& name;
    [[gnu::always_inline]] operator std::string() const {
        return name.size() <= 15 ? Element::shortText(name) : name;
    }
};

template <class Element>
[[gnu::always_inline]] inline void EntriesCore<Element>::Tree::addCopy(const value_type& entry) {
    ::new ((nodes() + size)->_M_valptr()) value_type(
        std::piecewise_construct, std::forward_as_tuple(CopiedName<Element>{entry.first}),
        std::forward_as_tuple(entry.second));
    ++size;
}

// Nodes that lie in their order become a tree whose levels are full but for the last one, which is
// red.
template <class Element>
void EntriesCore<Element>::Tree::link() noexcept {
    const unsigned levels = 64 - static_cast<unsigned>(__builtin_clzll(size));
    header._M_parent = linkNodes(nodes(), size, &header, levels);
    header._M_parent->_M_color = std::_S_black;
    header._M_left = nodes();
    header._M_right = nodes() + size - 1;
    behind = nodes() + size;
    together = size;
}

template <class Element>
Link* EntriesCore<Element>::Tree::linkNodes(Node* first, size_type size, Link* parent,
                                            unsigned level) noexcept {
    if (size == 0) return nullptr;
    Node* middle = first + size / 2;
    middle->_M_color = level == 1 ? std::_S_red : std::_S_black;
    middle->_M_parent = parent;
    middle->_M_left = linkNodes(first, size / 2, middle, level - 1);
    middle->_M_right = linkNodes(middle + 1, size - size / 2 - 1, middle, level - 1);
    return middle;
}

template <class Element>
void EntriesCore<Element>::Tree::destroyNodes() noexcept {
    if (together == 0) return destroyFrom(header._M_parent);
    for (Node* node = nodes(); node != behind; ++node) entryOf(node).~value_type();
}

template <class Element>
void EntriesCore<Element>::Tree::destroyFrom(Link* node) noexcept {
    while (node) {
        destroyFrom(node->_M_right);
        Link* left = node->_M_left;
        giveBack(node);
        node = left;
    }
}

template <class Element>
[[gnu::noinline]] void EntriesCore<Element>::Tree::giveBack(Link* node) noexcept {
    entryOf(node).~value_type();
    if (std::less<Link*>()(node, nodes()) || !std::less<Link*>()(node, behind))
        delete static_cast<Node*>(node);
}

template <class Element>
void EntriesCore<Element>::Tree::insert(Node* node, Link* parent, bool isLeft) noexcept {
    std::_Rb_tree_insert_and_rebalance(isLeft, node, parent, header);
    ++size;
    together = 0;
    if (!table) return;
    if (2 * size > slots) return dropTable();
    enter(node);
}

template <class Element>
void EntriesCore<Element>::Tree::erase(Link* node) noexcept {
    if (table) leave(node);
    giveBack(std::_Rb_tree_rebalance_for_erase(node, header));
    --size;
    together = 0;
}

// Twice the places that are needed now: the table is given up when the entries have doubled.
// Without the memory for it the tree is searched.
template <class Element>
[[gnu::noinline]] void EntriesCore<Element>::Tree::makeTable() noexcept {
    slots = 16;
    for (shift = 60; slots < 4 * size; --shift) slots *= 2;
    table = new (std::nothrow) Node*[slots]();
    if (!table) return;
    for (Link* node = header._M_left; node != &header; node = std::_Rb_tree_increment(node))
        enter(static_cast<Node*>(node));
}

template <class Element>
void EntriesCore<Element>::Tree::dropTable() noexcept {
    delete[] table;
    table = nullptr;
}

template <class Element>
void EntriesCore<Element>::Tree::enter(Node* node) noexcept {
    size_type at = nameOf(node).hash() >> shift;
    while (table[at &= slots - 1]) ++at;
    table[at] = node;
}

// Nodes behind the one that leaves move up, unless they stood before their first place then.
template <class Element>
void EntriesCore<Element>::Tree::leave(Link* node) noexcept {
    size_type free = nameOf(node).hash() >> shift;
    while (table[free &= slots - 1] != node) ++free;
    for (size_type at = free + 1; table[at &= slots - 1]; ++at) {
        const size_type passed = at - (nameOf(table[at]).hash() >> shift);
        if ((passed & (slots - 1)) < ((at - free) & (slots - 1))) continue;
        table[free] = table[at];
        free = at;
    }
    table[free] = nullptr;
}

// For a map that has no tree.
template <class Element>
[[gnu::flatten]] void EntriesCore<Element>::copy(const EntriesCore& other) {
    if (!other.own || other.own->size == 0) return;
    Tree& from = *other.own;
    void* memory = ::operator new(sizeof(Tree) + from.size * sizeof(Node));
    Tree* to = ::new (memory) Tree;
    try {
        Link* node = from.header._M_left;
        while (to->size < from.size) {
            to->addCopy(entryOf(node));
            node = from.together ? static_cast<Node*>(node) + 1 : std::_Rb_tree_increment(node);
        }
    } catch (...) {
        for (Node* node = to->nodes(); to->size != 0; ++node, --to->size)
            entryOf(node).~value_type();
        ::operator delete(memory);
        throw;
    }
    to->link();
    own = to;
}

// Two threads may look at one map at the same time: the tree that comes first is the one.
template <class Element>
[[gnu::noinline]] auto EntriesCore<Element>::make() const -> Tree& {
    Tree* first = nullptr;
    Tree* fresh = ::new (::operator new(sizeof(Tree))) Tree;
    if (__atomic_compare_exchange_n(&own, &first, fresh, false, __ATOMIC_ACQ_REL, __ATOMIC_ACQUIRE))
        return *fresh;
    ::operator delete(fresh);
    return *first;
}

template <class Element>
[[gnu::noinline]] void EntriesCore<Element>::release() noexcept {
    own->destroyNodes();
    delete[] own->table;
    ::operator delete(own);
}

template <class Element>
void EntriesCore<Element>::clear() noexcept {
    if (!own) return;
    own->destroyNodes();
    own->dropTable();
    own->becomeEmpty();
}

template <class Element>
Link* EntriesCore<Element>::search(const std::string& key) const noexcept {
    if (!own) return nullptr;
    return own->size <= few || own->table ? search(Name(key)) : searchTree(key);
}

// For few entries, or with a table.
template <class Element>
[[gnu::noinline]] Link* EntriesCore<Element>::search(const Name& name) const noexcept {
    return own->size <= few ? searchFew(name) : searchTable(name);
}

template <class Element>
[[gnu::always_inline]] inline Link*
EntriesCore<Element>::searchFew(const Name& name) const noexcept {
    Link* node = own->header._M_left;
    while (node != &own->header && !name.isThatOf(entryOf(node).first))
        node = std::_Rb_tree_increment(node);
    return node == &own->header ? nullptr : node;
}

// The node in the table whose name is the one, looked for from the place of the hash on.
template <class Element>
template <class IsTheOne>
[[gnu::always_inline]] inline Link*
EntriesCore<Element>::searchFrom(size_type hash, IsTheOne isTheOne) const noexcept {
    for (size_type at = hash >> own->shift;; ++at) {
        Link* node = own->table[at & (own->slots - 1)];
        if (!node || isTheOne(entryOf(node).first)) return node;
    }
}

template <class Element>
Link* EntriesCore<Element>::searchTable(const Name& name) const noexcept {
    return searchFrom(name.hash(), [&](const std::string& other) { return name.isThatOf(other); });
}

// Without a call.
template <class Element>
[[gnu::always_inline]] inline Link*
EntriesCore<Element>::searchTableShort(const Name& name) const noexcept {
    return searchFrom(name.hashShort(),
                      [&](const std::string& other) { return name.startsAndEndsAs(other); });
}

template <class Element>
Link* EntriesCore<Element>::searchTree(const std::string& key) const noexcept {
    Link* node = own->header._M_parent;
    while (node) {
        const int order = key.compare(entryOf(node).first);
        if (order == 0) return node;
        node = order < 0 ? node->_M_left : node->_M_right;
    }
    return nullptr;
}

// The first node whose name is not less than the key, or greater: the header if there is none.
template <class Element>
Link* EntriesCore<Element>::bound(const std::string& key, bool isAbove) const {
    Link* found = &made().header;
    for (Link* node = found->_M_parent; node;) {
        const int order = key.compare(entryOf(node).first);
        const bool isLeft = order < 0 || (order == 0 && !isAbove);
        if (isLeft) found = node;
        node = isLeft ? node->_M_left : node->_M_right;
    }
    return found;
}

// The node is given back if there is one of its name.
template <class Element>
auto EntriesCore<Element>::insert(Node* node) -> std::pair<Link*, bool> {
    Link* parent = &made().header;
    bool isLeft = true;
    for (Link* place = parent->_M_parent; place;
         place = isLeft ? place->_M_left : place->_M_right) {
        const int order = entryOf(node).first.compare(entryOf(place).first);
        if (order == 0) {
            own->giveBack(node);
            return {place, false};
        }
        parent = place;
        isLeft = order < 0;
    }
    own->insert(node, parent, isLeft);
    return {node, true};
}

template <class Element>
Element& EntriesCore<Element>::existing(const std::string& key) const {
    Link* found = search(key);
    if (!found) throw std::out_of_range("map::at");
    return entryOf(found).second;
}

template <class Element>
Element& EntriesCore<Element>::entry(const std::string& key) {
    if (own && own->table && key.size() <= 16)
        if (Link* found = searchTableShort(Name(key))) return entryOf(found).second;
    return entryOtherwise(key);
}

template <class Element>
[[gnu::noinline]] Element& EntriesCore<Element>::entryOtherwise(const std::string& key) {
    if (own && own->size > few && !own->table) own->makeTable();
    if (Link* found = search(key)) return entryOf(found).second;
    Node* node =
        makeNode(std::piecewise_construct, std::forward_as_tuple(key), std::forward_as_tuple());
    return entryOf(insert(node).first).second;
}

// Methods work on copies of objects, and most objects have few fields.
template <class Element>
Element& EntriesCore<Element>::entryNamed(const char* letters, size_type size) {
    if (own && own->size <= few && own->together != 0) {
        for (Node* node = own->nodes(); node != own->behind; ++node) {
            const std::string& name = entryOf(node).first;
            if (name.size() == size && Element::areSame(name.data(), letters, size))
                return entryOf(node).second;
        }
    }
    return entryNamedOtherwise(letters, size);
}

template <class Element>
[[gnu::noinline]] Element& EntriesCore<Element>::entryNamedOtherwise(const char* letters,
                                                                     size_type size) {
    if (own && (own->size <= few || own->table)) {
        if (Link* found = search(Name(letters, size))) return entryOf(found).second;
    }
    return entry(std::string(letters, size));
}

template <class Element>
Link* EntriesCore<Element>::erase(Link* node) noexcept {
    Link* next = std::_Rb_tree_increment(node);
    own->erase(node);
    return next;
}

template <class Element>
bool EntriesCore<Element>::isEqualTo(const EntriesCore& other) const {
    using Place = std::_Rb_tree_iterator<value_type>;
    return made().size == other.made().size &&
           std::equal(Place(own->header._M_left), Place(&own->header),
                      Place(other.own->header._M_left));
}

#endif

} // namespace OrvaneValues

template <>
class std::map<std::string, Value> : public OrvaneValues::Entries<Value> {
public:
    using Entries::Entries;
    using Entries::operator=;
    friend bool operator==(const map& left, const map& right) { return left.isEqualTo(right); }
    friend bool operator!=(const map& left, const map& right) { return !left.isEqualTo(right); }
};
