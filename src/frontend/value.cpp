#include "frontend/value.h"

#include <array>
#include <cstdint>
#include <cstdio>
#include <limits>
#include <stdexcept>

namespace Orvane {

namespace {

constexpr std::array<std::string_view, 12> builtInNames = {
    "null",      "int", "double", "string", "bool", "array",
    "container", "map", "handle", "color",  "font", "function",
};

constexpr int defaultFontSize = 14;

std::string_view trimBlanks(std::string_view text) {
    const std::size_t first = text.find_first_not_of(" \t");
    if (first == std::string_view::npos) return {};
    return text.substr(first, text.find_last_not_of(" \t") - first + 1);
}

std::string formatDouble(double number) {
    // The widest double has 309 digits before the point; sign, point, six decimals and the
    // ending zero come on top.
    std::array<char, std::numeric_limits<double>::max_exponent10 + 16> buffer{};
    const int length = std::snprintf(buffer.data(), buffer.size(), "%f", number);
    return {buffer.data(), static_cast<std::size_t>(length)};
}

std::string formatHandle(const void* handle) {
    std::array<char, 40> buffer{};
    const int length =
        std::snprintf(buffer.data(), buffer.size(), "[handle:0x%llx]",
                      static_cast<unsigned long long>(reinterpret_cast<std::uintptr_t>(handle)));
    return {buffer.data(), static_cast<std::size_t>(length)};
}

std::string formatElements(const std::vector<Value>& elements) {
    std::string text = "[";
    for (const Value& element : elements) {
        if (text.size() > 1) text += ", ";
        text += element.toString();
    }
    return text + "]";
}

std::string formatFields(const std::map<std::string, Value>& fields) {
    std::string text = "{";
    for (const auto& [key, field] : fields) {
        if (text.size() > 1) text += ", ";
        text += key + ": " + field.toString();
    }
    return text + "}";
}

} // namespace

Value::Value(int integer_) : typeName("int"), integer(integer_) {}
Value::Value(long long integer_) : typeName("int"), integer(static_cast<int>(integer_)) {}
Value::Value(double floating_) : typeName("double"), floating(floating_) {}
Value::Value(bool flag_) : typeName("bool"), flag(flag_) {}
Value::Value(const char* text_) : typeName("string"), text(text_) {}
Value::Value(const std::string& text_) : typeName("string"), text(text_) {}
Value::Value(std::string_view text_) : typeName("string"), text(text_) {}
Value::Value(std::string_view typeName_, std::string_view text_)
    : typeName(typeName_), text(text_) {}

Value::Value(const std::vector<Value>& elements) : typeName("array") {
    contents().elements = elements;
}

Value::Value(const Value& other)
    : typeName(other.typeName), text(other.text), floating(other.floating), handle(other.handle),
      rare(other.rare ? std::make_unique<Contents>(*other.rare) : nullptr), integer(other.integer),
      flag(other.flag) {}

// The copy is complete before anything is given up, so that assigning a value one of its own
// elements works.
Value& Value::operator=(const Value& other) {
    Value copy(other);
    *this = std::move(copy);
    return *this;
}

Value Value::makeObject(const std::string& className) {
    Value value;
    value.typeName = className;
    return value;
}

Value Value::makeHandle(void* handle) {
    Value value;
    value.typeName = "handle";
    value.handle = handle;
    return value;
}

Value Value::makeFunction(const std::string& name) { return Value("function", name); }

Value Value::makeArray(const std::string& typeName, const std::vector<Value>& elements) {
    Value value(elements);
    value.typeName = typeName;
    return value;
}

Value Value::makeFont(const std::string& description) {
    Value font;
    font.typeName = "font";
    const std::string_view whole = description;
    const std::size_t comma = whole.find(',');
    if (comma == std::string_view::npos) {
        font["name"] = Value(whole);
        font["size"] = Value(defaultFontSize);
        return font;
    }
    font["name"] = Value(trimBlanks(whole.substr(0, comma)));
    font["size"] = Value(std::stoi(std::string(trimBlanks(whole.substr(comma + 1)))));
    return font;
}

bool Value::isObject() const {
    for (const std::string_view name : builtInNames)
        if (typeName == name) return false;
    return true;
}

std::vector<Value> Value::asArray() const { return rare ? rare->elements : std::vector<Value>{}; }

bool Value::has(const std::string& key) const { return rare && rare->fields.contains(key); }

const Value& Value::operator[](const std::string& key) const {
    if (!has(key)) throw std::runtime_error("key not found: " + key);
    return rare->fields.find(key)->second;
}

Value& Value::operator[](const std::string& key) { return contents().fields[key]; }
Value& Value::operator[](std::size_t index) { return contents().elements[index]; }
const Value& Value::operator[](std::size_t index) const { return rare->elements[index]; }

std::string Value::toString() const {
    if (isNull()) return "null";
    if (isBool()) return flag ? "true" : "false";
    if (isInt()) return std::to_string(integer);
    if (isColor() || isString()) return text;
    if (isContainer()) return rare ? formatElements(rare->elements) : "[]";
    if (isFunction()) return "[function:" + text + "]";
    if (isFloat()) return formatDouble(floating);
    if (isHandle()) return formatHandle(handle);
    if (isObject()) return rare ? formatFields(rare->fields) : "{}";
    return "[" + typeName + "]";
}

Value::Contents& Value::contents() {
    if (!rare) rare = std::make_unique<Contents>();
    return *rare;
}

} // namespace Orvane
