// A source cut where its tokens begin.
//
//     const std::vector<std::string_view> pieces = piecesOf("a = 1;", tokens);   // "a ", "= ", ...
#pragma once

#include "frontend/token.h"

#include <string_view>
#include <vector>

namespace Orvane {

// The place of each token but the last, the end token: bytes from the start of the source.
std::vector<std::size_t> offsetsOf(std::string_view source, const std::vector<Token>& tokens);

// For each token but the end token the source from its first character to the next token's: the
// token and the blanks and comments behind it.
std::vector<std::string_view> piecesOf(std::string_view source, const std::vector<Token>& tokens);

// Whether the token has a text that its kind can have; texts and characters in quotes can have any.
bool isSpelledRight(const Token& token);

// Whether the text is blanks and comments only.
bool isFiller(std::string_view text);

// Whether the piece is the token as the source spells it and blanks and comments behind it, so that
// nothing was passed over.
bool holdsNothingElse(std::string_view piece, const Token& token);

} // namespace Orvane
