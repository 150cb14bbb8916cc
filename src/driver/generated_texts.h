// The two texts of a program, from the generator to their files.
//
// A short source may stand for a long text: a list of three elements takes eight bytes of the
// source and four hundred of main.cpp. So that memory depends on the source alone, a text is held
// only while it stands in a sensible relation to it. One that grows beyond is generated once to see
// that it can be, and a second time straight into its file.
//
//     GeneratedTexts texts(generation, source.size());
//     texts.generate();
//     texts.write(GeneratedText::main, "main.cpp");
#pragma once

#include "codegen/generation_observer.h"
#include "codegen/text_stream.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <functional>

namespace Orvane {

class GeneratedTexts {
public:
    // Writes both texts into empty streams; the same ones whenever it is called.
    using Generation = std::function<void(TextStream& main, TextStream& import)>;

    // The source in bytes, with its libraries or without.
    GeneratedTexts(Generation generation, std::size_t sourceBytes);

    // Throws what the generation throws, and std::length_error for a text beyond every compiler.
    void generate();

    // Once for each text, after generate(). False when anything of it did not reach the file.
    // Throws what the generation throws.
    bool write(GeneratedText which, const std::filesystem::path& path);

private:
    // Counts what is not held.
    class Counter final : public TextSink {
    public:
        void take(std::string_view piece) override;
        std::uint64_t bytes = 0;
    };
    struct Part {
        TextStream text;
        Counter passed;
    };

    Part& partOf(GeneratedText which) { return parts[static_cast<std::size_t>(which)]; }

    Generation generation;
    std::size_t heldBytes; // of one text, at most
    std::array<Part, 2> parts;
};

} // namespace Orvane
