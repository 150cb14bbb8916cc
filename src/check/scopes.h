// The names that are visible at one place of a body, innermost first.
//
// A scope opens for every pair of braces that the translation writes around statements. Looking up
// and declaring take constant time however many names there are.
//
//     Scopes scopes;
//     scopes.open();
//     scopes.declare({"total", ValueType::integer, SymbolKind::variable});
//     scopes.find("total")->type;
//     scopes.close();
#pragma once

#include "check/value_types.h"

#include <cstddef>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace Orvane {

enum class SymbolKind : unsigned char { variable, parameter, field, control, hidden };

struct Symbol {
    std::string_view name;
    ValueType type = ValueType::unknown;
    SymbolKind kind = SymbolKind::variable;
    const void* node = nullptr; // of the declaration, in which the name stands
    std::size_t number = 0;     // of a dynamic variable whose contents are followed, from 1
};

class Scopes {
public:
    void open() { starts.push_back(symbols.size()); }
    void close();

    // Makes the name visible up to the end of the innermost scope.
    void declare(const Symbol& symbol);

    // Null for a name that is not declared.
    const Symbol* find(std::string_view name) const;
    // The same, of the innermost scope only.
    const Symbol* findHere(std::string_view name) const;

    std::size_t depth() const { return starts.size(); }

    // All that is visible, for suggestions.
    std::vector<std::string_view> names() const;

private:
    struct Entry {
        Symbol symbol;
        std::size_t hides; // index of the entry of the same name, plus 1; 0 for none
    };
    std::vector<Entry> symbols;
    std::vector<std::size_t> starts;                       // of the open scopes
    std::unordered_map<std::string_view, std::size_t> top; // index plus 1
};

} // namespace Orvane
