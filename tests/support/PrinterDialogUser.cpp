#include "tests/support/PrinterDialogUser.h"

#include <dlgs.h>

#include <chrono>
#include <cstdio>
#include <string>
#include <utility>

namespace {

/// Calls condition until it is true; false when that takes too long.
template <typename Condition>
bool WaitUntil(Condition condition)
{
    const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(30);
    while (!condition()) {
        if (std::chrono::steady_clock::now() > end) {
            return false;
        }
        std::this_thread::sleep_for(std::chrono::milliseconds(10));
    }
    return true;
}

/// The dialog among the windows of a thread: it has the system's list of printers.
HWND FindDialog(DWORD thread)
{
    HWND found = nullptr;
    EnumThreadWindows(
        thread,
        [](HWND window, LPARAM result) -> BOOL {
            if (IsWindowVisible(window) == FALSE || GetDlgItem(window, cmb4) == nullptr) {
                return TRUE;
            }
            *reinterpret_cast<HWND*>(result) = window;
            return FALSE;
        },
        reinterpret_cast<LPARAM>(&found));
    return found;
}

} // namespace

PrinterDialogUser::PrinterDialogUser(std::function<void(HWND)> answer) : answer_(std::move(answer))
{
    thread_ = std::thread([this] {
        HWND dialog = WaitForDialog();
        if (dialog == nullptr) {
            std::fputs("no printer dialog came\n", stderr);
            return;
        }
        owner_ = GetWindow(dialog, GW_OWNER);
        selection_ = IsWindowEnabled(GetDlgItem(dialog, rad2)) != FALSE;
        answer_(dialog);
        WaitUntil([dialog] { return IsWindow(dialog) == FALSE; });
    });
}

PrinterDialogUser::~PrinterDialogUser()
{
    WaitUntilGone();
}

void PrinterDialogUser::WaitUntilGone()
{
    if (thread_.joinable()) {
        thread_.join();
    }
}

PrinterDialogUser PrinterDialogUser::WhoPrints(int copies)
{
    return PrinterDialogUser([copies](HWND dialog) {
        const std::wstring text = std::to_wstring(copies);
        SendDlgItemMessageW(dialog, edt3, WM_SETTEXT, 0, reinterpret_cast<LPARAM>(text.c_str()));
        PostMessageW(dialog, WM_COMMAND, IDOK, 0);
    });
}

PrinterDialogUser PrinterDialogUser::WhoPrintsOn(const std::wstring& printer)
{
    return PrinterDialogUser([printer](HWND dialog) {
        HWND printers = GetDlgItem(dialog, cmb4);
        SendMessageW(printers, CB_SELECTSTRING, static_cast<WPARAM>(-1), reinterpret_cast<LPARAM>(printer.c_str()));
        SendMessageW(dialog, WM_COMMAND, MAKEWPARAM(cmb4, CBN_SELCHANGE), reinterpret_cast<LPARAM>(printers));
        PostMessageW(dialog, WM_COMMAND, IDOK, 0);
    });
}

PrinterDialogUser PrinterDialogUser::WhoCancels()
{
    return PrinterDialogUser([](HWND dialog) { PostMessageW(dialog, WM_COMMAND, IDCANCEL, 0); });
}

PrinterDialogUser PrinterDialogUser::WhoPrintsAfter(std::function<void()> action)
{
    return PrinterDialogUser([action = std::move(action)](HWND dialog) {
        action();
        PostMessageW(dialog, WM_COMMAND, IDOK, 0);
    });
}

PrinterDialogUser PrinterDialogUser::WhoPrintsIntoAFile()
{
    return PrinterDialogUser([](HWND dialog) {
        CheckDlgButton(dialog, chx1, BST_CHECKED);
        PostMessageW(dialog, WM_COMMAND, IDOK, 0);
    });
}

HWND PrinterDialogUser::WaitForDialog() const
{
    HWND dialog = nullptr;
    WaitUntil([&] { return (dialog = FindDialog(watchedThread_)) != nullptr; });
    return dialog;
}
