#include "codegen/control_fill.h"

#include "codegen/code_generator.h"
#include "codegen/text_block.h"

namespace Orvane {

namespace {

// Adds the items and selects the first one; an empty list is told to select it too.
void fillList(CodeGenerator& generator, std::string_view name, std::string_view messages,
              const ControlSettings& settings) {
    for (const std::string& item : settings.items)
        addFilledLine(
            generator,
            R"(SendMessageA(h_$name$, $messages$_ADDSTRING, 0, (LPARAM)utf8_to_acp("$item$").c_str());)",
            {{"name", name}, {"messages", messages}, {"item", CodeGenerator::escapeString(item)}});
    addFilledLine(generator, "SendMessageA(h_$name$, $messages$_SETCURSEL, 0, 0);",
                  {{"name", name}, {"messages", messages}});
}

} // namespace

void fillListbox(CodeGenerator& generator, std::string_view name, const ControlSettings& settings) {
    fillList(generator, name, "LB", settings);
}

void fillCombobox(CodeGenerator& generator, std::string_view name,
                  const ControlSettings& settings) {
    fillList(generator, name, "CB", settings);
}

void fillSlider(CodeGenerator& generator, std::string_view name, const ControlSettings& settings) {
    addBlock(
        generator, R"(
SendMessageA(h_$name$, TBM_SETRANGE, TRUE, MAKELPARAM($min$, $max$));
SendMessageA(h_$name$, TBM_SETPOS, TRUE, $value$);
)",
        {{"name", name}, {"min", settings.min}, {"max", settings.max}, {"value", settings.value}});
}

// A progress bar counts from 0 to 100, whatever `min` and `max` say.
void fillProgress(CodeGenerator& generator, std::string_view name,
                  const ControlSettings& settings) {
    addBlock(generator, R"(
SendMessageA(h_$name$, PBM_SETRANGE, 0, MAKELPARAM(0, 100));
SendMessageA(h_$name$, PBM_SETPOS, $value$, 0);
)",
             {{"name", name}, {"value", settings.value}});
}

// The path goes to the system as it is written, without utf8_to_acp.
void fillPicture(CodeGenerator& generator, std::string_view name, const ControlSettings& settings) {
    if (settings.source.empty()) return;
    addBlock(generator, R"(
HBITMAP hBmp_$name$ = (HBITMAP)LoadImageA(NULL, "$path$", IMAGE_BITMAP, 0, 0, LR_LOADFROMFILE);
if (hBmp_$name$) {
    SendMessageA(h_$name$, STM_SETIMAGE, IMAGE_BITMAP, (LPARAM)hBmp_$name$);
}
)",
             {{"name", name}, {"path", CodeGenerator::escapeString(settings.source)}});
}

// Entry texts, too, go to the system without utf8_to_acp. An entry's key is NAME_ENTRY, so that a
// handler `on NAME_ENTRY.click` reaches it.
void fillMenu(CodeGenerator& generator, std::string_view name, const ControlSettings& settings) {
    addBlock(generator, R"(
// Menu: $name$
HMENU hMenu_$name$ = CreateMenu();
)",
             {{"name", name}});
    for (const std::string& item : settings.items) {
        if (item == "|")
            addFilledLine(generator, "AppendMenuA(hMenu_$name$, MF_SEPARATOR, 0, NULL);",
                          {{"name", name}});
        else
            addFilledLine(generator, R"(AppendMenuA(hMenu_$name$, MF_STRING, $id$, "$item$");)",
                          {{"name", name},
                           {"id", generator.getControlId(std::string(name) + "_" + item)},
                           {"item", CodeGenerator::escapeString(item)}});
    }
    addFilledLine(generator, "SetMenu(hMainWnd, hMenu_$name$);", {{"name", name}});
}

void fillStatus(CodeGenerator& generator, std::string_view name, const ControlSettings& settings) {
    if (settings.text.empty()) return;
    addFilledLine(
        generator,
        R"(SendMessageA(h_$name$, SB_SETTEXT, 0, (LPARAM)utf8_to_acp("$text$").c_str());)",
        {{"name", name}, {"text", CodeGenerator::escapeString(settings.text)}});
}

void fillCanvas(CodeGenerator& generator, std::string_view name, const ControlSettings&) {
    addFilledLine(generator, "// Canvas: $name$ requires WM_DRAWITEM handling", {{"name", name}});
}

void fillTimer(CodeGenerator& generator, std::string_view name, const ControlSettings&) {
    addFilledLine(generator, "// Timer: $name$ (use SetTimer in script)", {{"name", name}});
}

void fillTab(CodeGenerator& generator, std::string_view name, const ControlSettings& settings) {
    int page = 0;
    for (const std::string& item : settings.items) {
        addBlock(generator, R"(
TCITEMA tci_$name$_$page$ = {0};
tci_$name$_$page$.mask = TCIF_TEXT;
tci_$name$_$page$.pszText = utf8_to_acp("$item$").c_str();
SendMessageA(h_$name$, TCM_INSERTITEMA, $page$, (LPARAM)&tci_$name$_$page$);
)",
                 {{"name", name}, {"page", page}, {"item", CodeGenerator::escapeString(item)}});
        ++page;
    }
}

} // namespace Orvane
