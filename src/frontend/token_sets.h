// Sets of token kinds that several parts of the grammar share.
//
// The parser asks them about the next token. A set is one 128-bit mask, so that membership costs a
// shift whatever its size.
//
//     if (isTypeKeyword.has(peek().type)) ...
#pragma once

#include "frontend/token.h"

#include <cstdint>
#include <initializer_list>

namespace Orvane {

class TokenSet {
public:
    constexpr TokenSet(std::initializer_list<TokenType> types) {
        for (const TokenType type : types) add(type);
    }
    constexpr bool has(TokenType type) const {
        return (words[wordOf(type)] >> (numberOf(type) % 64)) & 1U;
    }
    // Every member of both.
    constexpr TokenSet operator|(const TokenSet& other) const {
        TokenSet both = *this;
        both.words[0] |= other.words[0];
        both.words[1] |= other.words[1];
        return both;
    }

private:
    static constexpr std::size_t wordOf(TokenType type) {
        return static_cast<std::size_t>(numberOf(type) / 64);
    }
    constexpr void add(TokenType type) { words[wordOf(type)] |= 1ULL << (numberOf(type) % 64); }

    std::uint64_t words[2] = {0, 0};
};

// The keywords that name a type of values.
inline constexpr TokenSet valueTypes = {
    TokenType::ValueKeyword,     TokenType::IntKeyword,  TokenType::DoubleKeyword,
    TokenType::StringKeyword,    TokenType::BoolKeyword, TokenType::ArrayKeyword,
    TokenType::ContainerKeyword, TokenType::MapKeyword,
};

inline constexpr TokenSet identifiers = {TokenType::Identifier};

// Identifiers and built-in type names: window properties and controls begin with one, and a typed
// declaration's name is one.
inline constexpr TokenSet plainNames = {TokenType::Identifier, TokenType::TypeKeyword};

// Any word of the standard types besides: property keys, and members behind a ".".
inline constexpr TokenSet memberNames = plainNames | valueTypes;

// A declaration or loop variable begins with one of these, unless its type is an identifier.
inline constexpr TokenSet declarationTypes = valueTypes | TokenSet{TokenType::TypeKeyword};

// Types of parameters and aliases.
inline constexpr TokenSet parameterTypes = declarationTypes | TokenSet{TokenType::FunctionKeyword};

// Types of results and class members.
inline constexpr TokenSet resultTypes = parameterTypes | TokenSet{TokenType::VoidKeyword};

} // namespace Orvane
