// The dialog that edits a day: in place when its date stays, as a move when it changes.
#include "tests/forms/ProgramUnderTest.h"

#include "data/DataInterface.h"
#include "forms/entry/frmEdit.h"
#include "platform/system/Clock.h"
#include "tests/support/NoMemory.h"

#include <gmock/gmock.h>

#include <algorithm>

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

namespace {

class EditDayDialog : public ProgramUnderTest {
protected:
    void Open(const DayEntry& day, std::function<void(frmEdit&)> act)
    {
        user.In<frmEdit>(std::move(act));
        Instance<frmEdit>()->showMeNow(day.year, day.month, day.day, day.distance, day.route);
    }
};

std::vector<DayEntry> Journal()
{
    return {DataInterface::days.begin(), DataInterface::days.begin() + DataInterface::dayCount};
}

/// Out of order on purpose: a day that is deleted and added again would take another place.
constexpr const char* outOfOrder = "2004-03-10      1 \r\n"
                                   "2004-03-15     12 Office\r\n"
                                   "2004-03-20      3 \r\n"
                                   "2004-03-05      4 \r\n";

const DayEntry chosen{2004, 3, 15, 12, L"Office"};

void Confirm(frmEdit& dialog)
{
    Press(dialog.addButton);
}

} // namespace

TEST_F(EditDayDialog, OpensWithAllFieldsOfTheDay)
{
    Start();
    Open({2004, 3, 15, 12.5, L"Office - home"}, [](frmEdit& dialog) {
        EXPECT_EQ(dialog.Text1.Text(), L"2004");
        EXPECT_EQ(dialog.Combo1.Text(), MonthNamed(3));
        EXPECT_EQ(dialog.Combo3.ListCount(), 31);
        EXPECT_EQ(dialog.Combo3.Text(), L"15");
        EXPECT_EQ(dialog.Text3.Text(), Decimal(L"12.5"));
        EXPECT_EQ(dialog.Text2.Text(), L"Office - home");
        Press(dialog.cancelButton);
    });
}

TEST_F(EditDayDialog, ShowsAnyNegativeDistanceAsAnEmptyBox)
{
    Start();
    for (const double distance : {-2.0, -1.0, -0.5}) {
        Open({2004, 3, 15, distance, L""}, [](frmEdit& dialog) {
            EXPECT_EQ(dialog.Text3.Text(), L"");
            Press(dialog.cancelButton);
        });
        UnloadInstance<frmEdit>();
    }
    Open({2004, 3, 15, 0, L""}, [](frmEdit& dialog) {
        EXPECT_EQ(dialog.Text3.Text(), L"0");
        Press(dialog.cancelButton);
    });
}

TEST_F(EditDayDialog, ShowsTodaysMonthAndNoDayForAYearBefore1900)
{
    Clock::StandStillAt({2012, 2, 5});
    Start();
    Open({1899, 3, 15, 12, L"Office"}, [](frmEdit& dialog) {
        EXPECT_EQ(dialog.Text1.Text(), L"2012");
        EXPECT_EQ(dialog.Combo1.Text(), MonthNamed(2));
        EXPECT_EQ(dialog.Combo3.ListIndex(), -1);
        EXPECT_EQ(dialog.Text3.Text(), L"");
        EXPECT_EQ(dialog.Text2.Text(), L"");
        Press(dialog.addButton);
        Press(dialog.cancelButton);
    });
    EXPECT_THAT(boxes.Texts(), ElementsAre(L"You must choose a day."));
}

TEST_F(EditDayDialog, ReplacesDistanceAndRouteInPlaceWhenTheDateStays)
{
    Start({.journal = outOfOrder});
    Open(chosen, [](frmEdit& dialog) {
        Type(dialog.Text3, L"99");
        Type(dialog.Text2, L"Sea");
        Press(dialog.addButton);
    });
    EXPECT_THAT(Journal(), ElementsAre(DayEntry{2004, 3, 10, 1, L""}, DayEntry{2004, 3, 15, 99, L"Sea"},
                                       DayEntry{2004, 3, 20, 3, L""}, DayEntry{2004, 3, 5, 4, L""}));
    EXPECT_TRUE(Instance<frmEdit>()->hasChanged());
    EXPECT_TRUE(DataInterface::IsJournalChanged());
    EXPECT_THAT(boxes.Texts(), IsEmpty());
}

TEST_F(EditDayDialog, KeepsTheDayWhereverMemoryRunsOutWhileItMoves)
{
    Start({.journal = outOfOrder});
    const auto moved = [](const DayEntry& entry) { return entry.day == 16; };
    bool met = true;
    for (int after = 0; met; ++after) {
        Open(chosen, [&](frmEdit& dialog) {
            Pick(dialog.Combo3, L"16");
            Type(dialog.Text2, L"a route longer than fits into its own");
            {
                const NoMemory none(after, 1);
                Press(dialog.addButton);
                met = none.WasMet();
            }
            dialog.Hide();
        });
        ASSERT_THAT(Journal(), SizeIs(4)) << "memory ran out after " << after;
        if (std::ranges::any_of(Journal(), moved)) {
            break;
        }
        EXPECT_EQ(Journal()[1], chosen);
        UnloadInstance<frmEdit>();
    }
    EXPECT_TRUE(std::ranges::any_of(Journal(), moved));
}

TEST_F(EditDayDialog, CountsAsAChangeAlsoWithoutInput)
{
    Start({.journal = outOfOrder});
    Open(chosen, Confirm);
    EXPECT_EQ(Journal()[1], chosen);
    EXPECT_TRUE(Instance<frmEdit>()->hasChanged());
}

TEST_F(EditDayDialog, MovesTheDayToItsPlaceWhenTheDayChanges)
{
    Start({.journal = outOfOrder});
    Open(chosen, [](frmEdit& dialog) {
        Pick(dialog.Combo3, L"16");
        Press(dialog.addButton);
    });
    EXPECT_THAT(Journal(), ElementsAre(DayEntry{2004, 3, 16, 12, L"Office"}, DayEntry{2004, 3, 10, 1, L""},
                                       DayEntry{2004, 3, 20, 3, L""}, DayEntry{2004, 3, 5, 4, L""}));
}

TEST_F(EditDayDialog, MovesTheDayWhenTheMonthChanges)
{
    Start({.journal = outOfOrder});
    Open(chosen, [](frmEdit& dialog) {
        Pick(dialog.Combo1, MonthNamed(4));
        Press(dialog.addButton);
    });
    EXPECT_EQ(Journal()[0], (DayEntry{2004, 4, 15, 12, L"Office"}));
    EXPECT_EQ(DataInterface::dayCount, 4);
}

TEST_F(EditDayDialog, MovesTheDayWhenTheYearChangesAndAnswersItsNewDate)
{
    Start({.journal = outOfOrder});
    Open(chosen, [](frmEdit& dialog) {
        StepUp(dialog.UpDown1);
        Press(dialog.addButton);
    });
    EXPECT_EQ(Journal()[0], (DayEntry{2005, 3, 15, 12, L"Office"}));
    EXPECT_EQ(Instance<frmEdit>()->getYear(), 2005);
    EXPECT_EQ(Instance<frmEdit>()->getMonth(), 3);
    EXPECT_EQ(Instance<frmEdit>()->getDay(), 15);
}

TEST_F(EditDayDialog, ComparesTheYearAsText)
{
    Start({.journal = outOfOrder});
    Open(chosen, [](frmEdit& dialog) {
        SetWindowTextW(dialog.Text1.Handle(), L"02004");
        Press(dialog.addButton);
    });
    EXPECT_EQ(Journal()[0], chosen) << "deleted and added again, in front of the first older one";
    EXPECT_EQ(DataInterface::dayCount, 4);
}

TEST_F(EditDayDialog, StaysInPlaceInAYearThatTheArrowsCannotReach)
{
    Start({.journal = "1940-03-10      1 \r\n1940-03-15      2 \r\n2150-03-10      3 \r\n"});
    Open({1940, 3, 15, 2, L""}, Confirm);
    UnloadInstance<frmEdit>();
    Open({2150, 3, 10, 3, L""}, Confirm);
    EXPECT_THAT(Journal(), ElementsAre(DayEntry{1940, 3, 10, 1, L""}, DayEntry{1940, 3, 15, 2, L""},
                                       DayEntry{2150, 3, 10, 3, L""}));
}

TEST_F(EditDayDialog, StoresADayThatTheMonthLacks)
{
    Start({.journal = outOfOrder});
    Open(chosen, [](frmEdit& dialog) {
        Pick(dialog.Combo1, MonthNamed(2));
        Pick(dialog.Combo3, L"30");
        Press(dialog.addButton);
    });
    EXPECT_THAT(Journal(), testing::Contains(DayEntry{2004, 2, 30, 12, L"Office"}));
}

TEST_F(EditDayDialog, MovesADayToADateWithAnEntryWithoutAQuestion)
{
    Start({.journal = outOfOrder});
    Open(chosen, [](frmEdit& dialog) {
        Pick(dialog.Combo3, L"10");
        Press(dialog.addButton);
    });
    EXPECT_EQ(DataInterface::dayCount, 4);
    EXPECT_THAT(Journal(), testing::Contains(DayEntry{2004, 3, 10, 12, L"Office"}));
    EXPECT_THAT(Journal(), testing::Contains(DayEntry{2004, 3, 10, 1, L""}));
    EXPECT_THAT(boxes.Texts(), IsEmpty());
}

TEST_F(EditDayDialog, AddsTheNewDayAlsoWhenTheOldOneIsGone)
{
    Start({.journal = "2004-03-10      1 \r\n"});
    Open(chosen, [](frmEdit& dialog) {
        Pick(dialog.Combo3, L"16");
        Press(dialog.addButton);
    });
    EXPECT_THAT(boxes.Texts(), ElementsAre(L"not found"));
    EXPECT_THAT(Journal(), ElementsAre(DayEntry{2004, 3, 16, 12, L"Office"}, DayEntry{2004, 3, 10, 1, L""}));
    EXPECT_TRUE(Instance<frmEdit>()->hasChanged());
}

TEST_F(EditDayDialog, LosesNothingWhenTheNewDateCannotBeRead)
{
    Start({.journal = outOfOrder});
    Open(chosen, [](frmEdit& dialog) {
        Pick(dialog.Combo3, L"16");
        // The name of a month in the language of another region.
        SendMessageW(dialog.Combo1.Handle(), CB_DELETESTRING, 2, 0);
        SendMessageW(dialog.Combo1.Handle(), CB_INSERTSTRING, 2, reinterpret_cast<LPARAM>(L"brumaire"));
        SendMessageW(dialog.Combo1.Handle(), CB_SETCURSEL, 2, 0);
        Press(dialog.addButton);
        EXPECT_TRUE(dialog.IsLoaded());
        EXPECT_FALSE(dialog.hasChanged());
        Press(dialog.cancelButton);
    });
    EXPECT_THAT(boxes.Texts(), ElementsAre(testing::StartsWith(L"Run-time error '13'")));
    EXPECT_EQ(DataInterface::dayCount, 4);
    EXPECT_EQ(Journal()[1], chosen);
    EXPECT_FALSE(DataInterface::IsJournalChanged());
}

TEST_F(EditDayDialog, AcceptsTheDistanceThatItShows)
{
    Start({.journal = outOfOrder});
    for (const double distance : {1E-05, 1E+10, 1E+300, 9E+307, 1.5E-7, 12.5}) {
        Open({2004, 3, 15, distance, L"Office"}, [](frmEdit& dialog) {
            Type(dialog.Text2, L"Sea");
            Press(dialog.addButton);
        });
        EXPECT_EQ(Journal()[1], (DayEntry{2004, 3, 15, distance, L"Sea"}));
        UnloadInstance<frmEdit>();
    }
    EXPECT_THAT(boxes.Texts(), IsEmpty());
}

TEST_F(EditDayDialog, RefusesAnExponentThatIsTyped)
{
    Start({.journal = outOfOrder});
    Open({2004, 3, 15, 1E-05, L"Office"}, [](frmEdit& dialog) {
        for (const wchar_t* typed : {L"1E-5", L"1E-06", L"1e-05", L"1E+10"}) {
            Type(dialog.Text3, typed);
            Press(dialog.addButton);
        }
        Press(dialog.cancelButton);
    });
    EXPECT_THAT(boxes.Texts(),
                testing::AllOf(testing::SizeIs(4), testing::Each(L"Only integers and decimal numbers.")));
    EXPECT_EQ(Journal()[1], chosen);
}

TEST_F(EditDayDialog, MovesADayOfAFullJournal)
{
    std::string journal;
    for (int line = 0; line < 20479; ++line) {
        journal += "1990-12-01      1 \r\n";
    }
    Start({.journal = "2004-03-15     12 Office\r\n" + journal});
    ASSERT_EQ(DataInterface::dayCount, 20480);
    Open(chosen, [](frmEdit& dialog) {
        Pick(dialog.Combo3, L"16");
        Press(dialog.addButton);
    });
    EXPECT_EQ(DataInterface::dayCount, 20480);
    EXPECT_EQ(DataInterface::days[0], (DayEntry{2004, 3, 16, 12, L"Office"}));
}

TEST_F(EditDayDialog, ChangesNothingWhenCancelled)
{
    Start({.journal = outOfOrder});
    Open(chosen, [](frmEdit& dialog) {
        Pick(dialog.Combo3, L"16");
        Type(dialog.Text3, L"99");
        Type(dialog.Text2, L"Sea");
        Press(dialog.cancelButton);
    });
    EXPECT_FALSE(Instance<frmEdit>()->hasChanged());
    EXPECT_FALSE(DataInterface::IsJournalChanged());
    EXPECT_EQ(Journal()[1], chosen);
}

TEST_F(EditDayDialog, ChangesNothingWhenClosedByItsCloseBox)
{
    Start({.journal = outOfOrder});
    Open(chosen, [](frmEdit& dialog) {
        Type(dialog.Text3, L"99");
        SendMessageW(dialog.Handle(), WM_SYSCOMMAND, SC_CLOSE, 0);
    });
    EXPECT_FALSE(Instance<frmEdit>()->hasChanged());
    EXPECT_EQ(Journal()[1], chosen);
}
