// The year box, its arrows, the months and the days: how they follow each other in the dialogs that add and edit a day.
#include "tests/forms/ProgramUnderTest.h"

#include "forms/entry/DateControls.h"
#include "forms/entry/frmAdd.h"
#include "forms/entry/frmEdit.h"
#include "platform/system/Clock.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <chrono>
#include <optional>
#include <vector>

#include <commctrl.h>

using testing::IsEmpty;

namespace {

class DateControlsOfDialogs : public ProgramUnderTest {
protected:
    /// What the user does in the dialog opened at a month, and then he cancels it.
    void InAddAt(std::int16_t year, std::int16_t month, const std::function<void(frmAdd&)>& look)
    {
        user.In<frmAdd>([look](frmAdd& dialog) {
            look(dialog);
            Press(dialog.cancelButton);
        });
        Instance<frmAdd>()->showMeNow(year, month);
        UnloadInstance<frmAdd>();
    }

    void InEditOf(std::int16_t year, std::int16_t month, std::int16_t day, const std::function<void(frmEdit&)>& look)
    {
        user.In<frmEdit>([look](frmEdit& dialog) {
            look(dialog);
            Press(dialog.cancelButton);
        });
        Instance<frmEdit>()->showMeNow(year, month, day, 12, L"Office");
        UnloadInstance<frmEdit>();
    }

    std::vector<std::wstring> FreeDays(std::int16_t year, std::int16_t month)
    {
        std::vector<std::wstring> days;
        InAddAt(year, month, [&days](const frmAdd& dialog) { days = Entries(dialog.Combo3); });
        return days;
    }
};

/// "1", "2", ... to the last, less those named.
std::vector<std::wstring> DaysTo(int last, std::initializer_list<int> without = {})
{
    std::vector<std::wstring> days;
    for (int day = 1; day <= last; ++day) {
        if (std::find(without.begin(), without.end(), day) == without.end()) {
            days.push_back(std::to_wstring(day));
        }
    }
    return days;
}

/// Drops the list down and rests the mouse on an entry, without a click.
void PointAtInOpenList(const ComboBox& list, int entry)
{
    COMBOBOXINFO parts{};
    parts.cbSize = sizeof parts;
    GetComboBoxInfo(list.Handle(), &parts);
    SetFocus(list.Handle());
    PressKey(VK_F4);
    RECT area{};
    SendMessageW(parts.hwndList, LB_GETITEMRECT, static_cast<WPARAM>(entry), reinterpret_cast<LPARAM>(&area));
    const POINT middle{(area.left + area.right) / 2, (area.top + area.bottom) / 2};
    MoveTo(parts.hwndList, middle);
    MoveTo(parts.hwndList, {middle.x + 1, middle.y}); // a list that has just opened may take the first move for its own
}

int SpinOf(const UpDown& arrows)
{
    return static_cast<int>(SendMessageW(arrows.Handle(), UDM_GETPOS32, 0, 0));
}

/// The steps of arrows and after how many seconds each begins, as the system has them.
std::vector<UDACCEL> StepsOf(HWND arrows)
{
    std::vector<UDACCEL> steps(16);
    const auto count = SendMessageW(arrows, UDM_GETACCEL, steps.size(), reinterpret_cast<LPARAM>(steps.data()));
    steps.resize(static_cast<std::size_t>(count));
    return steps;
}

/// Arrows as the system makes them, in an empty corner of the dialog.
HWND PlainArrows(const Form& form)
{
    RECT area{};
    GetClientRect(form.Handle(), &area);
    HWND arrows = CreateWindowExW(0, UPDOWN_CLASSW, L"", WS_CHILD | WS_VISIBLE, 4, area.bottom - 34, 16, 30,
                                  form.Handle(), nullptr, nullptr, nullptr);
    SendMessageW(arrows, UDM_SETRANGE32, 0, 10000);
    return arrows;
}

/// How long the arrows, held down, take for a number of steps. The first ones, which wait longer, do not count.
std::chrono::steady_clock::duration TimeToRepeat(HWND arrows)
{
    constexpr int first = 3;
    constexpr int last = 23;
    const auto position = [arrows] { return SendMessageW(arrows, UDM_GETPOS32, 0, 0); };
    const auto start = position();
    std::optional<std::chrono::steady_clock::time_point> began;
    HoldMouseAt(arrows, {8, 6}, [&] {
        if (!began && position() >= start + first) {
            began = std::chrono::steady_clock::now();
        }
        return position() >= start + last;
    });
    return std::chrono::steady_clock::now() - began.value_or(std::chrono::steady_clock::now());
}

} // namespace

TEST_F(DateControlsOfDialogs, StepByOneYearAtTheDefaultRateWhileAnArrowIsHeld)
{
    Start();
    InAddAt(2004, 3, [](frmAdd& dialog) {
        BringToFront(dialog);
        HWND plain = PlainArrows(dialog);
        const auto usual = StepsOf(plain);
        const auto ours = StepsOf(dialog.UpDown1.Handle());
        ASSERT_EQ(ours.size(), usual.size());
        for (std::size_t i = 0; i < ours.size(); ++i) {
            EXPECT_EQ(ours[i].nSec, usual[i].nSec);
            EXPECT_EQ(ours[i].nInc, 1u);
        }
        // A busy machine makes single runs slower, never faster.
        const auto pace = std::min(TimeToRepeat(plain), TimeToRepeat(plain));
        EXPECT_GT(TimeToRepeat(dialog.UpDown1.Handle()), pace / 2) << "the years run away";
        EXPECT_EQ(Text(dialog.Text1.Handle()), std::to_wstring(SpinOf(dialog.UpDown1)));
    });
}

TEST_F(DateControlsOfDialogs, StartAtYear2000WithoutAMonth)
{
    Start();
    const auto dialog = Instance<frmAdd>();
    dialog->Load();
    EXPECT_EQ(Text(dialog->Text1.Handle()), L"2000");
    EXPECT_EQ(SpinOf(dialog->UpDown1), 2000);
    EXPECT_EQ(dialog->Combo1.ListIndex(), -1);
    EXPECT_THAT(Entries(dialog->Combo3), IsEmpty());
    UnloadInstance<frmAdd>();
}

TEST_F(DateControlsOfDialogs, OfferTheTwelveMonthsByTheNamesOfTheSystem)
{
    Start({.language = 100});
    std::vector<std::wstring> names;
    for (int month = 1; month <= 12; ++month) {
        names.push_back(MonthNamed(month));
    }
    InAddAt(2004, 1, [&names](const frmAdd& dialog) { EXPECT_EQ(Entries(dialog.Combo1), names); });
}

TEST_F(DateControlsOfDialogs, ReturnTheNumberOfEveryMonth)
{
    Start();
    InAddAt(2004, 1, [](frmAdd& dialog) {
        for (std::int16_t month = 1; month <= 12; ++month) {
            Pick(dialog.Combo1, MonthNamed(month));
            EXPECT_EQ(dialog.getMonth(), month);
        }
    });
}

TEST_F(DateControlsOfDialogs, ReachTheYears1950To2100OneByOne)
{
    Start();
    InAddAt(2004, 1, [](frmAdd& dialog) {
        int lowest = 0;
        int highest = 0;
        SendMessageW(dialog.UpDown1.Handle(), UDM_GETRANGE32, reinterpret_cast<WPARAM>(&lowest),
                     reinterpret_cast<LPARAM>(&highest));
        EXPECT_EQ(lowest, 1950);
        EXPECT_EQ(highest, 2100);
        StepUp(dialog.UpDown1);
        EXPECT_EQ(Text(dialog.Text1.Handle()), L"2005");
        StepDown(dialog.UpDown1);
        StepDown(dialog.UpDown1);
        EXPECT_EQ(Text(dialog.Text1.Handle()), L"2003");
        EXPECT_EQ(dialog.getYear(), 2003);
    });
}

TEST_F(DateControlsOfDialogs, StopAtTheEndsOfTheYears)
{
    Start();
    InAddAt(2099, 1, [](frmAdd& dialog) {
        StepUp(dialog.UpDown1);
        StepUp(dialog.UpDown1);
        EXPECT_EQ(Text(dialog.Text1.Handle()), L"2100");
    });
    InAddAt(1951, 1, [](frmAdd& dialog) {
        StepDown(dialog.UpDown1);
        StepDown(dialog.UpDown1);
        EXPECT_EQ(Text(dialog.Text1.Handle()), L"1950");
    });
}

TEST_F(DateControlsOfDialogs, KeepTheChosenDayWhenTheArrowsCannotGoOn)
{
    Start();
    InAddAt(2100, 1, [](frmAdd& dialog) {
        Pick(dialog.Combo3, L"7");
        StepUp(dialog.UpDown1);
        EXPECT_EQ(dialog.Combo3.Text(), L"7");
    });
}

TEST_F(DateControlsOfDialogs, TakeNoTypingInTheYearBox)
{
    Start();
    InAddAt(2004, 1, [](frmAdd& dialog) {
        EXPECT_TRUE(IsEnabled(dialog.Text1));
        Type(dialog.Text1, L"1999");
        EXPECT_EQ(Text(dialog.Text1.Handle()), L"2004");
        EXPECT_EQ(SpinOf(dialog.UpDown1), 2004);
    });
}

TEST_F(DateControlsOfDialogs, AreDropDownListsWithoutAnEditField)
{
    Start();
    InAddAt(2004, 1, [](const frmAdd& dialog) {
        for (const ComboBox* list : {&dialog.Combo1, &dialog.Combo3}) {
            EXPECT_EQ(GetWindowLongW(list->Handle(), GWL_STYLE) & (CBS_DROPDOWN | CBS_DROPDOWNLIST), CBS_DROPDOWNLIST);
        }
    });
}

TEST_F(DateControlsOfDialogs, FillTheDaysWhenTheYearChanges)
{
    Start();
    InAddAt(2003, 2, [](frmAdd& dialog) {
        EXPECT_EQ(Entries(dialog.Combo3), DaysTo(28));
        StepUp(dialog.UpDown1);
        EXPECT_EQ(Entries(dialog.Combo3), DaysTo(29));
    });
}

TEST_F(DateControlsOfDialogs, FillTheDaysWhenAMonthIsSelected)
{
    Start();
    InAddAt(2003, 1, [](frmAdd& dialog) {
        EXPECT_EQ(Entries(dialog.Combo3), DaysTo(31));
        Pick(dialog.Combo1, MonthNamed(4));
        EXPECT_EQ(Entries(dialog.Combo3), DaysTo(30));
    });
}

TEST_F(DateControlsOfDialogs, KeepMonthAndDayWhenAnOpenListIsLeft)
{
    Start();
    InAddAt(2003, 1, [](frmAdd& dialog) {
        BringToFront(dialog);
        Pick(dialog.Combo3, L"30");
        PointAtInOpenList(dialog.Combo1, 1);
        PressKey(VK_ESCAPE);
        EXPECT_EQ(Text(dialog.Combo1.Handle()), MonthNamed(1));
        EXPECT_EQ(Entries(dialog.Combo3), DaysTo(31));
        EXPECT_EQ(dialog.Combo3.Text(), L"30");
        PointAtInOpenList(dialog.Combo3, 4);
        PressKey(VK_TAB);
        EXPECT_EQ(Text(dialog.Combo3.Handle()), L"30");
    });
}

TEST_F(DateControlsOfDialogs, FillTheDaysWhenEnterSelectsTheMonthUnderTheMouse)
{
    Start();
    InAddAt(2003, 1, [](frmAdd& dialog) {
        BringToFront(dialog);
        PointAtInOpenList(dialog.Combo1, 1);
        PressKey(VK_RETURN);
        EXPECT_EQ(Text(dialog.Combo1.Handle()), MonthNamed(2));
        EXPECT_EQ(Entries(dialog.Combo3), DaysTo(28));
    });
}

TEST_F(DateControlsOfDialogs, ChangeOnlyTheYearBoxWhileNoMonthIsPicked)
{
    Start();
    const auto dialog = Instance<frmAdd>();
    dialog->Load();
    StepUp(dialog->UpDown1);
    EXPECT_EQ(Text(dialog->Text1.Handle()), L"2001");
    EXPECT_THAT(Entries(dialog->Combo3), IsEmpty());
    EXPECT_THAT(boxes.Texts(), IsEmpty());
    UnloadInstance<frmAdd>();
}

TEST_F(DateControlsOfDialogs, FillTheDaysOfTheYear2000LikeThoseOfAnyOther)
{
    // The arrows are at 2000 before showMeNow sets the year.
    Start();
    EXPECT_EQ(FreeDays(2000, 2), DaysTo(29));
}

TEST_F(DateControlsOfDialogs, OfferOnlyFreeDaysThatExistWhenAdding)
{
    Start({.journal = "2003-04-17      1 \r\n"
                      "2003-04-03      1 \r\n"
                      "2003-05-04      1 \r\n"
                      "2002-04-05      1 \r\n"});
    EXPECT_EQ(FreeDays(2003, 4), DaysTo(30, {3, 17}));
    EXPECT_EQ(FreeDays(2000, 2), DaysTo(29));
    EXPECT_EQ(FreeDays(2100, 2), DaysTo(28));
    EXPECT_EQ(FreeDays(2004, 2), DaysTo(29));
    EXPECT_EQ(FreeDays(2004, 12), DaysTo(31));
}

TEST_F(DateControlsOfDialogs, OfferTheLeapDayEvenWhenItIsTaken)
{
    Start({.journal = "2004-02-29      1 \r\n2004-02-28      1 \r\n"});
    EXPECT_EQ(FreeDays(2004, 2), DaysTo(29, {28}));
}

TEST_F(DateControlsOfDialogs, ReturnTheSelectedDayNotItsIndex)
{
    Start({.journal = "2003-04-17      1 \r\n2003-04-03      1 \r\n"});
    InAddAt(2003, 4, [](frmAdd& dialog) {
        EXPECT_EQ(dialog.Combo3.ListIndex(), -1) << "no day is picked before the user does";
        Pick(dialog.Combo3, L"18");
        EXPECT_EQ(dialog.getDay(), 18);
    });
}

TEST_F(DateControlsOfDialogs, OfferAllDaysWithTheDaysOwnPickedWhenEditing)
{
    Start();
    InEditOf(2004, 3, 15, [](frmEdit& dialog) {
        EXPECT_EQ(Entries(dialog.Combo3), DaysTo(31));
        EXPECT_EQ(dialog.getDay(), 15);
        Pick(dialog.Combo3, L"20");
        Pick(dialog.Combo1, MonthNamed(2));
        EXPECT_EQ(Entries(dialog.Combo3), DaysTo(31));
        EXPECT_EQ(dialog.getDay(), 15) << "the day's own day is picked again";
        Pick(dialog.Combo3, L"31");
        EXPECT_EQ(dialog.getDay(), 31);
        StepUp(dialog.UpDown1);
        EXPECT_EQ(dialog.getDay(), 15);
    });
}

TEST_F(DateControlsOfDialogs, ShowAYearThatTheArrowsCannotReach)
{
    Start({.journal = "1940-04-03      1 \r\n"});
    InAddAt(1940, 4, [](const frmAdd& dialog) {
        EXPECT_EQ(Text(dialog.Text1.Handle()), L"1940");
        EXPECT_EQ(dialog.getYear(), 1940);
        EXPECT_EQ(SpinOf(dialog.UpDown1), 1950);
        EXPECT_EQ(Entries(dialog.Combo3), DaysTo(30, {3}));
    });
    InEditOf(2150, 4, 3, [](const frmEdit& dialog) {
        EXPECT_EQ(dialog.getYear(), 2150);
        EXPECT_EQ(SpinOf(dialog.UpDown1), 2100);
        EXPECT_EQ(dialog.getDay(), 3);
    });
}

TEST_F(DateControlsOfDialogs, FillTheDaysOfTheArrowsYearAndReturnTheBoxYear)
{
    Start({.journal = "1950-05-03      1 \r\n"});
    InAddAt(1940, 4, [](frmAdd& dialog) {
        Pick(dialog.Combo1, MonthNamed(5));
        EXPECT_EQ(Entries(dialog.Combo3), DaysTo(31, {3}));
        EXPECT_EQ(dialog.getYear(), 1940);
    });
}

TEST_F(DateControlsOfDialogs, StartAtTheCurrentMonthForAYearBefore1900)
{
    Clock::StandStillAt({2012, 2, 5});
    Start({.journal = "2012-02-05      1 \r\n"});
    for (const std::int16_t year : {std::int16_t{0}, std::int16_t{1899}}) {
        InAddAt(year, 12, [](const frmAdd& dialog) {
            EXPECT_EQ(Text(dialog.Text1.Handle()), L"2012");
            EXPECT_EQ(SpinOf(dialog.UpDown1), 2012);
            EXPECT_EQ(dialog.getMonth(), 2);
            EXPECT_EQ(Entries(dialog.Combo3), DaysTo(29, {5}));
        });
    }
    InAddAt(1900, 12, [](const frmAdd& dialog) {
        EXPECT_EQ(dialog.getYear(), 1900);
        EXPECT_EQ(dialog.getMonth(), 12);
    });
}
