#pragma once

#include <windows.h>

/// Puts the controls of the program's main window on a bare one, each filled as much as the eye sees, with nothing
/// behind them.
void AddControls(HWND window);
