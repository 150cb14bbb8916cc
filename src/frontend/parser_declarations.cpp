// What stands at the top level of a source, and the functions and handlers that scripts share with
// it. Windows are in parser_window.cpp, classes and ables in parser_classes.cpp.
#include "frontend/parser.h"

#include <string>

namespace Orvane {

namespace {

constexpr TokenSet functionTypes = resultTypes | identifiers;

// A word is an identifier or any keyword.
bool isWord(TokenType type) { return numberOf(type) <= numberOf(TokenType::Identifier); }

bool isAliasWord(const Token& token) {
    return token.type == TokenType::TypeKeyword && token.text() == spellingOf(token.type);
}

} // namespace

// declaration = typename | import | using | class | able | vorla | function
//             | NAME "." "script" script ;
//
// Anything else is skipped without a word, a name together with a "." behind it.
void Parser::parseTopLevel(AST& program) {
    switch (peek().type) {
    case TokenType::TypenameKeyword:
        return parseTypename(program);
    case TokenType::ImportKeyword:
        return parseImport(program);
    case TokenType::UsingKeyword:
        return parseUsing(program);
    case TokenType::ClassKeyword:
        return parseClass(program);
    case TokenType::AbleKeyword:
        return parseAble(program);
    case TokenType::VorlaKeyword:
        return parseVorla(program);
    default:
        break;
    }
    if (atFunction()) {
        program.functions.push_back(parseFunction());
        return;
    }
    const std::size_t first = current;
    if (advance().type == TokenType::Identifier && match(TokenType::Dot) &&
        check(TokenType::ScriptKeyword))
        parseScript(program);
    else
        noteSkipped(first);
}

// typename = "typename" NAME ";" ;
void Parser::parseTypename(AST& program) {
    const std::size_t first = current;
    advance();
    const Token& name = consume(TokenType::Identifier, "Expected typename name");
    consume(TokenType::Semicolon, "Expected ';' after typename declaration");
    program.typeNames.push_back(keep(name));
    mark(topLevel.typeNames, first);
}

// import = "import" ( STRING | moduleName ) [ ";" ] ;
void Parser::parseImport(AST& program) {
    const std::size_t first = current;
    advance();
    if (check(TokenType::StringLiteral)) {
        program.imports.push_back(keep(advance()));
    } else if (isWord(peek().type)) {
        program.imports.push_back(parseModuleName());
    } else {
        consume(TokenType::Semicolon, "Expected ';'");
        return;
    }
    match(TokenType::Semicolon);
    mark(topLevel.imports, first);
}

// moduleName = WORD { ( "." | "/" ) WORD } ;
std::string_view Parser::parseModuleName() {
    std::string name(advance().text());
    while ((check(TokenType::Dot) || check(TokenType::Slash)) && isWord(peekNext().type)) {
        name += advance().text();
        name += advance().text();
    }
    return arena().text(name);
}

// using = "using" ( alias | pair ) ";" ;
void Parser::parseUsing(AST& program) {
    const std::size_t first = current;
    advance();
    const Using entry = isAliasWord(peek()) ? parseUsingAlias() : parseUsingPair();
    consume(TokenType::Semicolon, "Expected ';'");
    program.usings.push_back(entry);
    mark(topLevel.usings, first);
}

// alias = "type" NAME "=" TYPE ;
Using Parser::parseUsingAlias() {
    advance();
    const std::string_view name = keep(consume(TokenType::Identifier, "Expected type alias name"));
    consume(TokenType::Assign, "Expected '=' in using type");
    const Token& type = consumeAny(parameterTypes | identifiers, "Expected type name");
    return {name, keep(type), true};
}

// pair = WORD STRING ;
Using Parser::parseUsingPair() {
    if (!isWord(peek().type)) fail("Expected using key", peek().line);
    const std::string_view key = keep(advance());
    const std::string_view value = keep(consume(TokenType::StringLiteral, "Expected using value"));
    return {key, value, false};
}

// Whether a function begins here: a name in front of "(", with or without a type before it.
bool Parser::atFunction() const {
    const TokenType next = peekNext().type;
    if (check(TokenType::Identifier) && next == TokenType::LeftParen) return true;
    return functionTypes.has(peek().type) && next == TokenType::Identifier &&
           peekAt(2).type == TokenType::LeftParen;
}

// function = [ TYPE ] NAME parameters block ;
uptr<FuncDef> Parser::parseFunction() {
    const std::size_t first = current;
    auto function = arena().make<FuncDef>(arena());
    if (peekNext().type != TokenType::LeftParen) function->returnType = keep(advance());
    function->name = keep(advance());
    function->params = parseParameters();
    function->body = parseBlock();
    mark(function.get(), first);
    return function;
}

// parameters = "(" [ parameter { "," parameter } ] ")" ;
List<Parameter> Parser::parseParameters() {
    consume(TokenType::LeftParen, "Expected '('");
    List<Parameter> parameters(arena());
    Ranges ranges;
    if (!check(TokenType::RightParen)) {
        do {
            const std::size_t first = current;
            parameters.push_back(parseParameter());
            mark(ranges, first);
        } while (match(TokenType::Comma));
    }
    consume(TokenType::RightParen, "Expected ')'");
    place(parameters, ranges);
    return parameters;
}

// parameter = [ TYPE ] NAME ;  an identifier is a type only in front of another one
Parameter Parser::parseParameter() {
    const bool userType = check(TokenType::Identifier) && peekNext().type == TokenType::Identifier;
    std::string_view typeName;
    if (userType || parameterTypes.has(peek().type)) typeName = keep(advance());
    return {keep(consume(TokenType::Identifier, "Expected param name")), typeName};
}

// script = "script" "{" { handler | class | function } "}" ;  called at the word "script"
//
// Every block adds to the program's one script; other tokens in it are skipped.
void Parser::parseScript(AST& program) {
    const std::size_t nameToken = current - 2;
    advance();
    consume(TokenType::LeftBrace, "Expected '{'");
    if (!program.script) program.script = arena().make<Script>(arena());
    Script& script = *program.script;
    parseScriptBody(program, script);
    if (!positions) return;
    const auto earlier = positions->find(&script);
    mark(&script, earlier ? earlier->first : nameToken);
}

// { handler | class | function } "}" ;
void Parser::parseScriptBody(AST& program, Script& script) {
    const InList list(*this, Body::script);
    while (!atClose() && !isAtEnd()) element([&] { parseScriptMember(program, script); });
    consume(TokenType::RightBrace, "Expected '}'");
}

// handler | class | function ;
void Parser::parseScriptMember(AST& program, Script& script) {
    const std::size_t first = current;
    const bool named = check(TokenType::Identifier) && peekNext().type == TokenType::Dot;
    if (named || check(TokenType::OnKeyword))
        script.handlers.push_back(parseEventHandler());
    else if (check(TokenType::ClassKeyword))
        parseClass(program);
    else if (atFunction())
        script.functions.push_back(parseFunction());
    else
        advance(), noteSkipped(first);
}

// handler = [ "on" ] NAME "." NAME block ;
uptr<EventHandler> Parser::parseEventHandler() {
    const std::size_t first = current;
    match(TokenType::OnKeyword);
    auto handler = arena().make<EventHandler>(arena());
    handler->targetName = keep(consume(TokenType::Identifier, "Expected target name"));
    consume(TokenType::Dot, "Expected '.'");
    handler->eventName = keep(consume(TokenType::Identifier, "Expected event name"));
    handler->body = parseBlock();
    mark(handler.get(), first);
    return handler;
}

} // namespace Orvane
