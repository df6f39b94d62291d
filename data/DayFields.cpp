#include "data/DayFields.h"

#include "platform/system/Conversions.h"

std::wstring LineOfDay(const DayEntry& entry, std::wstring distance)
{
    if (distance.size() < distancePlaces) {
        distance.insert(0, distancePlaces - distance.size(), L' ');
    }
    return ToText(int{entry.year}) + L'-' + ToDigits(entry.month, 2) + L'-' + ToDigits(entry.day, 2) + L' ' + distance +
           L' ' + entry.route;
}

std::wstring Field(const std::wstring& line, std::size_t first, std::size_t last)
{
    return first <= line.size() ? line.substr(first - 1, last - first + 1) : std::wstring();
}

std::wstring RouteField(const std::wstring& line)
{
    constexpr std::size_t first = 19;
    return Field(line, first, line.size());
}
