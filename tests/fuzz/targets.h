// What is fuzzed: each target takes any bytes and checks what must hold for them.
//
// A target returns when all is well and throws a Violation when a promise is broken; crashes, hangs
// and sanitizer findings show themselves. Each is a libFuzzer program of its own (entry.cpp), and
// the tests replay the inputs that once found something (regressions/TARGET/) through all of them.
//
//     Fuzzing::fuzzLexer(bytes);
#pragma once

#include <cstdint>
#include <span>
#include <stdexcept>
#include <string>
#include <string_view>

namespace Orvane::Fuzzing {

using Bytes = std::span<const std::uint8_t>;

class Violation : public std::logic_error {
public:
    using std::logic_error::logic_error;
};

inline void require(bool holds, const char* what) {
    if (!holds) throw Violation(what);
}

inline std::string textOf(Bytes bytes) {
    return std::string(reinterpret_cast<const char*>(bytes.data()), bytes.size());
}

void fuzzLexer(Bytes input);       // a source
void fuzzParser(Bytes input);      // a source
void fuzzRecovery(Bytes input);    // a source
void fuzzScanner(Bytes input);     // a library file
void fuzzLoader(Bytes input);      // library files, each behind a line "@@@ X"
void fuzzTexts(Bytes input);       // the text of a colour or font
void fuzzTranslation(Bytes input); // a source
void fuzzStructured(Bytes input);  // the choices of a program generator

struct Target {
    std::string_view name;
    void (*run)(Bytes);
};

inline constexpr Target targets[] = {
    {"lexer", fuzzLexer},
    {"parser", fuzzParser},
    {"recovery", fuzzRecovery},
    {"scanner", fuzzScanner},
    {"loader", fuzzLoader},
    {"texts", fuzzTexts},
    {"translation", fuzzTranslation},
    {"structured", fuzzStructured},
};

} // namespace Orvane::Fuzzing
