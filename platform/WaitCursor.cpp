#include "platform/WaitCursor.h"

#include <windows.h>

namespace {

/// Handles what the system has for the windows, such as painting, but nothing that the user does.
void SettleWindows()
{
    MSG message{};
    while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE | PM_QS_PAINT | PM_QS_SENDMESSAGE) != FALSE) {
        DispatchMessageW(&message);
    }
}

} // namespace

WaitCursor::WaitCursor() : before_(SetCursor(LoadCursorW(nullptr, IDC_WAIT)))
{
    SettleWindows();
}

WaitCursor::~WaitCursor()
{
    SettleWindows();
    SetCursor(before_);
}
