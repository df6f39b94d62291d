#include "platform/windows/Handles.h"

#include <windows.h>

void WindowDeleter::operator()(WindowHandle window) const noexcept
{
    DestroyWindow(window);
}

void FontDeleter::operator()(HFONT__* font) const noexcept
{
    DeleteObject(font);
}

void BitmapDeleter::operator()(HBITMAP__* bitmap) const noexcept
{
    DeleteObject(bitmap);
}

void MenuDeleter::operator()(HMENU__* menu) const noexcept
{
    DestroyMenu(menu);
}
