#pragma once

#include <cstdint>
#include <string>

/// The two settings that are kept in memory, and the start of the program.
namespace Module1 {

/// The unit of distances as in the registry: "km", "miles", "mil".
extern std::wstring distanceUnit;

/// Added to the number of every text: 0 English, 100 Swedish. Kept on purpose: "Any language number is used".
extern std::int16_t languageOffset;

/// Reads the settings, loads the journal and shows the main window. Does nothing if the program is already running.
/// Throws TypeMismatch or Overflow if the stored language is not a 16-bit number.
void LoadSettings();

} // namespace Module1
