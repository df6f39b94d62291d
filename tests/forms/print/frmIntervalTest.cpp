// The dialog for the interval of the report, with a real printer dialog and a real queue.
#include "forms/print/frmInterval.h"

#include "app/Module1.h"
#include "data/Calendar.h"
#include "data/DataInterface.h"
#include "forms/print/DefaultInterval.h"
#include "settings/registerModule.h"
#include "tests/support/FormUser.h"
#include "tests/support/MessageBoxWatcher.h"
#include "tests/support/PrintedJobs.h"
#include "tests/support/PrinterDialogUser.h"

#include <gmock/gmock.h>

#include <windows.h>

#include <winspool.h>

#include <algorithm>
#include <array>

namespace {

class IntervalDialog : public testing::Test {
protected:
    IntervalDialog()
    {
        RegDeleteTreeW(HKEY_LOCAL_MACHINE, L"Software\\Velmora");
        Module1::languageOffset = 0;
        Module1::distanceUnit = L"km";
        Clock::StandStillAt({2003, 5, 16});
    }

    void TearDown() override
    {
        UnloadInstance<frmInterval>();
        Clock::RunAgain();
    }

    static frmInterval& Open()
    {
        UnloadInstance<frmInterval>();
        const auto form = Instance<frmInterval>();
        form->Load();
        form->Show();
        return *form;
    }

    static bool IsOpen() { return !Form::OpenForms().empty(); }

    static std::wstring Stored(const std::wstring& value)
    {
        return registerModule::GetRegistryValue(L"Print", value, L"(nothing)");
    }

    static void Store(const std::wstring& value, const std::wstring& text)
    {
        registerModule::SaveRegistryValue(L"Print", value, text);
    }

    static void Press(const CommandButton& button) { SendMessageW(button.Handle(), BM_CLICK, 0, 0); }

    static std::wstring DefaultPrinter()
    {
        std::array<wchar_t, 64> name{};
        auto size = static_cast<DWORD>(name.size());
        return GetDefaultPrinterW(name.data(), &size) != FALSE ? name.data() : L"(none)";
    }

    static std::wstring Default() { return Open().Label2.Caption(); }
};

} // namespace

TEST_F(IntervalDialog, HasItsTextsInBothLanguages)
{
    frmInterval& english = Open();
    EXPECT_EQ(english.Caption(), L"Print inteval");
    EXPECT_EQ(english.Frame1.Caption(), L"As from");
    EXPECT_EQ(english.Frame2.Caption(), L"Up to");
    EXPECT_EQ(english.Frame3.Caption(), L"Heading");
    EXPECT_EQ(english.addButton.Caption(), L"Print...");
    EXPECT_EQ(english.cancelButton.Caption(), L"Cancel");
    EXPECT_EQ(english.Option1[0].Caption(), L"");
    EXPECT_EQ(english.Option1[1].Caption(), L"");
    Module1::languageOffset = 100;
    frmInterval& swedish = Open();
    EXPECT_EQ(swedish.Caption(), L"Utskriftsintervall");
    EXPECT_EQ(swedish.Frame1.Caption(), L"Från och med");
    EXPECT_EQ(swedish.Frame2.Caption(), L"Till och med");
    EXPECT_EQ(swedish.Frame3.Caption(), L"Rubrik för utskrift");
    EXPECT_EQ(swedish.addButton.Caption(), L"Skriv ut...");
    EXPECT_EQ(swedish.cancelButton.Caption(), L"Avbryt");
    const std::array captions{L"År", L"Månad", L"Dag", L"Dag", L"Månad", L"År"};
    for (std::size_t i = 0; i < captions.size(); ++i) {
        EXPECT_EQ(swedish.Label1[i].Caption(), captions[i]) << i;
    }
}

TEST_F(IntervalDialog, ShowsTheDefaultIntervalUpToToday)
{
    EXPECT_EQ(Default(), L"2003-04-17 to 2003-05-16");
    Clock::StandStillAt({2003, 3, 31});
    EXPECT_EQ(Default(), L"2003-03-01 to 2003-03-31");
    Clock::StandStillAt({2004, 1, 15});
    EXPECT_EQ(Default(), L"2003-12-15 to 2004-01-15");
    Clock::StandStillAt({2004, 1, 31});
    EXPECT_EQ(Default(), L"2003-12-31 to 2004-01-31");
    Module1::languageOffset = 100;
    EXPECT_EQ(Default(), L"2003-12-31 till 2004-01-31");
}

TEST_F(IntervalDialog, ShowsTheDefaultIntervalAtTheEndOfEveryMonth)
{
    for (std::int16_t month = 1; month <= 12; ++month) {
        const CalendarDay today{2004, month, DaysInMonth(2004, month)};
        const auto text = [](const CalendarDay& shown) {
            return std::to_wstring(shown.year) + L"-" + frmInterval::TwoDigits(shown.month) + L"-" +
                   frmInterval::TwoDigits(shown.day);
        };
        Clock::StandStillAt(today);
        EXPECT_EQ(Default(), text(DefaultFromDate(today)) + L" to " + text(today));
        EXPECT_EQ(Instance<frmInterval>()->GetIntervalText(), Instance<frmInterval>()->Label2.Caption());
    }
}

TEST_F(IntervalDialog, OffersTheDaysOfTheMonth)
{
    frmInterval& form = Open();
    for (const auto& [year, month, days] :
         {std::tuple{2003, 2, 28}, {2004, 2, 29}, {2000, 2, 29}, {2100, 2, 28}, {2003, 4, 30}, {2003, 12, 31}}) {
        for (const std::size_t index : {std::size_t{0}, std::size_t{1}}) {
            form.UpDown1[index].SetValue(year);
            form.Combo1[index].SetListIndex(month - 1);
            EXPECT_EQ(form.Combo3[index].ListCount(), days) << year << '-' << month;
            EXPECT_EQ(form.Combo3[index].List(0), L"1");
            EXPECT_EQ(form.Combo3[index].List(days - 1), std::to_wstring(days));
        }
    }
}

TEST_F(IntervalDialog, FillsOnlyTheDaysOfItsOwnGroup)
{
    frmInterval& form = Open();
    form.Combo1[0].SetListIndex(1);
    EXPECT_EQ(form.Combo3[0].ListCount(), 28);
    EXPECT_EQ(form.Combo3[1].ListCount(), 31);
}

TEST_F(IntervalDialog, KeepsTheSelectedDayOrSelectsTheLastDayOfTheMonth)
{
    frmInterval& form = Open();
    form.Combo1[1].SetListIndex(0);
    form.Combo3[1].SetListIndex(30);
    form.Combo1[1].SetListIndex(1);
    EXPECT_EQ(form.Combo3[1].Text(), L"28");
    form.Combo1[1].SetListIndex(2);
    EXPECT_EQ(form.Combo3[1].Text(), L"28");
    form.UpDown1[1].SetValue(2004);
    EXPECT_EQ(form.Combo3[1].Text(), L"28");
    EXPECT_EQ(form.Label2.Caption(), L"2003-04-17 to 2004-03-28");
}

TEST_F(IntervalDialog, ShowsEveryChangeOfTheDatesInTheHeading)
{
    frmInterval& form = Open();
    form.UpDown1[0].SetValue(2001);
    EXPECT_EQ(form.Label2.Caption(), L"2001-04-17 to 2003-05-16");
    form.Combo1[0].SetListIndex(10);
    EXPECT_EQ(form.Label2.Caption(), L"2001-11-17 to 2003-05-16");
    form.Combo3[1].SetListIndex(0);
    EXPECT_EQ(form.Label2.Caption(), L"2001-11-17 to 2003-05-01");
}

TEST_F(IntervalDialog, HasReadOnlyYearBoxes)
{
    frmInterval& form = Open();
    for (const TextBox& year : form.Text1) {
        EXPECT_NE(GetWindowLongPtrW(year.Handle(), GWL_STYLE) & ES_READONLY, 0);
        EXPECT_NE(IsWindowEnabled(year.Handle()), FALSE) << "read-only, but not disabled";
    }
}

TEST_F(IntervalDialog, ShowsTheHeadingOfTheLastPrint)
{
    EXPECT_EQ(Open().Text2.Text(), L"");
    EXPECT_TRUE(Open().Option1[0].Value());
    Store(L"Heading", L"Våren");
    Store(L"UseDefaultHeading", L"False");
    EXPECT_EQ(Open().Text2.Text(), L"Våren");
    EXPECT_TRUE(Open().Option1[1].Value());
    EXPECT_FALSE(Open().Option1[0].Value());
}

TEST_F(IntervalDialog, UsesTheDefaultHeadingForTheExactTextTrueOnly)
{
    for (const wchar_t* word : {L"true", L"TRUE", L"1", L"-1", L""}) {
        Store(L"UseDefaultHeading", word);
        EXPECT_TRUE(Open().Option1[1].Value()) << testing::PrintToString(word);
    }
    Store(L"UseDefaultHeading", L"True");
    EXPECT_TRUE(Open().Option1[0].Value());
}

TEST_F(IntervalDialog, LeavesTheHeadingChoiceAloneWhenAKeyIsTypedIntoTheHeading)
{
    frmInterval& form = Open();
    SendMessageW(form.Text2.Handle(), WM_CHAR, L'x', 0);
    EXPECT_EQ(form.Text2.Text(), L"x");
    EXPECT_TRUE(form.Option1[0].Value());
}

TEST_F(IntervalDialog, RefusesAnIntervalThatEndsBeforeItBegins)
{
    frmInterval& form = Open();
    form.Text2.SetText(L"never stored");
    form.Combo3[0].SetListIndex(16);
    form.Combo1[0].SetListIndex(4); // 17 May to 16 May
    MessageBoxWatcher boxes;
    Press(form.addButton);
    const auto seen = boxes.Seen();
    ASSERT_EQ(seen.size(), 1U);
    EXPECT_EQ(seen[0].title, L"");
    EXPECT_EQ(seen[0].text, L"Can not print the selected range.\r\nFrom-date is past to-date.");
    EXPECT_THAT(seen[0].buttons, testing::ElementsAre(IDOK));
    EXPECT_TRUE(IsOpen());
    EXPECT_EQ(Stored(L"Heading"), L"(nothing)");
    EXPECT_EQ(Stored(L"UseDefaultHeading"), L"(nothing)");
}

TEST_F(IntervalDialog, StoresNothingWhenItIsCancelled)
{
    frmInterval& form = Open();
    form.Text2.SetText(L"never stored");
    Press(form.cancelButton);
    EXPECT_FALSE(IsOpen());
    EXPECT_EQ(Stored(L"Heading"), L"(nothing)");
}

TEST_F(IntervalDialog, OpensWithItsDefaultsAgain)
{
    Open().Combo1[0].SetListIndex(0);
    UnloadInstance<frmInterval>();
    EXPECT_EQ(Default(), L"2003-04-17 to 2003-05-16");
}

TEST_F(IntervalDialog, StaysOpenWhenThePrinterDialogIsCancelledButKeepsTheHeading)
{
    const std::size_t before = JobsEverQueued();
    frmInterval& form = Open();
    form.Text2.SetText(L"Stored all the same");
    form.Option1[1].SetValue(true);
    MessageBoxWatcher boxes;
    {
        const auto user = PrinterDialogUser::ToCancel();
        Press(form.addButton);
    }
    EXPECT_TRUE(IsOpen());
    EXPECT_TRUE(boxes.Seen().empty());
    EXPECT_EQ(Stored(L"Heading"), L"Stored all the same");
    EXPECT_EQ(Stored(L"UseDefaultHeading"), L"False");
    EXPECT_EQ(JobsEverQueued(), before);
}

TEST_F(IntervalDialog, PrintsOnEnterAfterThePrinterDialogWasCancelled)
{
    const std::size_t before = JobsEverQueued();
    frmInterval& form = Open();
    BringToFront(form);
    form.Combo3[1].SetFocus();
    {
        const auto user = PrinterDialogUser::ToCancel();
        PressKey(VK_RETURN);
    }
    Await([&] { return GetFocus() == form.addButton.Handle(); }, "the focus on Print");
    {
        const auto user = PrinterDialogUser::ToPrint(1);
        PressKey(VK_RETURN);
    }
    EXPECT_FALSE(IsOpen());
    EXPECT_EQ(WaitForJobs(before + 1).size(), before + 1);
}

TEST_F(IntervalDialog, PrintsTheReportOnceForEachCopyAndCloses)
{
    const std::size_t before = JobsEverQueued();
    DataInterface::AddDay(2003, 5, 1, 120, L"Airport");
    frmInterval& form = Open();
    HWND window = form.Handle();
    HWND owner = nullptr;
    bool selection = true;
    {
        auto user = PrinterDialogUser::ToPrint(3);
        Press(form.addButton);
        user.WaitUntilGone();
        owner = user.DialogOwner();
        selection = user.CouldChooseSelection();
    }
    EXPECT_EQ(owner, window);
    EXPECT_FALSE(selection);
    EXPECT_FALSE(IsOpen());
    EXPECT_EQ(Stored(L"UseDefaultHeading"), L"True");
    const auto jobs = WaitForJobs(before + 3);
    EXPECT_EQ(JobsEverQueued(), before + 3);
    for (std::size_t job = before; job < before + 3; ++job) {
        EXPECT_EQ(jobs[job].copies, 1) << "one job for one copy";
        EXPECT_EQ(jobs[job].title, L"Driver's journal");
        const auto words = jobs[job].Words();
        EXPECT_EQ(std::ranges::count(words, L"Airport", &PrintedWord::text), 1);
        EXPECT_EQ(std::ranges::count(words, L"120", &PrintedWord::text), 2) << "the day and the sum";
        EXPECT_EQ(words.back().page, 1);
    }
    DataInterface::DeleteDay(2003, 5, 1);
}

TEST_F(IntervalDialog, PrintsOnTheSelectedPrinterAndKeepsTheDefaultPrinter)
{
    const std::size_t before = JobsEverQueued();
    frmInterval& form = Open();
    {
        const auto user = PrinterDialogUser::ToPrintOn(L"Other");
        Press(form.addButton);
    }
    EXPECT_FALSE(IsOpen());
    EXPECT_EQ(WaitForJobs(before + 1).back().printer, L"Other");
    EXPECT_EQ(DefaultPrinter(), L"Paper");
}

TEST_F(IntervalDialog, PrintsToAFileIfTheUserSelectsThat)
{
    const std::filesystem::path file = PrintedFolder() / "file.ps";
    const std::size_t before = JobsEverQueued();
    frmInterval& form = Open();
    {
        const auto user = PrinterDialogUser::ToPrintToFile(file.wstring());
        Press(form.addButton);
    }
    EXPECT_FALSE(IsOpen());
    EXPECT_TRUE(TakePrintedFile(file).starts_with("%!PS"));
    EXPECT_EQ(JobsEverQueued(), before);
}

TEST_F(IntervalDialog, PrintsAnIntervalOfOneDay)
{
    const std::size_t before = JobsEverQueued();
    frmInterval& form = Open();
    form.Combo3[0].SetListIndex(15);
    form.Combo1[0].SetListIndex(4);
    {
        const auto user = PrinterDialogUser::ToPrint(1);
        Press(form.addButton);
    }
    EXPECT_FALSE(IsOpen());
    EXPECT_EQ(WaitForJobs(before + 1).size(), before + 1);
}
