#pragma once

#include <cstdint>
#include <string>

/// The text with this English number in the current language, whose offset is added to the number. Throws Overflow if
/// the sum exceeds 16 bits and ResourceNotFound if there is no such text.
std::wstring LocalText(std::int16_t baseAndItem);
