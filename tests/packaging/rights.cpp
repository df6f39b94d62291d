// Reads and sets rights on the Windows side for the packaging tests:
//
//     odomira_rights file PATH       prints owner and DACL of a file or folder, as SDDL
//     odomira_rights key PATH        the same for a key of HKEY_LOCAL_MACHINE
//     odomira_rights user COMMAND    runs the command line as a user who is not an administrator; returns its exit code
//     odomira_rights lock PATH       creates a key of HKEY_LOCAL_MACHINE with the default rights of Windows
//     odomira_rights open PATH MASK  opens a key of HKEY_LOCAL_MACHINE with this access mask
//     odomira_rights link PATH KEY   creates a key of HKEY_LOCAL_MACHINE as a link to another key
//     odomira_rights hold PATH       opens a file, prints "held", and closes it at the end of the standard input
//
// "user" restricts the token of this process: without privileges, and with the administrators' group for deny only.
// Programs that are started without elevation have such a token. In Wine everyone can write to a key whose rights have
// not been set, hence "lock".
#include <windows.h>

#include <aclapi.h>
#include <sddl.h>

#include <cstdio>
#include <memory>
#include <stdexcept>
#include <string>

namespace {

struct LocalMemoryDeleter {
    void operator()(void* memory) const noexcept { LocalFree(memory); }
};

using LocalMemory = std::unique_ptr<void, LocalMemoryDeleter>;

struct HandleDeleter {
    void operator()(HANDLE handle) const noexcept { CloseHandle(handle); }
};

using Handle = std::unique_ptr<void, HandleDeleter>;

void Check(bool success, const char* what, DWORD error = GetLastError())
{
    if (!success) {
        throw std::runtime_error(std::string(what) + ": error " + std::to_string(error));
    }
}

void PrintRights(std::wstring object, SE_OBJECT_TYPE type)
{
    constexpr SECURITY_INFORMATION asked = OWNER_SECURITY_INFORMATION | DACL_SECURITY_INFORMATION;
    PSECURITY_DESCRIPTOR descriptor = nullptr;
    const DWORD error =
        GetNamedSecurityInfoW(object.data(), type, asked, nullptr, nullptr, nullptr, nullptr, &descriptor);
    Check(error == ERROR_SUCCESS, "GetNamedSecurityInfo", error);
    const LocalMemory ownedDescriptor(descriptor);
    wchar_t* text = nullptr;
    Check(ConvertSecurityDescriptorToStringSecurityDescriptorW(descriptor, SDDL_REVISION_1, asked, &text, nullptr) != 0,
          "ConvertSecurityDescriptorToStringSecurityDescriptor");
    const LocalMemory ownedText(text);
    std::printf("%ls\n", text);
}

/// The token of this process without the administrators' rights.
Handle OrdinaryToken()
{
    HANDLE raw = nullptr;
    Check(OpenProcessToken(GetCurrentProcess(), TOKEN_ALL_ACCESS, &raw) != 0, "OpenProcessToken");
    const Handle own(raw);
    PSID administrators = nullptr;
    Check(ConvertStringSidToSidW(L"S-1-5-32-544", &administrators) != 0, "ConvertStringSidToSid");
    const LocalMemory ownedSid(administrators);
    SID_AND_ATTRIBUTES taken{administrators, 0};
    Check(CreateRestrictedToken(own.get(), DISABLE_MAX_PRIVILEGE, 1, &taken, 0, nullptr, 0, nullptr, &raw) != 0,
          "CreateRestrictedToken");
    return Handle(raw);
}

int RunAsUser(std::wstring command)
{
    const Handle token = OrdinaryToken();
    STARTUPINFOW start{};
    start.cb = sizeof(start);
    PROCESS_INFORMATION process{};
    Check(CreateProcessAsUserW(token.get(), nullptr, command.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr,
                               &start, &process) != 0,
          "CreateProcessAsUser");
    const Handle owned(process.hProcess);
    const Handle ownedThread(process.hThread);
    WaitForSingleObject(process.hProcess, INFINITE);
    DWORD result = 0;
    GetExitCodeProcess(process.hProcess, &result);
    return static_cast<int>(result);
}

/// Full access for the system and the administrators, reading for users.
void LockKey(const std::wstring& path)
{
    HKEY raw = nullptr;
    const LSTATUS made = RegCreateKeyExW(HKEY_LOCAL_MACHINE, path.c_str(), 0, nullptr, REG_OPTION_NON_VOLATILE,
                                         KEY_ALL_ACCESS, nullptr, &raw, nullptr);
    Check(made == ERROR_SUCCESS, "RegCreateKeyEx", static_cast<DWORD>(made));
    RegCloseKey(raw);
    PSECURITY_DESCRIPTOR descriptor = nullptr;
    Check(ConvertStringSecurityDescriptorToSecurityDescriptorW(L"D:P(A;CI;KA;;;SY)(A;CI;KA;;;BA)(A;CI;KR;;;BU)",
                                                               SDDL_REVISION_1, &descriptor, nullptr) != 0,
          "ConvertStringSecurityDescriptorToSecurityDescriptor");
    const LocalMemory ownedDescriptor(descriptor);
    BOOL present = FALSE;
    BOOL defaulted = FALSE;
    PACL rights = nullptr;
    Check(GetSecurityDescriptorDacl(descriptor, &present, &rights, &defaulted) != 0, "GetSecurityDescriptorDacl");
    std::wstring object = L"MACHINE\\" + path;
    const DWORD error = SetNamedSecurityInfoW(object.data(), SE_REGISTRY_KEY,
                                              DACL_SECURITY_INFORMATION | PROTECTED_DACL_SECURITY_INFORMATION, nullptr,
                                              nullptr, rights, nullptr);
    Check(error == ERROR_SUCCESS, "SetNamedSecurityInfo", error);
}

void OpenKey(const std::wstring& path, const std::wstring& mask)
{
    HKEY raw = nullptr;
    const LSTATUS opened =
        RegOpenKeyExW(HKEY_LOCAL_MACHINE, path.c_str(), 0, static_cast<REGSAM>(std::stoul(mask, nullptr, 0)), &raw);
    Check(opened == ERROR_SUCCESS, "RegOpenKeyEx", static_cast<DWORD>(opened));
    RegCloseKey(raw);
}

/// Opening the key opens the other key.
void LinkKey(const std::wstring& path, const std::wstring& other)
{
    HKEY raw = nullptr;
    const LSTATUS made = RegCreateKeyExW(HKEY_LOCAL_MACHINE, path.c_str(), 0, nullptr, REG_OPTION_CREATE_LINK,
                                         KEY_CREATE_LINK | KEY_SET_VALUE, nullptr, &raw, nullptr);
    Check(made == ERROR_SUCCESS, "RegCreateKeyEx", static_cast<DWORD>(made));
    const std::wstring target = L"\\Registry\\Machine\\" + other;
    const LSTATUS stored =
        RegSetValueExW(raw, L"SymbolicLinkValue", 0, REG_LINK, reinterpret_cast<const BYTE*>(target.data()),
                       static_cast<DWORD>(target.size() * sizeof(wchar_t)));
    RegCloseKey(raw);
    Check(stored == ERROR_SUCCESS, "RegSetValueEx", static_cast<DWORD>(stored));
}

/// The file can be read by others, but neither written nor deleted.
void HoldFile(const std::wstring& path)
{
    HANDLE opened = CreateFileW(path.c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING,
                                FILE_ATTRIBUTE_NORMAL, nullptr);
    Check(opened != INVALID_HANDLE_VALUE, "CreateFile");
    const Handle file(opened);
    std::puts("held");
    std::fflush(stdout);
    std::getchar();
}

int Answer(const std::wstring& question, const std::wstring& object, const std::wstring& other)
{
    if (question == L"link") {
        LinkKey(object, other);
    } else if (question == L"open") {
        OpenKey(object, other);
    } else if (question == L"file") {
        PrintRights(object, SE_FILE_OBJECT);
    } else if (question == L"key") {
        PrintRights(L"MACHINE\\" + object, SE_REGISTRY_KEY);
    } else if (question == L"user") {
        return RunAsUser(object);
    } else if (question == L"lock") {
        LockKey(object);
    } else if (question == L"hold") {
        HoldFile(object);
    } else {
        throw std::runtime_error("unknown command");
    }
    return 0;
}

} // namespace

int wmain(int count, wchar_t** words)
{
    try {
        Check(count == 3 || count == 4, "needs two or three arguments", ERROR_BAD_ARGUMENTS);
        return Answer(words[1], words[2], count == 4 ? words[3] : L"");
    } catch (const std::exception& problem) {
        std::fprintf(stderr, "odomira_rights: %s\n", problem.what());
        return 255;
    }
}
