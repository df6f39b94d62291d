#pragma once

#include <cstdint>
#include <string>

class frmMain;

/// What the whole program shares: the two settings that are kept in memory, and the main window.
namespace Module1 {

/// The unit's text beside every distance, as it stands in the registry: "km", "miles", "mil".
extern std::wstring distanceUnit;

/// Added to the number of every text: 0 English, 100 Swedish. Another number is used as it stands.
extern std::int16_t languageOffset;

/// Null until LoadSettings has opened it.
extern frmMain* mainWindow;

/// Starts the program: reads the settings, loads the journal and shows the main window. If a copy is already running
/// nothing happens, and the program ends. Throws TypeMismatch or Overflow if the stored language is no 16-bit number.
void LoadSettings();

} // namespace Module1
