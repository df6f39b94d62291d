// Add, Edit and Delete: what they hand to the dialogs, what they show afterwards, and which commands they enable.
#include "tests/forms/ProgramUnderTest.h"

#include "data/DataInterface.h"
#include "forms/entry/frmAdd.h"
#include "forms/entry/frmEdit.h"
#include "platform/system/Clock.h"

#include <gmock/gmock.h>

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

constexpr const char* twoMonths = "2004-03-15     12 Office\r\n"
                                  "2004-03-02    100 \r\n"
                                  "2004-02-12     -2 Home\r\n"
                                  "2003-03-01      7 Church\r\n";

class DayCommands : public ProgramUnderTest {
protected:
    static bool DayButtonsAreEnabled()
    {
        EXPECT_EQ(IsEnabled(Main().editButton), IsEnabled(Main().deleteButton));
        return IsEnabled(Main().editButton);
    }

    static bool ChangeCommandsAreEnabled()
    {
        EXPECT_EQ(IsEnabled(Main(), {L"File", L"Save"}), IsEnabled(Main(), {L"File", L"Revert"}));
        return IsEnabled(Main(), {L"File", L"Save"});
    }

    static std::wstring ChosenText()
    {
        const int line = ChosenLine(Main().List1);
        return line < 0 ? L"" : Main().List1.List(line);
    }

    void Add(const std::wstring& month, const std::wstring& day, const std::wstring& distance,
             const std::wstring& route)
    {
        user.In<frmAdd>([=](frmAdd& dialog) {
            Pick(dialog.Combo1, month);
            Pick(dialog.Combo3, day);
            Type(dialog.Text3, distance);
            Type(dialog.Text2, route);
            Press(dialog.addButton);
        });
        Press(Main().addButton);
    }

    void Delete(int line)
    {
        Main().List1.SetListIndex(line);
        boxes.AnswerNext(IDYES);
        Press(Main().deleteButton);
    }

    /// Opens the dialog by the Add button, looks at where it stands and cancels it.
    std::wstring MonthThatAddOpensAt()
    {
        std::wstring shown;
        user.In<frmAdd>([&shown](frmAdd& dialog) {
            shown = dialog.Text1.Text() + L" " + dialog.Combo1.Text();
            Press(dialog.cancelButton);
        });
        Press(Main().addButton);
        return shown;
    }

    static void Show(int year, int month) { ClickNode(Main().TreeView1, std::to_wstring(year), MonthNamed(month)); }
};

} // namespace

TEST_F(DayCommands, AddOpensAtTheListedMonthWithOrWithoutASelectedDay)
{
    Start({.journal = twoMonths});
    EXPECT_EQ(MonthThatAddOpensAt(), L"2004 " + MonthNamed(3));
    Main().List1.SetListIndex(1);
    EXPECT_EQ(MonthThatAddOpensAt(), L"2004 " + MonthNamed(3));
    BringToFront(Main());
    Show(2003, 3);
    EXPECT_EQ(MonthThatAddOpensAt(), L"2003 " + MonthNamed(3));
}

TEST_F(DayCommands, AddOpensAtTodaysMonthWhenNoDayIsListed)
{
    Clock::StandStillAt({2011, 7, 31});
    Start({.journal = twoMonths});
    BringToFront(Main());
    ClickNode(Main().TreeView1, L"2004");
    EXPECT_EQ(MonthThatAddOpensAt(), L"2011 " + MonthNamed(7));
}

TEST_F(DayCommands, AddShowsTheMonthOfTheNewDayWithItsLineChosen)
{
    Start({.journal = twoMonths});
    Add(MonthNamed(2), L"20", L"30", L"Away");
    EXPECT_THAT(Lines(Main().List1), ElementsAre(L"2004-02-20     30 Away", L"2004-02-12        Home"));
    EXPECT_EQ(ChosenText(), L"2004-02-20     30 Away");
    EXPECT_EQ(Text(Main().Label1.Handle()), L"Total: 30 km");
    EXPECT_TRUE(DayButtonsAreEnabled());
    EXPECT_TRUE(ChangeCommandsAreEnabled());
}

TEST_F(DayCommands, AddMarksTheMonthOfTheNewDayInTheTree)
{
    Start({.journal = twoMonths});
    Add(MonthNamed(2), L"20", L"30", L"Away");
    EXPECT_THAT(Tree(Main().TreeView1), ElementsAre(L"2004", L"  " + MonthNamed(3), L"  " + MonthNamed(2) + L"*", //
                                                    L"2003", L"  " + MonthNamed(3)));
}

TEST_F(DayCommands, AddMarksTheMonthUnderItsOwnYear)
{
    Start({.journal = twoMonths});
    BringToFront(Main());
    Show(2003, 3);
    Add(MonthNamed(3), L"20", L"30", L"Away");
    EXPECT_THAT(Tree(Main().TreeView1), ElementsAre(L"2004", L"  " + MonthNamed(3), L"  " + MonthNamed(2), //
                                                    L"2003", L"  " + MonthNamed(3) + L"*"));
}

TEST_F(DayCommands, AddPutsANewMonthIntoTheTree)
{
    Start({.journal = twoMonths});
    Add(MonthNamed(5), L"1", L"", L"");
    EXPECT_THAT(Tree(Main().TreeView1),
                testing::Contains(testing::AnyOf(L"  " + MonthNamed(5), L"  " + MonthNamed(5) + L"*")));
    EXPECT_THAT(Lines(Main().List1), ElementsAre(L"2004-05-01        "));
}

TEST_F(DayCommands, AddFillsAnEmptyJournal)
{
    Clock::StandStillAt({2011, 7, 31});
    Start();
    Add(MonthNamed(7), L"31", L"5", L"");
    EXPECT_THAT(Tree(Main().TreeView1), ElementsAre(L"2011", L"  " + MonthNamed(7) + L"*"));
    EXPECT_EQ(ChosenText(), L"2011-07-31      5 ");
}

TEST_F(DayCommands, AddWithoutAChangeLeavesEverythingAsItIs)
{
    Start({.journal = twoMonths});
    BringToFront(Main());
    Show(2004, 2);
    MonthThatAddOpensAt();
    EXPECT_THAT(Lines(Main().List1), ElementsAre(L"2004-02-12        Home"));
    EXPECT_FALSE(DayButtonsAreEnabled());
    EXPECT_FALSE(ChangeCommandsAreEnabled());
    EXPECT_FALSE(DataInterface::IsJournalChanged());
}

TEST_F(DayCommands, AddTakesTheCloseBoxForCancel)
{
    Start({.journal = twoMonths});
    user.In<frmAdd>([](frmAdd& dialog) {
        Pick(dialog.Combo3, L"20");
        SendMessageW(dialog.Handle(), WM_SYSCOMMAND, SC_CLOSE, 0);
    });
    Press(Main().addButton);
    EXPECT_FALSE(ChangeCommandsAreEnabled());
    EXPECT_EQ(DataInterface::dayCount, 4);
}

TEST_F(DayCommands, AddOpensWithEmptyBoxesEveryTime)
{
    Start({.journal = twoMonths});
    Add(MonthNamed(2), L"20", L"30", L"Away");
    user.In<frmAdd>([](frmAdd& dialog) {
        EXPECT_EQ(dialog.Text3.Text(), L"");
        EXPECT_EQ(dialog.Text2.Text(), L"");
        EXPECT_FALSE(dialog.hasChanged());
        Press(dialog.cancelButton);
    });
    Press(Main().addButton);
    EXPECT_THAT(Form::OpenForms(), testing::SizeIs(1)) << "the dialog is unloaded after each use";
}

TEST_F(DayCommands, AddShowsAnErrorForAMonthWithADayAbove31)
{
    Start({.journal = "2004-03-15     12 Office\r\n2004-03-45      1 \r\n"});
    Press(Main().addButton);
    EXPECT_THAT(boxes.Texts(), ElementsAre(L"Run-time error '9':\r\n\r\nSubscript out of range"));
    EXPECT_THAT(Form::OpenForms(), testing::SizeIs(1));
    EXPECT_TRUE(IsEnabled(Main().addButton));
    EXPECT_EQ(DataInterface::dayCount, 2);
    Main().List1.SetListIndex(0);
    user.In<frmEdit>([](frmEdit& dialog) { Press(dialog.cancelButton); });
    Press(Main().editButton);
}

TEST_F(DayCommands, AddToAFullJournalFailsAndLosesNothing)
{
    std::string journal;
    for (int day = 0; day < 20480; ++day) {
        journal += std::to_string(2099 - day / 200) + "-12-01      1 \r\n";
    }
    Start({.journal = journal});
    user.In<frmAdd>([](frmAdd& dialog) {
        Pick(dialog.Combo3, L"20");
        Press(dialog.addButton);
        EXPECT_TRUE(dialog.IsLoaded());
        EXPECT_EQ(dialog.Text3.Text(), L"-2") << "what the failed attempt put there stays";
        EXPECT_FALSE(dialog.hasChanged());
        Press(dialog.addButton);
        Press(dialog.cancelButton);
    });
    Press(Main().addButton);
    EXPECT_THAT(boxes.Texts(), ElementsAre(L"Run-time error '6':\r\n\r\nOverflow", L"Number of km must be positive."));
    EXPECT_EQ(DataInterface::dayCount, 20480);
    EXPECT_FALSE(DataInterface::IsJournalChanged());
    EXPECT_FALSE(ChangeCommandsAreEnabled());
}

TEST_F(DayCommands, EditHandsTheChosenLineToTheDialog)
{
    Start({.journal = twoMonths});
    Main().List1.SetListIndex(0);
    user.In<frmEdit>([](frmEdit& dialog) {
        EXPECT_EQ(dialog.Text1.Text(), L"2004");
        EXPECT_EQ(dialog.Combo1.Text(), MonthNamed(3));
        EXPECT_EQ(dialog.Combo3.Text(), L"15");
        EXPECT_EQ(dialog.Text3.Text(), L"12");
        EXPECT_EQ(dialog.Text2.Text(), L"Office");
        Press(dialog.cancelButton);
    });
    Press(Main().editButton);
}

TEST_F(DayCommands, EditReadsTheLineByPositionAlsoIfALongDistanceHasMovedTheRoute)
{
    Start({.journal = "2004-03-15     12 Office\r\n"});
    DataInterface::AddDay(2004, 3, 20, 1234567, L"Far");
    BringToFront(Main());
    Show(2004, 3);
    Main().List1.SetListIndex(0);
    user.In<frmEdit>([](frmEdit& dialog) {
        EXPECT_EQ(dialog.Text3.Text(), L"123456");
        EXPECT_EQ(dialog.Text2.Text(), L" Far");
        Press(dialog.cancelButton);
    });
    Press(Main().editButton);
}

TEST_F(DayCommands, EditOpensADayWithoutADistanceWithAnEmptyBoxAndKeepsItWithoutOne)
{
    Start({.journal = "2004-02-12     -2 Home\r\n"});
    Main().List1.SetListIndex(0);
    user.In<frmEdit>([](frmEdit& dialog) {
        EXPECT_EQ(dialog.Text3.Text(), L"");
        Press(dialog.addButton);
    });
    Press(Main().editButton);
    EXPECT_EQ(DataInterface::GetDayEntry(2004, 2, 12).distance, -2.0);
    EXPECT_EQ(ChosenText(), L"2004-02-12        Home");
}

TEST_F(DayCommands, EditShowsTheMonthThatTheDayWasMovedTo)
{
    Start({.journal = twoMonths});
    Main().List1.SetListIndex(0);
    user.In<frmEdit>([](frmEdit& dialog) {
        Pick(dialog.Combo1, MonthNamed(2));
        Pick(dialog.Combo3, L"29");
        Press(dialog.addButton);
    });
    Press(Main().editButton);
    EXPECT_THAT(Lines(Main().List1), ElementsAre(L"2004-02-29     12 Office", L"2004-02-12        Home"));
    EXPECT_EQ(ChosenText(), L"2004-02-29     12 Office");
    EXPECT_TRUE(DayButtonsAreEnabled());
    EXPECT_TRUE(ChangeCommandsAreEnabled());
}

TEST_F(DayCommands, EditWithoutAChangeLeavesEverythingAsItIs)
{
    Start({.journal = twoMonths});
    Main().List1.SetListIndex(1);
    user.In<frmEdit>([](frmEdit& dialog) {
        Type(dialog.Text2, L"Elsewhere");
        Press(dialog.cancelButton);
    });
    Press(Main().editButton);
    EXPECT_EQ(ChosenText(), L"2004-03-02    100 ");
    EXPECT_TRUE(DayButtonsAreEnabled());
    EXPECT_FALSE(ChangeCommandsAreEnabled());
}

TEST_F(DayCommands, DeleteAsksFirstWithNoAsTheSafeAnswer)
{
    Start({.journal = twoMonths});
    Main().List1.SetListIndex(0);
    Press(Main().deleteButton);
    ASSERT_THAT(boxes.Texts(), ElementsAre(L"Do you want to delete selected day?"));
    const SeenMessageBox question = boxes.Seen().front();
    EXPECT_THAT(question.buttons, ElementsAre(IDYES, IDNO));
    EXPECT_EQ(question.defaultButton, IDNO);
    EXPECT_TRUE(question.isCritical);
    EXPECT_EQ(question.title, L"Odomira");
    EXPECT_EQ(DataInterface::dayCount, 4);
    EXPECT_EQ(ChosenLine(Main().List1), 0);
    EXPECT_FALSE(ChangeCommandsAreEnabled());
}

TEST_F(DayCommands, DeleteShowsTheMonthAgainWithoutAChosenDayButWithItsButtonsEnabled)
{
    Start({.journal = twoMonths});
    Delete(1);
    EXPECT_THAT(Lines(Main().List1), ElementsAre(L"2004-03-15     12 Office"));
    EXPECT_EQ(Text(Main().Label1.Handle()), L"Total: 12 km");
    EXPECT_EQ(ChosenText(), L"");
    EXPECT_TRUE(DayButtonsAreEnabled());
    EXPECT_TRUE(ChangeCommandsAreEnabled());
}

TEST_F(DayCommands, DeleteListsTheDeletedDaysMonthNotTheFirst)
{
    Start({.journal = "2004-03-15     12 Office\r\n2004-02-12      1 Home\r\n2004-02-02      2 \r\n"});
    BringToFront(Main());
    Show(2004, 2);
    Delete(1);
    EXPECT_THAT(Lines(Main().List1), ElementsAre(L"2004-02-12      1 Home"));
    EXPECT_THAT(Tree(Main().TreeView1), ElementsAre(L"2004", L"  " + MonthNamed(3), L"  " + MonthNamed(2) + L"*"));
}

TEST_F(DayCommands, DeleteOfAMonthsLastDayLeavesTheListEmptyAndTheNodeGone)
{
    Start({.journal = "2004-05-15     12 Office\r\n2004-02-12      1 Home\r\n"});
    BringToFront(Main());
    Show(2004, 2);
    Delete(0);
    EXPECT_THAT(Lines(Main().List1), IsEmpty());
    EXPECT_EQ(Text(Main().Label1.Handle()), L"");
    EXPECT_THAT(Tree(Main().TreeView1), ElementsAre(L"2004", L"  " + MonthNamed(5) + L"*"));
}

TEST_F(DayCommands, DeleteOfTheOnlyDayLeavesAnEmptyWindow)
{
    Start({.journal = "2004-05-15     12 Office\r\n"});
    Delete(0);
    EXPECT_THAT(Tree(Main().TreeView1), IsEmpty());
    EXPECT_THAT(Lines(Main().List1), IsEmpty());
    EXPECT_EQ(Text(Main().Label1.Handle()), L"");
}

TEST_F(DayCommands, EditAndDeleteAskForADayWhenNoneIsChosen)
{
    Start({.journal = twoMonths});
    BringToFront(Main());
    Delete(0);
    const auto listHasFocus = [] { return GetFocus() == Main().List1.Handle(); };
    Press(Main().editButton);
    Await(listHasFocus, "the focus on the list");
    SetFocus(Main().TreeView1.Handle());
    Press(Main().deleteButton);
    Await(listHasFocus, "the focus on the list");

    ASSERT_THAT(boxes.Texts(), ElementsAre(testing::_, L"Choose day to edit.", L"Choose day to delete."));
    for (const SeenMessageBox& box : {boxes.Seen()[1], boxes.Seen()[2]}) {
        EXPECT_THAT(box.buttons, ElementsAre(IDOK));
        EXPECT_FALSE(box.hasIcon);
        EXPECT_EQ(box.title, L"Odomira");
    }
    EXPECT_EQ(DataInterface::dayCount, 3);
}

TEST_F(DayCommands, AskInSwedish)
{
    Start({.journal = twoMonths, .language = 100});
    Delete(0);
    Press(Main().editButton);
    Press(Main().deleteButton);
    EXPECT_THAT(boxes.Texts(),
                ElementsAre(L"Vill du ta bort vald dag?", L"Välj dag att redigera.", L"Välj dag att ta bort."));
}

TEST_F(DayCommands, LeaveTheFileAlone)
{
    Start({.journal = twoMonths});
    Add(MonthNamed(2), L"20", L"30", L"Away");
    Delete(0);
    EXPECT_EQ(SavedJournal(), twoMonths);
}

TEST_F(DayCommands, GiveTheFocusBackToTheControlThatHadIt)
{
    Start({.journal = twoMonths});
    BringToFront(Main());
    SetFocus(Main().List1.Handle());
    user.In<frmEdit>([](frmEdit& dialog) {
        EXPECT_FALSE(IsWindowEnabled(Main().Handle())) << "the main window takes no input meanwhile";
        EXPECT_EQ(GetWindow(dialog.Handle(), GW_OWNER), Main().Handle());
        Press(dialog.cancelButton);
    });
    DoubleClickLine(Main().List1, 0);
    EXPECT_TRUE(IsWindowEnabled(Main().Handle()));
    Await([] { return GetFocus() == Main().List1.Handle(); }, "the focus on the list");
}
