#pragma once

#include <cstdint>
#include <string>

// The names of the months in the user's region. Kept on purpose: "Month names follow the system".

/// The full name of month 1..12.
std::wstring MonthName(int month);

/// The number 1..12 of a month. dateText is a date with this name. If Windows reads another month from it, or none
/// ("12 1月 2000"), the name is compared with those of all months. Throws TypeMismatch if no month has this name.
std::int16_t MonthNumber(const std::wstring& name, const std::wstring& dateText);
