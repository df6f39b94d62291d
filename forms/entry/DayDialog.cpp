#include "forms/entry/DayDialog.h"

#include "app/Module1.h"
#include "data/DayFields.h"
#include "forms/LocalText.h"
#include "forms/entry/DistanceText.h"
#include "forms/entry/RouteText.h"
#include "platform/CheckedArithmetic.h"
#include "platform/Clock.h"
#include "platform/Conversions.h"
#include "platform/MsgBox.h"
#include "platform/SendKeys.h"
#include "settings/TextIds.h"

namespace {

constexpr std::array rows{
    LayoutRow{"Label1(0)", {165, 150, 1140, 270}},      LayoutRow{"Text1", {165, 435, 900, 345}},
    LayoutRow{"UpDown1", {1065, 435, 240, 345}},        LayoutRow{"Label1(1)", {1440, 150, 2400, 270}},
    LayoutRow{"Combo1", {1440, 435, 2400, 345}},        LayoutRow{"Label1(2)", {3975, 150, 1200, 270}},
    LayoutRow{"Combo3", {3975, 435, 1200, 345}},        LayoutRow{"Label3", {165, 930, 3675, 270}},
    LayoutRow{"Text3", {165, 1215, 1140, 345}},         LayoutRow{"Label2", {165, 1710, 5010, 270}},
    LayoutRow{"Text2", {165, 1995, 5010, 345}},         LayoutRow{"addButton", {2820, 2595, 1125, 345}},
    LayoutRow{"cancelButton", {4050, 2595, 1125, 345}},
};

constexpr FormLayout layout{
    .kind = FormKind::Dialog,
    .width = 5340,
    .height = 3105,
    .rows = rows,
    .defaultButton = "addButton",
    .cancelButton = "cancelButton",
    .firstFocus = "Text1",
};

/// The number of an item of the add dialog as an item of either dialog.
constexpr std::int16_t Item(std::int16_t addDialogId)
{
    return static_cast<std::int16_t>(addDialogId - text::add::caption);
}

} // namespace

const FormLayout& DayDialog::Layout() const
{
    return layout;
}

void DayDialog::Wire()
{
    On(UpDown1.Change, &DayDialog::UpDown1_Change);
    On(Combo1.Click, &DayDialog::Combo1_Click);
    On(addButton.Click, &DayDialog::addButton_Click);
    On(cancelButton.Click, &DayDialog::cancelButton_Click);
}

void DayDialog::Form_Load()
{
    ApplyLanguage();
    date_.Prepare();
    Text3.SetText(L"");
    Text2.SetText(L"");
}

void DayDialog::UpDown1_Change()
{
    date_.SpinChanged();
}

void DayDialog::Combo1_Click()
{
    date_.MonthClicked();
}

void DayDialog::cancelButton_Click()
{
    changed_ = false;
    Hide();
}

void DayDialog::ApplyLanguage()
{
    SetCaption(DialogText(Item(text::add::caption)));
    Label1[0].SetCaption(DialogText(Item(text::add::year)));
    Label1[1].SetCaption(DialogText(Item(text::add::month)));
    Label1[2].SetCaption(DialogText(Item(text::add::day)));
    Label3.SetCaption(DialogText(Item(text::add::distance)) + L" " + Module1::distanceUnit);
    Label2.SetCaption(DialogText(Item(text::add::route)));
    cancelButton.SetCaption(DialogText(Item(text::add::cancel)));
    addButton.SetCaption(L"OK");
}

bool DayDialog::ShowsJournalMonth(std::int16_t year) noexcept
{
    constexpr std::int16_t firstShownYear = 1900;
    return year >= firstShownYear;
}

void DayDialog::ShowMonth(std::int16_t year, std::int16_t month)
{
    const CalendarDay today = Clock::Today();
    const bool shown = ShowsJournalMonth(year);
    date_.ShowYear(shown ? year : today.year);
    date_.ShowMonth(shown ? month : today.month);
    if (shown) {
        // The spin control may not reach the year: the days are those of the year itself.
        FillDayList(year, month);
    }
}

bool DayDialog::InputIsAcceptable()
{
    if (!date_.DayIsSelected()) {
        MsgBox(DialogText(Item(text::add::mustChooseDay)));
        Combo3.SetFocus();
        return false;
    }
    return DistanceIsAcceptable();
}

bool DayDialog::DistanceIsAcceptable()
{
    const std::wstring typed = Text3.Text();
    const std::wstring& unit = Module1::distanceUnit;
    if (typed.empty()) {
        Text3.SetText(L"-2");
        return true;
    }
    if (!IsDistance(typed)) {
        RefuseDistance(DialogText(Item(text::add::onlyNumbers)));
        return false;
    }
    if (DistanceOf(typed) < 0) {
        RefuseDistance(DialogText(Item(text::add::numberOf)) + L" " + unit + L" " +
                       DialogText(Item(text::add::mustBePositive)));
        return false;
    }
    if (typed.size() > distancePlaces) {
        RefuseDistance(DialogText(Item(text::add::onlySpecifyNumberOf)) + L" " + unit + L" " +
                       DialogText(Item(text::add::withSixCharacters)) + L"\r\n" +
                       DialogText(Item(text::add::youHaveUsed)) + L" " + std::to_wstring(typed.size()) + L".");
        return false;
    }
    return true;
}

void DayDialog::RefuseDistance(const std::wstring& message)
{
    MsgBox(message);
    Text3.SetFocus();
    SendKeys(L"{HOME}+{END}");
}

double DayDialog::Distance() const
{
    return DistanceOf(Text3.Text());
}

std::wstring DayDialog::Route() const
{
    return RouteOf(Text2.Text());
}

void DayDialog::HideChanged()
{
    changed_ = true;
    Hide();
}

std::wstring DayDialog::DialogText(std::int16_t item) const
{
    return LocalText(CheckedInt16(textBase_ + item));
}
