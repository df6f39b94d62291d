#pragma once

#include <windows.h>

/// Creates the controls of the main window on a bare window, with the visible content only and without handlers.
void AddControls(HWND window);
