#include "orvane/progress.h"

#include "orvane/text_layout.h"

namespace Orvane {

// A step that is too long for the terminal would wrap and could not be taken away again.
void Progress::show(std::string_view step) {
    const std::string text = printable(step);
    if (!out.isTerminal()) return out.write(text + "\n");
    clear();
    const std::size_t columns = out.columns() > 41 ? out.columns() - 1 : 40;
    out.write(out.paint(Paint::dim, layOut(text, {}, columns).text));
    isShown = true;
}

void Progress::finish(std::string_view line) {
    clear();
    out.write(printable(line) + "\n");
}

void Progress::clear() {
    if (isShown) out.write("\r\x1b[K");
    isShown = false;
}

} // namespace Orvane
