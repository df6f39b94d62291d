#pragma once

#include <concepts>
#include <cstdint>
#include <string>
#include <utility>

/// The text of a registry value. A 16-bit number is written as decimal digits, a Boolean as "True" or "False".
class RegistryText {
public:
    // NOLINTBEGIN(google-explicit-constructor): a value is passed as it is
    RegistryText(std::wstring text) : text_(std::move(text)) {}
    RegistryText(const wchar_t* text) : text_(text) {}
    RegistryText(std::int16_t number);
    RegistryText(std::same_as<bool> auto truth) : text_(truth ? L"True" : L"False") {}
    // NOLINTEND(google-explicit-constructor)

    const std::wstring& Text() const noexcept { return text_; }

private:
    std::wstring text_;
};

/// The settings and the employee information: a registry key for each section under
/// HKEY_LOCAL_MACHINE\Software\Velmora\Tav, a text for each value. Nothing is cached, and no error is reported.
namespace registerModule {

/// Writes the value. The key of the section stays open until the program ends.
void SaveRegistryValue(const std::wstring& section, const std::wstring& valueName, const RegistryText& value);

/// The value, or the default if the value does not exist or is longer than 255 characters. The key is opened for
/// reading and writing: a user who may not write gets the default.
std::wstring GetRegistryValue(const std::wstring& section, const std::wstring& valueName,
                              const RegistryText& defaultValue);

/// The characters before the first null; empty if there is none, so a value of exactly 255 characters is read as empty.
std::wstring ReadRegistryString(const std::wstring& buffer);

} // namespace registerModule
