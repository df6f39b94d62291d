// What the journal keeps of a typed route.
#include "forms/entry/RouteText.h"

#include <gtest/gtest.h>

TEST(RouteText, IsKeptAsTyped)
{
    for (const wchar_t* text : {L"", L"Office - customer visit", L"  'Göteborg' t/r  ", L"tab\tand 10 €"}) {
        EXPECT_EQ(RouteOf(text), text);
    }
}

TEST(RouteText, EndsAtItsFirstLineBreak)
{
    EXPECT_EQ(RouteOf(L"Here\r\n2004-03-21      9 There"), L"Here");
    EXPECT_EQ(RouteOf(L"Here\nThere\rThere"), L"Here");
    EXPECT_EQ(RouteOf(L"Here\rThere"), L"Here");
    EXPECT_EQ(RouteOf(L"\r\nThere"), L"");
}

TEST(RouteText, IsConvertedToTheCodePage)
{
    EXPECT_EQ(RouteOf(L"\x4e2d and \x0416"), L"? and ?");
}
