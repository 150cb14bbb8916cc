#include "parts.h"

#include "checks.h"

int main() {
    testBasics();
    testCopies();
    testOperators();
    testOverloads();
    testWindows();
    return finishChecks();
}
