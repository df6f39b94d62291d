#pragma once

#include <cstdint>
#include <string>

/// The string with this number from the string table of the program. All strings are in the Swedish resource language,
/// whatever the language of Windows is. Throws ResourceNotFound if there is no string with this number.
std::wstring LoadStringResource(std::int16_t id);
