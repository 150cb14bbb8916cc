#include "check/name_uses.h"

#include "frontend/token_sets.h"

namespace Orvane {

namespace {

// In a definition a type or, for a type of the program, another name stands in front of the name.
bool isDefinition(const std::vector<Token>& tokens, std::size_t name) {
    return name > 0 && (resultTypes | identifiers).has(tokens[name - 1].type);
}

} // namespace

NameUses::NameUses(const std::vector<Token>& tokens, const Wanted& wanted) {
    for (std::size_t at = 0; at < tokens.size(); ++at) {
        const Token& token = tokens[at];
        if (token.type == TokenType::LeftParen)
            openParenthesis(tokens, at);
        else if (token.type == TokenType::RightParen && !open.empty())
            open.pop_back();
        else if (token.type == TokenType::Identifier && !open.empty() && !open.back().empty() &&
                 wanted.contains(token.text()))
            receivers[token.text()].insert(open.back());
    }
}

// Parentheses inside arguments belong to the call around them.
void NameUses::openParenthesis(const std::vector<Token>& tokens, std::size_t at) {
    std::string_view function = open.empty() ? std::string_view() : open.back();
    if (at > 0 && tokens[at - 1].type == TokenType::Identifier) {
        function = isDefinition(tokens, at - 1) ? std::string_view() : tokens[at - 1].text();
        if (!function.empty()) called.insert(function);
    }
    open.push_back(function);
}

const NameUses::Names& NameUses::receiversOf(std::string_view name) const {
    static const Names none;
    const auto entry = receivers.find(name);
    return entry == receivers.end() ? none : entry->second;
}

} // namespace Orvane
