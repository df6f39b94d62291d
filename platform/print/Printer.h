#pragma once

#include "platform/windows/Handles.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

/// A colour as 0x00BBGGRR, or 0x80000000 + the index of a system colour (GetSysColor).
using PrintColour = std::uint32_t;
constexpr PrintColour printBlack = 0x00000000;
constexpr PrintColour printButtonFace = 0x8000000F;

enum class LineStyle : int { Solid = 0, Dotted = 2 };
enum class FillStyle : int { Solid = 0, Transparent = 1 };

/// A printer with its settings, such as paper and orientation.
struct PrinterDevice {
    std::wstring name;
    std::vector<std::byte> mode{}; ///< A DEVMODE with the data of the driver; empty: the defaults.
    bool toFile = false;           ///< Windows asks for a file at the start of the job and prints into it.
};

/// A document that Printer draws on, page by page. Every function but Abort throws PrinterError if the device fails.
class PrintPages {
public:
    virtual ~PrintPages() = default;

    /// Begins the next page and returns the device context (an HDC) to draw it on, valid until EndPage.
    virtual void* StartPage() = 0;
    virtual void EndPage() = 0;

    /// Completes the document.
    virtual void End() = 0;

    /// Discards the document: no page is printed.
    virtual void Abort() noexcept = 0;
};

/// Starts a print job of one copy. The user sees documentName in the queue. Throws PrinterError if the printer does not
/// exist or accepts no job.
std::unique_ptr<PrintPages> OpenPrintJob(const PrinterDevice& device, const std::wstring& documentName);

struct HDC__;

/// Selects stock objects into the device context of a page, before Printer deletes its own.
struct PageLeaver {
    void operator()(HDC__* context) const noexcept;
};
using PageContext = std::unique_ptr<HDC__, PageLeaver>;

/// Writes and draws on the pages of a document. Positions and lengths are twips (1440 to the inch) from the top left
/// corner of the printable area; y grows downwards.
///
/// Text is written at the print position, which moves. Lines and boxes have their own positions and do not move it.
///
/// If the device fails, the whole document is discarded and PrinterError is thrown, so that no part of a report is
/// printed. The destructor discards a document that has not been ended.
class Printer {
public:
    /// Starts the first page: font Arial 12, black, solid lines one pixel wide, fill transparent, position (0, 0).
    explicit Printer(std::unique_ptr<PrintPages> pages);
    Printer(const Printer&) = delete;
    Printer& operator=(const Printer&) = delete;
    Printer(Printer&&) noexcept;
    Printer& operator=(Printer&&) = delete;
    ~Printer();

    /// Sets the height that the pages need. If the printable height is smaller, everything is drawn smaller from now
    /// on, by one factor in both directions. Positions, lengths and font sizes keep their values, and ScaleWidth
    /// increases.
    void FitHeight(double twips);

    double CurrentX() const noexcept { return x_; }
    double CurrentY() const noexcept { return y_; }
    void SetCurrentX(double twips) noexcept { x_ = twips; }
    void SetCurrentY(double twips) noexcept { y_ = twips; }

    void SetFontName(std::wstring name);
    void SetFontSize(double points);
    void SetFontBold(bool bold);
    void SetFontItalic(bool italic);

    /// The width of lines in device pixels at every resolution. If everything is drawn smaller, lines are too, but they
    /// are at least one pixel wide.
    void SetDrawWidth(int pixels);
    void SetDrawStyle(LineStyle style);
    void SetFillStyle(FillStyle style) noexcept { fillStyle_ = style; }

    /// Writes at the print position and moves x to the end of the text.
    void Print(std::wstring_view text);

    /// Writes and begins a new line: x is 0, and y is one line of the current font further down.
    void PrintLine(std::wstring_view text = {});

    /// Moves x by the width of `count` spaces in the current font.
    void Skip(int count);

    /// The width of a text in the current font.
    double TextWidth(std::wstring_view text);

    /// The widths of the first 1, 2, ... characters of the text in the current font.
    std::vector<double> TextWidths(std::wstring_view text);

    /// The height of a line of the current font.
    double TextHeight();

    void Line(double x1, double y1, double x2, double y2);

    /// A rectangle with a border in `colour`; with FillStyle::Solid it is also filled with it.
    void Box(double x1, double y1, double x2, double y2, PrintColour colour);

    /// The printable width of the page. It is larger if everything is drawn smaller.
    double ScaleWidth();

    /// The number of the current page, from 1.
    std::int16_t Page() const noexcept { return page_; }

    /// Ends the page and begins the next one at (0, 0), with the same font and lines.
    void NewPage();

    /// Ends the last page and completes the document.
    void EndDoc();

    /// Discards the document unless it has ended. Later calls that draw or measure throw PrinterError.
    void Abort() noexcept;

private:
    HDC__* Context();
    void Check(bool succeeded);
    void BeginPage();
    FontOwner MakeFont(double scale);
    void MakeFonts();
    void Select(const FontOwner& font);
    HDC__* ContextToWrite();
    HDC__* ContextToMeasure();
    void UsePen(PrintColour colour);
    int ToPixelsX(double twips) const;
    int ToPixelsY(double twips) const;

    double x_ = 0;
    double y_ = 0;
    std::int16_t page_ = 0;
    std::wstring fontName_ = L"Arial";
    double fontSize_ = 12; ///< points
    bool bold_ = false;
    bool italic_ = false;
    int drawWidth_ = 1;
    LineStyle drawStyle_ = LineStyle::Solid;
    FillStyle fillStyle_ = FillStyle::Transparent;

    int dpiX_ = 1;
    int dpiY_ = 1;
    double scale_ = 1; ///< at most 1; lengths on paper are multiplied by it

    // The objects are created when they are needed, and stay selected until they are stale or the page ends.
    std::unique_ptr<PrintPages> pages_;
    FontOwner font_;
    FontOwner fullSizeFont_; ///< only if scale_ is below 1
    HFONT__* selectedFont_ = nullptr;
    bool fontIsStale_ = true;
    PenOwner pen_;
    bool penIsStale_ = true;
    PrintColour penColour_ = printBlack;
    PageContext context_; ///< destroyed before the objects that are selected into it
};
