#pragma once

#include <chrono>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

// The content of the report, without its drawing.

/// A row of the report: a calendar day, with or without an entry in the journal.
struct ReportRow {
    std::wstring week;     ///< "v 17" on Mondays, else empty
    bool weekend = false;  ///< Saturday or Sunday: the date is shaded
    std::wstring date;     ///< "2003-04-17"
    std::wstring distance; ///< empty on a day without a distance
    double amount = 0;     ///< the number of `distance`
    std::wstring route;
};

/// The day of a text such as "2003-04-17", in every region. Throws TypeMismatch if the text is not a date.
std::chrono::sys_days ReportDay(const std::wstring& text);

/// Weeks begin on Sunday and the week of 1 January is week 1. Kept on purpose: "Weeks begin on Sunday".
std::int16_t WeekNumber(std::chrono::sys_days day);

ReportRow RowOfDay(std::chrono::sys_days day);

/// The sum as a number. A space precedes a sum that has no minus sign.
std::wstring SumText(double sum);

/// Splits a route into lines. `widths[i]` is the width of the first i + 1 characters. While the rest is wider than
/// `limit`, a line gets as many characters as fit, at least 1 and at most 70, and may end within a word. The last line
/// gets the rest. There is at least one line, which may be empty. Kept on purpose: "Routes break inside words".
std::vector<std::wstring_view> WrapRoute(std::wstring_view route, std::span<const double> widths, double limit);
