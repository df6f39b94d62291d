// The region changes while the program runs: another decimal separator, other month names.
#include "tests/forms/ProgramUnderTest.h"

#include "data/DataInterface.h"
#include "forms/entry/frmAdd.h"
#include "forms/entry/frmEdit.h"
#include "forms/print/frmInterval.h"
#include "tests/support/Region.h"

#include <gmock/gmock.h>

#include <commctrl.h>

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

class AnotherRegion : public ProgramUnderTest {
protected:
    std::wstring Here(const std::wstring& text) const { return With(region_.Own(), text); }
    std::wstring There(const std::wstring& text) const { return With(region_.Other(), text); }
    void Move() const { ChooseDecimalSeparator(region_.Other()); }

    /// Two months. The earlier one has two days, and the second of them is selected.
    void StartAndChooseADay() const
    {
        const std::wstring text = Here(L"2004-03-15      1 \r\n2004-02-14   12.5 Office\r\n2004-02-12    3.4 Home\r\n");
        Start({.journal = std::string(text.begin(), text.end())});
        ClickNode(Main().TreeView1, L"2004", MonthNamed(2));
        ClickLine(Main().List1, 0);
    }

    static DayEntry ChosenDay() { return DataInterface::GetDayEntry(2004, 2, 14); }

private:
    static std::wstring With(const std::wstring& separator, std::wstring text)
    {
        for (std::size_t at = text.find(L'.'); at != std::wstring::npos; at = text.find(L'.', at + 1)) {
            text.replace(at, 1, separator);
        }
        return text;
    }

    KeptRegion region_;
};

/// Replaces the month names in the dialog by those of another language.
void NameInAnotherLanguage(const ComboBox& months)
{
    const LRESULT picked = SendMessageW(months.Handle(), CB_GETCURSEL, 0, 0);
    for (WPARAM month = 0; month < 12; ++month) {
        const std::wstring name = L"brumaire " + std::to_wstring(month);
        SendMessageW(months.Handle(), CB_DELETESTRING, month, 0);
        SendMessageW(months.Handle(), CB_INSERTSTRING, month, reinterpret_cast<LPARAM>(name.c_str()));
    }
    SendMessageW(months.Handle(), CB_SETCURSEL, static_cast<WPARAM>(picked), 0);
}

std::vector<std::wstring> MonthsOfTheSystem()
{
    std::vector<std::wstring> names;
    for (int month = 1; month <= 12; ++month) {
        names.push_back(MonthNamed(month));
    }
    return names;
}

void NameFirstMonthInAnotherLanguage(const TreeView& tree)
{
    const auto root = SendMessageW(tree.Handle(), TVM_GETNEXTITEM, TVGN_ROOT, 0);
    std::wstring name = L"brumaire";
    TVITEMW item{};
    item.mask = TVIF_TEXT;
    item.hItem = reinterpret_cast<HTREEITEM>(SendMessageW(tree.Handle(), TVM_GETNEXTITEM, TVGN_CHILD, root));
    item.pszText = name.data();
    SendMessageW(tree.Handle(), TVM_SETITEMW, 0, reinterpret_cast<LPARAM>(&item));
}

} // namespace

TEST_F(AnotherRegion, UpdatesTheListAndKeepsTheSelectedMonthAndDay)
{
    StartAndChooseADay();
    const int node = Main().TreeView1.SelectedNode();
    const std::wstring total = Text(Main().Label1.Handle());
    Move();
    EXPECT_THAT(Lines(Main().List1), ElementsAre(There(L"2004-02-14   12.5 Office"), There(L"2004-02-12    3.4 Home")));
    EXPECT_EQ(ChosenLine(Main().List1), 0);
    EXPECT_EQ(Main().TreeView1.SelectedNode(), node);
    EXPECT_EQ(Text(Main().Label1.Handle()), total);
    EXPECT_TRUE(IsEnabled(Main().editButton));
    EXPECT_FALSE(DataInterface::IsJournalChanged());
    EXPECT_THAT(boxes.Texts(), IsEmpty());
}

TEST_F(AnotherRegion, EditsTheNumberOfTheJournal)
{
    StartAndChooseADay();
    Move();
    user.In<frmEdit>([this](frmEdit& dialog) {
        EXPECT_EQ(dialog.Text3.Text(), There(L"12.5"));
        Press(dialog.addButton);
    });
    Press(Main().editButton);
    EXPECT_EQ(ChosenDay().distance, 12.5);
}

TEST_F(AnotherRegion, UpdatesTheMonthNamesOfTheTree)
{
    StartAndChooseADay();
    NameFirstMonthInAnotherLanguage(Main().TreeView1);
    BroadcastRegionChange();
    EXPECT_THAT(Tree(Main().TreeView1), ElementsAre(L"2004", L"  " + MonthNamed(3), L"  " + MonthNamed(2) + L"*"));
}

TEST_F(AnotherRegion, LeavesTheListOfAYearEmpty)
{
    StartAndChooseADay();
    ClickNode(Main().TreeView1, L"2004");
    Move();
    EXPECT_THAT(Lines(Main().List1), IsEmpty());
    EXPECT_EQ(Text(Main().Label1.Handle()), L"");
    EXPECT_EQ(Main().TreeView1.SelectedNode(), 1);
}

TEST_F(AnotherRegion, ChangesNothingIfTheJournalIsEmpty)
{
    Start();
    Move();
    EXPECT_THAT(Tree(Main().TreeView1), IsEmpty());
    EXPECT_THAT(boxes.Texts(), IsEmpty());
}

TEST_F(AnotherRegion, KeepsATypedDistanceAndItsNumber)
{
    StartAndChooseADay();
    user.In<frmEdit>([this](frmEdit& dialog) {
        Type(dialog.Text3, Here(L"7.25"));
        Move();
        EXPECT_EQ(dialog.Text3.Text(), Here(L"7.25"));
        Press(dialog.addButton);
    });
    Press(Main().editButton);
    EXPECT_EQ(ChosenDay(), (DayEntry{2004, 2, 14, 7.25, L"Office"}));
    EXPECT_THAT(boxes.Texts(), IsEmpty());
    EXPECT_EQ(Lines(Main().List1)[0], There(L"2004-02-14   7.25 Office"));
}

TEST_F(AnotherRegion, KeepsADistanceThatTheDialogShows)
{
    StartAndChooseADay();
    user.In<frmEdit>([this](frmEdit& dialog) {
        Type(dialog.Text2, L"Sea");
        Move();
        EXPECT_EQ(dialog.Text3.Text(), Here(L"12.5"));
        Press(dialog.addButton);
    });
    Press(Main().editButton);
    EXPECT_EQ(ChosenDay(), (DayEntry{2004, 2, 14, 12.5, L"Sea"}));
    EXPECT_THAT(boxes.Texts(), IsEmpty());
}

TEST_F(AnotherRegion, ReadsLaterInputWithTheNewSeparatorOnly)
{
    StartAndChooseADay();
    user.In<frmAdd>([this](frmAdd& dialog) {
        Pick(dialog.Combo3, L"20");
        Type(dialog.Text3, Here(L"1.5"));
        Move();
        Type(dialog.Text3, Here(L"7.5"));
        Press(dialog.addButton);
        EXPECT_EQ(dialog.Text3.Text(), Here(L"7.5"));
        Type(dialog.Text3, There(L"7.5"));
        Press(dialog.addButton);
    });
    Press(Main().addButton);
    EXPECT_THAT(boxes.Texts(), ElementsAre(L"Only integers and decimal numbers."));
    EXPECT_EQ(DataInterface::GetDayEntry(2004, 2, 20).distance, 7.5);
}

TEST_F(AnotherRegion, StillRefusesAnInvalidDistance)
{
    StartAndChooseADay();
    user.In<frmAdd>([](frmAdd& dialog) {
        Pick(dialog.Combo3, L"20");
        for (const wchar_t* wrong : {L"-5", L"1234567", L"abc"}) {
            Type(dialog.Text3, wrong);
            BroadcastRegionChange();
            EXPECT_EQ(dialog.Text3.Text(), wrong);
            Press(dialog.addButton);
        }
        Press(dialog.cancelButton);
    });
    Press(Main().addButton);
    EXPECT_THAT(boxes.Texts(),
                ElementsAre(L"Number of km must be positive.",
                            L"You can only specify the number of km with six (6) characters.\r\nYou have used 7.",
                            L"Only integers and decimal numbers."));
}

TEST_F(AnotherRegion, NamesTheMonthsOfAnOpenAddDialogAndKeepsItsDate)
{
    StartAndChooseADay();
    user.In<frmAdd>([](frmAdd& dialog) {
        Pick(dialog.Combo3, L"20");
        Type(dialog.Text2, L"Sea");
        NameInAnotherLanguage(dialog.Combo1);
        BroadcastRegionChange();
        EXPECT_EQ(Entries(dialog.Combo1), MonthsOfTheSystem());
        EXPECT_EQ(dialog.Combo1.Text(), MonthNamed(2));
        EXPECT_EQ(dialog.Combo3.Text(), L"20");
        Press(dialog.addButton);
    });
    Press(Main().addButton);
    EXPECT_EQ(DataInterface::GetDayEntry(2004, 2, 20), (DayEntry{2004, 2, 20, -2, L"Sea"}));
    EXPECT_THAT(boxes.Texts(), IsEmpty());
}

TEST_F(AnotherRegion, NamesTheMonthsOfAnOpenEditDialogAndKeepsItsDate)
{
    StartAndChooseADay();
    user.In<frmEdit>([](frmEdit& dialog) {
        Pick(dialog.Combo3, L"21");
        NameInAnotherLanguage(dialog.Combo1);
        BroadcastRegionChange();
        EXPECT_EQ(Entries(dialog.Combo1), MonthsOfTheSystem());
        EXPECT_EQ(dialog.Combo3.Text(), L"21");
        Press(dialog.addButton);
    });
    Press(Main().editButton);
    EXPECT_EQ(DataInterface::GetDayEntry(2004, 2, 21), (DayEntry{2004, 2, 21, 12.5, L"Office"}));
    EXPECT_EQ(ChosenDay(), DayEntry{});
}

TEST_F(AnotherRegion, NamesTheMonthsOfAnOpenPrintDialogAndKeepsItsInterval)
{
    StartAndChooseADay();
    user.In<frmInterval>([](frmInterval& dialog) {
        const std::wstring interval = dialog.Label2.Caption();
        for (const ComboBox& months : dialog.Combo1) {
            NameInAnotherLanguage(months);
        }
        BroadcastRegionChange();
        for (const ComboBox& months : dialog.Combo1) {
            EXPECT_EQ(Entries(months), MonthsOfTheSystem());
        }
        EXPECT_EQ(dialog.Label2.Caption(), interval);
        dialog.Unload();
    });
    ChooseCommand(Main(), {L"File", L"Print..."});
}

TEST_F(AnotherRegion, DeletesTheDayThatWasSelectedBefore)
{
    StartAndChooseADay();
    ClickLine(Main().List1, 1);
    user.In<frmEdit>([this](frmEdit& dialog) {
        Move();
        Press(dialog.cancelButton);
    });
    Press(Main().editButton);
    boxes.AnswerNext(IDYES);
    Press(Main().deleteButton);
    EXPECT_EQ(DataInterface::GetDayEntry(2004, 2, 12), DayEntry{});
    EXPECT_EQ(ChosenDay().distance, 12.5);
}

TEST_F(AnotherRegion, SavesDistancesWithTheNewSeparator)
{
    StartAndChooseADay();
    Move();
    user.In<frmEdit>([](frmEdit& dialog) { Press(dialog.addButton); });
    Press(Main().editButton);
    ChooseCommand(Main(), {L"File", L"Save"});
    const std::wstring lines = There(L"2004-03-15      1 \r\n2004-02-14   12.5 Office\r\n2004-02-12    3.4 Home\r\n");
    EXPECT_EQ(SavedJournal(), Saved(std::string(lines.begin(), lines.end())));
}
