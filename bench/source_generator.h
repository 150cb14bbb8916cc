// Sources for measurements: programs of any size with varied, realistic code.
//
// A generated program has one window with controls (one per thousand lines, at
// least three; the first twenty have a handler), a class, and script functions of ten lines each
// with declarations, calls, texts, loops, conditions, lists, members and comments. No line of code
// stands twice. The same number of lines always gives the same text.
//
//     std::string source = generateSource(110'000);
#pragma once

#include <cstddef>
#include <string>

namespace Orvane::Bench {

// A program of about `lines` lines (at most ten more).
std::string generateSource(std::size_t lines);

} // namespace Orvane::Bench
