#include "forms/entry/frmAdd.h"

#include "data/DataInterface.h"
#include "platform/Conversions.h"
#include "settings/TextIds.h"

frmAdd::frmAdd() : DayDialog(text::add::caption) {}

void frmAdd::showMeNow(std::int16_t aret, std::int16_t manad)
{
    Load();
    ShowMonth(aret, manad);
    ShowModal();
}

void frmAdd::addButton_Click()
{
    if (!InputIsAcceptable()) {
        return;
    }
    DataInterface::AddDay(getYear(), getMonth(), getDay(), Distance(), Route());
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
