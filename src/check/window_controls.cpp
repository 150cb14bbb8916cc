// The controls and menus of the window, and windows that are replaced.

#include "check/window_check.h"
#include "check/window_facts.h"
#include "codegen/control_kinds.h"
#include "codegen/control_settings.h"

#include <algorithm>
#include <cctype>

namespace Orvane {

namespace {

bool isWordLetter(char letter) {
    return std::isalnum(static_cast<unsigned char>(letter)) || letter == '_';
}

// The key NAME_ENTRY, for which a handler is written, has to be a name.
bool canBeTarget(std::string_view entry) {
    return !entry.empty() && std::all_of(entry.begin(), entry.end(), isWordLetter);
}

} // namespace

void WindowCheck::checkControls() {
    if (!window) return;
    checkOtherWindows();
    for (const auto& control : window->components) checkKind(*control);
    checkNames();
    checkMenus();
}

// Every window of the source begins with this word, and only the last one is left.
void WindowCheck::checkOtherWindows() {
    const auto last = source.tokensOf(window);
    if (!last) return;
    const auto& tokens = source.tokens();
    for (std::size_t at = 0; at + 1 < tokens.size() && at < last->first; ++at) {
        if (tokens[at].type != TokenType::VorlaKeyword) continue;
        Diagnostic& replaced =
            report(MessageId::replacedWindow, source.tokenRange(at + 1), {tokens[at + 1].text()});
        replaced.notes.push_back({source.tokenRange(last->first + 1), "the later one"});
    }
}

void WindowCheck::checkKind(const Component& control) {
    if (findControlKind(control.type)) return;
    const std::string meant(kindMeant(control.type));
    const std::string hint =
        meant.empty() ? "Write one of the kinds of control, such as button, text or entry."
                      : "Write '" + meant + "' if you mean that.";
    const auto tokens = source.tokensOf(&control);
    if (tokens)
        report(MessageId::unknownKind, source.tokenRange(tokens->first),
               {control.type, control.name, hint});
}

// Two controls with handles of one name are for the check of names. Two menus make two C++
// variables of one name as well; a timer makes none, and a menu one of another name than a control.
void WindowCheck::checkNames() {
    std::unordered_map<std::string_view, const Component*> byName;
    for (const auto& control : window->components) {
        const auto [entry, isNew] = byName.try_emplace(control->name, control.get());
        const Component* other = entry->second;
        if (isNew || (hasHandle(*control) && hasHandle(*other))) continue;
        const bool clash = control->type == "menu" && other->type == "menu";
        Diagnostic& shared = report(clash ? MessageId::duplicateControl : MessageId::sharedName,
                                    nameRange(*control), {control->name});
        shared.notes.push_back({nameRange(*other), "the other one"});
    }
}

void WindowCheck::checkMenus() {
    const Component* shown = nullptr;
    for (const auto& control : window->components)
        if (control->type == "menu") shown = control.get();
    for (const auto& control : window->components) {
        if (control->type != "menu") continue;
        checkMenuEntries(*control);
        if (control.get() != shown && control->name != shown->name)
            report(MessageId::replacedMenu, nameRange(*control), {control->name, shown->name});
    }
}

void WindowCheck::checkMenuEntries(const Component& menu) {
    for (const std::string& entry : readControlSettings(menu).items) {
        if (entry == "|") continue;
        menuKeys.insert(std::string(menu.name) + "_" + entry);
        if (!canBeTarget(entry)) report(MessageId::menuEntryName, nameRange(menu), {entry});
    }
}

} // namespace Orvane
