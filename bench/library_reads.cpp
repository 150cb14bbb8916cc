// Processor times of library functions that read from something large; see library_reads.sh.
#include "import.hpp"

#include <cstdio>
#include <ctime>

// Nanoseconds of one call, from the fastest round.
template <typename Call>
static double timeOf(int calls, Call call) {
    std::clock_t best = 0;
    for (int round = 0; round < 5; ++round) {
        const std::clock_t start = std::clock();
        for (int turn = 0; turn < calls; ++turn) call(turn);
        const std::clock_t spent = std::clock() - start;
        if (round == 0 || spent < best) best = spent;
    }
    return static_cast<double>(best) * 1e9 / CLOCKS_PER_SEC / calls;
}

template <typename Call>
static void show(const char* what, int calls, Call call) {
    std::printf("%-40s %12.0f\n", what, timeOf(calls, call));
}

int main() {
    const int slow = 300;
    Value list = std::vector<Value>(10000, Value(5));
    Value text = std::string(1000000, 'x');
    Value dict = std::map<std::string, Value>();
    Value set = Value::makeObject("set");
    for (int i = 0; i < 1000; ++i) {
        dict.mapVal[std::to_string(i)] = i;
        set.mapVal["n" + std::to_string(i)] = i;
    }
    long long found = 0;
    show("getAt, list of 10,000", slow, [&](int i) { found += getAt(list, i).intVal; });
    show("includes, the first of 10,000", slow, [&](int) { found += includes(list, 5); });
    show("length, text of 1 MB", slow, [&](int) { found += length(text); });
    show("contains, at the start of 1 MB", slow, [&](int) { found += contains(text, "xx"); });
    show("contains, not in 1 MB", slow, [&](int) { found += contains(text, "y"); });
    show("startsWith, text of 1 MB", slow, [&](int) { found += startsWith(text, "xx"); });
    show("dictGet, dict of 1,000", slow, [&](int i) { found += dictGet(dict, i).intVal; });
    show("setHas, set of 1,000", slow, [&](int i) { found += setHas(set, i); });
    return found > 0 ? 0 : 1;
}
