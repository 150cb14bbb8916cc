// The handlers of the window's events: whether what they wait for ever comes.

#include "check/nearest_name.h"
#include "check/window_check.h"
#include "check/window_facts.h"
#include "codegen/control_kinds.h"

#include <algorithm>

namespace Orvane {

namespace {

constexpr std::string_view bridgeHint =
    "Call enableEvents() of the library win32 once, anywhere in the program.";

// What to write in place of an event that a kind of control never sends.
std::string hintFor(std::string_view kind, std::string_view event) {
    if (sendsEvent(kind, event, true)) return std::string(bridgeHint);
    std::string sent;
    for (const std::string_view name : eventNames())
        if (sendsEvent(kind, name, true))
            sent += (sent.empty() ? "'" : " or '") + std::string(name) + "'";
    if (!sent.empty()) return "A " + describeKind(kind) + " sends " + sent + ".";
    if (kind == "menu")
        return "Write a handler for one of its entries in a script: on MENU_ENTRY.click.";
    return "A " + describeKind(kind) +
           " sends nothing by itself; use a button, or startTimer and the like.";
}

std::string hintForOwn(std::string_view event) {
    std::string name(event);
    if (name.starts_with("on") && isKnownEvent(event.substr(2))) name = name.substr(2);
    const std::string_view meant = isKnownEvent(name) ? name : nearestName(event, eventNames());
    if (!meant.empty()) return "Write '" + std::string(meant) + "' if you mean that.";
    return "The events are 'click', 'change', 'select', 'dblclick' and 'scroll'.";
}

} // namespace

void WindowCheck::checkEvents() {
    if (window)
        for (const auto& control : window->components)
            if (!control->events.empty()) checkEventsOf(*control);
    if (!source.tree().script) return;
    for (const auto& handler : source.tree().script->handlers) checkHandler(*handler);
}

// `on NAME` directly in the body of the control.
std::vector<WindowCheck::NamedToken> WindowCheck::eventsOf(const Component& control) const {
    std::vector<NamedToken> events;
    const auto range = source.tokensOf(&control);
    const auto& tokens = source.tokens();
    int depth = 0;
    for (std::size_t at = range->first; at < range->last; ++at) {
        const TokenType type = tokens[at].type;
        if (type == TokenType::LeftBrace) ++depth;
        if (type == TokenType::RightBrace) --depth;
        if (depth == 1 && type == TokenType::OnKeyword)
            events.push_back({tokens[at + 1].text(), at + 1});
    }
    return events;
}

void WindowCheck::checkEventsOf(const Component& control) {
    std::unordered_map<std::string_view, std::size_t> earlier;
    for (const NamedToken& event : eventsOf(control)) {
        const auto [entry, isNew] = earlier.try_emplace(event.name, event.token);
        if (!isNew) {
            Diagnostic& repeated = report(MessageId::repeatedEvent, source.tokenRange(event.token),
                                          {control.name, event.name});
            repeated.notes.push_back({source.tokenRange(entry->second), "the earlier one"});
        }
        if (findControlKind(control.type)) checkEvent(control.type, control.name, event);
    }
}

// [ "on" ] TARGET "." EVENT
void WindowCheck::checkHandler(const EventHandler& handler) {
    const auto range = source.tokensOf(&handler);
    if (!range) return;
    const bool hasOn = source.tokens()[range->first].type == TokenType::OnKeyword;
    const std::size_t target = range->first + (hasOn ? 1 : 0);
    const NamedToken event{handler.eventName, target + 2};
    const auto control = controls.find(handler.targetName);
    if (control != controls.end()) {
        if (findControlKind(control->second->type))
            checkEvent(control->second->type, handler.targetName, event);
    } else if (!menuKeys.contains(handler.targetName)) {
        report(MessageId::unknownTarget, source.tokenRange(target),
               {handler.targetName, targetHint(handler.targetName)});
    } else if (handler.eventName != "click" && isKnownEvent(handler.eventName)) {
        report(MessageId::silentEvent, source.tokenRange(event.token),
               {handler.eventName, "menu entry", "A menu entry sends 'click'."});
    }
}

std::string WindowCheck::targetHint(std::string_view name) const {
    if (!window) return "The program has no window.";
    std::vector<std::string_view> known(menuKeys.begin(), menuKeys.end());
    for (const auto& control : window->components) known.push_back(control->name);
    for (const std::string_view key : menuKeys)
        if (key.size() > name.size() && key.ends_with(name) &&
            key[key.size() - name.size() - 1] == '_')
            return "Write '" + std::string(key) + "' for the menu entry.";
    const std::string_view meant = nearestName(name, known);
    if (!meant.empty()) return "Write '" + std::string(meant) + "' if you mean that.";
    return "Write the name of a control, or MENU_ENTRY for an entry of a menu.";
}

// Whether a function of the library or of the program may run the handlers of the control. Those of
// a timer are run by its number, which no name shows.
bool WindowCheck::mayBeRun(std::string_view kind, std::string_view name) const {
    const auto runs = [&](std::string_view function) { return takesTarget(function); };
    const auto& receivers = uses.receiversOf(name);
    if (std::any_of(receivers.begin(), receivers.end(), runs)) return true;
    if (kind != "timer") return false;
    const auto& called = uses.calledFunctions();
    return std::any_of(called.begin(), called.end(), [&](std::string_view function) {
        return !libraries.find(function).empty() && takesTarget(function);
    });
}

void WindowCheck::checkEvent(std::string_view kind, std::string_view name, NamedToken event) {
    const bool isRun = mayBeRun(kind, name);
    if (!isKnownEvent(event.name)) return checkOwnEvent(kind, event, isRun);
    if (sendsEvent(kind, event.name, bridged) || (isRun && event.name == "click")) return;
    const ByteRange range = source.tokenRange(event.token);
    const std::string_view moment = oddMoment(kind, event.name, bridged);
    const std::string hint = hintFor(kind, event.name);
    if (moment.empty())
        report(MessageId::silentEvent, range, {event.name, describeKind(kind), hint});
    else
        report(MessageId::misleadingEvent, range, {event.name, describeKind(kind), moment, hint});
}

// A name of one's own is for the start of the program, on a control that sends nothing else.
void WindowCheck::checkOwnEvent(std::string_view kind, NamedToken event, bool isRun) {
    const ByteRange range = source.tokenRange(event.token);
    if (sendsAnything(kind, bridged)) {
        report(MessageId::unknownEvent, range,
               {event.name, describeKind(kind), hintForOwn(event.name)});
        return;
    }
    const bool reachable = kind != "menu" && kind != "timer" && bridged;
    if (!reachable && !isRun)
        report(MessageId::silentEvent, range,
               {event.name, describeKind(kind),
                kind == "menu" ? hintFor(kind, event.name) : std::string(bridgeHint)});
}

} // namespace Orvane
