// The command doctor: one line for each thing that a build needs, and the way out where it is
// wrong.

#include "driver/options.h"
#include "driver/platform.h"
#include "driver/toolchain.h"
#include "libraries/files.h"
#include "libraries/orlib_bootloader.h"
#include "orvane/commands.h"
#include "orvane/system.h"

#include <filesystem>
#include <fstream>
#include <system_error>

namespace Orvane {

namespace fs = std::filesystem;

namespace {

// A folder that goes with all that is in it.
class ScratchFolder {
public:
    ScratchFolder() {
        std::error_code error;
        const fs::path parent = fs::temp_directory_path(error);
        if (error) return;
        folder = parent / ("orvane-doctor-" + std::to_string(processNumber()));
        made = fs::create_directory(folder, error);
    }
    ScratchFolder(const ScratchFolder&) = delete;
    ScratchFolder& operator=(const ScratchFolder&) = delete;
    ~ScratchFolder() {
        std::error_code ignored;
        if (made) fs::remove_all(folder, ignored);
    }
    bool isMade() const { return made; }
    const fs::path& path() const { return folder; }

private:
    fs::path folder;
    bool made = false;
};

bool canWriteIn(const fs::path& folder) {
    const fs::path file = folder / (".orvane-doctor-" + std::to_string(processNumber()));
    std::FILE* stream = openNewFile(file);
    if (!stream) return false;
    const bool isWritten = std::fputs("x", stream) >= 0;
    const bool isClosed = std::fclose(stream) == 0;
    std::error_code error;
    return isWritten && isClosed && fs::remove(file, error);
}

std::string firstLines(std::string_view text) {
    constexpr std::size_t most = 600;
    std::string shown(text.substr(0, most));
    while (shown.ends_with('\n')) shown.pop_back();
    return shown;
}

class Doctor {
public:
    explicit Doctor(Output& out_)
        : out(out_), base(baseDirectory(SystemPlatform().executablePath())) {}

    int examine() {
        examineInstallation();
        examineToolchain();
        examineLibraries();
        examineEncoding();
        examineWriting();
        examineStarter();
        if (wrong == 0) out.write("All is well.\n");
        return wrong == 0 ? allIsWell : somethingIsWrong;
    }

private:
    void say(Paint paint, std::string_view mark, std::string_view what) {
        out.write(out.paint(paint, mark) + std::string(7 - mark.size(), ' ') + std::string(what) +
                  "\n");
    }
    void good(std::string_view what) { say(Paint::good, "ok", what); }
    void advise(std::string_view wayOut) { out.write("       = " + std::string(wayOut) + "\n"); }
    void bad(std::string_view what, std::string_view wayOut) {
        say(Paint::error, "wrong", what);
        advise(wayOut);
        ++wrong;
    }

    void examineInstallation() {
        const bool hasCompiler = pathExists(base / "orvanec") || pathExists(base / "orvanec.exe");
        if (hasCompiler)
            good("installation: " + textOf(base));
        else
            bad("installation: orvanec is missing in " + textOf(base),
                "Unpack the archive again, and keep orvane in the folder of its installation.");
    }

    void examineToolchain() {
        const auto toolchain = locateToolchain(base, workingDirectory());
        if (!toolchain) {
            bad("C++ compiler: g++.exe is in none of the places where it is looked for",
                "Unpack the archive again: tools/bin/g++.exe is missing.");
            return;
        }
        compileTrivial(*toolchain);
        if (toolchain->resourceObject)
            good("resource.o: " + textOf(*toolchain->resourceObject));
        else
            bad("resource.o is missing: programs get the old look, and letters outside of English "
                "may be wrong",
                "Unpack the archive again: tools/bin/resource.o is missing.");
    }

    void compileTrivial(const Toolchain& toolchain) {
        const ScratchFolder scratch;
        if (!scratch.isMade()) {
            bad("C++ compiler: not tried, since no folder for temporary files can be written",
                "Make room there, or set TMPDIR (on Windows TEMP) to another folder.");
            return;
        }
        const fs::path source = scratch.path() / "main.cpp";
        const fs::path program = scratch.path() / "trivial.exe";
        std::ofstream(source) << "#include <windows.h>\n"
                                 "int WINAPI WinMain(HINSTANCE, HINSTANCE, LPSTR, int) "
                                 "{ return 0; }\n";
        const CapturedRun run = runCaptured(formatCommandLine(toolchain, source, program, false));
        const std::string name = "C++ compiler: " + textOf(toolchain.gxx);
        if (!run.code) {
            bad(name + " does not start", "It must be a program that this user may start.");
        } else if (*run.code != 0 || !pathExists(program)) {
            bad(name + " does not compile a trivial program; it says:", firstLines(run.output));
        } else {
            good(name);
        }
    }

    void examineLibraries() {
        const fs::path folder = base / "orlib";
        std::string missing;
        std::size_t count = 0;
        for (const std::string_view name : libraryNames()) {
            const fs::path file = folder / (std::string(name) + ".orlib");
            if (OrlibBootloader::readFile(textOf(file)).empty())
                missing.append(missing.empty() ? "" : ", ").append(name);
            else
                ++count;
        }
        if (missing.empty()) {
            good("libraries: all " + std::to_string(count) + " in " + textOf(folder));
        } else {
            bad("libraries: missing or unreadable in " + textOf(folder) + ": " + missing,
                "Unpack the archive again, and look who may read the folder.");
        }
    }

    void examineEncoding() {
        const EncodingState state = encodingState();
        if (state.isUtf8)
            good("encoding: " + state.name);
        else
            bad("encoding: " + state.name + "; names and texts with other letters may be wrong",
                state.wayOut);
    }

    void examineWriting() {
        const fs::path folder = workingDirectory();
        if (canWriteIn(folder))
            good("write access: " + textOf(folder));
        else
            bad("write access: " + textOf(folder) + " cannot be written, and programs appear there",
                "Work in a folder of your own.");
    }

    // Programs can be built without it.
    void examineStarter() {
        const auto starter = programStarter();
        if (starter && starter->empty()) return;
        if (starter) {
            good("Wine: " + starter->front());
        } else {
            say(Paint::warning, "note", "Wine is not installed: programs are built, not started");
            advise("On Debian and Ubuntu: sudo apt-get install wine64");
        }
    }

    Output& out;
    const fs::path base;
    int wrong = 0;
};

} // namespace

int runDoctor(Output& out) { return Doctor(out).examine(); }

} // namespace Orvane
