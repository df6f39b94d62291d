#pragma once

struct HICON__;

/// Shows the hourglass as long as it lives, while the program is too busy to answer. What a closed dialog uncovered is
/// painted first: the user looks at whole windows meanwhile. Window managers that hand the focus on by messages are
/// heard at both ends; what the user types and clicks waits.
class WaitCursor {
public:
    WaitCursor();
    ~WaitCursor();
    WaitCursor(const WaitCursor&) = delete;
    WaitCursor& operator=(const WaitCursor&) = delete;

private:
    HICON__* before_;
};
