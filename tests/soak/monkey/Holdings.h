#pragma once

#include <windows.h>

#include <ostream>

/// What a program holds of the system at one moment.
///
/// Windows tells the numbers of GDI and user objects itself (GetGuiResources). Wine 8 does not, nor does it tell the
/// number of handles; there they are counted where they are kept:
///  - GDI objects in the program's own table of them, read out of its memory;
///  - user objects in the table that all programs of the machine share, by how many more fit below a number that nobody
///    has been given yet. The count is the machine's: on a machine with nothing else going on, a change is the
///    program's;
///  - handles in the system's list of all of them.
/// Windows are counted one by one, and so are controls: they are windows too.
struct Holdings {
    int windows = 0;
    int gdiObjects = 0;   ///< device contexts, fonts, brushes, pens, regions, bitmaps
    int userObjects = 0;  ///< windows, menus, cursors, icons, hooks
    int registryKeys = 0; ///< saving a setting leaves its key open, by intention
    int otherHandles = 0; ///< events, files, threads, processes

    bool operator==(const Holdings&) const = default;
};

std::ostream& operator<<(std::ostream& out, const Holdings& holdings);

Holdings HoldingsOf(HANDLE process);
