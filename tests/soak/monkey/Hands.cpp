#include "tests/soak/monkey/Hands.h"

#include <vector>

namespace {

using Inputs = std::vector<INPUT>;

void Send(Inputs& inputs)
{
    SendInput(static_cast<UINT>(inputs.size()), inputs.data(), sizeof(INPUT));
}

/// Absolute coordinates are in 65536ths of the screen.
LONG InScreenParts(LONG place, int metric)
{
    const LONG size = GetSystemMetrics(metric);
    return (place * 65536 + size / 2) / size;
}

INPUT Mouse(DWORD flags, DWORD data = 0)
{
    INPUT input{};
    input.type = INPUT_MOUSE;
    input.mi.dwFlags = flags;
    input.mi.mouseData = data;
    return input;
}

INPUT MouseTo(POINT place)
{
    INPUT input = Mouse(MOUSEEVENTF_MOVE | MOUSEEVENTF_ABSOLUTE);
    input.mi.dx = InScreenParts(place.x, SM_CXSCREEN);
    input.mi.dy = InScreenParts(place.y, SM_CYSCREEN);
    return input;
}

bool IsOnTheGreyKeys(WORD key)
{
    return (key >= VK_PRIOR && key <= VK_DOWN) || key == VK_INSERT || key == VK_DELETE;
}

INPUT Key(WORD key, bool down)
{
    INPUT input{};
    input.type = INPUT_KEYBOARD;
    input.ki.wVk = key;
    input.ki.dwFlags = (down ? 0U : static_cast<DWORD>(KEYEVENTF_KEYUP)) |
                       (IsOnTheGreyKeys(key) ? static_cast<DWORD>(KEYEVENTF_EXTENDEDKEY) : 0U);
    return input;
}

INPUT Character(wchar_t character, bool down)
{
    INPUT input{};
    input.type = INPUT_KEYBOARD;
    input.ki.wScan = character;
    input.ki.dwFlags = static_cast<DWORD>(KEYEVENTF_UNICODE) | (down ? 0U : static_cast<DWORD>(KEYEVENTF_KEYUP));
    return input;
}

} // namespace

void hands::MoveTo(POINT place)
{
    Inputs inputs{MouseTo(place)};
    Send(inputs);
}

void hands::Click(POINT place, Button button, int times)
{
    const bool left = button == Button::Left;
    Inputs inputs{MouseTo(place)};
    for (int i = 0; i < times; ++i) {
        inputs.push_back(Mouse(left ? MOUSEEVENTF_LEFTDOWN : MOUSEEVENTF_RIGHTDOWN));
        inputs.push_back(Mouse(left ? MOUSEEVENTF_LEFTUP : MOUSEEVENTF_RIGHTUP));
    }
    Send(inputs);
}

void hands::Wheel(POINT place, int notches)
{
    Inputs inputs{MouseTo(place), Mouse(MOUSEEVENTF_WHEEL, static_cast<DWORD>(notches) * WHEEL_DELTA)};
    Send(inputs);
}

void hands::Press(WORD key)
{
    Inputs inputs{Key(key, true), Key(key, false)};
    Send(inputs);
}

void hands::PressWith(WORD modifier, WORD key)
{
    Inputs inputs{Key(modifier, true), Key(key, true), Key(key, false), Key(modifier, false)};
    Send(inputs);
}

void hands::Write(std::wstring_view text)
{
    Inputs inputs;
    for (const wchar_t character : text) {
        inputs.push_back(Character(character, true));
        inputs.push_back(Character(character, false));
    }
    Send(inputs);
}
