// What the dialogs that add and edit a day have in common, tried in both: texts, checks, keys.
#include "tests/forms/ProgramUnderTest.h"

#include "data/DataInterface.h"
#include "forms/entry/frmAdd.h"
#include "forms/entry/frmEdit.h"

#include <gmock/gmock.h>

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

/// Opens either dialog from the main window over a journal whose one day is chosen.
class DayDialogs : public ProgramUnderTest {
protected:
    void Begin(const std::wstring& unit = L"km", std::int16_t language = 0)
    {
        Start({.journal = "2004-03-15     12 Office\r\n", .unit = unit, .language = language});
        Main().List1.SetListIndex(0);
    }

    template <class T>
    void InDialog(const std::function<void(T&)>& look)
    {
        user.In<T>([look](T& dialog) {
            look(dialog);
            if (IsWindowVisible(dialog.Handle()) != FALSE) {
                Press(dialog.cancelButton);
            }
        });
        Press(std::is_same_v<T, frmAdd> ? Main().addButton : Main().editButton);
    }

    /// Presses OK over this distance with a day picked; the dialog stays open and keeps what was typed.
    template <class T>
    std::wstring MessageFor(const std::wstring& distance)
    {
        const std::size_t before = boxes.Seen().size();
        InDialog<T>([&](T& dialog) {
            Pick(dialog.Combo3, L"20");
            Type(dialog.Text3, distance);
            Press(dialog.addButton);
            EXPECT_TRUE(IsWindowVisible(dialog.Handle()));
            EXPECT_EQ(dialog.Text3.Text(), distance);
            EXPECT_FALSE(dialog.hasChanged());
        });
        EXPECT_FALSE(DataInterface::IsJournalChanged());
        const auto seen = boxes.Seen();
        if (seen.size() != before + 1) {
            ADD_FAILURE() << "not one message";
            return {};
        }
        EXPECT_EQ(seen.back().title, L"Odomira");
        EXPECT_THAT(seen.back().buttons, ElementsAre(IDOK));
        EXPECT_FALSE(seen.back().hasIcon);
        return seen.back().text;
    }

    /// OK over this distance; the dialog is done.
    template <class T>
    void Accept(const std::wstring& distance)
    {
        user.In<T>([&](T& dialog) {
            Pick(dialog.Combo3, L"20");
            Type(dialog.Text3, distance);
            Press(dialog.addButton);
        });
        Press(std::is_same_v<T, frmAdd> ? Main().addButton : Main().editButton);
        EXPECT_THAT(boxes.Texts(), IsEmpty());
    }
};

template <class T>
std::vector<std::wstring> Captions(const T& dialog)
{
    return {Text(dialog.Handle()),           Text(dialog.Label1[0].Handle()),   Text(dialog.Label1[1].Handle()),
            Text(dialog.Label1[2].Handle()), Text(dialog.Label3.Handle()),      Text(dialog.Label2.Handle()),
            Text(dialog.addButton.Handle()), Text(dialog.cancelButton.Handle())};
}

std::pair<DWORD, DWORD> SelectionOf(const TextBox& box)
{
    DWORD first = 0;
    DWORD last = 0;
    SendMessageW(box.Handle(), EM_GETSEL, reinterpret_cast<WPARAM>(&first), reinterpret_cast<LPARAM>(&last));
    return {first, last};
}

} // namespace

TEST_F(DayDialogs, HaveTheirTextsInEnglish)
{
    Begin();
    InDialog<frmAdd>([](frmAdd& dialog) {
        EXPECT_THAT(Captions(dialog),
                    ElementsAre(L"Add", L"Year", L"Month", L"Day", L"# of km", L"Route", L"OK", L"Cancel"));
    });
    InDialog<frmEdit>([](frmEdit& dialog) {
        EXPECT_THAT(Captions(dialog),
                    ElementsAre(L"Edit", L"Year", L"Month", L"Day", L"Number of km", L"Route", L"OK", L"Cancel"));
    });
}

TEST_F(DayDialogs, HaveTheirTextsInSwedish)
{
    Begin(L"mil", 100);
    InDialog<frmAdd>([](frmAdd& dialog) {
        EXPECT_THAT(Captions(dialog),
                    ElementsAre(L"Lägg till", L"År", L"Månad", L"Dag", L"Antal mil", L"Färdväg", L"OK", L"Avbryt"));
    });
    InDialog<frmEdit>([](frmEdit& dialog) {
        EXPECT_THAT(Captions(dialog),
                    ElementsAre(L"Redigera", L"År", L"Månad", L"Dag", L"Antal mil", L"Färdväg", L"OK", L"Avbryt"));
    });
}

TEST_F(DayDialogs, RefuseTextThatIsNotANumber)
{
    Begin();
    EXPECT_EQ(MessageFor<frmAdd>(L"abc"), L"Only integers and decimal numbers.");
    EXPECT_EQ(MessageFor<frmEdit>(L"abc"), L"Only integers and decimal numbers.");
    EXPECT_EQ(MessageFor<frmAdd>(IsSwedishMachine() ? L"12.5" : L"12,5"), L"Only integers and decimal numbers.");
    EXPECT_EQ(MessageFor<frmAdd>(L"   "), L"Only integers and decimal numbers.");
    EXPECT_EQ(MessageFor<frmAdd>(L"abcdefgh"), L"Only integers and decimal numbers.");
}

TEST_F(DayDialogs, RefuseANegativeDistanceOfAnyLength)
{
    Begin(L"mil");
    EXPECT_EQ(MessageFor<frmAdd>(L"-5"), L"Number of mil must be positive.");
    EXPECT_EQ(MessageFor<frmEdit>(L"-5"), L"Number of mil must be positive.");
    EXPECT_EQ(MessageFor<frmAdd>(L"-123456"), L"Number of mil must be positive.");
}

TEST_F(DayDialogs, RefuseMoreThanSixCharactersCountingEveryOne)
{
    Begin();
    EXPECT_EQ(MessageFor<frmAdd>(L"1234567"),
              L"You can only specify the number of km with six (6) characters.\r\nYou have used 7.");
    EXPECT_EQ(MessageFor<frmEdit>(L"1234567"),
              L"You can only specify the number of km with six (6) characters.\r\nYou have used 7.");
    EXPECT_EQ(MessageFor<frmAdd>(Decimal(L"1234.56")),
              L"You can only specify the number of km with six (6) characters.\r\nYou have used 7.");
    EXPECT_EQ(MessageFor<frmAdd>(L"12       "),
              L"You can only specify the number of km with six (6) characters.\r\nYou have used 9.");
}

TEST_F(DayDialogs, RefuseInSwedish)
{
    Begin(L"km", 100);
    EXPECT_EQ(MessageFor<frmAdd>(L"abc"), L"Endast heltal eller decimaltal.");
    EXPECT_EQ(MessageFor<frmAdd>(L"-5"), L"Antal körda km måste vara positivt.");
    EXPECT_EQ(MessageFor<frmAdd>(L"1234567"),
              L"Du kan endast ange antal körda km med sex (6) tecken.\r\nDu har använt 7.");
    EXPECT_EQ(MessageFor<frmEdit>(L"abc"), L"Endast heltal eller decimaltal.");
    EXPECT_EQ(MessageFor<frmEdit>(L"-5"), L"Antal körda km måste vara positivt.");
    EXPECT_EQ(MessageFor<frmEdit>(L"1234567"),
              L"Du kan endast ange antal körda km med sex (6) tecken.\r\nDu har använt 7.");
}

TEST_F(DayDialogs, HighlightTheRefusedDistanceSoThatTypingReplacesIt)
{
    Begin();
    InDialog<frmAdd>([](frmAdd& dialog) {
        BringToFront(dialog);
        Pick(dialog.Combo3, L"20");
        Type(dialog.Text3, L"abc");
        SendMessageW(dialog.Text3.Handle(), EM_SETSEL, 1, 1);
        Press(dialog.addButton);
        Await([&] { return SelectionOf(dialog.Text3) == std::pair<DWORD, DWORD>{0, 3}; }, "the highlighted text");
        Await([&] { return GetFocus() == dialog.Text3.Handle(); }, "the focus back from the message box");
        PressKey('8');
        EXPECT_EQ(dialog.Text3.Text(), L"8");
    });
}

TEST_F(DayDialogs, AskForADayBeforeTheyLookAtTheDistance)
{
    Begin();
    InDialog<frmAdd>([](frmAdd& dialog) {
        BringToFront(dialog);
        Type(dialog.Text3, L"abc");
        Press(dialog.addButton);
        Await([&] { return GetFocus() == dialog.Combo3.Handle(); }, "the focus back from the message box");
        EXPECT_EQ(dialog.Text3.Text(), L"abc");
        EXPECT_TRUE(IsWindowVisible(dialog.Handle()));
    });
    EXPECT_THAT(boxes.Texts(), ElementsAre(L"You must choose a day."));
    EXPECT_EQ(DataInterface::dayCount, 1);
}

TEST_F(DayDialogs, AskForADayInSwedish)
{
    Begin(L"km", 100);
    InDialog<frmAdd>([](frmAdd& dialog) { Press(dialog.addButton); });
    EXPECT_THAT(boxes.Texts(), ElementsAre(L"Du måste välja en dag."));
}

TEST_F(DayDialogs, AcceptSixCharactersAndZeroAndDecimals)
{
    Begin();
    Accept<frmEdit>(L"123456");
    EXPECT_EQ(DataInterface::GetDayEntry(2004, 3, 20).distance, 123456.0);
    Accept<frmEdit>(Decimal(L"12.345"));
    EXPECT_EQ(DataInterface::GetDayEntry(2004, 3, 20).distance, 12.345);
    Accept<frmEdit>(L"0");
    EXPECT_EQ(DataInterface::GetDayEntry(2004, 3, 20).distance, 0.0);
    EXPECT_THAT(Lines(Main().List1), ElementsAre(L"2004-03-20      0 Office"));
}

TEST_F(DayDialogs, StoreMinusTwoForAnEmptyDistance)
{
    Begin();
    Accept<frmAdd>(L"");
    EXPECT_EQ(DataInterface::GetDayEntry(2004, 3, 20).distance, -2.0);
    Main().List1.SetListIndex(1);
    Accept<frmEdit>(L"");
    EXPECT_EQ(DataInterface::days[1].distance, -2.0);
}

TEST_F(DayDialogs, NeverStoreANegativeZero)
{
    Begin();
    Accept<frmAdd>(L"-0");
    EXPECT_THAT(Lines(Main().List1), testing::Contains(L"2004-03-20      0 "));
}

TEST_F(DayDialogs, StoreTheRouteAsTyped)
{
    Begin();
    user.In<frmAdd>([](frmAdd& dialog) {
        Pick(dialog.Combo3, L"20");
        Type(dialog.Text2, L"  Åre - Sälen ");
        Press(dialog.addButton);
    });
    Press(Main().addButton);
    EXPECT_EQ(DataInterface::GetDayEntry(2004, 3, 20).route, L"  Åre - Sälen ");
}

TEST_F(DayDialogs, StoreTheRouteAsTheFileCanHoldIt)
{
    Begin();
    user.In<frmAdd>([](frmAdd& dialog) {
        Pick(dialog.Combo3, L"20");
        Type(dialog.Text2, L"\u6771\u4EAC 5\u20AC");
        Press(dialog.addButton);
    });
    Press(Main().addButton);
    EXPECT_EQ(DataInterface::GetDayEntry(2004, 3, 20).route, L"?? 5\u20AC");
}

TEST_F(DayDialogs, KeepARouteOnOneLine)
{
    Begin();
    user.In<frmAdd>([](frmAdd& dialog) {
        EXPECT_EQ(GetWindowLongW(dialog.Text2.Handle(), GWL_STYLE) & ES_MULTILINE, 0);
        Pick(dialog.Combo3, L"20");
        SetWindowTextW(dialog.Text2.Handle(), L"Here\r\n2004-03-21      9 There");
        Press(dialog.addButton);
    });
    Press(Main().addButton);
    EXPECT_EQ(DataInterface::GetDayEntry(2004, 3, 20).route, L"Here");
}

TEST_F(DayDialogs, TakeEnterForOkAndEscForCancel)
{
    Begin();
    user.In<frmAdd>([](frmAdd& dialog) {
        BringToFront(dialog);
        Pick(dialog.Combo3, L"20");
        Type(dialog.Text3, L"5");
        PressKey(VK_RETURN);
    });
    Press(Main().addButton);
    EXPECT_EQ(DataInterface::GetDayEntry(2004, 3, 20).distance, 5.0);
    user.In<frmEdit>([](frmEdit& dialog) {
        BringToFront(dialog);
        Type(dialog.Text3, L"6");
        PressKey(VK_ESCAPE);
    });
    Press(Main().editButton);
    EXPECT_EQ(DataInterface::GetDayEntry(2004, 3, 20).distance, 5.0);
}

TEST_F(DayDialogs, WalkThroughTheirControlsByTab)
{
    Begin();
    InDialog<frmAdd>([](frmAdd& dialog) {
        BringToFront(dialog);
        std::vector<HWND> walked{GetFocus()};
        for (int i = 0; i < 6; ++i) {
            PressKey(VK_TAB);
            walked.push_back(GetFocus());
        }
        EXPECT_THAT(walked, ElementsAre(dialog.Combo3.Handle(), dialog.Text3.Handle(), dialog.Text2.Handle(),
                                        dialog.addButton.Handle(), dialog.cancelButton.Handle(), dialog.Text1.Handle(),
                                        dialog.Combo1.Handle()));
    });
}

TEST_F(DayDialogs, StepTheYearByTheArrowKeysInItsBox)
{
    Begin();
    InDialog<frmAdd>([](frmAdd& dialog) {
        BringToFront(dialog);
        SetFocus(dialog.Text1.Handle());
        PressKey(VK_UP);
        EXPECT_EQ(dialog.Text1.Text(), L"2005");
    });
}

TEST_F(DayDialogs, OpenOverTheMainWindowAndDisableIt)
{
    Begin();
    InDialog<frmAdd>([](frmAdd& dialog) {
        EXPECT_EQ(GetWindow(dialog.Handle(), GW_OWNER), Main().Handle());
        EXPECT_FALSE(IsWindowEnabled(Main().Handle()));
    });
    EXPECT_TRUE(IsWindowEnabled(Main().Handle()));
}
