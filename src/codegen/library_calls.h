// Which library functions a program needs.
//
// A library body is C++ text that is not parsed: what it calls is found by looking for the names of
// other library functions in it.
//
//     NameSet needed = closeOverLibraryCalls(table, {"greet"});
//     // "greet" and every library function that its body reaches
#pragma once

#include "codegen/code_generator_core.h"
#include "libraries/replacement_table.h"

#include <string_view>

namespace Orvane {

// The given names and those of all library functions that theirs call, directly or through others.
NameSet closeOverLibraryCalls(const ReplacementTable& table, NameSet names);

// Adds the names of the table that the body calls. A call is a whole word with a "(" behind it;
// blanks may stand between, so that the "(" is at most 63 characters behind the word's end.
void collectLibraryCalls(std::string_view body, const ReplacementTable& table, NameSet& names);

// The text in front of the parameters' closing bracket and the bracket itself, as in
// "Value greet(std::string name)": the type word "value" is written "Value".
std::string formatLibrarySignature(const FunctionEntry& entry);

} // namespace Orvane
