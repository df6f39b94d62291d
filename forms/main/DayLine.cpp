#include "forms/main/DayLine.h"

#include "data/DayFields.h"
#include "platform/Conversions.h"
#include "platform/RuntimeError.h"

namespace {

/// Stands for a distance that the line does not show; the store's own sign for no entry is another.
constexpr double noDistanceShown = -2.0;

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
            .distance = DistanceIn(Field(line, 12, 17)),
            .route = RouteField(line)};
}
