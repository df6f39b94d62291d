#pragma once

#include <cstdint>

struct CalendarDay {
    std::int16_t year = 0;
    std::int16_t month = 0; ///< 1..12
    std::int16_t day = 0;   ///< 1..31

    friend bool operator==(const CalendarDay&, const CalendarDay&) = default;
};

/// The clock of the program. All windows use it.
namespace Clock {

/// The current day in local time.
CalendarDay Today();

/// Today returns this day until RunAgain is called. For tests.
void StandStillAt(const CalendarDay& day);
void RunAgain();

} // namespace Clock
