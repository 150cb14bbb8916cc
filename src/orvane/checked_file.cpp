#include "orvane/checked_file.h"

#include "check/check.h"
#include "driver/platform.h"
#include "driver/toolchain.h"
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

// The libraries are those that a build with the same options has.
std::vector<Diagnostic> diagnosticsOf(const ParsedSource& source,
                                      const std::vector<std::string>& compilerOptions) {
    LibraryFunctions libraries(baseDirectory(SystemPlatform().executablePath()) / "orlib");
    libraries.load(source.tree(), scanArguments(compilerOptions).options);
    return checkSource(source, libraries, {});
}

} // namespace

bool CheckedFile::hasErrors() const {
    return std::any_of(found.begin(), found.end(), [](const Diagnostic& diagnostic) {
        return diagnostic.severity() == Severity::error;
    });
}

CheckedFile checkFile(const std::string& path, const std::vector<std::string>& compilerOptions) {
    const bool isInput = path == "-";
    std::optional<std::string> text = isInput ? readStandardInput() : readTextFile(pathOf(path));
    const bool isRead = text.has_value();
    auto parsed =
        std::make_unique<ParsedSource>(isInput ? "<stdin>" : path, std::move(text).value_or(""));
    std::vector<Diagnostic> found;
    if (isRead)
        found = diagnosticsOf(*parsed, compilerOptions);
    else
        found.push_back(makeDiagnostic(MessageId::unreadableFile, {}));
    return {std::move(parsed), std::move(found)};
}

} // namespace Orvane
