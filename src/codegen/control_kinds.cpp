#include "codegen/control_kinds.h"

#include "codegen/control_fill.h"

#include <algorithm>

namespace Orvane {

namespace {

// Style bits of the Win32 headers.
constexpr unsigned long wsChild = 0x40000000;
constexpr unsigned long wsVisible = 0x10000000;
constexpr unsigned long wsBorder = 0x00800000;
constexpr unsigned long wsVScroll = 0x00200000;
constexpr unsigned long wsTabStop = 0x00010000;
constexpr unsigned long bsAutoCheckBox = 0x3;
constexpr unsigned long bsGroupBox = 0x7;
constexpr unsigned long bsAutoRadioButton = 0x9;
constexpr unsigned long ssOwnerDraw = 0xD;
constexpr unsigned long ssBitmap = 0xE;
constexpr unsigned long ssCenterImage = 0x200;
constexpr unsigned long esMultiline = 0x4;
constexpr unsigned long esAutoVScroll = 0x40;
constexpr unsigned long esAutoHScroll = 0x80;
constexpr unsigned long esWantReturn = 0x1000;
constexpr unsigned long lbsNotify = 0x1;
constexpr unsigned long lbsSort = 0x2;
constexpr unsigned long lbsStandard = lbsNotify | lbsSort | wsVScroll | wsBorder;
constexpr unsigned long cbsDropdown = 0x2;
constexpr unsigned long cbsHasStrings = 0x200;
constexpr unsigned long tbsAutoTicks = 0x1;
constexpr unsigned long pbsSmooth = 0x1;
constexpr unsigned long sbarsSizeGrip = 0x100;
constexpr unsigned long tcsMultiline = 0x200;

constexpr unsigned long shown = wsChild | wsVisible;

constexpr auto none = Caption::none;
constexpr auto text = Caption::text;
constexpr auto textOrName = Caption::textOrName;

// clang-format off
constexpr ControlKind kinds[] = {
    // kind       class                 style                                                  caption     further lines
    {"button",   "BUTTON",             shown,                                                 textOrName, nullptr},
    {"checkbox", "BUTTON",             shown | bsAutoCheckBox,                                textOrName, nullptr},
    {"radio",    "BUTTON",             shown | wsTabStop | bsAutoRadioButton,                 textOrName, nullptr},
    {"text",     "STATIC",             shown,                                                 text,       nullptr},
    {"entry",    "EDIT",               shown | wsBorder | esAutoHScroll,                      text,       nullptr},
    {"textarea", "EDIT",               shown | wsVScroll | wsBorder
                                             | esMultiline | esAutoVScroll | esWantReturn,    text,       nullptr},
    {"panel",    "STATIC",             shown,                                                 none,       nullptr},
    {"group",    "BUTTON",             shown | bsGroupBox,                                    text,       nullptr},
    {"listbox",  "LISTBOX",            shown | lbsStandard,                                   none,       fillListbox},
    {"combobox", "COMBOBOX",           shown | wsVScroll | cbsDropdown | cbsHasStrings,       none,       fillCombobox},
    {"slider",   "msctls_trackbar32",  shown | wsTabStop | tbsAutoTicks,                      none,       fillSlider},
    {"progress", "msctls_progress32",  shown | pbsSmooth,                                     none,       fillProgress},
    {"picture",  "STATIC",             shown | ssBitmap | ssCenterImage,                      none,       fillPicture},
    {"menu",     "",                   0,                                                     none,       fillMenu},
    {"status",   "msctls_statusbar32", shown | sbarsSizeGrip,                                 none,       fillStatus},
    {"canvas",   "STATIC",             shown | ssOwnerDraw,                                   none,       fillCanvas},
    {"timer",    "",                   0,                                                     none,       fillTimer},
    {"tab",      "SysTabControl32",    shown | wsBorder | tcsMultiline,                       none,       fillTab},
};
// clang-format on

} // namespace

const ControlKind* findControlKind(std::string_view kind) {
    const auto row = std::find_if(std::begin(kinds), std::end(kinds),
                                  [&](const ControlKind& known) { return known.kind == kind; });
    return row == std::end(kinds) ? nullptr : row;
}

bool hasHandle(const Component& component) {
    return component.type != "menu" && component.type != "timer";
}

bool isContainer(const Component& component) {
    return component.type == "group" || component.type == "panel" || component.type == "canvas";
}

std::vector<const Component*> controlsWithChildren(const Vorla* window) {
    std::vector<const Component*> controls;
    if (!window) return controls;
    for (const auto& component : window->components) {
        controls.push_back(component.get());
        if (!isContainer(*component)) continue;
        for (const auto& child : component->children) controls.push_back(child.get());
    }
    return controls;
}

} // namespace Orvane
