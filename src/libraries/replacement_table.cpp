#include "libraries/replacement_table.h"

#include <utility>

namespace Orvane {

void ReplacementTable::add(FunctionEntry entry) {
    std::vector<FunctionEntry>& overloads = functions[entry.name];
    overloads.push_back(std::move(entry));
    ++count;
}

const FunctionEntry* ReplacementTable::get(std::string_view name) const {
    const auto found = functions.find(name);
    return found == functions.end() ? nullptr : &found->second.front();
}

std::vector<const FunctionEntry*> ReplacementTable::getAll(std::string_view name) const {
    std::vector<const FunctionEntry*> all;
    const auto found = functions.find(name);
    if (found == functions.end()) return all;
    all.reserve(found->second.size());
    for (const FunctionEntry& entry : found->second) all.push_back(&entry);
    return all;
}

bool ReplacementTable::exists(std::string_view name) const { return functions.contains(name); }

// "  " name "(" parameter names separated by ", " ") -> " return type
static std::string formatEntry(const FunctionEntry& entry) {
    std::string line = "  " + entry.name + "(";
    std::string_view separator;
    for (const std::string& parameter : entry.paramNames) {
        line.append(separator).append(parameter);
        separator = ", ";
    }
    return line + ") -> " + entry.returnType + "\n";
}

void ReplacementTable::print(Console& console) const {
    console.print("ReplacementTable (%zu functions):\n", size());
    for (const auto& [name, overloads] : functions)
        for (const FunctionEntry& entry : overloads) console.write(formatEntry(entry));
}

} // namespace Orvane
