#include "golden_case.h"

#include <algorithm>
#include <fstream>
#include <iterator>
#include <ostream>
#include <stdexcept>

namespace fs = std::filesystem;

namespace Orvane::Golden {

namespace {

std::vector<fs::path> entriesOf(const fs::path& folder) {
    std::vector<fs::path> entries;
    for (const fs::directory_entry& entry : fs::directory_iterator(folder))
        entries.push_back(entry.path());
    std::sort(entries.begin(), entries.end());
    return entries;
}

std::vector<fs::path> areasOf(const fs::path& root) {
    std::vector<fs::path> areas = entriesOf(root);
    std::erase_if(areas, [](const fs::path& path) {
        return !fs::is_directory(path) || path.filename() == "shared";
    });
    return areas;
}

bool belongsToCase(const fs::path& entry) {
    const std::string name = entry.filename().string();
    if (fs::is_directory(entry)) return name == "orlib" || name == "expected";
    return name == "app.vorla" || name == "options" || name == "no-compile" ||
           entry.extension() == ".orlib";
}

void addStrayFilesOfCase(const fs::path& folder, std::vector<fs::path>& strays) {
    for (const fs::path& entry : entriesOf(folder))
        if (!belongsToCase(entry)) strays.push_back(entry);
    if (!fs::is_directory(folder / "orlib")) return;
    for (const fs::directory_entry& entry : fs::recursive_directory_iterator(folder / "orlib"))
        if (!entry.is_directory() && entry.path().extension() != ".orlib")
            strays.push_back(entry.path());
}

} // namespace

bool GoldenCase::mustFail() const { return folder.filename().string().starts_with("fail_"); }

std::ostream& operator<<(std::ostream& stream, const GoldenCase& golden) {
    return stream << golden.name;
}

std::vector<GoldenCase> findCases(const fs::path& root) {
    std::vector<GoldenCase> cases;
    for (const fs::path& area : areasOf(root))
        for (const fs::path& entry : entriesOf(area))
            if (fs::is_directory(entry))
                cases.push_back(
                    {area.filename().string() + "/" + entry.filename().string(), entry});
    return cases;
}

std::vector<fs::path> findStrayFiles(const fs::path& root) {
    std::vector<fs::path> strays;
    for (const fs::path& area : areasOf(root))
        for (const fs::path& entry : entriesOf(area)) {
            if (fs::is_directory(entry))
                addStrayFilesOfCase(entry, strays);
            else
                strays.push_back(entry);
        }
    return strays;
}

std::string readFile(const fs::path& path) {
    std::ifstream stream(path, std::ios::binary);
    if (!stream) throw std::runtime_error("cannot read " + path.string());
    return {std::istreambuf_iterator<char>(stream), {}};
}

void writeFile(const fs::path& path, const std::string& text) {
    fs::create_directories(path.parent_path());
    std::ofstream stream(path, std::ios::binary);
    stream << text;
    if (!stream.flush()) throw std::runtime_error("cannot write " + path.string());
}

} // namespace Orvane::Golden
