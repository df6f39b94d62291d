#include "forms/main/DayLine.h"

#include "platform/Conversions.h"
#include "platform/RuntimeError.h"

namespace {

/// Distances take at least so many characters.
constexpr std::size_t distanceWidth = 6;

/// Stands for a distance that the line does not show; the store's own sign for no entry is another.
constexpr double noDistanceShown = -2.0;

/// Characters of a line from a 1-based position; nothing where the line is too short.
std::wstring Part(const std::wstring& line, std::size_t position, std::size_t length)
{
    return line.size() < position ? std::wstring() : line.substr(position - 1, length);
}

double DistanceIn(const std::wstring& text)
{
    try {
        return ToDouble(text);
    } catch (const RuntimeError&) {
        return noDistanceShown;
    }
}

} // namespace

std::wstring DayLine(const DayEntry& entry)
{
    std::wstring distance = ToText(entry.distance);
    if (ToDouble(distance) < 0) {
        distance.clear();
    }
    if (distance.size() < distanceWidth) {
        distance.insert(0, distanceWidth - distance.size(), L' ');
    }
    return ToText(entry.year) + L"-" + FormatNumber(entry.month, L"00") + L"-" + FormatNumber(entry.day, L"00") + L" " +
           distance + L" " + entry.route;
}

std::int16_t DayOfDayLine(const std::wstring& line)
{
    return ToInt16(Part(line, 9, 2));
}

DayEntry EntryOfDayLine(const std::wstring& line)
{
    return {.year = ToInt16(Part(line, 1, 4)),
            .month = ToInt16(Part(line, 6, 2)),
            .day = DayOfDayLine(line),
            .distance = DistanceIn(Part(line, 12, distanceWidth)),
            .route = Part(line, 19, std::wstring::npos)};
}
