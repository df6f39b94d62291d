#include "platform/Application.h"

#include "platform/CheckedArithmetic.h"
#include "platform/ModulePath.h"
#include "platform/RuntimeError.h"

#include <windows.h>

#include <vector>

namespace {

constexpr const wchar_t* productName = L"Odomira";

} // namespace

std::wstring ApplicationTitle()
{
    return productName;
}

std::wstring ProductName()
{
    return productName;
}

std::wstring ProgramFolder()
{
    const std::wstring path = ModulePath();
    const std::size_t lastSeparator = path.find_last_of(L'\\');
    const bool atDriveRoot = lastSeparator == 2 && path[1] == L':';
    return path.substr(0, atDriveRoot ? lastSeparator + 1 : lastSeparator);
}

void LoadLibrariesFromSystemFolderOnly()
{
    SetDefaultDllDirectories(LOAD_LIBRARY_SEARCH_SYSTEM32);
}

Version VersionNumbers()
{
    const std::wstring path = ModulePath();
    std::vector<std::byte> record(GetFileVersionInfoSizeW(path.c_str(), nullptr));
    void* fixedPart = nullptr;
    UINT size = 0;
    if (record.empty() || GetFileVersionInfoW(path.c_str(), 0, static_cast<DWORD>(record.size()), record.data()) == 0 ||
        VerQueryValueW(record.data(), L"\\", &fixedPart, &size) == 0) {
        throw RuntimeError(ErrorNumber::ResourceNotFound);
    }
    const auto& numbers = *static_cast<const VS_FIXEDFILEINFO*>(fixedPart);
    return {CheckedInt16(HIWORD(numbers.dwFileVersionMS)), CheckedInt16(LOWORD(numbers.dwFileVersionMS)),
            CheckedInt16(LOWORD(numbers.dwFileVersionLS))};
}
