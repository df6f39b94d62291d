#pragma once

#include <exception>
#include <functional>

/// The one place that errors reach which nobody handled: a message box "Run-time error '6':", a blank line and the
/// description. The operation has stopped; the program and its data live on.
void ShowUnhandledError(const std::exception& error);

/// Runs an operation; an error that it lets through is shown as above. Returns false when it was stopped by an error.
bool Guarded(const std::function<void()>& operation) noexcept;
