// Writes and reads journals that the dialogs can create, and expects the entered days.

#include "forms/entry/DateControls.h"
#include "forms/entry/DistanceText.h"
#include "forms/entry/RouteText.h"
#include "platform/system/Conversions.h"
#include "tests/data/StoreUnderTest.h"
#include "tests/soak/Amounts.h"
#include "tests/soak/QuickAnswers.h"
#include "tests/support/TemporaryFolder.h"

#include <algorithm>
#include <random>

using DataInterface::dayCount;
using DataInterface::LoadJournal;
using DataInterface::SaveJournal;

namespace {

/// Generates random input that the two day dialogs accept.
class Typist {
public:
    explicit Typist(std::uint32_t seed) : random_(seed), separator_(DecimalSeparator()) {}

    int Pick(int from, int to) { return std::uniform_int_distribution(from, to)(random_); }

    std::int16_t Year() { return static_cast<std::int16_t>(Pick(0, 9) == 0 ? Pick(1900, 2100) : Pick(2001, 2006)); }
    std::int16_t Month() { return static_cast<std::int16_t>(Pick(1, 12)); }

    /// A distance as the dialogs store it. Tries random texts until one is accepted.
    double Distance()
    {
        if (Pick(0, 9) == 0) {
            return -2;
        }
        for (;;) {
            const std::wstring typed = Pick(0, 1) == 0 ? Number() : Characters();
            if (IsDistance(typed) && DistanceOf(typed) >= 0 && typed.size() <= 6) {
                return DistanceOf(typed);
            }
        }
    }

    /// Any characters that can be typed or pasted.
    std::wstring Route()
    {
        std::wstring typed;
        for (int left = Pick(0, 7) == 0 ? Pick(0, 400) : Pick(0, 30); left > 0; --left) {
            typed += static_cast<wchar_t>(Pick(0, 20) == 0 ? Pick(1, 0xFFFF) : Pick(32, 255));
        }
        return RouteOf(typed);
    }

private:
    std::wstring Number()
    {
        std::wstring typed = std::to_wstring(Pick(0, 99999));
        typed.insert(static_cast<std::size_t>(Pick(0, static_cast<int>(typed.size()))), separator_);
        return typed;
    }

    std::wstring Characters()
    {
        const std::wstring keys = L"0123456789+- " + separator_;
        std::wstring typed;
        for (int left = Pick(1, 6); left > 0; --left) {
            typed += keys[static_cast<std::size_t>(Pick(0, static_cast<int>(keys.size()) - 1))];
        }
        return typed;
    }

    std::mt19937 random_;
    std::wstring separator_;
};

/// Adds a day as the add dialog does: one that the dialog lists.
void Add(Typist& typist)
{
    const std::int16_t year = typist.Year();
    const std::int16_t month = typist.Month();
    const auto taken = DataInterface::GetTakenDays(year, month);
    std::vector<std::int16_t> free;
    for (std::int16_t day = 1; day <= 31; ++day) {
        if (!taken.at(static_cast<std::size_t>(day))) {
            free.push_back(day);
        }
    }
    if (!free.empty()) {
        const auto chosen = static_cast<std::size_t>(typist.Pick(0, static_cast<int>(free.size()) - 1));
        DataInterface::AddDay(year, month, free[chosen], typist.Distance(), typist.Route());
    }
}

/// Edits a day as the edit dialog does: the date is unchanged or any other date.
void Edit(Typist& typist)
{
    const DayEntry& old = DataInterface::days[static_cast<std::size_t>(typist.Pick(0, dayCount - 1))];
    if (typist.Pick(0, 1) == 0) {
        DataInterface::ReplaceDay(old.year, old.month, old.day, typist.Distance(), typist.Route());
        return;
    }
    DataInterface::DeleteDay(old.year, old.month, old.day);
    const auto day = static_cast<std::int16_t>(typist.Pick(1, 31));
    DataInterface::AddDay(typist.Year(), typist.Month(), day, typist.Distance(), typist.Route());
}

void BeginAnEmptyJournal()
{
    WriteBytes(DataInterface::journalPath, "");
    LoadJournal();
}

/// Creates a journal of about this number of entries, at least one.
void KeepAJournal(Typist& typist, int entries)
{
    BeginAnEmptyJournal();
    Add(typist);
    for (int left = entries; left > 1; --left) {
        const int what = typist.Pick(0, 9);
        if (what < 8) {
            Add(typist);
        } else {
            Edit(typist);
        }
    }
}

class RoundTripSoak : public StoreUnderTest {
protected:
    void TearDown() override
    {
        report_.Did(journals_, "journals");
        report_.Did(entries_, "entries saved and read again");
        StoreUnderTest::TearDown();
    }

    void SaveAndReadAgain()
    {
        const std::vector<DayEntry> entered = Entries();
        SaveJournal();
        QuickAnswers::Forget();
        LoadJournal();
        ++journals_;
        entries_ += dayCount;
        ASSERT_EQ(QuickAnswers::Count(), 0);
        ASSERT_EQ(static_cast<std::size_t>(dayCount), entered.size());
        const std::vector<DayEntry> read = Entries();
        const auto [before, after] = std::ranges::mismatch(entered, read);
        if (before != entered.end()) {
            FAIL() << before->year << '-' << before->month << '-' << before->day << ' ' << before->distance << ' '
                   << testing::PrintToString(before->route) << " was read as " << after->year << '-' << after->month
                   << '-' << after->day << ' ' << after->distance << ' ' << testing::PrintToString(after->route);
        }
    }

    Typist typist_{Seed()};
    std::int64_t journals_ = 0;
    std::int64_t entries_ = 0;
    ClosingReport report_;
};

} // namespace

TEST_F(RoundTripSoak, InputOfTheDialogsIsReadBack)
{
    const std::int64_t wanted = Amount(20, 2000);
    for (std::uint32_t seed = Seed(); journals_ < wanted; ++seed) {
        SCOPED_TRACE(seed);
        Typist typist(seed);
        KeepAJournal(typist, typist.Pick(1, 250));
        ASSERT_NO_FATAL_FAILURE(SaveAndReadAgain());
    }
}

TEST_F(RoundTripSoak, AJournalOfManyYearsIsReadBack)
{
    Typist typist(Seed());
    KeepAJournal(typist, static_cast<int>(Amount(1200, 6000)));
    SaveAndReadAgain();
}

TEST_F(RoundTripSoak, EveryCharacterOfARouteIsReadBack)
{
    constexpr int inOneRoute = 64;
    for (int first = 1; first < 0x10000; first += inOneRoute) {
        std::wstring typed;
        for (int character = first; character < std::min(first + inOneRoute, 0x10000); ++character) {
            typed += static_cast<wchar_t>(character == '\r' || character == '\n' ? ' ' : character);
        }
        DataInterface::AddDay(2004, 2, 12, first, RouteOf(typed));
    }
    SaveAndReadAgain();
}

TEST_F(RoundTripSoak, EveryDistanceOfSixDigitsIsReadBack)
{
    const std::wstring separator = DecimalSeparator();
    const int step = static_cast<int>(Amount(997, 7));
    for (int places = 0; places <= 5; ++places) {
        const int from = typist_.Pick(0, step - 1);
        BeginAnEmptyJournal();
        for (int number = from; number < 100000 && dayCount < 20000; number += step) {
            std::wstring typed = std::to_wstring(number);
            typed.insert(0, static_cast<std::size_t>(std::max(0, places - static_cast<int>(typed.size()))), L'0');
            typed.insert(typed.size() - static_cast<std::size_t>(places), separator);
            if (IsDistance(typed)) {
                DataInterface::AddDay(2004, 2, 12, DistanceOf(typed), L"");
            }
        }
        ASSERT_NO_FATAL_FAILURE(SaveAndReadAgain());
    }
}
