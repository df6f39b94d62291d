#include "forms/entry/frmEdit.h"

#include "data/DataInterface.h"
#include "forms/Guide.h"
#include "platform/system/Conversions.h"
#include "settings/TextIds.h"

#include <utility>

frmEdit::frmEdit() : DayDialog(text::edit::caption, "Text3") {}

void frmEdit::Form_Help()
{
    ShowGuide(*this, L"edit");
}

void frmEdit::showMeNow(std::int16_t aret, std::int16_t manad, std::int16_t dag, double km, const std::wstring& stracka)
{
    Load();
    storedYear_ = aret;
    storedMonth_ = manad;
    storedDay_ = dag;
    ShowMonth(aret, manad);
    if (ShowsJournalMonth(aret)) {
        ShowDistance(km);
        Text2.SetText(stracka);
    } else {
        // The dialog shows today's month in place of the day's own, so none of its days is selected.
        Combo3.SetListIndex(-1);
    }
    ShowModal();
}

void frmEdit::addButton_Click()
{
    if (!AcceptInput()) {
        return;
    }
    DayEntry day = EnteredDay();
    if (DateIsUnchanged()) {
        DataInterface::ReplaceDay(day.year, day.month, day.day, day.distance, day.route);
    } else {
        // Kept on purpose: "A date may have two entries".
        DataInterface::DeleteDay(storedYear_, storedMonth_, storedDay_);
        // The route is moved: if copying it threw here, the day would be lost.
        DataInterface::AddDay(day.year, day.month, day.day, day.distance, std::move(day.route));
    }
    HideChanged();
}

void frmEdit::FillDayList(std::int16_t /*year*/, std::int16_t /*month*/)
{
    constexpr std::int16_t lastDay = 31; // Kept on purpose: "A day need not exist".
    Combo3.Clear();
    for (std::int16_t day = 1; day <= lastDay; ++day) {
        Combo3.AddItem(ToText(day));
        if (day == storedDay_) {
            Combo3.SetListIndex(Combo3.ListCount() - 1);
        }
    }
}

bool frmEdit::DateIsUnchanged() const
{
    // Kept on purpose: "The year has two controls".
    const bool sameYear = Text1.Text() == ToText(storedYear_);
    const bool sameMonth = Combo1.ListIndex() + 1 == storedMonth_;
    const bool sameDay = getDay() == storedDay_;
    return sameYear && sameMonth && sameDay;
}
