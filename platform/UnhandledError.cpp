#include "platform/UnhandledError.h"

#include "platform/MsgBox.h"
#include "platform/RuntimeError.h"

#include <new>
#include <string>

namespace {

void Show(const RuntimeError& error)
{
    MsgBox(L"Run-time error '" + std::to_wstring(static_cast<int>(error.Number())) + L"':\r\n\r\n" +
           error.Description());
}

} // namespace

void ShowUnhandledError(const std::exception& error)
{
    if (const auto* known = dynamic_cast<const RuntimeError*>(&error)) {
        Show(*known);
    } else if (dynamic_cast<const std::bad_alloc*>(&error) != nullptr) {
        Show(RuntimeError(ErrorNumber::OutOfMemory));
    } else {
        Show(RuntimeError(ErrorNumber::InvalidProcedureCall));
    }
}
