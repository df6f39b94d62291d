#pragma once

struct HICON__;

/// Shows the wait cursor during its lifetime.
class WaitCursor {
public:
    WaitCursor();
    ~WaitCursor();
    WaitCursor(const WaitCursor&) = delete;
    WaitCursor& operator=(const WaitCursor&) = delete;

private:
    HICON__* before_;
};
