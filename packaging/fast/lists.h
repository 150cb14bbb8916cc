// std::vector<Value> and what it is made of, for programs that are built with runtime.o.
//
// Every value has a list, nearly always an empty one, and is written and destroyed more often than
// anything else happens. So the list of a value is one address here, of a block that is made when
// the first element comes, in place of the three addresses that a vector has. It does all that a
// vector does, by the same names; programs that are built without runtime.o have the usual vector.
//
// ListCore is compiled once, by runtime.cpp, which defines ORVANE_COMPILED_ONCE for it; programs
// compile of List what they use.
#pragma once

#include <memory>
#include <vector>

// Of the rest nothing is asked here that programs do not include anyway.
#ifdef ORVANE_COMPILED_ONCE
#include <algorithm>
#include <new>
#include <stdexcept>
#endif

struct Value;

namespace OrvaneValues {

// Asks for the memory of elements that are written one behind the other, two elements ahead: the
// processor's first cache does not have that of a long list. Behind the end it does no harm.
template <class Element>
[[gnu::always_inline]] inline void askForLater(const Element* place) {
    const std::size_t later = reinterpret_cast<std::size_t>(place) + 2 * sizeof(Element);
    __builtin_prefetch(reinterpret_cast<const void*>(later), 1);
    __builtin_prefetch(reinterpret_cast<const void*>(later + 64), 1);
}

// The elements of a list and what is done to them, by positions from 0. An empty list mostly has no
// block; one that was made stays until the list ends or is moved away. Elements are moved without
// exceptions, and one that was moved from owns no memory: it may be forgotten without being
// destroyed.
template <class Element>
class ListCore {
protected:
    using size_type = std::size_t;

    // The elements lie behind it.
    struct Block {
        size_type size, capacity;
    };

    // More elements cannot be addressed; none takes more than 256 bytes.
    static constexpr size_type most = size_type(-1) / 2 / 256;

    [[gnu::always_inline]] static Element* firstOf(Block* block) noexcept {
        return reinterpret_cast<Element*>(block + 1);
    }
    [[gnu::always_inline]] Element* first() const noexcept { return firstOf(own); }
    [[gnu::always_inline]] size_type length() const noexcept { return own ? own->size : 0; }
    [[gnu::always_inline]] size_type room() const noexcept { return own ? own->capacity : 0; }

    size_type checked(size_type index) const;
    void copy(const Element* from, size_type count);
    void append(const Element& element);
    void append(Element&& element);
    void insert(size_type index, Element&& element);
    void insert(size_type index, Element* from, size_type count);
    void erase(size_type from, size_type to);
    void changeSize(size_type wanted, const Element& element);
    void changeRoom(size_type capacity);
    void cut(size_type wanted) noexcept;
    void release() noexcept;

    Block* own = nullptr;

private:
    static Block* makeBlock(size_type capacity);
    void appendToLonger(Element&& element);
    void moveTo(Block* block) noexcept;
    Element* openGap(size_type index, size_type count);
};

// The interface of std::vector.
template <class Element>
class List : ListCore<Element> {
    using Core = ListCore<Element>;
    using Core::first;
    using Core::own;

public:
    using value_type = Element;
    using allocator_type = std::allocator<Element>;
    using size_type = std::size_t;
    using difference_type = std::ptrdiff_t;
    using reference = Element&;
    using const_reference = const Element&;
    using pointer = Element*;
    using const_pointer = const Element*;
    using iterator = __gnu_cxx::__normal_iterator<Element*, List>;
    using const_iterator = __gnu_cxx::__normal_iterator<const Element*, List>;
    using reverse_iterator = std::reverse_iterator<iterator>;
    using const_reverse_iterator = std::reverse_iterator<const_iterator>;
    template <class Place>
    using IfPlaces = typename std::iterator_traits<Place>::iterator_category;

    List() noexcept = default;
    explicit List(const allocator_type&) noexcept {}
    explicit List(size_type size, const allocator_type& = {}) : List() { resize(size); }
    List(size_type size, const Element& element, const allocator_type& = {}) : List() {
        resize(size, element);
    }
    template <class Place, class = IfPlaces<Place>>
    List(Place from, Place to, const allocator_type& = {}) : List() {
        if constexpr (std::is_base_of<std::forward_iterator_tag, IfPlaces<Place>>::value)
            reserve(static_cast<size_type>(std::distance(from, to)));
        for (; from != to; ++from) emplace_back(*from);
    }
    List(std::initializer_list<Element> elements, const allocator_type& = {}) : List() {
        this->copy(elements.begin(), elements.size());
    }
    List(const List& other) : List() { this->copy(other.data(), other.size()); }
    List(const List& other, const allocator_type&) : List(other) {}
    [[gnu::always_inline]] List(List&& other) noexcept { swap(other); }
    List(List&& other, const allocator_type&) noexcept : List(std::move(other)) {}
    List& operator=(const List& other) {
        if (this != &other) List(other).swap(*this);
        return *this;
    }
    // What this list had ends here; the other may be a part of it.
    List& operator=(List&& other) noexcept {
        List(std::move(other)).swap(*this);
        return *this;
    }
    List& operator=(std::initializer_list<Element> elements) { return *this = List(elements); }
    [[gnu::always_inline]] ~List() {
        if (own) this->release();
    }
    void assign(size_type size, const Element& element) { *this = List(size, element); }
    template <class Place, class = IfPlaces<Place>>
    void assign(Place from, Place to) {
        *this = List(from, to);
    }
    void assign(std::initializer_list<Element> elements) { *this = List(elements); }
    allocator_type get_allocator() const noexcept { return {}; }

    Element& at(size_type index) { return data()[this->checked(index)]; }
    const Element& at(size_type index) const { return data()[this->checked(index)]; }
    [[gnu::always_inline]] Element& operator[](size_type index) { return first()[index]; }
    [[gnu::always_inline]] const Element& operator[](size_type index) const {
        return first()[index];
    }
    Element& front() { return first()[0]; }
    const Element& front() const { return first()[0]; }
    Element& back() { return first()[own->size - 1]; }
    const Element& back() const { return first()[own->size - 1]; }
    [[gnu::always_inline]] Element* data() noexcept { return own ? first() : nullptr; }
    [[gnu::always_inline]] const Element* data() const noexcept { return own ? first() : nullptr; }

    iterator begin() noexcept { return iterator(data()); }
    iterator end() noexcept { return iterator(data() + size()); }
    const_iterator begin() const noexcept { return const_iterator(data()); }
    const_iterator end() const noexcept { return const_iterator(data() + size()); }
    const_iterator cbegin() const noexcept { return begin(); }
    const_iterator cend() const noexcept { return end(); }
    reverse_iterator rbegin() noexcept { return reverse_iterator(end()); }
    reverse_iterator rend() noexcept { return reverse_iterator(begin()); }
    const_reverse_iterator rbegin() const noexcept { return const_reverse_iterator(end()); }
    const_reverse_iterator rend() const noexcept { return const_reverse_iterator(begin()); }
    const_reverse_iterator crbegin() const noexcept { return rbegin(); }
    const_reverse_iterator crend() const noexcept { return rend(); }

    // Whether there is a block, with elements or without.
    [[gnu::always_inline]] bool isMade() const noexcept { return own; }
    [[gnu::always_inline]] bool empty() const noexcept { return size() == 0; }
    [[gnu::always_inline]] size_type size() const noexcept { return this->length(); }
    [[gnu::always_inline]] size_type capacity() const noexcept { return this->room(); }
    size_type max_size() const noexcept { return Core::most; }
    void reserve(size_type wanted) {
        if (wanted > capacity()) this->changeRoom(wanted);
    }
    void shrink_to_fit() {
        if (size() < capacity()) this->changeRoom(size());
    }

    void clear() noexcept { this->cut(0); }
    iterator insert(const_iterator place, const Element& element) {
        return emplace(place, element);
    }
    iterator insert(const_iterator place, Element&& element) {
        return emplace(place, std::move(element));
    }
    iterator insert(const_iterator place, size_type size, const Element& element) {
        return insertList(place, List(size, element));
    }
    iterator insert(const_iterator place, std::initializer_list<Element> elements) {
        return insertList(place, List(elements));
    }
    template <class Place, class = IfPlaces<Place>>
    iterator insert(const_iterator place, Place from, Place to) {
        return insertList(place, List(from, to));
    }
    template <class... Arguments>
    iterator emplace(const_iterator place, Arguments&&... arguments) {
        const size_type index = indexOf(place);
        Core::insert(index, Element(std::forward<Arguments>(arguments)...));
        return placeOf(index);
    }
    iterator erase(const_iterator place) { return erase(place, place + 1); }
    iterator erase(const_iterator from, const_iterator to) {
        const size_type index = indexOf(from);
        Core::erase(index, indexOf(to));
        return placeOf(index);
    }
    void push_back(const Element& element) { this->append(element); }
    void push_back(Element&& element) { this->append(std::move(element)); }
    template <class... Arguments>
    Element& emplace_back(Arguments&&... arguments) {
        this->append(Element(std::forward<Arguments>(arguments)...));
        return back();
    }
    void pop_back() { this->cut(own->size - 1); }
    void resize(size_type wanted) { this->changeSize(wanted, Element()); }
    void resize(size_type wanted, const Element& element) { this->changeSize(wanted, element); }
    [[gnu::always_inline]] void swap(List& other) noexcept { std::swap(own, other.own); }

private:
    size_type indexOf(const_iterator place) const {
        return static_cast<size_type>(place - begin());
    }
    iterator placeOf(size_type index) { return begin() + static_cast<difference_type>(index); }
    iterator insertList(const_iterator place, List&& list) {
        const size_type index = indexOf(place);
        Core::insert(index, list.data(), list.size());
        return placeOf(index);
    }
};

#ifdef ORVANE_COMPILED_ONCE

// The message is that of a vector.
template <class Element>
auto ListCore<Element>::checked(size_type index) const -> size_type {
    if (index >= length())
        std::__throw_out_of_range_fmt("vector::_M_range_check: __n (which is %zu) >= this->size() "
                                      "(which is %zu)",
                                      index, length());
    return index;
}

// For a list that has no block.
template <class Element>
[[gnu::flatten]] void ListCore<Element>::copy(const Element* from, size_type count) {
    if (count == 0) return;
    own = makeBlock(count);
    Element* place = first();
    for (const Element* end = from + count; from != end; ++from, ++place) {
        askForLater(place);
        ::new (place) Element(*from);
        ++own->size;
    }
}

template <class Element>
auto ListCore<Element>::makeBlock(size_type capacity) -> Block* {
    if (capacity > most) throw std::length_error("vector::reserve");
    void* memory = ::operator new(sizeof(Block) + capacity * sizeof(Element));
    return ::new (memory) Block{0, capacity};
}

// The elements move to a block with room for them, into the places that they have.
template <class Element>
[[gnu::noinline]] void ListCore<Element>::moveTo(Block* block) noexcept {
    std::swap(own, block);
    if (!block) return;
    Element* from = firstOf(block);
    for (Element *place = first(), *end = place + block->size; place != end; ++place, ++from) {
        askForLater(place);
        ::new (place) Element(std::move(*from));
    }
    own->size += block->size;
    ::operator delete(block);
}

template <class Element>
void ListCore<Element>::changeRoom(size_type capacity) {
    moveTo(makeBlock(capacity));
}

template <class Element>
[[gnu::noinline]] void ListCore<Element>::cut(size_type wanted) noexcept {
    while (length() > wanted) first()[--own->size].~Element();
}

template <class Element>
[[gnu::noinline]] void ListCore<Element>::release() noexcept {
    for (Element *place = first(), *end = place + own->size; place != end; ++place)
        place->~Element();
    ::operator delete(own);
}

template <class Element>
void ListCore<Element>::append(const Element& element) {
    append(Element(element));
}

template <class Element>
[[gnu::flatten]] void ListCore<Element>::append(Element&& element) {
    if (length() == room()) return appendToLonger(std::move(element));
    Element* place = first() + own->size++;
    askForLater(place);
    ::new (place) Element(std::move(element));
}

// The element may be one of the list, and stays what it is when there is no memory.
template <class Element>
[[gnu::noinline]] void ListCore<Element>::appendToLonger(Element&& element) {
    const size_type place = length();
    Block* block = makeBlock(std::max<size_type>(2 * place, 1));
    ::new (firstOf(block) + place) Element(std::move(element));
    ++block->size;
    moveTo(block);
}

template <class Element>
void ListCore<Element>::changeSize(size_type wanted, const Element& element) {
    if (wanted > room()) {
        const Element kept(element);
        changeRoom(std::max(wanted, 2 * length()));
        return changeSize(wanted, kept);
    }
    cut(wanted);
    for (; length() < wanted; ++own->size) ::new (first() + own->size) Element(element);
}

template <class Element>
void ListCore<Element>::insert(size_type index, Element&& element) {
    ::new (openGap(index, 1)) Element(std::move(element));
}

template <class Element>
void ListCore<Element>::insert(size_type index, Element* from, size_type count) {
    if (count == 0) return;
    Element* gap = openGap(index, count);
    for (size_type at = 0; at < count; ++at) ::new (gap + at) Element(std::move(from[at]));
}

// Elements from the index on move up. Nothing may fail before the gap is filled.
template <class Element>
Element* ListCore<Element>::openGap(size_type index, size_type count) {
    if (count > room() - length()) changeRoom(std::max(length() + count, 2 * length()));
    Element* gap = first() + index;
    for (Element* at = first() + own->size; at != gap;) {
        --at;
        ::new (at + count) Element(std::move(*at));
    }
    own->size += count;
    return gap;
}

template <class Element>
void ListCore<Element>::erase(size_type from, size_type to) {
    if (from == to) return;
    std::move(first() + to, first() + own->size, first() + from);
    cut(own->size - (to - from));
}

#endif

} // namespace OrvaneValues

template <>
class std::vector<Value> : public OrvaneValues::List<Value> {
public:
    using List::List;
    using List::operator=;
};
