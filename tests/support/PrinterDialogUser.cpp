#include "tests/support/PrinterDialogUser.h"

#include <dlgs.h>

#include <chrono>
#include <cstdio>
#include <string>
#include <utility>

namespace {

/// Calls condition until it is true; returns false after a time limit.
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

/// The visible window of a thread that has this control.
HWND FindDialog(DWORD thread, int control)
{
    struct Search {
        int control;
        HWND found;
    } search{control, nullptr};
    EnumThreadWindows(
        thread,
        [](HWND window, LPARAM parameter) -> BOOL {
            auto& wanted = *reinterpret_cast<Search*>(parameter);
            if (IsWindowVisible(window) != FALSE && GetDlgItem(window, wanted.control) != nullptr) {
                wanted.found = window;
            }
            return wanted.found == nullptr ? TRUE : FALSE;
        },
        reinterpret_cast<LPARAM>(&search));
    return search.found;
}

constexpr int listOfPrinters = cmb4;

} // namespace

PrinterDialogUser::PrinterDialogUser(std::function<void(HWND)> answer, std::wstring filePath)
    : answer_(std::move(answer)), filePath_(std::move(filePath))
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
        if (!filePath_.empty()) {
            AnswerFileDialog();
        }
    });
}

PrinterDialogUser::~PrinterDialogUser()
{
    WaitUntilGone();
}

void PrinterDialogUser::WaitUntilGone()
{
    printed_ = true;
    if (thread_.joinable()) {
        thread_.join();
    }
}

PrinterDialogUser PrinterDialogUser::ToPrint(int copies)
{
    return PrinterDialogUser([copies](HWND dialog) {
        const std::wstring text = std::to_wstring(copies);
        SendDlgItemMessageW(dialog, edt3, WM_SETTEXT, 0, reinterpret_cast<LPARAM>(text.c_str()));
        PostMessageW(dialog, WM_COMMAND, IDOK, 0);
    });
}

PrinterDialogUser PrinterDialogUser::ToPrintOn(const std::wstring& printer)
{
    return PrinterDialogUser([printer](HWND dialog) {
        HWND printers = GetDlgItem(dialog, cmb4);
        SendMessageW(printers, CB_SELECTSTRING, static_cast<WPARAM>(-1), reinterpret_cast<LPARAM>(printer.c_str()));
        SendMessageW(dialog, WM_COMMAND, MAKEWPARAM(cmb4, CBN_SELCHANGE), reinterpret_cast<LPARAM>(printers));
        PostMessageW(dialog, WM_COMMAND, IDOK, 0);
    });
}

PrinterDialogUser PrinterDialogUser::ToCancel()
{
    return PrinterDialogUser([](HWND dialog) { PostMessageW(dialog, WM_COMMAND, IDCANCEL, 0); });
}

PrinterDialogUser PrinterDialogUser::ToPrintAfter(std::function<void()> action)
{
    return PrinterDialogUser([action = std::move(action)](HWND dialog) {
        action();
        PostMessageW(dialog, WM_COMMAND, IDOK, 0);
    });
}

PrinterDialogUser PrinterDialogUser::ToPrintToFile(const std::wstring& path)
{
    return PrinterDialogUser(
        [](HWND dialog) {
            CheckDlgButton(dialog, chx1, BST_CHECKED);
            PostMessageW(dialog, WM_COMMAND, IDOK, 0);
        },
        path);
}

void PrinterDialogUser::AnswerFileDialog() const
{
    HWND dialog = nullptr;
    WaitUntil([&] { return (dialog = FindDialog(watchedThread_, IDOK)) != nullptr || printed_; });
    if (dialog != nullptr) {
        HWND name = FindWindowExW(dialog, nullptr, L"Edit", nullptr);
        SendMessageW(name, WM_SETTEXT, 0, reinterpret_cast<LPARAM>(filePath_.c_str()));
        PostMessageW(dialog, WM_COMMAND, IDOK, 0);
    }
}

HWND PrinterDialogUser::WaitForDialog() const
{
    HWND dialog = nullptr;
    WaitUntil([&] { return (dialog = FindDialog(watchedThread_, listOfPrinters)) != nullptr; });
    return dialog;
}
