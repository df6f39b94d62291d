#pragma once

#include "platform/Handles.h"

#include <string>

class Form;

/// Asks the shell to open an address in the user's browser, with form as the parent of whatever the shell shows.
/// Returns false when the shell could not.
bool ShellOpen(const Form& form, const std::string& address);
