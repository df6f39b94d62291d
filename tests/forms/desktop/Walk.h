#pragma once

#include "platform/Form.h"

#include <functional>
#include <string>
#include <vector>

#include "tests/forms/ProgramUnderTest.h"

/// A look at every window of the program with a ruler: is there room for each text, does anything lie over anything
/// else, does anything stick out?

/// What is wrong in a window as it stands, one sentence each; nothing when all is well.
std::vector<std::string> WhatIsWrongIn(const Form& form);

/// The message font of a new Windows, whatever this machine's is: nine points, a line of four thirds of that. A layout
/// that has room for it has room for the smaller one too.
void UseMessageFontOfWindows();
/// The same in another size, as a user chooses who wants larger text.
void UseMessageFont(int points);

/// Opens each dialog in turn, over the main window, and looks at it with every page that it has. Title: the dialog's
/// name, for the report.
void InEveryDialog(ModalUser& user, const std::function<void(Form& form, const char* name)>& look);
