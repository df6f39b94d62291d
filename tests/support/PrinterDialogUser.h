#pragma once

#include <windows.h>

#include <functional>
#include <string>
#include <thread>

/// The user of the system's printer dialog. The first one that the thread of this object's making opens is answered.
class PrinterDialogUser {
public:
    /// Types the number of copies and presses OK.
    static PrinterDialogUser WhoPrints(int copies);
    /// Chooses another printer than the one that is offered, then presses OK.
    static PrinterDialogUser WhoPrintsOn(const std::wstring& printer);
    static PrinterDialogUser WhoCancels();
    /// Asks for a file instead of paper.
    static PrinterDialogUser WhoPrintsIntoAFile();
    /// Does something else while the dialog is open, then presses OK.
    static PrinterDialogUser WhoPrintsAfter(std::function<void()> action);

    ~PrinterDialogUser();
    PrinterDialogUser(const PrinterDialogUser&) = delete;
    PrinterDialogUser& operator=(const PrinterDialogUser&) = delete;

    /// Waits until the dialog was there and is gone.
    void WaitUntilGone();

    /// The window that the dialog belonged to; known once it is gone.
    HWND DialogOwner() const noexcept { return owner_; }
    /// Whether "Selection" could have been chosen.
    bool CouldChooseSelection() const noexcept { return selection_; }

private:
    explicit PrinterDialogUser(std::function<void(HWND)> answer);
    HWND WaitForDialog() const;

    const DWORD watchedThread_ = GetCurrentThreadId();
    std::function<void(HWND)> answer_;
    HWND owner_ = nullptr;
    bool selection_ = false;
    std::thread thread_;
};
