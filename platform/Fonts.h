#pragma once

#include "platform/Control.h"

/// The font for a control's text on a surface of dpi dots per inch. What the description leaves open is taken from the
/// platform's message font, which follows the user's settings.
FontOwner MakeFont(const ControlFont& description, int dpi);
