#include "platform/WaitCursor.h"

#include <windows.h>

WaitCursor::WaitCursor() noexcept : before_(SetCursor(LoadCursorW(nullptr, IDC_WAIT))) {}

WaitCursor::~WaitCursor()
{
    SetCursor(before_);
}
