#include "platform/PreviousInstance.h"

#include "platform/ModulePath.h"
#include "platform/OwnedHandle.h"

#include <windows.h>

#include <sddl.h>

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace {

struct LocalMemoryDeleter {
    void operator()(wchar_t* memory) const noexcept { LocalFree(memory); }
};

/// The user's identifier in text form, unique on this machine where the plain name is not.
std::wstring UserIdentifier()
{
    HANDLE rawToken = nullptr;
    if (OpenProcessToken(GetCurrentProcess(), TOKEN_QUERY, &rawToken) == 0) {
        return {};
    }
    const OwnedHandle token(rawToken);
    DWORD size = 0;
    GetTokenInformation(token.Get(), TokenUser, nullptr, 0, &size);
    std::vector<std::byte> information(size);
    wchar_t* text = nullptr;
    if (GetTokenInformation(token.Get(), TokenUser, information.data(), size, &size) == 0 ||
        ConvertSidToStringSidW(reinterpret_cast<const TOKEN_USER*>(information.data())->User.Sid, &text) == 0) {
        return {};
    }
    const std::unique_ptr<wchar_t, LocalMemoryDeleter> ownedText(text);
    return text;
}

/// The one full name of the program file. It may have been started by another: a short name, a drive letter that stands
/// for a folder or for a network path.
std::wstring FullNameOfProgramFile()
{
    std::wstring path = ModulePath();
    const OwnedHandle file(CreateFileW(path.c_str(), 0, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                                       OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr));
    constexpr DWORD longestPath = 32767;
    std::wstring name(longestPath, L'\0');
    const DWORD length =
        file ? GetFinalPathNameByHandleW(file.Get(), name.data(), longestPath, FILE_NAME_NORMALIZED) : 0;
    if (length == 0 || length > longestPath) {
        return path;
    }
    name.resize(length);
    return name;
}

/// Names of kernel objects are short and hold no "\", so the path goes in as a number (64-bit FNV-1a).
std::wstring MutexName()
{
    std::wstring identity = FullNameOfProgramFile();
    CharLowerBuffW(identity.data(), static_cast<DWORD>(identity.size()));
    std::uint64_t number = 14695981039346656037ULL;
    for (const wchar_t character : identity) {
        number = (number ^ character) * 1099511628211ULL;
    }
    return L"Global\\Odomira " + UserIdentifier() + L' ' + std::to_wstring(number);
}

} // namespace

bool PreviousInstance()
{
    static bool answer = false;
    static const OwnedHandle mark = [] {
        OwnedHandle mutex(CreateMutexW(nullptr, FALSE, MutexName().c_str()));
        const DWORD error = GetLastError();
        // A copy that runs with other rights holds a mark that this one may see but not open.
        answer = error == ERROR_ALREADY_EXISTS || (!mutex && error == ERROR_ACCESS_DENIED);
        return mutex;
    }();
    return answer;
}
