#pragma once

#include "forms/print/frmProgress.h"
#include "platform/windows/WaitCursor.h"

#include <chrono>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>

/// Shows that the program is printing: by the wait cursor at first, and in a longer print of more than one page by a
/// window with the page number and a Cancel button. The forms under it are disabled.
class PrintProgress {
public:
    /// `daysOfCopy` is the number of days in each copy. `cancel` discards the document.
    PrintProgress(Form& over, int daysOfCopy, int copies, std::function<void()> cancel);
    ~PrintProgress();
    PrintProgress(const PrintProgress&) = delete;
    PrintProgress& operator=(const PrintProgress&) = delete;

    /// Call it after each day of the report. Updates the window and handles its messages, at most five times a second.
    /// The document may have been cancelled when it returns.
    void DayIsPrinted(std::int16_t page);

private:
    using Clock = std::chrono::steady_clock;

    void OpenWindow();

    Form& over_;
    int daysOfCopy_;
    int days_;
    int daysPrinted_ = 0;
    std::function<void()> cancel_;
    std::optional<WaitCursor> busy_;
    std::shared_ptr<frmProgress> window_;
    Clock::time_point nextLook_;
};
