#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

/// A colour as 0x00BBGGRR, or 0x80000000 + the number of a system colour, which follows the user's colour scheme.
using PrintColour = std::uint32_t;
constexpr PrintColour printBlack = 0x00000000;
constexpr PrintColour printButtonFace = 0x8000000F;

enum class LineStyle : int { Solid = 0, Dotted = 2 };
enum class FillStyle : int { Solid = 0, Transparent = 1 };

/// A printer and how it is set up (paper, orientation and whatever else its driver knows).
struct PrinterDevice {
    std::wstring name;
    std::vector<std::byte> mode{}; ///< The driver's own block of settings; empty stands for its defaults.
    bool toFile = false;           ///< The system asks for a file when the job begins and prints into that.
};

/// A document on its way to paper, page by page: what `Printer` draws on. Every member but Abort throws RuntimeError
/// PrinterError when the device refuses.
class PrintPages {
public:
    virtual ~PrintPages() = default;

    /// Begins the next page and returns the device context (an HDC) to draw it on, valid until EndPage.
    virtual void* StartPage() = 0;
    virtual void EndPage() = 0;

    /// Hands the finished document over. Nothing is drawn after it.
    virtual void End() = 0;

    /// Throws the document away; no page of it is printed.
    virtual void Abort() noexcept = 0;
};

/// Opens a print job of one copy on a device, under the name the user sees in the queue. Throws PrinterError when the
/// printer is gone or takes no job.
std::unique_ptr<PrintPages> OpenPrintJob(const PrinterDevice& device, const std::wstring& documentName);

/// A page to write and draw on from top to bottom. Positions and lengths are twips (1440 to the inch) from the top left
/// corner of the printable area, y growing downwards; whatever margin the device itself cannot print is left alone.
///
/// There is a print position; text goes there and moves it. Lines and boxes are drawn at the positions given and leave
/// the print position alone.
///
/// Every call that draws or measures is checked: when the device fails, the whole document is thrown away and
/// RuntimeError PrinterError is thrown, so that no half report comes out of the printer. A document that was not ended
/// when its Printer goes away is thrown away too.
class Printer {
public:
    /// Starts the first page: font Arial 12, black, solid lines one pixel wide, fill transparent, position (0, 0).
    explicit Printer(std::unique_ptr<PrintPages> pages);
    Printer(const Printer&) = delete;
    Printer& operator=(const Printer&) = delete;
    Printer(Printer&&) noexcept;
    Printer& operator=(Printer&&) noexcept;
    ~Printer();

    double CurrentX() const noexcept;
    double CurrentY() const noexcept;
    void SetCurrentX(double twips) noexcept;
    void SetCurrentY(double twips) noexcept;

    void SetFontName(std::wstring name);
    void SetFontSize(double points);
    void SetFontBold(bool bold);
    void SetFontItalic(bool italic);

    /// Width of a line in device pixels, whatever the device's resolution.
    void SetDrawWidth(int pixels);
    void SetDrawStyle(LineStyle style);
    void SetFillStyle(FillStyle style);

    /// Prints at the print position and moves x behind the text.
    void Print(std::wstring_view text);

    /// Prints, then begins a new line: x is 0 and y one line of the current font further down.
    void PrintLine(std::wstring_view text = {});

    /// Moves x by the width of `count` blanks in the current font.
    void Skip(int count);

    /// Width of a text in the current font.
    double TextWidth(std::wstring_view text);

    /// For every length 1, 2, ... of the text's beginning its width in the current font; one measurement for all of
    /// them.
    std::vector<double> TextWidths(std::wstring_view text);

    /// Distance from one line of the current font to the next.
    double TextHeight();

    void Line(double x1, double y1, double x2, double y2);

    /// A rectangle outlined in `colour` and, with fill style solid, filled with it.
    void Box(double x1, double y1, double x2, double y2, PrintColour colour);

    /// Printable width of the page.
    double ScaleWidth();

    /// Number of the current page, counted from 1.
    std::int16_t Page() const noexcept;

    /// Ends the page and begins the next one with the same font and lines, at (0, 0).
    void NewPage();

    /// Ends the last page and hands the document to the printer.
    void EndDoc();

private:
    class Canvas;
    std::unique_ptr<Canvas> canvas_;
};
