#pragma once

#include "platform/system/Clock.h"

/// The first day of the interval that the print dialog proposes when it opens; the last one is today. It is about a
/// month back: the day after today's number in the previous month, or the first of this month where that day does not
/// exist. In January it is today's own number in December. Kept on purpose: "January proposes one more day".
CalendarDay DefaultFromDate(const CalendarDay& today);
