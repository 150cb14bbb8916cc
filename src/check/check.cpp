#include "check/check.h"

#include "check/suppression.h"
#include "check/types.h"
#include "check/window_check.h"

#include <algorithm>
#include <tuple>

namespace Orvane {

namespace {

bool isWarning(const Diagnostic& diagnostic) { return diagnostic.severity() == Severity::warning; }

bool hasErrors(const std::vector<Diagnostic>& diagnostics) {
    return !std::all_of(diagnostics.begin(), diagnostics.end(), isWarning);
}

auto orderOf(const Diagnostic& diagnostic) {
    return std::tuple(diagnostic.range.begin, diagnostic.range.end, diagnostic.id);
}

void sortByPlace(std::vector<Diagnostic>& diagnostics) {
    std::stable_sort(
        diagnostics.begin(), diagnostics.end(),
        [](const Diagnostic& a, const Diagnostic& b) { return orderOf(a) < orderOf(b); });
    const auto repeated = std::unique(
        diagnostics.begin(), diagnostics.end(),
        [](const Diagnostic& a, const Diagnostic& b) { return orderOf(a) == orderOf(b); });
    diagnostics.erase(repeated, diagnostics.end());
}

} // namespace

std::vector<Diagnostic> checkSource(const ParsedSource& source, const LibraryFunctions& libraries,
                                    const CheckOptions& options) {
    std::vector<Diagnostic> found = source.diagnostics();
    if (!hasErrors(found)) {
        checkTypes(source, libraries, found);
        checkWindow(source, libraries, found);
    }
    suppressWarnings(source, found);
    if (!options.warnings) std::erase_if(found, isWarning);
    sortByPlace(found);
    return found;
}

} // namespace Orvane
