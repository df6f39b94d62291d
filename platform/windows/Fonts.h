#pragma once

#include "platform/windows/Control.h"

/// The DPI for a layout on a monitor with this DPI. It is higher than that of the monitor if the message font is larger
/// than nine points, for which the layouts are made.
int LayoutDpi(int dpi);

/// The font of a control on a monitor with this DPI. The message font of Windows fills in what the description leaves
/// open. A size in points is scaled as the layout is.
FontOwner MakeFont(const ControlFont& description, int dpi);
