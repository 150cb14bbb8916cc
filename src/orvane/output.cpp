#include "orvane/output.h"

#include "orvane/system.h"

namespace Orvane {

namespace {

std::string_view codeOf(Paint paint) {
    switch (paint) {
    case Paint::place:
    case Paint::heading:
        return "1";
    case Paint::error:
        return "1;31";
    case Paint::warning:
        return "1;33";
    case Paint::note:
        return "1;36";
    case Paint::good:
        return "1;32";
    case Paint::dim:
        break;
    }
    return "2";
}

} // namespace

Output::Output(std::FILE* stream_) : stream(stream_) {
    terminal = isUsableTerminal(stream) && environmentVariable("TERM") != "dumb";
    coloured = terminal && environmentVariable("NO_COLOR").empty();
    if (terminal) width = terminalColumns(stream);
}

Output::Output(std::string& text, bool colours) : recorded(&text), coloured(colours) {}

void Output::write(std::string_view text) {
    if (recorded) {
        *recorded += text;
        return;
    }
    std::fwrite(text.data(), 1, text.size(), stream);
    std::fflush(stream);
}

std::string Output::paint(Paint paint, std::string_view text) const {
    if (!coloured) return std::string(text);
    std::string painted = "\x1b[";
    painted.append(codeOf(paint)).append("m").append(text).append("\x1b[0m");
    return painted;
}

} // namespace Orvane
