// The results of OLE Automation are right. These tests show that the faster conversions have the same.
#include "platform/system/PlainNumbers.h"

#include "platform/system/Conversions.h"

#include <gtest/gtest.h>

#include <windows.h>

#include <oleauto.h>

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstdint>
#include <functional>
#include <random>

namespace {

constexpr int mostCharacters = 6;

/// Gives every text of up to six digits, and of up to five digits with a separator at each place, to a function.
void ForEachPlainText(wchar_t separator, const std::function<void(const std::wstring&)>& look)
{
    int numbers = 1;
    for (int places = 1; places <= mostCharacters; ++places) {
        numbers *= 10;
        for (int number = 0; number < numbers; ++number) {
            const std::wstring text = ToDigits(number, places);
            look(text);
            for (std::size_t at = 0; places < mostCharacters && at <= text.size(); ++at) {
                look(std::wstring(text).insert(at, 1, separator));
            }
        }
    }
}

/// Reads by OLE Automation, because a plain number has no sign.
double ReadByTheSystem(std::size_t blanksBefore, const std::wstring& number)
{
    return ToDouble(std::wstring(blanksBefore, L' ') + L'+' + number);
}

std::wstring TextByTheSystem(double value)
{
    BSTR raw = nullptr;
    EXPECT_EQ(VarBstrFromR8(value, LOCALE_INVARIANT, LOCALE_NOUSEROVERRIDE, &raw), S_OK);
    std::wstring text(raw, SysStringLen(raw));
    SysFreeString(raw);
    if (const std::size_t decimal = text.find(L'.'); decimal != std::wstring::npos) {
        text.replace(decimal, 1, DecimalSeparator());
    }
    return text;
}

bool HasSameBits(double one, double other)
{
    return std::bit_cast<std::uint64_t>(one) == std::bit_cast<std::uint64_t>(other);
}

// The functions below use a macro of the test library only for a failure, because they are called millions of times.

void ExpectSameNumber(std::size_t blanksBefore, const std::wstring& number)
{
    const double expected = ReadByTheSystem(blanksBefore, number);
    const auto plain = ReadPlainNumber(std::wstring(blanksBefore, L' ') + number);
    if (!plain || !HasSameBits(*plain, expected)) {
        ADD_FAILURE() << testing::PrintToString(number) << " is read as " << plain.value_or(-1) << " instead of "
                      << expected;
    }
}

/// Returns whether the number has a plain text.
bool ExpectSameText(double value)
{
    const auto plain = PlainNumberText(value);
    if (plain && *plain != TextByTheSystem(value)) {
        ADD_FAILURE() << testing::PrintToString(*plain) << " instead of "
                      << testing::PrintToString(TextByTheSystem(value));
    }
    return plain.has_value();
}

void ExpectSameNumberWithBlanks(const std::wstring& number)
{
    for (std::size_t blanks = 0; blanks + number.size() <= mostCharacters; ++blanks) {
        for (std::size_t before = 0; before <= blanks; ++before) {
            ExpectSameNumber(before, number + std::wstring(blanks - before, L' '));
        }
    }
}

} // namespace

TEST(PlainNumbers, EveryPlainTextIsReadAsTheSystemReadsIt)
{
    int texts = 0;
    ForEachPlainText(DecimalSeparator()[0], [&](const std::wstring& text) {
        ExpectSameNumberWithBlanks(text);
        ++texts;
    });
    EXPECT_EQ(texts, 1765430);
}

TEST(PlainNumbers, EveryNumberOfAPlainTextIsWrittenAsTheSystemWritesIt)
{
    int written = 0;
    for (int number = 0; number < 1000000; ++number) {
        written += ExpectSameText(number) ? 1 : 0;
    }
    EXPECT_EQ(written, 1000000);
    for (int power = 10; power <= 100000; power *= 10) {
        for (int number = power / 10; number < 100000; ++number) {
            written += ExpectSameText(static_cast<double>(number) / power) ? 1 : 0;
        }
    }
    EXPECT_EQ(written, 1000000 + 99999 + 99990 + 99900 + 99000 + 90000);
}

TEST(PlainNumbers, OtherNumbersAreWrittenAsTheSystemWritesThem)
{
    std::mt19937_64 random(20041121);
    for (int i = 0; i < 1000000; ++i) {
        const auto any = std::bit_cast<double>(random());
        ExpectSameText(any);
        const double plain = static_cast<double>(random() % 1000000) / 1000;
        ExpectSameText(std::nextafter(plain, any));
    }
}

TEST(PlainNumbers, OtherTextsAreLeftToTheSystem)
{
    for (const wchar_t* text :
         {L"", L" ", L"-1", L"+1", L"1E3", L"1 2", L"1234567", L"      1", L"&H10", L"\u0661", L"1\t"}) {
        EXPECT_FALSE(ReadPlainNumber(text)) << testing::PrintToString(std::wstring(text));
    }
    const std::wstring separator = DecimalSeparator();
    EXPECT_FALSE(ReadPlainNumber(separator));
    EXPECT_FALSE(ReadPlainNumber(L"1" + separator + L"2" + separator));
    EXPECT_FALSE(ReadPlainNumber(separator == L"." ? L"1,5" : L"1.5"));
}
