// Expressions. From the weakest binding to the strongest:
//
//     trailing "."        (parseExpression)
//     "=" and "? :"       (parseAssignment)
//     "==" "!="           (parseBinary, this row and the next three)
//     "<" ">" "<=" ">="
//     "+" "-"
//     "*" "/" "%"
//     prefix "!" "-"      (parseUnary)
//     postfix "." "[" "(" (parsePostfix)
//
// Chains of one row are loops and may have any length; whatever leads back to parseExpression or
// repeats a prefix holds a Nesting.
#include "frontend/parser.h"

#include <string>

namespace Orvane {

namespace {

constexpr int equalityStrength = 1;

// How strongly a binary operator binds; 0 for every other token. "&&" and "||" are no operators of
// the language: an expression ends in front of them.
constexpr int strengthOf(TokenType type) {
    switch (type) {
    case TokenType::Equal:
    case TokenType::NotEqual:
        return equalityStrength;
    case TokenType::Less:
    case TokenType::Greater:
    case TokenType::LessEqual:
    case TokenType::GreaterEqual:
        return 2;
    case TokenType::Plus:
    case TokenType::Minus:
        return 3;
    case TokenType::Star:
    case TokenType::Slash:
    case TokenType::Percent:
        return 4;
    default:
        return 0;
    }
}

constexpr TokenSet testableTypes = memberNames | TokenSet{TokenType::ClassKeyword};
constexpr TokenSet declarationKinds = {TokenType::ClassKeyword, TokenType::MapKeyword,
                                       TokenType::FunctionKeyword, TokenType::AbleKeyword,
                                       TokenType::Identifier};

} // namespace

// expression = assignment { "." NAME } ;
//
// The trailing member access binds weakest of all: in 1 + (a).c it applies to the whole sum.
uptr<Expr> Parser::parseExpression() {
    const std::size_t first = current;
    uptr<Expr> result = parseAssignment();
    while (match(TokenType::Dot)) {
        const Token& name = consume(TokenType::Identifier, "Expected member name");
        uptr<Expr> member = make<IdentifierExpr>(current - 1, keep(name));
        result = make<BinaryExpr>(first, std::move(result), spellingOf(TokenType::Dot),
                                  std::move(member));
    }
    return result;
}

// assignment = binary [ "?" expression ":" expression | "=" assignment ] ;
uptr<Expr> Parser::parseAssignment() {
    const std::size_t first = current;
    uptr<Expr> left = parseBinary(equalityStrength);
    if (check(TokenType::Question)) return parseTernary(first, std::move(left));
    if (!match(TokenType::Assign)) return left;
    const Nesting level(*this);
    uptr<Expr> right = parseAssignment();
    return make<BinaryExpr>(first, std::move(left), spellingOf(TokenType::Assign),
                            std::move(right));
}

uptr<Expr> Parser::parseTernary(std::size_t firstToken, uptr<Expr> condition) {
    advance();
    const Nesting level(*this);
    uptr<Expr> thenExpr = parseExpression();
    consume(TokenType::Colon, "Expected ':' in ternary expression");
    uptr<Expr> elseExpr = parseExpression();
    return make<TernaryExpr>(firstToken, std::move(condition), std::move(thenExpr),
                             std::move(elseExpr));
}

// binary = unary { OPERATOR unary } ;
//
// Reads operators that bind at least as strongly as `weakest`; each takes to its right what binds
// more strongly than itself, so that equals lean to the left.
uptr<Expr> Parser::parseBinary(int weakest) {
    const std::size_t first = current;
    uptr<Expr> left = parseUnary();
    for (;;) {
        const TokenType op = peek().type;
        const int strength = strengthOf(op);
        if (strength < weakest) return left;
        advance();
        uptr<Expr> right = parseBinary(strength + 1);
        left = make<BinaryExpr>(first, std::move(left), spellingOf(op), std::move(right));
    }
}

// unary = ( "!" | "-" ) unary | primary ;
uptr<Expr> Parser::parseUnary() {
    if (!check(TokenType::Not) && !check(TokenType::Minus)) return parsePrimary();
    const std::size_t first = current;
    const std::string_view op = spellingOf(advance().type);
    const Nesting level(*this);
    uptr<Expr> operand = parseUnary();
    return make<UnaryExpr>(first, op, std::move(operand));
}

uptr<Expr> Parser::parsePrimary() {
    switch (peek().type) {
    case TokenType::IsKeyword:
        return parseIs();
    case TokenType::TherebeKeyword:
        return parseTherebe();
    case TokenType::HaveKeyword:
        return parseHave();
    case TokenType::IntegerLiteral:
    case TokenType::FloatLiteral:
    case TokenType::StringLiteral:
    case TokenType::CharLiteral:
    case TokenType::ColorLiteral:
    case TokenType::TrueKeyword:
    case TokenType::FalseKeyword:
    case TokenType::NullKeyword:
        return parseLiteral();
    case TokenType::LeftBrace:
        return parseBraceList();
    case TokenType::Identifier:
        return parseName();
    case TokenType::LeftParen:
        return parseGroup();
    case TokenType::LeftBracket:
        return parseBracketExpr();
    default:
        fail("Expected expression", peek().line);
    }
}

// is = "is" "(" expression "," TYPE ")" ;
uptr<Expr> Parser::parseIs() {
    const std::size_t first = current;
    advance();
    consume(TokenType::LeftParen, "Expected '(' after 'is'");
    const Nesting level(*this);
    uptr<Expr> tested = parseExpression();
    consume(TokenType::Comma, "Expected ',' in is()");
    const std::string_view typeName =
        keep(takeAny(testableTypes, "Expected type name as second argument to is()"));
    consume(TokenType::RightParen, "Expected ')' after is() arguments");
    return make<IsExpr>(first, std::move(tested), typeName);
}

// therebe = "therebe" "(" ( "class" | "map" | "function" | "able" | NAME ) "," NAME ")" ;
uptr<Expr> Parser::parseTherebe() {
    const std::size_t first = current;
    advance();
    consume(TokenType::LeftParen, "Expected '(' after 'therebe'");
    const std::string_view kind =
        keep(takeAny(declarationKinds, "Expected kind (class/function) in therebe()"));
    consume(TokenType::Comma, "Expected ',' in therebe()");
    const std::string_view name =
        keep(consume(TokenType::Identifier, "Expected name in therebe()"));
    consume(TokenType::RightParen, "Expected ')' after therebe()");
    return make<TherebeExpr>(first, kind, name);
}

// have = "have" "(" NAME "," [ "." ] NAME ")" ;
uptr<Expr> Parser::parseHave() {
    const std::size_t first = current;
    advance();
    consume(TokenType::LeftParen, "Expected '(' after 'have'");
    const std::string_view className = keep(consume(TokenType::Identifier, "Expected class name"));
    consume(TokenType::Comma, "Expected ',' in have()");
    std::string member = match(TokenType::Dot) ? "." : "";
    member += consume(TokenType::Identifier, "Expected member name").text();
    consume(TokenType::RightParen, "Expected ')' after have()");
    return make<HaveExpr>(first, className, arena().text(member));
}

uptr<Expr> Parser::parseLiteral() {
    const std::size_t first = current;
    const Token& token = advance();
    switch (token.type) {
    case TokenType::ColorLiteral:
        return make<LiteralExpr>(first, Value::viewColor(keep(token)));
    case TokenType::TrueKeyword:
        return make<LiteralExpr>(first, Value(true));
    case TokenType::FalseKeyword:
        return make<LiteralExpr>(first, Value(false));
    case TokenType::StringLiteral:
    case TokenType::CharLiteral:
        return make<LiteralExpr>(first, Value::viewText(keep(token)));
    default:
        return make<LiteralExpr>(first, token.value()); // `null` has the null value
    }
}

// braceList = "{" [ expression { "," expression } ] "}" ;
uptr<Expr> Parser::parseBraceList() {
    const std::size_t first = current;
    advance();
    const Nesting level(*this);
    ExprList elements(arena());
    if (!match(TokenType::RightBrace)) {
        do elements.push_back(parseExpression());
        while (match(TokenType::Comma));
        consume(TokenType::RightBrace, "Expected '}'");
    }
    return make<ArrayExpr>(first, std::move(elements));
}

// group = "(" expression ")" ;
uptr<Expr> Parser::parseGroup() {
    advance();
    const Nesting level(*this);
    uptr<Expr> inner = parseExpression();
    consume(TokenType::RightParen, "Expected ')'");
    return inner;
}

// name = NAME ( object | { postfix } ) ;
uptr<Expr> Parser::parseName() {
    if (peekNext().type == TokenType::LeftBrace) return parseObject();
    const std::size_t first = current;
    const std::string_view name = keep(advance());
    return parsePostfix(first, make<IdentifierExpr>(first, name));
}

// object = NAME "{" [ NAME "=" expression { "," NAME "=" expression } ] "}" ;
uptr<Expr> Parser::parseObject() {
    const std::size_t first = current;
    auto object = arena().make<ObjectCtorExpr>(arena(), keep(advance()));
    consume(TokenType::LeftBrace, "Expected '{'");
    const Nesting level(*this);
    Ranges ranges;
    if (!match(TokenType::RightBrace)) {
        do {
            const std::size_t firstOfField = current;
            const std::string_view name =
                keep(consume(TokenType::Identifier, "Expected field name"));
            consume(TokenType::Assign, "Expected '='");
            object->fields.emplace_back(name, parseExpression());
            mark(ranges, firstOfField);
        } while (match(TokenType::Comma));
        consume(TokenType::RightBrace, "Expected '}'");
    }
    place(object->fields, ranges);
    mark(object.get(), first);
    return object;
}

// postfix = "." MEMBER | "[" expression "]" | "(" [ expression { "," expression } ] ")" ;
uptr<Expr> Parser::parsePostfix(std::size_t firstToken, uptr<Expr> result) {
    for (;;) {
        switch (peek().type) {
        case TokenType::Dot:
            result = parseMemberAccess(firstToken, std::move(result));
            break;
        case TokenType::LeftBracket:
            result = parseIndex(firstToken, std::move(result));
            break;
        case TokenType::LeftParen:
            result = parseCall(firstToken, std::move(result));
            break;
        default:
            return result;
        }
    }
}

uptr<Expr> Parser::parseMemberAccess(std::size_t firstToken, uptr<Expr> object) {
    advance();
    const std::string_view name = keep(takeAny(memberNames, "Expected member name"));
    uptr<Expr> member = make<IdentifierExpr>(current - 1, name);
    return make<BinaryExpr>(firstToken, std::move(object), spellingOf(TokenType::Dot),
                            std::move(member));
}

uptr<Expr> Parser::parseIndex(std::size_t firstToken, uptr<Expr> object) {
    advance();
    const Nesting level(*this);
    uptr<Expr> index = parseExpression();
    consume(TokenType::RightBracket, "Expected ']'");
    return make<IndexExpr>(firstToken, std::move(object), std::move(index));
}

// The call of a bare name keeps the name and drops its node.
uptr<Expr> Parser::parseCall(std::size_t firstToken, uptr<Expr> callee) {
    advance();
    const Nesting level(*this);
    const auto* name = nodeCast<IdentifierExpr>(callee);
    auto call = name ? arena().make<CallExpr>(arena(), name->name)
                     : arena().make<CallExpr>(arena(), std::move(callee));
    if (!match(TokenType::RightParen)) {
        do call->args.push_back(parseExpression());
        while (match(TokenType::Comma));
        consume(TokenType::RightParen, "Expected ')'");
    }
    mark(call.get(), firstToken);
    return call;
}

// bracket = "[" expression ( comprehension | range | list ) "]" ;
uptr<Expr> Parser::parseBracketExpr() {
    const std::size_t first = current;
    advance();
    const Nesting level(*this);
    uptr<Expr> element = parseExpression();
    if (match(TokenType::ForKeyword)) return parseComprehension(first, std::move(element));
    if (match(TokenType::DotDot)) return parseRange(first, std::move(element));
    return parseBracketList(first, std::move(element));
}

// comprehension = "for" NAME "in" expression [ "where" expression ] ;
uptr<Expr> Parser::parseComprehension(std::size_t firstToken, uptr<Expr> element) {
    const std::string_view variable =
        keep(takeAny(identifiers, "Expected variable name after 'for' in list comprehension"));
    takeAny({TokenType::InKeyword}, "Expected 'in' in list comprehension");
    uptr<Expr> iterable = parseExpression();
    uptr<Expr> condition;
    if (match(TokenType::WhereKeyword)) condition = parseExpression();
    consume(TokenType::RightBracket, "Expected ']' at end of list comprehension");
    auto comprehension =
        make<ListComprehensionExpr>(firstToken, std::move(element), variable, std::move(iterable));
    comprehension->condition = std::move(condition);
    return comprehension;
}

// range = ".." expression [ "," expression ] ;
uptr<Expr> Parser::parseRange(std::size_t firstToken, uptr<Expr> start) {
    uptr<Expr> end = parseExpression();
    uptr<Expr> step;
    if (match(TokenType::Comma)) step = parseExpression();
    consume(TokenType::RightBracket, "Expected ']' at end of range");
    auto range = make<RangeExpr>(firstToken, std::move(start), std::move(end));
    range->step = std::move(step);
    return range;
}

// list = { "," expression } ;
//
// Three elements are a range with its step: [1, 10, 2] is [1..10, 2].
uptr<Expr> Parser::parseBracketList(std::size_t firstToken, uptr<Expr> firstElement) {
    ExprList elements(arena());
    elements.push_back(std::move(firstElement));
    while (match(TokenType::Comma)) elements.push_back(parseExpression());
    consume(TokenType::RightBracket, "Expected ']'");
    if (elements.size() != 3) return make<ArrayExpr>(firstToken, std::move(elements));
    auto range = make<RangeExpr>(firstToken, std::move(elements[0]), std::move(elements[1]));
    range->step = std::move(elements[2]);
    return range;
}

} // namespace Orvane
