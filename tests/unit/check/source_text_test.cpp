#include "check/source_text.h"

#include <gtest/gtest.h>

using namespace Orvane;

TEST(SourceText, countsLinesAndColumnsFromOne) {
    const SourceText source("a.vorla", "value a;\nvalue b;\n");
    const Place place = source.placeOf(15);
    EXPECT_EQ(place.line, 2u);
    EXPECT_EQ(place.column, 7u);
    EXPECT_EQ(place.byteColumn, 7u);
}

TEST(SourceText, countsCharactersAndBytesApart) {
    const SourceText source("a.vorla", "\"\xC3\xA4\xE4\xB8\xAD\" x");
    const Place place = source.placeOf(8);
    EXPECT_EQ(place.column, 6u);
    EXPECT_EQ(place.byteColumn, 9u);
}

TEST(SourceText, leavesTheByteOrderMarkOutOfTheColumns) {
    const SourceText source("a.vorla", "\xEF\xBB\xBFvorla");
    EXPECT_EQ(source.placeOf(3).column, 1u);
}

TEST(SourceText, givesLinesWithoutTheirEnds) {
    const SourceText source("a.vorla", "one\r\ntwo\n\nfour");
    EXPECT_EQ(source.lineCount(), 4u);
    EXPECT_EQ(source.lineText(1), "one");
    EXPECT_EQ(source.lineText(2), "two");
    EXPECT_EQ(source.lineText(3), "");
    EXPECT_EQ(source.lineText(4), "four");
    EXPECT_EQ(source.lineText(5), "");
}

TEST(SourceText, findsTheOffsetOfLineAndColumn) {
    const SourceText source("a.vorla", "one\ntwo");
    EXPECT_EQ(source.offsetOf(2, 3), 6u);
    EXPECT_EQ(source.offsetOf(9, 1), 7u);
}
