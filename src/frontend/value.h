// Values known while compiling: what a literal token or a property holds.
//
// A Value carries a type name and one member for each kind of content; the type name says which
// member counts. It copies deeply. The accessors check nothing: asking an "int" for its text gives
// the empty text. It is another thing than the Value of generated programs, which is text that the
// code generator writes.
//
//     Value width(300);
//     width.isInt();                       // true
//     Value::makeFont("Arial, 12")["size"].asInt();   // 12
#pragma once

#include <map>
#include <memory>
#include <string>
#include <string_view>
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
    Value(Value&& other) noexcept = default;
    Value& operator=(const Value& other);
    Value& operator=(Value&& other) noexcept = default;
    ~Value() = default;

    static Value makeObject(const std::string& className);
    static Value makeHandle(void* handle);
    static Value makeFunction(const std::string& name);
    static Value makeArray(const std::string& typeName, const std::vector<Value>& elements);

    // A "font" with the fields "name" and "size" from a text such as "Arial, 12"; without a comma
    // the whole text is the name and the size is 14. Throws what std::stoi throws for a bad size.
    static Value makeFont(const std::string& description);

    const std::string& type() const { return typeName; }

    // Exact, case-sensitive comparisons of the type name.
    bool is(std::string_view name) const { return typeName == name; }
    bool isNull() const { return is("null"); }
    bool isInt() const { return is("int"); }
    bool isFloat() const { return is("double"); }
    bool isString() const { return is("string"); }
    bool isBool() const { return is("bool"); }
    bool isArray() const { return is("array"); }
    bool isContainer() const { return isArray() || is("container"); }
    bool isMap() const { return is("map"); }
    bool isHandle() const { return is("handle"); }
    bool isColor() const { return is("color"); }
    bool isFont() const { return is("font"); }
    bool isFunction() const { return is("function"); }
    bool isObject() const; // none of the twelve built-in names

    int asInt() const { return integer; }
    double asFloat() const { return floating; }
    std::string asString() const { return text; }
    bool asBool() const { return flag; }
    std::string asColor() const { return text; }
    void* asHandle() const { return handle; }
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
    // Lists and fields are rare: most values are single literals, so that these two cost one
    // pointer until they are used.
    struct Contents {
        std::vector<Value> elements;
        std::map<std::string, Value> fields;
    };
    Contents& contents();

    std::string typeName = "null";
    std::string text;
    double floating = 0.0;
    void* handle = nullptr;
    std::unique_ptr<Contents> rare;
    int integer = 0;
    bool flag = false;
};

} // namespace Orvane
