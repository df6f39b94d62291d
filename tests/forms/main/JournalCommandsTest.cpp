// Save, Revert, Settings and the web pages, and the dialogs that the main window only opens.
#include "tests/forms/ProgramUnderTest.h"

#include "app/Module1.h"
#include "data/DataInterface.h"
#include "forms/about/frmAbout.h"
#include "forms/entry/frmAdd.h"
#include "forms/prefs/frmSettings.h"
#include "forms/prefs/frmUserinfo.h"
#include "forms/print/frmInterval.h"

#include <gmock/gmock.h>

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

constexpr const char* oneDay = "2004-03-15    120 Office\r\n";

class JournalCommands : public ProgramUnderTest {
protected:
    void AddADay()
    {
        user.In<frmAdd>([](frmAdd& dialog) {
            Pick(dialog.Combo1, MonthNamed(1));
            Pick(dialog.Combo3, L"18");
            Press(dialog.addButton);
        });
        Press(Main().addButton);
    }

    static bool ChangeCommandsAreEnabled()
    {
        EXPECT_EQ(IsEnabled(Main(), {L"File", L"Save"}), IsEnabled(Main(), {L"File", L"Revert"}));
        return IsEnabled(Main(), {L"File", L"Save"});
    }

    static void Save() { ChooseCommand(Main(), {L"File", L"Save"}); }
    static void Revert() { ChooseCommand(Main(), {L"File", L"Revert"}); }

    /// The total after the settings have been confirmed with this unit.
    std::wstring TotalAfterSettings(const std::wstring& unit)
    {
        user.In<frmSettings>([unit](frmSettings& dialog) {
            Module1::distanceUnit = unit;
            Press(dialog.cancelButton);
        });
        ChooseCommand(Main(), {L"Edit", L"Settings..."});
        return Text(Main().Label1.Handle());
    }

    template <class T>
    void ClosesAgain()
    {
        user.In<T>([](T& dialog) {
            EXPECT_EQ(GetWindow(dialog.Handle(), GW_OWNER), Main().Handle());
            EXPECT_FALSE(IsWindowEnabled(Main().Handle()));
            SendMessageW(dialog.Handle(), WM_SYSCOMMAND, SC_CLOSE, 0);
        });
    }
};

} // namespace

TEST_F(JournalCommands, SaveWritesTheJournalAndAsksNothing)
{
    Start({.journal = oneDay});
    AddADay();
    const bool dayButtons = IsEnabled(Main().editButton);
    Save();
    EXPECT_EQ(SavedJournal(), Saved("2004-01-18     -2 \r\n2004-03-15    120 Office\r\n"));
    EXPECT_THAT(boxes.Seen(), IsEmpty());
    EXPECT_FALSE(ChangeCommandsAreEnabled());
    EXPECT_EQ(IsEnabled(Main().editButton), dayButtons);
    EXPECT_FALSE(DataInterface::IsJournalChanged());
}

TEST_F(JournalCommands, SaveLeavesEverythingOnShowAsItIs)
{
    Start({.journal = oneDay});
    AddADay();
    const auto lines = Lines(Main().List1);
    Save();
    EXPECT_EQ(Lines(Main().List1), lines);
    EXPECT_EQ(ChosenLine(Main().List1), 0);
}

TEST_F(JournalCommands, SaveThatFailsLeavesTheChangesUnsavedAndCanBeRepeated)
{
    Start({.journal = oneDay});
    AddADay();
    SetFileAttributesW(JournalFile().c_str(), FILE_ATTRIBUTE_READONLY);
    Save();
    SetFileAttributesW(JournalFile().c_str(), FILE_ATTRIBUTE_NORMAL);
    EXPECT_THAT(boxes.Texts(), ElementsAre(L"Run-time error '75':\r\n\r\nPath/File access error"));
    EXPECT_TRUE(ChangeCommandsAreEnabled());
    EXPECT_TRUE(DataInterface::IsJournalChanged());
    EXPECT_EQ(SavedJournal(), oneDay);
    Save();
    EXPECT_FALSE(ChangeCommandsAreEnabled());
    EXPECT_THAT(SavedJournal(), testing::HasSubstr("2004-01-18"));
}

TEST_F(JournalCommands, SaveAfterTheSaveOfAnEmptyJournalFailsBecauseTheFileIsStillOpen)
{
    Start({.journal = oneDay});
    Main().List1.SetListIndex(0);
    boxes.AnswerNext(IDYES);
    Press(Main().deleteButton);
    Save();
    EXPECT_FALSE(ChangeCommandsAreEnabled());
    AddADay();
    Save();
    EXPECT_THAT(boxes.Texts(), ElementsAre(testing::_, L"Run-time error '55':\r\n\r\nFile already open"));
    EXPECT_TRUE(ChangeCommandsAreEnabled());
    EXPECT_TRUE(DataInterface::IsJournalChanged());
}

TEST_F(JournalCommands, RevertAsksFirstWithNoAsTheSafeAnswer)
{
    Start({.journal = oneDay});
    AddADay();
    const auto tree = Tree(Main().TreeView1);
    Revert();
    ASSERT_THAT(boxes.Texts(), ElementsAre(L"Revert to last time you saved?"));
    const SeenMessageBox question = boxes.Seen().front();
    EXPECT_THAT(question.buttons, ElementsAre(IDYES, IDNO));
    EXPECT_EQ(question.defaultButton, IDNO);
    EXPECT_TRUE(question.isCritical);
    EXPECT_EQ(question.title, L"Odomira");
    EXPECT_EQ(DataInterface::dayCount, 2);
    EXPECT_TRUE(ChangeCommandsAreEnabled());
    EXPECT_EQ(Tree(Main().TreeView1), tree);
}

TEST_F(JournalCommands, RevertAsksInSwedish)
{
    Start({.journal = oneDay, .language = 100});
    AddADay();
    ChooseCommand(Main(), {L"Arkiv", L"Återgå"});
    EXPECT_THAT(boxes.Texts(), ElementsAre(L"Återgå till senaste gången du sparade?"));
}

TEST_F(JournalCommands, RevertShowsTheJournalAsItWasSaved)
{
    Start({.journal = oneDay});
    AddADay();
    const bool dayButtons = IsEnabled(Main().editButton);
    boxes.AnswerNext(IDYES);
    Revert();
    EXPECT_EQ(DataInterface::dayCount, 1);
    EXPECT_FALSE(DataInterface::IsJournalChanged());
    EXPECT_THAT(Tree(Main().TreeView1), ElementsAre(L"2004", L"  " + MonthNamed(3) + L"*"));
    EXPECT_THAT(Lines(Main().List1), ElementsAre(L"2004-03-15    120 Office"));
    EXPECT_EQ(Text(Main().Label1.Handle()), L"Total: 120 km");
    EXPECT_FALSE(ChangeCommandsAreEnabled());
    EXPECT_EQ(IsEnabled(Main().editButton), dayButtons);
}

TEST_F(JournalCommands, RevertToAnEmptyJournalLeavesNothingOnShow)
{
    Start();
    AddADay();
    boxes.AnswerNext(IDYES);
    Revert();
    EXPECT_THAT(Tree(Main().TreeView1), IsEmpty());
    EXPECT_THAT(Lines(Main().List1), IsEmpty());
    EXPECT_EQ(Text(Main().Label1.Handle()), L"");
}

TEST_F(JournalCommands, DialogsOpenOverTheMainWindowAndChangeNothing)
{
    Start({.journal = oneDay});
    ClosesAgain<frmInterval>();
    ChooseCommand(Main(), {L"File", L"Print..."});
    ClosesAgain<frmUserinfo>();
    ChooseCommand(Main(), {L"Edit", L"Employee information..."});
    ClosesAgain<frmAbout>();
    ChooseCommand(Main(), {L"Help", L"About Odomira..."});
    EXPECT_FALSE(ChangeCommandsAreEnabled());
    EXPECT_THAT(Form::OpenForms(), testing::SizeIs(1));
    EXPECT_TRUE(IsWindowEnabled(Main().Handle()));
}

TEST_F(JournalCommands, SettingsChangeEveryCaptionButNotTheWordOfTheTotal)
{
    Start({.journal = oneDay});
    user.In<frmSettings>([](frmSettings& dialog) {
        dialog.Option1[1].SetValue(true);
        dialog.Option2[1].SetValue(true);
        Press(dialog.addButton);
    });
    ChooseCommand(Main(), {L"Edit", L"Settings..."});
    EXPECT_TRUE(IsEnabled(Main(), {L"Arkiv", L"Skriv ut..."}));
    EXPECT_TRUE(IsEnabled(Main(), {L"Hjälp", L"På Internet", L"Odomira"}));
    EXPECT_TRUE(IsEnabled(Main(), {L"Hjälp", L"Om Odomira..."}));
    EXPECT_EQ(Text(Main().Label6.Handle()), L"Datum");
    EXPECT_EQ(Text(Main().Label4.Handle()), L"mil");
    EXPECT_EQ(Text(Main().addButton.Handle()), L"Lägg till...");
    EXPECT_EQ(Text(Main().Handle()), L"Odomira");
    EXPECT_EQ(Text(Main().Label1.Handle()), L"Total: 120 mil");
    EXPECT_THAT(Lines(Main().List1), ElementsAre(L"2004-03-15    120 Office"));

    BringToFront(Main());
    ClickNode(Main().TreeView1, L"2004", MonthNamed(3));
    EXPECT_EQ(Text(Main().Label1.Handle()), L"Totalt: 120 mil");
}

TEST_F(JournalCommands, SettingsExchangeTheUnitOfTheTotalByItsLastLetter)
{
    Start({.journal = oneDay});
    EXPECT_EQ(TotalAfterSettings(L"km"), L"Total: 120 km");
    EXPECT_EQ(TotalAfterSettings(L"mil"), L"Total: 120 mil");
    EXPECT_EQ(TotalAfterSettings(L"miles"), L"Total: 120 miles");
    EXPECT_EQ(TotalAfterSettings(L"mil"), L"Total: 120 mil");
    EXPECT_EQ(TotalAfterSettings(L"km"), L"Total: 120 km");
}

TEST_F(JournalCommands, SettingsLeaveAnEmptyTotalEmpty)
{
    Start();
    EXPECT_EQ(TotalAfterSettings(L"miles"), L"");
}

TEST_F(JournalCommands, SettingsReplaceAnyOtherUnitOfTheTotalByItsLastLetterUntilTheNextMonth)
{
    Start({.journal = oneDay, .unit = L"leagues"});
    EXPECT_EQ(TotalAfterSettings(L"km"), L"Total: 120 lekm");
    BringToFront(Main());
    ClickNode(Main().TreeView1, L"2004", MonthNamed(3));
    EXPECT_EQ(Text(Main().Label1.Handle()), L"Total: 120 km");
}

TEST_F(JournalCommands, SettingsThatAreOpenWhenTheSessionEndsGoWithTheProgram)
{
    Start({.journal = oneDay});
    user.In<frmSettings>([](frmSettings&) { SendMessageW(Main().Handle(), WM_ENDSESSION, TRUE, 0); });
    ChooseCommand(Main(), {L"Edit", L"Settings..."});
    EXPECT_THAT(Form::OpenForms(), IsEmpty());
    EXPECT_THAT(boxes.Texts(), IsEmpty());
}
