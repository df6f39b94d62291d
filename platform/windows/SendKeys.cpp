#include "platform/windows/SendKeys.h"

#include "platform/system/RuntimeError.h"

#include <windows.h>

#include <algorithm>
#include <array>
#include <iterator>
#include <vector>

namespace {

constexpr std::array<WORD, 2> shiftKeys{VK_LSHIFT, VK_RSHIFT};

void Press(std::vector<INPUT>& inputs, WORD key, bool down)
{
    INPUT input{};
    input.type = INPUT_KEYBOARD;
    input.ki.wVk = key;
    // The scan code and KEYEVENTF_EXTENDEDKEY distinguish the two Shift keys.
    input.ki.wScan = static_cast<WORD>(MapVirtualKeyW(key, MAPVK_VK_TO_VSC));
    input.ki.dwFlags = (down ? 0U : static_cast<DWORD>(KEYEVENTF_KEYUP)) |
                       (key == VK_LSHIFT ? 0U : static_cast<DWORD>(KEYEVENTF_EXTENDEDKEY));
    inputs.push_back(input);
}

/// The Shift keys that are down now.
std::vector<WORD> HeldShiftKeys()
{
    std::vector<WORD> held;
    std::ranges::copy_if(shiftKeys, std::back_inserter(held), [](WORD key) { return GetAsyncKeyState(key) < 0; });
    return held;
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
    // After Shift+Tab the user may still hold Shift: release it for the keys, and press it again after them.
    const std::vector<WORD> held = HeldShiftKeys();
    for (const WORD key : held) {
        Press(inputs, key, false);
    }
    while (!keys.empty()) {
        const bool shift = keys.front() == L'+';
        keys.remove_prefix(shift ? 1 : 0);
        const std::size_t length = keys.find(L'}') + 1;
        const WORD key = KeyNamed(keys.substr(0, length));
        keys.remove_prefix(length);
        if (shift) {
            Press(inputs, VK_LSHIFT, true);
        }
        Press(inputs, key, true);
        Press(inputs, key, false);
        if (shift) {
            Press(inputs, VK_LSHIFT, false);
        }
    }
    for (const WORD key : held) {
        Press(inputs, key, true);
    }
    if (HaveKeyboard()) {
        SendInput(static_cast<UINT>(inputs.size()), inputs.data(), sizeof(INPUT));
    }
}
