#pragma once

#include <cstdint>

/// True for a year divisible by 4 and not by 100, or divisible by 400.
constexpr bool IsLeapYear(std::int16_t year)
{
    return (year % 4 == 0 && year % 100 != 0) || year % 400 == 0;
}

/// The number of days in a month, 28 to 31; 31 if the month does not exist.
constexpr std::int16_t DaysInMonth(std::int16_t year, std::int16_t month)
{
    switch (month) {
    case 2:
        return IsLeapYear(year) ? 29 : 28;
    case 4:
    case 6:
    case 9:
    case 11:
        return 30;
    default:
        return 31;
    }
}
