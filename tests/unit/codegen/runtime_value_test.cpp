#include "codegen/runtime_value.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <vector>

namespace Orvane {
namespace {

std::vector<std::string_view> linesOf(std::string_view text) {
    std::vector<std::string_view> lines;
    while (!text.empty()) {
        const auto end = text.find('\n');
        lines.push_back(text.substr(0, end));
        text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
    }
    return lines;
}

// The pieces must all occur, each behind the one before it.
void expectInOrder(std::string_view text, const std::vector<std::string_view>& pieces) {
    std::size_t from = 0;
    for (const auto piece : pieces) {
        const auto found = text.find(piece, from);
        ASSERT_NE(found, std::string_view::npos) << "missing or too early: " << piece;
        from = found + piece.size();
    }
}

TEST(RuntimeValue, beginsWithTheStructAndEndsWithAnEmptyLine) {
    const auto text = runtimeValueText();
    EXPECT_TRUE(text.starts_with("struct Value {\n    std::string typeName = \"null\";\n"));
    EXPECT_TRUE(text.ends_with("\n}\n\n"));
    EXPECT_FALSE(text.ends_with("\n\n\n"));
}

TEST(RuntimeValue, closesTheStructWithAnEmptyLineBeforeTheFreeOperators) {
    expectInOrder(runtimeValueText(), {"struct Value {\n", "\n};\n\n",
                                       "operator+(const char* left, const Value& right) {\n",
                                       "operator+(std::string left, const Value& right) {\n"});
}

TEST(RuntimeValue, declaresTheMembersInTheOrderOfTheirPayloads) {
    expectInOrder(runtimeValueText(),
                  {"std::string typeName = \"null\";", "long long intVal = 0;",
                   "double floatVal = 0.0;", "std::string stringVal;", "bool boolVal = false;",
                   "std::vector<Value> arrayVal;", "std::map<std::string, Value> mapVal;",
                   "void* handleVal = nullptr;"});
}

TEST(RuntimeValue, groupsConstructorsFactoriesPredicatesAccessorsAndOperators) {
    expectInOrder(runtimeValueText(), {"Value() : ",
                                       "Value(int ",
                                       "Value(long long ",
                                       "Value(double ",
                                       "Value(const std::string& text)",
                                       "Value(const char* ",
                                       "Value(bool ",
                                       "Value(const std::vector<Value>& ",
                                       "Value(const std::map<std::string, Value>& ",
                                       "Value(const std::string& type, const std::string& v)",
                                       "makeObject(",
                                       "makeHandle(",
                                       "makeFunction(",
                                       "makeArray(",
                                       "bool is(",
                                       "isNull()",
                                       "isInt()",
                                       "isFloat()",
                                       "isString()",
                                       "isBool()",
                                       "isArray()",
                                       "isContainer()",
                                       "isMap()",
                                       "isHandle()",
                                       "isColor()",
                                       "isFunction()",
                                       "isObject()",
                                       "asInt()",
                                       "asFloat()",
                                       "asString()",
                                       "asBool()",
                                       "asArray()",
                                       "asHandle()",
                                       "explicit operator int()",
                                       "operator[](const std::string& key) {",
                                       "bool has(",
                                       "toString() const {",
                                       "c_str() const { return toString().c_str(); }",
                                       "operator+(",
                                       "operator-(",
                                       "operator*(",
                                       "operator/(",
                                       "operator%(",
                                       "operator-() const",
                                       "operator==(",
                                       "operator!=(",
                                       "operator<(",
                                       "operator>(",
                                       "operator<=(",
                                       "operator>=("});
}

TEST(RuntimeValue, indentsByFourSpacesAndKeepsLinesReadable) {
    for (const auto text : {runtimeValueText(), utf8ToAcpText(), utf8ToWideText()}) {
        for (const auto line : linesOf(text)) {
            EXPECT_EQ(line.find('\t'), std::string_view::npos) << line;
            EXPECT_LE(line.size(), 100u) << line;
            EXPECT_FALSE(line.ends_with(' ')) << line;
        }
    }
}

TEST(RuntimeValue, headsEachConverterByItsComment) {
    EXPECT_TRUE(utf8ToAcpText().starts_with(
        "// UTF-8 -> ANSI (ACP)\ninline std::string utf8_to_acp(const std::string& u8) {\n"));
    EXPECT_TRUE(utf8ToAcpText().ends_with("\n}\n"));
    EXPECT_TRUE(utf8ToWideText().starts_with(
        "// UTF-8 -> wide\ninline std::wstring utf8_to_wide(const std::string& u8) {\n"));
    EXPECT_TRUE(utf8ToWideText().ends_with("\n}\n"));
}

} // namespace
} // namespace Orvane
