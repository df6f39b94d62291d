#include "platform/system/Shell.h"

#include "platform/system/OwnedHandle.h"
#include "platform/system/SystemLibrary.h"

#include <windows.h>

#include <shellapi.h>
#include <shlwapi.h>

#include <cwchar>
#include <string_view>

namespace {

bool HasOpened(HINSTANCE answer)
{
    // The shell returns a number above 32 on success.
    constexpr INT_PTR lastFailure = 32;
    return reinterpret_cast<INT_PTR>(answer) > lastFailure;
}

std::string InUtf8(const std::wstring& text)
{
    const int length = static_cast<int>(text.size());
    std::string bytes(text.size() * 3, '\0'); // at most three for each unit
    const int size = WideCharToMultiByte(CP_UTF8, 0, text.c_str(), length, bytes.data(), static_cast<int>(bytes.size()),
                                         nullptr, nullptr);
    bytes.resize(static_cast<std::size_t>(size));
    return bytes;
}

/// The URL of a file: "C:\My cars\guide.html" is "file:///C:/My%20cars/guide.html". Characters with a meaning in a URL
/// or on a command line are escaped.
std::wstring AddressOf(const std::wstring& path)
{
    constexpr std::wstring_view digits = L"0123456789ABCDEF";
    constexpr std::string_view plain = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789-._~:/";
    std::wstring address = path.starts_with(L"\\\\") ? L"file:" : L"file:///";
    for (const char byte : InUtf8(path)) {
        const auto value = static_cast<unsigned char>(byte);
        if (byte == '\\') {
            address += L'/';
        } else if (plain.find(byte) != std::string_view::npos) {
            address += static_cast<wchar_t>(value);
        } else {
            address += L'%';
            address += digits[value / digits.size()];
            address += digits[value % digits.size()];
        }
    }
    return address;
}

/// A property of the default browser (AssocQueryString); empty if it is not known.
std::wstring OfBrowser(ASSOCSTR what)
{
    const auto query = SystemFunction<decltype(AssocQueryStringW)>(L"shlwapi.dll", "AssocQueryStringW");
    std::wstring answer(2048, L'\0');
    auto length = static_cast<DWORD>(answer.size());
    if (query == nullptr || query(ASSOCF_NONE, what, L"https", L"open", answer.data(), &length) != S_OK) {
        return {};
    }
    answer.resize(std::wcslen(answer.c_str()));
    return answer;
}

/// Replaces %1 or %L of a command by the address, or appends the address.
std::wstring WithAddress(std::wstring command, const std::wstring& address)
{
    for (const std::wstring_view place : {L"%1", L"%L", L"%l"}) {
        if (const auto found = command.find(place); found != std::wstring::npos) {
            return command.replace(found, place.size(), address);
        }
    }
    return command + L" \"" + address + L'"';
}

/// Runs the default browser with this address. The current folder of the browser is its own: a process keeps its
/// current folder from being deleted.
bool RunBrowser(const std::wstring& address)
{
    const std::wstring program = OfBrowser(ASSOCSTR_EXECUTABLE);
    std::wstring command = OfBrowser(ASSOCSTR_COMMAND);
    const std::size_t separator = program.find_last_of(L'\\');
    if (separator == std::wstring::npos || command.empty()) {
        return false;
    }
    command = WithAddress(std::move(command), address);
    STARTUPINFOW startup{};
    startup.cb = sizeof startup;
    PROCESS_INFORMATION process{};
    if (CreateProcessW(program.c_str(), command.data(), nullptr, nullptr, FALSE, 0, nullptr,
                       program.substr(0, separator + 1).c_str(), &startup, &process) == FALSE) {
        return false;
    }
    const OwnedHandle ofProcess(process.hProcess);
    const OwnedHandle ofThread(process.hThread);
    return true;
}

} // namespace

bool ShellOpen(HWND__* owner, const std::string& address)
{
    // Kept on purpose: "A web page opens with show command 0".
    return HasOpened(ShellExecuteA(owner, "open", address.c_str(), nullptr, nullptr, 0));
}

bool ShellOpenPage(HWND__* owner, const std::wstring& path, const std::wstring& id)
{
    // ShellExecute converts the URL of a file to a path and drops "#id", so the browser is started here.
    return RunBrowser(AddressOf(path) + L'#' + id) ||
           HasOpened(ShellExecuteW(owner, L"open", path.c_str(), nullptr, nullptr, SW_SHOWNORMAL));
}
