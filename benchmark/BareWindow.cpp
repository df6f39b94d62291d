// The minimum cost of a program with a window: one empty window and a message loop.
#ifdef WITH_CONTROLS
#include "benchmark/BareControls.h"
#endif

#include <windows.h>

namespace {

LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
{
    if (message == WM_DESTROY) {
        PostQuitMessage(0);
        return 0;
    }
    return DefWindowProcW(window, message, wParam, lParam);
}

} // namespace

int main()
{
    WNDCLASSW bare{};
    bare.lpfnWndProc = Procedure;
    bare.hInstance = GetModuleHandleW(nullptr);
    bare.hCursor = LoadCursorW(nullptr, IDC_ARROW);
    bare.hbrBackground = reinterpret_cast<HBRUSH>(static_cast<INT_PTR>(COLOR_BTNFACE + 1));
    bare.lpszClassName = L"Bare";
    RegisterClassW(&bare);
    HWND window = CreateWindowExW(0, bare.lpszClassName, L"Bare", WS_OVERLAPPEDWINDOW, CW_USEDEFAULT, CW_USEDEFAULT,
                                  720, 500, nullptr, nullptr, bare.hInstance, nullptr);
#ifdef WITH_CONTROLS
    AddControls(window);
#endif
    ShowWindow(window, SW_SHOWNORMAL);
    MSG message{};
    while (GetMessageW(&message, nullptr, 0, 0) > 0) {
        TranslateMessage(&message);
        DispatchMessageW(&message);
    }
    return 0;
}
