// operator new and operator delete of generated programs, natively.
#include "memory.h"

#include "checks.h"

#include <cstring>
#include <map>
#include <random>
#include <thread>
#include <vector>

namespace {

bool isKept(void* place) {
    return reinterpret_cast<std::uintptr_t>(place) - OrvaneMemory::start < OrvaneMemory::range;
}

// Every size has the smallest kind that holds it, and little of a block is wasted.
void testKinds() {
    using namespace OrvaneMemory;
    bool fits = true, smallest = true, thrifty = true;
    for (std::size_t size = 1; size <= largest; ++size) {
        const unsigned kind = kindOf(size);
        fits = fits && kind < kinds && sizeOf(kind) >= size && sizeOf(kind) % 16 == 0;
        smallest = smallest && (kind == 1 || sizeOf(kind - 1) < size);
        thrifty = thrifty && sizeOf(kind) - size <= (size <= fine ? 15 : size / 4);
    }
    CHECK(fits && smallest && thrifty);
    CHECK(sizeOf(kindOf(0)) > 0 && kindOf(largest) == kinds - 1);
}

// Blocks of many sizes, kept and freed in no order, do not touch each other.
void testContents() {
    std::mt19937 random(1);
    struct Taken {
        unsigned char* place;
        std::size_t size;
        unsigned char filling;
    };
    std::vector<Taken> taken;
    bool intact = true, aligned = true;
    const auto free = [&](std::size_t i) {
        const Taken one = taken[i];
        for (std::size_t at = 0; at < one.size; ++at)
            intact = intact && one.place[at] == one.filling;
        operator delete(one.place);
        taken[i] = taken.back();
        taken.pop_back();
    };
    for (int turn = 0; turn < 40000; ++turn) {
        if (taken.size() > 300 || (!taken.empty() && random() % 3 == 0))
            free(random() % taken.size());
        const std::size_t most = std::size_t(16) << random() % 14;
        const std::size_t size = random() % most;
        Taken one = {static_cast<unsigned char*>(operator new(size)), size,
                     static_cast<unsigned char>(random())};
        std::memset(one.place, one.filling, size);
        aligned =
            aligned && reinterpret_cast<std::uintptr_t>(one.place) % 16 == 0 && isKept(one.place);
        taken.push_back(one);
    }
    while (!taken.empty()) free(0);
    CHECK(intact);
    CHECK(aligned);
}

void testReuse() {
    void* first = operator new(200);
    operator delete(first);
    void* second = operator new(195);
    CHECK(first == second);
    operator delete(second, 195);
    const std::size_t before = OrvaneMemory::used;
    for (int turn = 0; turn < 100000; ++turn) operator delete(operator new(100000));
    CHECK(OrvaneMemory::used - before <= 2 * 131072);
}

void testWhatTheSystemGives() {
    void* large = operator new(OrvaneMemory::largest + 1);
    CHECK(!isKept(large));
    std::memset(large, 1, OrvaneMemory::largest + 1);
    operator delete(large);
    operator delete(nullptr);
    const volatile std::size_t tooMuch = ~std::size_t(0) / 2;
    CHECK_THROWS(operator new(tooMuch), std::bad_alloc);
    CHECK(operator new(tooMuch, std::nothrow) == nullptr);
}

int handlerCalls = 0;

void testNewHandler() {
    std::set_new_handler([] {
        if (++handlerCalls == 3) std::set_new_handler(nullptr);
    });
    const volatile std::size_t tooMuch = ~std::size_t(0) / 2;
    CHECK_THROWS(operator new(tooMuch), std::bad_alloc);
    CHECK(handlerCalls == 3);
}

// The range may be used up.
void testFullRange() {
    const std::size_t before = OrvaneMemory::used;
    OrvaneMemory::used = OrvaneMemory::range - OrvaneMemory::page;
    std::vector<void*> places;
    bool given = true;
    for (int i = 0; i < 100; ++i) {
        places.push_back(operator new(77777));
        given = given && places.back();
        std::memset(places.back(), i, 77777);
    }
    CHECK(given && !isKept(places.back()));
    for (void* place : places) operator delete(place);
    OrvaneMemory::used = before;
}

// What one thread takes another may free; only the first keeps blocks.
void testThreads() {
    constexpr int count = 20000;
    std::vector<void*> mine(count), theirs(count);
    for (int i = 0; i < count; ++i) mine[static_cast<std::size_t>(i)] = operator new(48);
    std::thread other([&] {
        for (void*& place : theirs) place = operator new(48);
        for (void* place : mine) operator delete(place);
    });
    std::map<int, std::string> busy;
    for (int i = 0; i < count; ++i)
        busy[i % 100] = std::string(static_cast<std::size_t>(i % 90), 'x');
    other.join();
    bool foreign = true;
    for (void* place : theirs) {
        foreign = foreign && !isKept(place);
        operator delete(place);
    }
    CHECK(foreign);
    // All that the other thread freed comes back before another page is begun.
    const std::size_t before = OrvaneMemory::used;
    for (void*& place : mine) place = operator new(48);
    CHECK(OrvaneMemory::used - before <= OrvaneMemory::page);
    for (void* place : mine) operator delete(place);
}

void testThreadsAtOnce() {
    std::vector<std::thread> threads;
    std::vector<void*> given[3];
    for (auto& places : given)
        for (int i = 0; i < 5000; ++i)
            places.push_back(operator new(static_cast<std::size_t>(i % 700)));
    for (auto& places : given)
        threads.emplace_back([&places] {
            for (void*& place : places) {
                operator delete(place);
                place = operator new(64);
            }
        });
    for (int i = 0; i < 20000; ++i)
        operator delete(operator new(static_cast<std::size_t>(i % 700)));
    for (std::thread& thread : threads) thread.join();
    std::size_t freed = 0;
    for (auto& places : given)
        for (void* place : places) {
            operator delete(place);
            ++freed;
        }
    CHECK(freed == 15000);
}

} // namespace

int main() {
    testKinds();
    testContents();
    testReuse();
    testWhatTheSystemGives();
    testNewHandler();
    testFullRange();
    testThreads();
    testThreadsAtOnce();
    return finishChecks();
}
