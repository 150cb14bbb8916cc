// What a value costs that only has its members: copied, moved and destroyed as C++ does it by
// itself, with operators that test no more than the loops over numbers, lists, maps and objects
// need to come to their results. programs.py puts this in the place of the type of a program and
// compiles it with -O3: what it takes, the text of the program takes, which makes a value of each
// result and copies the list or the object of each for, comprehension and call of a method.
struct Value {
    std::string typeName = "null";
    long long intVal = 0;
    double floatVal = 0.0;
    std::string stringVal;
    bool boolVal = false;
    std::vector<Value> arrayVal;
    std::map<std::string, Value> mapVal;
    void* handleVal = nullptr;

    Value() {}
    Value(int number) : typeName("int"), intVal(number) {}
    Value(long long number) : typeName("int"), intVal(number) {}
    Value(double number) : typeName("double"), floatVal(number) {}
    Value(const char* text) : typeName("string"), stringVal(text) {}
    Value(const std::string& text) : typeName("string"), stringVal(text) {}
    Value(bool truth) : typeName("bool"), boolVal(truth) {}
    Value(const std::vector<Value>& elements) : typeName("array"), arrayVal(elements) {}
    static Value makeObject(const std::string& type) {
        Value made;
        made.typeName = type;
        return made;
    }

    bool isInt() const { return typeName[0] == 'i'; }
    bool isNumber() const { return isInt() || typeName[0] == 'd'; }
    bool isContainer() const { return typeName[0] == 'a'; }
    int asInt() const { return static_cast<int>(intVal); }
    double numberOr(double) const { return isInt() ? static_cast<double>(intVal) : floatVal; }
    std::string toString() const { return stringVal; }
    void appendTo(std::string& text) const { text += stringVal; }
    explicit operator bool() const { return boolVal; }

    Value& operator[](const char* key) { return mapVal[key]; }
    Value& operator[](int index) { return arrayVal[static_cast<size_t>(index)]; }
    Value& operator[](const Value& index) {
        if (!index.isNumber()) return mapVal[index.stringVal];
        return arrayVal[static_cast<size_t>(index.numberOr(0))];
    }

    friend Value operator+(const Value& left, const Value& right) {
        return left.numberOr(0) + right.numberOr(0);
    }
    friend Value operator-(const Value& left, const Value& right) {
        if (left.isInt() && right.isInt()) return left.intVal - right.intVal;
        return left.numberOr(0) - right.numberOr(0);
    }
    friend Value operator*(const Value& left, const Value& right) {
        if (left.isInt() && right.isInt()) return left.intVal * right.intVal;
        return left.numberOr(0) * right.numberOr(0);
    }
    friend Value operator/(const Value& left, const Value& right) {
        return left.numberOr(0) / right.numberOr(1);
    }
    friend Value operator%(const Value& left, const Value& right) {
        return static_cast<long long>(left.numberOr(0)) % static_cast<long long>(right.numberOr(1));
    }
    // Literals on one side are not made into values.
    friend Value operator-(const Value& left, int right) {
        return left.isInt() ? Value(left.intVal - right) : Value(left.floatVal - right);
    }
    friend Value operator-(int left, const Value& right) {
        return right.isInt() ? Value(left - right.intVal) : Value(left - right.floatVal);
    }
    friend Value operator*(const Value& left, int right) {
        return left.isInt() ? Value(left.intVal * right) : Value(left.floatVal * right);
    }
    friend Value operator*(const Value& left, double right) { return left.numberOr(0) * right; }
    friend Value operator/(const Value& left, int right) { return left.numberOr(0) / right; }
    friend Value operator%(const Value& left, int right) { return left.intVal % right; }
    friend bool operator==(const Value& left, int right) { return left.intVal == right; }
    friend bool operator<(const Value& left, int right) { return left.intVal < right; }
    friend bool operator>(const Value& left, int right) { return left.intVal > right; }

    friend bool operator==(const Value& left, const Value& right) {
        return left.intVal == right.intVal;
    }
    friend bool operator<(const Value& left, const Value& right) {
        return left.numberOr(0) < right.numberOr(0);
    }
    friend bool operator>(const Value& left, const Value& right) { return right < left; }
};
