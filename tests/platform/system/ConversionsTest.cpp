#include "platform/system/Conversions.h"
#include "tests/support/ErrorOf.h"
#include "tests/support/Region.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <limits>
#include <vector>

namespace {

/// The text with its decimal points as this system writes them.
std::wstring Here(std::wstring text)
{
    std::ranges::replace(text, L'.', DecimalSeparator()[0]);
    return text;
}

bool HereIsSwedish()
{
    return DecimalSeparator() == L",";
}

} // namespace

TEST(Conversions, ToInt16_ReadsDigitsSignsAndBlanks)
{
    EXPECT_EQ(ToInt16(L"2004"), 2004);
    EXPECT_EQ(ToInt16(L"  7 "), 7);
    EXPECT_EQ(ToInt16(L"-12"), -12);
    EXPECT_EQ(ToInt16(L"+12"), 12);
    EXPECT_EQ(ToInt16(L"09"), 9);
    EXPECT_EQ(ToInt16(L"1E3"), 1000);
    EXPECT_EQ(ToInt16(L"32767"), 32767);
    EXPECT_EQ(ToInt16(L"-32768"), -32768);
}

TEST(Conversions, ToInt16_RoundsHalvesToTheEvenNumber)
{
    EXPECT_EQ(ToInt16(Here(L"2.5")), 2);
    EXPECT_EQ(ToInt16(Here(L"3.5")), 4);
    EXPECT_EQ(ToInt16(Here(L"-2.5")), -2);
    EXPECT_EQ(ToInt16(Here(L"2.51")), 3);
    EXPECT_EQ(ToInt16(Here(L"2.49")), 2);
}

TEST(Conversions, TextsThatAreNoNumbersAreTypeMismatches)
{
    for (const wchar_t* text : {L"", L" ", L"abc", L"12a", L"1 2 x", L"-", L"0x10", L"&H10", L"(5)", L"$5", L"5-",
                                L"999-", L"5+", L"--5", L"1E", L"E5", L"1d2"}) {
        EXPECT_EQ(ErrorOf([text] { ToInt16(text); }), ErrorNumber::TypeMismatch) << text;
        EXPECT_EQ(ErrorOf([text] { ToDouble(text); }), ErrorNumber::TypeMismatch) << text;
    }
    EXPECT_EQ(ErrorOf([] { ToDouble(Here(L"1.2.3")); }), ErrorNumber::TypeMismatch);
}

TEST(Conversions, NumbersOutsideTheirTypeOverflow)
{
    EXPECT_EQ(ErrorOf([] { ToInt16(L"32768"); }), ErrorNumber::Overflow);
    EXPECT_EQ(ErrorOf([] { ToInt16(Here(L"32767.5")); }), ErrorNumber::Overflow);
    EXPECT_EQ(ErrorOf([] { ToInt16(L"-32769"); }), ErrorNumber::Overflow);
    EXPECT_EQ(ErrorOf([] { ToInt16(L"99999999999999999999"); }), ErrorNumber::Overflow);
    EXPECT_EQ(ErrorOf([] { ToDouble(L"1E999"); }), ErrorNumber::Overflow);
}

TEST(Conversions, ToDouble_ReadsTheSystemsDecimalSeparator)
{
    EXPECT_EQ(ToDouble(Here(L"12.5")), 12.5);
    EXPECT_EQ(ToDouble(Here(L"  12.5 ")), 12.5);
    EXPECT_EQ(ToDouble(Here(L"-2")), -2.0);
    EXPECT_EQ(ToDouble(L"1E-05"), 1E-05);
    EXPECT_EQ(ToDouble(Here(L"123456789.123457")), 123456789.123457);
}

TEST(Conversions, ToDouble_TreatsTheOtherSeparatorAsTheSystemDoes)
{
    if (HereIsSwedish()) {
        EXPECT_EQ(ErrorOf([] { ToDouble(L"12.5"); }), ErrorNumber::TypeMismatch);
    } else {
        EXPECT_EQ(ToDouble(L"12,5"), 125.0);
    }
}

TEST(Conversions, ToText_IsTheShortestFormOfUpTo15Digits)
{
    EXPECT_EQ(ToText(12.5), Here(L"12.5"));
    EXPECT_EQ(ToText(100.0), L"100");
    EXPECT_EQ(ToText(-2.0), L"-2");
    EXPECT_EQ(ToText(0.5), Here(L"0.5"));
    EXPECT_EQ(ToText(0.1 + 0.2), Here(L"0.3"));
    EXPECT_EQ(ToText(1.0 / 3), Here(L"0.333333333333333"));
    EXPECT_EQ(ToText(1234.56), Here(L"1234.56"));
    EXPECT_EQ(ToText(999999999999999.0), L"999999999999999");
    EXPECT_EQ(ToText(1E15), L"1E+15");
    EXPECT_EQ(ToText(0.0), L"0");
    EXPECT_EQ(ToText(-0.0), L"0");
    EXPECT_EQ(ToText(0.0001), Here(L"0.0001"));
    EXPECT_EQ(ToText(0.00001), L"1E-05");
    EXPECT_EQ(ToText(1.5E-300), Here(L"1.5E-300"));
    EXPECT_EQ(ToText(2004), L"2004");
    EXPECT_EQ(ToText(-32768), L"-32768");
}

TEST(Conversions, EveryDistanceOfSixCharactersReadsBackAsItWasWritten)
{
    for (int i = 0; i <= 99999; i += 7) {
        EXPECT_EQ(ToDouble(ToText(i / 10.0)), i / 10.0);
        EXPECT_EQ(ToDouble(ToText(i / 100.0)), i / 100.0);
    }
}

TEST(Conversions, FollowASeparatorThatChangesWhileTheProgramRuns)
{
    const KeptRegion region;
    ASSERT_EQ(ToDouble(Here(L"12.5")), 12.5);
    const std::wstring other = region.Other();
    ChooseDecimalSeparator(other);
    EXPECT_EQ(DecimalSeparator(), other);
    EXPECT_EQ(ToText(12.5), L"12" + other + L"5");
    EXPECT_EQ(ToDouble(L"12" + other + L"5"), 12.5);
    EXPECT_EQ(ToInt16(L"3" + other + L"5"), 4);
    ChooseDecimalSeparator(region.Own());
    EXPECT_EQ(ToDouble(Here(L"12.5")), 12.5);
}

TEST(Conversions, AcceptSpacesAsGroupingSeparatorsOfTheRegion)
{
    EXPECT_EQ(ToDouble(L" \u00a07 "), 7);
    if (HereIsSwedish()) {
        EXPECT_EQ(ToDouble(L"1\u00a0000"), 1000);
        EXPECT_EQ(ToDouble(L"1 000,5"), 1000.5);
        EXPECT_EQ(ToDouble(L"- 5"), -5);
    } else {
        EXPECT_EQ(ErrorOf([] { ToDouble(L"1 000"); }), ErrorNumber::TypeMismatch);
        EXPECT_EQ(ToDouble(L"1,000.5"), 1000.5);
    }
}

TEST(Conversions, FormatNumber_FollowsTheMask)
{
    EXPECT_EQ(FormatNumber(2, L"00"), L"02");
    EXPECT_EQ(FormatNumber(12, L"00"), L"12");
    EXPECT_EQ(FormatNumber(112, L"00"), L"112");
    EXPECT_EQ(FormatNumber(1234, L"# ##0"), L"1 234");
    EXPECT_EQ(FormatNumber(1234567, L"# ##0"), L"1234 567");
    EXPECT_EQ(FormatNumber(1234.5, L"# ##0"), L"1 235");
    EXPECT_EQ(FormatNumber(1233.5, L"# ##0"), L"1 234");
}

TEST(Conversions, FormatNumber_WritesANumberOfMoreThanFifteenDigitsWithItsExponent)
{
    EXPECT_EQ(FormatNumber(999999999999999.0, L"# ##0"), L"999999999999 999");
    EXPECT_EQ(FormatNumber(1E15, L"# ##0"), L"1E+15");
    EXPECT_EQ(FormatNumber(-1E290, L"# ##0"), L"-1E+290");
    EXPECT_EQ(FormatNumber(1E308, L"# ##0"), L"1E+308");
}

TEST(Conversions, ToText_WritesInfinityAsASign)
{
    const double beyond = std::numeric_limits<double>::infinity();
    EXPECT_EQ(ToText(beyond), L"\u221e");
    EXPECT_EQ(ToText(-beyond), L"-\u221e");
    EXPECT_EQ(FormatNumber(beyond, L"# ##0"), L"\u221e");
}

TEST(Conversions, ToDigits_PutsZerosInFront)
{
    EXPECT_EQ(ToDigits(2, 2), L"02");
    EXPECT_EQ(ToDigits(12, 2), L"12");
    EXPECT_EQ(ToDigits(112, 2), L"112");
    EXPECT_EQ(ToDigits(-5, 2), L"-05");
    EXPECT_EQ(ToDigits(-112, 2), L"-112");
    EXPECT_EQ(ToDigits(0, 4), L"0000");
}

TEST(Conversions, FormatDateText_NamesTheMonthsInTheLanguageOfTheRegion)
{
    const std::vector<std::wstring> english{L"January",   L"February", L"March",    L"April",
                                            L"May",       L"June",     L"July",     L"August",
                                            L"September", L"October",  L"November", L"December"};
    const std::vector<std::wstring> swedish{L"januari",   L"februari", L"mars",     L"april",
                                            L"maj",       L"juni",     L"juli",     L"augusti",
                                            L"september", L"oktober",  L"november", L"december"};
    for (std::size_t month = 1; month <= 12; ++month) {
        const std::wstring digits = (month < 10 ? L"0" : L"") + std::to_wstring(month);
        const std::wstring name = FormatDateText(L"2001-" + digits + L"-01", L"mmmm");
        EXPECT_EQ(name, (HereIsSwedish() ? swedish : english)[month - 1]);
        EXPECT_EQ(FormatDateText(L"12 " + name + L" 2000", L"mm"), digits);
    }
}

TEST(Conversions, FormatDateText_WritesYearMonthDay)
{
    EXPECT_EQ(FormatDateText(L"2004-02-12", L"yyyy-mm-dd"), L"2004-02-12");
    EXPECT_EQ(FormatDateText(L"2004-2-9", L"yyyy-mm-dd"), L"2004-02-09");
}

TEST(Conversions, FormatDateText_RefusesTextThatIsNotADate)
{
    for (const wchar_t* text : {L"", L"x", L"2001-02-30", L"0/2/2001", L"2004-05--00"}) {
        EXPECT_EQ(ErrorOf([text] { FormatDateText(text, L"yyyy-mm-dd"); }), ErrorNumber::TypeMismatch) << text;
    }
}

TEST(Conversions, TheTryFunctionsReturnTheSameValues)
{
    EXPECT_EQ(TryToDouble(L" -12 "), -12.0);
    EXPECT_EQ(TryToInt16(L"32767"), std::int16_t{32767});
    EXPECT_EQ(TryFormatDateText(L"2004-2-9", L"yyyy-mm-dd"), L"2004-02-09");
}

TEST(Conversions, TheTryFunctionsReturnNoValueWhereTheOthersThrow)
{
    for (const wchar_t* text : {L"", L"x", L"999-", L"&H10"}) {
        EXPECT_FALSE(TryToDouble(text)) << text;
        EXPECT_FALSE(TryToInt16(text)) << text;
        EXPECT_FALSE(TryFormatDateText(text, L"yyyy-mm-dd")) << text;
    }
    EXPECT_FALSE(TryToDouble(L"1" + std::wstring(400, L'0')));
    EXPECT_FALSE(TryToInt16(L"32768"));
    EXPECT_FALSE(TryToInt16(L"-32769"));
    EXPECT_FALSE(TryFormatDateText(L"2001-02-30", L"yyyy-mm-dd"));
}

TEST(Conversions, TheCodePageKeepsSwedishLettersAndReplacesOtherCharacters)
{
    EXPECT_EQ(ToUserCodePage(L"Åäö €"), "\xc5\xe4\xf6 \x80");
    EXPECT_EQ(FromUserCodePage("\xc5\xe4\xf6 \x80"), L"Åäö €");
    EXPECT_EQ(AsUserCodePageHoldsIt(L"Åäö \x4e2d!"), L"Åäö ?!");
    EXPECT_EQ(ToUserCodePage(L""), "");
    EXPECT_EQ(FromUserCodePage(std::string_view("a\0b", 3)), std::wstring(L"a\0b", 3));
}
