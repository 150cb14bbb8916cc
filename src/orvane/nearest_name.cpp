#include "orvane/nearest_name.h"

#include <algorithm>

namespace Orvane {

namespace {

char small(char character) {
    return character >= 'A' && character <= 'Z' ? static_cast<char>(character - 'A' + 'a')
                                                : character;
}

std::size_t distance(std::string_view first, std::string_view second) {
    const std::size_t width = second.size() + 1;
    std::vector<std::size_t> table((first.size() + 1) * width);
    const auto at = [&](std::size_t row, std::size_t column) -> std::size_t& {
        return table[row * width + column];
    };
    for (std::size_t row = 0; row <= first.size(); ++row) at(row, 0) = row;
    for (std::size_t column = 0; column < width; ++column) at(0, column) = column;
    for (std::size_t row = 1; row <= first.size(); ++row) {
        for (std::size_t column = 1; column < width; ++column) {
            const bool same = small(first[row - 1]) == small(second[column - 1]);
            at(row, column) = std::min({at(row - 1, column) + 1, at(row, column - 1) + 1,
                                        at(row - 1, column - 1) + (same ? 0 : 1)});
            if (row > 1 && column > 1 && small(first[row - 1]) == small(second[column - 2]) &&
                small(first[row - 2]) == small(second[column - 1]))
                at(row, column) = std::min(at(row, column), at(row - 2, column - 2) + 1);
        }
    }
    return at(first.size(), second.size());
}

} // namespace

std::string_view nearestName(std::string_view name,
                             const std::vector<std::string_view>& candidates) {
    constexpr std::size_t longest = 64;
    if (name.size() > longest) return {};
    std::string_view nearest;
    std::size_t least = std::max<std::size_t>(name.size() / 3, 1) + 1; // too different from here on
    for (const std::string_view candidate : candidates) {
        const std::size_t changes = distance(name, candidate);
        if (changes >= least) continue;
        least = changes;
        nearest = candidate;
    }
    return nearest;
}

} // namespace Orvane
