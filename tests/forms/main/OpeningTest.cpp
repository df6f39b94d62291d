// The main window as it opens: its controls, menus and texts in both languages, and what may be pressed at first.
#include "tests/forms/ProgramUnderTest.h"

#include "data/DataInterface.h"

#include <gmock/gmock.h>

#include <array>

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

constexpr const char* threeMonths = "2004-03-15     12 Office\r\n"
                                    "2004-03-02    100 \r\n"
                                    "2004-02-12     -2 Home\r\n"
                                    "2003-12-24      7 Church\r\n";

class MainWindowOpening : public ProgramUnderTest {};

std::wstring ClassOf(const Control& control)
{
    std::array<wchar_t, 64> name{};
    GetClassNameW(control.Handle(), name.data(), static_cast<int>(name.size()));
    return name.data();
}

void AppendMenu(HMENU menu, const std::wstring& indent, std::vector<std::wstring>& lines)
{
    for (int position = 0; position < GetMenuItemCount(menu); ++position) {
        std::array<wchar_t, 128> text{};
        MENUITEMINFOW info{};
        info.cbSize = sizeof info;
        info.fMask = MIIM_STRING | MIIM_FTYPE;
        info.dwTypeData = text.data();
        info.cch = static_cast<UINT>(text.size());
        GetMenuItemInfoW(menu, static_cast<UINT>(position), TRUE, &info);
        lines.push_back(indent + ((info.fType & MFT_SEPARATOR) != 0 ? L"-" : text.data()));
        AppendMenu(GetSubMenu(menu, position), indent + L"  ", lines);
    }
}

std::vector<std::wstring> Menu(const Form& form)
{
    std::vector<std::wstring> lines;
    AppendMenu(GetMenu(form.Handle()), L"", lines);
    return lines;
}

} // namespace

TEST_F(MainWindowOpening, ShowsTheFirstMonthOfTheFirstYearWithItsTotal)
{
    Start({.journal = threeMonths});
    EXPECT_THAT(Tree(Main().TreeView1), ElementsAre(L"2004", L"  " + MonthNamed(3) + L"*", L"  " + MonthNamed(2),
                                                    L"2003", L"  " + MonthNamed(12)));
    EXPECT_THAT(Lines(Main().List1), testing::SizeIs(2));
    EXPECT_THAT(Text(Main().Label1.Handle()), testing::StartsWith(L"Total: 1"));
    EXPECT_TRUE(IsWindowVisible(Main().Handle()));
    EXPECT_TRUE(IsEnabled(Main().addButton));
}

TEST_F(MainWindowOpening, ShowsNothingOfAnEmptyJournal)
{
    Start();
    EXPECT_THAT(Tree(Main().TreeView1), IsEmpty());
    EXPECT_THAT(Lines(Main().List1), IsEmpty());
    EXPECT_EQ(Text(Main().Label1.Handle()), L"");
}

TEST_F(MainWindowOpening, DisablesCommandsThatNeedASelectedDayOrAChange)
{
    Start({.journal = threeMonths});
    EXPECT_FALSE(IsEnabled(Main().editButton));
    EXPECT_FALSE(IsEnabled(Main().deleteButton));
    EXPECT_FALSE(IsEnabled(Main(), {L"File", L"Revert"}));
    EXPECT_FALSE(IsEnabled(Main(), {L"File", L"Save"}));
    EXPECT_EQ(ChosenLine(Main().List1), -1);
}

TEST_F(MainWindowOpening, HasTheMenusInEnglish)
{
    Start();
    EXPECT_THAT(Menu(Main()),
                ElementsAre(L"File", L"  Revert", L"  Save", L"  -", L"  Print...", L"  -", L"  Exit",    //
                            L"Edit", L"  Settings...", L"  Employee information...",                      //
                            L"Help", L"  On the Web", L"    Odomira", L"    Other program from Brenholt", //
                            L"  -", L"  About Odomira..."));
}

TEST_F(MainWindowOpening, HasTheMenusInSwedish)
{
    Start({.language = 100});
    EXPECT_THAT(Menu(Main()),
                ElementsAre(L"Arkiv", L"  Återgå", L"  Spara", L"  -", L"  Skriv ut...", L"  -",         //
                            L"  Avsluta", L"Redigera", L"  Inställningar...", L"  Personinformation...", //
                            L"Hjälp", L"  På Internet", L"    Odomira",                                  //
                            L"    Andra program av Brenholt", L"  -", L"  Om Odomira..."));
}

TEST_F(MainWindowOpening, HasItsOtherTextsInEnglish)
{
    Start({.journal = threeMonths});
    EXPECT_EQ(Text(Main().Handle()), L"Odomira");
    EXPECT_EQ(Text(Main().Label6.Handle()), L"date");
    EXPECT_EQ(Text(Main().Label4.Handle()), L"km");
    EXPECT_EQ(Text(Main().Label5.Handle()), L"route");
    EXPECT_EQ(Text(Main().deleteButton.Handle()), L"Delete");
    EXPECT_EQ(Text(Main().editButton.Handle()), L"Edit...");
    EXPECT_EQ(Text(Main().addButton.Handle()), L"Add...");
    EXPECT_EQ(Text(Main().sbStatusBar.Handle()), L"");
}

TEST_F(MainWindowOpening, HasItsOtherTextsInSwedish)
{
    Start({.journal = threeMonths, .unit = L"mil", .language = 100});
    EXPECT_EQ(Text(Main().Handle()), L"Odomira");
    EXPECT_EQ(Text(Main().Label6.Handle()), L"Datum");
    EXPECT_EQ(Text(Main().Label4.Handle()), L"mil");
    EXPECT_EQ(Text(Main().Label5.Handle()), L"Färdväg");
    EXPECT_EQ(Text(Main().deleteButton.Handle()), L"Ta bort");
    EXPECT_EQ(Text(Main().editButton.Handle()), L"Redigera...");
    EXPECT_EQ(Text(Main().addButton.Handle()), L"Lägg till...");
    EXPECT_THAT(Text(Main().Label1.Handle()),
                testing::AllOf(testing::StartsWith(L"Totalt: 1"), testing::EndsWith(L" mil")));
}

TEST_F(MainWindowOpening, HeadsTheDistancesWithTheUnitAsItIsStored)
{
    Start({.journal = threeMonths, .unit = L"sea miles"});
    EXPECT_EQ(Text(Main().Label4.Handle()), L"sea miles");
    EXPECT_THAT(Text(Main().Label1.Handle()), testing::EndsWith(L" sea miles"));
}

TEST_F(MainWindowOpening, ConsistsOfTheSystemsControls)
{
    Start();
    EXPECT_EQ(ClassOf(Main().TreeView1), L"SysTreeView32");
    EXPECT_EQ(ClassOf(Main().List1), L"ListBox");
    EXPECT_EQ(ClassOf(Main().Label1), L"Static");
    EXPECT_EQ(ClassOf(Main().addButton), L"Button");
    EXPECT_EQ(ClassOf(Main().sbStatusBar), L"msctls_statusbar32");
}

TEST_F(MainWindowOpening, ListsDaysInCourierNewAndInTheOrderAdded)
{
    Start();
    LOGFONTW font{};
    GetObjectW(reinterpret_cast<HFONT>(SendMessageW(Main().List1.Handle(), WM_GETFONT, 0, 0)), sizeof font, &font);
    EXPECT_STREQ(font.lfFaceName, L"Courier New");
    EXPECT_EQ(GetWindowLongW(Main().List1.Handle(), GWL_STYLE) & LBS_SORT, 0);
}

TEST_F(MainWindowOpening, StartsWithAJournalThatHasAMonthAbove12)
{
    Start({.journal = "2004-03-15     12 Office\r\n2004-99-01      5 Nowhere\r\n2003-01-01      1 Later\r\n"});
    ASSERT_THAT(boxes.Texts(), ElementsAre(L"Run-time error '13':\r\n\r\nType mismatch"));
    EXPECT_THAT(Tree(Main().TreeView1), ElementsAre(L"2004", L"  " + MonthNamed(3) + L"*"));
    EXPECT_THAT(Lines(Main().List1), ElementsAre(L"2004-03-15     12 Office"));
    EXPECT_FALSE(IsEnabled(Main().editButton));
    EXPECT_FALSE(IsEnabled(Main(), {L"File", L"Save"}));
    EXPECT_EQ(DataInterface::dayCount, 3);
}
