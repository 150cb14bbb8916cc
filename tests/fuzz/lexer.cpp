// Any bytes are lexed to the end, or end in the exception of a number that does not fit.
#include "frontend/lexer.h"

#include <cstdint>
#include <cstdlib>
#include <stdexcept>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    Orvane::RecordingConsole console;
    try {
        Orvane::Lexer lexer(std::string(reinterpret_cast<const char*>(data), size), console);
        if (lexer.tokenize().back().type != Orvane::TokenType::EndOfInput) std::abort();
    } catch (const std::out_of_range&) {
    }
    return 0;
}
