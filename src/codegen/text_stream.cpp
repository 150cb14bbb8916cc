#include "codegen/text_stream.h"

#include "frontend/large_memory.h"

#include <new>

namespace Orvane {

// One piece may be longer than the limit; it is held until the next one comes.
void TextStream::makeRoom(std::size_t bytes) {
    if (sink && length + bytes > limit) {
        sink->take(view());
        clear();
        if (bytes > capacity) grow(bytes);
    } else {
        grow(std::max(length + bytes, std::min(capacity * 2, limit)));
    }
}

// realloc moves a large text by changing page tables where the system can; nothing is copied, and
// at no time is there room for two texts.
void TextStream::grow(std::size_t bytes) {
    char* const larger = static_cast<char*>(std::realloc(buffer.get(), bytes));
    if (!larger) throw std::bad_alloc();
    (void)buffer.release();
    buffer.reset(larger);
    capacity = bytes;
    expectFilling(larger, bytes);
}

} // namespace Orvane
