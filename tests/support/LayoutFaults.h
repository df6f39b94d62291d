#pragma once

#include "platform/Form.h"

#include <string>
#include <vector>

/// What is wrong with how a form lies on the screen now, in words: controls that reach out of it, lie over one another,
/// or are too small for their text and a tenth more. Only what the user sees counts. Call it on the forms' thread.
std::vector<std::string> LayoutFaults(const Form& form);
