// Which pages of memory the system has made already, for tests of memory that is asked for ahead.
//
//     if (!startsWithoutPages()) GTEST_SKIP() << "the system makes pages one by one";
//     ...
//     EXPECT_TRUE(isReady(buffer, 100'000)); // nothing has been written there yet
#pragma once

#include <cstddef>
#include <cstdint>
#include <malloc.h>
#include <sys/mman.h>

// Whether the page of this byte is there, which may lie behind what its owner uses.
inline bool isReady(const void* start, std::size_t offset) {
    constexpr std::uintptr_t pageSize = 4096;
    const auto address = reinterpret_cast<std::uintptr_t>(start) + offset;
    unsigned char resident = 0;
    void* const page = reinterpret_cast<void*>(address / pageSize * pageSize);
    return mincore(page, 1, &resident) == 0 && (resident & 1) != 0;
}

// Lets go what the process holds of free memory, so that what it takes next has no pages yet. False
// where they cannot be asked for many at a time: on Linux before 5.14.
inline bool startsWithoutPages() {
    malloc_trim(0);
#ifdef MADV_POPULATE_WRITE
    constexpr std::size_t bytes = 4096;
    void* const page =
        mmap(nullptr, bytes, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    if (page == MAP_FAILED) return false;
    const bool isPossible = madvise(page, bytes, MADV_POPULATE_WRITE) == 0;
    munmap(page, bytes);
    return isPossible;
#else
    return false;
#endif
}
