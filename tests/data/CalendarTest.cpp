#include "data/Calendar.h"

#include <gtest/gtest.h>

TEST(DaysInMonth, FollowTheCalendar)
{
    EXPECT_EQ(DaysInMonth(2003, 1), 31);
    EXPECT_EQ(DaysInMonth(2003, 4), 30);
    EXPECT_EQ(DaysInMonth(2003, 6), 30);
    EXPECT_EQ(DaysInMonth(2003, 8), 31);
    EXPECT_EQ(DaysInMonth(2003, 9), 30);
    EXPECT_EQ(DaysInMonth(2003, 11), 30);
    EXPECT_EQ(DaysInMonth(2003, 12), 31);
    EXPECT_EQ(DaysInMonth(2003, 2), 28);
    EXPECT_EQ(DaysInMonth(2004, 2), 29);
    EXPECT_EQ(DaysInMonth(2000, 2), 29);
    EXPECT_EQ(DaysInMonth(2100, 2), 28);
    EXPECT_EQ(DaysInMonth(1900, 2), 28);
}

TEST(DaysInMonth, Are31ForAMonthThatDoesNotExist)
{
    EXPECT_EQ(DaysInMonth(2003, 0), 31);
    EXPECT_EQ(DaysInMonth(2003, 13), 31);
    EXPECT_EQ(DaysInMonth(2003, -4), 31);
}
