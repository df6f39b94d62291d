#include "tests/data/StoreUnderTest.h"
#include "tests/support/ErrorOf.h"
#include "tests/support/MessageBoxWatcher.h"

#include <gmock/gmock.h>

#include <array>
#include <limits>

using DataInterface::AddDay;
using DataInterface::ClearJournalChanged;
using DataInterface::dayCapacity;
using DataInterface::dayCount;
using DataInterface::days;
using DataInterface::DeleteDay;
using DataInterface::GetDayEntry;
using DataInterface::GetMonthsOfYear;
using DataInterface::GetTakenDays;
using DataInterface::GetYears;
using DataInterface::IsJournalChanged;
using DataInterface::journalChanged;
using DataInterface::ParseJournalLine;
using DataInterface::ReplaceDay;
using testing::ElementsAre;

namespace {

class DayStore : public StoreUnderTest {};

std::vector<int> Numbers(const NumberArray& array)
{
    std::vector<int> numbers;
    for (int i = 0; i <= array.UpperBound(); ++i) {
        numbers.push_back(array[i]);
    }
    return numbers;
}

std::vector<int> TakenDays(std::int16_t year, std::int16_t month)
{
    std::vector<int> numbers;
    const auto taken = GetTakenDays(year, month);
    for (std::size_t i = 0; i < taken.size(); ++i) {
        if (taken[i]) {
            numbers.push_back(static_cast<int>(i));
        }
    }
    return numbers;
}

/// count entries, newest first, one for each day backwards from 31 December 9999 (months of 28 days).
void FillWith(int count)
{
    for (int i = 0; i < count; ++i) {
        const int day = 28 - i % 28;
        const int month = 12 - i / 28 % 12;
        const int year = 9999 - i / 28 / 12;
        std::array<wchar_t, 40> line{};
        swprintf(line.data(), line.size(), L"%04d-%02d-%02d      1 ", year, month, day);
        ParseJournalLine(line.data());
    }
}

} // namespace

TEST_F(DayStore, AfterLoadingNothingIsThereAndNothingIsChanged)
{
    EXPECT_EQ(dayCount, 0);
    EXPECT_EQ(dayCapacity, 10);
    EXPECT_EQ(days.size(), 11u);
    EXPECT_FALSE(IsJournalChanged());
}

TEST_F(DayStore, AnEntryThatIsMissingIsTheEmptyEntry)
{
    const DayEntry missing = GetDayEntry(2004, 2, 12);
    EXPECT_EQ(missing.year, 0);
    EXPECT_EQ(missing.month, 0);
    EXPECT_EQ(missing.day, 0);
    EXPECT_EQ(missing.distance, -1.0);
    EXPECT_EQ(missing.route, L"");
}

TEST_F(DayStore, AddDay_KeepsTheNewestDateFirst)
{
    AddDay(2004, 2, 10, 1, L"");
    AddDay(2004, 2, 12, 2, L"");
    EXPECT_THAT(Dates(), ElementsAre("2004-02-12", "2004-02-10"));
}

TEST_F(DayStore, AddDay_PutsTheOldestDateBeforeTheLastEntry)
{
    AddDay(2004, 2, 10, 1, L"");
    AddDay(2004, 2, 12, 2, L"");
    AddDay(2004, 2, 1, 3, L"");
    EXPECT_THAT(Dates(), ElementsAre("2004-02-12", "2004-02-01", "2004-02-10"));
}

TEST_F(DayStore, AddDay_PutsASecondOlderEntryInFrontOfTheOnlyOne)
{
    AddDay(2004, 2, 10, 1, L"first");
    AddDay(2004, 2, 9, 2, L"second");
    EXPECT_THAT(Dates(), ElementsAre("2004-02-09", "2004-02-10"));
}

TEST_F(DayStore, AddDay_PutsASecondEntryOfADateAfterTheFirstUnlessItIsTheOldest)
{
    Load({L"2004-02-12      1 a", L"2004-02-12      2 b", L"2004-02-01      3 c"});
    AddDay(2004, 2, 12, 4, L"d");
    ASSERT_EQ(dayCount, 4);
    EXPECT_EQ(days[2].route, L"d");
    AddDay(2004, 2, 1, 5, L"e");
    EXPECT_EQ(days[3].route, L"e");
    EXPECT_EQ(days[4].route, L"c");
}

TEST_F(DayStore, AddDay_StoresEveryFieldAndMarksTheJournalChanged)
{
    AddDay(-5, 13, 32, -2.0, L" 'A - b' ");
    EXPECT_EQ(days[0], (DayEntry{-5, 13, 32, -2.0, L" 'A - b' "}));
    EXPECT_TRUE(IsJournalChanged());
    EXPECT_TRUE(journalChanged);
    ClearJournalChanged();
    EXPECT_FALSE(IsJournalChanged());
    EXPECT_EQ(dayCount, 1);
}

TEST_F(DayStore, AddDay_TakesDatesAtTheLimitsOf16Bits)
{
    constexpr auto most = std::numeric_limits<std::int16_t>::max();
    constexpr auto least = std::numeric_limits<std::int16_t>::min();
    AddDay(least, least, least, 1, L"");
    AddDay(most, most, most, 2, L"");
    EXPECT_EQ(days[0].year, most);
    EXPECT_EQ(days[1].year, least);
}

TEST_F(DayStore, AddDay_DoublesTheCapacityOfAFullArray)
{
    FillWith(10);
    EXPECT_EQ(dayCapacity, 10);
    AddDay(1, 1, 1, 1, L"");
    EXPECT_EQ(dayCapacity, 20);
    EXPECT_EQ(days.size(), 21u);
    EXPECT_EQ(dayCount, 11);
}

TEST_F(DayStore, LoadingDoublesTheCapacityUpTo20480)
{
    std::vector<int> capacities{dayCapacity};
    for (int i = 0; i < 20480; ++i) {
        ParseJournalLine(L"2004-02-12      1 ");
        ASSERT_EQ(days.size(), static_cast<std::size_t>(dayCapacity) + 1);
        if (dayCapacity != capacities.back()) {
            EXPECT_EQ(i, capacities.back()) << "grown too early or too late";
            capacities.push_back(dayCapacity);
        }
    }
    EXPECT_THAT(capacities, ElementsAre(10, 20, 40, 80, 160, 320, 640, 1280, 2560, 5120, 10240, 20480));
}

TEST_F(DayStore, TheEntryBeyond20480StopsWithOverflowAndChangesNothing)
{
    FillWith(20479);
    AddDay(9999, 12, 31, 7, L"the last that fits");
    ClearJournalChanged();
    const auto before = Entries();

    EXPECT_EQ(ErrorOf([] { AddDay(2004, 2, 12, 1, L"one too many"); }), ErrorNumber::Overflow);
    EXPECT_EQ(ErrorOf([] { ParseJournalLine(L"2004-02-12      1 one too many"); }), ErrorNumber::Overflow);
    EXPECT_EQ(dayCount, 20480);
    EXPECT_EQ(dayCapacity, 20480);
    EXPECT_EQ(days.size(), 20481u);
    EXPECT_FALSE(IsJournalChanged());
    EXPECT_TRUE(Entries() == before);
}

TEST_F(DayStore, DeleteDay_MakesRoomAgainInAFullStore)
{
    FillWith(20480);
    DeleteDay(9999, 12, 28);
    AddDay(9999, 12, 31, 1, L"new");
    EXPECT_EQ(dayCount, 20480);
    EXPECT_EQ(days[0].route, L"new");
}

TEST_F(DayStore, ReplaceDay_ChangesOnlyTheFirstEntryOfTheDate)
{
    Load({L"2004-02-13      9 x", L"2004-02-12      1 a", L"2004-02-12      2 b"});
    ReplaceDay(2004, 2, 12, 12.5, L"new");
    EXPECT_THAT(Entries(), ElementsAre(DayEntry{2004, 2, 13, 9, L"x"}, DayEntry{2004, 2, 12, 12.5, L"new"},
                                       DayEntry{2004, 2, 12, 2, L"b"}));
    EXPECT_TRUE(IsJournalChanged());
}

TEST_F(DayStore, ReplaceDay_OfAnAbsentDateDoesNothingSilently)
{
    MessageBoxWatcher boxes;
    Load({L"2004-02-12      1 a"});
    ReplaceDay(2004, 2, 13, 2, L"b");
    EXPECT_THAT(Entries(), ElementsAre(DayEntry{2004, 2, 12, 1, L"a"}));
    EXPECT_FALSE(IsJournalChanged());
    EXPECT_TRUE(boxes.Seen().empty());
}

TEST_F(DayStore, DeleteDay_RemovesOnlyTheFirstEntryOfTheDate)
{
    Load({L"2004-02-13      9 x", L"2004-02-12      1 a", L"2004-02-12      2 b", L"2004-02-01      3 c"});
    DeleteDay(2004, 2, 12);
    EXPECT_THAT(Entries(), ElementsAre(DayEntry{2004, 2, 13, 9, L"x"}, DayEntry{2004, 2, 12, 2, L"b"},
                                       DayEntry{2004, 2, 1, 3, L"c"}));
    EXPECT_TRUE(IsJournalChanged());
}

TEST_F(DayStore, DeleteDay_LeavesTheEmptyEntryInThePlaceThatWasLast)
{
    Load({L"2004-02-13      9 x", L"2004-02-12      1 a"});
    DeleteDay(2004, 2, 13);
    EXPECT_EQ(days[0].route, L"a");
    EXPECT_EQ(days[1], DayEntry{});
    DeleteDay(2004, 2, 12);
    EXPECT_EQ(days[0], DayEntry{});
    EXPECT_EQ(dayCount, 0);
}

TEST_F(DayStore, DeleteDay_ComparesDatesAsOneNumberWhereASearchComparesTheFields)
{
    Load({L"2004-02- 1      1 a"});
    AddDay(2004, 2, 112, 2, L"day 112 of February");
    EXPECT_EQ(GetDayEntry(2004, 3, 12).distance, -1.0);
    DeleteDay(2004, 3, 12);
    EXPECT_THAT(Entries(), ElementsAre(DayEntry{2004, 2, 1, 1, L"a"}));
}

TEST_F(DayStore, DeleteDay_OfAnAbsentDateSaysNotFoundAndChangesNothing)
{
    MessageBoxWatcher boxes;
    Load({L"2004-02-12      1 a"});
    DeleteDay(2004, 2, 13);

    const auto seen = boxes.Seen();
    ASSERT_EQ(seen.size(), 1u);
    EXPECT_EQ(seen[0].text, L"not found");
    EXPECT_EQ(seen[0].title, L"Odomira");
    EXPECT_THAT(seen[0].buttons, ElementsAre(IDOK));
    EXPECT_FALSE(seen[0].hasIcon);
    EXPECT_EQ(dayCount, 1);
    EXPECT_FALSE(IsJournalChanged());
}

TEST_F(DayStore, GetDayEntry_ReturnsACopyOfTheFirstEntryOfTheDate)
{
    Load({L"2004-02-12      1 a", L"2004-02-12      2 b"});
    DayEntry copy = GetDayEntry(2004, 2, 12);
    EXPECT_EQ(copy, (DayEntry{2004, 2, 12, 1, L"a"}));
    copy.route = L"changed";
    EXPECT_EQ(days[0].route, L"a");
}

TEST_F(DayStore, GetYears_OfAnEmptyJournalIsOneZero)
{
    EXPECT_THAT(Numbers(GetYears()), ElementsAre(0));
}

TEST_F(DayStore, GetYears_ReturnsEachYearOnceInOrderOfAppearanceAndAZero)
{
    Load({L"2004-02-12      1 ", L"2003-02-12      1 ", L"2004-02-11      1 "});
    EXPECT_THAT(Numbers(GetYears()), ElementsAre(2004, 2003, 0));
}

TEST_F(DayStore, GetMonthsOfYear_ReturnsEachMonthOnceInOrderOfAppearanceAndAZero)
{
    Load({L"2004-02-12      1 ", L"2004-11-12      1 ", L"2003-05-01      1 ", L"2004-02-11      1 "});
    EXPECT_THAT(Numbers(GetMonthsOfYear(2004)), ElementsAre(2, 11, 0));
    EXPECT_THAT(Numbers(GetMonthsOfYear(2003)), ElementsAre(5, 0));
}

TEST_F(DayStore, GetMonthsOfYear_OfAYearWithoutEntriesHasNoUpperBound)
{
    Load({L"2004-02-12      1 "});
    const NumberArray months = GetMonthsOfYear(2005);
    EXPECT_EQ(ErrorOf([&] { months.UpperBound(); }), ErrorNumber::SubscriptOutOfRange);
    EXPECT_EQ(ErrorOf([&] { months[0]; }), ErrorNumber::SubscriptOutOfRange);
}

TEST_F(DayStore, GetTakenDays_MarksTheDaysWithEntriesOfThatMonthOnly)
{
    Load({L"2004-03-31      1 ", L"2004-03-01      1 ", L"2004-02-12      1 ", L"2003-03-07      1 "});
    EXPECT_THAT(TakenDays(2004, 3), ElementsAre(1, 31));
}

TEST_F(DayStore, GetTakenDays_MarksTheDaysThatTheMonthDoesNotHave)
{
    EXPECT_THAT(TakenDays(2001, 2), ElementsAre(29, 30, 31));
    EXPECT_THAT(TakenDays(2004, 2), ElementsAre(30, 31));
    EXPECT_THAT(TakenDays(2000, 2), ElementsAre(30, 31));
    EXPECT_THAT(TakenDays(1900, 2), ElementsAre(29, 30, 31));
    for (const std::int16_t month : std::initializer_list<std::int16_t>{4, 6, 9, 11}) {
        EXPECT_THAT(TakenDays(2004, month), ElementsAre(31)) << month;
    }
    for (const std::int16_t month : std::initializer_list<std::int16_t>{-1, 0, 1, 3, 5, 7, 8, 10, 12, 13, 99}) {
        EXPECT_TRUE(TakenDays(2004, month).empty()) << month;
    }
}

TEST_F(DayStore, GetTakenDays_OffersTheLeapDayEvenWhenItHasAnEntry)
{
    Load({L"2004-02-29      1 ", L"2001-02-29      1 "});
    EXPECT_THAT(TakenDays(2004, 2), ElementsAre(30, 31));
    EXPECT_THAT(TakenDays(2001, 2), ElementsAre(29, 30, 31));
}

TEST_F(DayStore, GetTakenDays_FailsOnADayNumberThatNoMonthHas)
{
    Load({L"2004-03-00      1 ", L"2004-04-32      1 "});
    EXPECT_THAT(TakenDays(2004, 3), ElementsAre(0));
    EXPECT_EQ(ErrorOf([] { GetTakenDays(2004, 4); }), ErrorNumber::SubscriptOutOfRange);
    Load({L"2004-05--1      1 "});
    EXPECT_EQ(ErrorOf([] { GetTakenDays(2004, 5); }), ErrorNumber::SubscriptOutOfRange);
    EXPECT_TRUE(TakenDays(2004, 1).empty());
}
