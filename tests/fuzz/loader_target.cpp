// Any set of library files is loaded to the end, whatever they import, and a second loader over the
// same files says and finds the same.
//
// A line "@@@ X" begins a file; the character X chooses its name. The files stand in one temporary
// directory, which is the working directory meanwhile.
#include "fuzz/targets.h"

#include "libraries/orlib_bootloader.h"
#include "unit/temporary_directory.h"

#include <map>
#include <vector>

namespace Orvane::Fuzzing {

namespace {

constexpr std::string_view mark = "@@@ ";
constexpr std::string_view fileNames[] = {"a.orlib",       "b.orlib", "c.orlib",     "normal.orlib",
                                          "orlib/a.orlib", "Lib/d",   "sub/e.orlib", "sub/f"};

using LibraryFiles = std::map<std::string_view, std::string_view>; // contents by name

bool atMark(std::string_view text, std::size_t at) {
    return (at == 0 || text[at - 1] == '\n') && text.substr(at).starts_with(mark);
}

// What stands in front of the first mark belongs to the first file; the later file of a name wins.
LibraryFiles splitFiles(std::string_view text) {
    LibraryFiles files;
    std::string_view name = fileNames[0];
    std::size_t start = 0;
    for (std::size_t at = 0; at + mark.size() < text.size(); ++at) {
        if (!atMark(text, at)) continue;
        files[name] = text.substr(start, at - start);
        name = fileNames[static_cast<unsigned char>(text[at + mark.size()]) % std::size(fileNames)];
        start = at + mark.size() + 1;
    }
    files[name] = text.substr(start);
    return files;
}

// One directory for all inputs of a process; a fresh one each time would cost more than the rest.
class Workshop {
public:
    Workshop() {
        for (const char* folder : {"orlib", "Lib", "sub"})
            std::filesystem::create_directory(directory.path() / folder);
    }
    void fill(const LibraryFiles& files) {
        for (const std::string_view name : written)
            if (!files.contains(name)) std::filesystem::remove(directory.path() / name);
        written.clear();
        for (const auto& [name, content] : files) {
            directory.write(name, content);
            written.push_back(name);
        }
    }
    const std::filesystem::path& path() const { return directory.path(); }

private:
    TemporaryDirectory directory;
    std::vector<std::string_view> written; // names of the present files
};

struct Loaded {
    std::string messages;
    std::size_t functions = 0;
    std::size_t usings = 0;
    bool operator==(const Loaded&) const = default;
};

Loaded loadAll() {
    RecordingConsole console;
    ReplacementTable table;
    OrlibBootloader bootloader(table, console);
    bootloader.loadNormal();
    bootloader.loadByName("a");
    bootloader.loadByName("sub/e.orlib");
    const std::size_t once = table.size();
    console.print("again\n");
    bootloader.loadByName("a");
    require(table.size() == once, "a file is read once");
    table.print(console);
    return {console.text(), table.size(), bootloader.usings().size()};
}

} // namespace

void fuzzLoader(Bytes input) {
    static Workshop workshop;
    const std::string text = textOf(input);
    workshop.fill(splitFiles(text));
    const WorkingDirectory inside(workshop.path());
    require(loadAll() == loadAll(), "the same files load alike");
}

} // namespace Orvane::Fuzzing
