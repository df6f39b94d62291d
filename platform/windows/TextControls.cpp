// Labels and text boxes.

#include "platform/windows/Controls.h"

#include "platform/system/RuntimeError.h"
#include "platform/windows/DeviceContext.h"

#include <windows.h>

#include <algorithm>
#include <array>

Control::WindowKind Label::Kind() const
{
    // SS_NOTIFY: the label gets the mouse messages, not the form.
    const DWORD alignment = alignment_ == Alignment::Right ? SS_RIGHT : SS_LEFT;
    return {L"STATIC", alignment | SS_NOPREFIX | SS_NOTIFY};
}

void Label::SetMouseIcon(int resource)
{
    cursor_ = static_cast<HICON>(LoadImageW(GetModuleHandleW(nullptr), MAKEINTRESOURCEW(resource), IMAGE_CURSOR, 0, 0,
                                            LR_DEFAULTSIZE | LR_SHARED));
    if (cursor_ == nullptr) {
        throw RuntimeError(ErrorNumber::ResourceNotFound);
    }
}

void Label::FitToText()
{
    fitted_ = true;
    Scaled();
}

void Label::Scaled()
{
    if (!fitted_) {
        return;
    }
    const SIZE text = TextSize(Handle(), Caption());
    SetWindowPos(Handle(), nullptr, 0, 0, text.cx, Pixels(Height()), SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
}

void Label::Command(unsigned notification)
{
    if (notification == STN_CLICKED) {
        Click();
    }
}

void Label::Message(unsigned message, std::uintptr_t, std::intptr_t)
{
    if (message == WM_MOUSEMOVE) {
        MouseMove();
    }
}

Control::WindowKind LinkLabel::Kind() const
{
    WindowKind kind = Label::Kind();
    kind.style |= WS_TABSTOP;
    return kind;
}

void LinkLabel::Message(unsigned message, std::uintptr_t wParam, std::intptr_t lParam)
{
    Label::Message(message, wParam, lParam);
    // Painted as a whole: DrawFocusRect on an existing focus rectangle would erase it.
    constexpr std::array changesLook{WM_PAINT, WM_SETFOCUS, WM_KILLFOCUS, WM_SETFONT, WM_SETTEXT};
    if (std::ranges::find(changesLook, static_cast<int>(message)) != changesLook.end()) {
        InvalidateRect(Handle(), nullptr, TRUE);
    }
}

void LinkLabel::Painted()
{
    if (GetFocus() != Handle()) {
        return;
    }
    RECT area{};
    GetClientRect(Handle(), &area);
    DrawFocusRect(ClientContext(Handle()).Get(), &area);
}

Control::WindowKind TextBox::Kind() const
{
    return {L"EDIT", WS_TABSTOP | ES_AUTOHSCROLL, WS_EX_CLIENTEDGE};
}

void TextBox::SetLocked(bool locked)
{
    Send(EM_SETREADONLY, locked ? TRUE : FALSE);
}

void TextBox::Command(unsigned notification)
{
    if (notification == EN_SETFOCUS) {
        GotFocus();
    }
}

void TextBox::Message(unsigned message, std::uintptr_t, std::intptr_t)
{
    if (message == WM_CHAR) {
        KeyPress();
    }
}
