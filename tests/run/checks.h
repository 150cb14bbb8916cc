// Plain assertions for programs that run under Wine, where no test framework is at hand.
//
// A program includes this beside import.hpp, calls its test functions and returns finishChecks():
// 0 when all checks held, 1 when one did not or when there was none. Failures go to standard
// output.
//
//     CHECK(Value(1).isInt());
//     CHECK_EQUAL(Value(true).toString(), "true");
#pragma once

#include <cstdio>
#include <sstream>
#include <string>

struct CheckCounts {
    int passed = 0;
    int failed = 0;
};

inline CheckCounts& checkCounts() {
    static CheckCounts counts;
    return counts;
}

inline void countCheck(bool holds, const std::string& what, const char* file, int line) {
    if (holds) {
        ++checkCounts().passed;
        return;
    }
    ++checkCounts().failed;
    std::printf("%s:%d: %s\n", file, line, what.c_str());
}

template <typename Actual, typename Expected>
void checkEqual(const Actual& actual, const Expected& expected, const char* text, const char* file,
                int line) {
    std::ostringstream what;
    what << text << " gives \"" << actual << "\", expected \"" << expected << "\"";
    countCheck(actual == expected, what.str(), file, line);
}

inline int finishChecks() {
    const CheckCounts& counts = checkCounts();
    std::printf("%d checks passed, %d failed\n", counts.passed, counts.failed);
    std::fflush(stdout);
    return counts.failed == 0 && counts.passed > 0 ? 0 : 1;
}

#define CHECK(condition) countCheck((condition), #condition, __FILE__, __LINE__)
#define CHECK_EQUAL(actual, expected) checkEqual((actual), (expected), #actual, __FILE__, __LINE__)
#define CHECK_THROWS(expression, Exception)                                                        \
    do {                                                                                           \
        bool thrown = false;                                                                       \
        try {                                                                                      \
            static_cast<void>(expression);                                                         \
        } catch (const Exception&) {                                                               \
            thrown = true;                                                                         \
        }                                                                                          \
        countCheck(thrown, #expression " throws " #Exception, __FILE__, __LINE__);                 \
    } while (false)
