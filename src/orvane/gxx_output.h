// What g++ printed, as a list of its errors with the places they are about.
//
//     for (const GxxError& error : readGxxOutput(output)) { error.file; error.line; ... }
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace Orvane {

struct GxxPlace {
    std::string file; // as g++ wrote it; empty when there is no place
    std::size_t line = 0;
    std::size_t column = 0; // from 1, in columns of a terminal with tabs of eight; 0 for none
};

struct GxxError {
    GxxPlace place;
    // Where the code that asked for it stands, when the error is inside a template; innermost
    // first, notes behind the error included.
    std::vector<GxxPlace> users;
    std::string text; // without "error: ", quotes as '
};

// Errors only; warnings are left out. Messages of the linker have no place.
std::vector<GxxError> readGxxOutput(std::string_view output);

// The message in the words of the language: Value is a value, std::string a string, long long an
// int; the commonest sentences as a user would say them.
std::string inPlainWords(std::string_view message);

} // namespace Orvane
