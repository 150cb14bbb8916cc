// What compiles and misleads in the structure of a window: its properties, controls, menus and the
// handlers of its events.
//
// Warnings but for what the compiler surely refuses: two controls of one name, and colours that
// are none.
//
//     std::vector<Diagnostic> found;
//     checkWindow(source, libraries, found);
#pragma once

#include "check/library_functions.h"
#include "check/name_uses.h"
#include "check/parsed_source.h"

#include <set>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace Orvane {

// Appends to `found`, in no particular order. The source must have parsed without an error.
void checkWindow(const ParsedSource& source, const LibraryFunctions& libraries,
                 std::vector<Diagnostic>& found);

// ---- The parts of the check ----

// What they share; lives for one check.
class WindowCheck {
public:
    WindowCheck(const ParsedSource& source_, const LibraryFunctions& libraries_,
                std::vector<Diagnostic>& found_);

    void checkProperties(); // window_properties.cpp
    void checkControls();   // window_controls.cpp
    void checkLayout();     // window_layout.cpp
    void checkEvents();     // window_events.cpp

private:
    // The name of something, and its place as a token.
    struct NamedToken {
        std::string_view name;
        std::size_t token;
    };

    // ---- Properties ----
    void checkPropertiesOf(std::string_view kind, const Component* control,
                           const List<Property>& properties);
    void checkProperty(std::string_view kind, const Component* control, const Property& property);
    void checkUnknownProperty(std::string_view kind, const Property& property);
    void checkValue(const Property& property);
    void checkEffect(std::string_view kind, const Property& property);
    void checkColours(const Component& control);
    void checkColour(const Component& control, std::string_view property, std::string_view colour);
    void checkContents(const Component& control);
    void checkSlider(const Component& control);
    void checkPicture(const Component& control);
    void reportProperty(MessageId id, const Property& property,
                        std::initializer_list<std::string_view> arguments);

    // ---- Controls ----
    void checkKind(const Component& control);
    void checkNames();
    void checkMenus();
    void checkMenuEntries(const Component& menu);
    void checkOtherWindows();

    // ---- Layout ----
    bool isFixed(const Component& control) const;
    void checkSize(const Component& control);
    void checkOutside(const Component& control);
    void checkOverlaps();
    int windowSetting(std::string_view name, int otherwise) const;

    // ---- Events ----
    void checkEventsOf(const Component& control);
    void checkHandler(const EventHandler& handler);
    void checkEvent(std::string_view kind, std::string_view name, NamedToken event);
    void checkOwnEvent(std::string_view kind, NamedToken event, bool isRun);
    std::vector<NamedToken> eventsOf(const Component& control) const;
    bool mayBeRun(std::string_view kind, std::string_view name) const;
    std::string targetHint(std::string_view name) const;

    // ---- Shared ----
    bool takesTarget(std::string_view function) const;
    ByteRange nameRange(const Component& control) const; // of its name
    Diagnostic& report(MessageId id, ByteRange range,
                       std::initializer_list<std::string_view> arguments);

    const ParsedSource& source;
    const LibraryFunctions& libraries;
    const Vorla* window;
    const NameUses uses;
    std::vector<Diagnostic>& found;
    bool bridged = false;                        // whether the library's events are switched on
    std::set<std::string, std::less<>> menuKeys; // NAME_ENTRY of every menu entry
    std::unordered_map<std::string_view, const Component*> controls;
};

} // namespace Orvane
