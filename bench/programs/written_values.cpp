// What the values of a loop cost that are only written: written_values [NAME TIMES]... prints for
// each the name, the processor time in milliseconds and the result. The loops make, copy and move
// as many values as those of loops.vorla, in the same order and in the same memory, but the values
// here are numbers without a test: nothing asks for their type, and nothing has to be destroyed.
// What this takes, every type takes that has the members of a value.
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <string>
#include <vector>

struct Text {
    char* letters;
    size_t size;
    char own[16];
};

// The members of a value in their order, as the C++ library lays texts out and an installation
// lists and entries.
struct Written {
    Text typeName;
    long long intVal;
    double floatVal = 0.0;
    Text stringVal;
    bool boolVal = false;
    void *arrayVal = nullptr, *mapVal = nullptr;
    void* handleVal = nullptr;

    explicit Written(long long number) : intVal(number) {
        write(typeName, 3);
        std::memcpy(typeName.own, "int", 4);
        write(stringVal, 0);
        stringVal.own[0] = 0;
    }
    Written(const Written& other) noexcept
        : intVal(other.intVal), floatVal(other.floatVal), boolVal(other.boolVal),
          handleVal(other.handleVal) {
        askForLater(this);
        write(typeName, other.typeName.size);
        std::memcpy(typeName.own, other.typeName.own, 8);
        write(stringVal, 0);
        stringVal.own[0] = 0;
    }
    void operator=(const Written& other) {
        intVal = other.intVal;
        floatVal = other.floatVal;
        boolVal = other.boolVal;
        handleVal = other.handleVal;
    }
    // As values do it.
    static void askForLater(const Written* place) {
        const size_t later = reinterpret_cast<size_t>(place) + 2 * sizeof(Written);
        __builtin_prefetch(reinterpret_cast<const void*>(later), 1);
        __builtin_prefetch(reinterpret_cast<const void*>(later + 64), 1);
    }
    static void write(Text& text, size_t size) {
        text.letters = text.own;
        text.size = size;
    }
};
static_assert(sizeof(Written) == 112, "a value of the type that programs of an installation have");

// The compiler may leave out what it does not see read: this reads it.
static void read(const Written& value) { asm volatile("" : : "r"(&value) : "memory"); }

// The operators write their results, each in a function of its own.
[[gnu::noinline]] static Written whole(long long number) { return Written(number); }
[[gnu::noinline]] static Written real(double number) {
    Written value(0);
    value.floatVal = number;
    return value;
}

using List = std::vector<Written>;
[[gnu::noinline]] static List copied(const List& list) { return list; }

static double integers(long long n) {
    Written h(1), i(n);
    while (i.intVal > 0) {
        const Written left = whole(h.intVal * 31), rest = whole(i.intVal % 7);
        const Written right = whole(rest.intVal - 7);
        const Written difference = whole(left.intVal - right.intVal);
        h = whole(difference.intVal % 1000003);
        i = whole(i.intVal - 1);
        read(h);
    }
    return static_cast<double>(h.intVal);
}

static double floats(long long n) {
    Written x(0), s(0), i(n);
    x.floatVal = 0.5;
    while (i.intVal > 0) {
        const Written left = real(x.floatVal * 3.75), one(1);
        read(one);
        const Written right = real(static_cast<double>(one.intVal) - x.floatVal);
        x = real(left.floatVal * right.floatVal);
        const Written half = real(x.floatVal / 2);
        s = real(s.floatVal + half.floatVal);
        i = whole(i.intVal - 1);
        read(s);
    }
    return s.floatVal;
}

static double lists(long long n) {
    double s = 0;
    for (; n > 0; --n) {
        List xs;
        Written sum = real(s), k(1000);
        while (k.intVal > 0) {
            Written pushed(k);
            read(pushed);
            xs.push_back(pushed);
            k = whole(k.intVal - 1);
        }
        const List all = copied(xs);
        for (const Written& element : all) {
            Written e(element);
            read(e);
            Written x(e);
            read(x);
            sum = real(sum.floatVal + static_cast<double>(x.intVal));
        }
        while (k.intVal < 1000) {
            sum =
                real(sum.floatVal - static_cast<double>(xs[static_cast<size_t>(k.intVal)].intVal));
            k = whole(k.intVal + 1);
        }
        s = sum.floatVal;
    }
    return s;
}

template <class Append>
static List comprehension(const List& numbers, Append append) {
    List result;
    const List all = copied(numbers);
    for (const Written& element : all) {
        Written x(element);
        read(x);
        append(result, x);
    }
    return copied(result);
}

static void appendSquareOfThird(List& list, const Written& x) {
    const Written rest = whole(x.intVal % 3);
    read(rest);
    if (rest.intVal == 0) list.push_back(whole(x.intVal * x.intVal));
}

static void appendHalf(List& list, const Written& x) {
    list.push_back(real(static_cast<double>(x.intVal) / 2));
}

static double comprehensions(long long n) {
    List numbers;
    for (int i = 1; i <= 1000; ++i) numbers.push_back(whole(i));
    double sum = 0;
    for (; n > 0; --n) {
        const List squares = comprehension(numbers, appendSquareOfThird);
        sum += comprehension(squares, appendHalf)[100].floatVal;
    }
    return sum;
}

static double run(const std::string& name, long long times) {
    if (name == "integers") return integers(times);
    if (name == "floats") return floats(times);
    if (name == "lists") return lists(times);
    return comprehensions(times);
}

int main(int count, char** words) {
    for (int at = 1; at + 1 < count; at += 2) {
        const std::clock_t start = std::clock();
        const double result = run(words[at], std::atoll(words[at + 1]));
        std::printf("%s %.1f %.6f\n", words[at],
                    static_cast<double>(std::clock() - start) * 1000 / CLOCKS_PER_SEC, result);
    }
}
