#include "frontend/value.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstdio>
#include <limits>
#include <memory>
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

std::string inBrackets(std::string_view front, std::string_view rest = {}) {
    std::string text = "[";
    text += front;
    text += rest;
    return text += ']';
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

Value::Value(int integer) : content{.integer = integer}, kind(Kind::integer), held(Held::integer) {}
Value::Value(long long integer) : Value(static_cast<int>(integer)) {}
Value::Value(double floating)
    : content{.floating = floating}, kind(Kind::floating), held(Held::floating) {}
Value::Value(bool flag) : content{.flag = flag}, kind(Kind::boolean), held(Held::flag) {}
Value::Value(const char* text) : Value(std::string_view(text)) {}
Value::Value(const std::string& text) : Value(std::string_view(text)) {}
Value::Value(std::string_view text) : Value(Kind::string) { keepText(text); }

Value::Value(std::string_view typeName, std::string_view text) {
    setType(typeName);
    keepText(text);
}

Value::Value(const std::vector<Value>& elements) : Value(Kind::array) {
    contents().elements = elements;
}

Value::Value(const Value& other) : Value(other.kind) {
    if (const Contents* shared = other.rare()) {
        contents() = *shared;
    } else if (other.held == Held::viewedText) {
        keepText(other.textView());
    } else {
        content = other.content;
        held = other.held;
    }
}

// In both assignments the new content is complete before the old one is given up, so that
// assigning a value one of its own elements works.
Value& Value::operator=(const Value& other) {
    Value copy(other);
    swap(copy);
    return *this;
}

Value& Value::operator=(Value&& other) noexcept {
    Value moved(std::move(other));
    swap(moved);
    return *this;
}

Value Value::makeObject(const std::string& className) {
    Value value;
    value.setType(className);
    return value;
}

Value Value::makeHandle(void* handle) {
    Value value(Kind::handle);
    value.contents().handle = handle;
    return value;
}

Value Value::makeFunction(const std::string& name) { return Value("function", name); }

Value Value::makeArray(const std::string& typeName, const std::vector<Value>& elements) {
    Value value(elements);
    value.setType(typeName);
    return value;
}

Value Value::makeFont(const std::string& description) {
    Value font(Kind::font);
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

std::string_view Value::type() const {
    if (isObject()) return rare()->className;
    return builtInNames[static_cast<std::size_t>(kind)];
}

void Value::setType(std::string_view name) {
    const auto builtIn = std::find(builtInNames.begin(), builtInNames.end(), name);
    kind = static_cast<Kind>(builtIn - builtInNames.begin());
    if (isObject()) contents().className = name;
}

// A text without characters needs no place to be kept in.
void Value::keepText(std::string_view source) {
    if (source.empty()) return;
    contents().text = source;
}

int Value::asInt() const {
    if (held == Held::integer) return content.integer;
    return rare() ? rare()->integer : 0;
}

double Value::asFloat() const {
    if (held == Held::floating) return content.floating;
    return rare() ? rare()->floating : 0.0;
}

bool Value::asBool() const {
    if (held == Held::flag) return content.flag;
    return rare() && rare()->flag;
}

std::string_view Value::textView() const {
    if (held == Held::viewedText) return {content.viewedText, length};
    return rare() ? std::string_view(rare()->text) : std::string_view();
}

void* Value::asHandle() const { return rare() ? rare()->handle : nullptr; }

std::vector<Value> Value::asArray() const {
    return rare() ? rare()->elements : std::vector<Value>{};
}

bool Value::has(const std::string& key) const { return rare() && rare()->fields.contains(key); }

const Value& Value::operator[](const std::string& key) const {
    if (!has(key)) throw std::runtime_error("key not found: " + key);
    return rare()->fields.find(key)->second;
}

Value& Value::operator[](const std::string& key) { return contents().fields[key]; }
Value& Value::operator[](std::size_t index) { return contents().elements[index]; }
const Value& Value::operator[](std::size_t index) const { return rare()->elements[index]; }

std::string Value::toString() const {
    if (isNull()) return "null";
    if (isBool()) return asBool() ? "true" : "false";
    if (isInt()) return std::to_string(asInt());
    if (isColor() || isString()) return asString();
    if (isContainer()) return rare() ? formatElements(rare()->elements) : "[]";
    if (isFunction()) return inBrackets("function:", textView());
    if (isFloat()) return formatDouble(asFloat());
    if (isHandle()) return formatHandle(asHandle());
    if (isObject()) return rare() ? formatFields(rare()->fields) : "{}";
    return inBrackets(type());
}

// What the value held alone moves into the contents.
Value::Contents& Value::contents() {
    if (!ownsMemory()) {
        auto made = std::make_unique<Contents>();
        made->text = textView();
        made->integer = asInt();
        made->floating = asFloat();
        made->flag = asBool();
        content.contents = made.release();
        held = Held::contents;
    }
    return *content.contents;
}

} // namespace Orvane
