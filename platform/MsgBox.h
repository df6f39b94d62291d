#pragma once

#include <string>

enum class MsgBoxButtons { OkOnly, YesNo, YesNoCancel };
enum class MsgBoxIcon { None, Critical };
enum class MsgBoxResult { Ok, Cancel, Yes, No };

/// Shows a message box over the form in use and waits for the answer. The title is the application's.
/// defaultButton counts from 1, from the left. Closing a Yes/No/Cancel box by other means answers Cancel.
MsgBoxResult MsgBox(const std::wstring& text, MsgBoxButtons buttons = MsgBoxButtons::OkOnly,
                    MsgBoxIcon icon = MsgBoxIcon::None, int defaultButton = 1);

/// The same, an OK button only, under a title of its own, which may be empty.
void MsgBoxTitled(const std::wstring& text, const std::wstring& title);
