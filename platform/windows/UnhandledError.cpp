#include "platform/windows/UnhandledError.h"

#include "platform/system/RuntimeError.h"
#include "platform/windows/MsgBox.h"

#include <windows.h>

#include <array>

void ShowUnhandledError(const std::exception& error) noexcept
{
    const RuntimeError shown = AsRuntimeError(error);
    std::array<wchar_t, 128> text{};
    wsprintfW(text.data(), L"Run-time error '%d':\r\n\r\n%s", static_cast<int>(shown.Number()),
              shown.Description().data());
    ShowMessage(text.data());
}
