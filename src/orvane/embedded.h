// Texts that are part of the executable; src/orvane/embed.cmake writes them into it.
#pragma once

#include <span>
#include <string_view>

namespace Orvane {

struct EmbeddedText {
    std::string_view name; // of the file, without folder and suffix
    std::string_view text;
};

// docs/messages/*.md, by name.
std::span<const EmbeddedText> messagePages();

// src/orvane/templates/*.vorla
std::span<const EmbeddedText> programTemplates();

} // namespace Orvane
