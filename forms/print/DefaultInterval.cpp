#include "forms/print/DefaultInterval.h"

#include "data/Calendar.h"
#include "platform/system/CheckedArithmetic.h"

CalendarDay DefaultFromDate(const CalendarDay& today)
{
    if (today.month == 1) {
        return {CheckedInt16(today.year - 1), 12, today.day};
    }
    const std::int16_t previous = CheckedInt16(today.month - 1);
    if (today.day + 1 > DaysInMonth(today.year, previous)) {
        return {today.year, today.month, 1};
    }
    return {today.year, previous, CheckedInt16(today.day + 1)};
}
