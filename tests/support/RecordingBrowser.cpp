#include "tests/support/RecordingBrowser.h"

#include <windows.h>

#include <filesystem>
#include <fstream>

namespace {

std::wstring CommandIn(const std::wstring& key)
{
    std::wstring command(1000, L'\0');
    auto size = static_cast<DWORD>(command.size() * sizeof(wchar_t));
    RegGetValueW(HKEY_LOCAL_MACHINE, key.c_str(), nullptr, RRF_RT_REG_SZ, nullptr, command.data(), &size);
    return command.substr(0, command.find(L'\0'));
}

void SetCommand(const std::wstring& key, const std::wstring& command)
{
    const auto size = static_cast<DWORD>((command.size() + 1) * sizeof(wchar_t));
    RegSetKeyValueW(HKEY_LOCAL_MACHINE, key.c_str(), nullptr, REG_SZ, command.c_str(), size);
}

constexpr const wchar_t* endingOfPages = L"Software\\Classes\\.html";
constexpr const wchar_t* kindOfPages = L"Software\\Classes\\odomira.page";

std::wstring InQuotes(const std::wstring& text)
{
    return L'"' + text + L'"';
}

} // namespace

BrowserCommand::BrowserCommand(const std::wstring& command)
{
    for (const std::wstring scheme : {L"http", L"https"}) {
        const std::wstring key = L"Software\\Classes\\" + scheme + L"\\shell\\open\\command";
        former_[key] = CommandIn(key);
        SetCommand(key, command);
    }
}

BrowserCommand::~BrowserCommand()
{
    for (const auto& [key, command] : former_) {
        SetCommand(key, command);
    }
}

PageCommand::PageCommand(const std::wstring& command) : former_(CommandIn(endingOfPages))
{
    SetCommand(endingOfPages, L"odomira.page");
    SetCommand(kindOfPages + std::wstring(L"\\shell\\open\\command"), command);
}

PageCommand::~PageCommand()
{
    SetCommand(endingOfPages, former_);
    RegDeleteTreeW(HKEY_LOCAL_MACHINE, kindOfPages);
}

RecordingBrowser::RecordingBrowser(Place place)
    : line_(InQuotes(std::filesystem::path(ODOMIRA_RECORDING_BROWSER).make_preferred().wstring()) + L' ' +
            InQuotes(record_) + (place == Place::Marked ? L" \"%1\"" : L"")),
      command_(line_)
{
}

std::vector<std::string> RecordingBrowser::Shown() const
{
    std::vector<std::string> addresses;
    std::ifstream file{std::filesystem::path(record_)};
    for (std::string line; std::getline(file, line);) {
        addresses.push_back(line);
    }
    return addresses;
}
