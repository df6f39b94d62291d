#include "forms/entry/MonthNames.h"

#include "platform/Conversions.h"
#include "platform/RuntimeError.h"

std::wstring MonthName(int month)
{
    return FormatDateText((month < 10 ? L"2001-0" : L"2001-") + ToText(month) + L"-01", L"mmmm");
}

std::int16_t MonthNumber(const std::wstring& name, const std::wstring& dateText)
{
    try {
        const std::int16_t read = ToInt16(FormatDateText(dateText, L"mm"));
        if (MonthName(read) == name) {
            return read;
        }
    } catch (const RuntimeError&) {
        // Not a date here: the name is looked up below.
    }
    for (std::int16_t month = 1; month <= 12; ++month) {
        if (MonthName(month) == name) {
            return month;
        }
    }
    throw RuntimeError(ErrorNumber::TypeMismatch);
}
