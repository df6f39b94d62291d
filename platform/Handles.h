#pragma once

#include <memory>

// The system's own handle types, declared without its headers, so that forms can hold controls without knowing Win32.
struct HWND__;
struct HFONT__;
struct HMENU__;
struct HICON__;
struct HBITMAP__;

/// A window of the system. Child windows belong to their parent window, so a plain handle never owns one.
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
