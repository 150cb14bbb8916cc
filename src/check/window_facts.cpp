#include "check/window_facts.h"

#include "check/nearest_name.h"
#include "codegen/control_kinds.h"

#include <algorithm>
#include <array>
#include <utility>

namespace Orvane {

namespace {

using Pair = std::pair<std::string_view, std::string_view>;

constexpr PropertyFact properties[] = {
    {"x", PropertyValue::integer, ""},
    {"y", PropertyValue::integer, ""},
    {"width", PropertyValue::integer, ""},
    {"height", PropertyValue::integer, ""},
    {"text", PropertyValue::text, " button checkbox radio text entry textarea group status "},
    {"items", PropertyValue::list, " listbox combobox menu tab "},
    {"min", PropertyValue::integer, " slider "},
    {"max", PropertyValue::integer, " slider "},
    {"value", PropertyValue::integer, " slider progress "},
    {"src", PropertyValue::text, " picture "},
    {"color", PropertyValue::colour, ""},
    {"background", PropertyValue::colour, ""},
    {"group", PropertyValue::text, " radio "},
    {"checked", PropertyValue::truth, " checkbox radio "},
    {"title", PropertyValue::text, " window "},
};

constexpr std::array<std::string_view, 18> kinds = {
    "button",   "checkbox", "radio", "text", "entry", "textarea", "listbox", "combobox", "slider",
    "progress", "panel",    "group", "tab",  "menu",  "picture",  "canvas",  "status",   "timer"};

// What people call things elsewhere.
constexpr Pair kindWords[] = {
    {"label", "text"},         {"caption", "text"},
    {"textbox", "entry"},      {"input", "entry"},
    {"edit", "entry"},         {"field", "entry"},
    {"textfield", "entry"},    {"memo", "textarea"},
    {"multiline", "textarea"}, {"check", "checkbox"},
    {"toggle", "checkbox"},    {"option", "radio"},
    {"radiobutton", "radio"},  {"dropdown", "combobox"},
    {"select", "combobox"},    {"combo", "combobox"},
    {"list", "listbox"},       {"image", "picture"},
    {"trackbar", "slider"},    {"progressbar", "progress"},
    {"frame", "group"},        {"groupbox", "group"},
    {"tabs", "tab"},           {"statusbar", "status"},
    {"menubar", "menu"},       {"push", "button"},
};
constexpr Pair propertyWords[] = {
    {"left", "x"},           {"top", "y"},           {"w", "width"},       {"h", "height"},
    {"caption", "text"},     {"label", "text"},      {"title", "text"},    {"content", "text"},
    {"source", "src"},       {"image", "src"},       {"path", "src"},      {"minimum", "min"},
    {"maximum", "max"},      {"options", "items"},   {"entries", "items"}, {"colour", "color"},
    {"foreground", "color"}, {"fill", "background"}, {"bg", "background"},
};

constexpr Pair sentEvents[] = {
    {"button", "click"},   {"checkbox", "click"},  {"radio", "click"},     {"radio", "dblclick"},
    {"entry", "change"},   {"textarea", "change"}, {"combobox", "change"}, {"combobox", "select"},
    {"listbox", "change"}, {"listbox", "select"},
};
constexpr Pair bridgedEvents[] = {
    {"slider", "scroll"}, {"tab", "select"}, {"tab", "change"}, {"listbox", "dblclick"}};

template <class Pairs>
bool contains(const Pairs& pairs, std::string_view first, std::string_view second) {
    return std::find(std::begin(pairs), std::end(pairs), Pair(first, second)) != std::end(pairs);
}

template <class Pairs>
std::string_view lookUp(const Pairs& pairs, std::string_view word) {
    const auto pair = std::find_if(std::begin(pairs), std::end(pairs),
                                   [&](const Pair& candidate) { return candidate.first == word; });
    return pair == std::end(pairs) ? std::string_view() : pair->second;
}

template <class Pairs>
bool hasFirst(const Pairs& pairs, std::string_view word) {
    return !lookUp(pairs, word).empty();
}

bool isWindow(std::string_view kind) { return kind == "window"; }

} // namespace

const PropertyFact* findProperty(std::string_view name) {
    const auto row = std::find_if(std::begin(properties), std::end(properties),
                                  [&](const PropertyFact& fact) { return fact.name == name; });
    return row == std::end(properties) ? nullptr : row;
}

bool hasProperty(std::string_view kind, std::string_view property) {
    const PropertyFact* fact = findProperty(property);
    if (!fact) return false;
    if (isWindow(kind)) return property == "title" || property == "width" || property == "height";
    return fact->kinds.empty() ||
           fact->kinds.find(" " + std::string(kind) + " ") != fact->kinds.npos;
}

std::vector<std::string_view> propertiesOf(std::string_view kind) {
    std::vector<std::string_view> names;
    for (const PropertyFact& fact : properties)
        if (hasProperty(kind, fact.name)) names.push_back(fact.name);
    return names;
}

std::string_view propertyMeant(std::string_view name) { return lookUp(propertyWords, name); }

std::string_view kindMeant(std::string_view name) {
    std::string lowered(name);
    std::transform(lowered.begin(), lowered.end(), lowered.begin(), [](char letter) {
        return letter >= 'A' && letter <= 'Z' ? static_cast<char>(letter - 'A' + 'a') : letter;
    });
    const auto same = std::find(kinds.begin(), kinds.end(), lowered);
    if (same != kinds.end()) return *same;
    const std::string_view meant = lookUp(kindWords, lowered);
    return meant.empty() ? nearestName(name, {kinds.begin(), kinds.end()}) : meant;
}

std::string describeKind(std::string_view kind) {
    if (kind == "entry") return "control of the kind 'entry'";
    return std::string(kind);
}

const std::vector<std::string_view>& eventNames() {
    static const std::vector<std::string_view> names = {"click", "change", "select", "dblclick",
                                                        "scroll"};
    return names;
}

bool isKnownEvent(std::string_view event) {
    const auto& names = eventNames();
    return std::find(names.begin(), names.end(), event) != names.end();
}

bool sendsEvent(std::string_view kind, std::string_view event, bool bridged) {
    return contains(sentEvents, kind, event) || (bridged && contains(bridgedEvents, kind, event));
}

bool sendsAnything(std::string_view kind, bool bridged) {
    return hasFirst(sentEvents, kind) || (bridged && hasFirst(bridgedEvents, kind));
}

// The numbers 5 and 8, for which `dblclick` and `scroll` look, are other notifications of these.
std::string_view oddMoment(std::string_view kind, std::string_view event, bool bridged) {
    if (event != "dblclick" && event != "scroll") return {};
    if (sendsEvent(kind, event, bridged)) return {};
    if (kind == "combobox")
        return event == "dblclick" ? "while one types in it" : "while one types in it or closes it";
    if (kind == "listbox")
        return bridged ? "when an entry is double-clicked" : "when it loses the keyboard focus";
    if (kind == "slider" && bridged) return "while it is moved";
    return {};
}

} // namespace Orvane
