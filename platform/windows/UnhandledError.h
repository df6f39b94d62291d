#pragma once

#include "platform/windows/ModalOwner.h"

#include <exception>

/// Shows an exception that no code has handled: "Run-time error '6':", an empty line and the description. Allocates no
/// memory, because there may be none.
void ShowUnhandledError(const std::exception& error) noexcept;

/// Calls the operation and shows its exception as above. Returns false after an exception. Every message of every
/// window is handled within it, because no exception may reach Windows.
template <class Operation>
bool Guarded(const Operation& operation) noexcept
{
    try {
        operation();
        return true;
    } catch (const CommandEnded&) {
        return false;
    } catch (const std::exception& error) {
        ShowUnhandledError(error);
        return false;
    }
}
