#include "benchmark/BareControls.h"

#include <commctrl.h>

#include <array>

namespace {

HWND Add(HWND window, const wchar_t* kind, DWORD style, const RECT& place)
{
    return CreateWindowExW(0, kind, L"Bare", style | WS_CHILD | WS_VISIBLE, place.left, place.top, place.right,
                           place.bottom, window, nullptr, nullptr, nullptr);
}

} // namespace

void AddControls(HWND window)
{
    constexpr int shown = 31;
    constexpr INITCOMMONCONTROLSEX used{sizeof used, ICC_TREEVIEW_CLASSES | ICC_BAR_CLASSES};
    InitCommonControlsEx(&used);
    HWND tree = Add(window, WC_TREEVIEWW, WS_BORDER | TVS_HASBUTTONS | TVS_HASLINES, {5, 5, 115, 390});
    HWND list = Add(window, L"LISTBOX", WS_BORDER | WS_VSCROLL, {130, 20, 565, 355});
    for (int i = 0; i < shown; ++i) {
        TVINSERTSTRUCTW node{};
        node.item.mask = TVIF_TEXT;
        std::array year{L'2', L'0', L'0', L'4', L'\0'};
        node.item.pszText = year.data();
        SendMessageW(tree, TVM_INSERTITEMW, 0, reinterpret_cast<LPARAM>(&node));
        SendMessageW(list, LB_ADDSTRING, 0, reinterpret_cast<LPARAM>(L"2004-02-12   12.5 Office - customer visit"));
    }
    for (int i = 0; i < 4; ++i) {
        Add(window, L"STATIC", 0, {130 + i * 80, 2, 75, 17});
    }
    for (int i = 0; i < 3; ++i) {
        Add(window, L"BUTTON", 0, {130 + i * 80, 395, 75, 21});
    }
    Add(window, STATUSCLASSNAMEW, SBARS_SIZEGRIP, {});
}
