// The names of the months in the language of the region.
#include "forms/MonthNames.h"
#include "platform/system/RuntimeError.h"
#include "tests/support/ErrorOf.h"

#include <gtest/gtest.h>

#include <set>

TEST(MonthNames, AreTwelveDifferentOnes)
{
    std::set<std::wstring> names;
    for (int month = 1; month <= 12; ++month) {
        names.insert(MonthName(month));
    }
    EXPECT_EQ(names.size(), 12U);
}

TEST(MonthNames, GiveTheirNumbers)
{
    for (std::int16_t month = 1; month <= 12; ++month) {
        EXPECT_EQ(MonthNumber(MonthName(month), L"12 " + MonthName(month) + L" 2000"), month);
        EXPECT_EQ(MonthNumber(MonthName(month), L"01 " + MonthName(month) + L" 2001"), month);
    }
}

TEST(MonthNames, GiveTheirNumbersIfTheDateTextIsAnotherMonthOrNone)
{
    EXPECT_EQ(MonthNumber(MonthName(5), L"12 " + MonthName(6) + L" 2000"), 5);
    EXPECT_EQ(MonthNumber(MonthName(5), L"no date"), 5);
}

TEST(MonthNames, AreTheOnlyNamesWithANumber)
{
    EXPECT_EQ(ErrorOf([] { static_cast<void>(MonthNumber(L"Smarch", L"12 Smarch 2000")); }), ErrorNumber::TypeMismatch);
}
