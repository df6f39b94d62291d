// The dialog that adds a day: what reaches the journal, and what it answers afterwards.
#include "tests/forms/ProgramUnderTest.h"

#include "data/DataInterface.h"
#include "forms/entry/frmAdd.h"

#include <gmock/gmock.h>

using testing::IsEmpty;

namespace {

class AddDayDialog : public ProgramUnderTest {
protected:
    /// Opens the dialog and lets the user act in it; it stays loaded, as the main window needs it.
    void Open(std::int16_t year, std::int16_t month, std::function<void(frmAdd&)> act)
    {
        user.In<frmAdd>(std::move(act));
        Instance<frmAdd>()->showMeNow(year, month);
    }
};

} // namespace

TEST_F(AddDayDialog, OpensWithEmptyBoxesAndNoDayPicked)
{
    Start();
    Open(2004, 3, [](frmAdd& dialog) {
        EXPECT_EQ(dialog.Text1.Text(), L"2004");
        EXPECT_EQ(dialog.Combo1.Text(), MonthNamed(3));
        EXPECT_EQ(dialog.Combo3.ListIndex(), -1);
        EXPECT_EQ(dialog.Text3.Text(), L"");
        EXPECT_EQ(dialog.Text2.Text(), L"");
        Press(dialog.cancelButton);
    });
    EXPECT_FALSE(Instance<frmAdd>()->hasChanged());
}

TEST_F(AddDayDialog, AddsTheDayToTheJournalAndReturnsItsDate)
{
    Start({.journal = "2003-04-17      1 \r\n2003-04-03      1 \r\n"});
    Open(2003, 4, [](frmAdd& dialog) {
        Pick(dialog.Combo3, L"18");
        Type(dialog.Text3, Decimal(L"12.5"));
        Type(dialog.Text2, L"Office");
        Press(dialog.addButton);
    });
    const auto dialog = Instance<frmAdd>();
    EXPECT_TRUE(dialog->IsLoaded());
    EXPECT_TRUE(dialog->hasChanged());
    EXPECT_EQ(dialog->getYear(), 2003);
    EXPECT_EQ(dialog->getMonth(), 4);
    EXPECT_EQ(dialog->getDay(), 18);
    EXPECT_EQ(DataInterface::days[0], (DayEntry{2003, 4, 18, 12.5, L"Office"}));
    EXPECT_TRUE(DataInterface::IsJournalChanged());
}

TEST_F(AddDayDialog, AddsADayInAnotherMonthAndYear)
{
    Start();
    Open(2004, 3, [](frmAdd& dialog) {
        StepDown(dialog.UpDown1);
        Pick(dialog.Combo1, MonthNamed(12));
        Pick(dialog.Combo3, L"31");
        Press(dialog.addButton);
    });
    EXPECT_EQ(DataInterface::days[0], (DayEntry{2003, 12, 31, -2, L""}));
}

TEST_F(AddDayDialog, AddsASecondEntryForALeapDay)
{
    Start({.journal = "2004-02-29      1 \r\n"});
    Open(2004, 2, [](frmAdd& dialog) {
        Pick(dialog.Combo3, L"29");
        Press(dialog.addButton);
    });
    EXPECT_EQ(DataInterface::dayCount, 2);
    EXPECT_THAT(boxes.Texts(), IsEmpty());
}

TEST_F(AddDayDialog, ChangesNothingWhenCancelled)
{
    Start();
    Open(2004, 3, [](frmAdd& dialog) {
        Pick(dialog.Combo3, L"18");
        Type(dialog.Text3, L"5");
        Press(dialog.cancelButton);
    });
    EXPECT_FALSE(Instance<frmAdd>()->hasChanged());
    EXPECT_TRUE(Instance<frmAdd>()->IsLoaded()) << "hidden, not unloaded";
    EXPECT_EQ(DataInterface::dayCount, 0);
    EXPECT_FALSE(DataInterface::IsJournalChanged());
}

TEST_F(AddDayDialog, IsANewFormAfterItsCloseButton)
{
    Start();
    Open(2004, 3, [](frmAdd& dialog) { SendMessageW(dialog.Handle(), WM_SYSCOMMAND, SC_CLOSE, 0); });
    EXPECT_FALSE(Instance<frmAdd>()->IsLoaded());
    EXPECT_FALSE(Instance<frmAdd>()->hasChanged());
}

TEST_F(AddDayDialog, CanBeCorrectedAfterARefusal)
{
    Start();
    Open(2004, 3, [](frmAdd& dialog) {
        Pick(dialog.Combo3, L"18");
        Type(dialog.Text3, L"abc");
        Press(dialog.addButton);
        Type(dialog.Text3, L"7");
        Press(dialog.addButton);
    });
    EXPECT_EQ(DataInterface::days[0], (DayEntry{2004, 3, 18, 7, L""}));
}

TEST_F(AddDayDialog, AddsADayOfAYearOutsideTheRangeOfTheArrows)
{
    Start();
    Open(1940, 4, [](frmAdd& dialog) {
        Pick(dialog.Combo3, L"18");
        Press(dialog.addButton);
    });
    EXPECT_EQ(DataInterface::days[0], (DayEntry{1940, 4, 18, -2, L""}));
}
