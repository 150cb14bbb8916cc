// Classes and ables.
#include "frontend/parser.h"

namespace Orvane {

namespace {

constexpr TokenSet memberTypes = resultTypes | identifiers;

} // namespace

// class = "class" NAME "{" { access | member } "}" ;
//
// An access word with ":" holds up to the next such label, one without for the next member.
void Parser::parseClass(AST& program) {
    const std::size_t first = current;
    advance();
    auto record = arena().make<ClassDef>(arena());
    record->name = keep(consume(TokenType::Identifier, "Expected class name"));
    consume(TokenType::LeftBrace, "Expected '{' after class name");
    parseClassBody(*record);
    mark(record.get(), first);
    program.classes.push_back(std::move(record));
}

// { access | member } "}" ;
void Parser::parseClassBody(ClassDef& record) {
    const InList list(*this, Body::classMembers);
    Ranges fieldRanges;
    Access section = Access::unspecified;
    Access access = section;
    while (!atClose()) {
        if (matchAccess(access)) {
            if (match(TokenType::Colon)) section = access;
            continue;
        }
        element([&] { parseClassMember(record, access, fieldRanges); });
        access = section;
    }
    consume(TokenType::RightBrace, "Expected '}'");
    place(record.fields, fieldRanges);
}

// access = ( "public" | "private" ) [ ":" ] ;
bool Parser::matchAccess(Access& access) {
    if (match(TokenType::PublicKeyword))
        access = Access::publicMember;
    else if (match(TokenType::PrivateKeyword))
        access = Access::privateMember;
    else
        return false;
    return true;
}

// member = constructor | [ TYPE [ typeArguments ] ] method | TYPE [ typeArguments ] fields ;
void Parser::parseClassMember(ClassDef& record, Access access, Ranges& fieldRanges) {
    const std::size_t first = current;
    const auto atMethod = [this] {
        return check(TokenType::Identifier) && peekNext().type == TokenType::LeftParen;
    };
    std::string_view typeName;
    if (!atMethod()) {
        typeName = keep(consumeAny(memberTypes, "Expected name"));
        skipTypeArguments();
    }
    if (!atMethod()) return parseFields(record, {{}, typeName, access}, fieldRanges, first);
    record.methods.push_back(parseMethod(record.name, typeName, first));
    record.methods.back()->access = access;
}

// fields = NAME { "," NAME } ";" ;
void Parser::parseFields(ClassDef& record, ClassField field, Ranges& ranges,
                         std::size_t firstToken) {
    std::string_view message = "Expected name";
    do {
        field.name = keep(consume(TokenType::Identifier, message));
        record.fields.push_back(field);
        mark(ranges, firstToken);
        message = "Expected field name";
        firstToken = current + 1;
    } while (match(TokenType::Comma));
    consume(TokenType::Semicolon, "Expected ';'");
}

// method = NAME parameters block ;  the class name without a type is the constructor
uptr<ClassMethod> Parser::parseMethod(std::string_view className, std::string_view returnType,
                                      std::size_t firstToken) {
    auto method = arena().make<ClassMethod>(arena());
    method->name = keep(advance());
    method->returnType = returnType;
    method->isConstructor = returnType.empty() && method->name == className;
    method->params = parseParameters();
    method->body = parseBlock();
    mark(method.get(), firstToken);
    return method;
}

// able = "able" NAME "{" { ableMethod } "}" ;
void Parser::parseAble(AST& program) {
    const std::size_t first = current;
    advance();
    AbleDef able(arena());
    able.name = keep(consume(TokenType::Identifier, "Expected able name"));
    consume(TokenType::LeftBrace, "Expected '{'");
    const InList list(*this, Body::ableMethods);
    Ranges ranges;
    while (!atClose()) {
        element([&] {
            const std::size_t firstOfMethod = current;
            able.methods.push_back(parseAbleMethod());
            mark(ranges, firstOfMethod);
        });
    }
    consume(TokenType::RightBrace, "Expected '}'");
    place(able.methods, ranges);
    program.ables.push_back(std::move(able));
    mark(topLevel.ables, first);
}

// ableMethod = [ TYPE [ typeArguments ] ] NAME parameters ";" ;
//
// An identifier is a type only in front of another one or of type arguments.
AbleMethod Parser::parseAbleMethod() {
    AbleMethod method(arena());
    const TokenType next = peekNext().type;
    const bool userType =
        check(TokenType::Identifier) && (next == TokenType::Identifier || next == TokenType::Less);
    if (userType || resultTypes.has(peek().type)) {
        method.returnType = keep(advance());
        skipTypeArguments();
    }
    method.name = keep(consume(TokenType::Identifier, "Expected method name in able"));
    method.params = parseParameters();
    consume(TokenType::Semicolon, "Expected ';' after able method declaration");
    return method;
}

} // namespace Orvane
