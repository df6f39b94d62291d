#pragma once

#include <exception>

/// The one place that errors reach which nobody handled: a message box "Run-time error '6':", a blank line and the
/// description. The operation has stopped; the program and its data live on.
void ShowUnhandledError(const std::exception& error);

/// Runs an operation; an error that it lets through is shown as above. Returns false when it was stopped by an error.
/// Nothing is set up before the guard stands: every message of every window goes through here, and none may throw into
/// the system.
template <class Operation>
bool Guarded(const Operation& operation) noexcept
{
    try {
        operation();
        return true;
    } catch (const std::exception& error) {
        ShowUnhandledError(error);
        return false;
    }
}
