#pragma once

#include <cstdint>
#include <string>

/// The text with this number from the program's string table. The table stands in one resource language block, Swedish,
/// and is looked up there alone: which language the system speaks makes no difference.
/// Throws ResourceNotFound if the table has no text of this number.
std::wstring LoadStringResource(std::int16_t id);
