#include "frontend/token.h"

#include <charconv>
#include <stdexcept>
#include <string>

namespace Orvane {

namespace {

static_assert(numberOf(TokenType::Unknown) + 1 == tokenTypeCount);
static_assert(numberOf(TokenType::VoidKeyword) + 1 == keywordCount);

template <class Number>
Number convert(const Token& token) {
    Number number{};
    const std::string_view text = token.text();
    if (std::from_chars(text.data(), text.data() + text.size(), number).ec != std::errc())
        throw std::out_of_range("Number out of range at line " + std::to_string(token.line));
    return number;
}

} // namespace

Value Token::value() const {
    switch (type) {
    case TokenType::IntegerLiteral:
        return Value(convert<int>(*this));
    case TokenType::FloatLiteral:
        return Value(convert<double>(*this));
    case TokenType::StringLiteral:
    case TokenType::CharLiteral:
    case TokenType::ColorLiteral:
        return Value::viewText(text());
    default:
        return Value();
    }
}

const std::unordered_set<std::string_view>& standardTypeSet() {
    static const std::unordered_set<std::string_view> names(standardTypes.begin(),
                                                            standardTypes.end());
    return names;
}

} // namespace Orvane
