#pragma once

#include <chrono>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

// What the report says, worked out apart from any page, so that it can be looked at without printing.

/// One line of the report's table: a calendar day, with or without an entry in the journal.
struct ReportRow {
    std::wstring week;     ///< "v 17" on Mondays, else empty
    bool weekend = false;  ///< Saturday or Sunday: the date stands on a shaded ground
    std::wstring date;     ///< "2003-04-17"
    std::wstring distance; ///< empty on a day without a distance
    double amount = 0;     ///< what the day adds to the sum: the number that `distance` shows
    std::wstring route;
};

/// The day named by "2003-04-17", in this order under every locale. Throws TypeMismatch if the text is no date.
std::chrono::sys_days ReportDay(const std::wstring& text);

/// Weeks begin on Sunday and the week of 1 January is week 1, so the year's last days may stand in week 53 or 54.
std::int16_t WeekNumber(std::chrono::sys_days day);

/// The row of a day, as the journal has it now.
ReportRow RowOfDay(std::chrono::sys_days day);

/// The sum as a plain number behind a blank, where a minus would stand.
std::wstring SumText(double sum);

/// Cuts a route into the lines it is printed on. `widths` are the widths of its beginnings, one for each character.
/// While what is left is wider than `limit`, a line takes as many characters as fit, words or not, at most 70 and at
/// least one; the last line takes the rest whole. There is always at least one line, which may be empty.
std::vector<std::wstring_view> WrapRoute(std::wstring_view route, std::span<const double> widths, double limit);
