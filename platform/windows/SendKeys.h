#pragma once

#include <string_view>

/// Sends keys to the control that has the focus: "{HOME}" and "{END}" are keys, "+" is Shift for the next key. Does
/// nothing while another program is in the foreground. Throws InvalidProcedureCall for other keys.
void SendKeys(std::wstring_view keys);
