#pragma once

#include <cstdint>
#include <string>

// Replaces MessageBoxW in the program that links it: every message box returns OK without being shown. A real box takes
// milliseconds, and a run may need a million of them. All other code of the program runs unchanged.
namespace QuickAnswers {

/// The number of boxes with this text since the last Forget.
std::int64_t Count(const std::wstring& text);

/// The number of all boxes since the last Forget.
std::int64_t Count();

void Forget();

} // namespace QuickAnswers
