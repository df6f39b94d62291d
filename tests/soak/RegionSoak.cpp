// Changes the region at random moments: over the list, while a dialog is open, before and after typing. The journal has
// the typed number, and the windows show it in the format of the current region.

#include "forms/entry/frmAdd.h"
#include "forms/entry/frmEdit.h"
#include "platform/system/Conversions.h"
#include "tests/forms/ProgramUnderTest.h"
#include "tests/soak/Amounts.h"
#include "tests/support/Region.h"

#include <algorithm>
#include <map>
#include <random>

namespace {

class RegionSoak : public ProgramUnderTest {
protected:
    void SetUp() override
    {
        Start({.journal = "2004-01-31      1 Home\r\n"});
        days_[31] = {2004, 1, 31, 1, L"Home"};
        ClickNode(Main().TreeView1, L"2004", MonthNamed(1));
    }

    void TearDown() override
    {
        DataInterface::ClearJournalChanged();
        report_.Did(acts_, "days entered and edited");
        report_.Did(changes_, "changes of the region around them");
    }

    int Below(int limit) { return std::uniform_int_distribution(0, limit - 1)(random_); }

    void PerhapsMove()
    {
        if (Below(3) != 0) {
            return;
        }
        ChooseDecimalSeparator(Below(2) == 0 ? region_.Own() : region_.Other());
        ++changes_;
    }

    /// A distance of at most four characters, with its number.
    std::pair<std::wstring, double> Distance()
    {
        const int tenths = Below(900);
        return {std::to_wstring(tenths / 10) + DecimalSeparator() + std::to_wstring(tenths % 10), tenths / 10.0};
    }

    /// Replaces the distance or leaves it unchanged, with changes of the region in between.
    template <class Dialog>
    void FillIn(Dialog& dialog, DayEntry& entry)
    {
        PerhapsMove();
        if (Below(3) != 0) {
            const auto [text, number] = Distance();
            Type(dialog.Text3, text);
            entry.distance = number;
        }
        PerhapsMove();
        entry.route = L"route " + std::to_wstring(acts_);
        Type(dialog.Text2, entry.route);
        PerhapsMove();
        Press(dialog.addButton);
    }

    void AddDay()
    {
        const auto free = static_cast<std::int16_t>(1 + Below(30));
        if (days_.contains(free)) {
            EditDay();
            return;
        }
        DayEntry entry{2004, 1, free, -2, L""};
        user.In<frmAdd>([&](frmAdd& dialog) {
            Pick(dialog.Combo3, std::to_wstring(free));
            FillIn(dialog, entry);
        });
        Press(Main().addButton);
        days_[free] = entry;
    }

    void EditDay()
    {
        const int line = Below(static_cast<int>(days_.size()));
        DayEntry& entry = std::next(days_.rbegin(), line)->second;
        Main().List1.SetListIndex(line); // two clicks in a row would be a double-click
        PerhapsMove();
        user.In<frmEdit>([&](frmEdit& dialog) { FillIn(dialog, entry); });
        Press(Main().editButton);
    }

    void ExpectAllDays()
    {
        ASSERT_EQ(static_cast<std::size_t>(DataInterface::dayCount), days_.size());
        ASSERT_EQ(static_cast<std::size_t>(Main().List1.ListCount()), days_.size());
        int line = static_cast<int>(days_.size());
        for (const auto& [day, entry] : days_) {
            ASSERT_EQ(DataInterface::GetDayEntry(2004, 1, day), entry);
            std::wstring distance = entry.distance < 0 ? L"" : ToText(entry.distance);
            distance.insert(0, 6 - distance.size(), L' ');
            ASSERT_EQ(Main().List1.List(--line).substr(11), distance + L" " + entry.route);
        }
        ASSERT_TRUE(boxes.Texts().empty()) << testing::PrintToString(boxes.Texts());
    }

    void SaveAndReadAgain()
    {
        ChooseCommand(Main(), {L"File", L"Save"});
        DataInterface::LoadJournal();
        ASSERT_NO_FATAL_FAILURE(ExpectAllDays());
    }

    std::int64_t acts_ = 0;

private:
    std::map<std::int16_t, DayEntry> days_;
    std::mt19937 random_{Seed()};
    KeptRegion region_;
    std::int64_t changes_ = 0;
    ClosingReport report_;
};

} // namespace

TEST_F(RegionSoak, ATypedDistanceIsStoredInEveryRegion)
{
    const std::int64_t wanted = Amount(20, 3000);
    for (; acts_ < wanted; ++acts_) {
        SCOPED_TRACE(acts_);
        PerhapsMove();
        if (Below(2) == 0) {
            AddDay();
        } else {
            EditDay();
        }
        ASSERT_NO_FATAL_FAILURE(ExpectAllDays());
        if (Below(10) == 0) {
            ASSERT_NO_FATAL_FAILURE(SaveAndReadAgain());
        }
    }
}
