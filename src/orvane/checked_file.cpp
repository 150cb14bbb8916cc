#include "orvane/checked_file.h"

#include "libraries/files.h"

#include <algorithm>
#include <cstdio>

namespace Orvane {

namespace {

std::optional<std::string> readStandardInput() {
    std::string text;
    char buffer[4096];
    while (const std::size_t count = std::fread(buffer, 1, sizeof buffer, stdin))
        text.append(buffer, count);
    if (std::ferror(stdin)) return std::nullopt;
    return text;
}

} // namespace

bool CheckedFile::hasErrors() const {
    return std::any_of(found.begin(), found.end(), [](const Diagnostic& diagnostic) {
        return diagnostic.severity() == Severity::error;
    });
}

CheckedFile checkFile(const std::string& path, const std::vector<std::string>&) {
    const bool isInput = path == "-";
    std::optional<std::string> text = isInput ? readStandardInput() : readTextFile(pathOf(path));
    const bool isRead = text.has_value();
    auto parsed =
        std::make_unique<ParsedSource>(isInput ? "<stdin>" : path, std::move(text).value_or(""));
    std::vector<Diagnostic> found = parsed->diagnostics();
    if (!isRead) found = {makeDiagnostic(MessageId::unreadableFile, {})};
    return {std::move(parsed), std::move(found)};
}

} // namespace Orvane
