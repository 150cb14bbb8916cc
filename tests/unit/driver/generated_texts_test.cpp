#include "driver/generated_texts.h"

#include "temporary_directory.h"

#include <gtest/gtest.h>

#include <stdexcept>

namespace Orvane {
namespace {

const std::string mark = "\xEF\xBB\xBF";

void writeNumbers(TextStream& stream, int count) {
    for (int number = 0; number < count; ++number) stream << number << "\n";
}

std::string numbers(int count) {
    TextStream stream;
    writeNumbers(stream, count);
    return stream.str();
}

class GeneratedTextsTest : public testing::Test {
protected:
    // Texts of so many numbers each.
    GeneratedTexts textsOf(int main, int import) {
        return GeneratedTexts(
            [this, main, import](TextStream& mainText, TextStream& importText) {
                ++generations;
                mainText.clear();
                importText.clear();
                writeNumbers(importText, import);
                writeNumbers(mainText, main);
            },
            0);
    }
    bool write(GeneratedTexts& texts, GeneratedText which, const char* name) {
        return texts.write(which, directory.path() / name);
    }

    static constexpr int few = 1000;
    static constexpr int many = 2'000'000; // fifteen million bytes

    TemporaryDirectory directory;
    int generations = 0;
};

TEST_F(GeneratedTextsTest, ShortTextsAreGeneratedOnce) {
    GeneratedTexts texts = textsOf(few, few + 1);
    texts.generate();
    EXPECT_TRUE(write(texts, GeneratedText::main, "main"));
    EXPECT_TRUE(write(texts, GeneratedText::import, "import"));
    EXPECT_EQ(directory.read("main"), mark + numbers(few));
    EXPECT_EQ(directory.read("import"), mark + numbers(few + 1));
    EXPECT_EQ(generations, 1);
}

TEST_F(GeneratedTextsTest, ALongMainTextIsGeneratedOnceMoreBesideAShortOne) {
    GeneratedTexts texts = textsOf(many, few);
    texts.generate();
    EXPECT_TRUE(write(texts, GeneratedText::main, "main"));
    EXPECT_TRUE(write(texts, GeneratedText::import, "import"));
    EXPECT_TRUE(directory.read("main") == mark + numbers(many));
    EXPECT_EQ(directory.read("import"), mark + numbers(few));
    EXPECT_EQ(generations, 2);
}

TEST_F(GeneratedTextsTest, ALongImportTextIsGeneratedOnceMoreBesideAShortOne) {
    GeneratedTexts texts = textsOf(few, many);
    texts.generate();
    EXPECT_TRUE(write(texts, GeneratedText::main, "main"));
    EXPECT_TRUE(write(texts, GeneratedText::import, "import"));
    EXPECT_EQ(directory.read("main"), mark + numbers(few));
    EXPECT_TRUE(directory.read("import") == mark + numbers(many));
    EXPECT_EQ(generations, 2);
}

TEST_F(GeneratedTextsTest, TwoLongTextsAreBothWrittenWhole) {
    GeneratedTexts texts = textsOf(many, many + 1);
    texts.generate();
    EXPECT_TRUE(write(texts, GeneratedText::main, "main"));
    EXPECT_TRUE(write(texts, GeneratedText::import, "import"));
    EXPECT_TRUE(directory.read("main") == mark + numbers(many));
    EXPECT_TRUE(directory.read("import") == mark + numbers(many + 1));
    EXPECT_EQ(generations, 3);
}

TEST_F(GeneratedTextsTest, ALongTextThatCannotBeWrittenIsNoticed) {
    GeneratedTexts texts = textsOf(many, few);
    texts.generate();
    EXPECT_FALSE(write(texts, GeneratedText::main, "absent/main"));
    EXPECT_FALSE(texts.write(GeneratedText::main, "/dev/full"));
}

TEST_F(GeneratedTextsTest, AnErrorOfTheGenerationLeavesAsItIs) {
    GeneratedTexts texts([](TextStream&, TextStream&) { throw std::invalid_argument("colour"); },
                         0);
    EXPECT_THROW(texts.generate(), std::invalid_argument);
}

TEST_F(GeneratedTextsTest, ATextBeyondEveryCompilerEndsInAnError) {
    GeneratedTexts texts(
        [](TextStream& main, TextStream&) {
            for (;;) main.fill(4'000'000, 'x');
        },
        0);
    EXPECT_THROW(texts.generate(), std::length_error);
}

} // namespace
} // namespace Orvane
