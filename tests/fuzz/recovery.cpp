// Any bytes give a tree without an exception, and at most the failures that a Recovery holds; the
// first of them exactly when the compiler refuses the source.
#include "frontend/lexer.h"
#include "frontend/parser.h"

#include <cstdint>
#include <cstdlib>
#include <stdexcept>

namespace {

using namespace Orvane;

bool compilerAccepts(const std::vector<Token>& tokens, Console& console) {
    try {
        return Parser(tokens, console).parse() != nullptr;
    } catch (const std::runtime_error&) {
        return false;
    }
}

void check(const std::vector<Token>& tokens) {
    RecordingConsole console;
    const bool accepted = compilerAccepts(tokens, console);
    console.clear();
    Recovery observed(1);
    if (!Parser(tokens, console, nullptr, Parser::Texts::viewed, &observed).parse()) std::abort();
    if (observed.failures().empty() != accepted) std::abort();
    Recovery recovery;
    PositionTable positions;
    if (!Parser(tokens, console, &positions, Parser::Texts::viewed, &recovery).parse())
        std::abort();
    if (recovery.failures().size() > Recovery::mostFailures) std::abort();
    for (const SyntaxFailure& failure : recovery.failures())
        if (failure.found >= tokens.size() || failure.construct > failure.found) std::abort();
    for (const SkippedTokens& run : recovery.skipped())
        if (run.first > run.last || run.last >= tokens.size()) std::abort();
    if (!console.text().empty()) std::abort();
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    RecordingConsole console;
    try {
        Lexer lexer(std::string(reinterpret_cast<const char*>(data), size), console);
        check(lexer.tokenize());
    } catch (const std::out_of_range&) {
    }
    return 0;
}
