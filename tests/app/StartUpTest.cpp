// How the program starts: its settings, its journal, one instance of it.
#include "app/Module1.h"
#include "data/DataInterface.h"
#include "platform/windows/UnhandledError.h"
#include "settings/registerModule.h"
#include "tests/forms/ProgramUnderTest.h"
#include "tests/support/ChildProcess.h"
#include "tests/support/TemporaryFolder.h"

#include <gmock/gmock.h>

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

/// Starts with the registry and the folder as they are, without the preparations of Start().
class StartUp : public ProgramUnderTest {
protected:
    StartUp() { RegDeleteTreeW(HKEY_LOCAL_MACHINE, L"Software\\Velmora"); }
};

} // namespace

TEST_F(StartUp, UsesEnglishAndKilometresWithoutSettings)
{
    Module1::LoadSettings();
    EXPECT_EQ(Module1::distanceUnit, L"km");
    EXPECT_EQ(Module1::languageOffset, 0);
    EXPECT_TRUE(IsEnabled(Main(), {L"File", L"Exit"}));
    EXPECT_EQ(Text(Main().Label4.Handle()), L"km");
    EXPECT_THAT(boxes.Texts(), IsEmpty());
}

TEST_F(StartUp, CreatesAnEmptyJournalWhereThereIsNone)
{
    Module1::LoadSettings();
    EXPECT_EQ(SavedJournal(), "");
    EXPECT_EQ(DataInterface::dayCount, 0);
}

TEST_F(StartUp, ReadsTheSettingsOfTheLastRun)
{
    Start({.unit = L"mil", .language = 100});
    EXPECT_EQ(Module1::distanceUnit, L"mil");
    EXPECT_EQ(Module1::languageOffset, 100);
}

TEST_F(StartUp, EndsWithTheErrorAndWithoutAWindowWhenTheLanguageIsNoNumber)
{
    registerModule::SaveRegistryValue(L"Settings", L"Language", L"Klingon");
    WriteBytes(JournalFile(), "2004-03-15     12 Office\r\n");
    EXPECT_FALSE(Guarded(Module1::LoadSettings));
    EXPECT_THAT(boxes.Texts(), ElementsAre(L"Run-time error '13':\r\n\r\nType mismatch"));
    EXPECT_FALSE(IsOpen());
    EXPECT_THAT(Form::OpenForms(), IsEmpty());
    EXPECT_EQ(SavedJournal(), "2004-03-15     12 Office\r\n");
}

TEST_F(StartUp, EndsWithTheErrorAndWithoutAWindowWhenTheLanguageHasNoTexts)
{
    registerModule::SaveRegistryValue(L"Settings", L"Language", L"77");
    EXPECT_FALSE(Guarded(Module1::LoadSettings));
    EXPECT_THAT(boxes.Texts(), ElementsAre(testing::StartsWith(L"Run-time error '326':")));
    EXPECT_THAT(Form::OpenForms(), IsEmpty());
}

TEST_F(StartUp, ShowsErrorsOfTheJournalAndOpensWithTheOtherLines)
{
    Start({.journal = "2004-03-15     12 Office\r\nrubbish\r\n2004-03-14      1 \r\n"});
    EXPECT_THAT(boxes.Texts(), ElementsAre(L"errorType mismatch"));
    EXPECT_THAT(Lines(Main().List1), ElementsAre(L"2004-03-15     12 Office", L"2004-03-14      1 "));
}

TEST_F(StartUp, EndsSilentlyIfTheProgramIsRunning)
{
    Module1::LoadSettings();
    ASSERT_TRUE(IsOpen());
    EXPECT_EQ(RunInChildProcess(L"StartUp.DISABLED_SecondInstance"), 0);
}

TEST_F(StartUp, DISABLED_SecondInstance)
{
    Module1::LoadSettings();
    EXPECT_THAT(Form::OpenForms(), IsEmpty());
    EXPECT_THAT(boxes.Texts(), IsEmpty());
    EXPECT_EQ(Module1::distanceUnit, L"") << "settings are read";
    EXPECT_FALSE(DataInterface::FileExists(JournalFile())) << "the journal is touched";
}
