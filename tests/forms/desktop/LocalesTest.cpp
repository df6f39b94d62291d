// The program in other regions: names of months, orders of a date, decimal separators and code pages.
#include "tests/forms/desktop/Walk.h"

#include "forms/entry/frmAdd.h"
#include "forms/entry/frmEdit.h"
#include "forms/print/frmInterval.h"
#include "platform/system/Clock.h"
#include "platform/system/Conversions.h"
#include "tests/support/PrintedJobs.h"
#include "tests/support/PrinterDialogUser.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <set>
#include <vector>

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

namespace {

/// One day in each month of a year. Its distance is the number of the month.
std::string DayInEachMonth()
{
    std::string lines;
    for (int month = 12; month >= 1; --month) {
        const std::string number = (month < 10 ? "0" : "") + std::to_string(month);
        lines += "2003-" + number + "-02 " + std::string(month < 10 ? 5 : 4, ' ') + std::to_string(month) + " \r\n";
    }
    return lines;
}

/// A route with letters of the language and its code page.
std::wstring RouteInTheSystemsLanguage()
{
    switch (GetACP()) {
    case 1250:
        return L"Łódź - ulica Żółta";
    case 932:
        return L"東京駅 - 大阪";
    default:
        return L"Åre - Köln";
    }
}

std::string InTheUsersCodePage(const std::wstring& text)
{
    std::string bytes(text.size() * 2, '\0');
    BOOL replaced = FALSE;
    bytes.resize(static_cast<std::size_t>(WideCharToMultiByte(CP_ACP, 0, text.data(), static_cast<int>(text.size()),
                                                              bytes.data(), static_cast<int>(bytes.size()), nullptr,
                                                              &replaced)));
    EXPECT_FALSE(replaced) << "the code page lacks a letter of the route";
    return bytes;
}

class InThisCountry : public ProgramUnderTest {};

} // namespace

TEST_F(InThisCountry, ListsTheMonthOfTheClickedNode)
{
    Start({.journal = DayInEachMonth()});
    const TreeView& tree = Main().TreeView1;
    ASSERT_EQ(tree.NodeCount(), 13);
    std::set<std::wstring> names;
    for (int node = 2; node <= 13; ++node) {
        const int month = 14 - node; // the latest month is first
        SCOPED_TRACE(month);
        names.insert(tree.Text(node));
        ClickNode(tree, L"2003", tree.Text(node));
        const std::wstring date = L"2003-" + FormatNumber(month, L"00") + L"-02";
        EXPECT_THAT(Lines(Main().List1), ElementsAre(testing::StartsWith(date)));
    }
    EXPECT_THAT(names, SizeIs(12)) << "twelve different names";
    EXPECT_THAT(boxes.Texts(), IsEmpty());
}

TEST_F(InThisCountry, ListsTheMonthThatTheArrowKeysSelect)
{
    Start({.journal = DayInEachMonth()});
    BringToFront(Main());
    for (int month = 11; month >= 1; --month) {
        PressKey(VK_DOWN);
        const std::wstring date = L"2003-" + FormatNumber(month, L"00") + L"-02";
        EXPECT_THAT(Lines(Main().List1), ElementsAre(testing::StartsWith(date)));
    }
}

TEST_F(InThisCountry, UsesThePositionOfTheMonthInTheList)
{
    Start();
    user.In<frmAdd>([](frmAdd& form) {
        for (int position = 0; position < 12; ++position) {
            form.Combo1.SetListIndex(position);
            EXPECT_EQ(form.getMonth(), position + 1);
        }
        form.Unload();
    });
    Instance<frmAdd>()->showMeNow(0, 0);
}

TEST_F(InThisCountry, AddsEditsSavesAndReadsADay)
{
    Start({.journal = DayInEachMonth()});
    const std::wstring route = RouteInTheSystemsLanguage();
    const std::wstring half = L"7" + DecimalSeparator() + L"5";
    user.In<frmAdd>([&](frmAdd& form) {
        Pick(form.Combo1, form.Combo1.List(4));
        Pick(form.Combo3, L"31");
        Type(form.Text3, L"10");
        Type(form.Text2, route);
        Press(form.addButton);
    });
    Press(Main().addButton);
    EXPECT_THAT(Lines(Main().List1), ElementsAre(L"2003-05-31     10 " + route, testing::StartsWith(L"2003-05-02")));

    user.In<frmEdit>([&](frmEdit& form) {
        EXPECT_EQ(form.getMonth(), 5);
        EXPECT_EQ(form.Text2.Text(), route);
        Type(form.Text3, half);
        Press(form.addButton);
    });
    Press(Main().editButton);
    const std::wstring line = L"2003-05-31    " + half + L" " + route;
    EXPECT_THAT(Lines(Main().List1), ElementsAre(line, testing::StartsWith(L"2003-05-02")));

    ChooseCommand(Main(), {L"File", L"Save"});
    const std::string saved = SavedJournal();
    EXPECT_THAT(saved, testing::HasSubstr(InTheUsersCodePage(line) + "\r\n"));

    CloseMain();
    Start({.journal = saved});
    const TreeView& tree = Main().TreeView1;
    ClickNode(tree, L"2003", tree.Text(14 - 5));
    EXPECT_THAT(Lines(Main().List1), ElementsAre(line, testing::StartsWith(L"2003-05-02")));
    EXPECT_THAT(boxes.Texts(), IsEmpty());
}

TEST_F(InThisCountry, SelectsFebruaryAfterAChangeIfDatesBeginWithTheDay)
{
    DWORD order = 0;
    GetLocaleInfoEx(LOCALE_NAME_USER_DEFAULT, LOCALE_IDATE | LOCALE_RETURN_NUMBER, reinterpret_cast<LPWSTR>(&order),
                    sizeof order / sizeof(wchar_t));
    constexpr DWORD dayMonthYear = 1;
    Start({.journal = DayInEachMonth()});
    user.In<frmAdd>([](frmAdd& form) {
        Pick(form.Combo1, form.Combo1.List(4));
        Pick(form.Combo3, L"31");
        Press(form.addButton);
    });
    Press(Main().addButton);
    EXPECT_THAT(Lines(Main().List1), ElementsAre(testing::StartsWith(L"2003-05-31"), testing::_));
    EXPECT_EQ(Main().TreeView1.SelectedNode(), 14 - (order == dayMonthYear ? 2 : 5));
}

TEST_F(InThisCountry, DeletesTheSelectedDay)
{
    Start({.journal = DayInEachMonth()});
    const TreeView& tree = Main().TreeView1;
    ClickNode(tree, L"2003", tree.Text(14 - 8));
    ClickLine(Main().List1, 0);
    boxes.AnswerNext(IDYES);
    Press(Main().deleteButton);
    EXPECT_EQ(tree.NodeCount(), 12);
    ChooseCommand(Main(), {L"File", L"Save"});
    EXPECT_THAT(SavedJournal(), testing::Not(testing::HasSubstr("2003-08-02")));
    EXPECT_THAT(SavedJournal(), testing::HasSubstr("2003-02-02"));
}

TEST_F(InThisCountry, ShowsTheSelectedMonthsInTheHeading)
{
    Start();
    user.In<frmInterval>([](frmInterval& form) {
        const std::wstring year = form.Text1[0].Text();
        for (int position = 0; position < 12; ++position) {
            form.Combo1[0].SetListIndex(position);
            EXPECT_THAT(form.Label2.Caption(),
                        testing::StartsWith(year + L"-" + FormatNumber(position + 1, L"00") + L"-"));
        }
        EXPECT_THAT(form.Label2.Caption(), SizeIs(std::size("2003-01-01 to 2003-12-31") - 1));
        form.Unload();
    });
    ChooseCommand(Main(), {L"File", L"Print..."});
    EXPECT_THAT(boxes.Texts(), IsEmpty());
}

TEST_F(InThisCountry, PrintsTheDistanceOfADayAndTheSum)
{
    const std::wstring half = L"7" + DecimalSeparator() + L"5";
    Start({.journal = InTheUsersCodePage(L"2003-05-31    " + half + L" " + RouteInTheSystemsLanguage()) + "\r\n"});
    Clock::StandStillAt({2003, 6, 5});
    const auto printing = PrinterDialogUser::ToPrint(1);
    user.In<frmInterval>([](frmInterval& form) { Press(form.addButton); });
    ChooseCommand(Main(), {L"File", L"Print..."});
    Clock::RunAgain();
    std::vector<std::wstring> words;
    for (const PrintedWord& word : WaitForJobs(1).back().Words()) {
        words.push_back(word.text);
    }
    EXPECT_THAT(words, testing::IsSupersetOf({std::wstring(L"2003-05-31"), half, std::wstring(L"2003-06-05")}));
    EXPECT_EQ(std::ranges::count(words, half), 2) << "once in the row, once as the sum";
    EXPECT_THAT(boxes.Texts(), IsEmpty());
}

TEST_F(InThisCountry, HasRoomForTheMonthNames)
{
    UseMessageFontOfWindows();
    Start({.journal = DayInEachMonth()});
    EXPECT_THAT(FindingsIn(Main()), IsEmpty());
    InEveryDialog(user, [](Form& form, const char* name) {
        SCOPED_TRACE(name);
        EXPECT_THAT(FindingsIn(form), IsEmpty());
    });
}
