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

/// Remembers the form over which a message box or a dialog opens.
class AskingForm {
public:
    AskingForm() noexcept;

    /// Call it after the box or dialog. Throws CommandEnded if the form has been destroyed.
    void EndCommandIfGone() const;

private:
    WindowHandle form_;
};
