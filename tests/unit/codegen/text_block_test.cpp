#include "codegen/text_block.h"

#include <gtest/gtest.h>

#include <stdexcept>

using namespace Orvane;

namespace {

class TextBlock : public ::testing::Test {
protected:
    TextStream main, import;
    int level = 0;
    CodeGeneratorCore core{main, import, level};
};

TEST_F(TextBlock, WritesEveryLineAtTheLevel) {
    level = 1;
    addBlock(core, R"(
first
    second

last
)");
    EXPECT_EQ(main.view(), "    first\n        second\n    \n    last\n");
}

TEST_F(TextBlock, FillsGapsWithTextsAndNumbers) {
    addBlock(core, R"(
$a$ = $b$;
$b$$a$
)",
             {{"a", "x"}, {"b", -7}});
    EXPECT_EQ(main.view(), "x = -7;\n-7x\n");
}

TEST_F(TextBlock, DoesNotLookAtWhatFillsAGap) {
    addFilledLine(core, "<$a$>", {{"a", "$b$\n$a$"}});
    EXPECT_EQ(main.view(), "<$b$\n$a$>\n");
}

TEST_F(TextBlock, AGapWithoutTextIsAnError) {
    EXPECT_THROW(addFilledLine(core, "$c$", {{"a", "x"}}), std::logic_error);
    EXPECT_THROW(addFilledLine(core, "costs 5$", {{"a", "x"}}), std::logic_error);
}

} // namespace
