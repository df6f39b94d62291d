#pragma once

#include <cstdint>
#include <string>

/// The text with this number, exactly as the table has it, blanks at its ends included. It is looked up each time, so a
/// change of language shows in every text fetched afterwards. Throws ResourceNotFound for a number without a text.
std::wstring LoadText(std::int16_t id);
