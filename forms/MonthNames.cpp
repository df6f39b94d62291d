#include "forms/MonthNames.h"

#include "platform/system/Conversions.h"
#include "platform/system/RuntimeError.h"

std::wstring MonthName(int month)
{
    return FormatDateText((month < 10 ? L"2001-0" : L"2001-") + ToText(month) + L"-01", L"mmmm");
}

std::int16_t MonthNumber(const std::wstring& name, const std::wstring& dateText)
{
    if (const auto digits = TryFormatDateText(dateText, L"mm")) {
        const std::int16_t read = ToInt16(*digits);
        if (MonthName(read) == name) {
            return read;
        }
    }
    for (std::int16_t month = 1; month <= 12; ++month) {
        if (MonthName(month) == name) {
            return month;
        }
    }
    throw RuntimeError(ErrorNumber::TypeMismatch);
}
