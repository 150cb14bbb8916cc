// Any bytes are scanned as a library file to the end.
#include "libraries/orlib_scanner.h"

#include <cstdint>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    Orvane::OrlibScanner scanner(std::string(reinterpret_cast<const char*>(data), size));
    while (scanner.next()) {
    }
    return 0;
}
