#pragma once

#include "platform/RuntimeError.h"

#include <optional>
#include <ostream>

inline void PrintTo(ErrorNumber number, std::ostream* out)
{
    *out << "error " << static_cast<int>(number);
}

/// The run-time error that the action ends with, if it ends with one.
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
