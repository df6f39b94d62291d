#pragma once

#include "platform/print/Printer.h"

#include <memory>
#include <string>
#include <vector>

/// The drawing on a page, in its order. Positions are twips; widths of lines are device pixels.
struct DrawnText {
    std::wstring text;
    double x;
    double y;
    std::wstring font;
    double points;
    bool bold;
    bool italic;
    bool transparent;

    bool operator==(const DrawnText&) const = default;
};

struct DrawnLine {
    double x1;
    double y1;
    double x2;
    double y2;
    int width;
    bool dotted;
    PrintColour colour;
    std::size_t when; ///< position in the order of all drawing on the page

    bool operator==(const DrawnLine&) const = default;
};

struct DrawnBox {
    double left;
    double top;
    double right;
    double bottom;
    PrintColour outline;
    bool filled;
    PrintColour fill;
    std::size_t when;

    bool operator==(const DrawnBox&) const = default;
};

struct RecordedPage {
    std::vector<DrawnText> texts;
    std::vector<DrawnLine> lines;
    std::vector<DrawnBox> boxes;
};

/// A document and its end.
struct Recording {
    std::vector<RecordedPage> pages;
    bool ended = false;
    bool aborted = false;

    /// 1: beginning the first page fails, 2: the second ...; 0: none.
    int failingPage = 0;
    bool failAtEnd = false;
    bool failAtEndOfPage = false;
};

/// Records a document instead of printing it, with the size and resolution of the machine's printer.
std::unique_ptr<PrintPages> RecordPages(std::shared_ptr<Recording> recording);

/// The same with the size and resolution of a device.
std::unique_ptr<PrintPages> RecordPages(std::shared_ptr<Recording> recording, const PrinterDevice& device);
