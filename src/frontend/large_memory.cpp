#include "frontend/large_memory.h"

#include <cstdint>

#ifdef __linux__
#include <sys/mman.h>
#endif

namespace Orvane {

#ifdef __linux__

// The system rejects what it cannot do, and the memory stays as it was.
void expectFilling(void* start, std::size_t bytes) {
    constexpr std::uintptr_t largePage = std::uintptr_t{1} << 21;
    const auto address = reinterpret_cast<std::uintptr_t>(start);
    const std::uintptr_t first = (address + largePage - 1) / largePage * largePage;
    const std::uintptr_t end = (address + bytes) / largePage * largePage;
    if (first < end)
        (void)madvise(static_cast<std::byte*>(start) + (first - address), end - first,
                      MADV_HUGEPAGE);
}

#else

void expectFilling(void*, std::size_t) {}

#endif

} // namespace Orvane
