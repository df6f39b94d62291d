// The store against a second telling of its rules: a plain list, worked with the operations of lists. Thousands of
// random operations must leave both with the same journal after every single step.

#include "tests/data/StoreUnderTest.h"
#include "tests/support/MessageBoxWatcher.h"
#include "tests/support/TemporaryFolder.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <list>
#include <random>
#include <tuple>

using DataInterface::AddDay;
using DataInterface::ClearJournalChanged;
using DataInterface::dayCapacity;
using DataInterface::dayCount;
using DataInterface::days;
using DataInterface::DeleteDay;
using DataInterface::GetDayEntry;
using DataInterface::GetYears;
using DataInterface::IsJournalChanged;
using DataInterface::journalPath;
using DataInterface::LoadJournal;
using DataInterface::ReplaceDay;
using DataInterface::SaveJournal;

namespace {

struct Date {
    std::int16_t year;
    std::int16_t month;
    std::int16_t day;

    friend auto operator<=>(const Date&, const Date&) = default; // NOLINT(modernize-use-nullptr): seen in its own code
};

class JournalModel {
public:
    void Add(Date date, double distance, const std::wstring& route)
    {
        const DayEntry entry{date.year, date.month, date.day, distance, route};
        auto place = std::ranges::find_if(list_, [&](const DayEntry& other) { return DateOf(other) < date; });
        if (place == list_.end() && !list_.empty()) {
            --place;
        }
        list_.insert(place, entry);
        changed_ = true;
    }

    void Replace(Date date, double distance, const std::wstring& route)
    {
        if (const auto found = Find(date); found != list_.end()) {
            found->distance = distance;
            found->route = route;
            changed_ = true;
        }
    }

    bool Delete(Date date)
    {
        const auto found = Find(date);
        if (found == list_.end()) {
            return false;
        }
        list_.erase(found);
        changed_ = true;
        return true;
    }

    DayEntry Get(Date date)
    {
        const auto found = Find(date);
        return found == list_.end() ? DayEntry{0, 0, 0, -1.0, L""} : *found;
    }

    std::vector<std::int16_t> Years() const
    {
        std::vector<std::int16_t> years;
        for (const DayEntry& entry : list_) {
            if (!std::ranges::count(years, entry.year)) {
                years.push_back(entry.year);
            }
        }
        years.push_back(0);
        return years;
    }

    std::vector<DayEntry> Entries() const { return {list_.begin(), list_.end()}; }
    std::size_t Count() const { return list_.size(); }
    bool Changed() const { return changed_; }
    void ForgetChanges() { changed_ = false; }

private:
    static Date DateOf(const DayEntry& entry) { return {entry.year, entry.month, entry.day}; }

    std::list<DayEntry>::iterator Find(Date date)
    {
        return std::ranges::find_if(list_, [&](const DayEntry& entry) { return DateOf(entry) == date; });
    }

    std::list<DayEntry> list_;
    bool changed_ = false;
};

std::vector<std::int16_t> Numbers(const NumberArray& array)
{
    std::vector<std::int16_t> numbers;
    for (int i = 0; i <= array.UpperBound(); ++i) {
        numbers.push_back(array[i]);
    }
    return numbers;
}

/// A user with a seed: dates from a narrow range, so that they often meet, distances and routes of all kinds.
class RandomUser {
public:
    explicit RandomUser(unsigned seed) : random_(seed) {}

    int Pick(int from, int to) { return std::uniform_int_distribution(from, to)(random_); }

    Date AnyDate()
    {
        return {static_cast<std::int16_t>(Pick(2003, 2005)), static_cast<std::int16_t>(Pick(1, 12)),
                static_cast<std::int16_t>(Pick(1, 31))};
    }

    double AnyDistance() { return Pick(0, 9) == 0 ? -2.0 : Pick(0, 99999) / (Pick(0, 3) == 0 ? 100.0 : 10.0); }

    std::wstring AnyRoute()
    {
        static const std::vector<std::wstring> routes{
            L"",           L"Office - customer visit",          L"'quoted'",
            L"  indented", L"Göteborg t/r, möte på Åbygatan 7", L"trailing  "};
        return routes[static_cast<std::size_t>(Pick(0, static_cast<int>(routes.size()) - 1))];
    }

private:
    std::mt19937 random_;
};

class DayStoreAgainstModel : public StoreUnderTest, public testing::WithParamInterface<unsigned> {
protected:
    void ExpectSameJournal(int step)
    {
        ASSERT_EQ(static_cast<std::size_t>(dayCount), model_.Count()) << "step " << step;
        ASSERT_TRUE(Entries() == model_.Entries()) << "step " << step;
        ASSERT_EQ(IsJournalChanged(), model_.Changed()) << "step " << step;
        ASSERT_EQ(days.size(), static_cast<std::size_t>(dayCapacity) + 1);
        ASSERT_LE(dayCount, dayCapacity);
        ASSERT_TRUE(
            std::all_of(days.begin() + dayCount, days.end(), [](const DayEntry& spare) { return spare == DayEntry{}; }))
            << "step " << step;
    }

    void DoSomething(RandomUser& user)
    {
        const Date date = user.AnyDate();
        const double distance = user.AnyDistance();
        const std::wstring route = user.AnyRoute();
        switch (user.Pick(0, 9)) {
        case 0:
        case 1:
            ReplaceDay(date.year, date.month, date.day, distance, route);
            model_.Replace(date, distance, route);
            break;
        case 2:
        case 3:
            // An absent date would only raise the box, which is slow; DayStoreTest looks at that.
            if (model_.Delete(date)) {
                DeleteDay(date.year, date.month, date.day);
            }
            break;
        case 4:
            ASSERT_EQ(GetDayEntry(date.year, date.month, date.day), model_.Get(date));
            ASSERT_EQ(Numbers(GetYears()), model_.Years());
            break;
        default:
            AddDay(date.year, date.month, date.day, distance, route);
            model_.Add(date, distance, route);
            break;
        }
        if (user.Pick(0, 50) == 0) {
            ClearJournalChanged();
            model_.ForgetChanges();
        }
    }

    JournalModel model_;
};

} // namespace

TEST_P(DayStoreAgainstModel, AfterEveryOperationTheJournalIsTheSame)
{
    RandomUser user(GetParam());
    for (int step = 0; step < 1200; ++step) {
        ASSERT_NO_FATAL_FAILURE(DoSomething(user));
        ASSERT_NO_FATAL_FAILURE(ExpectSameJournal(step));
    }
}

TEST_P(DayStoreAgainstModel, WhatIsSavedIsReadBackTheSame)
{
    MessageBoxWatcher boxes;
    RandomUser user(GetParam());
    for (int step = 0; step < 300; ++step) {
        ASSERT_NO_FATAL_FAILURE(DoSomething(user));
    }
    const auto before = Entries();
    SaveJournal();
    EXPECT_FALSE(IsJournalChanged());
    AddDay(2004, 1, 1, 1, L"forgotten by the revert");
    LoadJournal();
    EXPECT_TRUE(Entries() == before);
    EXPECT_FALSE(IsJournalChanged());

    const std::string saved = BytesOf(journalPath);
    SaveJournal();
    EXPECT_EQ(BytesOf(journalPath), saved);
    EXPECT_TRUE(boxes.Seen().empty());
}

INSTANTIATE_TEST_SUITE_P(Seeds, DayStoreAgainstModel, testing::Range(1u, 13u));
