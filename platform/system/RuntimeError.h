#pragma once

#include <exception>
#include <string_view>

/// The errors that this program raises. Users see the numbers ("Run-time error '61':"), so they never change.
enum class ErrorNumber : int {
    InvalidProcedureCall = 5,
    Overflow = 6,
    OutOfMemory = 7,
    SubscriptOutOfRange = 9,
    TypeMismatch = 13,
    BadFileNameOrNumber = 52,
    FileNotFound = 53,
    BadFileMode = 54,
    FileAlreadyOpen = 55,
    DeviceIoError = 57,
    DiskFull = 61,
    InputPastEndOfFile = 62,
    PermissionDenied = 70,
    PathFileAccessError = 75,
    PathNotFound = 76,
    ResourceNotFound = 326,
    PrinterError = 482,
    Cancel = 32755,
};

/// An error with its number and its English description. A function that throws it has usually changed nothing; the
/// comment of the function says so if it has: a save truncates the journal file before it writes. Allocates no memory,
/// because it also reports OutOfMemory.
class RuntimeError : public std::exception {
public:
    explicit RuntimeError(ErrorNumber number) noexcept;

    ErrorNumber Number() const noexcept { return number_; }

    /// The text for the user, without the number: "Type mismatch". A null character follows it.
    std::wstring_view Description() const noexcept { return description_; }

    /// The same text, for a debugger or a failing test.
    const char* what() const noexcept override { return narrow_; }

private:
    ErrorNumber number_;
    std::wstring_view description_;
    const char* narrow_;
};

/// Converts an exception: std::bad_alloc to OutOfMemory, another exception of the standard library to
/// InvalidProcedureCall. A RuntimeError stays as it is.
RuntimeError AsRuntimeError(const std::exception& error) noexcept;

/// The error that the program raises for a Win32 error code (GetLastError).
ErrorNumber ErrorFromWin32(unsigned long code) noexcept;
