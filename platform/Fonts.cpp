#include "platform/Fonts.h"

#include "platform/RuntimeError.h"

#include <windows.h>

FontOwner MakeFont(const ControlFont& description, int dpi)
{
    NONCLIENTMETRICSW metrics{};
    metrics.cbSize = sizeof metrics;
    SystemParametersInfoForDpi(SPI_GETNONCLIENTMETRICS, sizeof metrics, &metrics, 0, static_cast<UINT>(dpi));
    LOGFONTW font = metrics.lfMessageFont;
    if (!description.face.empty()) {
        font.lfCharSet = DEFAULT_CHARSET;
        font.lfPitchAndFamily = DEFAULT_PITCH | FF_DONTCARE;
        lstrcpynW(font.lfFaceName, description.face.c_str(), LF_FACESIZE);
    }
    if (description.points != 0) {
        font.lfHeight = -MulDiv(description.points, dpi, 72);
        font.lfWidth = 0;
    }
    if (description.bold) {
        font.lfWeight = FW_BOLD;
    }
    font.lfUnderline = description.underline ? TRUE : FALSE;
    FontOwner made(CreateFontIndirectW(&font));
    if (!made) {
        throw RuntimeError(ErrorNumber::OutOfMemory);
    }
    return made;
}
