// operator new and operator delete of generated programs.
//
// Values come and go by the million, and the heap of the system takes longer for the memory of one
// than the work on it. So the thread that starts a program keeps what it has freed, by size, for
// its next blocks of that size. They lie in a range of addresses of their own: by its address every
// thread knows whether a block is one of them. Other threads, and blocks above a megabyte, use the
// heap of the system as ever.
//
// What was freed goes back to the system when the program ends, not before: a program holds the
// most that it ever needed of each size. Included once, by runtime.cpp.
#pragma once

#include <windows.h>

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <new>

namespace OrvaneMemory {

struct Block {
    Block* next;
};

// Sizes in bytes. Up to `fine` there is a kind of blocks for every 16 bytes, above it four kinds
// for every doubling. A page holds blocks of one kind.
constexpr std::size_t fine = 512, largest = std::size_t(1) << 20;
constexpr std::size_t page = std::size_t(1) << 14, range = std::size_t(1) << 32;
constexpr unsigned fineKinds = fine / 16 + 1, kinds = fineKinds + 4 * 11;

// The range begins at `start`; before there is one, at an address that no block has.
constexpr std::uintptr_t noStart = std::uintptr_t(1) << 63;
static std::uintptr_t start = noStart;
static std::size_t used = 0;
static unsigned char kindOfPage[range / page];

// What belongs to the owner alone, by kind: freed blocks, and the rest of the pages begun last.
static void* owner = nullptr;
static Block* freed[kinds];
static char* rest[kinds];
static char* end[kinds];

// Blocks of the owner that other threads have freed.
static Block* returned = nullptr;

static unsigned kindOf(std::size_t size) {
    if (size <= fine) return static_cast<unsigned>((size + 15) / 16);
    const unsigned power = 63 - static_cast<unsigned>(__builtin_clzll(size - 1));
    const unsigned quarter = (size - 1) >> (power - 2) & 3;
    return fineKinds + 4 * (power - 9) + quarter;
}

static std::size_t sizeOf(unsigned kind) {
    if (kind == 0) return 16;
    if (kind < fineKinds) return std::size_t(16) * kind;
    const unsigned power = 9 + (kind - fineKinds) / 4, quarter = (kind - fineKinds) % 4;
    return std::size_t(5 + quarter) << (power - 2);
}

// Whether this thread is the one that keeps blocks: the one that starts the program.
static bool isOwner() { return NtCurrentTeb() == owner; }

static void becomeOwner() {
    void* place = VirtualAlloc(nullptr, range, MEM_RESERVE, PAGE_NOACCESS);
    if (place) start = reinterpret_cast<std::uintptr_t>(place);
    owner = NtCurrentTeb();
}

// Before main(), if nothing has asked for memory yet: no other thread is there then.
[[gnu::constructor]] static void chooseOwner() {
    if (!owner) becomeOwner();
}

static void keep(void* place, unsigned kind) {
    Block* block = static_cast<Block*>(place);
    block->next = freed[kind];
    freed[kind] = block;
}

static unsigned kindAt(void* place) {
    return kindOfPage[(reinterpret_cast<std::uintptr_t>(place) - start) / page];
}

static void takeReturned() {
    Block* block = __atomic_exchange_n(&returned, nullptr, __ATOMIC_ACQUIRE);
    while (block) {
        Block* next = block->next;
        keep(block, kindAt(block));
        block = next;
    }
}

// Pages for eight blocks if they are small, for one if they are large.
static bool beginPages(unsigned kind) {
    const std::size_t size = sizeOf(kind), wanted = size > 65536 ? size : size * 8;
    const std::size_t length = (wanted + page - 1) / page * page;
    if (start == noStart || length > range - used) return false;
    char* place = reinterpret_cast<char*>(start + used);
    if (!VirtualAlloc(place, length, MEM_COMMIT, PAGE_READWRITE)) return false;
    for (std::size_t at = 0; at < length; at += page)
        kindOfPage[(used + at) / page] = static_cast<unsigned char>(kind);
    used += length;
    rest[kind] = place;
    end[kind] = place + length;
    return true;
}

[[gnu::noinline]] static void* takeFresh(unsigned kind) {
    if (__atomic_load_n(&returned, __ATOMIC_RELAXED)) takeReturned();
    if (Block* block = freed[kind]) {
        freed[kind] = block->next;
        return block;
    }
    const std::size_t size = sizeOf(kind);
    if (static_cast<std::size_t>(end[kind] - rest[kind]) < size && !beginPages(kind))
        return nullptr;
    void* place = rest[kind];
    rest[kind] += size;
    return place;
}

[[gnu::noinline]] static void* takeFromSystem(std::size_t size) {
    while (true) {
        if (void* place = std::malloc(size == 0 ? 1 : size)) return place;
        const std::new_handler handler = std::get_new_handler();
        if (!handler) throw std::bad_alloc();
        handler();
    }
}

[[gnu::noinline]] static void* takeOtherwise(std::size_t size) {
    chooseOwner();
    if (size <= largest && isOwner())
        if (void* place = takeFresh(kindOf(size))) return place;
    return takeFromSystem(size);
}

[[gnu::noinline]] static void giveBack(void* place) {
    Block* block = static_cast<Block*>(place);
    block->next = __atomic_load_n(&returned, __ATOMIC_RELAXED);
    while (!__atomic_compare_exchange_n(&returned, &block->next, block, true, __ATOMIC_RELEASE,
                                        __ATOMIC_RELAXED)) {
    }
}

} // namespace OrvaneMemory

[[gnu::noinline]] void* operator new(std::size_t size) {
    using namespace OrvaneMemory;
    if (size <= largest && isOwner()) {
        const unsigned kind = kindOf(size);
        if (Block* block = freed[kind]) {
            freed[kind] = block->next;
            return block;
        }
    }
    return takeOtherwise(size);
}

[[gnu::noinline]] void operator delete(void* place) noexcept {
    using namespace OrvaneMemory;
    if (reinterpret_cast<std::uintptr_t>(place) - start >= range) return std::free(place);
    if (isOwner()) return keep(place, kindAt(place));
    giveBack(place);
}

void operator delete(void* place, std::size_t) noexcept { operator delete(place); }
