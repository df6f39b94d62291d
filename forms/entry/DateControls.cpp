#include "forms/entry/DateControls.h"

#include "forms/MonthNames.h"
#include "platform/system/CheckedArithmetic.h"
#include "platform/system/Conversions.h"

#include <utility>

DateControls::DateControls(TextBox& year, UpDown& spin, ComboBox& months, ComboBox& days, FillDayList fillDayList)
    : year_(year), spin_(spin), months_(months), days_(days), fillDayList_(std::move(fillDayList))
{
}

void DateControls::Prepare()
{
    year_.SetLocked(true);
    year_.SetText(ToText(designYear));
    spin_.SetBuddy(year_);
    months_.Clear();
    for (int month = 1; month <= 12; ++month) {
        months_.AddItem(MonthName(month));
    }
    days_.Clear();
}

void DateControls::RenameMonths()
{
    for (int month = 1; month <= 12; ++month) {
        months_.SetList(month - 1, MonthName(month));
    }
}

void DateControls::ShowYear(std::int16_t year)
{
    year_.SetText(ToText(year));
    spin_.SetValue(year);
}

void DateControls::ShowMonth(std::int16_t month)
{
    months_.SetListIndex(month - 1);
}

void DateControls::SpinChanged()
{
    year_.SetText(ToText(spin_.Value()));
    if (months_.ListIndex() >= 0) {
        fillDayList_(SpinYear(), getMonth());
    }
}

void DateControls::MonthClicked()
{
    fillDayList_(SpinYear(), getMonth());
}

bool DateControls::DayIsSelected() const
{
    return days_.ListIndex() >= 0;
}

std::int16_t DateControls::SpinYear() const
{
    return CheckedInt16(spin_.Value());
}

std::int16_t DateControls::getYear() const
{
    return ToInt16(year_.Text());
}

std::int16_t DateControls::getMonth() const
{
    const std::wstring name = months_.Text();
    return MonthNumber(name, L"12 " + name + L" 2000");
}

std::int16_t DateControls::getDay() const
{
    return ToInt16(days_.Text());
}
