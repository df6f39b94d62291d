#pragma once

#include "platform/system/RuntimeError.h"

#include <cstdint>
#include <limits>

/// Converts the result of a calculation to 16 bits: the type of years, months, days, counters and text ids. Throws
/// Overflow outside -32768..32767; a counter that wrapped would lose days of the journal.
inline std::int16_t CheckedInt16(std::int64_t value)
{
    if (value < std::numeric_limits<std::int16_t>::min() || value > std::numeric_limits<std::int16_t>::max()) {
        throw RuntimeError(ErrorNumber::Overflow);
    }
    return static_cast<std::int16_t>(value);
}

/// The same for 32 bits, such as a date as one number.
inline std::int32_t CheckedInt32(std::int64_t value)
{
    if (value < std::numeric_limits<std::int32_t>::min() || value > std::numeric_limits<std::int32_t>::max()) {
        throw RuntimeError(ErrorNumber::Overflow);
    }
    return static_cast<std::int32_t>(value);
}
