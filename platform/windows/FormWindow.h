#pragma once

#include "platform/windows/Form.h"

#include <windows.h>

// The window of a form and its messages. For the sources of this room.

/// Creates the hidden window of a form, without controls, and returns its DPI.
int CreateFormFrame(Form& form, HWND owner, WindowOwner& window);

RECT WorkAreaAround(HWND window);

/// The outer size in pixels by the layout, at most that of the work area. A dialog always has this size.
SIZE FrameSize(HWND window, const FormLayout& layout, int layoutDpi, int monitorDpi);

/// Sets the focus to a control of the window, and selects the text of a text box.
void FocusAsTabDoes(HWND window, HWND control);

/// Sets the focus to the first control in the tab order.
void FocusFirstInTabOrder(HWND window);

/// Removes mouse and keyboard messages from the queue.
void ForgetInput() noexcept;

/// Waits for a message and handles it, with the dialog keys of its form. WM_QUIT closes the first form, as the user
/// would.
void HandleNextMessage() noexcept;
