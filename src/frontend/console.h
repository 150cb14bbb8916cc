// Where messages go.
//
// Every stage that has something to say gets a Console& from its caller and prints through it; no
// stage owns a stream and nothing is global. The driver passes one that writes to standard output,
// tests pass a RecordingConsole.
//
//     console.print("  Tokens: %zu\n", tokens.size());
#pragma once

#include <string>
#include <string_view>

// How the compiler is told to check formats. "printf" means the C library's own conversions, which
// are not the C99 ones everywhere; "gnu_printf" is unknown to clang.
#ifdef __MINGW32__
#define ORVANE_C99_FORMAT gnu_printf
#else
#define ORVANE_C99_FORMAT printf
#endif

namespace Orvane {

class Console {
public:
    Console() = default;
    Console(const Console&) = delete;
    Console& operator=(const Console&) = delete;
    virtual ~Console() = default;

    // Formats as printf does (the C99 conversions, %zu included, on every system) and writes.
    [[gnu::format(ORVANE_C99_FORMAT, 2, 3)]] void print(const char* format, ...);

    // Writes the bytes as they are. What has been written is visible to a reader of the stream
    // before write() returns: a build that ends abnormally has still said everything it said.
    virtual void write(std::string_view text) = 0;
};

// Writes to the process's standard output.
class StandardConsole final : public Console {
public:
    void write(std::string_view text) override;
};

// Keeps what was written; for tests and for programs that show messages elsewhere.
class RecordingConsole final : public Console {
public:
    void write(std::string_view text) override { recorded += text; }
    const std::string& text() const { return recorded; }
    void clear() { recorded.clear(); }

private:
    std::string recorded;
};

} // namespace Orvane
