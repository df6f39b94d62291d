#pragma once

#include <cstdint>
#include <string>

/// What the program knows about itself.

/// The title of every message box that names none, and of the main window.
std::wstring ApplicationTitle();

/// The name in menus and captions, as in "About Odomira...".
std::wstring ProductName();

/// The folder of the running program file, wherever it was started from. Without a "\" at its end, except for the root
/// of a drive ("C:\").
std::wstring ProgramFolder();

/// From here on Windows looks for libraries in its own system folder alone. A library that somebody put into the folder
/// of the program, where every user may add files, is never loaded under the name of one of the system's.
void LoadLibrariesFromSystemFolderOnly();

struct Version {
    std::int16_t major = 0;
    std::int16_t minor = 0;
    std::int16_t revision = 0;
};

/// Read from the version record of the running program file: its first, second and fourth number (the third is always
/// 0). Throws ResourceNotFound if the file carries no version record.
Version VersionNumbers();
