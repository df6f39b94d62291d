#pragma once

#include <windows.h>

#include <string>

// Device contexts for the sources of this room.

/// The device context of the client area of a window, or with null of the screen.
class ClientContext {
public:
    explicit ClientContext(HWND window) noexcept : window_(window), context_(GetDC(window)) {}
    ~ClientContext() { ReleaseDC(window_, context_); }
    ClientContext(const ClientContext&) = delete;
    ClientContext& operator=(const ClientContext&) = delete;

    HDC Get() const noexcept { return context_; }

private:
    HWND window_;
    HDC context_;
};

/// The size in pixels of a text of one line in the font of the control.
SIZE TextSize(HWND control, const std::wstring& text);
