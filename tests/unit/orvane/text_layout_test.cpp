#include "orvane/text_layout.h"

#include <gtest/gtest.h>

using namespace Orvane;

namespace {

// The shown line with its underline below it.
std::string drawn(std::string_view line, ByteRange part, std::size_t columns = 100) {
    const ShownLine shown = layOut(line, part, columns);
    return shown.text + "\n" + std::string(shown.column, ' ') + std::string(shown.width, '~');
}

} // namespace

TEST(TextLayout, UnderlinesTheBytesOfThePart) {
    EXPECT_EQ(drawn("value a;", {6, 7}), "value a;\n"
                                         "      ~");
}

TEST(TextLayout, TabGoesToTheNextMultipleOfFour) {
    EXPECT_EQ(drawn("\ta\tbc", {3, 5}), "    a   bc\n"
                                        "        ~~");
}

TEST(TextLayout, UnderlinedTabIsAsWideAsShown) {
    EXPECT_EQ(drawn("a\tb", {1, 2}), "a   b\n"
                                     " ~~~");
}

TEST(TextLayout, CharactersOfSeveralBytesTakeOneColumn) {
    EXPECT_EQ(drawn("\xC3\xA4\xC3\xB6 x", {5, 6}), "\xC3\xA4\xC3\xB6 x\n"
                                                   "   ~");
}

TEST(TextLayout, WideCharactersTakeTwoColumns) {
    EXPECT_EQ(drawn("\xE4\xBD\xA0\xE5\xA5\xBD x", {3, 6}), "\xE4\xBD\xA0\xE5\xA5\xBD x\n"
                                                           "  ~~");
}

TEST(TextLayout, CombiningMarksTakeNoColumn) {
    EXPECT_EQ(drawn("e\xCC\x81 x", {4, 5}), "e\xCC\x81 x\n"
                                            "  ~");
}

TEST(TextLayout, BrokenBytesAndControlCharactersAreReplaced) {
    EXPECT_EQ(drawn("\xFF\x1B[2J x", {6, 7}), "\xEF\xBF\xBD\xEF\xBF\xBD[2J x\n"
                                              "      ~");
}

TEST(TextLayout, PartBehindTheLineIsUnderlinedBehindIt) {
    EXPECT_EQ(drawn("abc", {3, 3}), "abc\n"
                                    "   ~");
    EXPECT_EQ(drawn("abc", {7, 9}), "abc\n"
                                    "   ~");
}

TEST(TextLayout, EmptyLineGetsOneMark) { EXPECT_EQ(drawn("", {0, 0}), "\n~"); }

TEST(TextLayout, PartOverTheLineEndStopsThere) {
    EXPECT_EQ(drawn("abc", {1, 99}), "abc\n"
                                     " ~~");
}

TEST(TextLayout, BlanksAtTheEndAreNotShown) { EXPECT_EQ(drawn("a   ", {0, 1}), "a\n~"); }

TEST(TextLayout, LongLineIsCutBehind) {
    EXPECT_EQ(drawn(std::string(50, 'a'), {2, 4}, 40), std::string(37, 'a') + "...\n"
                                                                              "  ~~");
}

// Twenty columns stay in front of the part: the text begins at column 60 - 20.
TEST(TextLayout, LongLineIsCutOnBothSides) {
    const std::string line = std::string(60, 'a') + "XY" + std::string(60, 'b');
    EXPECT_EQ(drawn(line, {60, 62}, 40), "..." + std::string(20, 'a') + "XY" +
                                             std::string(12, 'b') + "...\n" + std::string(23, ' ') +
                                             "~~");
}

TEST(TextLayout, EndOfALongLineIsShownWhole) {
    const std::string line = std::string(60, 'a') + ";";
    EXPECT_EQ(drawn(line, {60, 61}, 40),
              "..." + std::string(20, 'a') + ";\n" + std::string(23, ' ') + "~");
}

TEST(TextLayout, LongPartIsUnderlinedAsFarAsItIsShown) {
    EXPECT_EQ(drawn(std::string(99, 'a'), {0, 99}, 40),
              std::string(37, 'a') + "...\n" + std::string(37, '~'));
}

TEST(TextLayout, WideCharacterAtTheCutIsLeftOut) {
    std::string line;
    for (int count = 0; count < 40; ++count) line += "\xE4\xBD\xA0"; // 80 columns
    const ShownLine shown = layOut(line, {0, 3}, 40);
    EXPECT_EQ(shown.text.size(), 18 * 3 + 3U); // 36 columns and the dots: 37 would cut one in two
}

TEST(TextLayout, LineOfAMillionCharactersIsCutWithoutReadingItAll) {
    const std::string line(1'000'000, 'a');
    for (int count = 0; count < 1000; ++count)
        ASSERT_EQ(layOut(line, {500'000, 500'001}, 40).column, 23U);
}

TEST(TextLayout, PrintableKeepsLettersAndReplacesTheRest) {
    EXPECT_EQ(printable("gr\xC3\xBC\xC3\x9F\x1B\xC3"),
              "gr\xC3\xBC\xC3\x9F\xEF\xBF\xBD\xEF\xBF\xBD");
}

TEST(TextLayout, OverlongAndSurrogateSpellingsAreBroken) {
    EXPECT_EQ(decodeCharacter("\xC0\x80").length, 1U);
    EXPECT_EQ(decodeCharacter("\xE0\x80\x80").length, 1U);
    EXPECT_EQ(decodeCharacter("\xED\xA0\x80").length, 1U);
    EXPECT_EQ(decodeCharacter("\xF0\x9F\x98\x80").value, U'\U0001F600');
}
