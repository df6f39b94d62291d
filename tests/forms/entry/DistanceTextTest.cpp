// Which texts are a distance, and which number they mean.
#include "forms/entry/DistanceText.h"

#include <gmock/gmock.h>

#include <windows.h>

#include <cmath>

namespace {

bool IsSwedishMachine()
{
    return PRIMARYLANGID(GetUserDefaultLangID()) == LANG_SWEDISH;
}

/// The text with the machine's decimal separator in place of "_", and with the other one in place of "^".
std::wstring Localised(std::wstring text)
{
    for (wchar_t& character : text) {
        if (character == L'_') {
            character = IsSwedishMachine() ? L',' : L'.';
        } else if (character == L'^') {
            character = IsSwedishMachine() ? L'.' : L',';
        }
    }
    return text;
}

} // namespace

TEST(DistanceText, AcceptsIntegersAndDecimalNumbersOfTheRegion)
{
    for (const wchar_t* text : {L"0", L"12", L"123456", L"12_5", L"_5", L"5_", L"0_001", L"+7", L" 7", L"7 ", L" 7 "}) {
        EXPECT_TRUE(IsDistance(Localised(text))) << testing::PrintToString(std::wstring(text));
    }
}

TEST(DistanceText, AcceptsNegativeAndLongNumbersWhichHaveTheirOwnMessages)
{
    for (const wchar_t* text : {L"-5", L"-123456", L"-_5", L"1234567", L"1234_56", L"000000012"}) {
        EXPECT_TRUE(IsDistance(Localised(text))) << testing::PrintToString(std::wstring(text));
    }
}

TEST(DistanceText, RefusesTextThatIsNotAPlainNumber)
{
    for (const wchar_t* text : {L"abc", L"12a", L"_", L"-", L"+", L" ", L"1 2", L"1__2", L"1_2_3", L"--5", L"5-",
                                L"1e3", L"1E9", L"&H10", L"$5", L"5%", L"(5)", L"1d2", L"\u0661"}) {
        EXPECT_FALSE(IsDistance(Localised(text))) << testing::PrintToString(std::wstring(text));
    }
}

TEST(DistanceText, RefusesTheSeparatorOfAnotherRegion)
{
    EXPECT_FALSE(IsDistance(Localised(L"12^5")));
    EXPECT_FALSE(IsDistance(Localised(L"1^234")));
}

TEST(DistanceText, RefusesANumberThatNeedsMoreThanSixCharacters)
{
    EXPECT_FALSE(IsDistance(Localised(L"_12345")));
    EXPECT_TRUE(IsDistance(Localised(L"_1234")));
}

TEST(DistanceText, RefusesANumberBeyondAllNumbers)
{
    EXPECT_FALSE(IsDistance(std::wstring(400, L'9')));
}

TEST(DistanceText, ReadsTheNumberByTheRegionSettings)
{
    EXPECT_EQ(DistanceOf(Localised(L"12_5")), 12.5);
    EXPECT_EQ(DistanceOf(Localised(L" _5 ")), 0.5);
    EXPECT_EQ(DistanceOf(L"-2"), -2.0);
}

TEST(DistanceText, ReadsANegativeZeroAsZero)
{
    EXPECT_FALSE(std::signbit(DistanceOf(L"-0")));
}
