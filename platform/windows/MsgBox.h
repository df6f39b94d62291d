#pragma once

#include <string>

enum class MsgBoxButtons { OkOnly, YesNo, YesNoCancel };
enum class MsgBoxIcon { None, Critical };
enum class MsgBoxResult { Ok, Cancel, Yes, No };

/// Shows a message box over the current form, with the title of the application, and returns the answer. defaultButton
/// counts from 1. Esc and the close button of a Yes/No/Cancel box return Cancel, and so does a box that cannot be
/// shown. Throws CommandEnded if the form is destroyed while the box is open.
MsgBoxResult MsgBox(const std::wstring& text, MsgBoxButtons buttons = MsgBoxButtons::OkOnly,
                    MsgBoxIcon icon = MsgBoxIcon::None, int defaultButton = 1);

/// Shows a message box with an OK button and this title, which may be empty.
void MsgBoxTitled(const std::wstring& text, const std::wstring& title);

/// Shows a message box with an OK button. Allocates no memory.
void ShowMessage(const wchar_t* text) noexcept;
