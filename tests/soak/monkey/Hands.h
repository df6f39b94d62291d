#pragma once

#include <windows.h>

#include <string_view>

// Sends mouse and keyboard input. The foreground window gets it.

namespace hands {

enum class Button { Left, Right };

void MoveTo(POINT place);
void Click(POINT place, Button button = Button::Left, int times = 1);
void Wheel(POINT place, int notches);

void Press(WORD key);
void PressWith(WORD modifier, WORD key);
void Write(std::wstring_view text);

} // namespace hands
