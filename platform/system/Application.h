#pragma once

#include <cstdint>
#include <string>

// Name, folder and version of the program.

/// The title of the main window, and of a message box without a title of its own.
const wchar_t* ApplicationTitle() noexcept;

/// The name in menus and captions, as in "About Odomira...".
std::wstring ProductName();

/// The folder of the running program file, wherever it was started from. Without a "\" at its end, except for the root
/// of a drive ("C:\").
std::wstring ProgramFolder();

/// From this call on, LoadLibrary searches the system folder only. Every user may add files to the folder of the
/// program, so a library there must not be loaded in place of a system library.
void LoadLibrariesFromSystemFolderOnly();

struct Version {
    std::int16_t major = 0;
    std::int16_t minor = 0;
    std::int16_t revision = 0;
};

/// The first, second and fourth number of the version resource; the third is always 0. Throws ResourceNotFound if the
/// program file has no version resource.
Version VersionNumbers();
