#pragma once

/// Layouts are written in twips, 1440 to the inch; windows live in pixels. These are the only conversions between them.

/// Twips to pixels of a surface with dpi dots per inch, to the nearest pixel.
constexpr int ToPixels(int twips, int dpi) noexcept
{
    const long long scaled = static_cast<long long>(twips) * dpi;
    return static_cast<int>((scaled + (scaled >= 0 ? 720 : -720)) / 1440);
}

/// Twips to the smallest number of pixels that is not less: for a size that must not be missed by part of a pixel.
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

/// A place on a form, in twips from the top left of its client area.
struct TwipsRect {
    int left = 0;
    int top = 0;
    int width = 0;
    int height = 0;
};
