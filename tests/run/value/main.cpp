#include "parts.h"

#include "import.hpp"

#include "checks.h"

int main() {
    testBasics();
    testCopies();
    testEntriesAsMap();
    testListsAsVector();
    testOperators();
    testOverloads();
    testWindows();
    return finishChecks();
}
