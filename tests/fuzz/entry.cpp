// The entry point of one target's libFuzzer program; ORVANE_FUZZ_TARGET names its function. A
// Violation leaves it uncaught, which libFuzzer reports like a crash.
#include "fuzz/targets.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    Orvane::Fuzzing::ORVANE_FUZZ_TARGET({data, size});
    return 0;
}
