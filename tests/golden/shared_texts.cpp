#include "shared_texts.h"

#include "golden_case.h"

#include <algorithm>
#include <sstream>
#include <stdexcept>

namespace fs = std::filesystem;

namespace Orvane::Golden {

namespace {

// A fixed text begins with its first line and ends in front of the first of the lines behind it.
struct FixedText {
    std::string file;
    std::string firstLine;
    std::vector<std::string> linesBehind;
};

const std::vector<FixedText>& fixedTexts() {
    static const std::vector<FixedText> table = {
        {"runtime_value.txt", "struct Value {", {"// UTF-8 -> ANSI (ACP)"}},
        {"utf8_to_acp.txt", "// UTF-8 -> ANSI (ACP)", {"// UTF-8 -> wide", ""}},
        {"utf8_to_wide.txt", "// UTF-8 -> wide", {""}},
    };
    return table;
}

const std::string directive = "@@include ";

using Lines = std::vector<std::string>;

Lines splitLines(const std::string& text) {
    Lines lines;
    std::istringstream stream(text);
    for (std::string line; std::getline(stream, line);) lines.push_back(line);
    return lines;
}

const FixedText* findByFirstLine(const std::string& line) {
    for (const FixedText& fixed : fixedTexts())
        if (fixed.firstLine == line) return &fixed;
    return nullptr;
}

bool isFixedTextFile(const std::string& name) {
    return std::any_of(fixedTexts().begin(), fixedTexts().end(),
                       [&](const FixedText& fixed) { return fixed.file == name; });
}

std::string joinLines(Lines::const_iterator begin, Lines::const_iterator end) {
    std::string text;
    for (auto line = begin; line != end; ++line) text += *line + "\n";
    return text;
}

} // namespace

std::string SharedTexts::expand(const std::string& stored) const {
    std::string complete;
    for (std::size_t position = 0; position < stored.size();) {
        const std::size_t newline = stored.find('\n', position);
        const std::size_t next = newline == std::string::npos ? stored.size() : newline + 1;
        const std::string line = stored.substr(position, next - position);
        complete += line.starts_with(directive) ? includedText(line) : line;
        position = next;
    }
    return complete;
}

// The text that an include line (with its line end) stands for.
std::string SharedTexts::includedText(const std::string& line) const {
    const std::string name = line.substr(directive.size(), line.find('\n') - directive.size());
    if (!isFixedTextFile(name)) throw std::runtime_error("no shared text is named '" + name + "'");
    return readFile(folder / name);
}

std::string SharedTexts::collapse(const std::string& complete) const {
    if (!complete.ends_with('\n')) return complete;
    const Lines lines = splitLines(complete);
    std::string stored;
    for (auto line = lines.begin(); line != lines.end();) {
        const FixedText* fixed = findByFirstLine(*line);
        const auto end = fixed
                             ? std::find_first_of(line + 1, lines.end(), fixed->linesBehind.begin(),
                                                  fixed->linesBehind.end())
                             : lines.end();
        if (!fixed || end == lines.end()) {
            stored += *line++ + "\n";
            continue;
        }
        const std::string text = joinLines(line, end);
        const fs::path file = folder / fixed->file;
        if (!fs::exists(file) || readFile(file) != text) writeFile(file, text);
        stored += directive + fixed->file + "\n";
        line = end;
    }
    return stored;
}

std::vector<fs::path> SharedTexts::findStrayFiles() const {
    std::vector<fs::path> strays;
    if (!fs::exists(folder)) return strays;
    for (const fs::directory_entry& entry : fs::directory_iterator(folder))
        if (!isFixedTextFile(entry.path().filename().string())) strays.push_back(entry.path());
    return strays;
}

} // namespace Orvane::Golden
