// The parts of the test of the runtime type; one translation unit each, as a generated header must
// stand being included more than once in a program.
#pragma once

void testBasics();    // basics.cpp: making, asking, reading, converting, text, indexing
void testCopies();    // copies.cpp: copying, moving and assigning
void testEntriesAsMap();  // entries.cpp: all that a map does, against one of the library
void testListsAsVector(); // lists.cpp: all that a vector does, against one of the library
void testOperators(); // operators.cpp: every operator with every pair of kinds
void testOverloads(); // overloads.cpp: every operator with every pair of C++ operand types
void testWindows();   // windows.cpp: window handles and text conversion
