// Source positions of nodes, kept beside the tree.
//
// The parser fills a PositionTable when it is given one; the compiler itself does without.
// Positions are indices of tokens, so that line, column and text come from the token vector that
// was parsed.
//
//     PositionTable positions;
//     Parser parser(tokens, console, &positions);
//     auto program = parser.parse();
//     if (auto range = positions.find(node)) line = tokens[range->first].line;
#pragma once

#include <cstddef>
#include <optional>
#include <unordered_map>

namespace Orvane {

// From the first to the last token of a construct, both included; indices from 0.
struct TokenRange {
    std::size_t first = 0;
    std::size_t last = 0;
};

class PositionTable {
public:
    // Called by the parser for every node and record that it completes.
    void add(const void* node, TokenRange range) { ranges[node] = range; }

    // Nothing when the node was not built by the parser that filled the table.
    std::optional<TokenRange> find(const void* node) const {
        const auto entry = ranges.find(node);
        if (entry == ranges.end()) return std::nullopt;
        return entry->second;
    }

    std::size_t size() const { return ranges.size(); }

private:
    std::unordered_map<const void*, TokenRange> ranges;
};

} // namespace Orvane
