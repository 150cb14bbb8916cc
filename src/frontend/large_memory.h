// Memory for large sources.
//
// A fresh page costs more than filling it: the program stops at the first byte that it writes there
// and the system finds, clears and maps this one page. A source of 100,000 lines takes 12,000 of
// them for its tokens, tree and texts; asked for by the hundred, they cost half as much.
//
// And what has been read for the last time need not wait for its owner's end.
//
//     buffer.reserve(count);
//     expectFilling(buffer.data(), count);
//     ...
//     giveBack(buffer.data(), countRead);
#pragma once

#include <cstddef>

namespace Orvane {

// Enough pages at a time to be worth asking, and no great loss when they are not filled after all.
inline constexpr std::size_t fillingStep = std::size_t{1} << 20; // bytes

// Says that the whole range is about to be written to; what is in it stays. Changes nothing but
// speed, and nothing at all for a range of a few pages or on a system that cannot be asked.
void expectFilling(void* start, std::size_t bytes);

// Gives the whole pages of the range back to the system. The range stays its owner's; what was in
// it is lost, and it may be written again.
void giveBack(void* start, std::size_t bytes);

} // namespace Orvane
