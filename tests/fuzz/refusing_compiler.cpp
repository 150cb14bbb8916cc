// The compiler for AFL++: a refused source ends it with status 2 and not abnormally, so that what
// does end abnormally is a finding. The exceptions are those that a source may cause.
#include "driver/driver.h"
#include "driver/platform.h"

#include <stdexcept>
#include <string_view>

namespace {

constexpr int refused = 2;

int run(const std::vector<std::string>& arguments) {
    Orvane::StandardConsole console;
    Orvane::SystemPlatform platform;
    Orvane::Driver driver(console, platform);
    try {
        return driver.run(arguments);
    } catch (const std::out_of_range&) { // a number that does not fit
        return refused;
    } catch (const std::runtime_error& error) {
        if (std::string_view(error.what()).starts_with("Expected ")) return refused;
        throw;
    }
}

} // namespace

int main(int count, char** arguments) {
    return count > 1 ? run({arguments + 1, arguments + count}) : run({});
}
