#include "platform/windows/ModalOwner.h"

#include <windows.h>

namespace {
WindowHandle topForm = nullptr;
}

WindowHandle ModalOwner() noexcept
{
    // An open box owns the next one. Two boxes with one owner could be closed in any order, and closing the first one
    // would enable the owner under the second.
    HWND popup = topForm != nullptr ? GetLastActivePopup(topForm) : nullptr;
    return popup != nullptr && IsWindowVisible(popup) != FALSE ? popup : topForm;
}

void SetModalOwner(WindowHandle window) noexcept
{
    topForm = window;
}

void WakeMessageLoop() noexcept
{
    PostThreadMessageW(GetCurrentThreadId(), WM_NULL, 0, 0);
}

AskingForm::AskingForm() noexcept : form_(topForm) {}

AskingForm::~AskingForm()
{
    if (IsGone()) {
        WakeMessageLoop();
    }
}

void AskingForm::EndCommandIfGone() const
{
    if (IsGone()) {
        throw CommandEnded();
    }
}

bool AskingForm::IsGone() const noexcept
{
    return form_ != nullptr && IsWindow(form_) == FALSE;
}
