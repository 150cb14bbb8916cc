#include "check/parsed_source.h"

#include <gtest/gtest.h>

using namespace Orvane;

TEST(ParsedSource, knowsTheBytesOfEveryToken) {
    const ParsedSource source("a.vorla", "text = \"a\\\"b\\u00e4\" ;");
    EXPECT_EQ(source.source().part(source.tokenRange(2)), "\"a\\\"b\\u00e4\"");
    EXPECT_EQ(source.source().part(source.tokenRange(3)), ";");
}

TEST(ParsedSource, knowsTheBytesOfNodes) {
    const ParsedSource source("a.vorla", "int twice(int n) { return n * 2; }");
    ASSERT_EQ(source.tree().functions.size(), 1u);
    EXPECT_EQ(source.source().part(source.rangeOf(source.tree().functions[0].get())),
              "int twice(int n) { return n * 2; }");
}

TEST(ParsedSource, keepsWhatTheParserRefused) {
    const ParsedSource source("a.vorla", "vorla { }");
    ASSERT_EQ(source.diagnostics().size(), 1u);
    EXPECT_EQ(source.diagnostics()[0].severity(), Severity::error);
}
