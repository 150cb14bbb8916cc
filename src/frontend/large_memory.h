// Memory for large sources.
//
// A fresh page costs more than filling it. A program of 100,000 lines takes 15,000 pages for its
// tokens, tree and texts, which would be a third of the whole translation time; where the system
// can give memory in larger pieces, it is asked to.
//
//     tokens.reserve(count);
//     expectFilling(tokens.data(), count * sizeof(Token));
#pragma once

#include <cstddef>

namespace Orvane {

// Says that the whole range is about to be written to. Changes nothing but speed, and nothing at
// all for ranges below a few megabytes or on systems without such pages.
void expectFilling(void* start, std::size_t bytes);

} // namespace Orvane
