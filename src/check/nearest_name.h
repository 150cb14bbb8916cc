// The name that was probably meant.
//
//     nearestName("lenght", {"length", "trim"});   // "length"
#pragma once

#include <string_view>
#include <vector>

namespace Orvane {

// The candidate that differs least, counting changed, missing, doubled and exchanged letters; one
// that differs only in upper and lower case comes first. Empty when none is near.
std::string_view nearestName(std::string_view name,
                             const std::vector<std::string_view>& candidates);

} // namespace Orvane
