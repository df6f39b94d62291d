#pragma once

#include <cstdint>
#include <string>

/// The text with this number, including spaces at its ends. Throws ResourceNotFound if there is no such text.
std::wstring LoadText(std::int16_t id);
