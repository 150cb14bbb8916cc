// What every generated program includes, in its order. tools/bin/g++.exe makes a precompiled header
// of it, includes.h.gch, and brings that in ahead of main.cpp; the lines there then cost nothing.
// Only what all programs include may stand here: a program must not compile because of this file.
#include <windows.h>
#include <string>
#include <vector>
#include <map>
#include <sstream>
#include <memory>
#include <commctrl.h>

// Lists and maps of values whose functions are compiled in runtime.o.
#ifdef ORVANE_VALUE_COMPILED
#include "entries.h"
#include "lists.h"
#endif
