#include "driver/driver.h"

// A syntax error must end the process abnormally, so there is no handler here.
int main(int count, char** arguments) {
    Orvane::StandardConsole console;
    Orvane::SystemPlatform platform;
    Orvane::Driver driver(console, platform);
    // A process may be started without even its own name.
    return driver.run(count > 1 ? std::vector<std::string>(arguments + 1, arguments + count)
                                : std::vector<std::string>());
}
