#pragma once

#include <cstdint>

struct CalendarDay {
    std::int16_t year = 0;
    std::int16_t month = 0; ///< 1..12
    std::int16_t day = 0;   ///< 1..31

    friend bool operator==(const CalendarDay&, const CalendarDay&) = default;
};

/// The program's one clock. Every "today" of every window comes from here.
namespace Clock {

/// The current day of the user's system.
CalendarDay Today();

/// Makes Today answer this day until RunAgain: a calendar rule can then be looked at on any day. The program itself
/// never stops its clock; this is for callers that drive it step by step.
void StandStillAt(const CalendarDay& day);
void RunAgain();

} // namespace Clock
