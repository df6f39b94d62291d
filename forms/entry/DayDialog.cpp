#include "forms/entry/DayDialog.h"

#include "app/Module1.h"
#include "data/DayFields.h"
#include "forms/LocalText.h"
#include "forms/entry/DistanceText.h"
#include "forms/entry/RouteText.h"
#include "platform/system/CheckedArithmetic.h"
#include "platform/system/Clock.h"
#include "platform/system/Conversions.h"
#include "platform/windows/MsgBox.h"
#include "platform/windows/SendKeys.h"
#include "settings/TextIds.h"

#include <utility>

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

constexpr FormLayout commonLayout{
    .kind = FormKind::Dialog,
    .width = 5340,
    .height = 3105,
    .rows = rows,
    .defaultButton = "addButton",
    .cancelButton = "cancelButton",
};

} // namespace

DayDialog::DayDialog(std::int16_t textBase, const char* firstFocus) : textBase_(textBase), layout_(commonLayout)
{
    layout_.firstFocus = firstFocus;
}

const FormLayout& DayDialog::Layout() const
{
    return layout_;
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
    decimalSeparator_ = DecimalSeparator();
    date_.Prepare();
    Text3.SetText(L"");
    Text2.SetText(L"");
}

void DayDialog::Form_RegionChanged()
{
    date_.RenameMonths();
    const std::wstring typed = Text3.Text();
    std::wstring here = typed;
    const std::wstring before = std::exchange(decimalSeparator_, DecimalSeparator());
    if (const std::size_t at = typed.find(before); at != std::wstring::npos) {
        here.replace(at, before.size(), decimalSeparator_);
    }
    if (typed != known_.text && typed.size() <= distancePlaces && IsDistance(here) && DistanceOf(here) >= 0) {
        known_ = {typed, DistanceOf(here)};
    }
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
    SetCaption(DialogText(text::add::caption));
    Label1[0].SetCaption(DialogText(text::add::year));
    Label1[1].SetCaption(DialogText(text::add::month));
    Label1[2].SetCaption(DialogText(text::add::day));
    Label3.SetCaption(DialogText(text::add::distance) + L" " + Module1::distanceUnit);
    Label2.SetCaption(DialogText(text::add::route));
    cancelButton.SetCaption(DialogText(text::add::cancel));
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
        // The year may be outside the range of the up-down control, which then has another year.
        FillDayList(year, month);
    }
}

bool DayDialog::AcceptInput()
{
    if (!date_.DayIsSelected()) {
        MsgBox(DialogText(text::add::mustChooseDay));
        Combo3.SetFocus();
        return false;
    }
    return AcceptDistance();
}

bool DayDialog::AcceptDistance()
{
    const std::wstring typed = Text3.Text();
    const std::wstring& unit = Module1::distanceUnit;
    if (typed.empty()) {
        Text3.SetText(L"-2"); // Kept on purpose: "A day without a distance has the distance -2".
        return true;
    }
    if (typed == known_.text) {
        return true;
    }
    if (!IsDistance(typed)) {
        RefuseDistance(DialogText(text::add::onlyNumbers));
        return false;
    }
    if (DistanceOf(typed) < 0) {
        RefuseDistance(DialogText(text::add::numberOf) + L" " + unit + L" " + DialogText(text::add::mustBePositive));
        return false;
    }
    if (typed.size() > distancePlaces) {
        RefuseDistance(DialogText(text::add::onlySpecifyNumberOf) + L" " + unit + L" " +
                       DialogText(text::add::withSixCharacters) + L"\r\n" + DialogText(text::add::youHaveUsed) + L" " +
                       std::to_wstring(typed.size()) + L".");
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
    const std::wstring typed = Text3.Text();
    return typed == known_.text ? known_.distance : DistanceOf(typed);
}

DayEntry DayDialog::EnteredDay() const
{
    return {.year = getYear(),
            .month = getMonth(),
            .day = getDay(),
            .distance = Distance(),
            .route = RouteOf(Text2.Text())};
}

void DayDialog::ShowDistance(double distance)
{
    Text3.SetText(distance < 0 ? L"" : ToText(distance));
    known_ = {Text3.Text(), distance};
}

void DayDialog::HideChanged()
{
    changed_ = true;
    Hide();
}

std::wstring DayDialog::DialogText(std::int16_t addDialogId) const
{
    return LocalText(CheckedInt16(textBase_ + addDialogId - text::add::caption));
}
