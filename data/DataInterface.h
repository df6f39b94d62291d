#pragma once

#include "data/NumberArray.h"

#include <array>
#include <cstdint>
#include <string>
#include <vector>

/// An entry of the journal. The default values are the empty entry, which a search returns if it finds nothing.
struct DayEntry {
    std::int16_t year = 0;
    std::int16_t month = 0;
    std::int16_t day = 0;
    double distance = -1.0; ///< in the unit of the settings; -1: no entry, -2: a day without a distance
    std::wstring route;

    friend bool operator==(const DayEntry&, const DayEntry&) = default;
};

/// The journal in memory and its file. A day is three 16-bit numbers, year, month and day, which need not be a date of
/// the calendar.
///
/// AddDay inserts entries with the newest first, but nothing sorts them. A date may occur twice; a search returns the
/// first. The journal holds at most 20480 entries: the next one throws Overflow and changes nothing.
namespace DataInterface {

// The state of the journal, read-only.

extern const std::vector<DayEntry>& days; ///< index 0..dayCapacity; the entries are at 0..dayCount - 1
extern const std::int16_t& dayCapacity;   ///< the last index of days
extern const std::int16_t& dayCount;      ///< number of entries
extern const bool& journalChanged;        ///< there are unsaved changes
extern const std::wstring& journalPath;   ///< full path of the journal file; set by LoadJournal

bool IsJournalChanged();

/// Clears journalChanged. Saves nothing.
void ClearJournalChanged();

/// Sets journalChanged.
void MarkJournalChanged();

/// The years of the journal in the order of their first entries, followed by a 0. An empty journal returns {0}.
NumberArray GetYears();

/// The months of the year in the order of their first entries, followed by a 0. A year without entries returns an array
/// without elements.
NumberArray GetMonthsOfYear(std::int16_t year);

/// A copy of the first entry of this date, or the empty entry.
DayEntry GetDayEntry(std::int16_t year, std::int16_t month, std::int16_t day);

/// Inserts an entry before the first older one, or before the last entry if none is older. The date may already have an
/// entry. Throws Overflow if the journal is full. Allocates no memory after a DeleteDay.
void AddDay(std::int16_t year, std::int16_t month, std::int16_t day, double distance, std::wstring route);

/// Changes the distance and the route of the first entry of this date. Does nothing if there is none.
void ReplaceDay(std::int16_t year, std::int16_t month, std::int16_t day, double distance, const std::wstring& route);

/// Removes the first entry of this date. Shows the message "not found" if there is none.
void DeleteDay(std::int16_t year, std::int16_t month, std::int16_t day);

/// For each day number 0..31, true if the month has an entry on that day or does not have that day. 29 February of a
/// leap year is always false, also if it has an entry. Throws SubscriptOutOfRange if an entry of the month has a day
/// number outside 0..31.
std::array<bool, 32> GetTakenDays(std::int16_t year, std::int16_t month);

/// Replaces the journal by the content of "datasource.jrn" in the folder of the program. Creates the file if it does
/// not exist. Shows a message for each line that cannot be read, and skips it. If it throws, the journal is as before.
void LoadJournal();

/// Overwrites the journal file. If it throws, journalChanged stays set and the file may contain only a part of the
/// journal. Saving an empty journal leaves the file open until the program ends: later saves throw FileAlreadyOpen.
void SaveJournal();

/// The path of the journal file in a folder, with or without a "\" at its end.
std::wstring JournalPathIn(const std::wstring& folder);

/// True if the path is a file that is neither hidden nor a system file.
bool FileExists(const std::wstring& path);

/// Appends the entries of the file to the journal. Shows a message for each line that cannot be read, and skips it.
void ReadJournalFile(const std::wstring& path);

/// Appends the entry of a line to the journal. A line that begins with an apostrophe is a comment. Throws TypeMismatch
/// or Overflow and then adds nothing.
void ParseJournalLine(const std::wstring& line);

/// Truncates the file and writes the two header lines and one line for each entry.
void WriteJournalFile(const std::wstring& path);

} // namespace DataInterface
