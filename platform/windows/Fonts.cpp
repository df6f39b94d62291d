#include "platform/windows/Fonts.h"

#include "platform/system/RuntimeError.h"

#include <windows.h>

#include <cstdlib>

namespace {

LOGFONTW MessageFont(int dpi)
{
    NONCLIENTMETRICSW metrics{};
    metrics.cbSize = sizeof metrics;
    SystemParametersInfoForDpi(SPI_GETNONCLIENTMETRICS, sizeof metrics, &metrics, 0, static_cast<UINT>(dpi));
    return metrics.lfMessageFont;
}

constexpr int pointsPerInch = 72;

} // namespace

int LayoutDpi(int dpi)
{
    constexpr int usualPoints = 9;
    const int usual = MulDiv(usualPoints, dpi, pointsPerInch);
    const int height = std::abs(static_cast<int>(MessageFont(dpi).lfHeight));
    return height > usual ? MulDiv(dpi, height, usual) : dpi;
}

FontOwner MakeFont(const ControlFont& description, int dpi)
{
    LOGFONTW font = MessageFont(dpi);
    if (!description.face.empty()) {
        font.lfCharSet = DEFAULT_CHARSET;
        font.lfPitchAndFamily = DEFAULT_PITCH | FF_DONTCARE;
        lstrcpynW(font.lfFaceName, description.face.c_str(), LF_FACESIZE);
    }
    if (description.points != 0) {
        font.lfHeight = -MulDiv(description.points, LayoutDpi(dpi), pointsPerInch);
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
