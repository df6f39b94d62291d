#pragma once

#include "data/DataInterface.h"

#include <cstdint>
#include <string>

// A line of the day list: "2004-02-12   12.5 Office - customer visit". It is all that the main window knows of the day
// it shows: the commands read it back by position (data/DayFields.h), also where a long distance has pushed the route
// to the right.

/// The line of an entry. A negative distance is shown as blanks.
std::wstring DayLine(const DayEntry& entry);

/// The entry as the line shows it; a distance that is no number reads as -2. Throws TypeMismatch where the date is
/// none.
DayEntry EntryOfDayLine(const std::wstring& line);

/// Only the day of the month. Throws TypeMismatch.
std::int16_t DayOfDayLine(const std::wstring& line);
