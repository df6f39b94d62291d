#pragma once

#include "platform/system/RuntimeError.h"

#include <optional>
#include <ostream>

inline void PrintTo(ErrorNumber number, std::ostream* out)
{
    *out << "error " << static_cast<int>(number);
}

/// The error that the action throws, if it throws one.
template <typename Action>
std::optional<ErrorNumber> ErrorOf(Action action)
{
    try {
        action();
        return std::nullopt;
    } catch (const RuntimeError& error) {
        return error.Number();
    }
}
