// The window of hello.vorla written by hand for the Windows API.
#include <windows.h>

static LRESULT CALLBACK windowProcedure(HWND window, UINT message, WPARAM word, LPARAM data) {
    switch (message) {
    case WM_CREATE: {
        CreateWindowExA(0, "STATIC", "Hello", WS_CHILD | WS_VISIBLE, 20, 20, 260, 28, window, NULL,
                        NULL, NULL);
        CreateWindowExA(0, "BUTTON", "Greet", WS_CHILD | WS_VISIBLE, 80, 70, 140, 40, window,
                        reinterpret_cast<HMENU>(1), NULL, NULL);
        return 0;
    }
    case WM_COMMAND:
        if (LOWORD(word) == 1) MessageBoxW(NULL, L"Hello", L"Orvane", MB_OK);
        return 0;
    case WM_DESTROY:
        PostQuitMessage(0);
        return 0;
    }
    return DefWindowProcA(window, message, word, data);
}

int WINAPI WinMain(HINSTANCE instance, HINSTANCE, LPSTR, int show) {
    WNDCLASSEXA type = {};
    type.cbSize = sizeof(type);
    type.lpfnWndProc = windowProcedure;
    type.hInstance = instance;
    type.hCursor = LoadCursorA(NULL, reinterpret_cast<LPCSTR>(IDC_ARROW));
    type.hbrBackground = reinterpret_cast<HBRUSH>(COLOR_BTNFACE + 1);
    type.lpszClassName = "BenchHello";
    RegisterClassExA(&type);
    HWND window =
        CreateWindowExA(0, "BenchHello", "Bench Hello", WS_OVERLAPPEDWINDOW, CW_USEDEFAULT,
                        CW_USEDEFAULT, 320, 180, NULL, NULL, instance, NULL);
    ShowWindow(window, show);
    UpdateWindow(window);
    MSG message;
    while (GetMessageA(&message, NULL, 0, 0) > 0) {
        TranslateMessage(&message);
        DispatchMessageA(&message);
    }
    return static_cast<int>(message.wParam);
}
