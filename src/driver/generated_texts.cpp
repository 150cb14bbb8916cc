#include "driver/generated_texts.h"

#include "driver/output_files.h"

#include <algorithm>
#include <stdexcept>
#include <utility>

namespace Orvane {

namespace {

// Programs as they are written have texts of two to five times the source.
constexpr std::size_t heldPerSourceByte = 10;
constexpr std::size_t heldAtLeast = 8'000'000;

// Handlers list all controls, so that a small source can ask for more than any disk holds; this
// many bytes are generated in seconds and are more than the C++ compiler can number.
constexpr std::uint64_t longestText = std::uint64_t{1} << 32;

} // namespace

void GeneratedTexts::Counter::take(std::string_view piece) {
    bytes += piece.size();
    if (bytes > longestText) throw std::length_error("a text is longer than 4 GB");
}

GeneratedTexts::GeneratedTexts(Generation generation_, std::size_t sourceBytes)
    : generation(std::move(generation_)),
      heldBytes(std::max(heldAtLeast, sourceBytes * heldPerSourceByte)) {
    for (Part& part : parts) part.text.passOn(part.passed, heldBytes);
}

// A text that was not held as a whole before is not this time, and the other way round.
void GeneratedTexts::generate() {
    for (Part& part : parts) part.passed.bytes = 0;
    generation(partOf(GeneratedText::main).text, partOf(GeneratedText::import).text);
}

bool GeneratedTexts::write(GeneratedText which, const std::filesystem::path& path) {
    Part& part = partOf(which);
    if (part.passed.bytes == 0) return writeFile(path, part.text.view());
    TextFile file(path);
    part.text.passOn(file, heldBytes);
    generate();
    file.take(part.text.view());
    part.text.passOn(part.passed, heldBytes);
    return file.close();
}

} // namespace Orvane
