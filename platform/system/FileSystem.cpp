#include "platform/system/FileSystem.h"

#include <windows.h>

#include <memory>

namespace {

struct SearchCloser {
    void operator()(HANDLE search) const noexcept { FindClose(search); }
};

} // namespace

std::wstring PathIn(const std::wstring& folder, const std::wstring& file)
{
    return folder + (folder.ends_with(L'\\') ? L"" : L"\\") + file;
}

bool FileExists(const std::wstring& path)
{
    WIN32_FIND_DATAW found{};
    HANDLE search = FindFirstFileW(path.c_str(), &found);
    if (search == INVALID_HANDLE_VALUE) {
        return false;
    }
    const std::unique_ptr<void, SearchCloser> closedAtEnd(search);
    constexpr DWORD notOrdinary = FILE_ATTRIBUTE_DIRECTORY | FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_SYSTEM;
    return (found.dwFileAttributes & notOrdinary) == 0;
}
