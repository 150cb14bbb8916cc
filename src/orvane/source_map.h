// From places of the generated texts to nodes: made while a program is generated a second time,
// after the C++ compiler has refused it.
//
//     SourceMap map;
//     generator.setObserver(&map);
//     generator.generate(...);
//     const SourceMap::Span* span = map.innermost(GeneratedText::main, offset);
#pragma once

#include "codegen/generation_observer.h"

#include <array>
#include <vector>

namespace Orvane {

class SourceMap final : public GenerationObserver {
public:
    struct Span {
        std::size_t begin;
        std::size_t end;
        const void* node;
    };

    void begin(const void* node, GeneratedText text, std::size_t offset) override;
    void end(GeneratedText text, std::size_t offset) override;

    // The innermost node whose text holds the byte; null for text that belongs to no node. The time
    // is proportional to the length of the program.
    const Span* innermost(GeneratedText text, std::size_t offset) const;

private:
    struct Texts {
        std::vector<Span> spans; // by their beginning
        std::vector<std::size_t> open;
    };
    Texts& of(GeneratedText text) { return texts[text == GeneratedText::main ? 0 : 1]; }

    std::array<Texts, 2> texts;
};

} // namespace Orvane
