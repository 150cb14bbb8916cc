#include "codegen/control_settings.h"

#include <algorithm>
#include <optional>

namespace Orvane {

namespace {

template <class Setting>
struct PropertyField {
    std::string_view property;
    Setting ControlSettings::*field;
};

constexpr PropertyField<int> integerProperties[] = {
    {"x", &ControlSettings::x},         {"y", &ControlSettings::y},
    {"width", &ControlSettings::width}, {"height", &ControlSettings::height},
    {"min", &ControlSettings::min},     {"max", &ControlSettings::max},
    {"value", &ControlSettings::value},
};
constexpr PropertyField<std::string> textProperties[] = {
    {"text", &ControlSettings::text},
    {"group", &ControlSettings::group},
    {"src", &ControlSettings::source},
};
constexpr PropertyField<std::string> colourProperties[] = {
    {"color", &ControlSettings::colour},
    {"background", &ControlSettings::background},
};

template <class Setting, std::size_t Count>
Setting ControlSettings::*findField(const PropertyField<Setting> (&fields)[Count],
                                    std::string_view property) {
    const auto row = std::find_if(std::begin(fields), std::end(fields), [&](const auto& candidate) {
        return candidate.property == property;
    });
    return row == std::end(fields) ? nullptr : row->field;
}

void readLiteral(ControlSettings& settings, std::string_view property, const Value& value) {
    if (const auto integer = findField(integerProperties, property))
        settings.*integer = value.asInt();
    else if (const auto text = findField(textProperties, property))
        settings.*text = value.asString();
    else if (const auto colour = findField(colourProperties, property))
        if (value.isString() || value.isColor()) settings.*colour = value.asString();
}

// Nothing unless every element is a literal.
std::optional<std::vector<std::string>> textsOf(const std::vector<const Expr*>& elements) {
    std::vector<std::string> texts;
    for (const Expr* element : elements) {
        const auto* literal = nodeCast<LiteralExpr>(element);
        if (!literal) return std::nullopt;
        texts.push_back(literal->value.toString());
    }
    return texts;
}

// {"a", "b"} and ["a", "b"] are arrays; ["a", "b", "c"] has been parsed as a range with a step.
std::optional<std::vector<std::string>> readItems(const Expr* list) {
    std::vector<const Expr*> elements;
    if (const auto* array = nodeCast<ArrayExpr>(list)) {
        for (const auto& element : array->elements) elements.push_back(element.get());
        return textsOf(elements);
    }
    if (const auto* range = nodeCast<RangeExpr>(list))
        return textsOf({range->start.get(), range->end.get(), range->step.get()});
    return std::nullopt;
}

} // namespace

const Value* literalOf(const Property& property) {
    const auto* literal = nodeCast<LiteralExpr>(property.value);
    return literal ? &literal->value : nullptr;
}

ControlSettings readControlSettings(const Component& component) {
    ControlSettings settings;
    for (const Property& property : component.properties) {
        if (const Value* value = literalOf(property))
            readLiteral(settings, property.name, *value);
        else if (property.name == "items")
            if (auto items = readItems(property.value.get())) settings.items = std::move(*items);
    }
    return settings;
}

} // namespace Orvane
