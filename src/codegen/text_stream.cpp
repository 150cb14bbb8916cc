#include "codegen/text_stream.h"

#include "frontend/large_memory.h"

#include <new>

namespace Orvane {

// One piece may be longer than the limit; it is held until the next one comes.
void TextStream::makeRoom(std::size_t bytes) {
    if (sink && length + bytes > limit) {
        sink->take(view());
        clear();
    }
    if (length + bytes > capacity) prepare(length + bytes);
}

// A large buffer is made ready step by step, as its end may never be reached.
void TextStream::prepare(std::size_t bytes) {
    if (bytes > allocated) grow(std::max(bytes, std::min(allocated * 2, limit)));
    const std::size_t ready = std::min(allocated, std::max(bytes, capacity + fillingStep));
    expectFilling(buffer.get() + capacity, ready - capacity);
    capacity = ready;
}

// realloc moves a large text by changing page tables where the system can; nothing is copied, and
// at no time is there room for two texts.
void TextStream::grow(std::size_t bytes) {
    char* const larger = static_cast<char*>(std::realloc(buffer.get(), bytes));
    if (!larger) throw std::bad_alloc();
    (void)buffer.release();
    buffer.reset(larger);
    allocated = bytes;
}

} // namespace Orvane
