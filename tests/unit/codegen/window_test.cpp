#include "generated_program.h"

#include <stdexcept>

using namespace Orvane;

namespace {

class Window : public GeneratedProgram {
protected:
    std::string windowText(std::string_view source) {
        const AST& program = parse(source);
        mainStream.clear();
        generator.generateVorla(program.window.get(), program.script.get());
        return mainText();
    }
    std::string dispatcherText(std::string_view source) {
        const AST& program = parse(source);
        mainStream.clear();
        generator.generateEventDispatcher(program.window.get(), program.script.get());
        return mainText();
    }
    // From a line of the window's text to another, the second not included.
    static std::string between(const std::string& text, std::string_view first,
                               std::string_view behind) {
        const auto start = text.find(first);
        const auto end = text.find(behind, start);
        if (start == std::string::npos || end == std::string::npos) return "not found";
        return text.substr(start, end - start);
    }
};

// The entry point of a window Main without properties.
const char* const plainEntryPoint =
    R"(int WINAPI WinMain(HINSTANCE hInstance, HINSTANCE hPrevInstance,
    LPSTR lpCmdLine, int nCmdShow) {
    hInst = hInstance;
    // Enable visual styles
    INITCOMMONCONTROLSEX icex;
    icex.dwSize = sizeof(INITCOMMONCONTROLSEX);
    icex.dwICC = ICC_WIN95_CLASSES | ICC_BAR_CLASSES | ICC_PROGRESS_CLASS | ICC_UPDOWN_CLASS | ICC_TAB_CLASSES;
    InitCommonControlsEx(&icex);
    WNDCLASSEXA wc = { sizeof(WNDCLASSEXA) };
    wc.lpfnWndProc = WndProc;
    wc.hInstance = hInstance;
    wc.hCursor = LoadCursorA(NULL, IDC_ARROW);
    wc.hbrBackground = (HBRUSH)(COLOR_WINDOW + 1);
    wc.lpszClassName = "MainClass";
    RegisterClassExA(&wc);
    HWND hWnd = CreateWindowExA(0, "MainClass", utf8_to_acp("Orvane Application").c_str(),
        WS_OVERLAPPEDWINDOW, CW_USEDEFAULT, CW_USEDEFAULT,
        800, 600,
        NULL, NULL, hInstance, NULL);
    if (!hWnd) return 1;
    // Apply font to main window and all child controls
    HFONT hMainFont = CreateFontA(
        -20, 0, 0, 0, FW_NORMAL, FALSE, FALSE, FALSE,
        DEFAULT_CHARSET, OUT_DEFAULT_PRECIS, CLIP_DEFAULT_PRECIS,
        DEFAULT_QUALITY, DEFAULT_PITCH | FF_DONTCARE, "LXGW WenKai Mono Medium");
    if (hMainFont) {
        SendMessageA(hWnd, WM_SETFONT, (WPARAM)hMainFont, TRUE);
        EnumChildWindows(hWnd, [](HWND hChild, LPARAM lParam) -> BOOL {
            SendMessageA(hChild, WM_SETFONT, (WPARAM)lParam, TRUE);
            return TRUE;
        }, (LPARAM)hMainFont);
    }
    ShowWindow(hWnd, nCmdShow);
    UpdateWindow(hWnd);
    MSG msg;
    while (GetMessageA(&msg, NULL, 0, 0)) {
        TranslateMessage(&msg);
        DispatchMessageA(&msg);
    }
    return (int)msg.wParam;
}
)";

// ---- Whole text ----

TEST_F(Window, WithoutControlsIsTheFixedText) {
    EXPECT_EQ(windowText("vorla Main { }"), std::string(R"(HWND hMainWnd;

void CreateControls(HWND hWnd) {
    hMainWnd = hWnd;
}

LRESULT CALLBACK WndProc(HWND hWnd, UINT msg, WPARAM wParam, LPARAM lParam) {
    switch (msg) {
        case WM_CREATE:
            CreateControls(hWnd);
            return 0;
        case WM_COMMAND:
            break;
        case WM_DESTROY: {
            PostQuitMessage(0);
            return 0;
        }
    }
    return DefWindowProcA(hWnd, msg, wParam, lParam);
}
)") + plainEntryPoint);
}

TEST_F(Window, WithAColouredButtonAndAHandler) {
    EXPECT_EQ(windowText("vorla Main {\n"
                         "  button ok { text = \"OK\" color = #FF8000 on click { go(); } }\n"
                         "  menu main { items = {\"Quit\"} }\n"
                         "  timer tick { }\n"
                         "}"),
              std::string(R"(HWND hMainWnd;
HWND h_ok;

void CreateControls(HWND hWnd) {
    hMainWnd = hWnd;
    // Control: ok
    h_ok = CreateWindowExA(
        0, "BUTTON", utf8_to_acp("OK").c_str(),
        1342177280, 0, 0, 100, 30,
        hMainWnd, (HMENU)1001, hInst, NULL);
)"
                          "    \n"
                          R"(    // Menu: main
    HMENU hMenu_main = CreateMenu();
    AppendMenuA(hMenu_main, MF_STRING, 1003, "Quit");
    SetMenu(hMainWnd, hMenu_main);
    // Timer: tick (use SetTimer in script)
}

LRESULT CALLBACK WndProc(HWND hWnd, UINT msg, WPARAM wParam, LPARAM lParam) {
    static std::map<int, HBRUSH> brushCache;
    switch (msg) {
        case WM_CREATE:
            CreateControls(hWnd);
            return 0;
        case WM_COMMAND:
    switch (LOWORD(wParam)) {
        case 1001: {
    if (HIWORD(wParam) == BN_CLICKED) {
        Value ok = Value::makeHandle((void*)h_ok);
go();
    }
            break;
        }
        default: break;
    }
break;
        case WM_CTLCOLORSTATIC: {
            HDC hdc = (HDC)wParam;
            HWND hCtrl = (HWND)lParam;
            int id = GetDlgCtrlID(hCtrl);
            COLORREF textColor = RGB(0, 0, 0);
            COLORREF bgColor = RGB(255, 255, 255);
            HBRUSH hBrush = NULL;
            switch (id) {
                case 1001: {
                    textColor = RGB(255, 128, 0);
                    auto it = brushCache.find(id);
                    if (it != brushCache.end()) {
                        hBrush = it->second;
                    } else {
                        hBrush = CreateSolidBrush(bgColor);
                        brushCache[id] = hBrush;
                    }
                    break;
                }
                default:
                    break;
            }
            SetTextColor(hdc, textColor);
            SetBkColor(hdc, bgColor);
            if (hBrush) {
                return (LRESULT)hBrush;
            }
            return (LRESULT)GetStockObject(WHITE_BRUSH);
        }
        case WM_DESTROY: {
            for (auto& pair : brushCache) {
                DeleteObject(pair.second);
            }
            brushCache.clear();
            PostQuitMessage(0);
            return 0;
        }
    }
    return DefWindowProcA(hWnd, msg, wParam, lParam);
}
)") + plainEntryPoint);
}

TEST_F(Window, ANullWindowWritesNothing) {
    generator.generateVorla(nullptr, nullptr);
    generator.generateEventDispatcher(nullptr, nullptr);
    EXPECT_EQ(mainText(), "");
    EXPECT_FALSE(CodeGenerator::hasCustomColors(nullptr));
}

// ---- Handles ----

TEST_F(Window, MenusAndTimersHaveNoHandle) {
    const std::string text =
        windowText("vorla Main { button a { } menu m { } timer t { } gauge g { } text b { } }");
    EXPECT_EQ(between(text, "HWND hMainWnd;", "void CreateControls"),
              "HWND hMainWnd;\nHWND h_a;\nHWND h_g;\nHWND h_b;\n\n");
}

TEST_F(Window, ChildrenOfContainersAreNotCreated) {
    AST& program = parse("vorla Main { panel p { } }");
    auto child = program.arena.make<Component>(program.arena);
    child->type = "button";
    child->name = "inner";
    program.window->components.front()->children.push_back(std::move(child));
    generator.generateVorla(program.window.get(), nullptr);
    EXPECT_TRUE(contains(mainText(), "HWND h_p;"));
    EXPECT_FALSE(contains(mainText(), "inner"));
}

// ---- Window properties ----

TEST_F(Window, HasItsTitleAndSize) {
    const std::string text = windowText("vorla Editor { title = \"Say \\\"\xE4\xBD\xA0\\\"\" "
                                        "width = 300; height = 200 }");
    EXPECT_TRUE(contains(text, "    wc.lpszClassName = \"EditorClass\";\n"));
    EXPECT_TRUE(contains(text, "    HWND hWnd = CreateWindowExA(0, \"EditorClass\", "
                               "utf8_to_acp(\"Say \\\"\xE4\xBD\xA0\\\"\").c_str(),\n"
                               "        WS_OVERLAPPEDWINDOW, CW_USEDEFAULT, CW_USEDEFAULT,\n"
                               "        300, 200,\n"));
}

TEST_F(Window, PropertiesThatAreNoLiteralsAreSkipped) {
    const std::string text =
        windowText("vorla Main { title = \"a\" + \"b\" width = -3 height = h depth = 4 }");
    EXPECT_TRUE(contains(text, plainEntryPoint));
}

TEST_F(Window, TheLastOfTwoEqualPropertiesWins) {
    const std::string text = windowText("vorla Main { width = 1 title = \"a\" width = 2 "
                                        "title = \"b\" }");
    EXPECT_TRUE(contains(text, "utf8_to_acp(\"b\")"));
    EXPECT_TRUE(contains(text, "        2, 600,\n"));
}

// ---- Dispatcher ----

TEST_F(Window, WithoutHandlersHasNoSwitchOnTheControl) {
    const std::string text =
        windowText("vorla Main { button a { } } Main.script { void go() { } }");
    EXPECT_EQ(between(text, "        case WM_COMMAND:", "        case WM_DESTROY"),
              "        case WM_COMMAND:\n            break;\n");
    EXPECT_FALSE(contains(text, "LOWORD(wParam)"));
}

TEST_F(Window, HandlersOfOneControlShareACase) {
    EXPECT_EQ(dispatcherText("vorla Main {\n"
                             "  entry name { on change { a(); } on click { b(); } }\n"
                             "}\n"
                             "Main.script { on name.dblclick { c(); } }"),
              R"(    switch (LOWORD(wParam)) {
        case 1001: {
    if (HIWORD(wParam) == EN_CHANGE || HIWORD(wParam) == CBN_SELCHANGE) {
        Value name = Value::makeHandle((void*)h_name);
a();
    }
    if (HIWORD(wParam) == BN_CLICKED) {
        Value name = Value::makeHandle((void*)h_name);
b();
    }
    if (HIWORD(wParam) == BN_DOUBLECLICKED) {
        Value name = Value::makeHandle((void*)h_name);
c();
    }
            break;
        }
        default: break;
    }
break;
)");
}

TEST_F(Window, CasesStandInTheOrderOfTheirIds) {
    const std::string text = windowText("vorla Main { button a { } button b { on click { } } }\n"
                                        "Main.script { on b.change { } on a.click { } }");
    const auto first = text.find("        case 1001: {\n");
    const auto second = text.find("        case 1002: {\n");
    ASSERT_NE(first, std::string::npos);
    ASSERT_NE(second, std::string::npos);
    EXPECT_LT(first, second);
    EXPECT_EQ(countOf(text, "        case 1002: {\n"), 1u);
}

TEST_F(Window, HandlersSeeEveryControlWithAHandle) {
    const std::string text = dispatcherText("vorla Main { button a { on click { } } menu m { } "
                                            "timer t { } gauge g { } listbox b { } }");
    EXPECT_EQ(between(text, "    if (", "            break;"),
              "    if (HIWORD(wParam) == BN_CLICKED) {\n"
              "        Value a = Value::makeHandle((void*)h_a);\n"
              "        Value g = Value::makeHandle((void*)h_g);\n"
              "        Value b = Value::makeHandle((void*)h_b);\n"
              "    }\n");
}

TEST_F(Window, EachEventHasItsCondition) {
    const std::vector<std::pair<std::string, std::string>> rows = {
        {"click", "HIWORD(wParam) == BN_CLICKED"},
        {"dblclick", "HIWORD(wParam) == BN_DOUBLECLICKED"},
        {"change", "HIWORD(wParam) == EN_CHANGE || HIWORD(wParam) == CBN_SELCHANGE"},
        {"select", "HIWORD(wParam) == LBN_SELCHANGE || HIWORD(wParam) == CBN_SELCHANGE"},
        {"scroll", "HIWORD(wParam) == TB_THUMBTRACK || HIWORD(wParam) == TB_ENDTRACK"},
        {"hover", "true"},
        {"Click", "true"},
    };
    for (const auto& [event, condition] : rows) {
        const std::string text = dispatcherText("vorla Main { text t { on " + event + " { } } }");
        EXPECT_TRUE(contains(text, "    if (" + condition + ") {\n")) << event << "\n" << text;
    }
}

TEST_F(Window, AMenuEntryIsReachedByMenuAndEntryName) {
    const std::string text =
        windowText("vorla Main { menu main { items = {\"Open\", \"Quit\"} } }\n"
                   "Main.script { on main_Quit.click { exit(0); } }");
    EXPECT_TRUE(contains(text, "AppendMenuA(hMenu_main, MF_STRING, 1003, \"Quit\");"));
    EXPECT_TRUE(contains(text, "        case 1003: {\n"
                               "    if (HIWORD(wParam) == BN_CLICKED) {\n"
                               "exit(0);\n"
                               "    }\n"
                               "            break;\n"
                               "        }\n"));
}

TEST_F(Window, AHandlerOfNoControlGetsAnIdOfItsOwn) {
    const std::string text = windowText("vorla Main { button a { } }\n"
                                        "Main.script { on ghost.click { } on ghost.change { } }");
    EXPECT_EQ(countOf(text, "        case 1002: {\n"), 1u);
    EXPECT_FALSE(contains(text, "h_ghost"));
}

TEST_F(Window, ALaterBodyOfOneEventReplacesTheEarlier) {
    const std::string text =
        dispatcherText("vorla Main { button a { on click { one(); } on click { two(); } } }");
    EXPECT_FALSE(contains(text, "one();"));
    EXPECT_EQ(countOf(text, "two();"), 1u);
}

TEST_F(Window, DispatcherLeavesTheLevelAsItWas) {
    indentLevel = 2;
    dispatcherText("vorla Main { button a { on click { if (x) { y(); } } } }");
    EXPECT_EQ(indentLevel, 2);
    EXPECT_TRUE(contains(mainText(), "            switch (LOWORD(wParam)) {\n"));
    EXPECT_TRUE(contains(mainText(), "\n        break;\n"));
}

// ---- Colours ----

class Colours : public Window {
protected:
    std::string casesOf(std::string_view components) {
        const std::string text = windowText("vorla Main {" + std::string(components) + "}");
        return between(text, "            switch (id) {\n", "                default:");
    }
};

const char* const brushLines = "                    auto it = brushCache.find(id);\n"
                               "                    if (it != brushCache.end()) {\n"
                               "                        hBrush = it->second;\n"
                               "                    } else {\n"
                               "                        hBrush = CreateSolidBrush(bgColor);\n"
                               "                        brushCache[id] = hBrush;\n"
                               "                    }\n"
                               "                    break;\n"
                               "                }\n";

TEST_F(Colours, ABackgroundAloneSetsTheBrush) {
    EXPECT_EQ(casesOf("text t { background = #00FF00 }"),
              std::string("            switch (id) {\n"
                          "                case 1001: {\n"
                          "                    bgColor = RGB(0, 255, 0);\n") +
                  brushLines);
}

TEST_F(Colours, BothMayBeTextsAndStandInFixedOrder) {
    EXPECT_EQ(casesOf("button b { } text t { background = \"#010203\" color = \"red\" }"),
              std::string("            switch (id) {\n"
                          "                case 1002: {\n"
                          "                    textColor = red;\n"
                          "                    bgColor = RGB(1, 2, 3);\n") +
                  brushLines);
}

TEST_F(Colours, ControlsWithoutReadableColourHaveNoCase) {
    EXPECT_EQ(casesOf("text t { color = c } text u { background = 5 } text v { color = \"\" }"),
              "            switch (id) {\n");
}

TEST_F(Colours, AnyColourPropertyOfTheWindowsControlsCounts) {
    const auto hasColours = [&](std::string_view components) {
        return CodeGenerator::hasCustomColors(
            parse("vorla Main {" + std::string(components) + "}").window.get());
    };
    EXPECT_FALSE(hasColours(""));
    EXPECT_FALSE(hasColours("text t { text = \"color\" colors = 1 }"));
    EXPECT_TRUE(hasColours("text a { } text t { color = #000000 }"));
    EXPECT_TRUE(hasColours("text t { background = f(x) }"));
}

TEST_F(Colours, OfTheWindowItselfDoNotCount) {
    EXPECT_FALSE(
        contains(windowText("vorla Main { color = #000000 background = #FFFFFF }"), "brushCache"));
}

TEST_F(Colours, OfDirectChildrenOfContainersCount) {
    const std::pair<const char*, bool> rows[] = {
        {"group", true}, {"panel", true}, {"canvas", true}, {"tab", false}};
    for (const auto& [kind, counts] : rows) {
        AST& program = parse("vorla Main { " + std::string(kind) + " p { } }");
        Arena& arena = program.arena;
        auto child = arena.make<Component>(arena);
        child->type = "text";
        child->name = "inner";
        child->properties.push_back({"color", arena.make<LiteralExpr>(Value("#000000"))});
        program.window->components.front()->children.push_back(std::move(child));
        EXPECT_EQ(CodeGenerator::hasCustomColors(program.window.get()), counts) << kind;
        generate(program);
        EXPECT_EQ(contains(mainText(), "textColor = RGB(0, 0, 0);\n                    auto it"),
                  counts)
            << kind;
    }
}

TEST_F(Colours, ABadColourEndsTheGeneration) {
    indentLevel = 1;
    EXPECT_THROW(windowText("vorla Main { text t { color = \"#12345G\" } }"),
                 std::invalid_argument);
    EXPECT_EQ(indentLevel, 1);
}

} // namespace
