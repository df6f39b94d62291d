#include "platform/system/Application.h"

#include "platform/system/CheckedArithmetic.h"
#include "platform/system/ModulePath.h"
#include "platform/system/RuntimeError.h"

#include <windows.h>

#include <array>
#include <cstddef>

namespace {

constexpr const wchar_t* productName = L"Odomira";

/// The beginning of the version resource: VS_VERSIONINFO, which no header declares.
struct VersionRecord {
    WORD length;
    WORD valueLength;
    WORD type;
    std::array<wchar_t, 16> key; ///< "VS_VERSION_INFO"
    alignas(DWORD) VS_FIXEDFILEINFO numbers;
};
static_assert(offsetof(VersionRecord, numbers) == 40);

} // namespace

const wchar_t* ApplicationTitle() noexcept
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
    const HMODULE program = GetModuleHandleW(nullptr);
    const HRSRC found = FindResourceW(program, MAKEINTRESOURCEW(VS_VERSION_INFO), RT_VERSION);
    if (found == nullptr || SizeofResource(program, found) < sizeof(VersionRecord)) {
        throw RuntimeError(ErrorNumber::ResourceNotFound);
    }
    const auto& record = *static_cast<const VersionRecord*>(LockResource(LoadResource(program, found)));
    const VS_FIXEDFILEINFO& numbers = record.numbers;
    if (numbers.dwSignature != VS_FFI_SIGNATURE) {
        throw RuntimeError(ErrorNumber::ResourceNotFound);
    }
    return {CheckedInt16(HIWORD(numbers.dwFileVersionMS)), CheckedInt16(LOWORD(numbers.dwFileVersionMS)),
            CheckedInt16(LOWORD(numbers.dwFileVersionLS))};
}
