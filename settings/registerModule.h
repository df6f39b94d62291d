#pragma once

#include <concepts>
#include <cstdint>
#include <string>
#include <utility>

/// A value on its way into the registry, where everything is text: a 16-bit number as decimal digits, a Boolean as
/// "True" or "False".
class RegistryText {
public:
    // NOLINTBEGIN(google-explicit-constructor): each of these may stand where a value is wanted
    RegistryText(std::wstring text) : text_(std::move(text)) {}
    RegistryText(const wchar_t* text) : text_(text) {}
    RegistryText(std::int16_t number);
    RegistryText(std::same_as<bool> auto truth) : text_(truth ? L"True" : L"False") {}
    // NOLINTEND(google-explicit-constructor)

    const std::wstring& Text() const noexcept { return text_; }

private:
    std::wstring text_;
};

/// The settings and the employee's details: one registry key for each section under
/// HKEY_LOCAL_MACHINE\Software\Velmora\Tav, one text for each value. Nothing is kept in memory, and no failure is
/// reported: what cannot be written is lost, what cannot be read is the caller's default.
namespace registerModule {

/// Stores the value. The section's key stays open until the program ends, by intention.
void SaveRegistryValue(const std::wstring& section, const std::wstring& valueName, const RegistryText& value);

/// The value, or the default as text if it is missing or longer than 255 characters. Reading asks for the right to
/// write too: a user without it gets the default.
std::wstring GetRegistryValue(const std::wstring& section, const std::wstring& valueName,
                              const RegistryText& defaultValue);

/// The characters in front of the buffer's first null; nothing if it has none, so that a value of exactly 255
/// characters reads as empty.
std::wstring ReadRegistryString(const std::wstring& buffer);

} // namespace registerModule
