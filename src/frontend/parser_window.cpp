// The window: properties, and controls with properties and event bodies.
#include "frontend/parser.h"

namespace Orvane {

// vorla = "vorla" NAME "{" { component | property } "}" ;
//
// Replaces the window that the program may already have. Other tokens in the body are skipped.
void Parser::parseVorla(AST& program) {
    const std::size_t first = current;
    advance();
    auto window = arena().make<Vorla>(arena());
    window->name = keep(consume(TokenType::Identifier, "Expected vorla name"));
    consume(TokenType::LeftBrace, "Expected '{'");
    parseWindowBody(*window);
    mark(window.get(), first);
    program.window = std::move(window);
}

// { component | property } "}" ;
void Parser::parseWindowBody(Vorla& window) {
    const InList list(*this, Body::window);
    Ranges ranges;
    while (!atClose() && !isAtEnd()) {
        element([&] {
            const std::size_t first = current;
            if (atComponent())
                window.components.push_back(parseComponent());
            else if (memberNames.has(peek().type))
                parseProperty(window.properties, ranges);
            else
                advance(), noteSkipped(first);
        });
    }
    consume(TokenType::RightBrace, "Expected '}'");
    place(window.properties, ranges);
}

// A component begins with an identifier or built-in type name, any number of identifiers and "{".
//
// The end of the identifiers is remembered: asked again in the middle of the same run, as happens
// when its words are dropped one by one, the answer is the same and costs nothing.
bool Parser::atComponent() {
    if (!plainNames.has(peek().type)) return false;
    if (identifiersEnd <= current) {
        identifiersEnd = current + 1;
        while (peekAt(identifiersEnd - current).type == TokenType::Identifier) ++identifiersEnd;
    }
    return peekAt(identifiersEnd - current).type == TokenType::LeftBrace;
}

// component = KIND NAME "{" { event | property } "}" ;  other tokens in the body are skipped
uptr<Component> Parser::parseComponent() {
    const std::size_t first = current;
    auto component = arena().make<Component>(arena());
    component->type = keep(advance());
    component->name = keep(consume(TokenType::Identifier, "Expected component name"));
    consume(TokenType::LeftBrace, "Expected '{'");
    parseComponentBody(*component);
    mark(component.get(), first);
    return component;
}

// { event | property } "}" ;
void Parser::parseComponentBody(Component& component) {
    const InList list(*this, Body::component);
    Ranges ranges;
    while (!atClose() && !isAtEnd()) {
        element([&] {
            const std::size_t first = current;
            if (memberNames.has(peek().type))
                parseProperty(component.properties, ranges);
            else if (match(TokenType::OnKeyword))
                parseEvent(component);
            else
                advance(), noteSkipped(first);
        });
    }
    consume(TokenType::RightBrace, "Expected '}'");
    place(component.properties, ranges);
}

// event = "on" NAME block ;
void Parser::parseEvent(Component& component) {
    const std::string_view name = keep(consume(TokenType::Identifier, "Expected event name"));
    component.events.insert_or_assign(name, parseBlock());
}

// property = KEY "=" expression [ ";" ] ;  a key without "=" is dropped
void Parser::parseProperty(List<Property>& properties, Ranges& ranges) {
    const std::size_t first = current;
    const Token key = advance(); // a copy: the value may be long
    if (!match(TokenType::Assign)) return noteSkipped(first);
    uptr<Expr> value = parseExpression();
    match(TokenType::Semicolon);
    properties.push_back({keep(key), std::move(value)});
    mark(ranges, first);
}

} // namespace Orvane
