#pragma once

#include <windows.h>

#include <string_view>

// The hands of a user: mouse and keyboard of the whole machine. What they do goes to whatever is in front.

namespace hands {

enum class Button { Left, Right };

void MoveTo(POINT place);
void Click(POINT place, Button button = Button::Left, int times = 1);
void Wheel(POINT place, int notches);

void Press(WORD key);
void PressWith(WORD modifier, WORD key);
void Write(std::wstring_view text);

} // namespace hands
