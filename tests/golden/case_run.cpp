#include "case_run.h"

#include "driver/driver.h"
#include "unit/temporary_directory.h"

#include <sstream>

namespace fs = std::filesystem;

namespace Orvane::Golden {

namespace {

// The compiler seems to be installed in a folder that has a g++.exe; starting that keeps the
// generated files and succeeds.
class FakePlatform final : public Platform {
public:
    FakePlatform(const fs::path& installation_, const fs::path& generated_)
        : installation(installation_), generated(generated_) {
        writeFile(installation / "tools/bin/g++.exe", "");
    }

    std::string executablePath() const override { return (installation / "orvanec").string(); }

    std::optional<unsigned long> run(const std::string&) override {
        for (const char* name : {"main.cpp", "import.hpp"})
            taken[name] = readFile(generated / name);
        return 0UL;
    }

    const Outcome& takenFiles() const { return taken; }

private:
    fs::path installation;
    fs::path generated;
    Outcome taken;
};

void copySources(const fs::path& from, const fs::path& to) {
    fs::create_directories(to);
    for (const fs::directory_entry& entry : fs::directory_iterator(from)) {
        const fs::path name = entry.path().filename();
        if (name == "app.vorla" || name == "orlib" || name.extension() == ".orlib")
            fs::copy(entry.path(), to / name, fs::copy_options::recursive);
    }
}

std::vector<std::string> argumentsOf(const GoldenCase& golden) {
    std::vector<std::string> arguments = {"app.vorla"};
    const fs::path options = golden.folder / "options";
    if (!fs::exists(options)) return arguments;
    std::istringstream words(readFile(options));
    for (std::string word; words >> word;) arguments.push_back(word);
    return arguments;
}

std::string replacedAll(std::string text, const std::string& piece, const std::string& by) {
    for (std::size_t at = 0; (at = text.find(piece, at)) != std::string::npos; at += by.size())
        text.replace(at, piece.size(), by);
    return text;
}

} // namespace

// The installation is no neighbour of the source, whose own parent folder is searched for
// libraries.
Outcome runCase(const GoldenCase& golden) {
    const TemporaryDirectory directory;
    const fs::path project = directory.path() / "user" / "project";
    copySources(golden.folder, project);
    FakePlatform platform(directory.path() / "installation", project / "code_generation");
    RecordingConsole console;
    Outcome outcome;
    try {
        const WorkingDirectory inside(project);
        const int status = Driver(console, platform).run(argumentsOf(golden));
        if (status != 0) outcome["status"] = std::to_string(status) + "\n";
    } catch (const std::exception& exception) {
        outcome["exception"] = std::string(exception.what()) + "\n";
    }
    outcome["stdout"] = replacedAll(console.text(), directory.path().string(), "$DIR");
    outcome.insert(platform.takenFiles().begin(), platform.takenFiles().end());
    return outcome;
}

} // namespace Orvane::Golden
