// The control kinds of the language and the Win32 windows they become.
//
//     const ControlKind* kind = findControlKind("slider");
//     kind->className;   // "msctls_trackbar32"
#pragma once

#include "codegen/control_settings.h"

#include <string_view>

namespace Orvane {

class CodeGenerator;

// What a control's window is created with as its text.
enum class Caption : unsigned char { none, text, textOrName };

// Writes the lines behind the creation of a control: its entries, its range and the like.
using FillControl = void (*)(CodeGenerator& generator, std::string_view name,
                             const ControlSettings& settings);

struct ControlKind {
    std::string_view kind;
    std::string_view className; // empty: the control has no window of its own
    unsigned long style;
    Caption caption;
    FillControl fill; // null: nothing more to write
};

// Null for a kind that is not known. The comparison is exact.
const ControlKind* findControlKind(std::string_view kind);

// Whether the program keeps a handle `h_NAME` for the control; so for unknown kinds too.
bool hasHandle(const Component& component);

// "group", "panel" and "canvas".
bool isContainer(const Component& component);

// Every control of the window and, behind a container, its direct children; nothing deeper.
std::vector<const Component*> controlsWithChildren(const Vorla* window);

} // namespace Orvane
