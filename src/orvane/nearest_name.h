// The name that somebody may have meant.
//
//     nearestName("chek", {"check", "build"});   // "check"
#pragma once

#include <string_view>
#include <vector>

namespace Orvane {

// The candidate that takes the fewest changed, missing, additional or exchanged letters; empty when
// all are too different. Capital letters count as small ones.
std::string_view nearestName(std::string_view name,
                             const std::vector<std::string_view>& candidates);

} // namespace Orvane
