#include "check/nearest_name.h"

#include <algorithm>
#include <cctype>
#include <numeric>

namespace Orvane {

namespace {

constexpr std::size_t longestName = 40;

char lower(char letter) {
    return static_cast<char>(std::tolower(static_cast<unsigned char>(letter)));
}

// The number of letters to insert, remove, change or exchange with their neighbour.
std::size_t distanceBetween(std::string_view first, std::string_view second) {
    std::vector<std::size_t> beforeLast(second.size() + 1);
    std::vector<std::size_t> last(second.size() + 1);
    std::vector<std::size_t> row(second.size() + 1);
    std::iota(last.begin(), last.end(), std::size_t{0});
    for (std::size_t i = 1; i <= first.size(); ++i) {
        row[0] = i;
        for (std::size_t j = 1; j <= second.size(); ++j) {
            const bool same = lower(first[i - 1]) == lower(second[j - 1]);
            row[j] = std::min({last[j] + 1, row[j - 1] + 1, last[j - 1] + (same ? 0 : 1)});
            const bool exchanged = i > 1 && j > 1 && lower(first[i - 1]) == lower(second[j - 2]) &&
                                   lower(first[i - 2]) == lower(second[j - 1]);
            if (exchanged) row[j] = std::min(row[j], beforeLast[j - 2] + 1);
        }
        beforeLast.swap(last);
        last.swap(row);
    }
    return last[second.size()];
}

} // namespace

std::string_view nearestName(std::string_view name,
                             const std::vector<std::string_view>& candidates) {
    std::string_view nearest;
    if (name.size() > longestName) return nearest;
    std::size_t least = name.size() < 3 ? 0 : (name.size() < 6 ? 1 : 2);
    bool found = false;
    for (const std::string_view candidate : candidates) {
        const std::size_t difference = candidate.size() > name.size()
                                           ? candidate.size() - name.size()
                                           : name.size() - candidate.size();
        if (difference > least || candidate == name) continue;
        const std::size_t distance = distanceBetween(name, candidate);
        if (distance > least || (found && distance == least)) continue;
        nearest = candidate;
        least = distance;
        found = true;
    }
    return nearest;
}

} // namespace Orvane
