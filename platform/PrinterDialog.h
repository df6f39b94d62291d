#pragma once

#include "platform/Printer.h"

#include <cstdint>

/// What the user chose in the system's printer dialog.
struct PrinterChoice {
    PrinterDevice device;    ///< set to one copy: whoever prints makes the copies
    std::int16_t copies = 1; ///< how many the user wants, at least 1
};

/// The system's dialog for choosing a printer.
class PrinterDialog {
public:
    /// Shows the dialog over the form in use and waits for the answer. The system's default printer stays as it is.
    /// Throws RuntimeError Cancel when the user cancels or there is no printer, PrinterError when the dialog fails.
    PrinterChoice ShowPrinter() const;
};
