// The console of the launcher and the programs that it starts.
#pragma once

#include <string>

namespace Orvane {

// orvanec starts the launcher with a console of its own that nobody sees. Leaves that and joins the
// console of orvanec, so that messages appear where the user works; standard handles that lead to a
// file or a pipe stay as they are.
void joinConsoleOfParent();

// One line on standard error, led by the launcher's name. The text is UTF-16, the line UTF-8 or, on
// a console, whatever the console shows.
void say(const std::wstring& text);

// Text of a program that was captured, on standard error as it is.
void passOn(const std::string& text);

// Starts a program by its full path and waits for its end. The command line names the program
// first. It ends with the launcher, even if that is killed. Where capture is given, all that the
// program prints is appended to it, else it goes to the launcher's own handles. The result is the
// exit code, or -1 when the program could not be started; describeLastError() then says why.
long long runChild(const std::wstring& program, const std::wstring& commandLine,
                   std::string* capture = nullptr);

} // namespace Orvane
