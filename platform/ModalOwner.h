#pragma once

#include "platform/Handles.h"

/// The window that a message box or a system dialog belongs to: the form on top of the others, or the box that is open
/// over it, as when the system asks for the end of the session meanwhile; none before the first form is shown. Forms
/// tell it as they come and go, so that boxes need not know forms.
WindowHandle ModalOwner() noexcept;

void SetModalOwner(WindowHandle window) noexcept;
