#pragma once

#include "data/DataInterface.h"

#include <cstddef>
#include <string>

// How a day stands on one line, in the journal file and in the list of the main window alike, by characters counted
// from 1: year 1-4, "-", month 6-7, "-", day 9-10, a blank, distance 12-17, a blank, route from 19.
//
// Nothing marks where a field ends: a distance of more than six characters pushes the route to the right, and reading
// by position then finds what stands there.

/// The places that a distance has.
inline constexpr std::size_t distancePlaces = 6;

/// The line of an entry with the given text for its distance, which ends in its last place.
std::wstring LineOfDay(const DayEntry& entry, std::wstring distance);

/// The characters first..last of a line. Positions beyond its end give the empty text.
std::wstring Field(const std::wstring& line, std::size_t first, std::size_t last);

/// The characters from 19 on.
std::wstring RouteField(const std::wstring& line);
