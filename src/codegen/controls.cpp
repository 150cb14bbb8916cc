#include "codegen/code_generator.h"

#include "codegen/control_kinds.h"
#include "codegen/text_block.h"

#include <charconv>
#include <stdexcept>

namespace Orvane {

namespace {

std::string_view captionOf(const ControlKind& kind, const ControlSettings& settings,
                           std::string_view name) {
    if (kind.caption == Caption::none) return {};
    if (kind.caption == Caption::textOrName && settings.text.empty()) return name;
    return settings.text;
}

// The two hexadecimal digits from `position` on.
int colourPart(std::string_view colour, std::size_t position) {
    const char* first = colour.data() + position;
    int part = 0;
    const auto result = std::from_chars(first, first + 2, part, 16);
    if (result.ec != std::errc() || result.ptr != first + 2 || *first == '-')
        throw std::invalid_argument("bad colour " + std::string(colour));
    return part;
}

} // namespace

// The lines of one control: its creation, then what fills it. Every control takes an ID, also one
// without a window and one of an unknown kind.
void CodeGenerator::generateComponent(const Component* component) {
    if (!component) return;
    const Observation observation(*this, out, component);
    const std::string_view name = component->name;
    const ControlSettings settings = readControlSettings(*component);
    const int id = getControlId(name);
    const ControlKind* kind = findControlKind(component->type);
    if (!kind) {
        addFilledLine(*this, "// Unknown control: $name$ ($kind$)",
                      {{"name", name}, {"kind", component->type}});
        return;
    }
    if (!kind->className.empty())
        emitCreateWindow(name, kind->className, captionOf(*kind, settings, name), kind->style,
                         settings.x, settings.y, settings.width, settings.height, id);
    if (kind->fill) kind->fill(*this, name, settings);
    if (component->type == "radio" && !settings.group.empty())
        radioGroups.insert_or_assign(settings.group, std::string(name));
}

void CodeGenerator::emitCreateWindow(std::string_view name, std::string_view className,
                                     std::string_view text, unsigned long style, int x, int y,
                                     int width, int height, int id) {
    addBlock(*this, R"(
// Control: $name$
h_$name$ = CreateWindowExA(
    0, "$class$", utf8_to_acp("$text$").c_str(),
    $style$, $x$, $y$, $width$, $height$,
    hMainWnd, (HMENU)$id$, hInst, NULL);

)",
             {{"name", name},
              {"class", className},
              {"text", escapeString(text)},
              {"style", style},
              {"x", x},
              {"y", y},
              {"width", width},
              {"height", height},
              {"id", id}});
}

int CodeGenerator::getControlId(std::string_view key) {
    const auto known = controlIds.find(key);
    if (known != controlIds.end()) return known->second;
    controlIds.emplace(key, ++controlIdCounter);
    return controlIdCounter;
}

std::string_view CodeGenerator::lastRadioOf(std::string_view group) const {
    const auto entry = radioGroups.find(group);
    return entry == radioGroups.end() ? std::string_view() : entry->second;
}

// #FF8000 gives RGB(255, 128, 0)
std::string CodeGenerator::colorToRGB(std::string_view color) {
    if (color.size() != 7 || color[0] != '#') return std::string(color);
    return "RGB(" + std::to_string(colourPart(color, 1)) + ", " +
           std::to_string(colourPart(color, 3)) + ", " + std::to_string(colourPart(color, 5)) + ")";
}

void CodeGenerator::collectControlTypes(const Vorla* window, NameSet& types) {
    for (const Component* control : controlsWithChildren(window)) types.emplace(control->type);
}

} // namespace Orvane
