// The program without a mouse: where Tab leads, what Enter, Esc, the arrows and the function keys do, and where the
// keyboard is when a window has closed.
#include "tests/forms/desktop/Walk.h"

#include "forms/about/frmAbout.h"
#include "forms/entry/frmAdd.h"
#include "forms/entry/frmEdit.h"
#include "forms/prefs/frmSettings.h"
#include "forms/prefs/frmUserinfo.h"
#include "forms/print/frmInterval.h"

#include <gmock/gmock.h>

#include <algorithm>

#include <commctrl.h>

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

namespace {

constexpr const char* journal = "2004-12-31  392.2 Depot 4 to site, return\r\n"
                                "2004-12-24     12 Church\r\n"
                                "2004-09-30     -2 Home\r\n"
                                "2003-05-01      7 Parade\r\n";

class Keyboard : public ProgramUnderTest {
protected:
    static void StartInFront()
    {
        Start({.journal = journal});
        BringToFront(Main());
    }
};

/// The control that has the keyboard, by its name; empty when none of the form's has it.
std::string FocusIn(const Form& form)
{
    const auto& controls = form.Controls();
    const auto found =
        std::ranges::find_if(controls, [](const Control* control) { return control->Handle() == GetFocus(); });
    return found != controls.end() ? (*found)->Name() : "";
}

bool IsTabStop(const Control& control)
{
    HWND window = control.Handle();
    const bool reachable = IsWindowVisible(window) != FALSE && IsWindowEnabled(window) != FALSE &&
                           (GetWindowLongW(window, GWL_STYLE) & WS_TABSTOP) != 0;
    const auto* choice = dynamic_cast<const OptionButton*>(&control);
    return reachable && (choice == nullptr || choice->Value()); // the arrows lead to the other choices
}

/// The controls that the keyboard has to reach, as one reads them: line by line, each from left to right.
std::vector<std::string> ReadingOrder(const Form& form)
{
    std::vector<const Control*> stops;
    std::ranges::copy_if(form.Controls(), std::back_inserter(stops),
                         [](const Control* control) { return IsTabStop(*control); });
    const auto place = [](const Control* control) {
        RECT area{};
        GetWindowRect(control->Handle(), &area);
        return area;
    };
    std::ranges::stable_sort(stops, [&place](const Control* one, const Control* other) {
        const RECT a = place(one);
        const RECT b = place(other);
        const bool sameLine = a.top < b.bottom && b.top < a.bottom;
        return sameLine ? a.left < b.left : a.top < b.top;
    });
    std::vector<std::string> names;
    std::ranges::transform(stops, std::back_inserter(names), [](const Control* control) { return control->Name(); });
    return names;
}

/// Presses Tab until the focus is back where it was; the names on the way, from the first in reading order on.
std::vector<std::string> TabOrder(const Form& form, const std::string& first, bool backwards)
{
    std::vector<std::string> names;
    const std::string start = FocusIn(form);
    do {
        names.push_back(FocusIn(form));
        if (backwards) {
            PressKeyWith(VK_SHIFT, VK_TAB);
        } else {
            PressKey(VK_TAB);
        }
    } while (FocusIn(form) != start && names.size() < 40);
    if (backwards) {
        std::reverse(names.begin(), names.end());
    }
    std::rotate(names.begin(), std::find(names.begin(), names.end(), first), names.end());
    return names;
}

void ExpectTabToReadTheForm(const Form& form)
{
    const std::vector<std::string> reading = ReadingOrder(form);
    ASSERT_FALSE(reading.empty());
    EXPECT_EQ(TabOrder(form, reading.front(), false), reading);
    EXPECT_EQ(TabOrder(form, reading.front(), true), reading);
}

/// Keys that go down and up one after the other before the program has handled the first: a menu reads them itself.
void PressInARow(std::initializer_list<WORD> keys)
{
    std::vector<INPUT> inputs;
    for (const WORD key : keys) {
        for (const DWORD flags : {0U, static_cast<unsigned>(KEYEVENTF_KEYUP)}) {
            INPUT input{};
            input.type = INPUT_KEYBOARD;
            input.ki.wVk = key;
            input.ki.wScan = static_cast<WORD>(MapVirtualKeyW(key, MAPVK_VK_TO_VSC));
            input.ki.dwFlags = flags;
            inputs.push_back(input);
        }
    }
    SendInput(static_cast<UINT>(inputs.size()), inputs.data(), sizeof(INPUT));
    PressKey(VK_CONTROL); // means nothing to anybody, and has been handled after all others
}

constexpr std::initializer_list<WORD> functionKeysWithoutMenu{VK_F1, VK_F2, VK_F3, VK_F5,  VK_F6,
                                                              VK_F7, VK_F8, VK_F9, VK_F11, VK_F12};

} // namespace

TEST_F(Keyboard, BeginsInTheTreeOfTheMainWindow)
{
    StartInFront();
    EXPECT_EQ(FocusIn(Main()), "TreeView1");
}

TEST_F(Keyboard, TabReadsTheMainWindow)
{
    StartInFront();
    ExpectTabToReadTheForm(Main());
    PressKey(VK_TAB);
    PressKey(VK_DOWN); // a day is chosen: two buttons more
    EXPECT_THAT(ReadingOrder(Main()), ElementsAre("TreeView1", "List1", "addButton", "editButton", "deleteButton"));
    ExpectTabToReadTheForm(Main());
}

TEST_F(Keyboard, TabReadsEveryDialog)
{
    StartInFront();
    InEveryDialog(user, [](Form& form, const char* name) {
        SCOPED_TRACE(name);
        BringToFront(form);
        ExpectTabToReadTheForm(form);
    });
}

TEST_F(Keyboard, TabReadsTheEmployeeInformationWithItsNumber)
{
    StartInFront();
    user.In<frmUserinfo>([](frmUserinfo& form) {
        BringToFront(form);
        form.Check1.SetFocus();
        PressKey(VK_SPACE);
        EXPECT_TRUE(form.Text3.Enabled());
        EXPECT_THAT(ReadingOrder(form), testing::Contains("Text3"));
        ExpectTabToReadTheForm(form);
        form.Unload();
    });
    The<frmUserinfo>()->ShowModal();
}

TEST_F(Keyboard, BeginsInTheFirstControlOfEachDialog)
{
    StartInFront();
    std::vector<std::string> first;
    InEveryDialog(user, [&first](Form& form, const char*) { first.push_back(FocusIn(form)); });
    EXPECT_THAT(first, ElementsAre("Text1", "Text1", "Text1(0)", "Option1(0)", "Option2(0)", "Text9", "cmdOK"));
}

TEST_F(Keyboard, EscLeavesEveryDialog)
{
    StartInFront();
    user.In<frmAdd>([](frmAdd&) { PressKey(VK_ESCAPE); });
    The<frmAdd>()->showMeNow(2004, 12);
    EXPECT_FALSE(The<frmAdd>()->hasChanged());
    UnloadThe<frmAdd>();
    user.In<frmEdit>([](frmEdit&) { PressKey(VK_ESCAPE); });
    The<frmEdit>()->showMeNow(2004, 12, 31, 392.2, L"Depot");
    EXPECT_FALSE(The<frmEdit>()->hasChanged());
    UnloadThe<frmEdit>();
    user.In<frmInterval>([](frmInterval&) { PressKey(VK_ESCAPE); });
    The<frmInterval>()->ShowModal();
    user.In<frmSettings>([](frmSettings& form) {
        form.Option2[1].SetValue(true);
        PressKey(VK_ESCAPE);
    });
    The<frmSettings>()->ShowModal();
    user.In<frmUserinfo>([](frmUserinfo&) { PressKey(VK_ESCAPE); });
    The<frmUserinfo>()->ShowModal();
    user.In<frmAbout>([](frmAbout&) { PressKey(VK_ESCAPE); });
    The<frmAbout>()->ShowModal();
    EXPECT_THAT(Form::OpenForms(), SizeIs(1));
    EXPECT_EQ(SavedJournal(), journal);
}

TEST_F(Keyboard, EnterConfirmsFromAnyBoxAndAButtonOnItself)
{
    StartInFront();
    user.In<frmEdit>([](frmEdit& form) {
        form.Text2.SetFocus();
        PressKey(VK_RETURN);
    });
    The<frmEdit>()->showMeNow(2004, 12, 31, 1, L"Depot");
    EXPECT_TRUE(The<frmEdit>()->hasChanged());
    UnloadThe<frmEdit>();
    user.In<frmEdit>([](frmEdit& form) {
        BringToFront(form);
        PressKeyWith(VK_SHIFT, VK_TAB);
        EXPECT_EQ(FocusIn(form), "cancelButton");
        PressKey(VK_RETURN);
    });
    The<frmEdit>()->showMeNow(2004, 12, 31, 2, L"Depot");
    EXPECT_FALSE(The<frmEdit>()->hasChanged());
    UnloadThe<frmEdit>();
}

TEST_F(Keyboard, EscAndEnterCloseAnOpenListBeforeTheDialog)
{
    StartInFront();
    user.In<frmAdd>([](frmAdd& form) {
        BringToFront(form);
        form.Combo1.SetFocus();
        for (const WORD key : {static_cast<WORD>(VK_ESCAPE), static_cast<WORD>(VK_RETURN)}) {
            PressKey(VK_F4);
            EXPECT_TRUE(SendMessageW(form.Combo1.Handle(), CB_GETDROPPEDSTATE, 0, 0));
            PressKey(key);
            EXPECT_FALSE(SendMessageW(form.Combo1.Handle(), CB_GETDROPPEDSTATE, 0, 0));
            EXPECT_TRUE(IsWindowVisible(form.Handle()));
        }
        form.Unload();
    });
    The<frmAdd>()->showMeNow(2004, 12);
    EXPECT_THAT(boxes.Texts(), IsEmpty());
}

TEST_F(Keyboard, ArrowsInTheTreeListTheMonthsTheyReach)
{
    StartInFront();
    PressKey(VK_DOWN);
    EXPECT_THAT(Lines(Main().List1), ElementsAre(L"2004-09-30        Home"));
    PressKey(VK_DOWN); // the next year has no days of its own
    EXPECT_THAT(Lines(Main().List1), IsEmpty());
    PressKey(VK_RIGHT);
    PressKey(VK_DOWN);
    EXPECT_THAT(Lines(Main().List1), ElementsAre(L"2003-05-01      7 Parade"));
    PressKey(VK_HOME);
    PressKey(VK_DOWN);
    EXPECT_THAT(Lines(Main().List1), SizeIs(2));
}

TEST_F(Keyboard, ArrowsInTheListChooseADay)
{
    StartInFront();
    EXPECT_FALSE(IsEnabled(Main().editButton));
    PressKey(VK_TAB);
    PressKey(VK_DOWN);
    EXPECT_TRUE(IsEnabled(Main().editButton));
    EXPECT_TRUE(IsEnabled(Main().deleteButton));
    PressKey(VK_END);
    EXPECT_EQ(ChosenLine(Main().List1), 1);
}

TEST_F(Keyboard, FunctionKeysDoNothingSurprising)
{
    StartInFront();
    for (const char* where : {"TreeView1", "List1", "addButton"}) {
        SCOPED_TRACE(where);
        ASSERT_EQ(FocusIn(Main()), where);
        PressInARow(functionKeysWithoutMenu);
        PressKey(VK_F4);
        PressInARow({VK_F10, VK_ESCAPE, VK_ESCAPE}); // into the menu bar and out again
        EXPECT_EQ(FocusIn(Main()), where);
        EXPECT_THAT(Form::OpenForms(), SizeIs(1));
        PressKey(VK_TAB);
    }
    EXPECT_THAT(Lines(Main().List1), SizeIs(2));
    InEveryDialog(user, [](Form& form, const char* name) {
        SCOPED_TRACE(name);
        BringToFront(form);
        const std::string before = FocusIn(form);
        PressInARow(functionKeysWithoutMenu);
        EXPECT_TRUE(IsWindowVisible(form.Handle()));
        EXPECT_EQ(FocusIn(form), before);
    });
    EXPECT_THAT(boxes.Texts(), IsEmpty());
}

TEST_F(Keyboard, TheMenuIsReachedAndSaves)
{
    StartInFront();
    PressKey(VK_TAB);
    PressKey(VK_DOWN);
    boxes.AnswerNext(IDYES);
    PressKey(VK_TAB);
    PressKey(VK_TAB);
    PressKey(VK_TAB);
    ASSERT_EQ(FocusIn(Main()), "deleteButton");
    PressKey(VK_SPACE);
    ASSERT_THAT(Lines(Main().List1), SizeIs(1));
    // The menu skips what is disabled and remembers nothing: Down opens it at Revert, Down goes on to Save.
    PressInARow({VK_F10, VK_DOWN, VK_DOWN, VK_RETURN});
    EXPECT_EQ(SavedJournal(), Saved("2004-12-24     12 Church\r\n"
                                    "2004-09-30     -2 Home\r\n"
                                    "2003-05-01      7 Parade\r\n"));
    EXPECT_EQ(FocusIn(Main()), "deleteButton");
}

TEST_F(Keyboard, ReturnsToWhereItWasWhenADialogCloses)
{
    StartInFront();
    PressKey(VK_TAB);
    PressKey(VK_DOWN);
    for (const char* where : {"List1", "addButton", "editButton", "deleteButton", "TreeView1"}) {
        SCOPED_TRACE(where);
        ASSERT_EQ(FocusIn(Main()), where);
        user.In<frmAbout>([](frmAbout&) { PressKey(VK_ESCAPE); });
        The<frmAbout>()->ShowModal();
        EXPECT_EQ(FocusIn(Main()), where);
        user.In<frmSettings>([](frmSettings&) { PressKey(VK_RETURN); });
        The<frmSettings>()->ShowModal();
        EXPECT_EQ(FocusIn(Main()), where);
        PressKey(VK_TAB);
    }
}

TEST_F(Keyboard, ReturnsToTheButtonThatOpenedADialogOrAMessage)
{
    StartInFront();
    PressKey(VK_TAB);
    PressKey(VK_DOWN);
    PressKey(VK_TAB);
    user.In<frmAdd>([](frmAdd&) { PressKey(VK_ESCAPE); });
    PressKey(VK_SPACE);
    EXPECT_EQ(FocusIn(Main()), "addButton");
    PressKey(VK_TAB);
    user.In<frmEdit>([](frmEdit&) { PressKey(VK_RETURN); });
    PressKey(VK_SPACE);
    EXPECT_EQ(FocusIn(Main()), "editButton");
    PressKey(VK_TAB);
    boxes.AnswerNext(IDNO);
    PressKey(VK_SPACE);
    EXPECT_THAT(boxes.Texts(), SizeIs(1));
    EXPECT_EQ(FocusIn(Main()), "deleteButton");
}

TEST_F(Keyboard, GoesToTheFaultyBoxWhenAMessageHasBeenRead)
{
    StartInFront();
    user.In<frmAdd>([this](frmAdd& form) {
        BringToFront(form);
        PressKey(VK_RETURN);
        EXPECT_EQ(FocusIn(form), "Combo3");
        PressKey(VK_DOWN);
        form.Text3.SetText(L"x");
        PressKey(VK_RETURN);
        EXPECT_EQ(FocusIn(form), "Text3");
        EXPECT_THAT(boxes.Texts(), SizeIs(2));
        PressKey(VK_ESCAPE);
    });
    PressKey(VK_TAB);
    PressKey(VK_TAB);
    PressKey(VK_SPACE);
    EXPECT_EQ(FocusIn(Main()), "addButton");
}

TEST_F(Keyboard, LeavesAControlThatIsDisabled)
{
    StartInFront();
    PressKey(VK_TAB);
    PressKey(VK_DOWN);
    PressKey(VK_TAB);
    PressKey(VK_TAB);
    ASSERT_EQ(FocusIn(Main()), "editButton");
    Main().editButton.SetEnabled(false);
    EXPECT_EQ(FocusIn(Main()), "deleteButton");
    Main().deleteButton.SetEnabled(false);
    EXPECT_EQ(FocusIn(Main()), "TreeView1");
}

TEST_F(Keyboard, TurnsThePagesOfTheSettingsFromAnywhere)
{
    StartInFront();
    user.In<frmSettings>([](frmSettings& form) {
        BringToFront(form);
        PressKeyWith(VK_CONTROL, VK_TAB);
        EXPECT_EQ(form.TabStrip1.SelectedTab(), 2);
        EXPECT_EQ(FocusIn(form), "Option2(0)");
        PressKey(VK_DOWN);
        EXPECT_TRUE(form.Option2[1].Value()) << "the arrows choose";
        form.TabStrip1.SetFocus();
        PressKey(VK_LEFT);
        EXPECT_EQ(form.TabStrip1.SelectedTab(), 1);
        EXPECT_EQ(FocusIn(form), "TabStrip1");
        EXPECT_TRUE(form.Frame1.Visible());
        PressKey(VK_TAB);
        EXPECT_EQ(FocusIn(form), "Option1(0)");
        form.Unload();
    });
    The<frmSettings>()->ShowModal();
}
