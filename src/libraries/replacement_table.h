// The functions that library files define, by name.
//
// The loader fills one table per build; the code generator only reads it. Several entries under one
// name are overloads in the order in which they were loaded; nothing is removed or replaced, and
// the first one added is the one that get() gives.
//
//     table.add({.name = "clamp", .returnType = "int"});
//     table.exists("clamp");   // true
#pragma once

#include "frontend/console.h"

#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace Orvane {

// One library function. The type word "value" stands for the runtime Value type.
struct FunctionEntry {
    std::string name{};
    std::string returnType{};
    std::vector<std::string> paramNames{};
    std::vector<std::string> paramTypes{}; // parallel to paramNames
    std::string body{};                    // C++ text as written in the library file
    bool flag = false; // free for a loader's use; the loader here leaves it false
    std::vector<std::string> extraList{}; // likewise; left empty
};

class ReplacementTable {
public:
    using Entries = std::map<std::string, std::vector<FunctionEntry>, std::less<>>;

    void add(FunctionEntry entry);

    const FunctionEntry* get(std::string_view name) const; // null when the name is unknown
    std::vector<const FunctionEntry*> getAll(std::string_view name) const;
    bool exists(std::string_view name) const;
    std::size_t size() const { return count; } // overloads counted one by one

    // All names with their entries, names in byte order.
    const Entries& entries() const { return functions; }

    // Prints the heading with size() and one line per entry: name(parameters) -> type.
    void print(Console& console) const;

private:
    Entries functions;
    std::size_t count = 0;
};

} // namespace Orvane
