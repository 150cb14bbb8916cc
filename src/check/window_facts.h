// What the kinds of control have and do: their properties and their events.
//
// Flat tables, read by the checks of windows. The generator's own tables say what becomes of a
// kind; these say what a program may expect of it.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace Orvane {

// What a property takes.
enum class PropertyValue : unsigned char { integer, text, colour, truth, list };

struct PropertyFact {
    std::string_view name;
    PropertyValue value;
    std::string_view kinds; // between blanks: " slider progress "; empty for all kinds
};

// Null for a name that no control has as a property.
const PropertyFact* findProperty(std::string_view name);

bool hasProperty(std::string_view kind, std::string_view property);

// The properties of a kind; of the window for "window".
std::vector<std::string_view> propertiesOf(std::string_view kind);

// "x" for "left"; empty for names that nothing stands for.
std::string_view propertyMeant(std::string_view name);

// "text" for "label"; the nearest kind for "buton"; empty when no kind is near.
std::string_view kindMeant(std::string_view name);

// "button", but "control of the kind 'entry'", since an article stands in front.
std::string describeKind(std::string_view kind);

bool isKnownEvent(std::string_view event);

// The events of the language, for suggestions.
const std::vector<std::string_view>& eventNames();

// Whether a control of the kind sends the event in the sense of its name. `bridged`: with the
// events that the library win32 adds.
bool sendsEvent(std::string_view kind, std::string_view event, bool bridged);

// Whether a control of the kind notifies its window of anything.
bool sendsAnything(std::string_view kind, bool bridged);

// When a control of the kind sends an event of another meaning under this name: "while one types in
// it"; empty when it does not.
std::string_view oddMoment(std::string_view kind, std::string_view event, bool bridged);

} // namespace Orvane
