#pragma once

#include <memory>

// The handle types of Windows, declared without its headers.
struct HWND__;
struct HFONT__;
struct HMENU__;
struct HICON__;
struct HBITMAP__;

/// The handle of a window (HWND), without ownership. A parent window destroys its child windows.
using WindowHandle = HWND__*;

struct WindowDeleter {
    void operator()(WindowHandle window) const noexcept;
};
struct FontDeleter {
    void operator()(HFONT__* font) const noexcept;
};
struct BitmapDeleter {
    void operator()(HBITMAP__* bitmap) const noexcept;
};
struct MenuDeleter {
    void operator()(HMENU__* menu) const noexcept;
};

using WindowOwner = std::unique_ptr<HWND__, WindowDeleter>;
using FontOwner = std::unique_ptr<HFONT__, FontDeleter>;
using BitmapOwner = std::unique_ptr<HBITMAP__, BitmapDeleter>;
using MenuOwner = std::unique_ptr<HMENU__, MenuDeleter>;
