#include "platform/windows/WaitCursor.h"

#include <windows.h>

WaitCursor::WaitCursor() : before_(SetCursor(LoadCursorW(nullptr, IDC_WAIT))) {}

WaitCursor::~WaitCursor()
{
    SetCursor(before_);
}
