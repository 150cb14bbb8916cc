// The properties of the window and its controls: which there are, and what becomes of their values.

#include "check/nearest_name.h"
#include "check/window_check.h"
#include "check/window_facts.h"
#include "codegen/control_settings.h"

#include <algorithm>
#include <cctype>

namespace Orvane {

namespace {

std::string_view describeTaken(PropertyValue value) {
    switch (value) {
    case PropertyValue::integer:
        return "an integer";
    case PropertyValue::text:
        return "a text";
    case PropertyValue::colour:
        return "a colour";
    case PropertyValue::truth:
        return "true or false";
    default:
        return "a list of texts";
    }
}

std::string_view describeGiven(const Value& value) {
    if (value.isInt()) return "an integer";
    if (value.isFloat()) return "a floating number";
    if (value.isString() || value.isColor()) return "a text";
    if (value.isBool()) return "a truth value";
    return "null";
}

std::string_view describeReading(PropertyValue value) {
    if (value == PropertyValue::integer) return "0";
    return value == PropertyValue::text ? "an empty text" : "if it were not there";
}

bool fits(PropertyValue taken, const Value& value) {
    switch (taken) {
    case PropertyValue::integer:
        return value.isInt();
    case PropertyValue::text:
    case PropertyValue::colour:
        return value.isString() || value.isColor();
    case PropertyValue::truth:
        return value.isBool();
    default:
        return false;
    }
}

bool isLiteral(const uptr<Expr>& expr) { return nodeCast<LiteralExpr>(expr) != nullptr; }

bool isListOfLiterals(const Expr* list) {
    if (const auto* array = nodeCast<ArrayExpr>(list))
        return std::all_of(array->elements.begin(), array->elements.end(), isLiteral);
    const auto* range = nodeCast<RangeExpr>(list);
    return range && isLiteral(range->start) && isLiteral(range->end) && isLiteral(range->step);
}

constexpr std::string_view colourless[] = {"button",   "entry", "textarea", "listbox", "combobox",
                                           "progress", "tab",   "menu",     "timer",   "status"};
constexpr std::string_view placeWords[] = {"x", "y", "width", "height"};
template <class Words>
bool isOneOf(const Words& words, std::string_view word) {
    return std::find(std::begin(words), std::end(words), word) != std::end(words);
}

// Becomes a part of the C++ program as it is. What begins with "#" and single words are for the
// check of names.
bool isCode(std::string_view colour) {
    const auto isLetter = [](char letter) {
        return std::isalpha(static_cast<unsigned char>(letter));
    };
    return !colour.starts_with('#') && !std::all_of(colour.begin(), colour.end(), isLetter);
}

} // namespace

void WindowCheck::checkProperties() {
    if (!window) return;
    checkPropertiesOf("window", nullptr, window->properties);
    for (const auto& control : window->components) {
        checkColours(*control);
        if (!kindMeant(control->type).empty() && kindMeant(control->type) == control->type) {
            checkPropertiesOf(control->type, control.get(), control->properties);
            checkContents(*control);
        }
    }
}

void WindowCheck::checkPropertiesOf(std::string_view kind, const Component* control,
                                    const List<Property>& properties) {
    std::unordered_map<std::string_view, const Property*> earlier;
    for (const Property& property : properties) {
        const auto [entry, isNew] = earlier.try_emplace(property.name, &property);
        if (!isNew) {
            Diagnostic& repeated =
                report(MessageId::repeatedProperty,
                       source.tokenRange(source.tokensOf(&property)->first), {property.name});
            repeated.notes.push_back(
                {source.tokenRange(source.tokensOf(entry->second)->first), "the other one"});
        }
        checkProperty(kind, control, property);
    }
}

void WindowCheck::reportProperty(MessageId id, const Property& property,
                                 std::initializer_list<std::string_view> arguments) {
    report(id, source.rangeOf(property.value.get()), arguments);
}

void WindowCheck::checkProperty(std::string_view kind, const Component* control,
                                const Property& property) {
    if (!hasProperty(kind, property.name)) return checkUnknownProperty(kind, property);
    checkValue(property);
    if (control) checkEffect(kind, property);
}

void WindowCheck::checkUnknownProperty(std::string_view kind, const Property& property) {
    Diagnostic& unknown =
        report(MessageId::unknownProperty, source.tokenRange(source.tokensOf(&property)->first),
               {property.name, describeKind(kind)});
    std::string_view meant = propertyMeant(property.name);
    if (kind == "window" && property.name != "title" && meant == "text") meant = "title";
    if (kind == "window" && property.name == "text") meant = "title";
    if (meant.empty() || !hasProperty(kind, meant))
        meant = nearestName(property.name, propertiesOf(kind));
    if (!meant.empty()) unknown.hint = "Write '" + std::string(meant) + "' if you mean that.";
}

void WindowCheck::checkValue(const Property& property) {
    const PropertyValue taken = findProperty(property.name)->value;
    const auto* literal = nodeCast<LiteralExpr>(property.value);
    if (literal && !fits(taken, literal->value))
        return reportProperty(MessageId::propertyKind, property,
                              {property.name, describeTaken(taken), describeGiven(literal->value),
                               describeReading(taken)});
    const bool isList = taken == PropertyValue::list && isListOfLiterals(property.value.get());
    if (!literal && !isList) reportProperty(MessageId::computedProperty, property, {property.name});
}

void WindowCheck::checkEffect(std::string_view kind, const Property& property) {
    std::string_view hint;
    const auto* literal = nodeCast<LiteralExpr>(property.value);
    const bool isPlace = isOneOf(placeWords, property.name);
    if (property.name == "checked" && literal && literal->value.asBool())
        hint =
            "Boxes start unchecked; call setChecked of the library win32 in a handler of 'start'.";
    else if ((kind == "menu" || kind == "timer") && isPlace)
        hint = "It has no place in the window; remove the property.";
    else if (findProperty(property.name)->value == PropertyValue::colour &&
             isOneOf(colourless, kind))
        hint = "Call setColors of the library win32 in a handler.";
    if (!hint.empty())
        report(MessageId::uselessProperty, source.rangeOf(&property),
               {property.name, describeKind(kind), hint});
}

// Of several properties of one name the last one with a text counts, as in the program itself.
void WindowCheck::checkColours(const Component& control) {
    const ControlSettings settings = readControlSettings(control);
    checkColour(control, "color", settings.colour);
    checkColour(control, "background", settings.background);
}

void WindowCheck::checkColour(const Component& control, std::string_view property,
                              std::string_view colour) {
    if (!isCode(colour)) return;
    const Property* place = nullptr;
    for (const Property& candidate : control.properties)
        if (candidate.name == property && isLiteral(candidate.value)) place = &candidate;
    if (place) reportProperty(MessageId::unusualColour, *place, {colour});
}

void WindowCheck::checkContents(const Component& control) {
    if (control.type == "slider" || control.type == "progress") checkSlider(control);
    if (control.type == "picture") checkPicture(control);
}

void WindowCheck::checkSlider(const Component& control) {
    ControlSettings settings = readControlSettings(control);
    if (control.type == "progress") settings.min = 0, settings.max = 100;
    const std::string low = std::to_string(settings.min), high = std::to_string(settings.max);
    if (settings.min >= settings.max) {
        report(MessageId::sliderRange, nameRange(control), {control.name, low, high});
        return;
    }
    if (settings.value >= settings.min && settings.value <= settings.max) return;
    for (const Property& property : control.properties)
        if (property.name == "value")
            return reportProperty(MessageId::valueRange, property,
                                  {"value", std::to_string(settings.value), low, high});
}

// Handlers can set a picture.
void WindowCheck::checkPicture(const Component& control) {
    std::string path = readControlSettings(control).source;
    std::transform(path.begin(), path.end(), path.begin(),
                   [](unsigned char letter) { return static_cast<char>(std::tolower(letter)); });
    if (path.empty() && uses.receiversOf(control.name).empty())
        report(MessageId::pictureFile, nameRange(control), {control.name, "it has no file"});
    if (!path.empty() && !path.ends_with(".bmp"))
        report(MessageId::pictureFile, nameRange(control),
               {control.name, "its file is not a .bmp"});
}

} // namespace Orvane
