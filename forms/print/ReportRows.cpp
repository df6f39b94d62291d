#include "forms/print/ReportRows.h"

#include "data/DataInterface.h"
#include "platform/system/CheckedArithmetic.h"
#include "platform/system/Conversions.h"
#include "platform/system/RuntimeError.h"

#include <algorithm>
#include <cstddef>

using std::chrono::sys_days;
using std::chrono::weekday;
using std::chrono::year_month_day;

namespace {

constexpr std::size_t longestWrappedLine = 70;

/// The number of full weeks from the Sunday on or before 1 January to the day.
std::int64_t WeeksSinceNewYear(sys_days day)
{
    const sys_days newYear = year_month_day(day).year() / std::chrono::January / 1;
    const auto sunday = newYear - (weekday(newYear) - std::chrono::Sunday);
    return (day - sunday) / std::chrono::weeks(1);
}

} // namespace

sys_days ReportDay(const std::wstring& text)
{
    const std::size_t monthAt = text.find(L'-');
    const std::size_t dayAt = monthAt == std::wstring::npos ? monthAt : text.find(L'-', monthAt + 1);
    if (dayAt == std::wstring::npos) {
        throw RuntimeError(ErrorNumber::TypeMismatch);
    }
    const std::chrono::year year(ToInt16(text.substr(0, monthAt)));
    const int month = ToInt16(text.substr(monthAt + 1, dayAt - monthAt - 1));
    const int day = ToInt16(text.substr(dayAt + 1));
    const auto date = year / month / day;
    if (month < 1 || month > 12 || day < 1 || day > 31 || !date.ok()) {
        throw RuntimeError(ErrorNumber::TypeMismatch);
    }
    return date;
}

std::int16_t WeekNumber(sys_days day)
{
    return CheckedInt16(WeeksSinceNewYear(day) + 1);
}

ReportRow RowOfDay(sys_days day)
{
    const year_month_day date(day);
    const auto month = static_cast<unsigned>(date.month());
    const auto dayOfMonth = static_cast<unsigned>(date.day());
    const DayEntry entry = DataInterface::GetDayEntry(CheckedInt16(static_cast<int>(date.year())), CheckedInt16(month),
                                                      CheckedInt16(dayOfMonth));
    ReportRow row;
    const weekday dayOfWeek(day);
    if (dayOfWeek == std::chrono::Monday) {
        row.week = L"v " + ToText(WeekNumber(day));
    }
    row.weekend = dayOfWeek == std::chrono::Saturday || dayOfWeek == std::chrono::Sunday;
    row.date = ToDigits(static_cast<int>(date.year()), 4) + L"-" + ToDigits(static_cast<int>(month), 2) + L"-" +
               ToDigits(static_cast<int>(dayOfMonth), 2);
    if (entry.distance >= 0) {
        row.distance = ToText(entry.distance);
        row.amount = ToDouble(row.distance);
    }
    row.route = entry.route;
    return row;
}

std::wstring SumText(double sum)
{
    return (sum < 0 ? L"" : L" ") + ToText(sum);
}

std::vector<std::wstring_view> WrapRoute(std::wstring_view route, std::span<const double> widths, double limit)
{
    std::vector<std::wstring_view> lines;
    std::size_t begin = 0;
    const auto width = [&](std::size_t end) { return widths[end - 1] - (begin == 0 ? 0 : widths[begin - 1]); };
    while (begin < route.size() && width(route.size()) > limit) {
        std::size_t end = std::min(begin + longestWrappedLine, route.size());
        while (end > begin + 1 && width(end) > limit) {
            --end;
        }
        lines.push_back(route.substr(begin, end - begin));
        begin = end;
    }
    if (begin < route.size() || lines.empty()) {
        lines.push_back(route.substr(begin));
    }
    return lines;
}
