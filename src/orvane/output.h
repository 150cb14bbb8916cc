// Where the command writes: standard output or standard error, with colours on a terminal only.
//
//     Output out(stdout);
//     out.write(out.paint(Paint::error, "error") + ": no function is called 'prnt'\n");
#pragma once

#include <cstdio>
#include <string>
#include <string_view>

namespace Orvane {

enum class Paint { place, error, warning, note, dim, heading, good };

class Output {
public:
    // Colours when the stream is a terminal that can show them, NO_COLOR is not set and TERM is not
    // "dumb".
    explicit Output(std::FILE* stream);
    // For tests: everything goes into the text.
    Output(std::string& text, bool colours);
    Output(const Output&) = delete;
    Output& operator=(const Output&) = delete;

    // Whole texts; visible to a reader of the stream when write() returns.
    void write(std::string_view text);

    std::string paint(Paint paint, std::string_view text) const;

    // Whether a line may be rewritten in place.
    bool isTerminal() const { return terminal; }
    std::size_t columns() const { return width; }

private:
    std::FILE* stream = nullptr;
    std::string* recorded = nullptr;
    bool terminal = false;
    bool coloured = false;
    std::size_t width = 0; // of the terminal; 0 for everything else
};

} // namespace Orvane
