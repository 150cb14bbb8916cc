#include "codegen/text_stream.h"

#include "frontend/large_memory.h"

#include <new>

namespace Orvane {

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
