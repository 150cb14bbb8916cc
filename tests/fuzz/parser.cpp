// Any bytes give a tree or end in an exception whose text begins like every error message.
#include "frontend/parser.h"
#include "frontend/lexer.h"

#include <cstdint>
#include <cstdlib>
#include <stdexcept>
#include <string_view>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace Orvane;
    RecordingConsole console;
    try {
        Lexer lexer(std::string(reinterpret_cast<const char*>(data), size), console);
        PositionTable positions;
        Parser parser(lexer.tokenize(), console, &positions);
        if (!parser.parse()) std::abort();
    } catch (const std::out_of_range&) {
    } catch (const std::runtime_error& error) {
        if (!std::string_view(error.what()).starts_with("Expected ")) std::abort();
    }
    return 0;
}
