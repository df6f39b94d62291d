#include "forms/entry/frmEdit.h"

#include "data/DataInterface.h"
#include "platform/Conversions.h"
#include "settings/TextIds.h"

frmEdit::frmEdit() : DayDialog(text::edit::caption) {}

void frmEdit::showMeNow(std::int16_t aret, std::int16_t manad, std::int16_t dag, double km, const std::wstring& stracka)
{
    Load();
    storedYear_ = aret;
    storedMonth_ = manad;
    storedDay_ = dag;
    ShowMonth(aret, manad);
    if (ShowsJournalMonth(aret)) {
        Text3.SetText(km < 0 ? L"" : ToText(km));
        Text2.SetText(stracka);
    } else {
        // Today's month is shown in place of the day's own: no day in it is meant.
        Combo3.SetListIndex(-1);
    }
    ShowModal();
}

void frmEdit::addButton_Click()
{
    if (!InputIsAcceptable()) {
        return;
    }
    if (DateIsUnchanged()) {
        DataInterface::ReplaceDay(getYear(), getMonth(), getDay(), Distance(), Route());
    } else {
        DataInterface::DeleteDay(storedYear_, storedMonth_, storedDay_);
        DataInterface::AddDay(getYear(), getMonth(), getDay(), Distance(), Route());
    }
    HideChanged();
}

void frmEdit::FillDayList(std::int16_t /*year*/, std::int16_t /*month*/)
{
    constexpr std::int16_t lastDay = 31;
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
    // The year is compared as text: "02004" is another year than "2004", and the day moves.
    const bool sameYear = Text1.Text() == ToText(storedYear_);
    const bool sameMonth = Combo1.ListIndex() + 1 == storedMonth_;
    const bool sameDay = getDay() == storedDay_;
    return sameYear && sameMonth && sameDay;
}
