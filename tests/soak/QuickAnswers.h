#pragma once

#include <cstdint>
#include <string>

// A program that carries this file has a user who presses OK before the message box appears: a real box takes
// milliseconds, and here a million of them may come. The program's own way to the box is the real one; only the system
// does not show it.
namespace QuickAnswers {

/// How many boxes had this text since the last Forget.
std::int64_t Count(const std::wstring& text);

/// All of them.
std::int64_t Count();

void Forget();

} // namespace QuickAnswers
