// Told, while a program is being translated, which part of the generated texts each node gave.
//
// The generator calls it when it has one and writes the same bytes with it and without. Nodes nest:
// what begins last ends first. Offsets are bytes of the text, from 0; the byte order mark of the
// file does not count.
//
//     generator.setObserver(&map);
//     generator.generate(program, mainPath, importPath, false, anyLibraryLoaded);
#pragma once

#include <cstddef>

namespace Orvane {

enum class GeneratedText { main, import }; // main.cpp and import.hpp

class GenerationObserver {
public:
    GenerationObserver() = default;
    GenerationObserver(const GenerationObserver&) = delete;
    GenerationObserver& operator=(const GenerationObserver&) = delete;
    virtual ~GenerationObserver() = default;

    // A node or record of the tree, or a FunctionEntry of the table of library functions.
    virtual void begin(const void* node, GeneratedText text, std::size_t offset) = 0;
    virtual void end(GeneratedText text, std::size_t offset) = 0;
};

} // namespace Orvane
