#include "check/scopes.h"

namespace Orvane {

void Scopes::close() {
    while (symbols.size() > starts.back()) {
        const Entry& last = symbols.back();
        top[last.symbol.name] = last.hides;
        symbols.pop_back();
    }
    starts.pop_back();
}

void Scopes::declare(const Symbol& symbol) {
    std::size_t& index = top[symbol.name];
    symbols.push_back({symbol, index});
    index = symbols.size();
}

const Symbol* Scopes::find(std::string_view name) const {
    const auto entry = top.find(name);
    return entry == top.end() || entry->second == 0 ? nullptr : &symbols[entry->second - 1].symbol;
}

const Symbol* Scopes::findHere(std::string_view name) const {
    const auto entry = top.find(name);
    const bool here = entry != top.end() && !starts.empty() && entry->second > starts.back();
    return here ? &symbols[entry->second - 1].symbol : nullptr;
}

std::vector<std::string_view> Scopes::names() const {
    std::vector<std::string_view> found;
    for (const Entry& entry : symbols)
        if (entry.symbol.kind != SymbolKind::hidden) found.push_back(entry.symbol.name);
    return found;
}

} // namespace Orvane
