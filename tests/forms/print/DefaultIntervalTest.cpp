#include "forms/print/DefaultInterval.h"

#include <gtest/gtest.h>

#include <chrono>
#include <ostream>

namespace chrono = std::chrono;
using chrono::sys_days;
using chrono::year_month_day;

namespace {

CalendarDay AsCalendarDay(year_month_day date)
{
    return {static_cast<std::int16_t>(static_cast<int>(date.year())),
            static_cast<std::int16_t>(static_cast<unsigned>(date.month())),
            static_cast<std::int16_t>(static_cast<unsigned>(date.day()))};
}

/// The same rule computed with calendar dates: one month back and one day forward. If the previous month is too short,
/// the result is the first day of this month.
CalendarDay Expected(year_month_day today)
{
    if (today.month() == chrono::January) {
        return AsCalendarDay(today - chrono::months(1));
    }
    const year_month_day back = (today - chrono::months(1));
    const auto lastOfBack = back.year() / back.month() / chrono::last;
    const sys_days start = back.ok() ? sys_days(back) + chrono::days(1) : sys_days(lastOfBack) + chrono::days(1);
    const year_month_day date(start);
    return AsCalendarDay(date);
}

} // namespace

void PrintTo(const CalendarDay& date, std::ostream* out)
{
    *out << date.year << '-' << date.month << '-' << date.day;
}

TEST(DefaultInterval, BeginsAMonthBackOnEveryDayOfManyYears)
{
    for (const int first : {1999, 2003, 2004, 2005, 2096, 2100}) {
        const sys_days end = chrono::year(first + 1) / chrono::January / 1;
        for (sys_days today = chrono::year(first) / chrono::January / 1; today < end; today += chrono::days(1)) {
            const CalendarDay day = AsCalendarDay(today);
            ASSERT_EQ(DefaultFromDate(day), Expected(today)) << "on " << testing::PrintToString(day);
        }
    }
}

TEST(DefaultInterval, BeginsOneDayAfterTheSameDayOfThePreviousMonth)
{
    EXPECT_EQ(DefaultFromDate({2003, 11, 16}), (CalendarDay{2003, 10, 17}));
    EXPECT_EQ(DefaultFromDate({2003, 5, 29}), (CalendarDay{2003, 4, 30}));
    EXPECT_EQ(DefaultFromDate({2004, 3, 28}), (CalendarDay{2004, 2, 29}));
}

TEST(DefaultInterval, BeginsOnTheFirstOfThisMonthIfThePreviousMonthIsTooShort)
{
    EXPECT_EQ(DefaultFromDate({2003, 3, 31}), (CalendarDay{2003, 3, 1}));
    EXPECT_EQ(DefaultFromDate({2003, 5, 30}), (CalendarDay{2003, 5, 1}));
    EXPECT_EQ(DefaultFromDate({2003, 3, 28}), (CalendarDay{2003, 3, 1}));
    EXPECT_EQ(DefaultFromDate({2004, 3, 29}), (CalendarDay{2004, 3, 1}));
    EXPECT_EQ(DefaultFromDate({2003, 8, 31}), (CalendarDay{2003, 8, 1}));
}

TEST(DefaultInterval, IsTheSameDayOfDecemberInJanuary)
{
    EXPECT_EQ(DefaultFromDate({2004, 1, 15}), (CalendarDay{2003, 12, 15}));
    EXPECT_EQ(DefaultFromDate({2004, 1, 31}), (CalendarDay{2003, 12, 31}));
    EXPECT_EQ(DefaultFromDate({2004, 1, 1}), (CalendarDay{2003, 12, 1}));
}
