#pragma once

#include "platform/RuntimeError.h"

#include <cstdint>
#include <limits>

/// Brings the result of a calculation back into 16 bits. Years, months, days, counters and text ids are 16-bit numbers
/// that must stop at their limits instead of wrapping: a wrapped counter would lose days of the journal.
/// Throws Overflow outside -32768..32767.
inline std::int16_t CheckedInt16(std::int64_t value)
{
    if (value < std::numeric_limits<std::int16_t>::min() || value > std::numeric_limits<std::int16_t>::max()) {
        throw RuntimeError(ErrorNumber::Overflow);
    }
    return static_cast<std::int16_t>(value);
}

/// The same for 32-bit results, such as the comparable number of a date. Throws Overflow.
inline std::int32_t CheckedInt32(std::int64_t value)
{
    if (value < std::numeric_limits<std::int32_t>::min() || value > std::numeric_limits<std::int32_t>::max()) {
        throw RuntimeError(ErrorNumber::Overflow);
    }
    return static_cast<std::int32_t>(value);
}
