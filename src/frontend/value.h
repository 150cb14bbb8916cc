// Values known while compiling: what a literal token or a property holds.
//
// A Value carries a type name and one member for each kind of content; the type name says which
// member counts. It copies deeply. The accessors check nothing: asking an "int" for its text gives
// the empty text. It is another thing than the Value of generated programs, which is text that the
// code generator writes.
//
// A source holds a literal in every second line or so, and therefore a value takes 16 bytes and
// single values own no other memory: the built-in type names are numbers inside, and viewText()
// makes a value of a text that is kept elsewhere. A copy of such a value owns its text.
//
//     Value width(300);
//     width.isInt();                       // true
//     Value::makeFont("Arial, 12")["size"].asInt();   // 12
#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace Orvane {

class Value {
public:
    Value() = default; // "null"
    explicit Value(int integer);
    explicit Value(long long integer); // cut to 32 bits
    explicit Value(double floating);
    explicit Value(bool flag);
    explicit Value(const char* text);
    explicit Value(const std::string& text);
    explicit Value(std::string_view text);
    Value(std::string_view typeName, std::string_view text); // "color" and other kinds told in text
    explicit Value(const std::vector<Value>& elements);      // "array"

    Value(const Value& other);
    Value(Value&& other) noexcept // leaves a null value behind
        : content(other.content), length(other.length), kind(other.kind), held(other.held) {
        other.kind = Kind::null;
        other.held = Held::nothing;
    }
    Value& operator=(const Value& other);
    Value& operator=(Value&& other) noexcept;
    ~Value() {
        if (ownsMemory()) delete content.contents;
    }

    // A "string", or another kind told in text, whose text is not copied: it must stay where it is
    // for as long as the value lives and for the life of what the value is moved into.
    static Value viewText(std::string_view text) { return Value(Kind::string, text); }
    static Value viewColor(std::string_view text) { return Value(Kind::color, text); }

    static Value makeObject(const std::string& className);
    static Value makeHandle(void* handle);
    static Value makeFunction(const std::string& name);
    static Value makeArray(const std::string& typeName, const std::vector<Value>& elements);

    // A "font" with the fields "name" and "size" from a text such as "Arial, 12"; without a comma
    // the whole text is the name and the size is 14. Throws what std::stoi throws for a bad size.
    static Value makeFont(const std::string& description);

    std::string_view type() const;

    // Whether the value has memory of its own; one that has none need not be destroyed.
    bool ownsMemory() const { return held == Held::contents; }

    // Exact, case-sensitive comparisons of the type name.
    bool is(std::string_view name) const { return type() == name; }
    bool isNull() const { return kind == Kind::null; }
    bool isInt() const { return kind == Kind::integer; }
    bool isFloat() const { return kind == Kind::floating; }
    bool isString() const { return kind == Kind::string; }
    bool isBool() const { return kind == Kind::boolean; }
    bool isArray() const { return kind == Kind::array; }
    bool isContainer() const { return isArray() || kind == Kind::container; }
    bool isMap() const { return kind == Kind::map; }
    bool isHandle() const { return kind == Kind::handle; }
    bool isColor() const { return kind == Kind::color; }
    bool isFont() const { return kind == Kind::font; }
    bool isFunction() const { return kind == Kind::function; }
    bool isObject() const { return kind == Kind::object; } // none of the twelve built-in names

    int asInt() const;
    double asFloat() const;
    std::string asString() const { return std::string(textView()); }
    std::string_view textView() const; // valid as long as the value and its text
    bool asBool() const;
    std::string asColor() const { return asString(); }
    void* asHandle() const;
    std::vector<Value> asArray() const;

    bool has(const std::string& key) const;
    const Value& operator[](const std::string& key) const; // throws "key not found: " + key
    Value& operator[](const std::string& key);             // inserts a null value when absent
    Value& operator[](std::size_t index);                  // unchecked
    const Value& operator[](std::size_t index) const;      // unchecked

    // The value as text: numbers in decimal (doubles with six decimals), lists as [a, b], objects
    // as {key: value, ...} in key order, texts as they are.
    std::string toString() const;

private:
    // The built-in type names in their fixed order, then everything else.
    enum class Kind : unsigned char {
        null,
        integer,
        floating,
        string,
        boolean,
        array,
        container,
        map,
        handle,
        color,
        font,
        function,
        object,
    };

    // What few values have.
    struct Contents {
        std::string className; // of an object
        std::string text;
        std::vector<Value> elements;
        std::map<std::string, Value> fields;
        void* handle = nullptr;
        int integer = 0;
        double floating = 0.0;
        bool flag = false;
    };

    // Which member of `content` counts.
    enum class Held : unsigned char { nothing, integer, floating, flag, viewedText, contents };
    union Content {
        int integer;
        double floating;
        bool flag;
        const char* viewedText; // of `length` bytes
        Contents* contents;     // owned
    };

    explicit Value(Kind kind_) : kind(kind_) {}
    Value(Kind kind_, std::string_view text)
        : content{.viewedText = text.data()}, length(static_cast<std::uint32_t>(text.size())),
          kind(kind_), held(Held::viewedText) {}
    void swap(Value& other) noexcept {
        std::swap(content, other.content);
        std::swap(length, other.length);
        std::swap(kind, other.kind);
        std::swap(held, other.held);
    }
    const Contents* rare() const { return ownsMemory() ? content.contents : nullptr; }
    Contents& contents();
    void setType(std::string_view name);
    void keepText(std::string_view source);

    Content content{};
    std::uint32_t length = 0;
    Kind kind = Kind::null;
    Held held = Held::nothing;
};

} // namespace Orvane
