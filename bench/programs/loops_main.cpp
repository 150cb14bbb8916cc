// Runs the functions of loops.vorla in place of its window: loops [NAME TIMES]... prints for each
// the name, the processor time in milliseconds and the result. Compiled with the command that
// orvanec prints, and natively.
#include "import.hpp"

#include <cstdio>
#include <cstdlib>
#include <ctime>

static double processorMilliseconds() {
#ifdef _WIN32
    FILETIME created, ended, kernel, user;
    GetProcessTimes(GetCurrentProcess(), &created, &ended, &kernel, &user);
    return (user.dwLowDateTime + user.dwHighDateTime * 4294967296.0 + kernel.dwLowDateTime +
            kernel.dwHighDateTime * 4294967296.0) /
           10000;
#else
    return static_cast<double>(std::clock()) * 1000 / CLOCKS_PER_SEC;
#endif
}

static Value run(const std::string& name, int times) {
    if (name == "integers") return integers(times);
    if (name == "floats") return floats(times);
    if (name == "strings") return strings(times);
    if (name == "lists") return lists(times);
    if (name == "maps") return maps(times);
    if (name == "methods") return methods(times);
    if (name == "comprehensions") return comprehensions(times);
    if (name == "typed_integers") return typed_integers(times);
    return Value();
}

int main(int count, char** words) {
    for (int at = 1; at + 1 < count; at += 2) {
        const double start = processorMilliseconds();
        const Value result = run(words[at], std::atoi(words[at + 1]));
        std::printf("%s %.1f %.6f\n", words[at], processorMilliseconds() - start,
                    result.numberOr(-1.0));
        std::fflush(stdout);
    }
}
