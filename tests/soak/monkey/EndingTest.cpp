// The session ends while the program asks the user whether to save.
#include "tests/soak/monkey/Installation.h"
#include "tests/soak/monkey/PatientUser.h"

#include <gtest/gtest.h>

namespace {

/// Waits for a question on top other than the former one, and returns it.
HWND NextQuestion(HWND former, const RunningProgram& program)
{
    HWND question = nullptr;
    EXPECT_TRUE(program.Becomes([&] {
        question = program.Top();
        return question != nullptr && question != former && KindOf(question) == WindowKind::Message &&
               GetDlgItem(question, IDNO) != nullptr;
    })) << program.OnTheScreen();
    return question;
}

void AnswerNo(HWND question, const RunningProgram& program)
{
    PostMessageW(question, WM_COMMAND, IDNO, 0);
    EXPECT_TRUE(program.Becomes([question] { return IsWindow(question) == FALSE; })) << program.OnTheScreen();
}

/// The program, which asks whether to save.
class Ending : public testing::Test {
protected:
    void SetUp() override
    {
        PatientUser(program).ChangeTheJournal();
        PostMessageW(program.MainWindow(), WM_SYSCOMMAND, SC_CLOSE, 0);
        first = NextQuestion(nullptr, program);
    }

    const Installation installation{L"two-days.jrn"};
    const RunningProgram program{installation.Program()};
    HWND first = nullptr;
};

} // namespace

TEST_F(Ending, AskedForTwice_WaitsForBothAnswers)
{
    SendNotifyMessageW(program.MainWindow(), WM_QUERYENDSESSION, 0, 0);
    HWND second = NextQuestion(first, program);
    EXPECT_FALSE(IsWindowEnabled(first)) << "the first question is enabled although the second is open";

    AnswerNo(second, program);
    EXPECT_FALSE(IsWindowEnabled(program.MainWindow())) << "the main window is enabled although a question is open";
    PostMessageW(program.MainWindow(), WM_SYSCOMMAND, SC_CLOSE, 0);
    program.Settle(10);
    EXPECT_TRUE(IsWindow(program.MainWindow())) << "the main window was closed although a question is open";

    if (IsWindow(first) != FALSE) {
        AnswerNo(first, program);
    }
    EXPECT_NO_THROW(program.ExpectNormalEnd());
}

TEST_F(Ending, WhileSeveralQuestionsAreOpen_EndsTheProgram)
{
    HWND question = first;
    for (const UINT message : std::initializer_list<UINT>{WM_QUERYENDSESSION, WM_QUERYENDSESSION, WM_ENDSESSION}) {
        SendNotifyMessageW(program.MainWindow(), message, TRUE, 0);
        question = NextQuestion(question, program);
    }
    AnswerNo(question, program);
    EXPECT_NO_THROW(program.ExpectNormalEnd());
}
