#include "tests/data/StoreAndModel.h"

#include "tests/support/ErrorOf.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <limits>

using DataInterface::dayCapacity;
using DataInterface::dayCount;
using DataInterface::days;

namespace {

constexpr std::int16_t mostEntries = 20480;

Date DateOf(const DayEntry& entry)
{
    return {entry.year, entry.month, entry.day};
}

/// What order means for dates that need not be of the calendar.
std::int64_t Order(Date date)
{
    return date.year * std::int64_t{10000} + date.month * std::int64_t{100} + date.day;
}

/// The first entry of this date, or the end.
template <typename List>
auto Find(List& list, Date date)
{
    return std::ranges::find_if(list, [date](const DayEntry& entry) { return DateOf(entry) == date; });
}

void PutDistinct(std::vector<std::int16_t>& numbers, std::int16_t number)
{
    if (!std::ranges::count(numbers, number)) {
        numbers.push_back(number);
    }
}

std::vector<std::int16_t> Numbers(const NumberArray& array)
{
    std::vector<std::int16_t> numbers;
    if (array != NumberArray{}) {
        for (int i = 0; i <= array.UpperBound(); ++i) {
            numbers.push_back(array[i]);
        }
    }
    return numbers;
}

int LengthOf(std::int16_t year, std::int16_t month)
{
    switch (month) {
    case 2:
        return (year % 4 == 0 && year % 100 != 0) || year % 400 == 0 ? 29 : 28;
    case 4:
    case 6:
    case 9:
    case 11:
        return 30;
    default:
        return 31;
    }
}

void LookAt(Date date, const JournalModel& model)
{
    using DataInterface::GetTakenDays;
    ASSERT_EQ(DataInterface::GetDayEntry(date.year, date.month, date.day), model.Get(date));
    ASSERT_EQ(Numbers(DataInterface::GetYears()), model.Years());
    ASSERT_EQ(Numbers(DataInterface::GetMonthsOfYear(date.year)), model.MonthsOf(date.year));
    const std::vector<bool> expected = model.TakenDays(date.year, date.month);
    if (expected.empty()) {
        ASSERT_EQ(ErrorOf([=] { GetTakenDays(date.year, date.month); }), ErrorNumber::SubscriptOutOfRange);
    } else {
        ASSERT_TRUE(std::ranges::equal(GetTakenDays(date.year, date.month), expected));
    }
}

void AddOne(Date date, double distance, const std::wstring& route, JournalModel& model)
{
    const auto error = ErrorOf([&] { DataInterface::AddDay(date.year, date.month, date.day, distance, route); });
    if (model.Entries().size() == mostEntries) {
        ASSERT_EQ(error, ErrorNumber::Overflow);
        return;
    }
    ASSERT_FALSE(error);
    model.Add(date, distance, route);
}

} // namespace

void JournalModel::Add(Date date, double distance, const std::wstring& route)
{
    const DayEntry entry{date.year, date.month, date.day, distance, route};
    auto place = std::ranges::find_if(list_, [&](const DayEntry& other) { return Order(DateOf(other)) < Order(date); });
    if (place == list_.end() && !list_.empty()) {
        --place;
    }
    list_.insert(place, entry);
    changed_ = true;
}

void JournalModel::Replace(Date date, double distance, const std::wstring& route)
{
    if (const auto found = Find(list_, date); found != list_.end()) {
        found->distance = distance;
        found->route = route;
        changed_ = true;
    }
}

bool JournalModel::Delete(Date date)
{
    const auto found =
        std::ranges::find_if(list_, [&](const DayEntry& entry) { return Order(DateOf(entry)) == Order(date); });
    if (found == list_.end()) {
        return false;
    }
    list_.erase(found);
    changed_ = true;
    return true;
}

bool JournalModel::Has(Date date) const
{
    return std::ranges::any_of(list_, [&](const DayEntry& entry) { return Order(DateOf(entry)) == Order(date); });
}

DayEntry JournalModel::Get(Date date) const
{
    const auto found = Find(list_, date);
    return found == list_.end() ? DayEntry{0, 0, 0, -1.0, L""} : *found;
}

std::vector<std::int16_t> JournalModel::Years() const
{
    std::vector<std::int16_t> years;
    for (const DayEntry& entry : list_) {
        PutDistinct(years, entry.year);
    }
    years.push_back(0);
    return years;
}

std::vector<std::int16_t> JournalModel::MonthsOf(std::int16_t year) const
{
    std::vector<std::int16_t> months;
    for (const DayEntry& entry : list_) {
        if (entry.year == year) {
            PutDistinct(months, entry.month);
        }
    }
    if (!months.empty()) {
        months.push_back(0);
    }
    return months;
}

std::vector<bool> JournalModel::TakenDays(std::int16_t year, std::int16_t month) const
{
    std::vector<bool> taken(32, false);
    for (const DayEntry& entry : list_) {
        if (entry.year == year && entry.month == month) {
            if (entry.day < 0 || entry.day > 31) {
                return {};
            }
            taken[static_cast<std::size_t>(entry.day)] = true;
        }
    }
    for (int day = LengthOf(year, month) + 1; day <= 31; ++day) {
        taken[static_cast<std::size_t>(day)] = true;
    }
    if (month == 2 && LengthOf(year, month) == 29) {
        taken[29] = false; // offered also when it has an entry
    }
    return taken;
}

void JournalModel::TakeFromStore()
{
    list_.assign(days.begin(), days.begin() + dayCount);
    changed_ = DataInterface::IsJournalChanged();
}

std::int16_t RandomUser::AnyNumber(int usualFrom, int usualTo)
{
    constexpr int most = std::numeric_limits<std::int16_t>::max();
    constexpr int least = std::numeric_limits<std::int16_t>::min();
    if (choice_ == DateChoice::Any) {
        switch (Pick(0, 7)) {
        case 0:
            return static_cast<std::int16_t>(Pick(least, most));
        case 1:
            return static_cast<std::int16_t>(Pick(0, 1) == 0 ? least : most);
        case 2:
            return static_cast<std::int16_t>(Pick(-1, 101));
        default:
            break;
        }
    }
    return static_cast<std::int16_t>(Pick(usualFrom, usualTo));
}

Date RandomUser::AnyDate()
{
    const std::int16_t year = AnyNumber(2003, 2005);
    const std::int16_t month = AnyNumber(1, 12);
    return {year, month, AnyNumber(1, 31)};
}

double RandomUser::AnyDistance()
{
    return Pick(0, 9) == 0 ? -2.0 : Pick(0, 99999) / (Pick(0, 3) == 0 ? 100.0 : 10.0);
}

std::wstring RandomUser::AnyRoute()
{
    static const std::vector<std::wstring> routes{L"",           L"Office - customer visit",          L"'quoted'",
                                                  L"  indented", L"Göteborg t/r, möte på Åbygatan 7", L"trailing  "};
    return routes[static_cast<std::size_t>(Pick(0, static_cast<int>(routes.size()) - 1))];
}

void DoSomething(RandomUser& user, JournalModel& model, bool deletesMissingDates)
{
    const Date date = user.AnyDate();
    const double distance = user.AnyDistance();
    const std::wstring route = user.AnyRoute();
    switch (user.Pick(0, 9)) {
    case 0:
    case 1:
        DataInterface::ReplaceDay(date.year, date.month, date.day, distance, route);
        model.Replace(date, distance, route);
        break;
    case 2:
    case 3:
        if (deletesMissingDates || model.Has(date)) {
            DataInterface::DeleteDay(date.year, date.month, date.day);
            model.Delete(date);
        }
        break;
    case 4:
        ASSERT_NO_FATAL_FAILURE(LookAt(date, model));
        break;
    default:
        ASSERT_NO_FATAL_FAILURE(AddOne(date, distance, route, model));
        break;
    }
    if (user.Pick(0, 50) == 0) {
        DataInterface::ClearJournalChanged();
        model.ForgetChanges();
    }
}

void ExpectSameJournal(const JournalModel& model, std::int64_t step)
{
    ASSERT_EQ(static_cast<std::size_t>(dayCount), model.Entries().size()) << "step " << step;
    ASSERT_TRUE(std::equal(days.begin(), days.begin() + dayCount, model.Entries().begin())) << "step " << step;
    ASSERT_EQ(DataInterface::IsJournalChanged(), model.Changed()) << "step " << step;
    ASSERT_EQ(days.size(), static_cast<std::size_t>(dayCapacity) + 1) << "step " << step;
    ASSERT_LE(dayCount, dayCapacity) << "step " << step;
    ASSERT_TRUE(
        std::all_of(days.begin() + dayCount, days.end(), [](const DayEntry& spare) { return spare == DayEntry{}; }))
        << "step " << step;
}
