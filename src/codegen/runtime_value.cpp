#include "codegen/runtime_value.h"

namespace Orvane {

// Neighbouring literals are joined by the C++ compiler: one block per group of members.
static constexpr std::string_view valueText =
    R"cpp(struct Value {
    std::string typeName = "null";
    long long intVal = 0;
    double floatVal = 0.0;
    std::string stringVal;
    bool boolVal = false;
    std::vector<Value> arrayVal;
    std::map<std::string, Value> mapVal;
    void* handleVal = nullptr;

    [[gnu::flatten]] Value() {}
    Value(int number) : Value(static_cast<long long>(number)) {}
    [[gnu::flatten]] Value(long long number) : typeName(intName()), intVal(number) {}
    [[gnu::flatten]] Value(double number) : typeName("double"), floatVal(number) {}
    Value(const std::string& text) : typeName("string"), stringVal(text) {}
    [[gnu::flatten]] Value(std::string&& text) : typeName("string"), stringVal(std::move(text)) {}
    Value(const char* text) : typeName(text ? "string" : "null"), stringVal(text ? text : "") {}
    [[gnu::flatten]] Value(bool truth) : typeName("bool"), boolVal(truth) {}
    Value(const std::vector<Value>& elements) : typeName("array"), arrayVal(elements) {}
    Value(std::vector<Value>&& elements) : typeName("array"), arrayVal(std::move(elements)) {}
    Value(const std::map<std::string, Value>& entries) : typeName("map"), mapVal(entries) {}
    Value(std::map<std::string, Value>&& entries) : typeName("map"), mapVal(std::move(entries)) {}
    Value(const std::string& type, const std::string& v) : typeName(type), stringVal(v) {}

    // Programs are compiled with -Og, which inlines little of the library on its own: what every
    // operation runs asks for it, and what is rare is kept out of it. Most values are numbers:
    // their names come from a literal, and their empty parts stay as they are. Copies come and go
    // more often than anything else; that work alone is worth more of the compiler's.
    [[gnu::noinline, gnu::flatten, gnu::optimize("O2")]] Value(const Value& other)
        : Value(other, WithoutParts()) {
        if (other.hasParts()) copyParts(other);
    }
    [[gnu::flatten]] Value(Value&& other) noexcept
        : typeName(other.movedName()), intVal(other.intVal), floatVal(other.floatVal),
          stringVal(other.movedText()), boolVal(other.boolVal), handleVal(other.handleVal) {
        if (other.hasParts()) swapParts(other);
    }
    struct WithoutParts {};
    [[gnu::flatten]] Value(const Value& other, WithoutParts)
        : typeName(other.copiedName()), intVal(other.intVal), floatVal(other.floatVal),
          stringVal(other.copiedText()), boolVal(other.boolVal), handleVal(other.handleVal) {}
    Value& operator=(const Value& other) {
        return isNumberLike(other) ? setNumbers(other) : replaceBy(Value(other));
    }
    Value& operator=(Value&& other) noexcept {
        return isNumberLike(other) ? setNumbers(other) : replaceBy(std::move(other));
    }
    // Most values own no list and no entries. Told that both are new and empty, the compiler leaves
    // out what would destroy them.
    [[gnu::noinline, gnu::flatten, gnu::optimize("O2")]] ~Value() {
        if (arrayVal.capacity() != 0 || mapVal.size() != 0) destroyParts();
        ::new (&arrayVal) std::vector<Value>();
        ::new (&mapVal) std::map<std::string, Value>();
    }
    [[gnu::noinline]] void destroyParts() {
        std::destroy_at(&arrayVal);
        std::destroy_at(&mapVal);
    }

    // Written in one piece, as it is read: a processor waits when it reads together what has just
    // been written in parts.
    [[gnu::always_inline]] static std::string intName() {
        std::string name = "int";
        __builtin_memcpy(&name[0], "int", 4);
        return name;
    }
    std::string copiedName() const {
        if (isInt()) return intName();
        if (isFloat()) return "double";
        if (isString()) return "string";
        return wholeName();
    }
    std::string movedName() {
        if (isInt()) return intName();
        if (isFloat()) return "double";
        if (isString()) return "string";
        return takenText(typeName);
    }
    std::string copiedText() const { return stringVal.empty() ? std::string() : wholeText(); }
    std::string movedText() { return stringVal.empty() ? std::string() : takenText(stringVal); }
    [[gnu::noinline]] std::string wholeName() const { return typeName; }
    [[gnu::noinline, gnu::flatten]] std::string wholeText() const { return stringVal; }
    [[gnu::noinline]] static std::string takenText(std::string& text) { return std::move(text); }
    [[gnu::always_inline]] bool hasParts() const {
        return arrayVal.begin() != arrayVal.end() || mapVal.size() != 0;
    }
    [[gnu::noinline]] void copyParts(const Value& other) {
        if (other.arrayVal.size() != 0) std::vector<Value>(other.arrayVal).swap(arrayVal);
        if (other.mapVal.size() != 0) std::map<std::string, Value>(other.mapVal).swap(mapVal);
    }
    [[gnu::noinline]] void swapParts(Value& other) noexcept {
        arrayVal.swap(other.arrayVal);
        mapVal.swap(other.mapVal);
    }
    [[gnu::always_inline]] bool isBare() const { return stringVal.size() == 0 && !hasParts(); }
    [[gnu::always_inline]] bool isNumberLike(const Value& other) const {
        return ((isInt() && other.isInt()) || (isFloat() && other.isFloat())) && isBare() &&
               other.isBare();
    }
    [[gnu::always_inline]] Value& setNumbers(const Value& other) {
        intVal = other.intVal;
        floatVal = other.floatVal;
        boolVal = other.boolVal;
        handleVal = other.handleVal;
        return *this;
    }
    // The other value may be a part of this one.
    [[gnu::noinline]] Value& replaceBy(Value&& other) noexcept {
        Value moved(std::move(other));
        if (typeName != moved.typeName) typeName.swap(moved.typeName);
        if (stringVal.size() + moved.stringVal.size() != 0) stringVal.swap(moved.stringVal);
        swapParts(moved);
        return setNumbers(moved);
    }

    static Value makeObject(const std::string& type) {
        Value made;
        made.typeName = type;
        return made;
    }
    static Value makeHandle(void* h) {
        Value made;
        made.typeName = "handle";
        made.handleVal = h;
        return made;
    }
    static Value makeFunction(const std::string& name) { return Value("function", name); }
    static Value makeArray(const std::string& type, const std::vector<Value>& elements) {
        Value made(elements);
        made.typeName = type;
        return made;
    }

)cpp"
    R"cpp(    // Names of three to six letters, compared in the pieces in which they are written.
    template <typename Bytes>
    [[gnu::always_inline]] static Bytes bytesAt(const char* text) {
        Bytes bytes;
        __builtin_memcpy(&bytes, text, sizeof(bytes));
        return bytes;
    }
    template <typename Bytes>
    [[gnu::always_inline]] static bool areSame(const char* left, const char* right) {
        return bytesAt<Bytes>(left) == bytesAt<Bytes>(right);
    }
    template <size_t size>
    [[gnu::always_inline]] bool isNamed(const char (&name)[size]) const {
        static_assert(size >= 4 && size <= 7, "shorter and longer names need another comparison");
        const char* own = typeName.data();
        if (typeName.size() != size - 1 || !areSame<unsigned>(own, name)) return false;
        if constexpr (size == 6) return own[4] == name[4];
        if constexpr (size == 7) return areSame<unsigned short>(own + 4, name + 4);
        return true;
    }

    bool is(const std::string& type) const { return typeName == type; }
    bool isNull() const { return isNamed("null"); }
    bool isInt() const { return isNamed("int"); }
    bool isFloat() const { return isNamed("double"); }
    bool isString() const { return isNamed("string"); }
    bool isBool() const { return isNamed("bool"); }
    bool isArray() const { return isNamed("array"); }
    bool isContainer() const { return isArray() || typeName == "container"; }
    bool isMap() const { return isNamed("map"); }
    bool isHandle() const { return isNamed("handle"); }
    bool isColor() const { return isNamed("color"); }
    bool isFunction() const { return typeName == "function"; }
    bool isObject() const {
        return !(isNull() || isInt() || isFloat() || isString() || isBool() || isContainer() ||
                 isMap() || isHandle() || isColor() || isFunction());
    }
    bool isNumber() const { return isInt() || isFloat(); }

    // Accessors give the payload as it stands; none of them converts.
    int asInt() const { return static_cast<int>(intVal); }
    double asFloat() const { return floatVal; }
    std::string asString() const { return stringVal; }
    bool asBool() const { return boolVal; }
    std::vector<Value> asArray() const { return arrayVal; }
    void* asHandle() const { return handleVal; }

    // Operands of the arithmetic: numbers convert to each other, all else counts as the fallback.
    double numberOr(double fallback) const {
        return isInt() ? static_cast<double>(intVal) : isFloat() ? floatVal : fallback;
    }
    long long wholeOr(long long fallback) const {
        return isInt() ? intVal : isFloat() ? static_cast<long long>(floatVal) : fallback;
    }

    explicit operator int() const { return asInt(); }
    explicit operator double() const { return asFloat(); }
    explicit operator bool() const { return asBool(); }
    explicit operator std::string() const { return asString(); }
    explicit operator long long() const { return wholeOr(0); }

)cpp"
    R"cpp(    // Reading "text" of a window handle turns this value into a string, in place.
    Value& operator[](const std::string& key) {
        if (isHandle() && handleVal && key == "text") {
            static thread_local std::string buffer;
            HWND window = static_cast<HWND>(handleVal);
            int length = GetWindowTextLengthA(window);
            buffer.resize(static_cast<size_t>(length));
            length = GetWindowTextA(window, &buffer[0], length + 1);
            stringVal.assign(buffer, 0, static_cast<size_t>(length));
            typeName = "string";
            return *this;
        }
        return entry(key);
    }
    [[gnu::noinline, gnu::flatten]] Value& entry(const std::string& key) {
        const auto place = mapVal.lower_bound(key);
        if (place != mapVal.end() && place->first == key) return place->second;
        return addEntry(key);
    }
    // Less for the compiler to do than by mapVal[key].
    [[gnu::noinline]] Value& addEntry(const std::string& key) {
        return mapVal.insert({key, Value()}).first->second;
    }
    const Value& operator[](const std::string& key) const { return mapVal.at(key); }
    Value& operator[](size_t index) { return arrayVal[index]; }
    const Value& operator[](size_t index) const { return arrayVal[index]; }

    [[gnu::always_inline]] Value& operator[](const char* key) {
        return key ? named(key, __builtin_strlen(key)) : named("", 0);
    }
    // The length of a literal is known where it is written. Most objects have few fields: to look
    // at each is less work than to make a text and to go down the tree with it.
    [[gnu::noinline, gnu::flatten]] Value& named(const char* key, size_t length) {
        if (mapVal.size() <= 8 && !isHandle()) {
            for (auto& entry : mapVal) {
                const std::string& name = entry.first;
                if (name.size() == length && !__builtin_memcmp(name.data(), key, length)) {
                    return entry.second;
                }
            }
        }
        return namedByText(key, length);
    }
    [[gnu::noinline]] Value& namedByText(const char* key, size_t length) {
        return (*this)[std::string(key, length)];
    }
    const Value& operator[](const char* key) const { return (*this)[std::string(key)]; }
    template <typename Number, typename = std::enable_if_t<std::is_arithmetic<Number>::value>>
    Value& operator[](Number index) {
        return arrayVal[static_cast<size_t>(index)];
    }
    template <typename Number, typename = std::enable_if_t<std::is_arithmetic<Number>::value>>
    const Value& operator[](Number index) const {
        return arrayVal[static_cast<size_t>(index)];
    }
    // A number is a position, anything else the name of an entry.
    Value& operator[](const Value& index) {
        if (index.isNumber()) return arrayVal.at(static_cast<size_t>(index.wholeOr(0)));
        if (index.isString()) return (*this)[index.stringVal];
        return (*this)[index.toString()];
    }
    const Value& operator[](const Value& index) const {
        if (index.isNumber()) return arrayVal.at(static_cast<size_t>(index.wholeOr(0)));
        if (index.isString()) return (*this)[index.stringVal];
        return (*this)[index.toString()];
    }

    // Calling a value does nothing; its arguments are evaluated.
    template <typename... Arguments>
    Value operator()(const Arguments&...) const {
        return Value();
    }

    bool has(const std::string& key) const { return mapVal.count(key) > 0; }

    std::string toString() const {
        std::string text;
        appendTo(text);
        return text;
    }
    void appendTo(std::string& text) const {
        if (isNull()) {
            text += "null";
        } else if (isInt()) {
            text += std::to_string(intVal);
        } else if (isFloat()) {
            text += std::to_string(floatVal);
        } else if (isString() || isColor()) {
            text += stringVal;
        } else if (isBool()) {
            text += boolVal ? "true" : "false";
        } else if (isContainer()) {
            appendElements(text);
        } else if (isMap() || isObject()) {
            appendEntries(text);
        } else if (isHandle()) {
            text += "[handle]";
        } else if (isFunction()) {
            text += "[function:";
            text += stringVal;
            text += "]";
        } else {
            text += "[";
            text += typeName;
            text += "]";
        }
    }
    void appendElements(std::string& text) const {
        text += "[";
        const char* separator = "";
        for (const Value& element : arrayVal) {
            text += separator;
            element.appendTo(text);
            separator = ", ";
        }
        text += "]";
    }
    void appendEntries(std::string& text) const {
        text += "{";
        const char* separator = "";
        for (const auto& entry : mapVal) {
            text += separator;
            text += entry.first;
            text += ": ";
            entry.second.appendTo(text);
            separator = ", ";
        }
        text += "}";
    }
    const char* c_str() const { return toString().c_str(); }

)cpp"
    R"cpp(    // The room to spare is for the rest of a chain.
    [[gnu::noinline]] Value joined(const Value& right) const {
        std::string text;
        text.reserve(stringVal.size() + right.stringVal.size() + 32);
        appendTo(text);
        right.appendTo(text);
        return Value(std::move(text));
    }

    template <typename Number>
    using IfInt = std::enable_if_t<std::is_same<Number, int>::value, bool>;
    template <typename Number, typename Result>
    using IfNumber = std::enable_if_t<std::is_same<Number, int>::value ||
                                          std::is_same<Number, double>::value,
                                      Result>;

    // The binary operators take either operand in any form that a value can be made of.
    [[gnu::flatten]] friend Value operator+(const Value& left, const Value& right) {
        if (left.isNumber() && right.isNumber()) return left.numberOr(0.0) + right.numberOr(0.0);
        return left.joined(right);
    }
    // A chain of + appends to the text of its first link.
    friend Value operator+(Value&& left, const Value& right) {
        if (!left.isString()) return static_cast<const Value&>(left) + right;
        right.appendTo(left.stringVal);
        return Value(std::move(left.stringVal));
    }
    // Only int: a literal 0 on the left would otherwise be taken as a null const char*.
    template <typename Number, typename = std::enable_if_t<std::is_same<Number, int>::value>>
    friend Value operator+(Number left, const Value& right) {
        return Value(left) + right;
    }
    [[gnu::flatten]] friend Value operator-(const Value& left, const Value& right) {
        if (left.isInt() && right.isInt()) return left.intVal - right.intVal;
        return left.numberOr(0.0) - right.numberOr(0.0);
    }
    friend Value operator*(const Value& left, const Value& right) {
        if (left.isInt() && right.isInt()) return left.intVal * right.intVal;
        return left.numberOr(0.0) * right.numberOr(0.0);
    }
    friend Value operator/(const Value& left, const Value& right) {
        double divisor = right.numberOr(1.0);
        return divisor == 0.0 ? Value(0.0) : Value(left.numberOr(0.0) / divisor);
    }
    friend Value operator%(const Value& left, const Value& right) {
        long long divisor = right.wholeOr(1);
        // Every number divides by -1 without remainder; the processor traps on the smallest one.
        if (divisor == 0 || divisor == -1) return Value(0);
        return left.wholeOr(0) % divisor;
    }
    // The same with a literal on the right, without a value made of it.
    template <typename Number>
    [[gnu::flatten]] friend IfNumber<Number, Value> operator-(const Value& left, Number right) {
        if constexpr (std::is_same<Number, int>::value) {
            if (left.isInt()) return left.intVal - right;
        }
        return left.numberOr(0.0) - right;
    }
    template <typename Number>
    friend IfNumber<Number, Value> operator-(Number left, const Value& right) {
        if constexpr (std::is_same<Number, int>::value) {
            if (right.isInt()) return left - right.intVal;
        }
        return left - right.numberOr(0.0);
    }
    template <typename Number>
    [[gnu::flatten]] friend IfNumber<Number, Value> operator*(const Value& left, Number right) {
        if constexpr (std::is_same<Number, int>::value) {
            if (left.isInt()) return left.intVal * right;
        }
        return left.numberOr(0.0) * right;
    }
    template <typename Number>
    [[gnu::flatten]] friend IfNumber<Number, Value> operator/(const Value& left, Number right) {
        return right == 0 ? Value(0.0) : Value(left.numberOr(0.0) / right);
    }
    template <typename Number>
    [[gnu::flatten]] friend IfNumber<Number, Value> operator%(const Value& left, Number right) {
        const long long divisor = static_cast<long long>(right);
        if (divisor == 0 || divisor == -1) return Value(0);
        return left.wholeOr(0) % divisor;
    }
    Value operator-() const {
        if (isInt()) return -intVal;
        if (isFloat()) return -floatVal;
        return Value(0);
    }

    // Equality is for plain values: null, lists, maps, handles, functions and objects are equal to
    // nothing, not even to themselves.
    friend bool operator==(const Value& left, const Value& right) {
        if (left.isInt()) return right.isInt() && left.intVal == right.intVal;
        if (left.isFloat()) return right.isFloat() && left.floatVal == right.floatVal;
        if (left.isString() || left.isColor()) {
            return left.typeName == right.typeName && left.stringVal == right.stringVal;
        }
        return left.isBool() && right.isBool() && left.boolVal == right.boolVal;
    }
    friend bool operator!=(const Value& left, const Value& right) { return !(left == right); }
    friend bool operator<(const Value& left, const Value& right) {
        if (left.isInt()) return right.isInt() && left.intVal < right.intVal;
        if (left.isFloat()) return right.isFloat() && left.floatVal < right.floatVal;
        return left.isString() && right.isString() && left.stringVal < right.stringVal;
    }
    template <typename Int>
    friend IfInt<Int> operator<(const Value& left, Int right) {
        return left.isInt() && left.intVal < right;
    }
    template <typename Int>
    friend IfInt<Int> operator>(const Value& left, Int right) {
        return left.isInt() && left.intVal > right;
    }
    template <typename Int>
    friend IfInt<Int> operator==(const Value& left, Int right) {
        return left.isInt() && left.intVal == right;
    }
    friend bool operator>(const Value& left, const Value& right) { return right < left; }
    friend bool operator<=(const Value& left, const Value& right) { return !(right < left); }
    friend bool operator>=(const Value& left, const Value& right) { return !(left < right); }
};

)cpp"
    R"cpp(// A number in front of a text (a char is joined to a std::string by the C++ library).
template <typename Number,
          typename = std::enable_if_t<std::is_arithmetic<Number>::value &&
                                      !std::is_same<Number, char>::value>>
inline Value operator+(Number left, const std::string& right) {
    return Value(left) + Value(right);
}
inline Value operator+(const char* left, const Value& right) {
    return Value(Value(left).toString() + right.toString());
}
inline Value operator+(std::string left, const Value& right) {
    right.appendTo(left);
    return Value(std::move(left));
}

)cpp";

static constexpr std::string_view acpText =
    R"cpp(// UTF-8 -> ANSI (ACP)
inline std::string utf8_to_acp(const std::string& u8) {
    if (u8.empty()) return std::string();
    int bytes = static_cast<int>(u8.size());
    int units = MultiByteToWideChar(CP_UTF8, 0, u8.data(), bytes, NULL, 0);
    std::wstring wide(static_cast<size_t>(units), L'\0');
    MultiByteToWideChar(CP_UTF8, 0, u8.data(), bytes, &wide[0], units);
    bytes = WideCharToMultiByte(CP_ACP, 0, wide.data(), units, NULL, 0, NULL, NULL);
    std::string ansi(static_cast<size_t>(bytes), '\0');
    WideCharToMultiByte(CP_ACP, 0, wide.data(), units, &ansi[0], bytes, NULL, NULL);
    return ansi;
}
)cpp";

static constexpr std::string_view wideText =
    R"cpp(// UTF-8 -> wide
inline std::wstring utf8_to_wide(const std::string& u8) {
    if (u8.empty()) return std::wstring();
    int bytes = static_cast<int>(u8.size());
    int units = MultiByteToWideChar(CP_UTF8, 0, u8.data(), bytes, NULL, 0);
    std::wstring wide(static_cast<size_t>(units), L'\0');
    MultiByteToWideChar(CP_UTF8, 0, u8.data(), bytes, &wide[0], units);
    return wide;
}
)cpp";

std::string_view runtimeValueText() { return valueText; }

std::string_view utf8ToAcpText() { return acpText; }

std::string_view utf8ToWideText() { return wideText; }

} // namespace Orvane
