// The command watch. It looks at the files a few times a second, since that works on every system
// and on every kind of disk, and it takes a file for saved when it has stayed the same for a
// moment: many editors write in several steps or replace the file by another one.

#include "driver/toolchain.h"
#include "libraries/files.h"
#include "orvane/build.h"
#include "orvane/checked_file.h"
#include "orvane/commands.h"
#include "orvane/program_libraries.h"
#include "orvane/start_program.h"

#include <map>
#include <optional>
#include <system_error>

namespace Orvane {

namespace fs = std::filesystem;

namespace {

using namespace std::chrono_literals;

constexpr auto interval = 150ms;

// What a save changes. Nothing for a file that is not there.
struct Stamp {
    fs::file_time_type time;
    std::uintmax_t size;
    friend bool operator==(const Stamp&, const Stamp&) = default;
};

std::optional<Stamp> stampOf(const fs::path& path) {
    std::error_code error;
    const fs::file_time_type time = fs::last_write_time(path, error);
    if (error) return std::nullopt;
    const std::uintmax_t size = fs::file_size(path, error);
    if (error) return std::nullopt;
    return Stamp{time, size};
}

using Stamps = std::map<std::string, std::optional<Stamp>>; // by path

class Watcher {
public:
    Watcher(const CommandRequest& request_, Output& err_)
        : request(request_), err(err_), source(request.names.front()) {}

    int run() {
        takeInterrupts();
        if (!pathExists(pathOf(source))) {
            err.write("orvane: there is no file '" + source + "'.\n");
            return somethingIsWrong;
        }
        while (!isInterrupted()) {
            rebuild();
            if (!isInterrupted()) err.write(source + ": waiting for a change (Ctrl-C ends)\n");
            waitForChange();
        }
        program.reset();
        return allIsWell;
    }

private:
    // The stamps are taken in front of the build, so that a save during it is not lost.
    void rebuild() {
        stamps = takeStamps(watchedFiles());
        const auto report = makeReportWriter(Format::text, err);
        Builder builder(*report, err, {request.compilerOptions, request.check, request.verbose});
        // Windows does not let go of the file of a program that runs.
        builder.beforeCompiling([this] { program.reset(); });
        const bool isBuilt = builder.build(source);
        const std::string summary = summaryOf(*report);
        if (!summary.empty()) err.write(summary + "\n");
        if (!isBuilt || isInterrupted()) return;
        program = startProgram(Builder::executableOf(source), request.programArguments,
                               RunningProgram::Interrupts::own, err);
    }

    // The source and the libraries of the project. Those of the installation do not change.
    std::vector<std::string> watchedFiles() const {
        std::vector<std::string> files = {source};
        const fs::path installation = baseDirectory(SystemPlatform().executablePath());
        const ParsedSource parsed(source, readTextFile(pathOf(source)).value_or(""));
        ProgramLibraries libraries(installation, scanArguments(request.compilerOptions).options);
        libraries.load(parsed.tree());
        const std::string installed = textOf(installation / "orlib");
        for (const std::string& file : libraries.files())
            if (!file.starts_with(installed)) files.push_back(file);
        return files;
    }

    static Stamps takeStamps(const std::vector<std::string>& files) {
        Stamps taken;
        for (const std::string& file : files) taken[file] = stampOf(pathOf(file));
        return taken;
    }

    Stamps currentStamps() const {
        Stamps current = stamps;
        for (auto& [file, stamp] : current) stamp = stampOf(pathOf(file));
        return current;
    }

    // Ends with a source that is there, differs from the one that was built, and is not being
    // written any more; or with Ctrl-C.
    void waitForChange() {
        Stamps before = stamps;
        bool isMissing = false;
        while (!isInterrupted()) {
            sleepFor(interval);
            noteEnd();
            const Stamps current = currentStamps();
            const bool isThere = current.at(source).has_value();
            if (!isThere && !isMissing) err.write(source + ": gone; waiting until it is back\n");
            isMissing = !isThere;
            if (isThere && current != stamps && current == before) return;
            before = current;
        }
    }

    void noteEnd() {
        if (!program) return;
        const auto code = program->exitCode();
        if (!code) return;
        err.write(source + ": the program has ended with status " + std::to_string(*code) + "\n");
        program.reset();
    }

    const CommandRequest& request;
    Output& err;
    const std::string source;
    Stamps stamps; // of what the last build has seen
    std::unique_ptr<RunningProgram> program;
};

} // namespace

int runWatch(const CommandRequest& request, Output& err) { return Watcher(request, err).run(); }

} // namespace Orvane
