#include "platform/Shell.h"

#include "platform/Form.h"

#include <windows.h>

#include <shellapi.h>

bool ShellOpen(const Form& form, const std::string& address)
{
    // The shell answers with a number above 32 when it could; show command 0 leaves the window to the browser.
    constexpr INT_PTR lastFailure = 32;
    const HINSTANCE answer = ShellExecuteA(form.Handle(), "open", address.c_str(), nullptr, nullptr, 0);
    return reinterpret_cast<INT_PTR>(answer) > lastFailure;
}
