// The tree of years and months, the list of a month's days and the total under it.
#include "tests/forms/ProgramUnderTest.h"

#include "data/DataInterface.h"
#include "forms/entry/frmEdit.h"
#include "platform/windows/Twips.h"

#include <gmock/gmock.h>

#include <commctrl.h>

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

class JournalView : public ProgramUnderTest {
protected:
    static std::wstring Total() { return Text(Main().Label1.Handle()); }

    /// The total line of a journal of one month.
    static std::wstring TotalOf(const std::string& journal)
    {
        Start({.journal = journal});
        std::wstring total = Total();
        UnloadInstance<frmMain>();
        return total;
    }

    /// Shows a month by the mouse, from wherever the tree is.
    static void Show(int year, int month) { ClickNode(Main().TreeView1, std::to_wstring(year), MonthNamed(month)); }

    static bool DayButtonsAreEnabled()
    {
        EXPECT_EQ(IsEnabled(Main().editButton), IsEnabled(Main().deleteButton));
        return IsEnabled(Main().editButton);
    }
};

std::vector<std::wstring> Keys(const TreeView& tree)
{
    std::vector<std::wstring> keys;
    for (int node = 1; node <= tree.NodeCount(); ++node) {
        keys.push_back(tree.Key(node));
    }
    return keys;
}

bool HasSidewaysBar(const ListBox& list)
{
    return (GetWindowLongW(list.Handle(), GWL_STYLE) & WS_HSCROLL) != 0;
}

void SetWidthOf(const Form& form, int twips)
{
    RECT area{};
    GetWindowRect(form.Handle(), &area);
    SetWindowPos(form.Handle(), nullptr, 0, 0, ToPixels(twips, static_cast<int>(GetDpiForWindow(form.Handle()))),
                 area.bottom - area.top, SWP_NOMOVE | SWP_NOZORDER);
}

bool IsExpanded(const TreeView& tree, HTREEITEM item)
{
    return (SendMessageW(tree.Handle(), TVM_GETITEMSTATE, reinterpret_cast<WPARAM>(item), TVIS_EXPANDED) &
            TVIS_EXPANDED) != 0;
}

} // namespace

TEST_F(JournalView, HasYearsAndMonthsInTheOrderOfTheirFirstDays)
{
    Start({.journal = "2003-05-01      1 \r\n"
                      "2005-12-01      1 \r\n"
                      "2003-11-01      1 \r\n"
                      "2005-02-01      1 \r\n"
                      "2003-05-09      1 \r\n"});
    EXPECT_THAT(Tree(Main().TreeView1), ElementsAre(L"2003", L"  " + MonthNamed(5) + L"*", L"  " + MonthNamed(11), //
                                                    L"2005", L"  " + MonthNamed(12), L"  " + MonthNamed(2)));
    EXPECT_THAT(Lines(Main().List1), ElementsAre(L"2003-05-09      1 ", L"2003-05-01      1 "));
}

TEST_F(JournalView, GivesNodesKeysOfYearAndMonth)
{
    Start({.journal = "2004-03-01      1 \r\n"
                      "2004-12-01      1 \r\n"});
    EXPECT_THAT(Keys(Main().TreeView1), ElementsAre(L"ar2004", L"2004 3node", L"2004 12node"));
}

TEST_F(JournalView, NamesTheMonthsInTheLanguageOfTheRegion)
{
    std::string journal;
    std::vector<std::wstring> expected{L"2004"};
    for (int month = 1; month <= 12; ++month) {
        journal += "2004-" + std::string(month < 10 ? "0" : "") + std::to_string(month) + "-01      1 \r\n";
        expected.push_back(L"  " + MonthNamed(month) + (month == 1 ? L"*" : L""));
    }
    for (const std::int16_t language : {std::int16_t{0}, std::int16_t{100}}) {
        Start({.journal = journal, .language = language});
        EXPECT_EQ(Tree(Main().TreeView1), expected);
        UnloadInstance<frmMain>();
    }
}

TEST_F(JournalView, OpensTheFirstYearOnly)
{
    Start({.journal = "2004-03-01      1 \r\n"
                      "2003-03-01      1 \r\n"});
    const HWND tree = Main().TreeView1.Handle();
    auto* const first = TreeView_GetRoot(tree);
    EXPECT_TRUE(IsExpanded(Main().TreeView1, first));
    EXPECT_FALSE(IsExpanded(Main().TreeView1, TreeView_GetNextSibling(tree, first)));
}

TEST_F(JournalView, EndsTheTreeAtAYearBelow1)
{
    Start({.journal = "2004-03-01      1 \r\n"
                      "0000-03-01      1 \r\n"
                      "2003-03-01      1 \r\n"});
    EXPECT_THAT(Tree(Main().TreeView1), ElementsAre(L"2004", L"  " + MonthNamed(3) + L"*"));
    EXPECT_EQ(DataInterface::dayCount, 3);
}

TEST_F(JournalView, EndsAYearAtAMonthBelow1)
{
    Start({.journal = "2004-03-01      1 \r\n"
                      "2004-00-01      1 \r\n"
                      "2004-05-01      1 \r\n"
                      "2003-07-01      1 \r\n"});
    EXPECT_THAT(Tree(Main().TreeView1),
                ElementsAre(L"2004", L"  " + MonthNamed(3) + L"*", L"2003", L"  " + MonthNamed(7)));
}

TEST_F(JournalView, ListsADayAsTheFileHasIt)
{
    Start({.journal = "2004-02-03     12 Office - home, 2 ways\r\n"});
    EXPECT_THAT(Lines(Main().List1), ElementsAre(L"2004-02-03     12 Office - home, 2 ways"));
}

TEST_F(JournalView, WritesFractionsAsTheSystemDoes)
{
    Start({.journal = IsSwedishMachine() ? "2004-02-03   12,5 \r\n" : "2004-02-03   12.5 \r\n"});
    EXPECT_THAT(Lines(Main().List1), ElementsAre(Decimal(L"2004-02-03   12.5 ")));
}

TEST_F(JournalView, KeepsTheBlanksOfARoute)
{
    Start({.journal = "2004-02-03     12   In  \r\n"});
    EXPECT_THAT(Lines(Main().List1), ElementsAre(L"2004-02-03     12   In  "));
}

TEST_F(JournalView, ListsTheLatestDayFirstAndDaysThatTheMonthLacksToo)
{
    Start({.journal = "2004-02-01      1 \r\n"
                      "2004-02-31      2 \r\n"
                      "2004-02-30      3 \r\n"
                      "2004-02-15      4 \r\n"});
    EXPECT_THAT(Lines(Main().List1), ElementsAre(L"2004-02-31      2 ", L"2004-02-30      3 ", //
                                                 L"2004-02-15      4 ", L"2004-02-01      1 "));
}

TEST_F(JournalView, LeavesOutDayNumbersOutside1To31)
{
    Start({.journal = "2004-02-00      1 \r\n"
                      "2004-02-32      2 \r\n"
                      "2004-02-15      4 \r\n"});
    EXPECT_THAT(Lines(Main().List1), ElementsAre(L"2004-02-15      4 "));
    EXPECT_EQ(DataInterface::dayCount, 3);
}

TEST_F(JournalView, ShowsTheFirstOfTwoEntriesOfADate)
{
    Start({.journal = "2004-02-15      4 First\r\n"
                      "2004-02-15      5 Second\r\n"});
    EXPECT_THAT(Lines(Main().List1), ElementsAre(L"2004-02-15      4 First"));
    EXPECT_EQ(Total(), L"Total: 4 km");
}

TEST_F(JournalView, LeavesTheDistanceBlankWhereADayHasNoneAndAddsNothing)
{
    Start({.journal = "2004-02-15     -2 Office\r\n"
                      "2004-02-14     10 \r\n"});
    EXPECT_THAT(Lines(Main().List1), ElementsAre(L"2004-02-15        Office", L"2004-02-14     10 "));
    EXPECT_EQ(Total(), L"Total: 10 km");
}

TEST_F(JournalView, ListsAConfirmedDayWithNeitherDistanceNorRoute)
{
    Start({.journal = "2004-02-15     -2 \r\n"});
    EXPECT_THAT(Lines(Main().List1), ElementsAre(L"2004-02-15        "));
    EXPECT_EQ(Total(), L"Total: 0 km");
}

TEST_F(JournalView, ListsADistanceOfMinusOneOnlyWithARoute)
{
    Start({.journal = "2004-02-15     -1 Walked\r\n"
                      "2004-02-14     -1 \r\n"});
    EXPECT_THAT(Lines(Main().List1), ElementsAre(L"2004-02-15        Walked"));
}

TEST_F(JournalView, KeepsTheNodeOfAMonthThatHasNothingToList)
{
    Start({.journal = "2004-02-14     -1 \r\n"});
    EXPECT_THAT(Tree(Main().TreeView1), ElementsAre(L"2004", L"  " + MonthNamed(2) + L"*"));
    EXPECT_THAT(Lines(Main().List1), IsEmpty());
    EXPECT_EQ(Total(), L"");
}

TEST_F(JournalView, CountsADistanceOfZeroAsADistance)
{
    Start({.journal = "2004-02-15      0 \r\n"});
    EXPECT_THAT(Lines(Main().List1), ElementsAre(L"2004-02-15      0 "));
}

TEST_F(JournalView, LetsALongDistanceMoveTheRouteToTheRight)
{
    Start({.journal = "2004-02-14      1 \r\n"});
    DataInterface::AddDay(2004, 2, 20, 1234567, L"Far");
    Show(2004, 2);
    EXPECT_THAT(Lines(Main().List1), ElementsAre(L"2004-02-20 1234567 Far", L"2004-02-14      1 "));
}

TEST_F(JournalView, MovesSidewaysWhereALineIsWiderThanTheList)
{
    const std::string route(200, 'x');
    Start({.journal = "2004-03-15     12 Office\r\n2004-02-15     12 " + route + "\r\n"});
    EXPECT_FALSE(HasSidewaysBar(Main().List1));
    Show(2004, 2);
    EXPECT_TRUE(HasSidewaysBar(Main().List1));
    SCROLLINFO bar{};
    bar.cbSize = sizeof bar;
    bar.fMask = SIF_RANGE | SIF_PAGE;
    GetScrollInfo(Main().List1.Handle(), SB_HORZ, &bar);
    RECT inside{};
    GetClientRect(Main().List1.Handle(), &inside);
    EXPECT_EQ(static_cast<LONG>(bar.nPage), inside.right);
    constexpr int charactersBeforeTheRoute = 18;
    const int character = (Main().List1.LeftOfCharacter(100) - Main().List1.LeftOfCharacter(0)) / 100; // twips
    const auto pixels =
        ToPixels((charactersBeforeTheRoute + 200) * character, static_cast<int>(GetDpiForWindow(Main().Handle())));
    EXPECT_GE(bar.nMax + 1, pixels);
    Show(2004, 3);
    EXPECT_FALSE(HasSidewaysBar(Main().List1));
}

TEST_F(JournalView, MovesSidewaysOnlyAsLongAsTheWindowIsTooNarrow)
{
    Start({.journal = "2004-03-15     12 " + std::string(45, 'x') + "\r\n"});
    EXPECT_FALSE(HasSidewaysBar(Main().List1));
    SetWidthOf(Main(), 6000);
    EXPECT_TRUE(HasSidewaysBar(Main().List1));
    SetWidthOf(Main(), 10800);
    EXPECT_FALSE(HasSidewaysBar(Main().List1));
}

TEST_F(JournalView, PutsOneBlankBeforeTheLastThreeDigitsOfTheTotal)
{
    EXPECT_EQ(TotalOf("2004-02-14      0 \r\n"), L"Total: 0 km");
    EXPECT_EQ(TotalOf("2004-02-14    999 \r\n"), L"Total: 999 km");
    EXPECT_EQ(TotalOf("2004-02-14   1000 \r\n"), L"Total: 1 000 km");
    EXPECT_EQ(TotalOf("2004-02-14 999999 \r\n2004-02-13 234568 \r\n"), L"Total: 1234 567 km");
}

TEST_F(JournalView, ShowsDistancesAndTotalsThatNeedAnExponent)
{
    EXPECT_EQ(TotalOf("2004-02-14  9e14  \r\n"), L"Total: 900000000000 000 km");
    EXPECT_EQ(TotalOf("2004-02-14  1e15  \r\n"), L"Total: 1E+15 km");
    EXPECT_EQ(TotalOf("2004-02-14  1e290 \r\n"), L"Total: 1E+290 km");
    EXPECT_EQ(TotalOf("2004-02-14  1e300 Home\r\n2004-02-13  2e300 \r\n"), L"Total: 3E+300 km");
    EXPECT_EQ(TotalOf("2004-02-14  1e-05 \r\n"), L"Total: 0 km");
    EXPECT_EQ(TotalOf("2004-02-14 1e-323 \r\n"), L"Total: 0 km");
    EXPECT_THAT(boxes.Texts(), IsEmpty());
    Start({.journal = "2004-02-14  1e300 Home\r\n"});
    EXPECT_THAT(Lines(Main().List1), ElementsAre(L"2004-02-14 1E+300 Home"));
}

TEST_F(JournalView, EditsADayWhoseDistanceNeedsAnExponent)
{
    for (const std::string distance : {" 1e-05", " 1e-09", "1e+300", " 9e307"}) {
        Start({.journal = "2004-02-14 " + distance + " Home\r\n"});
        const DayEntry before = DataInterface::GetDayEntry(2004, 2, 14);
        ClickLine(Main().List1, 0);
        user.In<frmEdit>([](frmEdit& dialog) { Press(dialog.addButton); });
        Press(Main().editButton);
        EXPECT_EQ(DataInterface::GetDayEntry(2004, 2, 14), before) << distance;
        EXPECT_TRUE(DataInterface::IsJournalChanged());
        DataInterface::ClearJournalChanged();
        UnloadInstance<frmMain>();
    }
    EXPECT_THAT(boxes.Texts(), IsEmpty());
}

TEST_F(JournalView, ShowsTheLargestTotalAndInfinity)
{
    // The digits of the greatest number, one day each: rounded to fifteen digits it would be beyond all numbers.
    const std::vector<std::string> digits{" 1e308", " 7e307", " 9e306", " 7e305", " 6e304", " 9e303",
                                          " 3e302", " 1e301", " 3e300", " 4e299", " 8e298", " 6e297",
                                          " 2e296", " 3e295", " 1e294", " 5e293", " 6e292"};
    std::string greatest;
    for (std::size_t day = 0; day < digits.size(); ++day) {
        greatest += "2004-02-" + std::to_string(10 + day) + " " + digits[day] + " \r\n";
    }
    EXPECT_EQ(TotalOf(greatest), Decimal(L"Total: 1.79769313486232E+308 km"));
    EXPECT_EQ(TotalOf("2004-02-14  1e308 \r\n2004-02-13  9e307 \r\n"), L"Total: \u221e km");
    EXPECT_THAT(boxes.Texts(), IsEmpty());
}

TEST_F(JournalView, ShowsTheTotalInWholeUnitsWithHalvesRoundedUp)
{
    const auto inFile = [](std::string text, const std::string& day = "2004-02-14") {
        if (IsSwedishMachine()) {
            text[text.find('.')] = ',';
        }
        return day + " " + text + " \r\n";
    };
    EXPECT_EQ(TotalOf(inFile("1234.4")), L"Total: 1 234 km");
    EXPECT_EQ(TotalOf(inFile("1234.5")), L"Total: 1 235 km");
    EXPECT_EQ(TotalOf(inFile("1233.5")), L"Total: 1 234 km");
    EXPECT_EQ(TotalOf(inFile("   0.5")), L"Total: 1 km");
    EXPECT_EQ(TotalOf(inFile("   0.3") + inFile("   1.9", "2004-02-13") + inFile("   0.3", "2004-02-12")),
              L"Total: 3 km")
        << "2.5 as it reads, a hair less as it is added up";
}

TEST_F(JournalView, AddsTheDistancesOfOneMonthOnly)
{
    Start({.journal = "2004-02-14    700 \r\n"
                      "2004-02-13    800 \r\n"
                      "2004-01-13   4000 \r\n"
                      "2003-02-13  50000 \r\n"});
    EXPECT_EQ(Total(), L"Total: 1 500 km");
    Show(2004, 1);
    EXPECT_EQ(Total(), L"Total: 4 000 km");
    Show(2003, 2);
    EXPECT_EQ(Total(), L"Total: 50 000 km");
}

TEST_F(JournalView, ShowsTheClickedMonthWithoutASelectedDay)
{
    Start({.journal = "2004-02-14    700 \r\n"
                      "2003-02-13  50000 \r\n"});
    BringToFront(Main());
    ClickLine(Main().List1, 0);
    ASSERT_TRUE(DayButtonsAreEnabled());
    Show(2003, 2);
    EXPECT_THAT(Lines(Main().List1), ElementsAre(L"2003-02-13  50000 "));
    EXPECT_THAT(Tree(Main().TreeView1),
                ElementsAre(L"2004", L"  " + MonthNamed(2), L"2003", L"  " + MonthNamed(2) + L"*"));
    EXPECT_FALSE(DayButtonsAreEnabled());
    EXPECT_FALSE(IsEnabled(Main(), {L"File", L"Save"}));
}

TEST_F(JournalView, ShowsEveryMonthUnderItsOwnName)
{
    std::string journal;
    for (int month = 1; month <= 12; ++month) {
        journal += "2004-" + std::string(month < 10 ? "0" : "") + std::to_string(month) + "-01      1 \r\n";
    }
    Start({.journal = journal});
    BringToFront(Main());
    for (int month = 1; month <= 12; ++month) {
        Show(2004, month);
        const std::wstring number = (month < 10 ? L"0" : L"") + std::to_wstring(month);
        EXPECT_THAT(Lines(Main().List1), ElementsAre(L"2004-" + number + L"-01      1 "));
    }
}

TEST_F(JournalView, ListsTheMonthAgainWhenItIsClickedAgain)
{
    Start({.journal = "2004-02-14    700 \r\n"});
    BringToFront(Main());
    ClickLine(Main().List1, 0);
    Show(2004, 2);
    EXPECT_FALSE(DayButtonsAreEnabled());
    EXPECT_EQ(ChosenLine(Main().List1), -1);
}

TEST_F(JournalView, ShowsTheMonthThatAnotherProgramClicks)
{
    Start({.journal = "2004-02-14    700 \r\n"
                      "2003-02-13  50000 \r\n"});
    BringToFront(Main());
    Show(2003, 2);
    MoveTo(Main().List1.Handle(), {5, 5});
    HWND tree = Main().TreeView1.Handle();
    RECT area{};
    *reinterpret_cast<HTREEITEM*>(&area) = TreeView_GetChild(tree, TreeView_GetRoot(tree));
    SendMessageW(tree, TVM_GETITEMRECT, TRUE, reinterpret_cast<LPARAM>(&area));
    const LPARAM point = MAKELPARAM((area.left + area.right) / 2, (area.top + area.bottom) / 2);
    PostMessageW(tree, WM_LBUTTONDOWN, MK_LBUTTON, point);
    PostMessageW(tree, WM_LBUTTONUP, 0, point);
    DoEvents();
    EXPECT_THAT(Lines(Main().List1), ElementsAre(L"2004-02-14    700 "));
}

TEST_F(JournalView, IsEmptiedByAClickOnAYearAndLeavesTheButtonsAsTheyAre)
{
    Start({.journal = "2004-02-14    700 \r\n"});
    BringToFront(Main());
    ClickLine(Main().List1, 0);
    ClickNode(Main().TreeView1, L"2004");
    EXPECT_THAT(Lines(Main().List1), IsEmpty());
    EXPECT_EQ(Total(), L"");
    EXPECT_TRUE(DayButtonsAreEnabled());
}

TEST_F(JournalView, ListsTheMonthThatTheArrowKeysSelect)
{
    Start({.journal = "2004-03-14    700 \r\n"
                      "2004-02-14      5 \r\n"});
    BringToFront(Main());
    ASSERT_EQ(GetFocus(), Main().TreeView1.Handle());
    PressKey(VK_DOWN);
    EXPECT_THAT(Lines(Main().List1), ElementsAre(L"2004-02-14      5 "));
    PressKey(VK_UP);
    PressKey(VK_UP);
    EXPECT_THAT(Lines(Main().List1), IsEmpty());
}

TEST_F(JournalView, EnablesEditAndDeleteWhenADayIsClicked)
{
    Start({.journal = "2004-03-14    700 \r\n"
                      "2004-03-13      5 \r\n"});
    BringToFront(Main());
    ClickLine(Main().List1, 1);
    EXPECT_EQ(ChosenLine(Main().List1), 1);
    EXPECT_TRUE(DayButtonsAreEnabled());
}

TEST_F(JournalView, EnablesEditAndDeleteWhenADayIsChosenByKeys)
{
    Start({.journal = "2004-03-14    700 \r\n"
                      "2004-03-13      5 \r\n"});
    BringToFront(Main());
    SetFocus(Main().List1.Handle());
    PressKey(VK_DOWN);
    EXPECT_TRUE(DayButtonsAreEnabled());
}

TEST_F(JournalView, DisablesEditAndDeleteWhenNoLineIsChosenAnyMore)
{
    Start({.journal = "2004-03-14    700 \r\n"});
    Main().List1.SetListIndex(0);
    ASSERT_TRUE(DayButtonsAreEnabled());
    SendMessageW(Main().List1.Handle(), LB_SETCURSEL, static_cast<WPARAM>(-1), 0);
    SendMessageW(Main().Handle(), WM_COMMAND,
                 MAKEWPARAM(static_cast<WORD>(GetDlgCtrlID(Main().List1.Handle())), LBN_SELCHANGE),
                 reinterpret_cast<LPARAM>(Main().List1.Handle()));
    EXPECT_FALSE(DayButtonsAreEnabled());
}

TEST_F(JournalView, OpensADayForEditingByADoubleClick)
{
    Start({.journal = "2004-03-14    700 Away\r\n"
                      "2004-03-13      5 Here\r\n"});
    BringToFront(Main());
    user.In<frmEdit>([](frmEdit& dialog) {
        EXPECT_EQ(dialog.Text2.Text(), L"Here");
        Press(dialog.cancelButton);
    });
    DoubleClickLine(Main().List1, 1);
}

TEST_F(JournalView, AsksForADayWhenTheEmptyPartOfTheListIsDoubleClicked)
{
    Start({.journal = "2004-03-14    700 Away\r\n"});
    BringToFront(Main());
    RECT area{};
    GetClientRect(Main().List1.Handle(), &area);
    DoubleClickAt(Main().List1.Handle(), {area.right / 2, area.bottom - 5});
    EXPECT_THAT(boxes.Texts(), ElementsAre(L"Choose day to edit."));
    Await([] { return GetFocus() == Main().List1.Handle(); }, "the focus on the list");
}
