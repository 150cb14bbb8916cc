#include "check/window_check.h"

#include "codegen/library_calls.h"

#include <algorithm>

namespace Orvane {

namespace {

// Whether a call of the program brings the bridge between Windows and the handlers with it; this
// function of the library win32 installs it, and its presence in the program is enough.
bool installsBridge(const NameUses& uses, const LibraryFunctions& libraries) {
    NameSet called(uses.calledFunctions().begin(), uses.calledFunctions().end());
    return closeOverLibraryCalls(libraries.table(), std::move(called)).contains("orxBoot");
}

NameUses::Wanted namesOfControls(const Vorla* window) {
    NameUses::Wanted names;
    if (!window) return names;
    for (const auto& control : window->components) names.insert(control->name);
    return names;
}

bool isTarget(const LibraryParameter& parameter) {
    return parameter.name == "target" || parameter.name == "targets";
}

} // namespace

WindowCheck::WindowCheck(const ParsedSource& source_, const LibraryFunctions& libraries_,
                         std::vector<Diagnostic>& found_)
    : source(source_), libraries(libraries_), window(source_.tree().window.get()),
      uses(source_.tokens(), namesOfControls(window)), found(found_),
      bridged(uses.calls("enableEvents") || installsBridge(uses, libraries_)) {
    if (!window) return;
    for (const auto& control : window->components) controls.emplace(control->name, control.get());
}

// Whether a control that is handed to the function may have its handlers run by it, or be shown
// and moved by it: a function of the program can do anything.
bool WindowCheck::takesTarget(std::string_view function) const {
    if (function == "setTooltip" || function == "clickControl") return true;
    if (function == "alert" || function == "print") return false;
    const auto overloads = libraries.find(function);
    if (overloads.empty()) return true;
    return std::any_of(overloads.begin(), overloads.end(), [](const FunctionEntry& entry) {
        const std::vector<LibraryParameter> parameters = parametersOf(entry);
        return std::any_of(parameters.begin(), parameters.end(), isTarget);
    });
}

// A control begins with its kind and its name.
ByteRange WindowCheck::nameRange(const Component& control) const {
    const auto tokens = source.tokensOf(&control);
    return tokens ? source.tokenRange(tokens->first + 1) : ByteRange{};
}

Diagnostic& WindowCheck::report(MessageId id, ByteRange range,
                                std::initializer_list<std::string_view> arguments) {
    found.push_back(makeDiagnostic(id, range, arguments));
    return found.back();
}

void checkWindow(const ParsedSource& source, const LibraryFunctions& libraries,
                 std::vector<Diagnostic>& found) {
    WindowCheck check(source, libraries, found);
    check.checkControls();
    check.checkProperties();
    check.checkLayout();
    check.checkEvents();
}

} // namespace Orvane
