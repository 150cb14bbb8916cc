#include "codegen/code_generator.h"

#include "codegen/control_kinds.h"
#include "codegen/text_block.h"

#include <algorithm>

namespace Orvane {

namespace {

struct WindowSettings {
    std::string title = "Orvane Application";
    int width = 800;
    int height = 600;
};

// Read as the properties of a control are: literals only, the last of a name wins.
WindowSettings readWindowSettings(const Vorla& window) {
    WindowSettings settings;
    for (const Property& property : window.properties) {
        const Value* value = literalOf(property);
        if (!value) continue;
        if (property.name == "title") settings.title = value->asString();
        if (property.name == "width") settings.width = value->asInt();
        if (property.name == "height") settings.height = value->asInt();
    }
    return settings;
}

bool hasHandlers(const Vorla& window, const Script* script) {
    if (script && !script->handlers.empty()) return true;
    return std::any_of(window.components.begin(), window.components.end(),
                       [](const auto& component) { return !component->events.empty(); });
}

bool isColourProperty(const Property& property) {
    return property.name == "color" || property.name == "background";
}

} // namespace

// main.cpp behind its header lines. Child controls of containers are not created.
void CodeGenerator::generateVorla(const Vorla* window, const Script* script) {
    if (!window) return;
    const Observation observation(*this, out, window);
    generateHandles(*window);
    generateCreateControls(*window);
    generateWindowProcedure(*window, script);
    generateEntryPoint(*window);
}

void CodeGenerator::generateHandles(const Vorla& window) {
    addLine("HWND hMainWnd;");
    for (const auto& component : window.components)
        if (hasHandle(*component)) {
            const Observation observation(*this, out, component.get());
            addFilledLine(*this, "HWND h_$name$;", {{"name", component->name}});
        }
    addLine("");
}

void CodeGenerator::generateCreateControls(const Vorla& window) {
    addLine("void CreateControls(HWND hWnd) {");
    {
        const IndentScope body(indentLevel);
        addLine("hMainWnd = hWnd;");
        for (const auto& component : window.components) generateComponent(component.get());
    }
    addLine("}");
    addLine("");
}

// The brushes stay until the window goes; there is one per control.
void CodeGenerator::generateWindowProcedure(const Vorla& window, const Script* script) {
    const bool coloured = hasCustomColors(&window);
    addLine("LRESULT CALLBACK WndProc(HWND hWnd, UINT msg, WPARAM wParam, LPARAM lParam) {");
    if (coloured) addLine("    static std::map<int, HBRUSH> brushCache;");
    addBlock(*this, R"(
    switch (msg) {
        case WM_CREATE:
            CreateControls(hWnd);
            return 0;
        case WM_COMMAND:
)");
    if (hasHandlers(window, script))
        generateEventDispatcher(&window, script);
    else
        addLine("            break;");
    if (coloured) generateColourCase(window);
    addLine("        case WM_DESTROY: {");
    if (coloured)
        addBlock(*this, R"(
            for (auto& pair : brushCache) {
                DeleteObject(pair.second);
            }
            brushCache.clear();
)");
    addBlock(*this, R"(
            PostQuitMessage(0);
            return 0;
        }
    }
    return DefWindowProcA(hWnd, msg, wParam, lParam);
}
)");
}

void CodeGenerator::generateColourCase(const Vorla& window) {
    addBlock(*this, R"(
        case WM_CTLCOLORSTATIC: {
            HDC hdc = (HDC)wParam;
            HWND hCtrl = (HWND)lParam;
            int id = GetDlgCtrlID(hCtrl);
            COLORREF textColor = RGB(0, 0, 0);
            COLORREF bgColor = RGB(255, 255, 255);
            HBRUSH hBrush = NULL;
            switch (id) {
)");
    for (const Component* control : controlsWithChildren(&window)) generateControlColours(*control);
    addBlock(*this, R"(
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
)");
}

// The case of one control; nothing for a control without a readable colour. A control that sets the
// colour of its text only gets a brush of the default background.
void CodeGenerator::generateControlColours(const Component& control) {
    const ControlSettings settings = readControlSettings(control);
    if (settings.colour.empty() && settings.background.empty()) return;
    addFilledLine(*this, "                case $id$: {", {{"id", getControlId(control.name)}});
    if (!settings.colour.empty())
        addFilledLine(*this, "                    textColor = $colour$;",
                      {{"colour", colorToRGB(settings.colour)}});
    if (!settings.background.empty())
        addFilledLine(*this, "                    bgColor = $colour$;",
                      {{"colour", colorToRGB(settings.background)}});
    addBlock(*this, R"(
                    auto it = brushCache.find(id);
                    if (it != brushCache.end()) {
                        hBrush = it->second;
                    } else {
                        hBrush = CreateSolidBrush(bgColor);
                        brushCache[id] = hBrush;
                    }
                    break;
                }
)");
}

// The names of the font and of the window class are fixed; the font is never deleted.
void CodeGenerator::generateEntryPoint(const Vorla& window) {
    const WindowSettings settings = readWindowSettings(window);
    addBlock(*this, R"(
int WINAPI WinMain(HINSTANCE hInstance, HINSTANCE hPrevInstance,
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
    wc.lpszClassName = "$name$Class";
    RegisterClassExA(&wc);
    HWND hWnd = CreateWindowExA(0, "$name$Class", utf8_to_acp("$title$").c_str(),
        WS_OVERLAPPEDWINDOW, CW_USEDEFAULT, CW_USEDEFAULT,
        $width$, $height$,
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
)",
             {{"name", window.name},
              {"title", escapeString(settings.title)},
              {"width", settings.width},
              {"height", settings.height}});
}

// Any value counts here, also one that is no literal and gives no colour.
bool CodeGenerator::hasCustomColors(const Vorla* window) {
    const auto controls = controlsWithChildren(window);
    return std::any_of(controls.begin(), controls.end(), [](const Component* control) {
        return std::any_of(control->properties.begin(), control->properties.end(),
                           isColourProperty);
    });
}

} // namespace Orvane
