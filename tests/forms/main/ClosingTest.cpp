// Closing the main window: the question about what is not saved, and the other windows that go with it.
#include "tests/forms/ProgramUnderTest.h"

#include "data/DataInterface.h"
#include "forms/about/frmAbout.h"
#include "forms/entry/frmAdd.h"
#include "forms/entry/frmEdit.h"
#include "forms/prefs/frmSettings.h"
#include "forms/prefs/frmUserinfo.h"
#include "forms/print/frmInterval.h"
#include "platform/windows/FormWindow.h"
#include "tests/support/NoMemory.h"

#include <gmock/gmock.h>

#include <commctrl.h>

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

constexpr const char* oneDay = "2004-03-15     12 Office\r\n";

/// A program with a day that is not saved yet.
class MainWindowClosing : public ProgramUnderTest {
protected:
    void StartChanged(std::int16_t language = 0)
    {
        ProgramUnderTest::StartChanged({.journal = oneDay, .language = language});
    }

    /// The question of the system whether the user's session may end.
    static bool MayEndSession() { return SendMessageW(Main().Handle(), WM_QUERYENDSESSION, 0, 0) != FALSE; }
};

/// Notes the captions of windows in the order in which they end.
std::vector<std::wstring> ended;

LRESULT CALLBACK NoteEnd(HWND window, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR id, DWORD_PTR)
{
    if (message == WM_DESTROY) {
        ended.push_back(Text(window));
    }
    if (message == WM_NCDESTROY) {
        RemoveWindowSubclass(window, NoteEnd, id);
    }
    return DefSubclassProc(window, message, wParam, lParam);
}

void WatchEndOf(const Form& form)
{
    SetWindowSubclass(form.Handle(), NoteEnd, 2, 0);
}

template <class T>
void LoadAndWatch()
{
    Instance<T>()->Load();
    WatchEndOf(*Instance<T>());
}

/// A window that the main window knows nothing of.
template <int number>
class Stranger : public Form {
public:
    const FormLayout& Layout() const override
    {
        static constexpr FormLayout layout{.kind = FormKind::Dialog, .width = 1000, .height = 1000, .rows = {}};
        return layout;
    }

protected:
    void Wire() override {}
    void Form_Load() override { SetCaption(L"Stranger " + std::to_wstring(number)); }
};

class ReadOnlyJournal {
public:
    ReadOnlyJournal() { SetFileAttributesW(JournalFile().c_str(), FILE_ATTRIBUTE_READONLY); }
    ~ReadOnlyJournal() { SetFileAttributesW(JournalFile().c_str(), FILE_ATTRIBUTE_NORMAL); }
    ReadOnlyJournal(const ReadOnlyJournal&) = delete;
    ReadOnlyJournal& operator=(const ReadOnlyJournal&) = delete;
};

} // namespace

TEST_F(MainWindowClosing, AsksNothingWhenNothingChanged)
{
    Start({.journal = oneDay});
    CloseMain();
    EXPECT_FALSE(IsOpen());
    EXPECT_THAT(boxes.Seen(), IsEmpty());
    EXPECT_EQ(SavedJournal(), oneDay) << "written without need";
}

TEST_F(MainWindowClosing, AsksWhetherToSaveWithCancelAsTheSafeAnswer)
{
    StartChanged();
    HWND main = Main().Handle();
    boxes.AnswerNext(IDCANCEL);
    CloseMain();
    ASSERT_THAT(boxes.Texts(), ElementsAre(L"Save last changes?"));
    const SeenMessageBox question = boxes.Seen().front();
    EXPECT_THAT(question.buttons, ElementsAre(IDYES, IDNO, IDCANCEL));
    EXPECT_EQ(question.defaultButton, IDCANCEL);
    EXPECT_TRUE(question.isCritical);
    EXPECT_EQ(question.title, L"Odomira");
    EXPECT_EQ(question.owner, main);
}

TEST_F(MainWindowClosing, AsksInSwedish)
{
    StartChanged(100);
    CloseMain();
    EXPECT_THAT(boxes.Texts(), ElementsAre(L"Vill du spara de senaste ändringarna?"));
}

TEST_F(MainWindowClosing, StaysWithTheChangesWhenCancelledAndAsksAgain)
{
    StartChanged();
    boxes.AnswerNext(IDCANCEL);
    CloseMain();
    ASSERT_TRUE(IsOpen());
    EXPECT_TRUE(IsWindowVisible(Main().Handle()));
    EXPECT_TRUE(DataInterface::IsJournalChanged());
    EXPECT_TRUE(IsEnabled(Main(), {L"File", L"Save"}));
    EXPECT_EQ(SavedJournal(), oneDay);

    boxes.AnswerNext(IDCANCEL);
    CloseMain();
    EXPECT_THAT(boxes.Seen(), testing::SizeIs(2));
    EXPECT_TRUE(IsOpen());
}

TEST_F(MainWindowClosing, ClosesWithoutWritingWhenAnsweredNo)
{
    StartChanged();
    boxes.AnswerNext(IDNO);
    CloseMain();
    EXPECT_FALSE(IsOpen());
    EXPECT_FALSE(DataInterface::IsJournalChanged());
    EXPECT_EQ(SavedJournal(), oneDay);
}

TEST_F(MainWindowClosing, SavesAndClosesWhenAnsweredYes)
{
    StartChanged();
    boxes.AnswerNext(IDYES);
    CloseMain();
    EXPECT_FALSE(IsOpen());
    EXPECT_FALSE(DataInterface::IsJournalChanged());
    EXPECT_EQ(SavedJournal(), Saved("2004-03-18     -2 \r\n"
                                    "2004-03-15     12 Office\r\n"));
}

TEST_F(MainWindowClosing, AsksAlsoWhenTheMenuEndsTheProgram)
{
    StartChanged();
    boxes.AnswerNext(IDCANCEL);
    ChooseCommand(Main(), {L"File", L"Exit"});
    EXPECT_TRUE(IsOpen());
    boxes.AnswerNext(IDNO);
    ChooseCommand(Main(), {L"File", L"Exit"});
    EXPECT_FALSE(IsOpen());
    EXPECT_THAT(boxes.Texts(), ElementsAre(L"Save last changes?", L"Save last changes?"));
}

TEST_F(MainWindowClosing, AsksAlsoOnAltF4)
{
    StartChanged();
    BringToFront(Main());
    boxes.AnswerNext(IDNO);
    PressKeyWith(VK_MENU, VK_F4);
    EXPECT_FALSE(IsOpen());
    EXPECT_THAT(boxes.Texts(), ElementsAre(L"Save last changes?"));
}

TEST_F(MainWindowClosing, StaysWhenTheSaveFailsAndLetsTheUserTryAgain)
{
    StartChanged();
    {
        const ReadOnlyJournal locked;
        boxes.AnswerNext(IDYES);
        CloseMain();
    }
    EXPECT_THAT(boxes.Texts(),
                ElementsAre(L"Save last changes?", L"Run-time error '75':\r\n\r\nPath/File access error"));
    ASSERT_TRUE(IsOpen());
    EXPECT_TRUE(DataInterface::IsJournalChanged());
    EXPECT_TRUE(IsEnabled(Main(), {L"File", L"Save"}));
    EXPECT_TRUE(IsEnabled(Main(), {L"File", L"Revert"}));
    EXPECT_EQ(SavedJournal(), oneDay);

    boxes.AnswerNext(IDYES);
    CloseMain();
    EXPECT_FALSE(IsOpen());
    EXPECT_THAT(SavedJournal(), testing::HasSubstr("2004-03-18"));
}

TEST_F(MainWindowClosing, LetsTheSessionEndWithoutAQuestionWhenNothingChanged)
{
    Start({.journal = oneDay});
    EXPECT_TRUE(MayEndSession());
    EXPECT_THAT(boxes.Seen(), IsEmpty());
    EXPECT_TRUE(IsOpen()) << "the session may yet go on";
}

TEST_F(MainWindowClosing, AsksBeforeTheSessionEndsAndHoldsItUpWhenCancelled)
{
    StartChanged();
    boxes.AnswerNext(IDCANCEL);
    EXPECT_FALSE(MayEndSession());
    EXPECT_THAT(boxes.Texts(), ElementsAre(L"Save last changes?"));
    EXPECT_TRUE(DataInterface::IsJournalChanged());
}

TEST_F(MainWindowClosing, SavesBeforeTheSessionEndsAndClosesWithoutASecondQuestion)
{
    StartChanged();
    boxes.AnswerNext(IDYES);
    EXPECT_TRUE(MayEndSession());
    EXPECT_THAT(SavedJournal(), testing::HasSubstr("2004-03-18"));
    SendMessageW(Main().Handle(), WM_ENDSESSION, TRUE, 0);
    EXPECT_FALSE(IsOpen());
    EXPECT_THAT(boxes.Seen(), testing::SizeIs(1));
}

TEST_F(MainWindowClosing, HoldsTheSessionUpWhenTheSaveFails)
{
    StartChanged();
    const ReadOnlyJournal locked;
    boxes.AnswerNext(IDYES);
    EXPECT_FALSE(MayEndSession());
    EXPECT_TRUE(DataInterface::IsJournalChanged());
}

TEST_F(MainWindowClosing, StaysOpenWhenTheEndOfTheSessionIsCancelled)
{
    Start({.journal = oneDay});
    SendMessageW(Main().Handle(), WM_ENDSESSION, FALSE, 0);
    EXPECT_TRUE(IsOpen());
}

TEST_F(MainWindowClosing, IsNotPossibleBehindAnOpenDialog)
{
    Start({.journal = oneDay});
    user.In<frmAdd>([](frmAdd& dialog) {
        SendMessageW(Main().Handle(), WM_CLOSE, 0, 0);
        EXPECT_TRUE(IsOpen());
        EXPECT_TRUE(dialog.IsLoaded());
        Press(dialog.cancelButton);
    });
    Press(Main().addButton);
    EXPECT_TRUE(IsOpen());
}

TEST_F(MainWindowClosing, TakesAnOpenDialogWithItWhenTheSessionEnds)
{
    Start({.journal = oneDay});
    user.In<frmAdd>([](frmAdd&) { SendMessageW(Main().Handle(), WM_ENDSESSION, TRUE, 0); });
    Press(Main().addButton);
    EXPECT_THAT(Form::OpenForms(), IsEmpty());
}

TEST_F(MainWindowClosing, UnloadsTheOtherFormsInAFixedOrderThenTheRestBackwards)
{
    Start();
    ended.clear();
    WatchEndOf(Main());
    LoadAndWatch<Stranger<1>>();
    LoadAndWatch<frmUserinfo>();
    LoadAndWatch<frmSettings>();
    LoadAndWatch<frmInterval>();
    LoadAndWatch<frmEdit>();
    LoadAndWatch<Stranger<2>>();
    LoadAndWatch<frmAdd>();
    LoadAndWatch<frmAbout>();
    const std::vector<std::wstring> expected{Text(Instance<frmAbout>()->Handle()),
                                             L"Add",
                                             L"Edit",
                                             Text(Instance<frmInterval>()->Handle()),
                                             Text(Instance<frmSettings>()->Handle()),
                                             Text(Instance<frmUserinfo>()->Handle()),
                                             L"Stranger 2",
                                             L"Stranger 1",
                                             L"Odomira"};
    CloseMain();
    EXPECT_EQ(ended, expected);
}

TEST_F(MainWindowClosing, AsksAlsoWhenAnotherProgramEndsTheMessageLoop)
{
    StartChanged();
    boxes.AnswerNext(IDCANCEL);
    PostThreadMessageW(GetCurrentThreadId(), WM_QUIT, 0, 0);
    DoEvents();
    EXPECT_TRUE(IsOpen());
    EXPECT_TRUE(DataInterface::IsJournalChanged());

    boxes.AnswerNext(IDNO);
    PostQuitMessage(0);
    RunMessageLoop();
    EXPECT_FALSE(IsOpen());
    EXPECT_THAT(boxes.Texts(), ElementsAre(L"Save last changes?", L"Save last changes?"));
}

TEST_F(MainWindowClosing, LeavesAnOpenDialogWhenAnotherProgramEndsTheMessageLoopAndTheUserCancels)
{
    StartChanged();
    boxes.AnswerNext(IDCANCEL);
    user.In<frmAdd>([](frmAdd&) { PostQuitMessage(0); });
    user.In<frmAdd>([this](frmAdd& dialog) {
        EXPECT_THAT(boxes.Texts(), ElementsAre(L"Save last changes?"));
        EXPECT_FALSE(IsEnabled(Main().addButton) && IsWindowEnabled(Main().Handle()));
        Press(dialog.cancelButton);
    });
    Press(Main().addButton);
    EXPECT_TRUE(IsOpen());
    EXPECT_TRUE(DataInterface::IsJournalChanged());
}

TEST_F(MainWindowClosing, TakesAnOpenDialogWithItWhenAnotherProgramEndsTheMessageLoop)
{
    StartChanged();
    boxes.AnswerNext(IDNO);
    user.In<frmAdd>([](frmAdd&) { PostQuitMessage(0); });
    Press(Main().addButton);
    EXPECT_THAT(Form::OpenForms(), IsEmpty());
    EXPECT_THAT(boxes.Texts(), ElementsAre(L"Save last changes?"));
    EXPECT_EQ(SavedJournal(), oneDay);
}

TEST_F(MainWindowClosing, IsNotCausedByALackOfMemory)
{
    Start({.journal = oneDay});
    DoEvents();
    PostMessageW(Main().Handle(), WM_NULL, 0, 0);
    {
        const NoMemory none;
        HandleNextMessage(); // this one only: a timer of the test's user would need memory itself
    }
    EXPECT_TRUE(IsOpen());
}

TEST_F(MainWindowClosing, EndsTheMessageLoopAndSoTheProgram)
{
    Start();
    PostMessageW(Main().Handle(), WM_SYSCOMMAND, SC_CLOSE, 0);
    RunMessageLoop();
    EXPECT_FALSE(IsOpen());
}
