#pragma once

#include <cstdint>
#include <string>

// Months as the system names them. The program's own language has no say in it: an English journal on a Swedish system
// has "mars" and "oktober".

/// The full name of month 1..12.
std::wstring MonthName(int month);

/// The number 1..12 of a month by its name, read from dateText, a date that contains the name, as the system reads
/// dates. Where the system reads another month out of it, or none ("12 1月 2000"), the name itself decides. Throws
/// TypeMismatch when no month has this name.
std::int16_t MonthNumber(const std::wstring& name, const std::wstring& dateText);
