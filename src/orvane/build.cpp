#include "orvane/build.h"

#include "driver/driver.h"
#include "driver/toolchain.h"
#include "libraries/files.h"
#include "orvane/checked_file.h"
#include "orvane/failed_build.h"

#include <exception>

namespace Orvane {

namespace {

struct StageName {
    std::string_view front; // of orvanec's line
    std::string_view words;
};
constexpr StageName stageNames[] = {
    {"[3/6]", "reading"},
    {"[5/7]", "translating"},
    {"[6/6]", "compiling"},
};

} // namespace

// Takes what the stages print: their lines become progress, their errors are kept.
class Builder::StageConsole final : public Console {
public:
    StageConsole(Builder& builder_, std::string sourceFile_)
        : builder(builder_), sourceFile(std::move(sourceFile_)) {}

    void write(std::string_view text) override {
        if (builder.settings.verbose) builder.err.write(text);
        pending += text;
        for (std::size_t end = pending.find('\n'); end != std::string::npos;
             end = pending.find('\n')) {
            readLine(std::string_view(pending).substr(0, end));
            pending.erase(0, end + 1);
        }
    }

    const std::vector<std::string>& problems() const { return found; }

private:
    void readLine(std::string_view line) {
        for (const StageName& stage : stageNames)
            if (line.starts_with(stage.front) && !builder.settings.verbose)
                builder.progress.show(sourceFile + ": " + std::string(stage.words));
        for (const std::string_view front : {"Error: ", "Warning: "}) {
            const std::size_t at = line.find(front);
            if (at != std::string_view::npos) found.emplace_back(line.substr(at + front.size()));
        }
        const std::size_t failed = line.find(" ... FAIL: ");
        if (failed != std::string_view::npos) found.emplace_back(line);
    }

    Builder& builder;
    std::string sourceFile;
    std::string pending;
    std::vector<std::string> found;
};

// The compiler's platform, but for g++, whose output is kept.
class Builder::CapturingPlatform final : public Platform {
public:
    explicit CapturingPlatform(Builder& builder_) : builder(builder_) {}

    std::string executablePath() const override { return system.executablePath(); }

    std::optional<unsigned long> run(const std::string& commandLine) override {
        if (builder.prepare) builder.prepare();
        last = runCaptured(commandLine);
        return last.code;
    }

    const CapturedRun& gxx() const { return last; }
    bool hasGxxFailed() const { return last.code.value_or(0) != 0; }

private:
    Builder& builder;
    SystemPlatform system;
    CapturedRun last;
};

Builder::Builder(ReportWriter& report_, Output& err_, BuildSettings settings_)
    : report(report_), err(err_), progress(err_), settings(std::move(settings_)) {}

std::filesystem::path Builder::executableOf(const std::string& sourceFile) {
    return outputFilesFor(sourceFile).executable;
}

bool Builder::build(const std::string& sourceFile) {
    try {
        return passesChecks(sourceFile) && drive(sourceFile);
    } catch (const std::exception& error) {
        progress.finish(sourceFile + ": error: " + error.what());
    }
    return false;
}

bool Builder::passesChecks(const std::string& sourceFile) {
    if (!settings.check) return true;
    progress.show(sourceFile + ": checking");
    const CheckedFile file = checkFile(sourceFile, settings.compilerOptions);
    progress.clear();
    report.add(file.source(), file.diagnostics());
    return !file.hasErrors();
}

bool Builder::drive(const std::string& sourceFile) {
    std::vector<std::string> arguments = settings.compilerOptions;
    arguments.insert(arguments.begin(), sourceFile);
    StageConsole console(*this, sourceFile);
    CapturingPlatform platform(*this);
    const bool isBuilt = Driver(console, platform).run(arguments) == 0;
    progress.clear();
    if (isInterrupted()) return false;
    if (platform.hasGxxFailed()) {
        explainFailure(sourceFile, platform.gxx());
        return false;
    }
    const std::string beginning = sourceFile + (isBuilt ? ": warning: " : ": error: ");
    for (const std::string& problem : console.problems())
        progress.finish(std::string(beginning).append(problem));
    if (isBuilt) {
        std::filesystem::path shown = pathOf(sourceFile);
        shown.replace_extension(".exe");
        progress.finish(sourceFile + ": built " + textOf(shown));
        if (settings.verbose) showOriginal(platform.gxx().output);
    }
    return isBuilt;
}

void Builder::explainFailure(const std::string& sourceFile, const CapturedRun& gxx) {
    Options options = scanArguments(settings.compilerOptions).options;
    options.sourceFile = sourceFile;
    FailedBuild failed(options, baseDirectory(SystemPlatform().executablePath()));
    for (const FileMessages& file : failed.explain(gxx.output))
        report.add(*file.source, file.diagnostics);
    if (settings.verbose || !failed.isComplete()) showOriginal(gxx.output);
}

void Builder::showOriginal(std::string_view output) {
    if (output.empty()) return;
    err.write(err.paint(Paint::heading, "What the C++ compiler says:") + "\n");
    err.write(output);
    if (!output.ends_with('\n')) err.write("\n");
}

} // namespace Orvane
