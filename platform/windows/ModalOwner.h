#pragma once

#include "platform/windows/Handles.h"

/// The owner for a message box or a common dialog: the visible form that was loaded last, or the box that is open over
/// it, because WM_QUERYENDSESSION may arrive while a box is open. Null before the first form is shown. Form sets it, so
/// that message boxes do not depend on forms.
WindowHandle ModalOwner() noexcept;

void SetModalOwner(WindowHandle window) noexcept;

/// Thrown when the form is destroyed while a message box or dialog waits for an answer, as at the end of the user's
/// session. It ends the command. It does not derive from std::exception, and Guarded shows no message for it.
struct CommandEnded {};

/// Makes GetMessage return, so that the message loop checks its condition: a message that another program sends may
/// close a form within GetMessage.
void WakeMessageLoop() noexcept;

/// Remembers the form over which a message box or a dialog opens.
class AskingForm {
public:
    AskingForm() noexcept;
    /// If the form has been destroyed, wakes the message loop of the box under this one, so that it ends too.
    ~AskingForm();
    AskingForm(const AskingForm&) = delete;
    AskingForm& operator=(const AskingForm&) = delete;

    /// Call it after the box or dialog. Throws CommandEnded if the form has been destroyed.
    void EndCommandIfGone() const;

private:
    bool IsGone() const noexcept;

    WindowHandle form_;
};

/// Calls a function that may show a message or dialog of Windows over the form, and returns its result. Throws
/// CommandEnded if the form has been destroyed meanwhile.
template <class Function>
auto AskOverForm(const Function& function)
{
    const AskingForm asking;
    const auto result = function();
    asking.EndCommandIfGone();
    return result;
}
