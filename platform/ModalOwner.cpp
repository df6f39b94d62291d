#include "platform/ModalOwner.h"

#include <windows.h>

namespace {
WindowHandle topForm = nullptr;
}

WindowHandle ModalOwner() noexcept
{
    // A box that is open already owns the next one: two boxes of one form could be answered in any order, and the first
    // answer would give the form back to the user under the other.
    HWND popup = topForm != nullptr ? GetLastActivePopup(topForm) : nullptr;
    return popup != nullptr && IsWindowVisible(popup) != FALSE ? popup : topForm;
}

void SetModalOwner(WindowHandle window) noexcept
{
    topForm = window;
}
