#pragma once

#include "data/DataInterface.h"

#include <list>
#include <random>
#include <string>
#include <vector>

struct Date {
    std::int16_t year;
    std::int16_t month;
    std::int16_t day;

    friend bool operator==(const Date&, const Date&) = default;
};

/// A second implementation of the rules of the store: a plain list.
class JournalModel {
public:
    void Add(Date date, double distance, const std::wstring& route);
    void Replace(Date date, double distance, const std::wstring& route);
    /// False if there is no such date.
    bool Delete(Date date);
    bool Has(Date date) const;
    DayEntry Get(Date date) const;

    std::vector<std::int16_t> Years() const;
    std::vector<std::int16_t> MonthsOf(std::int16_t year) const;
    /// By day number; empty if an entry of the month has a day number outside 0..31.
    std::vector<bool> TakenDays(std::int16_t year, std::int16_t month) const;

    const std::list<DayEntry>& Entries() const { return list_; }
    bool Changed() const { return changed_; }
    void ForgetChanges() { changed_ = false; }
    /// Copies the list from the store.
    void TakeFromStore();

private:
    std::list<DayEntry> list_;
    bool changed_ = false;
};

/// Dates near each other, so that they often meet, or any three numbers of 16 bits.
enum class DateChoice { Near, Any };

/// A user with a seed: distances and routes of all kinds.
class RandomUser {
public:
    explicit RandomUser(std::uint32_t seed, DateChoice choice = DateChoice::Near) : random_(seed), choice_(choice) {}

    int Pick(int from, int to) { return std::uniform_int_distribution(from, to)(random_); }

    Date AnyDate();
    double AnyDistance();
    std::wstring AnyRoute();

private:
    std::int16_t AnyNumber(int usualFrom, int usualTo);

    std::mt19937 random_;
    DateChoice choice_;
};

/// One operation, done to the store and to the model. What it answers is compared. Deleting a date that is missing
/// raises a message box, so it is only done where boxes are cheap.
void DoSomething(RandomUser& user, JournalModel& model, bool deletesMissingDates = false);

/// Fails the running test unless both hold the same journal and the store is whole.
void ExpectSameJournal(const JournalModel& model, std::int64_t step);
