#pragma once

#include <cstdint>

/// True for a year divisible by 4 and not by 100, or divisible by 400.
constexpr bool IsLeapYear(std::int16_t year)
{
    return (year % 4 == 0 && year % 100 != 0) || year % 400 == 0;
}
