// The user asks for the end of the program, and before he has answered, the system asks for it too.
#include "tests/soak/monkey/Installation.h"
#include "tests/soak/monkey/PatientUser.h"

#include <gtest/gtest.h>

namespace {

/// The question that is on top, as soon as there is another than the given one.
HWND QuestionAfter(HWND former, const RunningProgram& program)
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

} // namespace

TEST(Ending, AskedForTwice_GoesOnlyWhenBothQuestionsAreAnswered)
{
    const Installation installation(L"two-days.jrn");
    const RunningProgram program(installation.Program());
    PatientUser(program).ChangeTheJournal();

    PostMessageW(program.MainWindow(), WM_SYSCOMMAND, SC_CLOSE, 0);
    HWND first = QuestionAfter(nullptr, program);
    SendNotifyMessageW(program.MainWindow(), WM_QUERYENDSESSION, 0, 0);
    HWND second = QuestionAfter(first, program);
    EXPECT_FALSE(IsWindowEnabled(first)) << "the first question can be answered under the second";

    AnswerNo(second, program);
    EXPECT_FALSE(IsWindowEnabled(program.MainWindow())) << "the main window takes input under a question";
    PostMessageW(program.MainWindow(), WM_SYSCOMMAND, SC_CLOSE, 0);
    program.Settle(10);
    EXPECT_TRUE(IsWindow(program.MainWindow())) << "the main window goes under a question";

    if (IsWindow(first) != FALSE) {
        AnswerNo(first, program);
    }
    EXPECT_NO_THROW(program.ExpectNormalEnd());
}
