#include "codegen/text_block.h"

#include <algorithm>
#include <stdexcept>

namespace Orvane {

namespace {

std::string_view textOfGap(std::string_view name, std::initializer_list<Gap> gaps) {
    const auto gap = std::find_if(gaps.begin(), gaps.end(),
                                  [&](const Gap& candidate) { return candidate.name == name; });
    if (gap == gaps.end()) throw std::logic_error("no text for the gap " + std::string(name));
    return gap->text;
}

std::string fillGaps(std::string_view line, std::initializer_list<Gap> gaps) {
    std::string filled;
    while (true) {
        const auto open = line.find('$');
        filled += line.substr(0, open);
        if (open == std::string_view::npos) return filled;
        const auto close = line.find('$', open + 1);
        filled += textOfGap(line.substr(open + 1, close - open - 1), gaps);
        line.remove_prefix(close == std::string_view::npos ? line.size() : close + 1);
    }
}

} // namespace

void addFilledLine(CodeGeneratorCore& generator, std::string_view line,
                   std::initializer_list<Gap> gaps) {
    generator.addLine(fillGaps(line, gaps));
}

void addBlock(CodeGeneratorCore& generator, std::string_view block,
              std::initializer_list<Gap> gaps) {
    block.remove_prefix(1); // the line break behind the opening of the raw string
    while (!block.empty()) {
        const auto end = block.find('\n');
        addFilledLine(generator, block.substr(0, end), gaps);
        block.remove_prefix(end + 1);
    }
}

} // namespace Orvane
