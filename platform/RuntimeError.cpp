#include "platform/RuntimeError.h"

#include <windows.h>

#include <algorithm>
#include <array>
#include <string_view>

namespace {

struct DescriptionOf {
    ErrorNumber number;
    std::string_view text;
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

} // namespace

RuntimeError::RuntimeError(ErrorNumber number) : number_(number)
{
    const auto* found = std::ranges::find(descriptions, number, &DescriptionOf::number);
    const std::string_view text = found != descriptions.end() ? found->text : "Application-defined error";
    description_.assign(text.begin(), text.end());
    narrow_ = "run-time error " + std::to_string(static_cast<int>(number)) + ": " + std::string(text);
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
