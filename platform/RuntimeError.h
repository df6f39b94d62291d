#pragma once

#include <exception>
#include <string>

/// The run-time errors this program can raise. The numbers are part of what a user sees ("Run-time error '61':") and of
/// what the journal reader tells apart, so they never change.
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

/// An operation that stopped, with its number and its English description. Thrown before anything is changed, so the
/// caller finds everything as it was.
class RuntimeError : public std::exception {
public:
    explicit RuntimeError(ErrorNumber number);

    ErrorNumber Number() const noexcept { return number_; }

    /// The sentence for the user, without the number: "Type mismatch".
    const std::wstring& Description() const noexcept { return description_; }

    /// The same description in plain characters, for a debugger or a failing test.
    const char* what() const noexcept override { return narrow_.c_str(); }

private:
    ErrorNumber number_;
    std::wstring description_;
    std::string narrow_;
};

/// The one mapping from a Win32 error code (GetLastError, ERROR_...) to the error that the program raises for it.
ErrorNumber ErrorFromWin32(unsigned long code) noexcept;
