#include "forms/entry/frmAdd.h"

#include "data/DataInterface.h"
#include "forms/Guide.h"
#include "platform/system/Conversions.h"
#include "settings/TextIds.h"

// No day is picked yet, and one has to be.
frmAdd::frmAdd() : DayDialog(text::add::caption, "Combo3") {}

void frmAdd::Form_Help()
{
    ShowGuide(*this, L"add");
}

void frmAdd::showMeNow(std::int16_t aret, std::int16_t manad)
{
    Load();
    ShowMonth(aret, manad);
    ShowModal();
}

void frmAdd::addButton_Click()
{
    if (!AcceptInput()) {
        return;
    }
    const DayEntry day = EnteredDay();
    DataInterface::AddDay(day.year, day.month, day.day, day.distance, day.route);
    HideChanged();
}

void frmAdd::FillDayList(std::int16_t year, std::int16_t month)
{
    Combo3.Clear();
    const auto taken = DataInterface::GetTakenDays(year, month);
    for (std::size_t day = 1; day < taken.size(); ++day) {
        if (!taken[day]) {
            Combo3.AddItem(ToText(static_cast<int>(day)));
        }
    }
}
