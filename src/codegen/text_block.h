// Generated lines, written in the source as they come out, with gaps for what differs.
//
// A block is a raw string of whole lines; the line break behind its opening is not part of it.
// Every line goes through addLine, so that it carries the current indentation in front of the
// spaces it has in the block. A name between two "$" is a gap; the gaps are filled line by line,
// and what fills them is not looked at again.
//
//     addBlock(generator, R"(
//     // Menu: $name$
//     HMENU hMenu_$name$ = CreateMenu();
//     )", {{"name", component->name}});
#pragma once

#include "codegen/code_generator_core.h"

#include <concepts>
#include <initializer_list>
#include <string>
#include <string_view>

namespace Orvane {

// The text for one gap; numbers are written in decimal.
struct Gap {
    Gap(std::string_view name_, std::string_view text_) : name(name_), text(text_) {}
    template <std::integral Number>
    Gap(std::string_view name_, Number number) : name(name_), text(std::to_string(number)) {}

    std::string_view name;
    std::string text;
};

// Both throw std::logic_error for a gap that is not in the list: a slip in the text itself.
void addFilledLine(CodeGeneratorCore& generator, std::string_view line,
                   std::initializer_list<Gap> gaps);
void addBlock(CodeGeneratorCore& generator, std::string_view block,
              std::initializer_list<Gap> gaps = {});

} // namespace Orvane
