// Where nodes and records stand in the source.
#include "frontend/source_positions.h"
#include "parsing.h"

#include <gtest/gtest.h>

namespace Orvane {
namespace {

using Testing::Parsing;

// The tokens of a node, with blanks between them.
class Positions {
public:
    explicit Positions(const std::string& source) : parsing(source, &table) {}

    std::string of(const void* node) const {
        const auto range = table.find(node);
        if (!range) return "(unknown)";
        std::string text;
        for (std::size_t index = range->first; index <= range->last; ++index)
            text += (text.empty() ? "" : " ") + std::string(parsing.tokens[index].text());
        return text;
    }
    template <class Node>
    std::string of(const uptr<Node>& node) const {
        return of(node.get());
    }

    PositionTable table;
    Parsing parsing;
};

TEST(Positions, ExpressionsSpanTheirTokens) {
    Positions at("a + b.c(1, -2) * [x for x in xs]");
    const auto sum = at.parsing.parser.parseExpression();
    const auto* plus = nodeCast<BinaryExpr>(sum);
    EXPECT_EQ(at.of(sum), "a + b . c ( 1 , - 2 ) * [ x for x in xs ]");
    EXPECT_EQ(at.of(plus->left), "a");
    const auto* product = nodeCast<BinaryExpr>(plus->right);
    EXPECT_EQ(at.of(plus->right), "b . c ( 1 , - 2 ) * [ x for x in xs ]");
    EXPECT_EQ(at.of(product->left), "b . c ( 1 , - 2 )");
    const auto* call = nodeCast<CallExpr>(product->left);
    EXPECT_EQ(at.of(call->callee), "b . c");
    EXPECT_EQ(at.of(nodeCast<BinaryExpr>(call->callee)->right), "c");
    EXPECT_EQ(at.of(call->args[1]), "- 2");
    EXPECT_EQ(at.of(product->right), "[ x for x in xs ]");
}

TEST(Positions, EveryExpressionFormIsRecorded) {
    for (const std::string source : {"a",
                                     "1",
                                     "\"t\"",
                                     "#FFF",
                                     "true",
                                     "null",
                                     "- a",
                                     "a = b",
                                     "a ? b : c",
                                     "f ( )",
                                     "a [ 0 ]",
                                     "a . b",
                                     "{ 1 }",
                                     "[ 1 ]",
                                     "[ 1 .. 2 , 3 ]",
                                     "[ 1 , 2 , 3 ]",
                                     "P { x = 1 }",
                                     "is ( a , int )",
                                     "therebe ( class , N )",
                                     "have ( C , . m )"}) {
        Positions at(source);
        const auto expr = at.parsing.parser.parseExpression();
        EXPECT_EQ(at.of(expr), source == "\"t\"" ? "t" : source);
    }
}

TEST(Positions, ObjectFieldsAreRecords) {
    Positions at("P { x = 1 , y = a + 2 }");
    const auto expr = at.parsing.parser.parseExpression();
    const auto& fields = nodeCast<ObjectCtorExpr>(expr)->fields;
    EXPECT_EQ(at.of(&fields[0]), "x = 1");
    EXPECT_EQ(at.of(&fields[1]), "y = a + 2");
}

TEST(Positions, EveryStatementFormIsRecorded) {
    for (const std::string source :
         {"{ a ; }", "int x = 1 ;", "Point p ;", "f ( ) ;", "if ( a ) b ; else c ;",
          "while ( a ) { b ; }", "for ( x : xs ) { }", "return ;", "throw a ;", "expect a , b ;",
          "defer { a ; }", "try { } catch ( e ) { a ; }", "when ( v ) { else -> 1 ; }"}) {
        Positions at(source + " tail ;");
        const auto stmt = at.parsing.parser.parseStatement();
        EXPECT_EQ(at.of(stmt), source);
    }
}

TEST(Positions, EveryRungOfALadderEndsWithTheLadder) {
    Positions at("if ( a ) b ; else if ( c ) d ; else if ( e ) f ; else { g ; }");
    const auto stmt = at.parsing.parser.parseStatement();
    const auto* first = nodeCast<IfStmt>(stmt);
    const auto* second = nodeCast<IfStmt>(first->elseBranch[0]);
    const auto* third = nodeCast<IfStmt>(second->elseBranch[0]);
    EXPECT_EQ(at.of(first), "if ( a ) b ; else if ( c ) d ; else if ( e ) f ; else { g ; }");
    EXPECT_EQ(at.of(second), "if ( c ) d ; else if ( e ) f ; else { g ; }");
    EXPECT_EQ(at.of(third), "if ( e ) f ; else { g ; }");
    EXPECT_EQ(at.of(third->elseBranch[0]), "{ g ; }");
}

TEST(Positions, WhenCasesAreRecords) {
    Positions at("when ( v ) { is int -> 1 ; else -> 2 ; }");
    const auto stmt = at.parsing.parser.parseStatement();
    const auto& cases = nodeCast<WhenStmt>(stmt)->cases;
    EXPECT_EQ(at.of(&cases[0]), "is int -> 1 ;");
    EXPECT_EQ(at.of(&cases[1]), "else -> 2 ;");
}

TEST(Positions, DeclarationsAreRecorded) {
    Positions at("import a . b ; using type T = int ; typename N ; "
                 "able A { int go ( x ) ; } "
                 "class C { int x , y ; C ( int a , b ) { } } "
                 "void f ( int a ) { } "
                 "vorla W { title = 1 ; button ok { text = 2 on click { } } } "
                 "W . script { on ok . click { } g ( ) { } }");
    const auto program = at.parsing.parser.parse();
    EXPECT_EQ(at.of(&program->imports[0]), "import a . b ;");
    EXPECT_EQ(at.of(&program->usings[0]), "using type T = int ;");
    EXPECT_EQ(at.of(&program->typeNames[0]), "typename N ;");
    EXPECT_EQ(at.of(&program->ables[0]), "able A { int go ( x ) ; }");
    EXPECT_EQ(at.of(&program->ables[0].methods[0]), "int go ( x ) ;");
    EXPECT_EQ(at.of(&program->ables[0].methods[0].params[0]), "x");
    const ClassDef& record = *program->classes[0];
    EXPECT_EQ(at.of(&record), "class C { int x , y ; C ( int a , b ) { } }");
    EXPECT_EQ(at.of(&record.fields[0]), "int x");
    EXPECT_EQ(at.of(&record.fields[1]), "y");
    EXPECT_EQ(at.of(record.methods[0]), "C ( int a , b ) { }");
    EXPECT_EQ(at.of(&record.methods[0]->params[1]), "b");
    EXPECT_EQ(at.of(program->functions[0]), "void f ( int a ) { }");
    EXPECT_EQ(at.of(&program->functions[0]->params[0]), "int a");
}

TEST(Positions, WindowsAndScriptsAreRecorded) {
    Positions at("vorla W { title = 1 ; button ok { text = 2 on click { } } } "
                 "W . script { on ok . click { } } x . script { g ( ) { } }");
    const auto program = at.parsing.parser.parse();
    const Vorla& window = *program->window;
    EXPECT_EQ(at.of(&window), "vorla W { title = 1 ; button ok { text = 2 on click { } } }");
    EXPECT_EQ(at.of(&window.properties[0]), "title = 1 ;");
    EXPECT_EQ(at.of(window.components[0]), "button ok { text = 2 on click { } }");
    EXPECT_EQ(at.of(&window.components[0]->properties[0]), "text = 2");
    EXPECT_EQ(at.of(program->script), "W . script { on ok . click { } } x . script { g ( ) { } }");
    EXPECT_EQ(at.of(program->script->handlers[0]), "on ok . click { }");
    EXPECT_EQ(at.of(program->script->functions[0]), "g ( ) { }");
}

TEST(Positions, RecordsOfALongListKeepTheirPlaces) {
    Positions at(Testing::repeated("using k \"v\" ; ", 100));
    const auto program = at.parsing.parser.parse();
    for (const Using& entry : program->usings) EXPECT_EQ(at.of(&entry), "using k v ;");
    EXPECT_EQ(at.table.size(), 100U);
}

TEST(Positions, ANodeOfAnotherTreeIsUnknown) {
    Positions at("a");
    at.parsing.parser.parseExpression();
    int elsewhere = 0;
    EXPECT_FALSE(at.table.find(&elsewhere).has_value());
}

} // namespace
} // namespace Orvane
