// Words with a kind of their own.
//
// Asked by the lexer once per word of the source, and therefore a small constant hash table: most
// words are answered by one look at one slot.
//
//     wordKind("while");   // TokenType::WhileKeyword
//     wordKind("button");  // TokenType::TypeKeyword
//     wordKind("speed");   // TokenType::Identifier
#pragma once

#include "frontend/token.h"

#include <string_view>

namespace Orvane {

// Case-sensitive. `word` is not empty.
TokenType wordKind(std::string_view word);

} // namespace Orvane
