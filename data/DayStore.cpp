#include "data/Calendar.h"
#include "data/JournalStore.h"

#include "platform/system/CheckedArithmetic.h"
#include "platform/windows/MsgBox.h"

#include <algorithm>
#include <ranges>
#include <span>
#include <utility>

namespace DataInterface {

JournalStore store;

const std::vector<DayEntry>& days = store.days;
const std::int16_t& dayCapacity = store.dayCapacity;
const std::int16_t& dayCount = store.dayCount;
const bool& journalChanged = store.journalChanged;
const std::wstring& journalPath = store.journalPath;

void GrowStore()
{
    const std::int16_t capacity = CheckedInt16(std::int64_t{store.dayCapacity} * 2);
    store.days.resize(static_cast<std::size_t>(capacity) + 1);
    store.dayCapacity = capacity;
}

} // namespace DataInterface

namespace {

using DataInterface::store;

std::span<DayEntry> Entries()
{
    return std::span(store.days).first(static_cast<std::size_t>(store.dayCount));
}

/// A date as one number: 20040212 for 12 February 2004.
std::int32_t DateKey(std::int16_t year, std::int16_t month, std::int16_t day)
{
    return CheckedInt32(std::int64_t{year} * 10000 + std::int64_t{month} * 100 + day);
}

std::int32_t DateKey(const DayEntry& entry)
{
    return DateKey(entry.year, entry.month, entry.day);
}

/// The first entry of this date, or the end of Entries().
auto FindDay(std::int16_t year, std::int16_t month, std::int16_t day)
{
    return std::ranges::find_if(Entries(), [=](const DayEntry& entry) {
        return entry.year == year && entry.month == month && entry.day == day;
    });
}

/// Appends the value, unless the array contains it, and keeps a 0 at the end.
void CollectDistinct(NumberArray& collected, std::int16_t& count, std::int16_t value)
{
    for (int i = 0; i < count; ++i) {
        if (collected[i] == value) {
            return;
        }
    }
    count = CheckedInt16(count + 1);
    collected.ResizeTo(count);
    collected.Set(count - 1, value);
}

/// The index for a new entry: that of the first older entry, or of the last entry if none is older.
/// Kept on purpose: "The oldest day goes before the last entry".
std::size_t PositionFor(std::int32_t key)
{
    std::size_t position = 0;
    for (std::size_t i = 0; i < Entries().size(); ++i) {
        position = i;
        if (DateKey(store.days[i]) < key) {
            break;
        }
    }
    return position;
}

void MarkMissingDays(std::array<bool, 32>& taken, std::int16_t year, std::int16_t month)
{
    std::fill(taken.begin() + 1 + DaysInMonth(year, month), taken.end(), true);
    if (month == 2 && IsLeapYear(year)) {
        taken[29] = false; // Kept on purpose: "29 February is always free".
    }
}

} // namespace

bool DataInterface::IsJournalChanged()
{
    return store.journalChanged;
}

void DataInterface::ClearJournalChanged()
{
    store.journalChanged = false;
}

void DataInterface::MarkJournalChanged()
{
    store.journalChanged = true;
}

NumberArray DataInterface::GetYears()
{
    NumberArray years;
    years.ResizeTo(0);
    std::int16_t count = 0;
    for (const DayEntry& entry : Entries()) {
        CollectDistinct(years, count, entry.year);
    }
    return years;
}

NumberArray DataInterface::GetMonthsOfYear(std::int16_t year)
{
    NumberArray months; // Kept on purpose: "An unknown year has an array without elements".
    std::int16_t count = 0;
    for (const DayEntry& entry : Entries()) {
        if (entry.year == year) {
            CollectDistinct(months, count, entry.month);
        }
    }
    return months;
}

DayEntry DataInterface::GetDayEntry(std::int16_t year, std::int16_t month, std::int16_t day)
{
    const auto found = FindDay(year, month, day);
    return found != Entries().end() ? *found : DayEntry{};
}

void DataInterface::AddDay(std::int16_t year, std::int16_t month, std::int16_t day, double distance, std::wstring route)
{
    DayEntry entry{year, month, day, distance, std::move(route)};
    if (store.dayCapacity <= store.dayCount) {
        GrowStore();
    }
    const std::size_t position = PositionFor(DateKey(entry));
    const std::int16_t newCount = CheckedInt16(store.dayCount + 1);

    const auto first = store.days.begin();
    std::move_backward(first + static_cast<std::ptrdiff_t>(position), first + store.dayCount, first + newCount);
    store.days[position] = std::move(entry);
    store.dayCount = newCount;
    store.journalChanged = true;
}

void DataInterface::ReplaceDay(std::int16_t year, std::int16_t month, std::int16_t day, double distance,
                               const std::wstring& route)
{
    const auto found = FindDay(year, month, day);
    if (found == Entries().end()) {
        return;
    }
    found->route = route;
    found->distance = distance;
    store.journalChanged = true;
}

void DataInterface::DeleteDay(std::int16_t year, std::int16_t month, std::int16_t day)
{
    // Kept on purpose: "Delete compares dates as one number".
    const std::int32_t key = DateKey(year, month, day);
    const auto entries = Entries();
    const auto found = std::ranges::find_if(entries, [key](const DayEntry& entry) { return DateKey(entry) == key; });
    if (found == entries.end()) {
        MsgBox(L"not found");
        return;
    }
    std::move(found + 1, entries.end(), found);
    entries.back() = DayEntry{};
    --store.dayCount;
    store.journalChanged = true;
}

std::array<bool, 32> DataInterface::GetTakenDays(std::int16_t year, std::int16_t month)
{
    std::array<bool, 32> taken{};
    for (const DayEntry& entry : Entries()) {
        if (entry.year != year || entry.month != month) {
            continue;
        }
        if (entry.day < 0 || entry.day > 31) {
            throw RuntimeError(ErrorNumber::SubscriptOutOfRange);
        }
        taken[static_cast<std::size_t>(entry.day)] = true;
    }
    MarkMissingDays(taken, year, month);
    return taken;
}
