#pragma once

#include <windows.h>

#include <ostream>

/// The numbers of the Windows objects of a process.
///
/// Windows returns the numbers of GDI and user objects (GetGuiResources).
///
/// Wine: version 8 does not, and it does not return the number of handles. There they are counted in its tables:
///  - GDI objects in the table of the process, which is read from its memory;
///  - user objects in the table of the machine, by the number of new objects that fit below an unused index; no other
///    program may run on the machine;
///  - handles in the list of all handles.
/// Windows and controls are counted by enumeration.
struct Holdings {
    int windows = 0;
    int gdiObjects = 0;   ///< device contexts, fonts, brushes, pens, regions, bitmaps
    int userObjects = 0;  ///< windows, menus, cursors, icons, hooks
    int registryKeys = 0; ///< saving a setting leaves its key open
    int otherHandles = 0; ///< events, files, threads, processes

    /// True if any of the numbers is greater than the other's.
    bool Exceed(const Holdings& other) const noexcept;
};

std::ostream& operator<<(std::ostream& out, const Holdings& holdings);

Holdings HoldingsOf(HANDLE process);
