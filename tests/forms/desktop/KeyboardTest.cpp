// The keyboard interface: tab order, Enter, Esc, arrow keys, function keys and shortcut keys, and the focus after a
// window is closed.
#include "tests/forms/desktop/Walk.h"

#include "data/DataInterface.h"
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

/// The name of the control with the focus; empty if no control of the form has it.
std::string FocusIn(const Form& form)
{
    const auto& controls = form.Controls();
    const auto found =
        std::ranges::find_if(controls, [](const Control* control) { return control->Handle() == GetFocus(); });
    return found != controls.end() ? (*found)->Name() : "";
}

/// Wine: under X11 a window gets the focus back some time after the window in front of it has closed.
void ExpectFocus(const Form& form, const std::string& name)
{
    Await([&] { return FocusIn(form) == name; }, ("the focus in " + name).c_str());
}

bool IsTabStop(const Control& control)
{
    HWND window = control.Handle();
    const bool reachable = IsWindowVisible(window) != FALSE && IsWindowEnabled(window) != FALSE &&
                           (GetWindowLongW(window, GWL_STYLE) & WS_TABSTOP) != 0;
    const auto* choice = dynamic_cast<const OptionButton*>(&control);
    return reachable && (choice == nullptr || choice->Value()); // arrow keys select the other options
}

/// The controls that Tab must reach, in reading order: line by line, from left to right.
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

/// Presses Tab until the focus is back. Returns the names of the controls, from the first in reading order on.
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

void ExpectTabInReadingOrder(const Form& form)
{
    const std::vector<std::string> reading = ReadingOrder(form);
    ASSERT_FALSE(reading.empty());
    EXPECT_EQ(TabOrder(form, reading.front(), false), reading);
    EXPECT_EQ(TabOrder(form, reading.front(), true), reading);
}

/// Sends all keys before the program handles the first one: a menu has its own message loop.
void SendKeysTogether(std::initializer_list<WORD> keys)
{
    SendKeysAhead(keys);
    PressKey(VK_CONTROL); // has no effect; it is handled after all other keys
}

/// Waits until an arrow that a key has pressed is released: within a third of a second, without a message.
void AwaitReleaseOfTheArrow()
{
    const ULONGLONG end = GetTickCount64() + 600;
    Await([end] { return GetTickCount64() >= end; }, "the release of the arrow");
}

/// Clicks an arrow of the year and then presses the key of the same direction, with the mouse still on the arrow or
/// elsewhere.
void ExpectAClickAndAKeyToStepOnce(frmAdd& form, int step, bool mouseStays)
{
    SCOPED_TRACE(testing::Message() << "step " << step << ", mouse stays: " << mouseStays);
    const auto year = [&form] { return std::stoi(form.Text1.Text()); };
    const int before = year();
    RECT arrows{};
    GetClientRect(form.UpDown1.Handle(), &arrows);
    ClickAt(form.UpDown1.Handle(), {arrows.right / 2, arrows.bottom * (step > 0 ? 1 : 3) / 4});
    if (!mouseStays) {
        MoveTo(form.Handle(), {3, 3});
    }
    EXPECT_EQ(year(), before + step);
    form.Text1.SetFocus();
    PressKey(step > 0 ? VK_UP : VK_DOWN);
    AwaitReleaseOfTheArrow();
    EXPECT_EQ(year(), before + 2 * step);
}

/// All except F1, which opens the guide, F4, which opens a list, and F10, which activates the menu bar.
constexpr std::initializer_list<WORD> functionKeysWithoutEffect{VK_F2, VK_F3, VK_F5,  VK_F6, VK_F7,
                                                                VK_F8, VK_F9, VK_F11, VK_F12};

} // namespace

TEST_F(Keyboard, FocusIsInTheTreeAtTheStart)
{
    StartInFront();
    ExpectFocus(Main(), "TreeView1");
}

TEST_F(Keyboard, TabFollowsTheReadingOrderOfTheMainWindow)
{
    StartInFront();
    ExpectTabInReadingOrder(Main());
    PressKey(VK_TAB);
    PressKey(VK_DOWN); // a selected day enables two buttons
    EXPECT_THAT(ReadingOrder(Main()), ElementsAre("TreeView1", "List1", "addButton", "editButton", "deleteButton"));
    ExpectTabInReadingOrder(Main());
}

TEST_F(Keyboard, TabFollowsTheReadingOrderOfEveryDialog)
{
    StartInFront();
    InEveryDialog(user, [](Form& form, const char* name) {
        SCOPED_TRACE(name);
        BringToFront(form);
        ExpectTabInReadingOrder(form);
    });
}

TEST_F(Keyboard, TabReachesTheEnabledSocialSecurityNumber)
{
    StartInFront();
    user.In<frmUserinfo>([](frmUserinfo& form) {
        BringToFront(form);
        form.Check1.SetFocus();
        PressKey(VK_SPACE);
        EXPECT_TRUE(form.Text3.Enabled());
        EXPECT_THAT(ReadingOrder(form), testing::Contains("Text3"));
        ExpectTabInReadingOrder(form);
        form.Unload();
    });
    Instance<frmUserinfo>()->ShowModal();
}

TEST_F(Keyboard, FocusIsInTheFirstControlToUseOfEachDialog)
{
    StartInFront();
    std::vector<std::string> first;
    InEveryDialog(user, [&first](Form& form, const char*) { first.push_back(FocusIn(form)); });
    EXPECT_THAT(
        first, ElementsAre("Combo3", "Text3", "Combo1(0)", "cancelButton", "TabStrip1", "TabStrip1", "Text9", "cmdOK"));
}

TEST_F(Keyboard, EditDialogOpensWithTheDistanceSelected)
{
    StartInFront();
    user.In<frmEdit>([](frmEdit& form) {
        EXPECT_EQ(SendMessageW(form.Text3.Handle(), EM_GETSEL, 0, 0), MAKELONG(0, 5));
        SendKeysTogether({'7', VK_RETURN});
    });
    Instance<frmEdit>()->showMeNow(2004, 12, 31, 392.2, L"Depot");
    EXPECT_TRUE(Instance<frmEdit>()->hasChanged());
    EXPECT_THAT(DataInterface::GetDayEntry(2004, 12, 31).distance, 7);
    UnloadInstance<frmEdit>();
}

TEST_F(Keyboard, AddDialogAcceptsADayWithoutATabFirst)
{
    StartInFront();
    user.In<frmAdd>([](frmAdd& form) {
        EXPECT_EQ(form.Combo3.ListIndex(), -1);
        SendKeysTogether({VK_DOWN, VK_TAB, '5', VK_RETURN});
    });
    PressKeyWith(VK_CONTROL, 'N');
    EXPECT_THAT(Lines(Main().List1), testing::Contains(L"2004-12-01      5 "));
}

TEST_F(Keyboard, TabFollowsTheReadingOrderOfEachSettingsPage)
{
    StartInFront();
    user.In<frmSettings>([](frmSettings& form) {
        BringToFront(form);
        EXPECT_THAT(TabOrder(form, FocusIn(form), false),
                    ElementsAre("TabStrip1", "Option1(0)", "addButton", "cancelButton"));
        PressKey(VK_RIGHT);
        EXPECT_THAT(TabOrder(form, FocusIn(form), false),
                    ElementsAre("TabStrip1", "Option2(0)", "addButton", "cancelButton"));
        form.Unload();
    });
    Instance<frmSettings>()->ShowModal();
}

TEST_F(Keyboard, EscCancelsEveryDialog)
{
    StartInFront();
    user.In<frmAdd>([](frmAdd&) { PressKey(VK_ESCAPE); });
    Instance<frmAdd>()->showMeNow(2004, 12);
    EXPECT_FALSE(Instance<frmAdd>()->hasChanged());
    UnloadInstance<frmAdd>();
    user.In<frmEdit>([](frmEdit&) { PressKey(VK_ESCAPE); });
    Instance<frmEdit>()->showMeNow(2004, 12, 31, 392.2, L"Depot");
    EXPECT_FALSE(Instance<frmEdit>()->hasChanged());
    UnloadInstance<frmEdit>();
    user.In<frmInterval>([](frmInterval&) { PressKey(VK_ESCAPE); });
    Instance<frmInterval>()->ShowModal();
    user.In<frmSettings>([](frmSettings& form) {
        form.Option2[1].SetValue(true);
        PressKey(VK_ESCAPE);
    });
    Instance<frmSettings>()->ShowModal();
    user.In<frmUserinfo>([](frmUserinfo&) { PressKey(VK_ESCAPE); });
    Instance<frmUserinfo>()->ShowModal();
    user.In<frmAbout>([](frmAbout&) { PressKey(VK_ESCAPE); });
    Instance<frmAbout>()->ShowModal();
    EXPECT_THAT(Form::OpenForms(), SizeIs(1));
    EXPECT_EQ(SavedJournal(), journal);
}

TEST_F(Keyboard, EnterPressesTheFocusedButtonOrElseTheDefaultButton)
{
    StartInFront();
    user.In<frmEdit>([](frmEdit& form) {
        form.Text2.SetFocus();
        PressKey(VK_RETURN);
    });
    Instance<frmEdit>()->showMeNow(2004, 12, 31, 1, L"Depot");
    EXPECT_TRUE(Instance<frmEdit>()->hasChanged());
    UnloadInstance<frmEdit>();
    user.In<frmEdit>([](frmEdit& form) {
        BringToFront(form);
        form.Text1.SetFocus();
        PressKeyWith(VK_SHIFT, VK_TAB);
        ExpectFocus(form, "cancelButton");
        PressKey(VK_RETURN);
    });
    Instance<frmEdit>()->showMeNow(2004, 12, 31, 2, L"Depot");
    EXPECT_FALSE(Instance<frmEdit>()->hasChanged());
    UnloadInstance<frmEdit>();
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
    Instance<frmAdd>()->showMeNow(2004, 12);
    EXPECT_THAT(boxes.Texts(), IsEmpty());
}

TEST_F(Keyboard, ArrowKeysInTheTreeListTheSelectedMonth)
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

TEST_F(Keyboard, ArrowKeysInTheListSelectADay)
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

TEST_F(Keyboard, EnterInTheListEditsTheSelectedDay)
{
    StartInFront();
    PressKey(VK_TAB);
    PressKey(VK_DOWN);
    user.In<frmEdit>([](frmEdit& form) {
        EXPECT_EQ(form.Text2.Text(), L"Depot 4 to site, return");
        PressKey(VK_RETURN);
    });
    PressKey(VK_RETURN);
    ExpectFocus(Main(), "List1");
    EXPECT_EQ(ChosenLine(Main().List1), 0);
    EXPECT_THAT(boxes.Texts(), IsEmpty());
}

TEST_F(Keyboard, DeleteInTheListDeletesTheSelectedDayAfterYes)
{
    StartInFront();
    PressKey(VK_TAB);
    PressKey(VK_DOWN);
    boxes.AnswerNext(IDNO);
    PressKey(VK_DELETE);
    EXPECT_THAT(boxes.Texts(), ElementsAre(L"Do you want to delete selected day?"));
    EXPECT_THAT(Lines(Main().List1), SizeIs(2));
    ExpectFocus(Main(), "List1");
    boxes.AnswerNext(IDYES);
    PressKey(VK_DELETE);
    EXPECT_THAT(Lines(Main().List1), ElementsAre(L"2004-12-24     12 Church"));
    ExpectFocus(Main(), "List1");
}

TEST_F(Keyboard, EnterAndDeleteDoNothingWithoutASelectedDayOrOutsideTheList)
{
    StartInFront();
    PressKey(VK_TAB);
    ExpectFocus(Main(), "List1");
    SendKeysTogether({VK_RETURN, VK_DELETE});
    PressKey(VK_DOWN);
    PressKeyWith(VK_SHIFT, VK_TAB);
    ExpectFocus(Main(), "TreeView1");
    SendKeysTogether({VK_RETURN, VK_DELETE});
    EXPECT_THAT(Form::OpenForms(), SizeIs(1));
    EXPECT_THAT(boxes.Texts(), IsEmpty());
    EXPECT_THAT(Lines(Main().List1), SizeIs(2));
}

TEST_F(Keyboard, CtrlNAddsAndCtrlPPrintsFromEveryControl)
{
    StartInFront();
    PressKey(VK_TAB);
    PressKey(VK_DOWN);
    for (const char* where : {"List1", "addButton", "editButton", "deleteButton", "TreeView1"}) {
        SCOPED_TRACE(where);
        ExpectFocus(Main(), where);
        user.In<frmAdd>([](frmAdd&) { PressKey(VK_ESCAPE); });
        PressKeyWith(VK_CONTROL, 'N');
        user.In<frmInterval>([](frmInterval&) { PressKey(VK_ESCAPE); });
        PressKeyWith(VK_CONTROL, 'P');
        ExpectFocus(Main(), where);
        PressKey(VK_TAB);
    }
}

TEST_F(Keyboard, CtrlSSavesOnlyAChangedJournal)
{
    StartInFront();
    const std::wstring file = JournalFile();
    ASSERT_TRUE(DeleteFileW(file.c_str()));
    PressKeyWith(VK_CONTROL, 'S');
    EXPECT_EQ(GetFileAttributesW(file.c_str()), INVALID_FILE_ATTRIBUTES) << "nothing has changed";
    PressKey(VK_TAB);
    PressKey(VK_DOWN);
    boxes.AnswerNext(IDYES);
    PressKey(VK_DELETE);
    PressKeyWith(VK_CONTROL, 'S');
    EXPECT_EQ(SavedJournal(), Saved("2004-12-24     12 Church\r\n"
                                    "2004-09-30     -2 Home\r\n"
                                    "2003-05-01      7 Parade\r\n"));
    EXPECT_FALSE(IsEnabled(Main(), {L"File", L"Save"}));
    ExpectFocus(Main(), "List1");
}

TEST_F(Keyboard, ShortcutKeysWithOtherModifiersDoNothing)
{
    StartInFront();
    PressKey(VK_TAB);
    PressKey(VK_DOWN);
    for (const WORD modifier : std::initializer_list<WORD>{VK_SHIFT, VK_MENU}) {
        HoldKey(VK_CONTROL);
        PressKeyWith(modifier, 'N');
        ReleaseKey(VK_CONTROL);
        PressKeyWith(modifier, VK_DELETE);
    }
    PressKeyWith(VK_CONTROL, VK_DELETE);
    PressKeyWith(VK_CONTROL, VK_RETURN);
    PressKeyWith(VK_SHIFT, 'N');
    EXPECT_THAT(Form::OpenForms(), SizeIs(1));
    EXPECT_THAT(boxes.Texts(), IsEmpty());
}

TEST_F(Keyboard, AKeyThatIsHeldDownRunsItsCommandOnce)
{
    StartInFront();
    PressKey(VK_TAB);
    PressKey(VK_DOWN);
    boxes.AnswerNext(IDNO);
    PressKey(VK_DELETE);
    ASSERT_THAT(boxes.Texts(), SizeIs(1));
    constexpr LPARAM onceAndRepeated = 1 | LPARAM{KF_REPEAT} << 16;
    PostMessageW(Main().List1.Handle(), WM_KEYDOWN, VK_DELETE, onceAndRepeated);
    DoEvents();
    EXPECT_THAT(boxes.Texts(), SizeIs(1));
}

TEST_F(Keyboard, AKeyThatIsHeldDownNeitherConfirmsNorCancelsTheDialogThatItOpened)
{
    StartInFront();
    PressKey(VK_TAB);
    PressKey(VK_DOWN);
    user.In<frmEdit>([](frmEdit& dialog) {
        for (const WORD key : std::initializer_list<WORD>{VK_RETURN, VK_ESCAPE}) {
            constexpr LPARAM onceAndRepeated = 1 | LPARAM{KF_REPEAT} << 16;
            PostMessageW(dialog.Text3.Handle(), WM_KEYDOWN, key, onceAndRepeated);
            DoEvents();
            EXPECT_NE(IsWindowVisible(dialog.Handle()), FALSE);
        }
        PressKey(VK_ESCAPE);
        EXPECT_EQ(IsWindowVisible(dialog.Handle()), FALSE);
    });
    PressKey(VK_RETURN);
    EXPECT_FALSE(DataInterface::IsJournalChanged());
}

TEST_F(Keyboard, TheMainWindowIgnoresKeysWhileADialogIsOpen)
{
    StartInFront();
    PressKey(VK_TAB);
    PressKey(VK_DOWN);
    user.In<frmAbout>([](frmAbout& form) {
        PostMessageW(Main().List1.Handle(), WM_KEYDOWN, VK_RETURN, 1);
        PostMessageW(Main().List1.Handle(), WM_KEYDOWN, VK_DELETE, 1);
        DoEvents();
        EXPECT_THAT(Form::OpenForms(), SizeIs(2));
        form.Unload();
    });
    Instance<frmAbout>()->ShowModal();
    EXPECT_THAT(boxes.Texts(), IsEmpty());
}

TEST_F(Keyboard, EscDoesNothingInTheMainWindow)
{
    StartInFront();
    PressKey(VK_TAB);
    PressKey(VK_DOWN);
    for (const char* where : {"List1", "addButton", "editButton", "deleteButton", "TreeView1"}) {
        SCOPED_TRACE(where);
        PressKey(VK_ESCAPE);
        ExpectFocus(Main(), where);
        EXPECT_EQ(ChosenLine(Main().List1), 0);
        EXPECT_TRUE(IsWindowVisible(Main().Handle()));
        PressKey(VK_TAB);
    }
    EXPECT_THAT(boxes.Texts(), IsEmpty());
}

TEST_F(Keyboard, TypingInTheTreeSelectsTheMonthWithThatFirstLetter)
{
    StartInFront();
    PressKey('S');
    EXPECT_THAT(Lines(Main().List1), ElementsAre(L"2004-09-30        Home"));
}

TEST_F(Keyboard, TypingInTheTreeSelectsTheTypedYear)
{
    StartInFront();
    SendKeysTogether({'2', '0', '0', '3'});
    EXPECT_EQ(Main().TreeView1.Text(Main().TreeView1.SelectedNode()), L"2003");
    EXPECT_THAT(Lines(Main().List1), IsEmpty());
}

TEST_F(Keyboard, OtherFunctionKeysDoNothing)
{
    StartInFront();
    for (const char* where : {"TreeView1", "List1", "addButton"}) {
        SCOPED_TRACE(where);
        ExpectFocus(Main(), where);
        SendKeysTogether(functionKeysWithoutEffect);
        PressKey(VK_F4);
        SendKeysTogether({VK_F10, VK_ESCAPE, VK_ESCAPE}); // activates the menu bar and leaves it
        ExpectFocus(Main(), where);
        EXPECT_THAT(Form::OpenForms(), SizeIs(1));
        PressKey(VK_TAB);
    }
    EXPECT_THAT(Lines(Main().List1), SizeIs(2));
    InEveryDialog(user, [](Form& form, const char* name) {
        SCOPED_TRACE(name);
        BringToFront(form);
        const std::string before = FocusIn(form);
        SendKeysTogether(functionKeysWithoutEffect);
        EXPECT_TRUE(IsWindowVisible(form.Handle()));
        ExpectFocus(form, before);
    });
    EXPECT_THAT(boxes.Texts(), IsEmpty());
}

TEST_F(Keyboard, SaveCanBeChosenFromTheMenuWithKeys)
{
    StartInFront();
    PressKey(VK_TAB);
    PressKey(VK_DOWN);
    boxes.AnswerNext(IDYES);
    PressKey(VK_TAB);
    PressKey(VK_TAB);
    PressKey(VK_TAB);
    ExpectFocus(Main(), "deleteButton");
    PressKey(VK_SPACE);
    ASSERT_THAT(Lines(Main().List1), SizeIs(1));
    // The first Down opens the menu at its first item, Revert; the second selects Save.
    SendKeysTogether({VK_F10, VK_DOWN, VK_DOWN, VK_RETURN});
    EXPECT_EQ(SavedJournal(), Saved("2004-12-24     12 Church\r\n"
                                    "2004-09-30     -2 Home\r\n"
                                    "2003-05-01      7 Parade\r\n"));
    ExpectFocus(Main(), "deleteButton");
}

TEST_F(Keyboard, FocusReturnsWhenADialogIsClosed)
{
    StartInFront();
    PressKey(VK_TAB);
    PressKey(VK_DOWN);
    for (const char* where : {"List1", "addButton", "editButton", "deleteButton", "TreeView1"}) {
        SCOPED_TRACE(where);
        ExpectFocus(Main(), where);
        user.In<frmAbout>([](frmAbout&) { PressKey(VK_ESCAPE); });
        Instance<frmAbout>()->ShowModal();
        ExpectFocus(Main(), where);
        user.In<frmSettings>([](frmSettings&) { PressKey(VK_RETURN); });
        Instance<frmSettings>()->ShowModal();
        ExpectFocus(Main(), where);
        PressKey(VK_TAB);
    }
}

TEST_F(Keyboard, FocusReturnsToTheButtonThatOpenedADialogOrAMessage)
{
    StartInFront();
    PressKey(VK_TAB);
    PressKey(VK_DOWN);
    PressKey(VK_TAB);
    user.In<frmAdd>([](frmAdd&) { PressKey(VK_ESCAPE); });
    PressKey(VK_SPACE);
    ExpectFocus(Main(), "addButton");
    PressKey(VK_TAB);
    user.In<frmEdit>([](frmEdit&) { PressKey(VK_RETURN); });
    PressKey(VK_SPACE);
    ExpectFocus(Main(), "editButton");
    PressKey(VK_TAB);
    boxes.AnswerNext(IDNO);
    PressKey(VK_SPACE);
    EXPECT_THAT(boxes.Texts(), SizeIs(1));
    ExpectFocus(Main(), "deleteButton");
}

TEST_F(Keyboard, FocusMovesToTheInvalidBoxAfterAMessage)
{
    StartInFront();
    user.In<frmAdd>([this](frmAdd& form) {
        BringToFront(form);
        PressKey(VK_RETURN);
        ExpectFocus(form, "Combo3");
        PressKey(VK_DOWN);
        form.Text3.SetText(L"x");
        PressKey(VK_RETURN);
        ExpectFocus(form, "Text3");
        EXPECT_THAT(boxes.Texts(), SizeIs(2));
        PressKey(VK_ESCAPE);
    });
    PressKey(VK_TAB);
    PressKey(VK_TAB);
    PressKey(VK_SPACE);
    ExpectFocus(Main(), "addButton");
}

TEST_F(Keyboard, FocusLeavesAControlThatIsDisabled)
{
    StartInFront();
    PressKey(VK_TAB);
    PressKey(VK_DOWN);
    PressKey(VK_TAB);
    PressKey(VK_TAB);
    ExpectFocus(Main(), "editButton");
    Main().editButton.SetEnabled(false);
    ExpectFocus(Main(), "deleteButton");
    Main().deleteButton.SetEnabled(false);
    ExpectFocus(Main(), "TreeView1");
}

TEST_F(Keyboard, AnArrowKeyStepsTheYearOnceAfterAClickOnAnArrow)
{
    StartInFront();
    user.In<frmAdd>([](frmAdd& form) {
        BringToFront(form);
        for (const bool mouseStays : {true, false}) {
            ExpectAClickAndAKeyToStepOnce(form, 1, mouseStays);
            ExpectAClickAndAKeyToStepOnce(form, -1, mouseStays);
        }
        form.Unload();
    });
    Instance<frmAdd>()->showMeNow(2004, 12);
}

TEST_F(Keyboard, CtrlTabSwitchesThePagesOfTheSettingsFromAnyControl)
{
    StartInFront();
    user.In<frmSettings>([](frmSettings& form) {
        BringToFront(form);
        PressKey(VK_TAB);
        ExpectFocus(form, "Option1(0)");
        PressKeyWith(VK_CONTROL, VK_TAB);
        EXPECT_EQ(form.TabStrip1.SelectedTab(), 2);
        ExpectFocus(form, "Option2(0)");
        PressKey(VK_DOWN);
        EXPECT_TRUE(form.Option2[1].Value()) << "the arrow key selects the option";
        form.TabStrip1.SetFocus();
        PressKey(VK_LEFT);
        EXPECT_EQ(form.TabStrip1.SelectedTab(), 1);
        ExpectFocus(form, "TabStrip1");
        EXPECT_TRUE(IsWindowVisible(form.Frame1.Handle()));
        PressKey(VK_TAB);
        ExpectFocus(form, "Option1(0)");
        form.Unload();
    });
    Instance<frmSettings>()->ShowModal();
}
