// Any text is taken as a colour and as a font, or refused by one of the exceptions for bad numbers.
// What the colour becomes is either the text itself or a call of RGB with three numbers.
#include "fuzz/targets.h"

#include "codegen/code_generator.h"

#include <cstdio>

namespace Orvane::Fuzzing {

namespace {

void checkColour(const std::string& text) {
    const std::string colour = CodeGenerator::colorToRGB(text);
    if (colour == text) {
        require(text.size() != 7 || text[0] != '#', "six digits behind # become numbers");
        return;
    }
    int red = -1, green = -1, blue = -1, read = 0;
    std::sscanf(colour.c_str(), "RGB(%d, %d, %d)%n", &red, &green, &blue, &read);
    require(static_cast<std::size_t>(read) == colour.size(), "a colour is a call of RGB");
    for (const int part : {red, green, blue})
        require(part >= 0 && part <= 255, "a part of a colour is a byte");
}

void checkFont(const std::string& text) {
    const Value font = Value::makeFont(text);
    require(font.isFont() && font["name"].isString() && font["size"].isInt(),
            "a font has a name and a size");
    require(font["name"].textView().size() <= text.size(), "the name comes from the text");
    require(!Value(font).toString().empty(), "a font can be shown");
}

// A bad number is refused, and nothing else.
template <class Check>
void refusing(Check check, const std::string& text) {
    try {
        check(text);
    } catch (const std::invalid_argument&) {
    } catch (const std::out_of_range&) {
    }
}

} // namespace

void fuzzTexts(Bytes input) {
    const std::string text = textOf(input);
    refusing(checkColour, text);
    refusing(checkFont, text);
    const std::string escaped = CodeGenerator::escapeString(text);
    require(escaped.find('\n') == std::string::npos, "an escaped text stands on one line");
    require(escaped.find('\0') == std::string::npos, "an escaped text has no zero byte");
}

} // namespace Orvane::Fuzzing
