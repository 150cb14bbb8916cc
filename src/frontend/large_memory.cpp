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
constexpr std::uintptr_t pageSize = std::uintptr_t{1} << 12;

// The whole pages of a range.
struct Pages {
    std::byte* start;
    std::size_t bytes; // 0 when there are none
};

Pages pagesIn(void* start, std::size_t bytes) {
    const auto address = reinterpret_cast<std::uintptr_t>(start);
    const std::uintptr_t first = (address + pageSize - 1) / pageSize * pageSize;
    const std::uintptr_t end = (address + bytes) / pageSize * pageSize;
    return {static_cast<std::byte*>(start) + (first - address), first < end ? end - first : 0};
}
#endif

} // namespace

#ifdef __linux__

// Small pages, although large ones would be fewer: a virtual machine may hand free large pages to
// its host, and having them back can take longer than everything else here. Systems before Linux
// 5.14 reject the advice, and the pages come one by one.
void expectFilling(void* start, std::size_t bytes) {
#ifdef MADV_POPULATE_WRITE
    constexpr std::size_t fewPages = 16 * pageSize;
    const Pages pages = pagesIn(start, bytes);
    if (pages.bytes >= fewPages) (void)madvise(pages.start, pages.bytes, MADV_POPULATE_WRITE);
#else
    (void)start;
    (void)bytes;
#endif
}

void giveBack(void* start, std::size_t bytes) {
    const Pages pages = pagesIn(start, bytes);
    if (pages.bytes != 0) (void)madvise(pages.start, pages.bytes, MADV_DONTNEED);
}

#elif defined(_WIN32)

void expectFilling(void*, std::size_t) {}

// Resetting says that the content counts no more; unlocking what was never locked takes the pages
// out of the process at once and reports an error of no meaning.
void giveBack(void* start, std::size_t bytes) {
    const Pages pages = pagesIn(start, bytes);
    if (pages.bytes == 0) return;
    (void)VirtualAlloc(pages.start, pages.bytes, MEM_RESET, PAGE_READWRITE);
    (void)VirtualUnlock(pages.start, pages.bytes);
}

#else

void expectFilling(void*, std::size_t) {}
void giveBack(void*, std::size_t) {}

#endif

} // namespace Orvane
