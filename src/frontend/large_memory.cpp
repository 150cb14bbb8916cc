#include "frontend/large_memory.h"

#include <cstdint>

#ifdef __linux__
#include <sys/mman.h>
#elif defined(_WIN32)
#include <windows.h>
#endif

namespace Orvane {

namespace {

#if defined(__linux__) || defined(_WIN32)
// The whole pages of a range.
struct Pages {
    std::byte* start;
    std::size_t bytes; // 0 when there are none
};

Pages pagesIn(void* start, std::size_t bytes, std::uintptr_t pageSize) {
    const auto address = reinterpret_cast<std::uintptr_t>(start);
    const std::uintptr_t first = (address + pageSize - 1) / pageSize * pageSize;
    const std::uintptr_t end = (address + bytes) / pageSize * pageSize;
    return {static_cast<std::byte*>(start) + (first - address), first < end ? end - first : 0};
}

constexpr std::uintptr_t smallPage = std::uintptr_t{1} << 12;
#endif

} // namespace

#ifdef __linux__

// The system rejects what it cannot do, and the memory stays as it was. The advice covers the small
// pages at both ends, too: a range of which only a part has been advised counts as several to the
// system, and realloc could not move it without a copy.
void expectFilling(void* start, std::size_t bytes) {
    constexpr std::uintptr_t largePage = std::uintptr_t{1} << 21;
    if (pagesIn(start, bytes, largePage).bytes == 0) return;
    auto* const first =
        static_cast<std::byte*>(start) - reinterpret_cast<std::uintptr_t>(start) % smallPage;
    const auto end = static_cast<std::size_t>(static_cast<std::byte*>(start) + bytes - first);
    (void)madvise(first, (end + smallPage - 1) / smallPage * smallPage, MADV_HUGEPAGE);
}

void giveBack(void* start, std::size_t bytes) {
    const Pages pages = pagesIn(start, bytes, smallPage);
    if (pages.bytes != 0) (void)madvise(pages.start, pages.bytes, MADV_DONTNEED);
}

#elif defined(_WIN32)

void expectFilling(void*, std::size_t) {}

// Resetting says that the content counts no more; unlocking what was never locked takes the pages
// out of the process at once and reports an error of no meaning.
void giveBack(void* start, std::size_t bytes) {
    const Pages pages = pagesIn(start, bytes, smallPage);
    if (pages.bytes == 0) return;
    (void)VirtualAlloc(pages.start, pages.bytes, MEM_RESET, PAGE_READWRITE);
    (void)VirtualUnlock(pages.start, pages.bytes);
}

#else

void expectFilling(void*, std::size_t) {}
void giveBack(void*, std::size_t) {}

#endif

} // namespace Orvane
