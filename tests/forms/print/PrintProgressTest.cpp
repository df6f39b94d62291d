// The progress window of a long print: its content, and every way to cancel. Windows, printer dialog and queue are
// real.
#include "forms/print/frmInterval.h"
#include "tests/forms/FormFixture.h"
#include "tests/forms/ProgramUnderTest.h"
#include "tests/support/PrintedJobs.h"
#include "tests/support/PrinterDialogUser.h"

#include "data/DataInterface.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <chrono>
#include <functional>
#include <memory>
#include <ostream>
#include <string>
#include <thread>
#include <utility>
#include <vector>

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

namespace {

using Look = std::function<void(frmProgress&)>;

frmProgress* OpenProgress()
{
    for (const auto& form : Form::OpenForms()) {
        if (auto* progress = dynamic_cast<frmProgress*>(form.get());
            progress != nullptr && IsWindowVisible(progress->Handle()) != FALSE) {
            return progress;
        }
    }
    return nullptr;
}

/// Calls the function with the progress window whenever the program handles messages while the window is open.
class ProgressWatcher {
public:
    explicit ProgressWatcher(Look look) : timer_(SetTimer(nullptr, 0, USER_TIMER_MINIMUM, Tick))
    {
        TheLook() = std::move(look);
    }
    ~ProgressWatcher()
    {
        KillTimer(nullptr, timer_);
        TheLook() = nullptr;
    }
    ProgressWatcher(const ProgressWatcher&) = delete;
    ProgressWatcher& operator=(const ProgressWatcher&) = delete;

private:
    static Look& TheLook()
    {
        static Look look;
        return look;
    }
    static void CALLBACK Tick(HWND, UINT, UINT_PTR, DWORD)
    {
        if (frmProgress* progress = OpenProgress(); progress != nullptr && TheLook()) {
            TheLook()(*progress);
        }
    }

    UINT_PTR timer_;
};

/// The print dialog over a main window, on a day in May 2003.
class LongPrint : public FormFixture {
protected:
    void SetUp() override
    {
        FormFixture::SetUp();
        Clock::StandStillAt({2003, 5, 16});
    }
    void TearDown() override
    {
        UnloadInstance<frmInterval>();
        Clock::RunAgain();
        FormFixture::TearDown();
    }

    /// Prints from this year on, and returns the dialog. The dialog is still loaded if the print was not completed.
    static std::shared_ptr<frmInterval> PrintSince(int year, int copies, Look look)
    {
        auto form = Instance<frmInterval>();
        form->Show();
        EnableWindow(Instance<PlainMainForm>()->Handle(), FALSE); // as while a modal dialog is open
        form->UpDown1[0].SetValue(year);
        form->Text2.SetFocus();
        const auto printer = PrinterDialogUser::ToPrint(copies);
        const ProgressWatcher watcher(std::move(look));
        Press(form->addButton);
        return form;
    }

    const MessageBoxWatcher boxes_;
    const std::size_t queued_ = JobsEverQueued();
};

constexpr int twentyYears = 1983;       // a fast machine prints them in some seconds
constexpr int daysOfTwentyYears = 7335; // 1983-04-17 to 2003-05-16
constexpr int veryLong = 1950;

} // namespace

TEST_F(LongPrint, ShowsTheNumberOfThePageAndTheProgressInDays)
{
    std::vector<std::wstring> labels;
    std::vector<int> days;
    int all = 0;
    const auto form = PrintSince(twentyYears, 1, [&](frmProgress& progress) {
        labels.push_back(progress.Label1.Caption());
        days.push_back(progress.ProgressBar1.Value());
        all = progress.ProgressBar1.Maximum();
        EXPECT_EQ(progress.Caption(), L"Driver's journal");
        EXPECT_EQ(progress.cancelButton.Caption(), L"Cancel");
    });
    EXPECT_FALSE(form->IsLoaded());
    EXPECT_EQ(OpenProgress(), nullptr);
    ASSERT_GT(labels.size(), 1U);
    EXPECT_TRUE(labels.front().starts_with(L"Page "));
    EXPECT_LT(std::stoi(labels.front().substr(5)), std::stoi(labels.back().substr(5)));
    EXPECT_TRUE(std::ranges::is_sorted(days));
    EXPECT_LT(days.front(), days.back());
    EXPECT_LE(days.back(), daysOfTwentyYears);
    EXPECT_EQ(all, daysOfTwentyYears);
    EXPECT_EQ(WaitForJobs(queued_ + 1).size(), queued_ + 1);
}

TEST_F(LongPrint, HasItsTextsInSwedish)
{
    Module1::languageOffset = 100;
    std::wstring label;
    PrintSince(veryLong, 1, [&](frmProgress& progress) {
        label = progress.Label1.Caption();
        EXPECT_EQ(progress.Caption(), L"Körjournal");
        EXPECT_EQ(progress.cancelButton.Caption(), L"Avbryt");
        Press(progress.cancelButton);
    });
    EXPECT_TRUE(label.starts_with(L"Sida ")) << testing::PrintToString(label);
}

TEST_F(LongPrint, CountsTheDaysOfAllCopies)
{
    int all = 0;
    PrintSince(twentyYears, 3, [&](frmProgress& progress) {
        all = progress.ProgressBar1.Maximum();
        Press(progress.cancelButton);
    });
    EXPECT_EQ(all, 3 * daysOfTwentyYears);
}

TEST_F(LongPrint, DisablesTheDialogAndIsOwnedByIt)
{
    bool seen = false;
    PrintSince(veryLong, 1, [&](frmProgress& progress) {
        const auto dialog = Instance<frmInterval>();
        EXPECT_EQ(IsWindowEnabled(dialog->Handle()), FALSE);
        EXPECT_EQ(GetWindow(progress.Handle(), GW_OWNER), dialog->Handle());
        EXPECT_TRUE(HasFocus(progress.cancelButton));
        SendMessageW(dialog->Handle(), WM_CLOSE, 0, 0);
        EXPECT_TRUE(dialog->IsLoaded());
        seen = true;
        Press(progress.cancelButton);
    });
    EXPECT_TRUE(seen);
    EXPECT_NE(IsWindowEnabled(Instance<frmInterval>()->Handle()), FALSE);
}

TEST_F(LongPrint, PaintsItsWindowAndCanBeMoved)
{
    int looks = 0;
    RECT wanted{};
    PrintSince(veryLong, 1, [&](frmProgress& progress) {
        HWND window = progress.Handle();
        if (++looks == 1) {
            GetWindowRect(window, &wanted);
            OffsetRect(&wanted, 40, 30);
            SetWindowPos(window, nullptr, wanted.left, wanted.top, 0, 0, SWP_NOSIZE | SWP_NOZORDER);
            InvalidateRect(window, nullptr, TRUE);
        } else if (looks == 3) {
            RECT place{};
            GetWindowRect(window, &place);
            EXPECT_NE(EqualRect(&place, &wanted), FALSE);
            EXPECT_EQ(GetUpdateRect(window, nullptr, FALSE), FALSE) << "an area is not painted";
            Press(progress.cancelButton);
        }
    });
    EXPECT_GE(looks, 3);
}

namespace {

struct CancelCommand {
    const char* name;
    void (*go)(frmProgress& progress);
};

void PrintTo(const CancelCommand& way, std::ostream* out)
{
    *out << way.name;
}

class CancelledPrint : public LongPrint, public testing::WithParamInterface<CancelCommand> {};

} // namespace

TEST_P(CancelledPrint, QueuesNoJobShowsNoMessageAndKeepsTheDialogReadyToPrintAgain)
{
    int looks = 0;
    const auto form = PrintSince(veryLong, 2, [&](frmProgress& progress) {
        if (++looks == 1) {
            GetParam().go(progress);
        }
    });
    EXPECT_EQ(OpenProgress(), nullptr);
    ASSERT_TRUE(form->IsLoaded());
    EXPECT_THAT(boxes_.Texts(), IsEmpty());
    EXPECT_EQ(JobsEverQueued(), queued_);
    Await([&] { return HasFocus(form->addButton); }, "the focus on Print");
    form->UpDown1[0].SetValue(2003);
    {
        const auto printer = PrinterDialogUser::ToPrint(1);
        PressKey(VK_RETURN);
    }
    AwaitClosed(*form);
    EXPECT_EQ(WaitForJobs(queued_ + 1).size(), queued_ + 1);
}

INSTANTIATE_TEST_SUITE_P(
    AllCommands, CancelledPrint,
    testing::Values(CancelCommand{"Button", [](frmProgress& progress) { Press(progress.cancelButton); }},
                    CancelCommand{"Esc", [](frmProgress&) { PostMessageW(GetFocus(), WM_KEYDOWN, VK_ESCAPE, 1); }},
                    CancelCommand{"Enter", [](frmProgress&) { PostMessageW(GetFocus(), WM_KEYDOWN, VK_RETURN, 1); }},
                    CancelCommand{
                        "CloseBox",
                        [](frmProgress& progress) { PostMessageW(progress.Handle(), WM_SYSCOMMAND, SC_CLOSE, 0); }}),
    testing::PrintToStringParamName());

TEST_F(LongPrint, KeepsCompleteCopiesWhenItIsCancelled)
{
    const auto form = PrintSince(twentyYears, 3, [](frmProgress& progress) {
        if (progress.ProgressBar1.Value() > daysOfTwentyYears) {
            Press(progress.cancelButton);
        }
    });
    EXPECT_TRUE(form->IsLoaded());
    EXPECT_EQ(WaitForJobs(queued_ + 1).size(), queued_ + 1);
    EXPECT_EQ(JobsEverQueued(), queued_ + 1);
}

TEST_F(LongPrint, IgnoresKeysThatWerePressedBeforeItsWindowWasOpen)
{
    const auto dialog = Instance<frmInterval>();
    dialog->Show();
    BringToFront(*dialog);
    bool cancelled = false;
    PrintProgress progress(*dialog, 90, 1, [&] { cancelled = true; });
    const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(1);
    while (std::chrono::steady_clock::now() < end) {
        // The program is busy and handles no messages.
    }
    SendKeysAhead({VK_ESCAPE, VK_RETURN});
    progress.DayIsPrinted(2);
    EXPECT_NE(OpenProgress(), nullptr);
    DoEvents();
    EXPECT_FALSE(cancelled);
    PressKey(VK_ESCAPE);
    EXPECT_TRUE(cancelled);
}

TEST_F(LongPrint, LeavesNoKeysOfItsWindowToTheDialog)
{
    const auto dialog = Instance<frmInterval>();
    dialog->Show();
    BringToFront(*dialog);
    {
        PrintProgress progress(*dialog, 90, 1, [] {});
        Await(
            [&] {
                progress.DayIsPrinted(2);
                return OpenProgress() != nullptr;
            },
            "the progress window");
        SendKeysAhead({VK_ESCAPE});
    }
    DoEvents();
    EXPECT_TRUE(dialog->IsLoaded());
    EXPECT_EQ(OpenProgress(), nullptr);
}

TEST_F(LongPrint, ShowsNoWindowForOnePageEvenIfItTakesLong)
{
    const auto dialog = Instance<frmInterval>();
    dialog->Show();
    PrintProgress progress(*dialog, 30, 2, [] {});
    const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(1);
    while (std::chrono::steady_clock::now() < end) {
        DoEvents();
    }
    for (int day = 0; day < 30; ++day) {
        progress.DayIsPrinted(1);
    }
    EXPECT_EQ(OpenProgress(), nullptr);
    progress.DayIsPrinted(1); // of the second copy
    ASSERT_NE(OpenProgress(), nullptr);
    EXPECT_EQ(OpenProgress()->Label1.Caption(), L"Page 1");
    EXPECT_EQ(OpenProgress()->ProgressBar1.Value(), 31);
}

TEST_F(LongPrint, ShowsNoWindowForPagesThatArePrintedQuickly)
{
    const auto dialog = Instance<frmInterval>();
    dialog->Show();
    PrintProgress progress(*dialog, 90, 1, [] {});
    progress.DayIsPrinted(2);
    EXPECT_EQ(OpenProgress(), nullptr);
}

namespace {

/// The whole program while it prints, with an unsaved day.
class ProgramPrinting : public ProgramUnderTest {
protected:
    void PrintAnd(const std::function<void(frmProgress&)>& act, bool dialogStays = true)
    {
        Start({.journal = "2004-03-15     12 Office\r\n"});
        DataInterface::AddDay(2004, 3, 18, 5, L"Depot");
        user.In<frmInterval>([](frmInterval& form) {
            form.UpDown1[0].SetValue(1950);
            PostMessageW(form.addButton.Handle(), BM_CLICK, 0, 0);
        });
        user.In<frmProgress>(act);
        if (dialogStays) {
            CloseDialogAfterPrint();
        }
        ChooseCommand(Main(), {L"File", L"Print..."});
    }

    /// Closes the dialog after the progress window, which may still be closing, is closed.
    void CloseDialogAfterPrint()
    {
        user.In<Form>([this](Form& form) {
            if (dynamic_cast<frmProgress*>(&form) != nullptr) {
                CloseDialogAfterPrint();
            } else {
                form.Unload();
            }
        });
    }

    static bool MayEndSession() { return SendMessageW(Main().Handle(), WM_QUERYENDSESSION, 0, 0) != FALSE; }

    /// Sends WM_ENDSESSION to every window, the topmost first.
    static void EndSession()
    {
        auto forms = Form::OpenForms();
        std::ranges::reverse(forms);
        for (const auto& form : forms) {
            if (form->IsLoaded()) {
                SendMessageW(form->Handle(), WM_ENDSESSION, TRUE, 0);
            }
        }
    }

    const std::size_t queued_ = JobsEverQueued();
};

} // namespace

TEST_F(ProgramPrinting, AbortsTheDocumentWhenTheSessionEndsBeforeTheProgressWindowIsOpen)
{
    Start({.journal = "2004-03-15     12 Office\r\n"});
    user.In<frmInterval>([](frmInterval& form) {
        form.UpDown1[0].SetValue(veryLong);
        PostMessageW(form.addButton.Handle(), BM_CLICK, 0, 0);
    });
    HWND main = Main().Handle();
    auto printer = PrinterDialogUser::ToPrint(1);
    std::thread system([&printer, main] {
        printer.WaitUntilGone();
        std::this_thread::sleep_for(std::chrono::milliseconds(200)); // the first page has begun
        SendMessageW(main, WM_ENDSESSION, TRUE, 0);
    });
    ChooseCommand(Main(), {L"File", L"Print..."});
    system.join();
    EXPECT_THAT(Form::OpenForms(), IsEmpty());
    EXPECT_EQ(JobsEverQueued(), queued_);
    EXPECT_THAT(boxes.Texts(), IsEmpty());
}

TEST_F(ProgramPrinting, DoesNotCloseTheMainWindowAndContinuesPrinting)
{
    const auto printer = PrinterDialogUser::ToPrint(1);
    PrintAnd([](frmProgress& progress) {
        SendMessageW(Main().Handle(), WM_CLOSE, 0, 0);
        SendMessageW(Main().Handle(), WM_SYSCOMMAND, SC_CLOSE, 0);
        EXPECT_TRUE(IsOpen());
        EXPECT_TRUE(progress.IsLoaded());
        EXPECT_EQ(IsWindowEnabled(Main().Handle()), FALSE);
        Press(progress.cancelButton);
    });
    EXPECT_THAT(boxes.Texts(), IsEmpty());
}

TEST_F(ProgramPrinting, AsksToSaveWhenTheSessionEndsAndContinuesPrintingAfterCancel)
{
    const auto printer = PrinterDialogUser::ToPrint(1);
    boxes.AnswerNext(IDCANCEL);
    PrintAnd([](frmProgress& progress) {
        EXPECT_FALSE(MayEndSession());
        EXPECT_TRUE(progress.IsLoaded());
        EXPECT_TRUE(progress.cancelButton.Enabled());
        Press(progress.cancelButton);
    });
    EXPECT_THAT(boxes.Texts(), ElementsAre(L"Save last changes?"));
    EXPECT_TRUE(DataInterface::IsJournalChanged());
    EXPECT_TRUE(IsOpen());
}

TEST_F(ProgramPrinting, SavesTheJournalAndAbortsTheDocumentWhenTheSessionEnds)
{
    const auto printer = PrinterDialogUser::ToPrint(2);
    boxes.AnswerNext(IDYES);
    constexpr bool dialogStays = false;
    PrintAnd(
        [](frmProgress&) {
            EXPECT_TRUE(MayEndSession());
            EndSession();
        },
        dialogStays);
    EXPECT_THAT(Form::OpenForms(), IsEmpty());
    EXPECT_THAT(SavedJournal(), HasSubstr("2004-03-18"));
    EXPECT_EQ(JobsEverQueued(), queued_);
    EXPECT_THAT(boxes.Texts(), ElementsAre(L"Save last changes?"));
}
