#include "platform/system/Clock.h"

#include <windows.h>

#include <optional>

namespace {

std::optional<CalendarDay> standingAt;

} // namespace

CalendarDay Clock::Today()
{
    if (standingAt) {
        return *standingAt;
    }
    SYSTEMTIME now{};
    GetLocalTime(&now);
    return {static_cast<std::int16_t>(now.wYear), static_cast<std::int16_t>(now.wMonth),
            static_cast<std::int16_t>(now.wDay)};
}

void Clock::StandStillAt(const CalendarDay& day)
{
    standingAt = day;
}

void Clock::RunAgain()
{
    standingAt.reset();
}
