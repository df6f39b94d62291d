#pragma once

struct HICON__;

/// Shows the hourglass as long as it lives, while the program is too busy to answer.
class WaitCursor {
public:
    WaitCursor() noexcept;
    ~WaitCursor();
    WaitCursor(const WaitCursor&) = delete;
    WaitCursor& operator=(const WaitCursor&) = delete;

private:
    HICON__* before_;
};
