#include "parts.h"

#include "checks.h"

int main() {
    testBasics();
    testOperators();
    testOverloads();
    testWindows();
    return finishChecks();
}
