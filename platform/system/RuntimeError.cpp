#include "platform/system/RuntimeError.h"

#include <windows.h>

#include <algorithm>
#include <array>
#include <new>

namespace {

/// A description as wide and as narrow characters, in static storage.
struct DescriptionOf {
    constexpr DescriptionOf(ErrorNumber described, std::string_view description) : number(described), text(description)
    {
        std::ranges::copy(description, wide.begin());
    }

    ErrorNumber number;
    std::string_view text;
    std::array<wchar_t, 40> wide{};
};

constexpr std::array descriptions{
    DescriptionOf{ErrorNumber::InvalidProcedureCall, "Invalid procedure call or argument"},
    DescriptionOf{ErrorNumber::Overflow, "Overflow"},
    DescriptionOf{ErrorNumber::OutOfMemory, "Out of memory"},
    DescriptionOf{ErrorNumber::SubscriptOutOfRange, "Subscript out of range"},
    DescriptionOf{ErrorNumber::TypeMismatch, "Type mismatch"},
    DescriptionOf{ErrorNumber::BadFileNameOrNumber, "Bad file name or number"},
    DescriptionOf{ErrorNumber::FileNotFound, "File not found"},
    DescriptionOf{ErrorNumber::BadFileMode, "Bad file mode"},
    DescriptionOf{ErrorNumber::FileAlreadyOpen, "File already open"},
    DescriptionOf{ErrorNumber::DeviceIoError, "Device I/O error"},
    DescriptionOf{ErrorNumber::DiskFull, "Disk full"},
    DescriptionOf{ErrorNumber::InputPastEndOfFile, "Input past end of file"},
    DescriptionOf{ErrorNumber::PermissionDenied, "Permission denied"},
    DescriptionOf{ErrorNumber::PathFileAccessError, "Path/File access error"},
    DescriptionOf{ErrorNumber::PathNotFound, "Path not found"},
    DescriptionOf{ErrorNumber::ResourceNotFound, "Resource not found"},
    DescriptionOf{ErrorNumber::PrinterError, "Printer error"},
    DescriptionOf{ErrorNumber::Cancel, "Cancel was selected."},
};

constexpr DescriptionOf anyOther{{}, "Application-defined error"};

} // namespace

RuntimeError::RuntimeError(ErrorNumber number) noexcept : number_(number)
{
    const auto* found = std::ranges::find(descriptions, number, &DescriptionOf::number);
    const DescriptionOf& description = found != descriptions.end() ? *found : anyOther;
    description_ = {description.wide.data(), description.text.size()};
    narrow_ = description.text.data();
}

RuntimeError AsRuntimeError(const std::exception& error) noexcept
{
    if (const auto* own = dynamic_cast<const RuntimeError*>(&error)) {
        return *own;
    }
    const bool noMemory = dynamic_cast<const std::bad_alloc*>(&error) != nullptr;
    return RuntimeError(noMemory ? ErrorNumber::OutOfMemory : ErrorNumber::InvalidProcedureCall);
}

ErrorNumber ErrorFromWin32(unsigned long code) noexcept
{
    switch (code) {
    case ERROR_FILE_NOT_FOUND:
        return ErrorNumber::FileNotFound;
    case ERROR_PATH_NOT_FOUND:
    case ERROR_BAD_NETPATH:
    case ERROR_INVALID_DRIVE:
        return ErrorNumber::PathNotFound;
    case ERROR_ACCESS_DENIED:
    case ERROR_WRITE_PROTECT:
        return ErrorNumber::PathFileAccessError;
    case ERROR_SHARING_VIOLATION:
    case ERROR_LOCK_VIOLATION:
        return ErrorNumber::PermissionDenied;
    case ERROR_DISK_FULL:
    case ERROR_HANDLE_DISK_FULL:
        return ErrorNumber::DiskFull;
    case ERROR_INVALID_NAME:
    case ERROR_BAD_PATHNAME:
        return ErrorNumber::BadFileNameOrNumber;
    case ERROR_NOT_ENOUGH_MEMORY:
    case ERROR_OUTOFMEMORY:
        return ErrorNumber::OutOfMemory;
    case ERROR_RESOURCE_DATA_NOT_FOUND:
    case ERROR_RESOURCE_TYPE_NOT_FOUND:
    case ERROR_RESOURCE_NAME_NOT_FOUND:
    case ERROR_RESOURCE_LANG_NOT_FOUND:
        return ErrorNumber::ResourceNotFound;
    default:
        return ErrorNumber::DeviceIoError;
    }
}
