#pragma once

#include "data/NumberArray.h"

#include <array>
#include <cstdint>
#include <string>
#include <vector>

/// One day of the journal. As it stands here it is the empty entry: what a search answers that finds nothing.
struct DayEntry {
    std::int16_t year = 0;
    std::int16_t month = 0;
    std::int16_t day = 0;
    double distance = -1.0; ///< in the unit of the settings; -1 no entry, -2 a day confirmed without a distance
    std::wstring route;

    friend bool operator==(const DayEntry&, const DayEntry&) = default;
};

/// The journal: every day entry of the program, and the file that keeps them. All windows read and change it through
/// these operations; they name a day by year, month and day as three 16-bit numbers, which need not be a date of the
/// calendar.
///
/// Entries stand newest first as far as AddDay put them there; nothing ever sorts them. A date may occur twice, a
/// search takes the first. At most 20480 entries fit, the next one stops with Overflow and changes nothing.
namespace DataInterface {

// What the store holds, to look at. Only the operations below can change it.

extern const std::vector<DayEntry>& days; ///< index 0..dayCapacity; the entries are at 0..dayCount - 1, the rest spare
extern const std::int16_t& dayCapacity;   ///< the last index of days
extern const std::int16_t& dayCount;      ///< number of entries
extern const bool& journalChanged;        ///< something is not saved yet
extern const std::wstring& journalPath;   ///< full path of the journal file, known from the first LoadJournal on

bool IsJournalChanged();

/// Forgets that something is unsaved; saves nothing.
void ClearJournalChanged();

/// The years of the journal in order of first appearance, with one spare 0 behind them. An empty journal gives {0}.
NumberArray GetYears();

/// The months of the year in order of first appearance, with one spare 0 behind them. A year without entries gives an
/// array without elements.
NumberArray GetMonthsOfYear(std::int16_t year);

/// A copy of the first entry of this date, or the empty entry.
DayEntry GetDayEntry(std::int16_t year, std::int16_t month, std::int16_t day);

/// Puts a new entry in front of the first one that is older. If none is older it is placed before the last entry, and
/// the journal file keeps that order. Whether the date is taken already makes no difference. Throws Overflow if the
/// store is full.
void AddDay(std::int16_t year, std::int16_t month, std::int16_t day, double distance, const std::wstring& route);

/// Gives the first entry of this date another distance and route. Without such an entry nothing happens.
void ReplaceDay(std::int16_t year, std::int16_t month, std::int16_t day, double distance, const std::wstring& route);

/// Removes the first entry of this date, or tells the user "not found".
void DeleteDay(std::int16_t year, std::int16_t month, std::int16_t day);

/// By day number 0..31: true where the month has an entry on that day, and where it has no such day. In a leap year 29
/// February is always offered, also when it has an entry. Throws SubscriptOutOfRange if an entry of the month has a day
/// number outside 0..31.
std::array<bool, 32> GetTakenDays(std::int16_t year, std::int16_t month);

/// Empties the store and fills it from "datasource.jrn" in the program's folder, which is created if it is missing.
/// What cannot be read is told to the user and left out.
void LoadJournal();

/// Writes the store over the journal file. Errors go to the caller, with the journal still counted as changed. Saving
/// an empty journal leaves the file open until the program ends: later saves of this run then fail with
/// FileAlreadyOpen.
void SaveJournal();

/// Full path of the journal in a folder, whether or not the folder's name ends in "\".
std::wstring JournalPathIn(const std::wstring& folder);

/// Whether the journal is there: a hidden file, or a folder of that name, does not count.
bool FileExists(const std::wstring& path);

/// Appends every entry of the file to the store, in the file's order. A line that cannot be read is told to the user
/// and skipped.
void ReadJournalFile(const std::wstring& path);

/// Appends the entry of one line to the store; a line that begins with an apostrophe is a comment. Throws TypeMismatch
/// or Overflow, and then nothing has been added.
void ParseJournalLine(const std::wstring& line);

/// Cuts the file to nothing and writes the two header lines and one line for each entry.
void WriteJournalFile(const std::wstring& path);

} // namespace DataInterface
