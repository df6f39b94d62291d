#include "platform/SendKeys.h"

#include "platform/RuntimeError.h"

#include <windows.h>

#include <vector>

namespace {

void Press(std::vector<INPUT>& inputs, WORD key, bool down)
{
    INPUT input{};
    input.type = INPUT_KEYBOARD;
    input.ki.wVk = key;
    input.ki.dwFlags = (down ? 0U : static_cast<DWORD>(KEYEVENTF_KEYUP)) |
                       (key == VK_SHIFT ? 0U : static_cast<DWORD>(KEYEVENTF_EXTENDEDKEY));
    inputs.push_back(input);
}

WORD KeyNamed(std::wstring_view name)
{
    if (name == L"{HOME}") {
        return VK_HOME;
    }
    if (name == L"{END}") {
        return VK_END;
    }
    throw RuntimeError(ErrorNumber::InvalidProcedureCall);
}

bool HaveKeyboard()
{
    DWORD process = 0;
    GetWindowThreadProcessId(GetForegroundWindow(), &process);
    return process == GetCurrentProcessId();
}

} // namespace

void SendKeys(std::wstring_view keys)
{
    std::vector<INPUT> inputs;
    // A user who came here by Shift+Tab may still hold Shift: it must not colour the keys, and stays down after them.
    const bool shiftIsHeld = GetAsyncKeyState(VK_SHIFT) < 0;
    if (shiftIsHeld) {
        Press(inputs, VK_SHIFT, false);
    }
    while (!keys.empty()) {
        const bool shift = keys.front() == L'+';
        keys.remove_prefix(shift ? 1 : 0);
        const std::size_t length = keys.find(L'}') + 1;
        const WORD key = KeyNamed(keys.substr(0, length));
        keys.remove_prefix(length);
        if (shift) {
            Press(inputs, VK_SHIFT, true);
        }
        Press(inputs, key, true);
        Press(inputs, key, false);
        if (shift) {
            Press(inputs, VK_SHIFT, false);
        }
    }
    if (shiftIsHeld) {
        Press(inputs, VK_SHIFT, true);
    }
    if (HaveKeyboard()) {
        SendInput(static_cast<UINT>(inputs.size()), inputs.data(), sizeof(INPUT));
    }
}
