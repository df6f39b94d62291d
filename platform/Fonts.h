#pragma once

#include "platform/Control.h"

/// Dots per inch for a layout on a monitor of dpi dots per inch: more than the monitor's where the user's message font
/// is larger than the nine points that layouts are drawn for, so that they grow with the text.
int LayoutDpi(int dpi);

/// The font for a control's text on a monitor of dpi dots per inch. What the description leaves open is taken from the
/// platform's message font, which follows the user's settings; the points that it gives grow with that font.
FontOwner MakeFont(const ControlFont& description, int dpi);
