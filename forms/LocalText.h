#pragma once

#include <cstdint>
#include <string>

/// The text of a form's base and item in the current language: the language offset is added to the English number.
/// Throws Overflow if the sum leaves 16 bits and ResourceNotFound if there is no such text.
std::wstring LocalText(std::int16_t baseAndItem);
