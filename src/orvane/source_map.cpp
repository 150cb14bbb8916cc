#include "orvane/source_map.h"

namespace Orvane {

void SourceMap::begin(const void* node, GeneratedText text, std::size_t offset) {
    Texts& its = of(text);
    its.open.push_back(its.spans.size());
    its.spans.push_back({offset, offset, node});
}

void SourceMap::end(GeneratedText text, std::size_t offset) {
    Texts& its = of(text);
    its.spans[its.open.back()].end = offset;
    its.open.pop_back();
}

// Of those that hold the byte, the one that began last is inside all others.
const SourceMap::Span* SourceMap::innermost(GeneratedText text, std::size_t offset) const {
    const Span* found = nullptr;
    for (const Span& span : texts[text == GeneratedText::main ? 0 : 1].spans) {
        if (span.begin > offset) break;
        if (offset < span.end) found = &span;
    }
    return found;
}

} // namespace Orvane
