// One program from its source to its executable: the checks, then the stages of orvanec inside this
// process, and an explanation when the C++ compiler refuses the result.
//
//     Builder builder(report, err, {.compilerOptions = {"--normal"}});
//     if (builder.build("app.vorla")) start(Builder::executableOf("app.vorla"));
#pragma once

#include "driver/options.h"
#include "driver/platform.h"
#include "orvane/progress.h"
#include "orvane/report.h"
#include "orvane/system.h"

#include <filesystem>
#include <functional>
#include <string>
#include <vector>

namespace Orvane {

struct BuildSettings {
    std::vector<std::string> compilerOptions{}; // of orvanec, valid ones
    bool check = true;
    bool verbose = false; // what orvanec and g++ print, as they print it
};

class Builder {
public:
    // Messages about the program go into the report, progress and everything else to `err`.
    Builder(ReportWriter& report, Output& err, BuildSettings settings);

    // Whether the executable has been made. Throws nothing.
    bool build(const std::string& sourceFile);

    // Called when the checks have passed, before the executable is written: the last moment to end
    // a program that runs from that file.
    void beforeCompiling(std::function<void()> action) { prepare = std::move(action); }

    // Beside the source.
    static std::filesystem::path executableOf(const std::string& sourceFile);

private:
    class StageConsole;
    class CapturingPlatform;

    bool passesChecks(const std::string& sourceFile);
    bool drive(const std::string& sourceFile);
    void explainFailure(const std::string& sourceFile, const CapturedRun& gxx);
    void showOriginal(std::string_view output);

    ReportWriter& report;
    Output& err;
    Progress progress;
    BuildSettings settings;
    std::function<void()> prepare;
};

} // namespace Orvane
