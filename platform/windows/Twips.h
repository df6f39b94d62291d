#pragma once

// Conversions between twips (1440 to the inch), the unit of layouts, and pixels, the unit of windows.

/// Twips to pixels, to the nearest pixel.
constexpr int ToPixels(int twips, int dpi) noexcept
{
    const long long scaled = static_cast<long long>(twips) * dpi;
    return static_cast<int>((scaled + (scaled >= 0 ? 720 : -720)) / 1440);
}

/// Twips to pixels, rounded up: for a minimum size.
constexpr int ToPixelsUp(int twips, int dpi) noexcept
{
    return static_cast<int>((static_cast<long long>(twips) * dpi + 1439) / 1440);
}

/// Pixels to twips, to the nearest twip.
constexpr int ToTwips(int pixels, int dpi) noexcept
{
    const long long scaled = static_cast<long long>(pixels) * 1440;
    return static_cast<int>((scaled + (scaled >= 0 ? dpi / 2 : -dpi / 2)) / dpi);
}

/// A rectangle in twips from the top left corner of the client area.
struct TwipsRect {
    int left = 0;
    int top = 0;
    int width = 0;
    int height = 0;
};
