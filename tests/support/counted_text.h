// Texts with numbers that go on counting from one to the next.
//
//     differInCountersOnly("a_1 = 1001;", "a_3 = 1004;")   // true
//     differInCountersOnly("a_1 = b_1;", "a_3 = b_5;")     // true: two counters
//     differInCountersOnly("a_1 = 2;", "a_1 = x;")         // false
#pragma once

#include <string_view>

namespace Orvane {

// Whether the texts are equal but for numbers, and those that differ are larger in the second text
// by one of at most two amounts: there are two counters.
bool differInCountersOnly(std::string_view first, std::string_view second);

} // namespace Orvane
