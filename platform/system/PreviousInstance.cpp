#include "platform/system/PreviousInstance.h"

#include "platform/system/ModulePath.h"
#include "platform/system/OwnedHandle.h"

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

/// The security identifier of the user as text.
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

/// The final path of the program file. The program may have been started by a short name, or by a drive letter for a
/// folder or a network path.
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

/// The name of a kernel object has at most MAX_PATH characters and no "\", so it contains a hash of the path (64-bit
/// FNV-1a).
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
        // ERROR_ACCESS_DENIED: the mutex belongs to a process with other rights, such as an elevated one.
        answer = error == ERROR_ALREADY_EXISTS || (!mutex && error == ERROR_ACCESS_DENIED);
        return mutex;
    }();
    return answer;
}
