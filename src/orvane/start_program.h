// Starts a program that was built: on Windows itself, elsewhere with Wine.
#pragma once

#include "orvane/output.h"
#include "orvane/system.h"

#include <filesystem>
#include <memory>

namespace Orvane {

// Null, with a sentence to `err`, when it cannot be started.
std::unique_ptr<RunningProgram> startProgram(const std::filesystem::path& executable,
                                             const std::vector<std::string>& arguments,
                                             RunningProgram::Interrupts interrupts, Output& err);

} // namespace Orvane
