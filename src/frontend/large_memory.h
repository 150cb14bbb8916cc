// Memory for large sources.
//
// A fresh page costs more than filling it. A program of 100,000 lines takes 15,000 pages for its
// tokens, tree and texts, which would be a third of the whole translation time; where the system
// can give memory in larger pieces, it is asked to.
//
// And what has been read for the last time need not wait for its owner's end: the tokens of a
// source take up to 24 times its size, and the tree that is made of them as much again.
//
//     tokens.reserve(count);
//     expectFilling(tokens.data(), count * sizeof(Token));
//     ...
//     giveBack(tokens.data(), countRead * sizeof(Token));
#pragma once

#include <cstddef>

namespace Orvane {

// Says that the whole range is about to be written to. Changes nothing but speed, and nothing at
// all for ranges below a few megabytes or on systems without such pages.
void expectFilling(void* start, std::size_t bytes);

// Gives the whole pages of the range back to the system. The range stays its owner's; what was in
// it is lost, and it may be written again.
void giveBack(void* start, std::size_t bytes);

} // namespace Orvane
