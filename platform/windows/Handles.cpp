#include "platform/windows/Handles.h"

#include <windows.h>

void WindowDeleter::operator()(WindowHandle window) const noexcept
{
    DestroyWindow(window);
}

void GdiDeleter::operator()(void* object) const noexcept
{
    DeleteObject(object);
}

void MenuDeleter::operator()(HMENU__* menu) const noexcept
{
    DestroyMenu(menu);
}

void GlobalMemoryDeleter::operator()(void* memory) const noexcept
{
    GlobalFree(memory);
}
