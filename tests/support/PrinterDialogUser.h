#pragma once

#include <windows.h>

#include <atomic>
#include <functional>
#include <string>
#include <thread>

/// Answers the next printer dialog of the thread that creates this object.
class PrinterDialogUser {
public:
    /// Types the number of copies and presses OK.
    static PrinterDialogUser ToPrint(int copies);
    /// Chooses another printer than the one that is offered, then presses OK.
    static PrinterDialogUser ToPrintOn(const std::wstring& printer);
    static PrinterDialogUser ToCancel();
    /// Chooses printing to a file. Windows and Wine 10 ask for its name when the job begins, and get this one; Wine 8
    /// does not ask.
    static PrinterDialogUser ToPrintToFile(const std::wstring& path);
    /// Does something else while the dialog is open, then presses OK.
    static PrinterDialogUser ToPrintAfter(std::function<void()> action);

    ~PrinterDialogUser();
    PrinterDialogUser(const PrinterDialogUser&) = delete;
    PrinterDialogUser& operator=(const PrinterDialogUser&) = delete;

    /// Waits until the dialog has been opened and closed.
    void WaitUntilGone();

    /// The owner of the dialog, after it has been closed.
    HWND DialogOwner() const noexcept { return owner_; }
    /// Whether "Selection" could have been chosen.
    bool CouldChooseSelection() const noexcept { return selection_; }

private:
    explicit PrinterDialogUser(std::function<void(HWND)> answer, std::wstring filePath = {});
    HWND WaitForDialog() const;
    void AnswerFileDialog() const;

    const DWORD watchedThread_ = GetCurrentThreadId();
    std::function<void(HWND)> answer_;
    std::wstring filePath_; ///< empty: does not print to a file
    std::atomic<bool> printed_ = false;
    HWND owner_ = nullptr;
    bool selection_ = false;
    std::thread thread_;
};
