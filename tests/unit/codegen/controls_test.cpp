#include "generated_program.h"

#include "codegen/control_kinds.h"

#include <stdexcept>

using namespace Orvane;

namespace {

class Controls : public GeneratedProgram {
protected:
    // The lines of the controls of a window, as they stand at level 0.
    std::string linesOf(std::string_view components) {
        const AST& program = parse("vorla Main {" + std::string(components) + "}");
        mainStream.clear();
        for (const auto& component : program.window->components)
            generator.generateComponent(component.get());
        return mainText();
    }
    // The creation alone, of a control named c with ID 1001.
    static std::string creation(std::string_view className, std::string_view text,
                                std::string_view style, std::string_view place = "0, 0, 100, 30") {
        std::string lines = "// Control: c\n"
                            "h_c = CreateWindowExA(\n";
        lines += "    0, \"" + std::string(className) + "\", utf8_to_acp(\"" + std::string(text) +
                 "\").c_str(),\n";
        lines += "    " + std::string(style) + ", " + std::string(place) + ",\n";
        return lines + "    hMainWnd, (HMENU)1001, hInst, NULL);\n\n";
    }
};

// ---- Kinds ----

TEST_F(Controls, Button) {
    EXPECT_EQ(linesOf("button c { text = \"OK\" }"),
              "// Control: c\n"
              "h_c = CreateWindowExA(\n"
              "    0, \"BUTTON\", utf8_to_acp(\"OK\").c_str(),\n"
              "    1342177280, 0, 0, 100, 30,\n"
              "    hMainWnd, (HMENU)1001, hInst, NULL);\n"
              "\n");
}

TEST_F(Controls, ButtonWithoutTextShowsItsName) {
    EXPECT_EQ(linesOf("button c { }"), creation("BUTTON", "c", "1342177280"));
    EXPECT_EQ(linesOf("button c { text = \"\" }"), creation("BUTTON", "c", "1342177280"));
}

TEST_F(Controls, Checkbox) {
    EXPECT_EQ(linesOf("checkbox c { text = \"On\" }"), creation("BUTTON", "On", "1342177283"));
    EXPECT_EQ(linesOf("checkbox c { }"), creation("BUTTON", "c", "1342177283"));
}

TEST_F(Controls, CheckboxAlwaysStartsUnchecked) {
    EXPECT_EQ(linesOf("checkbox c { checked = true }"), creation("BUTTON", "c", "1342177283"));
}

TEST_F(Controls, Radio) {
    EXPECT_EQ(linesOf("radio c { text = \"A\" group = \"g\" }"),
              creation("BUTTON", "A", "1342242825"));
    EXPECT_EQ(linesOf("radio c { }"), creation("BUTTON", "c", "1342242825"));
}

TEST_F(Controls, Text) {
    EXPECT_EQ(linesOf("text c { text = \"Hi\" }"), creation("STATIC", "Hi", "1342177280"));
    EXPECT_EQ(linesOf("text c { }"), creation("STATIC", "", "1342177280"));
}

TEST_F(Controls, Entry) {
    EXPECT_EQ(linesOf("entry c { text = \"Hi\" }"), creation("EDIT", "Hi", "1350566016"));
    EXPECT_EQ(linesOf("entry c { }"), creation("EDIT", "", "1350566016"));
}

TEST_F(Controls, Textarea) {
    EXPECT_EQ(linesOf("textarea c { text = \"Hi\" }"), creation("EDIT", "Hi", "1352667204"));
}

TEST_F(Controls, PanelShowsNoText) {
    EXPECT_EQ(linesOf("panel c { text = \"Hi\" }"), creation("STATIC", "", "1342177280"));
}

TEST_F(Controls, Group) {
    EXPECT_EQ(linesOf("group c { text = \"Hi\" }"), creation("BUTTON", "Hi", "1342177287"));
    EXPECT_EQ(linesOf("group c { }"), creation("BUTTON", "", "1342177287"));
}

TEST_F(Controls, Listbox) {
    EXPECT_EQ(linesOf("listbox c { text = \"no\" items = {\"a\", \"say \\\"b\\\"\"} }"),
              creation("LISTBOX", "", "1352663043") +
                  "SendMessageA(h_c, LB_ADDSTRING, 0, (LPARAM)utf8_to_acp(\"a\").c_str());\n"
                  "SendMessageA(h_c, LB_ADDSTRING, 0, (LPARAM)utf8_to_acp(\"say "
                  "\\\"b\\\"\").c_str());\n"
                  "SendMessageA(h_c, LB_SETCURSEL, 0, 0);\n");
}

TEST_F(Controls, ListboxWithoutItemsStillSelectsTheFirst) {
    EXPECT_EQ(linesOf("listbox c { }"),
              creation("LISTBOX", "", "1352663043") + "SendMessageA(h_c, LB_SETCURSEL, 0, 0);\n");
}

TEST_F(Controls, Combobox) {
    EXPECT_EQ(linesOf("combobox c { items = [\"a\", \"b\"] }"),
              creation("COMBOBOX", "", "1344274946") +
                  "SendMessageA(h_c, CB_ADDSTRING, 0, (LPARAM)utf8_to_acp(\"a\").c_str());\n"
                  "SendMessageA(h_c, CB_ADDSTRING, 0, (LPARAM)utf8_to_acp(\"b\").c_str());\n"
                  "SendMessageA(h_c, CB_SETCURSEL, 0, 0);\n");
}

TEST_F(Controls, Slider) {
    EXPECT_EQ(linesOf("slider c { min = 5 max = 50 value = 20 }"),
              creation("msctls_trackbar32", "", "1342242817") +
                  "SendMessageA(h_c, TBM_SETRANGE, TRUE, MAKELPARAM(5, 50));\n"
                  "SendMessageA(h_c, TBM_SETPOS, TRUE, 20);\n");
    EXPECT_EQ(linesOf("slider c { }"),
              creation("msctls_trackbar32", "", "1342242817") +
                  "SendMessageA(h_c, TBM_SETRANGE, TRUE, MAKELPARAM(0, 100));\n"
                  "SendMessageA(h_c, TBM_SETPOS, TRUE, 0);\n");
}

TEST_F(Controls, ProgressCountsToAHundredWhateverItsRange) {
    EXPECT_EQ(linesOf("progress c { min = 5 max = 50 value = 20 }"),
              creation("msctls_progress32", "", "1342177281") +
                  "SendMessageA(h_c, PBM_SETRANGE, 0, MAKELPARAM(0, 100));\n"
                  "SendMessageA(h_c, PBM_SETPOS, 20, 0);\n");
}

TEST_F(Controls, PictureLoadsItsFileWithoutConversion) {
    EXPECT_EQ(linesOf("picture c { src = \"a\\\\b.bmp\" }"),
              creation("STATIC", "", "1342177806") +
                  "HBITMAP hBmp_c = (HBITMAP)LoadImageA(NULL, \"a\\\\b.bmp\", IMAGE_BITMAP, 0, 0, "
                  "LR_LOADFROMFILE);\n"
                  "if (hBmp_c) {\n"
                  "    SendMessageA(h_c, STM_SETIMAGE, IMAGE_BITMAP, (LPARAM)hBmp_c);\n"
                  "}\n");
}

TEST_F(Controls, PictureWithoutFileLoadsNothing) {
    EXPECT_EQ(linesOf("picture c { }"), creation("STATIC", "", "1342177806"));
    EXPECT_EQ(linesOf("picture c { src = \"\" }"), creation("STATIC", "", "1342177806"));
}

// `file` is a word of the language, so that no source text gives this menu.
TEST_F(Controls, Menu) {
    Arena arena;
    ExprList items(arena);
    for (const char* item : {"Open", "|", "Say \"Quit\""})
        items.push_back(arena.make<LiteralExpr>(Value(item)));
    auto menu = arena.make<Component>(arena);
    menu->type = "menu";
    menu->name = "file";
    menu->properties.push_back({"items", arena.make<ArrayExpr>(std::move(items))});
    generator.generateComponent(menu.get());
    EXPECT_EQ(mainText(), "// Menu: file\n"
                          "HMENU hMenu_file = CreateMenu();\n"
                          "AppendMenuA(hMenu_file, MF_STRING, 1002, \"Open\");\n"
                          "AppendMenuA(hMenu_file, MF_SEPARATOR, 0, NULL);\n"
                          "AppendMenuA(hMenu_file, MF_STRING, 1003, \"Say \\\"Quit\\\"\");\n"
                          "SetMenu(hMainWnd, hMenu_file);\n");
    EXPECT_EQ(generator.getControlId("file"), 1001);
    EXPECT_EQ(generator.getControlId("file_Open"), 1002);
    EXPECT_EQ(generator.getControlId("file_Say \"Quit\""), 1003);
}

TEST_F(Controls, MenuWithoutItems) {
    EXPECT_EQ(linesOf("menu bar { text = \"File\" menu = \"x\" }"),
              "// Menu: bar\n"
              "HMENU hMenu_bar = CreateMenu();\n"
              "SetMenu(hMainWnd, hMenu_bar);\n");
}

TEST_F(Controls, Status) {
    EXPECT_EQ(linesOf("status c { text = \"Ready\\n\" }"),
              creation("msctls_statusbar32", "", "1342177536") +
                  "SendMessageA(h_c, SB_SETTEXT, 0, (LPARAM)utf8_to_acp(\"Ready\\n\").c_str());\n");
    EXPECT_EQ(linesOf("status c { }"), creation("msctls_statusbar32", "", "1342177536"));
    EXPECT_EQ(linesOf("status c { text = \"\" }"),
              creation("msctls_statusbar32", "", "1342177536"));
}

TEST_F(Controls, Canvas) {
    EXPECT_EQ(linesOf("canvas c { }"), creation("STATIC", "", "1342177293") +
                                           "// Canvas: c requires WM_DRAWITEM handling\n");
}

TEST_F(Controls, TimerHasNoWindow) {
    EXPECT_EQ(linesOf("timer tick { }"), "// Timer: tick (use SetTimer in script)\n");
}

TEST_F(Controls, TabHasOnePagePerItem) {
    EXPECT_EQ(linesOf("tab c { items = {\"One\", \"Two\"} }"),
              creation("SysTabControl32", "", "1350566400") +
                  "TCITEMA tci_c_0 = {0};\n"
                  "tci_c_0.mask = TCIF_TEXT;\n"
                  "tci_c_0.pszText = utf8_to_acp(\"One\").c_str();\n"
                  "SendMessageA(h_c, TCM_INSERTITEMA, 0, (LPARAM)&tci_c_0);\n"
                  "TCITEMA tci_c_1 = {0};\n"
                  "tci_c_1.mask = TCIF_TEXT;\n"
                  "tci_c_1.pszText = utf8_to_acp(\"Two\").c_str();\n"
                  "SendMessageA(h_c, TCM_INSERTITEMA, 1, (LPARAM)&tci_c_1);\n");
    EXPECT_EQ(linesOf("tab c { }"), creation("SysTabControl32", "", "1350566400"));
}

TEST_F(Controls, OfUnknownKindBecomeAComment) {
    EXPECT_EQ(linesOf("gauge g { text = \"x\" }"), "// Unknown control: g (gauge)\n");
    EXPECT_EQ(linesOf("Button b { }"), "// Unknown control: b (Button)\n");
}

TEST_F(Controls, ANullControlWritesNothing) {
    generator.generateComponent(nullptr);
    EXPECT_EQ(mainText(), "");
    EXPECT_EQ(generator.getControlId("first"), 1001);
}

TEST_F(Controls, LinesCarryTheIndentation) {
    indentLevel = 1;
    EXPECT_EQ(linesOf("text c { }"), "    // Control: c\n"
                                     "    h_c = CreateWindowExA(\n"
                                     "        0, \"STATIC\", utf8_to_acp(\"\").c_str(),\n"
                                     "        1342177280, 0, 0, 100, 30,\n"
                                     "        hMainWnd, (HMENU)1001, hInst, NULL);\n"
                                     "    \n");
}

// ---- Styles ----

TEST(ControlStyles, AreTheSystemsFlags) {
    constexpr unsigned long child = 0x40000000, visible = 0x10000000, border = 0x800000;
    constexpr unsigned long vscroll = 0x200000, tabstop = 0x10000;
    const std::vector<std::pair<std::string, std::vector<unsigned long>>> rows = {
        {"button", {}},
        {"checkbox", {3}},
        {"radio", {tabstop, 9}},
        {"text", {}},
        {"entry", {border, 0x80}},
        {"textarea", {vscroll, border, 4, 0x40, 0x1000}},
        {"panel", {}},
        {"group", {7}},
        {"listbox", {1, 2, vscroll, border}},
        {"combobox", {vscroll, 2, 0x200}},
        {"slider", {tabstop, 1}},
        {"progress", {1}},
        {"picture", {0xE, 0x200}},
        {"status", {0x100}},
        {"canvas", {0xD}},
        {"tab", {border, 0x200}},
    };
    for (const auto& [kind, flags] : rows) {
        unsigned long style = child | visible;
        for (const unsigned long flag : flags) style |= flag;
        ASSERT_NE(findControlKind(kind), nullptr) << kind;
        EXPECT_EQ(findControlKind(kind)->style, style) << kind;
    }
}

// ---- Properties ----

TEST_F(Controls, ArePlacedByTheirProperties) {
    EXPECT_EQ(linesOf("text c { x = 1 y = 2 width = 3 height = 4 }"),
              creation("STATIC", "", "1342177280", "1, 2, 3, 4"));
}

TEST_F(Controls, ValuesThatAreNoLiteralsAreSkipped) {
    EXPECT_EQ(linesOf("text c { x = -5 y = 1 + 2 width = w height = f(3) text = a.b }"),
              creation("STATIC", "", "1342177280"));
}

TEST_F(Controls, LiteralsOfAnotherKindReadAsZeroAndEmpty) {
    EXPECT_EQ(linesOf("text c { width = 2.5 height = \"7\" text = 5 }"),
              creation("STATIC", "", "1342177280", "0, 0, 0, 0"));
}

TEST_F(Controls, UnknownPropertiesAreIgnored) {
    EXPECT_EQ(linesOf("text c { widths = 7 Text = \"a\" name = \"b\" }"),
              creation("STATIC", "", "1342177280"));
}

TEST_F(Controls, TheLastOfTwoEqualPropertiesWins) {
    EXPECT_EQ(linesOf("text c { x = 1 text = \"a\" x = 2 text = \"b\" }"),
              creation("STATIC", "b", "1342177280", "2, 0, 100, 30"));
    EXPECT_TRUE(contains(linesOf("menu m { items = {\"a\"} items = {\"b\"} }"), "\"b\""));
    EXPECT_FALSE(contains(mainText(), "\"a\""));
}

TEST_F(Controls, TextInUtf8PassesThrough) {
    EXPECT_EQ(linesOf("text c { text = \"\xC3\xA4\xE4\xBD\xA0\" }"),
              creation("STATIC", "\xC3\xA4\xE4\xBD\xA0", "1342177280"));
}

TEST_F(Controls, ADollarSignIsNoGap) {
    EXPECT_EQ(linesOf("text c { text = \"$name$\" }"), creation("STATIC", "$name$", "1342177280"));
}

// ---- Lists ----

class ItemLists : public GeneratedProgram {
protected:
    std::vector<std::string> itemsOf(std::string_view list) {
        const AST& program =
            parse("vorla Main { listbox c { items = " + std::string(list) + " } }");
        return readControlSettings(*program.window->components.front()).items;
    }
    using Texts = std::vector<std::string>;
};

TEST_F(ItemLists, AreWrittenInBracesOrBrackets) {
    EXPECT_EQ(itemsOf("{\"a\", \"b\"}"), (Texts{"a", "b"}));
    EXPECT_EQ(itemsOf("[\"a\", \"b\"]"), (Texts{"a", "b"}));
    EXPECT_EQ(itemsOf("[\"a\"]"), Texts{"a"});
    EXPECT_EQ(itemsOf("{}"), Texts{});
    EXPECT_EQ(itemsOf("{\"a\", \"b\", \"c\"}"), (Texts{"a", "b", "c"}));
    EXPECT_EQ(itemsOf("[\"a\", \"b\", \"c\", \"d\"]"), (Texts{"a", "b", "c", "d"}));
}

TEST_F(ItemLists, OfThreeInBracketsCountAsThree) {
    EXPECT_EQ(itemsOf("[\"a\", \"b\", \"c\"]"), (Texts{"a", "b", "c"}));
    EXPECT_EQ(itemsOf("[2024, 2025, 2026]"), (Texts{"2024", "2025", "2026"}));
}

TEST_F(ItemLists, TakeOtherLiteralsAsTheirText) {
    EXPECT_EQ(itemsOf("{1, 2.5, true, 'x', #FF0000, null}"),
              (Texts{"1", "2.500000", "true", "x", "#FF0000", "null"}));
}

TEST_F(ItemLists, WithAnythingButLiteralsAreSkippedWhole) {
    EXPECT_EQ(itemsOf("{\"a\", b}"), Texts{});
    EXPECT_EQ(itemsOf("{\"a\", -1}"), Texts{});
    EXPECT_EQ(itemsOf("[\"a\", \"b\", c]"), Texts{});
    EXPECT_EQ(itemsOf("{{\"a\"}}"), Texts{});
    EXPECT_EQ(itemsOf("names"), Texts{});
}

TEST_F(ItemLists, AreNoRanges) { EXPECT_EQ(itemsOf("[1..3]"), Texts{}); }

TEST_F(ItemLists, ASkippedListLeavesTheOneBefore) {
    EXPECT_EQ(itemsOf("{\"a\"} items = {b}"), Texts{"a"});
}

TEST_F(ItemLists, ASingleTextIsNoList) { EXPECT_EQ(itemsOf("\"a\""), Texts{}); }

// ---- IDs ----

TEST_F(Controls, TakeIdsFrom1001InTheOrderOfTheirCreation) {
    linesOf("timer t { } gauge g { } menu m { items = {\"x\"} } button b { }");
    EXPECT_EQ(generator.getControlId("t"), 1001);
    EXPECT_EQ(generator.getControlId("g"), 1002);
    EXPECT_EQ(generator.getControlId("m"), 1003);
    EXPECT_EQ(generator.getControlId("m_x"), 1004);
    EXPECT_EQ(generator.getControlId("b"), 1005);
    EXPECT_EQ(generator.getControlId("new"), 1006);
    EXPECT_EQ(generator.getControlId("new"), 1006);
}

// ---- Radio groups ----

TEST_F(Controls, ARadioGroupKnowsItsLastButton) {
    linesOf("radio a { group = \"g\" } radio b { group = \"g\" } radio c { group = \"h\" }"
            "radio d { } radio e { group = \"\" } button f { group = \"g\" }");
    EXPECT_EQ(generator.lastRadioOf("g"), "b");
    EXPECT_EQ(generator.lastRadioOf("h"), "c");
    EXPECT_EQ(generator.lastRadioOf(""), "");
    EXPECT_EQ(generator.lastRadioOf("i"), "");
}

// ---- Colours ----

TEST(ColourText, OfSixDigitsBecomesRgb) {
    EXPECT_EQ(CodeGenerator::colorToRGB("#FF8000"), "RGB(255, 128, 0)");
    EXPECT_EQ(CodeGenerator::colorToRGB("#0a0B0c"), "RGB(10, 11, 12)");
}

TEST(ColourText, OtherTextsStayAsTheyAre) {
    for (const char* text : {"red", "#FFF", "#FF80000", "", "#", "FF80000", "RGB(1, 2, 3)"})
        EXPECT_EQ(CodeGenerator::colorToRGB(text), text);
}

TEST(ColourText, BadDigitsThrow) {
    for (const char* text :
         {"#GG0000", "#12345G", "#1G0000", "#-10000", "#+10000", "# 10000", "#0x1000", "#FFFF F"})
        EXPECT_THROW(CodeGenerator::colorToRGB(text), std::invalid_argument) << text;
}

// ---- Kinds in use ----

uptr<Component> makeControl(Arena& arena, std::string_view type) {
    auto control = arena.make<Component>(arena);
    control->type = type;
    control->name = "c";
    return control;
}

TEST(ControlTypes, AreThoseOfTheWindowAndOfDirectChildrenOfContainers) {
    Arena arena;
    auto window = arena.make<Vorla>(arena);
    const std::pair<const char*, const char*> parents[] = {
        {"group", "entry"}, {"panel", "slider"}, {"canvas", "text"}, {"tab", "progress"}};
    for (const auto& [parent, child] : parents) {
        auto control = makeControl(arena, parent);
        auto inner = makeControl(arena, child);
        inner->children.push_back(makeControl(arena, "listbox"));
        control->children.push_back(std::move(inner));
        window->components.push_back(std::move(control));
    }
    auto outer = makeControl(arena, "panel");
    auto nested = makeControl(arena, "group");
    nested->children.push_back(makeControl(arena, "picture"));
    outer->children.push_back(std::move(nested));
    window->components.push_back(std::move(outer));

    NameSet types;
    CodeGenerator::collectControlTypes(window.get(), types);
    EXPECT_EQ(types, (NameSet{"canvas", "entry", "group", "panel", "slider", "tab", "text"}));
}

TEST(ControlTypes, AreNoneWithoutWindow) {
    NameSet types;
    CodeGenerator::collectControlTypes(nullptr, types);
    EXPECT_EQ(types, NameSet{});
}

} // namespace
