#pragma once

#include "platform/print/Printer.h"

#include <string>

/// Paper of one of the machine's printers, as in the printer's settings.
struct MachinePaper {
    std::wstring name; ///< one of those in tools/machine/printing
    bool landscape = false;
    int dotsPerInch = 600; ///< 300 is the other printer's
};

/// The printer, set to this paper. Throws if it has no paper of that name.
PrinterDevice PrinterWith(const MachinePaper& paper);

/// The sheet as the device reports it, in twips. Borders are not printable.
struct Sheet {
    double printableWidth;
    double printableHeight;
    double leftBorder;
    double topBorder;
};

Sheet SheetOf(const PrinterDevice& device);
