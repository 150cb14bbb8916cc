// What the properties of a control say.
//
//     const ControlSettings settings = readControlSettings(*component);
//     settings.width;   // 100 without a `width`
#pragma once

#include "frontend/syntax_tree.h"

#include <string>
#include <vector>

namespace Orvane {

// Sizes and positions are pixels. `checked` and `menu` are not here because they change nothing:
// check boxes always start unchecked.
struct ControlSettings {
    int x = 0;
    int y = 0;
    int width = 100;
    int height = 30;
    std::string text;
    std::string colour;     // of the text; empty when none is set
    std::string background; // empty when none is set
    std::string group;
    int min = 0;
    int max = 100;
    int value = 0;
    std::string source; // the image file of a picture
    std::vector<std::string> items;
};

// Only literals are read; a property with any other value (a negative number included) counts as
// not written. Of several properties of one name the last one wins.
ControlSettings readControlSettings(const Component& component);

// The value of a literal property, or null.
const Value* literalOf(const Property& property);

} // namespace Orvane
