#include "codegen/code_generator.h"
#include "tree_builder.h"

#include <gtest/gtest.h>

namespace Orvane {
namespace {

class Classes : public ::testing::Test {
protected:
    template <class... Definitions>
    std::string classText(Definitions... definitions) {
        (program.classes.push_back(std::move(definitions)), ...);
        generator.generateAllClasses(program);
        return importStream.str();
    }

    // An assignment at the margin, as in a body.
    uptr<Stmt> assign(std::string_view name, uptr<Expr> value) {
        return tree.expression(tree.binary(tree.name(name), "=", std::move(value)));
    }

    TreeBuilder tree; // before the program, whose class list points into it
    AST program;
    ReplacementTable table;
    TextStream mainStream, importStream;
    int level = 0;
    CodeGenerator generator{table, mainStream, importStream, level};
};

constexpr const char* header = "// ===== Class helpers generated =====\n";

TEST_F(Classes, ProgramWithoutClassesHasTheHeaderLine) { EXPECT_EQ(classText(), header); }

TEST_F(Classes, MethodsBeginWithTheFieldsOfTheirInstance) {
    auto body = tree.stmts(assign("x", tree.binary(tree.name("x"), "+", tree.name("dx"))));
    EXPECT_EQ(classText(tree.classDef("Point", {{"int", "y"}, {"int", "x"}},
                                      tree.method("", "move", {{"int", "dx"}}, std::move(body)))),
              std::string(header) + R"(void Point__move(Value _this, int dx) {
auto& x = _this["x"];
auto& y = _this["y"];
(x = (x + dx));
}

)");
}

TEST_F(Classes, MethodsReturnValuesOrNothing) {
    EXPECT_EQ(classText(tree.classDef("C", {}, tree.method("int", "a", {}, tree.stmts()),
                                      tree.method("void", "b", {}, tree.stmts()),
                                      tree.method("", "c", {}, tree.stmts()),
                                      tree.method("string", "d", {}, tree.stmts()),
                                      tree.method("C", "e", {}, tree.stmts()))),
              std::string(header) + R"(Value C__a(Value _this) {
}

void C__b(Value _this) {
}

void C__c(Value _this) {
}

Value C__d(Value _this) {
}

Value C__e(Value _this) {
}

)");
}

TEST_F(Classes, ParametersHaveTheirCppTypes) {
    EXPECT_EQ(classText(tree.classDef("C", {},
                                      tree.method("", "m",
                                                  {{"int", "a"},
                                                   {"bool", "b"},
                                                   {"double", "c"},
                                                   {"string", "d"},
                                                   {"String", "e"},
                                                   {"value", "f"},
                                                   {"", "g"},
                                                   {"Shape", "h"},
                                                   {"Int", "i"}},
                                                  tree.stmts()))),
              std::string(header) +
                  "void C__m(Value _this, int a, bool b, double c, std::string d, std::string e, "
                  "Value f, Value g, Value h, Value i) {\n}\n\n");
}

TEST_F(Classes, ConstructorsStoreParametersNamedLikeFields) {
    auto constructor =
        tree.method("", "Box", {{"int", "width"}, {"int", "other"}, {"int", "depth"}},
                    tree.stmts(assign("height", tree.number(1))));
    constructor->isConstructor = true;
    EXPECT_EQ(
        classText(tree.classDef("Box", {{"int", "depth"}, {"int", "height"}, {"int", "width"}},
                                std::move(constructor))),
        std::string(header) + R"(void Box__Box(Value _this, int width, int other, int depth) {
auto& height = _this["height"];
_this["width"] = width;
_this["depth"] = depth;
(height = 1);
}

)");
}

TEST_F(Classes, OtherMethodsDoNotStoreTheirParameters) {
    EXPECT_EQ(classText(tree.classDef("Box", {{"int", "width"}},
                                      tree.method("", "Box", {{"int", "width"}}, tree.stmts()))),
              std::string(header) + "void Box__Box(Value _this, int width) {\n}\n\n");
}

TEST_F(Classes, BodiesStandAtTheLevelOutside) {
    EXPECT_EQ(classText(tree.classDef(
                  "C", {},
                  tree.method("int", "m", {},
                              tree.stmts(tree.declare("int", "n", tree.number(1)),
                                         tree.ifOnly(tree.name("n"),
                                                     tree.stmts(tree.returning(tree.name("n")))),
                                         tree.returning(tree.number(0)))))),
              std::string(header) + R"(Value C__m(Value _this) {
int n = 
Value(1).asInt();
if (n) {
    return n;
}
return 0;
}

)");
    EXPECT_EQ(level, 0);
}

TEST_F(Classes, MainStreamKeepsItsText) {
    generator.addLine("int before;");
    classText(tree.classDef("C", {}, tree.method("", "m", {}, tree.stmts(tree.call0("f")))));
    generator.addLine("int after;");
    EXPECT_EQ(mainStream.view(), "int before;\nint after;\n");
}

TEST_F(Classes, MethodsMayCallThoseOfLaterClasses) {
    auto call = tree.expression(tree.callOf(tree.member(tree.name("b"), "go"), tree.number(1)));
    auto body = tree.stmts(tree.declare("B", "b", tree.object("B")), std::move(call));
    EXPECT_EQ(
        classText(tree.classDef("A", {}, tree.method("", "run", {}, std::move(body))),
                  tree.classDef("B", {}, tree.method("", "go", {{"int", "n"}}, tree.stmts()))),
        std::string(header) + R"(void A__run(Value _this) {
Value b = 
([&]() -> Value { Value _o = Value::makeObject("B");return _o; })();
B__go(b, 1);
}

void B__go(Value _this, int n) {
}

)");
}

TEST_F(Classes, ParametersAreNoDeclarations) {
    auto call = tree.expression(tree.callOf(tree.member(tree.name("c"), "m"), tree.name("c")));
    EXPECT_EQ(classText(tree.classDef(
                  "C", {}, tree.method("", "m", {{"C", "c"}}, tree.stmts(std::move(call))))),
              std::string(header) + R"(void C__m(Value _this, Value c) {
/* class call .m */ Value();
}

)");
}

TEST_F(Classes, FieldsAndMethodsAnswerExistenceTests) {
    auto body =
        tree.stmts(tree.returning(tree.have("C", ".x")), tree.returning(tree.have("C", "m")),
                   tree.returning(tree.have("C", "D")), tree.returning(tree.therebe("class", "C")),
                   tree.returning(tree.therebe("function", "m")));
    EXPECT_EQ(classText(tree.classDef("C", {{"int", "x"}},
                                      tree.method("", "m", {{"int", "x"}}, std::move(body)))),
              std::string(header) + R"(void C__m(Value _this, int x) {
return (Value)(true) /* have(C, .x) */;
return (Value)(true) /* have(C, m) */;
return (Value)(false) /* have(C, D) */;
return (Value)(true) /* therebe(class, C) */;
return (Value)(true) /* therebe(function, m) */;
}

)");
}

TEST_F(Classes, ClassNamedTwiceWritesAllMethodsAndCountsByItsLaterForm) {
    auto early = tree.method("", "early", {}, tree.stmts(tree.returning(tree.have("C", "early"))));
    auto late = tree.method("", "late", {}, tree.stmts(tree.returning(tree.have("C", "late"))));
    EXPECT_EQ(classText(tree.classDef("C", {{"int", "a"}}, std::move(early)),
                        tree.classDef("C", {{"int", "b"}}, std::move(late))),
              std::string(header) + R"(void C__early(Value _this) {
auto& a = _this["a"];
return (Value)(false) /* have(C, early) */;
}

void C__late(Value _this) {
auto& b = _this["b"];
return (Value)(true) /* have(C, late) */;
}

)");
}

TEST_F(Classes, MethodNamedTwiceIsWrittenTwice) {
    EXPECT_EQ(classText(tree.classDef("C", {}, tree.method("", "m", {}, tree.stmts()),
                                      tree.method("int", "m", {{"int", "a"}}, tree.stmts()))),
              std::string(header) + "void C__m(Value _this) {\n}\n\n"
                                    "Value C__m(Value _this, int a) {\n}\n\n");
}

TEST_F(Classes, MethodBodyGoesToTheMainStream) {
    CodeGeneratorCore::ClassInfo info;
    info.fieldNames = {"y", "x", "hidden"};
    CodeGeneratorCore::ClassMethodInfo method;
    method.params = {{"int", "hidden"}};
    method.isConstructor = true;
    level = 2;
    generator.generateClassMethodBody("C", info, method,
                                      tree.stmts(tree.call0("f"), tree.returning()));
    EXPECT_EQ(mainStream.view(), "auto& x = _this[\"x\"];\n"
                                 "auto& y = _this[\"y\"];\n"
                                 "_this[\"hidden\"] = hidden;\n"
                                 "f();\n"
                                 "        return;\n");
    EXPECT_EQ(importStream.view(), "");
    EXPECT_EQ(level, 2);
}

} // namespace
} // namespace Orvane
