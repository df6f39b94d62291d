#pragma once

#include "platform/print/Printer.h"

#include <cstdint>

/// The result of the printer dialog.
struct PrinterChoice {
    PrinterDevice device;    ///< its mode has one copy; the caller prints the copies
    std::int16_t copies = 1; ///< at least 1
};

/// The common dialog for a printer (PrintDlg).
class PrinterDialog {
public:
    /// Shows the dialog over the current form. Does not change the default printer. Throws Cancel if the user cancels
    /// or there is no printer, PrinterError if the dialog fails.
    PrinterChoice ShowPrinter() const;
};
