#pragma once

#include <memory>

// The handle types of Windows, declared without its headers.
struct HWND__;
struct HFONT__;
struct HMENU__;
struct HICON__;
struct HBITMAP__;
struct HBRUSH__;
struct HPEN__;

/// The handle of a window (HWND), without ownership. A parent window destroys its child windows.
using WindowHandle = HWND__*;

struct WindowDeleter {
    void operator()(WindowHandle window) const noexcept;
};
struct GdiDeleter {
    void operator()(void* object) const noexcept;
};
struct MenuDeleter {
    void operator()(HMENU__* menu) const noexcept;
};
struct GlobalMemoryDeleter {
    void operator()(void* memory) const noexcept;
};

using WindowOwner = std::unique_ptr<HWND__, WindowDeleter>;
using FontOwner = std::unique_ptr<HFONT__, GdiDeleter>;
using BitmapOwner = std::unique_ptr<HBITMAP__, GdiDeleter>;
using BrushOwner = std::unique_ptr<HBRUSH__, GdiDeleter>;
using PenOwner = std::unique_ptr<HPEN__, GdiDeleter>;
using MenuOwner = std::unique_ptr<HMENU__, MenuDeleter>;
using GlobalMemoryOwner = std::unique_ptr<void, GlobalMemoryDeleter>;
