// Which functions a source calls, and to which of them it hands certain names.
//
// Reads the tokens, not the tree: a control is handed to a function by its bare name, as an
// argument or as an element of a list that is one.
//
//     NameUses uses(source.tokens(), {"tick"});
//     uses.calls("enableEvents");
//     uses.receiversOf("tick");   // {"startTimer", "stopTimer"}
#pragma once

#include "frontend/token.h"

#include <set>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <vector>

namespace Orvane {

class NameUses {
public:
    using Names = std::set<std::string_view>;

    using Wanted = std::unordered_set<std::string_view>;

    // `wanted` are the names to follow. The tokens' texts must outlive it.
    NameUses(const std::vector<Token>& tokens, const Wanted& wanted);

    bool calls(std::string_view function) const { return called.contains(function); }
    const Names& calledFunctions() const { return called; }

    // The functions in whose arguments the name, one of the wanted ones, stands.
    const Names& receiversOf(std::string_view name) const;

private:
    void openParenthesis(const std::vector<Token>& tokens, std::size_t at);

    Names called;
    std::unordered_map<std::string_view, Names> receivers;
    std::vector<std::string_view>
        open; // the calls around the current token; empty for other brackets
};

} // namespace Orvane
