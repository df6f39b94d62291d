#include "platform/MsgBox.h"

#include "platform/Application.h"
#include "platform/ModalOwner.h"

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

} // namespace

MsgBoxResult MsgBox(const std::wstring& text, MsgBoxButtons buttons, MsgBoxIcon icon, int defaultButton)
{
    const UINT style = StyleOf(buttons) | StyleOfDefault(defaultButton) |
                       (icon == MsgBoxIcon::Critical ? static_cast<UINT>(MB_ICONHAND) : 0U);
    switch (MessageBoxW(ModalOwner(), text.c_str(), ApplicationTitle().c_str(), style)) {
    case IDYES:
        return MsgBoxResult::Yes;
    case IDNO:
        return MsgBoxResult::No;
    case IDCANCEL:
        return MsgBoxResult::Cancel;
    default:
        return MsgBoxResult::Ok;
    }
}

void MsgBoxTitled(const std::wstring& text, const std::wstring& title)
{
    MessageBoxW(ModalOwner(), text.c_str(), title.c_str(), MB_OK);
}
