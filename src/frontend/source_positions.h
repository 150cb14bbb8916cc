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

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

namespace Orvane {

// From the first to the last token of a construct, both included; indices from 0.
struct TokenRange {
    std::size_t first = 0;
    std::size_t last = 0;
};

// A parse adds a range for every node, and few of them are ever asked for: adding only appends, and
// the first question behind it puts the table in order.
class PositionTable {
public:
    // Called by the parser for every node and record that it completes. A second range of a node
    // replaces the first.
    void add(const void* node, TokenRange range) {
        entries.push_back({reinterpret_cast<std::uintptr_t>(node),
                           static_cast<std::uint32_t>(range.first),
                           static_cast<std::uint32_t>(range.last)});
        ordered = false;
    }

    // Makes room for about as many nodes.
    void reserve(std::size_t nodes) { entries.reserve(nodes); }

    // Nothing when the node was not built by the parser that filled the table.
    std::optional<TokenRange> find(const void* node) const {
        putInOrder();
        const auto address = reinterpret_cast<std::uintptr_t>(node);
        const auto entry = std::lower_bound(
            entries.begin(), entries.end(), address,
            [](const Entry& known, std::uintptr_t wanted) { return known.node < wanted; });
        if (entry == entries.end() || entry->node != address) return std::nullopt;
        return TokenRange{entry->first, entry->last};
    }

    std::size_t size() const {
        putInOrder();
        return entries.size();
    }

private:
    struct Entry {
        std::uintptr_t node;
        std::uint32_t first;
        std::uint32_t last;
    };

    // By address; of one node the last entry alone. Nodes come mostly in the order of their
    // addresses, which a merge sort makes use of.
    void putInOrder() const {
        if (ordered) return;
        std::stable_sort(entries.begin(), entries.end(),
                         [](const Entry& a, const Entry& b) { return a.node < b.node; });
        std::size_t kept = 0;
        for (const Entry& entry : entries) {
            if (kept == 0 || entries[kept - 1].node != entry.node) ++kept;
            entries[kept - 1] = entry;
        }
        entries.resize(kept);
        ordered = true;
    }

    mutable std::vector<Entry> entries;
    mutable bool ordered = true;
};

} // namespace Orvane
