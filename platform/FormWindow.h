#pragma once

#include "platform/Form.h"

#include <windows.h>

// The window side of a form, for the sources of this room: how its frame is made and how messages reach it.

/// Makes the bare window of a form into window, without controls and hidden; returns the DPI that it is on.
int CreateFormFrame(Form& form, HWND owner, WindowOwner& window);

RECT WorkAreaAround(HWND window);

/// The outer size in pixels that the layout gives to the window, at most the work area's. A dialog always has it.
SIZE FrameSize(HWND window, const FormLayout& layout, int layoutDpi, int monitorDpi);

/// Gives the focus to the control that the Tab key reaches first.
void FocusFirstInTabOrder(HWND window);

/// Lets the loop that waits for a message look again whether it is still wanted: a form may be closed by a message that
/// another program sends, which the wait handles without ending.
void WakeMessageLoop() noexcept;

/// Waits for one message and handles it, with the dialog keys of the form it is for. False: the program is to end.
bool HandleNextMessage();
