#pragma once

#include "platform/windows/Form.h"

#include <functional>
#include <string>
#include <vector>

#include "tests/forms/ProgramUnderTest.h"

/// Measures every window of the program: finds clipped texts, and controls that overlap others or the edge of their
/// form.

/// The findings in a window, one sentence for each.
std::vector<std::string> FindingsIn(const Form& form);

/// Sets the default message font of Windows: nine points, with lines of four thirds of that. A layout with room for it
/// also has room for a smaller font.
void UseMessageFontOfWindows();
/// The same in another size.
void UseMessageFont(int points);

/// Opens each dialog over the main window and calls look for each of its pages. title: the name of the dialog.
void InEveryDialog(ModalUser& user, const std::function<void(Form& form, const char* name)>& look);
