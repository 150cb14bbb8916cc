#include "frontend/console.h"

#include <cstdarg>
#include <cstdio>

namespace Orvane {

void Console::print(const char* format, ...) {
    std::va_list arguments;
    va_start(arguments, format);
    std::va_list measuring;
    va_copy(measuring, arguments);
    const int length = std::vsnprintf(nullptr, 0, format, measuring);
    va_end(measuring);
    std::string text(length > 0 ? static_cast<std::size_t>(length) : 0, '\0');
    std::vsnprintf(text.data(), text.size() + 1, format, arguments);
    va_end(arguments);
    write(text);
}

void StandardConsole::write(std::string_view text) {
    std::fwrite(text.data(), 1, text.size(), stdout);
    std::fflush(stdout);
}

} // namespace Orvane
