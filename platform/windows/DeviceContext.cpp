#include "platform/windows/DeviceContext.h"

SIZE TextSize(HWND control, const std::wstring& text)
{
    const ClientContext context(control);
    HGDIOBJ former = SelectObject(context.Get(), reinterpret_cast<HGDIOBJ>(SendMessageW(control, WM_GETFONT, 0, 0)));
    SIZE size{};
    GetTextExtentPoint32W(context.Get(), text.c_str(), static_cast<int>(text.size()), &size);
    SelectObject(context.Get(), former);
    return size;
}
