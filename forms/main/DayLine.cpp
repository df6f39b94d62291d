#include "forms/main/DayLine.h"

#include "data/DayFields.h"
#include "platform/system/Conversions.h"

namespace {

/// A line without a distance. (-1 is a day without an entry.)
constexpr double noDistanceShown = -2.0;

} // namespace

std::wstring DayLine(const DayEntry& entry)
{
    std::wstring distance = ToText(entry.distance);
    if (ToDouble(distance) < 0) {
        distance.clear();
    }
    return LineOfDay(entry, distance);
}

std::int16_t DayOfDayLine(const std::wstring& line)
{
    return ToInt16(Field(line, 9, 10));
}

DayEntry EntryOfDayLine(const std::wstring& line)
{
    return {.year = ToInt16(Field(line, 1, 4)),
            .month = ToInt16(Field(line, 6, 7)),
            .day = DayOfDayLine(line),
            .distance = TryToDouble(Field(line, 12, 17)).value_or(noDistanceShown),
            .route = RouteField(line)};
}
