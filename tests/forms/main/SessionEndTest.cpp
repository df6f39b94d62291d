// The end of the user's session: what happens under an open question or dialog, and when it is called off. Beside it,
// what failing messages and handlers leave behind.
#include "tests/forms/ProgramUnderTest.h"

#include "data/DataInterface.h"
#include "forms/about/frmAbout.h"
#include "forms/entry/frmAdd.h"
#include "forms/entry/frmEdit.h"
#include "forms/prefs/frmSettings.h"
#include "forms/prefs/frmUserinfo.h"
#include "forms/print/frmInterval.h"
#include "platform/system/RuntimeError.h"
#include "platform/system/TextFile.h"
#include "platform/windows/UnhandledError.h"
#include "tests/support/ReplacedImport.h"
#include "tests/support/TemporaryFolder.h"

#include <gmock/gmock.h>

#include <array>
#include <optional>

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

constexpr const char* oneDay = "2004-03-15     12 Office\r\n";
constexpr const wchar_t* saveQuestion = L"Save last changes?";
/// Each command that fills the tree shows an error at the month.
constexpr const char* monthAbove12 = "2004-03-15     12 Office\r\n2004-99-01      5 Nowhere\r\n";
constexpr const wchar_t* typeMismatch = L"Run-time error '13':\r\n\r\nType mismatch";

class SessionEnd : public ProgramUnderTest {
protected:
    using ProgramUnderTest::StartChanged;
    void StartChanged() { StartChanged({.journal = oneDay}); }

    static bool MayEndSession() { return SendMessageW(Main().Handle(), WM_QUERYENDSESSION, 0, 0) != FALSE; }
    static void CallOff() { SendMessageW(Main().Handle(), WM_ENDSESSION, FALSE, 0); }

    /// The next box that has no answer yet stays open, and the session ends behind it.
    void EndSessionUnderNextBox()
    {
        boxes.LeaveNextOpenWhile([main = Main().Handle()] {
            if (SendMessageW(main, WM_QUERYENDSESSION, 0, 0) != FALSE) {
                SendMessageW(main, WM_ENDSESSION, TRUE, 0);
            }
        });
    }

    /// Nothing is left on the screen, and nothing was said but this.
    void ExpectEnded(const std::vector<std::wstring>& said) const
    {
        EXPECT_THAT(Form::OpenForms(), IsEmpty());
        EXPECT_EQ(boxes.Texts(), said);
        EXPECT_EQ(SavedJournal(), oneDay);
    }

    void ExpectEndedUnder(const std::wstring& text) const { ExpectEnded({text}); }

    template <class T>
    void EndsInside(std::initializer_list<const wchar_t*> command)
    {
        user.In<T>([](T&) { SendMessageW(Main().Handle(), WM_ENDSESSION, TRUE, 0); });
        ChooseCommand(Main(), command);
        ExpectEnded({});
    }
};

/// The reason for the delay of the end of the session, and its window.
struct HeldUp {
    HWND window = nullptr;
    std::wstring reason;
};
std::optional<HeldUp> heldUp;
std::optional<HeldUp> lastHeldUp;

BOOL WINAPI NoteReason(HWND window, LPCWSTR reason)
{
    heldUp = lastHeldUp = HeldUp{window, reason};
    return TRUE;
}

BOOL WINAPI ForgetReason(HWND window)
{
    if (heldUp && heldUp->window == window) {
        heldUp.reset();
    }
    return TRUE;
}

class ReasonsOfTheSystem {
public:
    ReasonsOfTheSystem()
    {
        heldUp.reset();
        lastHeldUp.reset();
    }

private:
    ReplacedImport<decltype(NoteReason)> create_{"ShutdownBlockReasonCreate", NoteReason};
    ReplacedImport<decltype(ForgetReason)> destroy_{"ShutdownBlockReasonDestroy", ForgetReason};
};

int WINAPI ShowNothing(HWND, LPCWSTR, LPCWSTR, UINT)
{
    return 0;
}

/// A system that can show no message box.
class NoMessageBoxes {
public:
    NoMessageBoxes() = default;

private:
    ReplacedImport<decltype(ShowNothing)> replaced_{"MessageBoxW", ShowNothing};
};

/// A shell that fails, and while it shows a message of its own, the session ends.
HINSTANCE WINAPI EndSessionInShell(HWND, LPCSTR, LPCSTR, LPCSTR, LPCSTR, INT)
{
    SendMessageW(Form::OpenForms().front()->Handle(), WM_ENDSESSION, TRUE, 0);
    return nullptr;
}

class MissingMessageBoxes : public SessionEnd {};
class FailingHandlers : public SessionEnd {};

constexpr std::array rows{LayoutRow{"cancelButton", {0, 0, 500, 500}}};

/// A dialog that fails to close.
class Unwilling : public Form {
public:
    const FormLayout& Layout() const override
    {
        static constexpr FormLayout layout{
            .kind = FormKind::Dialog, .width = 1000, .height = 1000, .rows = rows, .cancelButton = "cancelButton"};
        return layout;
    }

    CommandButton cancelButton{*this, "cancelButton"};
    int cancelled = 0;
    bool willing = false;

protected:
    void Wire() override { On(cancelButton.Click, &Unwilling::cancelButton_Click); }
    void Form_QueryUnload(bool&, UnloadMode) override
    {
        if (!willing) {
            throw RuntimeError(ErrorNumber::DiskFull);
        }
    }
    void cancelButton_Click() { ++cancelled; }
};

} // namespace

TEST_F(SessionEnd, Cancelled_KeepsDiscardedChangesUnsavedAndAsksAboutThem)
{
    StartChanged();
    boxes.AnswerNext(IDNO);
    EXPECT_TRUE(MayEndSession());
    EXPECT_FALSE(DataInterface::IsJournalChanged());
    CallOff();
    EXPECT_TRUE(DataInterface::IsJournalChanged());
    boxes.AnswerNext(IDCANCEL);
    CloseMain();
    EXPECT_TRUE(IsOpen());
    EXPECT_THAT(boxes.Texts(), ElementsAre(saveQuestion, saveQuestion));
}

TEST_F(SessionEnd, Cancelled_AsksNothingAfterASaveOrARevert)
{
    const auto endsWithoutQuestionAfter = [](const wchar_t* command) {
        ChooseCommand(Main(), {L"File", command});
        CallOff();
        EXPECT_FALSE(DataInterface::IsJournalChanged());
        CloseMain();
        return !IsOpen();
    };
    StartChanged();
    boxes.AnswerNext(IDNO);
    EXPECT_TRUE(MayEndSession());
    EXPECT_TRUE(endsWithoutQuestionAfter(L"Save"));

    StartChanged();
    boxes.AnswerNext(IDNO);
    EXPECT_TRUE(MayEndSession());
    boxes.AnswerNext(IDYES); // to the question of Revert
    EXPECT_TRUE(endsWithoutQuestionAfter(L"Revert"));
}

TEST_F(SessionEnd, Cancelled_ChangesNothingWithoutDiscardedChanges)
{
    Start({.journal = oneDay});
    EXPECT_TRUE(MayEndSession());
    CallOff();
    EXPECT_FALSE(DataInterface::IsJournalChanged());

    StartChanged();
    boxes.AnswerNext(IDYES);
    EXPECT_TRUE(MayEndSession());
    CallOff();
    EXPECT_FALSE(DataInterface::IsJournalChanged());
}

TEST_F(SessionEnd, IsDelayedWithAReasonInTheLanguageOfTheProgram)
{
    const ReasonsOfTheSystem reasons;
    for (const std::int16_t language : {std::int16_t{0}, std::int16_t{100}}) {
        StartChanged({.journal = oneDay, .language = language});
        boxes.AnswerNext(IDCANCEL);
        EXPECT_FALSE(MayEndSession());
        ASSERT_TRUE(lastHeldUp);
        EXPECT_EQ(lastHeldUp->window, Main().Handle());
        EXPECT_EQ(lastHeldUp->reason, language == 0 ? saveQuestion : L"Vill du spara de senaste ändringarna?");
        EXPECT_FALSE(heldUp) << "the question is answered";
        DataInterface::ClearJournalChanged();
        CloseMain();
    }
}

TEST_F(SessionEnd, HasNoReasonWhenTheWindowIsClosedInAnotherWay)
{
    const ReasonsOfTheSystem reasons;
    StartChanged();
    boxes.AnswerNext(IDCANCEL);
    CloseMain();
    EXPECT_FALSE(lastHeldUp);
}

TEST_F(SessionEnd, UnderTheQuestionOfDeleteDeletesNothing)
{
    Start({.journal = oneDay});
    Main().List1.SetListIndex(0);
    EndSessionUnderNextBox();
    Press(Main().deleteButton);
    ExpectEndedUnder(L"Do you want to delete selected day?");
    EXPECT_EQ(DataInterface::dayCount, 1);
}

TEST_F(SessionEnd, UnderTheQuestionOfRevertRevertsNothing)
{
    StartChanged();
    EndSessionUnderNextBox();
    boxes.AnswerNext(IDNO);
    ChooseCommand(Main(), {L"File", L"Revert"});
    EXPECT_THAT(boxes.Texts(), ElementsAre(testing::_, saveQuestion));
    EXPECT_THAT(Form::OpenForms(), IsEmpty());
    EXPECT_EQ(DataInterface::dayCount, 2);
}

TEST_F(SessionEnd, UnderTheQuestionOfClosingClosesTheProgramOnce)
{
    StartChanged();
    EndSessionUnderNextBox();
    boxes.AnswerNext(IDNO);
    CloseMain();
    ExpectEnded({saveQuestion, saveQuestion});
}

TEST_F(SessionEnd, UnderARequestToChooseADayEndsTheCommand)
{
    StartChanged();
    Main().List1.SetListIndex(0);
    boxes.AnswerNext(IDYES);
    Press(Main().deleteButton);
    EndSessionUnderNextBox();
    boxes.AnswerNext(IDNO);
    Press(Main().editButton);
    EXPECT_THAT(boxes.Texts(), ElementsAre(testing::_, testing::_, saveQuestion));
    EXPECT_THAT(Form::OpenForms(), IsEmpty());
}

TEST_F(SessionEnd, UnderARefusalOfTheDayDialogEndsItsCommand)
{
    for (const wchar_t* day : {L"", L"18"}) {
        Start({.journal = oneDay});
        const auto before = boxes.Texts().size();
        EndSessionUnderNextBox();
        user.In<frmAdd>([day](frmAdd& dialog) {
            if (*day != L'\0') {
                Pick(dialog.Combo3, day);
            }
            Type(dialog.Text3, L"abc");
            Press(dialog.addButton);
        });
        Press(Main().addButton);
        EXPECT_THAT(Form::OpenForms(), IsEmpty());
        EXPECT_EQ(boxes.Texts().size(), before + 1);
    }
}

TEST_F(SessionEnd, UnderARefusedIntervalEndsTheCommand)
{
    Start({.journal = oneDay});
    EndSessionUnderNextBox();
    user.In<frmInterval>([](frmInterval& dialog) {
        StepUp(dialog.UpDown1[0]);
        StepUp(dialog.UpDown1[0]);
        Press(dialog.addButton);
    });
    ChooseCommand(Main(), {L"File", L"Print..."});
    ExpectEndedUnder(L"Can not print the selected range.\r\nFrom-date is past to-date.");
}

TEST_F(SessionEnd, UnderAMessageOfTheReaderEndsTheReadingAndFreesTheFile)
{
    StartChanged();
    WriteBytes(JournalFile(), "damaged\r\ndamaged\r\n");
    boxes.AnswerNext(IDYES);
    EndSessionUnderNextBox();
    ChooseCommand(Main(), {L"File", L"Revert"});
    EXPECT_THAT(boxes.Texts(), ElementsAre(testing::_, L"errorType mismatch"));
    EXPECT_THAT(Form::OpenForms(), IsEmpty());
    EXPECT_NO_THROW(TextFile::OpenForInput(1, JournalFile()));
}

TEST_F(SessionEnd, UnderTheMessageOfAnErrorEndsTheCommand)
{
    Start({.journal = monthAbove12});
    Main().List1.SetListIndex(0);
    boxes.AnswerNext(IDYES);
    EndSessionUnderNextBox();
    boxes.AnswerNext(IDNO);
    Press(Main().deleteButton);
    EXPECT_THAT(boxes.Texts(),
                ElementsAre(typeMismatch, L"Do you want to delete selected day?", typeMismatch, saveQuestion));
    EXPECT_THAT(Form::OpenForms(), IsEmpty());
}

TEST_F(SessionEnd, UnderTheMessageOfAnErrorAtTheStartEndsTheProgram)
{
    boxes.LeaveNextOpenWhile([] {
        HWND box = FindWindowW(L"#32770", L"Odomira");
        HWND main = FindWindowW(L"Odomira", nullptr);
        SendMessageW(main, WM_QUERYENDSESSION, 0, 0);
        SendMessageW(main, WM_ENDSESSION, TRUE, 0);
        PostMessageW(box, WM_COMMAND, IDOK, 0);
    });
    EXPECT_FALSE(Guarded([] { Start({.journal = monthAbove12}); }));
    EXPECT_THAT(boxes.Texts(), ElementsAre(typeMismatch));
    EXPECT_THAT(Form::OpenForms(), IsEmpty());
}

TEST_F(SessionEnd, CancelledUnderTheMessageOfAnErrorKeepsTheFirstChangeUnsaved)
{
    Start({.journal = monthAbove12});
    Main().List1.SetListIndex(0);
    boxes.AnswerNext(IDYES);
    boxes.LeaveNextOpenWhile([main = Main().Handle()] {
        SendMessageW(main, WM_QUERYENDSESSION, 0, 0);
        SendMessageW(main, WM_ENDSESSION, FALSE, 0);
        PostMessageW(GetLastActivePopup(main), WM_COMMAND, IDOK, 0);
    });
    boxes.AnswerNext(IDNO);
    Press(Main().deleteButton);
    EXPECT_TRUE(DataInterface::IsJournalChanged());
    boxes.AnswerNext(IDCANCEL);
    CloseMain();
    EXPECT_TRUE(IsOpen());
}

TEST_F(SessionEnd, InsideADialogEndsTheCommandThatOpenedIt)
{
    Start({.journal = oneDay});
    EndsInside<frmSettings>({L"Edit", L"Settings..."});
    Start({.journal = oneDay});
    EndsInside<frmUserinfo>({L"Edit", L"Employee information..."});
    Start({.journal = oneDay});
    EndsInside<frmInterval>({L"File", L"Print..."});
    Start({.journal = oneDay});
    EndsInside<frmAbout>({L"Help", L"About Odomira..."});
}

TEST_F(SessionEnd, InsideTheShellShowsNoMessage)
{
    const ReplacedImport replaced("ShellExecuteA", EndSessionInShell);
    Start({.journal = oneDay});
    ChooseCommand(Main(), {L"Help", L"On the Web", L"Odomira"});
    ExpectEnded({});
    Start({.journal = oneDay});
    user.In<frmAbout>([](frmAbout& form) { ClickOn(form.Label3); });
    ChooseCommand(Main(), {L"Help", L"About Odomira..."});
    ExpectEnded({});
}

TEST_F(SessionEnd, InsideTheEditDialogChangesNothing)
{
    Start({.journal = oneDay});
    Main().List1.SetListIndex(0);
    user.In<frmEdit>([](frmEdit&) { SendMessageW(Main().Handle(), WM_ENDSESSION, TRUE, 0); });
    Press(Main().editButton);
    ExpectEnded({});
}

TEST_F(MissingMessageBoxes, KeepTheProgramOpenAndHoldUpTheEndOfTheSession)
{
    StartChanged();
    const NoMessageBoxes none;
    EXPECT_FALSE(MayEndSession());
    CloseMain();
    EXPECT_TRUE(IsOpen());
    EXPECT_TRUE(DataInterface::IsJournalChanged());
}

TEST_F(MissingMessageBoxes, LetNothingBeDeletedOrReverted)
{
    StartChanged();
    Main().List1.SetListIndex(0);
    const NoMessageBoxes none;
    Press(Main().deleteButton);
    EXPECT_EQ(DataInterface::dayCount, 2) << "deleted unasked";
    ChooseCommand(Main(), {L"File", L"Revert"});
    EXPECT_EQ(DataInterface::dayCount, 2) << "reverted unasked";
}

TEST_F(FailingHandlers, OfAClosingDialogAreNotFollowedByAPressOnCancel)
{
    Start({.journal = oneDay});
    user.In<Unwilling>([this](Unwilling& dialog) {
        SendMessageW(dialog.Handle(), WM_CLOSE, 0, 0);
        DoEvents();
        EXPECT_THAT(boxes.Texts(), ElementsAre(L"Run-time error '61':\r\n\r\nDisk full"));
        EXPECT_EQ(dialog.cancelled, 0);
        dialog.willing = true;
        dialog.Unload();
    });
    Instance<Unwilling>()->ShowModal();
}
