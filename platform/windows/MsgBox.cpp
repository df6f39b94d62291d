#include "platform/windows/MsgBox.h"

#include "platform/system/Application.h"
#include "platform/windows/ModalOwner.h"

#include <windows.h>

namespace {

UINT StyleOf(MsgBoxButtons buttons)
{
    switch (buttons) {
    case MsgBoxButtons::YesNo:
        return MB_YESNO;
    case MsgBoxButtons::YesNoCancel:
        return MB_YESNOCANCEL;
    case MsgBoxButtons::OkOnly:
        break;
    }
    return MB_OK;
}

UINT StyleOfDefault(int defaultButton)
{
    switch (defaultButton) {
    case 2:
        return MB_DEFBUTTON2;
    case 3:
        return MB_DEFBUTTON3;
    default:
        return MB_DEFBUTTON1;
    }
}

/// Shows the box and waits for the answer.
int Ask(const std::wstring& text, const wchar_t* title, UINT style)
{
    return AskOverForm([&] { return MessageBoxW(ModalOwner(), text.c_str(), title, style); });
}

} // namespace

MsgBoxResult MsgBox(const std::wstring& text, MsgBoxButtons buttons, MsgBoxIcon icon, int defaultButton)
{
    const UINT style = StyleOf(buttons) | StyleOfDefault(defaultButton) |
                       (icon == MsgBoxIcon::Critical ? static_cast<UINT>(MB_ICONHAND) : 0U);
    switch (Ask(text, ApplicationTitle(), style)) {
    case IDOK:
        return MsgBoxResult::Ok;
    case IDYES:
        return MsgBoxResult::Yes;
    case IDNO:
        return MsgBoxResult::No;
    default:
        return MsgBoxResult::Cancel;
    }
}

void MsgBoxTitled(const std::wstring& text, const std::wstring& title)
{
    Ask(text, title.c_str(), MB_OK);
}

void ShowMessage(const wchar_t* text) noexcept
{
    const AskingForm asking;
    MessageBoxW(ModalOwner(), text, ApplicationTitle(), MB_OK);
}
