#pragma once

#include "data/DataInterface.h"

#include <cstdint>
#include <string>

// A line of the day list: "2004-02-12   12.5 Office - customer visit". The main window keeps no other record of a day:
// the commands read the line by position (data/DayFields.h), also if a long distance has moved the route to the right.

/// The line of an entry. A negative distance is shown as spaces.
std::wstring DayLine(const DayEntry& entry);

/// The entry of a line. A distance that is not a number is -2. Throws TypeMismatch if the date is not one.
DayEntry EntryOfDayLine(const std::wstring& line);

/// The day of the month of a line. Throws TypeMismatch.
std::int16_t DayOfDayLine(const std::wstring& line);
