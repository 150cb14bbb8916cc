// Where the controls lie: sizes of nothing, places outside of the window, and controls on one
// another.

#include "check/window_check.h"
#include "check/window_facts.h"
#include "codegen/control_kinds.h"
#include "codegen/control_settings.h"

#include <algorithm>
#include <map>

namespace Orvane {

namespace {

// What Windows takes of the window's size for its frame, its title and its menu bar.
constexpr int frameWidth = 16;
constexpr int frameHeight = 39;
constexpr int menuHeight = 20;

// The height of a combo box includes the opened list; this is what one sees of it otherwise.
constexpr int closedComboBox = 36;

// A window whose size the program changes may have room for everything.
constexpr std::string_view resizers[] = {"setWindowSize", "maximizeWindow", "restoreWindow",
                                         "fullScreen"};
// A control that is handed to one of these has its place from it, or is not always seen.
constexpr std::string_view movers[] = {"moveTo", "resizeTo", "setBounds",  "anchor",   "show",
                                       "hide",   "showPage", "setVisible", "setZOrder"};

template <class Words>
bool isOneOf(const Words& words, std::string_view word) {
    return std::find(std::begin(words), std::end(words), word) != std::end(words);
}

bool isOnWindow(const Component& control) {
    return findControlKind(control.type) && hasHandle(control) && control.type != "status";
}

// Other controls lie inside of these, on whichever side of the declaration.
bool isSurface(const Component& control) {
    return isContainer(control) || control.type == "tab" || control.type == "picture";
}

struct Area {
    int left, top, right, bottom;
};

Area areaOf(const Component& control) {
    const ControlSettings settings = readControlSettings(control);
    const int height =
        control.type == "combobox" ? std::min(settings.height, closedComboBox) : settings.height;
    return {settings.x, settings.y, settings.x + settings.width, settings.y + height};
}

struct PlacedControl {
    const Component* control;
    Area area;
};

bool isAbove(const PlacedControl& first, const PlacedControl& second) {
    return first.area.top < second.area.top;
}

// The controls at one height of the window, by their left edges; none of them overlaps another.
class Row {
public:
    // A control of the row that the area overlaps; null when there is none.
    const Component* findOverlapped(const Area& area) {
        auto next = byLeft.lower_bound(area.left);
        while (next != byLeft.end() && next->second.area.bottom <= area.top)
            next = byLeft.erase(next);
        if (next != byLeft.end() && next->first < area.right) return next->second.control;
        while (next != byLeft.begin()) {
            const auto before = std::prev(next);
            if (before->second.area.bottom > area.top)
                return before->second.area.right > area.left ? before->second.control : nullptr;
            next = byLeft.erase(before);
        }
        return nullptr;
    }

    void add(const PlacedControl& placed) { byLeft.insert_or_assign(placed.area.left, placed); }

private:
    std::map<int, PlacedControl> byLeft;
};

} // namespace

void WindowCheck::checkLayout() {
    if (!window) return;
    const int width = windowSetting("width", 800), height = windowSetting("height", 600);
    if (width <= frameWidth * 2 || height <= frameHeight) {
        const auto tokens = source.tokensOf(window);
        if (tokens) report(MessageId::windowSize, source.tokenRange(tokens->first + 1), {});
    }
    for (const auto& control : window->components) checkSize(*control);
    checkOverlaps();
    const bool resized = std::any_of(std::begin(resizers), std::end(resizers),
                                     [&](std::string_view name) { return uses.calls(name); });
    if (resized || width <= frameWidth * 2 || height <= frameHeight) return;
    for (const auto& control : window->components)
        if (isFixed(*control)) checkOutside(*control);
}

int WindowCheck::windowSetting(std::string_view name, int otherwise) const {
    for (const Property& property : window->properties)
        if (property.name == name)
            if (const Value* value = literalOf(property)) otherwise = value->asInt();
    return otherwise;
}

// Not so when the program may move it, or has it for its handlers only.
bool WindowCheck::isFixed(const Component& control) const {
    const auto& receivers = uses.receiversOf(control.name);
    return isOnWindow(control) && std::none_of(receivers.begin(), receivers.end(), [&](auto name) {
               return isOneOf(movers, name) || takesTarget(name);
           });
}

// Panels of no size are there for their handlers.
void WindowCheck::checkSize(const Component& control) {
    const ControlSettings settings = readControlSettings(control);
    if (!isFixed(control) || isContainer(control)) return;
    if (settings.width == 0)
        report(MessageId::zeroSize, nameRange(control), {control.name, "width"});
    else if (settings.height == 0)
        report(MessageId::zeroSize, nameRange(control), {control.name, "height"});
}

void WindowCheck::checkOutside(const Component& control) {
    const bool hasMenu = std::any_of(window->components.begin(), window->components.end(),
                                     [](const auto& other) { return other->type == "menu"; });
    const int width = windowSetting("width", 800) - frameWidth;
    const int height = windowSetting("height", 600) - frameHeight - (hasMenu ? menuHeight : 0);
    const Area area = areaOf(control);
    std::string_view where;
    if (area.left >= width || area.top >= height)
        where = "lies outside of the window";
    else if (area.right > width + frameWidth)
        where = "reaches beyond the right edge of the window";
    else if (area.bottom > height + frameWidth)
        where = "reaches beyond the lower edge of the window";
    if (!where.empty())
        report(MessageId::outsideWindow, nameRange(control),
               {control.name, where, std::to_string(width), std::to_string(height)});
}

// From the top of the window downwards; of each control the first overlap is reported.
void WindowCheck::checkOverlaps() {
    std::vector<PlacedControl> placed;
    for (const auto& control : window->components) {
        const Area area = areaOf(*control);
        if (isFixed(*control) && !isSurface(*control) && area.left < area.right &&
            area.top < area.bottom)
            placed.push_back({control.get(), area});
    }
    std::stable_sort(placed.begin(), placed.end(), isAbove);
    Row row;
    for (const PlacedControl& next : placed) {
        const Component* other = row.findOverlapped(next.area);
        if (!other) {
            row.add(next);
            continue;
        }
        Diagnostic& overlap = report(MessageId::overlappingControls, nameRange(*next.control),
                                     {next.control->name, other->name});
        overlap.notes.push_back({nameRange(*other), "the other one"});
    }
}

} // namespace Orvane
