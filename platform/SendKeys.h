#pragma once

#include <string_view>

/// Types keys into the control that has the focus, as if the user did: "{HOME}" and "{END}" name keys, "+" holds Shift
/// for the next key. Does nothing while another program has the keyboard. Throws InvalidProcedureCall for other keys.
void SendKeys(std::wstring_view keys);
