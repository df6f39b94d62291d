#include "platform/WaitCursor.h"

#include "platform/Form.h"

#include <windows.h>

WaitCursor::WaitCursor() : before_(SetCursor(LoadCursorW(nullptr, IDC_WAIT)))
{
    for (const auto& form : Form::OpenForms()) {
        RedrawWindow(form->Handle(), nullptr, nullptr, RDW_UPDATENOW | RDW_ALLCHILDREN);
    }
}

WaitCursor::~WaitCursor()
{
    SetCursor(before_);
}
