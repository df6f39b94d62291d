#pragma once

#include "data/DataInterface.h"

#include <cstddef>
#include <string>

// The line of an entry, in the journal file and in the day list. Characters count from 1: year 1-4, "-", month 6-7,
// "-", day 9-10, a space, distance 12-17, a space, route from 19.
//
// Kept on purpose: "Fields are read by position".

/// The characters for a distance.
inline constexpr std::size_t distancePlaces = 6;

/// The line of an entry, with this text as its distance, right-aligned.
std::wstring LineOfDay(const DayEntry& entry, std::wstring distance);

/// The characters first..last of a line, as far as the line has them.
std::wstring Field(const std::wstring& line, std::size_t first, std::size_t last);

/// The characters from 19 on.
std::wstring RouteField(const std::wstring& line);
