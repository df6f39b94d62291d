#include "platform/Printer.h"

#include "platform/CheckedArithmetic.h"
#include "platform/RuntimeError.h"

#include <windows.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <type_traits>
#include <utility>

namespace {

constexpr double twipsPerInch = 1440;

// A dot and the gap behind it. Given in twips, so that a dotted line looks the same at 300 and at 1200 dots an inch.
constexpr double dotLength = 15;
constexpr double dotGap = 45;

struct DeleteGdiObject {
    void operator()(HGDIOBJ object) const noexcept { DeleteObject(object); }
};
template <typename Handle>
using GdiObject = std::unique_ptr<std::remove_pointer_t<Handle>, DeleteGdiObject>;

struct DeleteContext {
    void operator()(HDC context) const noexcept { DeleteDC(context); }
};
using OwnedContext = std::unique_ptr<std::remove_pointer_t<HDC>, DeleteContext>;

[[noreturn]] void RaisePrinterError()
{
    throw RuntimeError(ErrorNumber::PrinterError);
}

COLORREF ColourOf(PrintColour colour)
{
    constexpr PrintColour systemColour = 0x80000000;
    return (colour & systemColour) != 0 ? GetSysColor(static_cast<int>(colour & 0xFF)) : colour;
}

/// A job in the print queue of the system.
class QueuedPages final : public PrintPages {
public:
    QueuedPages(const PrinterDevice& device, const std::wstring& documentName)
    {
        std::vector<std::byte> mode = device.mode; // CreateDC wants its block writable
        auto* settings = mode.empty() ? nullptr : reinterpret_cast<DEVMODEW*>(mode.data());
        context_.reset(CreateDCW(nullptr, device.name.c_str(), nullptr, settings));
        if (!context_) {
            RaisePrinterError();
        }
        DOCINFOW document{};
        document.cbSize = sizeof document;
        document.lpszDocName = documentName.c_str();
        document.lpszOutput = device.toFile ? L"FILE:" : nullptr; // the port at which Windows asks for the file
        if (StartDocW(context_.get(), &document) <= 0) {
            RaisePrinterError();
        }
        open_ = true;
    }

    ~QueuedPages() override { Abort(); }
    QueuedPages(const QueuedPages&) = delete;
    QueuedPages& operator=(const QueuedPages&) = delete;

    void* StartPage() override
    {
        Check(::StartPage(context_.get()));
        return context_.get();
    }

    void EndPage() override { Check(::EndPage(context_.get())); }

    void End() override
    {
        Check(EndDoc(context_.get()));
        open_ = false;
    }

    void Abort() noexcept override
    {
        if (std::exchange(open_, false)) {
            AbortDoc(context_.get());
        }
    }

private:
    static void Check(int result)
    {
        if (result <= 0) {
            RaisePrinterError();
        }
    }

    OwnedContext context_;
    bool open_ = false;
};

} // namespace

std::unique_ptr<PrintPages> OpenPrintJob(const PrinterDevice& device, const std::wstring& documentName)
{
    return std::make_unique<QueuedPages>(device, documentName);
}

/// The state behind Printer. Fonts, pens and brushes are made when the next drawing needs them, and stay selected until
/// something about them changes or a new page begins on another device context.
class Printer::Canvas {
public:
    explicit Canvas(std::unique_ptr<PrintPages> pages) : pages_(std::move(pages)) { BeginPage(); }
    ~Canvas() { Abandon(); }
    Canvas(const Canvas&) = delete;
    Canvas& operator=(const Canvas&) = delete;

    void Print(std::wstring_view text);
    void BeginLine();
    std::vector<double> Widths(std::wstring_view text);
    double LineHeight();
    void Line(double x1, double y1, double x2, double y2);
    void Box(double x1, double y1, double x2, double y2, PrintColour colour);
    double PrintableWidth();
    void NewPage();
    void End();

    void ChangeFont() noexcept { fontIsStale_ = true; }
    void ChangePen() noexcept { penIsStale_ = true; }

    double x = 0;
    double y = 0;
    LOGFONTW font{};
    double fontSize = 12;
    int drawWidth = 1;
    LineStyle drawStyle = LineStyle::Solid;
    FillStyle fillStyle = FillStyle::Transparent;
    std::int16_t page = 0;

private:
    HDC Context();
    void Check(bool succeeded);
    void BeginPage();
    void LeavePage() noexcept;
    void Abandon() noexcept;
    void UseFont();
    void UsePen(PrintColour colour);
    int ToPixelsX(double twips) const { return static_cast<int>(std::lround(twips * dpiX_ / twipsPerInch)); }
    int ToPixelsY(double twips) const { return static_cast<int>(std::lround(twips * dpiY_ / twipsPerInch)); }

    std::unique_ptr<PrintPages> pages_;
    HDC context_ = nullptr;
    int dpiX_ = 1;
    int dpiY_ = 1;
    GdiObject<HFONT> font_;
    bool fontIsStale_ = true;
    GdiObject<HPEN> pen_;
    bool penIsStale_ = true;
    PrintColour penColour_ = printBlack;
};

HDC Printer::Canvas::Context()
{
    if (context_ == nullptr) {
        RaisePrinterError(); // the document has ended or was thrown away
    }
    return context_;
}

void Printer::Canvas::Check(bool succeeded)
{
    if (!succeeded) {
        Abandon();
        RaisePrinterError();
    }
}

void Printer::Canvas::BeginPage()
{
    try {
        context_ = static_cast<HDC>(pages_->StartPage());
        Check(context_ != nullptr);
    } catch (const RuntimeError&) {
        Abandon();
        throw;
    }
    dpiX_ = GetDeviceCaps(context_, LOGPIXELSX);
    dpiY_ = GetDeviceCaps(context_, LOGPIXELSY);
    Check(dpiX_ > 0 && dpiY_ > 0);
    Check(SetBkMode(context_, TRANSPARENT) != 0);
    Check(SetTextColor(context_, printBlack) != CLR_INVALID);
    page = CheckedInt16(page + 1);
    x = 0;
    y = 0;
    fontIsStale_ = true;
    penIsStale_ = true;
}

void Printer::Canvas::LeavePage() noexcept
{
    if (context_ != nullptr) {
        SelectObject(context_, GetStockObject(DEVICE_DEFAULT_FONT));
        SelectObject(context_, GetStockObject(BLACK_PEN));
        SelectObject(context_, GetStockObject(NULL_BRUSH));
        context_ = nullptr;
    }
}

void Printer::Canvas::Abandon() noexcept
{
    LeavePage();
    if (pages_) {
        pages_->Abort();
        pages_.reset();
    }
}

void Printer::Canvas::UseFont()
{
    const HDC context = Context();
    if (!fontIsStale_) {
        return;
    }
    font.lfHeight = -static_cast<LONG>(std::lround(fontSize * dpiY_ / 72));
    font.lfCharSet = DEFAULT_CHARSET;
    GdiObject<HFONT> made(CreateFontIndirectW(&font));
    Check(made && SelectObject(context, made.get()) != nullptr);
    font_ = std::move(made);
    fontIsStale_ = false;
}

void Printer::Canvas::UsePen(PrintColour colour)
{
    const HDC context = Context();
    if (!penIsStale_ && penColour_ == colour) {
        return;
    }
    const LOGBRUSH brush{BS_SOLID, ColourOf(colour), 0};
    const auto width = static_cast<DWORD>(drawWidth);
    GdiObject<HPEN> made;
    if (drawStyle == LineStyle::Dotted) {
        const std::array<DWORD, 2> dots{static_cast<DWORD>(std::max(1, ToPixelsX(dotLength))),
                                        static_cast<DWORD>(std::max(1, ToPixelsX(dotGap)))};
        made.reset(ExtCreatePen(PS_GEOMETRIC | PS_USERSTYLE | PS_ENDCAP_FLAT, width, &brush, dots.size(), dots.data()));
    } else {
        // Square ends: where two thick rules meet, their corner is full.
        made.reset(ExtCreatePen(PS_GEOMETRIC | PS_SOLID | PS_ENDCAP_SQUARE | PS_JOIN_MITER, width, &brush, 0, nullptr));
    }
    Check(made && SelectObject(context, made.get()) != nullptr);
    pen_ = std::move(made);
    penIsStale_ = false;
    penColour_ = colour;
}

void Printer::Canvas::Print(std::wstring_view text)
{
    if (text.empty()) {
        return;
    }
    UseFont();
    Check(TextOutW(Context(), ToPixelsX(x), ToPixelsY(y), text.data(), static_cast<int>(text.size())) != FALSE);
    x += Widths(text).back();
}

void Printer::Canvas::BeginLine()
{
    y += LineHeight();
    x = 0;
}

std::vector<double> Printer::Canvas::Widths(std::wstring_view text)
{
    std::vector<double> widths(text.size());
    if (text.empty()) {
        return widths;
    }
    UseFont();
    std::vector<INT> pixels(text.size());
    SIZE extent{};
    Check(GetTextExtentExPointW(Context(), text.data(), static_cast<int>(text.size()), 0, nullptr, pixels.data(),
                                &extent) != FALSE);
    for (std::size_t i = 0; i < pixels.size(); ++i) {
        widths[i] = pixels[i] * twipsPerInch / dpiX_;
    }
    return widths;
}

double Printer::Canvas::LineHeight()
{
    UseFont();
    TEXTMETRICW metrics{};
    Check(GetTextMetricsW(Context(), &metrics) != FALSE);
    return (metrics.tmHeight + metrics.tmExternalLeading) * twipsPerInch / dpiY_;
}

void Printer::Canvas::Line(double x1, double y1, double x2, double y2)
{
    UsePen(printBlack);
    Check(MoveToEx(Context(), ToPixelsX(x1), ToPixelsY(y1), nullptr) != FALSE);
    Check(LineTo(Context(), ToPixelsX(x2), ToPixelsY(y2)) != FALSE);
}

void Printer::Canvas::Box(double x1, double y1, double x2, double y2, PrintColour colour)
{
    UsePen(colour);
    GdiObject<HBRUSH> fill;
    if (fillStyle == FillStyle::Solid) {
        fill.reset(CreateSolidBrush(ColourOf(colour)));
        Check(fill != nullptr);
    }
    const HGDIOBJ none = GetStockObject(NULL_BRUSH);
    Check(SelectObject(Context(), fill ? fill.get() : none) != nullptr);
    const bool drawn = Rectangle(Context(), ToPixelsX(x1), ToPixelsY(y1), ToPixelsX(x2), ToPixelsY(y2)) != FALSE;
    SelectObject(Context(), none); // before `fill` goes away
    Check(drawn);
}

double Printer::Canvas::PrintableWidth()
{
    return GetDeviceCaps(Context(), HORZRES) * twipsPerInch / dpiX_;
}

void Printer::Canvas::NewPage()
{
    Context();
    LeavePage();
    try {
        pages_->EndPage();
    } catch (const RuntimeError&) {
        Abandon();
        throw;
    }
    BeginPage();
}

void Printer::Canvas::End()
{
    Context();
    LeavePage();
    try {
        pages_->EndPage();
        pages_->End();
    } catch (const RuntimeError&) {
        Abandon();
        throw;
    }
    pages_.reset();
}

Printer::Printer(std::unique_ptr<PrintPages> pages) : canvas_(std::make_unique<Canvas>(std::move(pages)))
{
    SetFontName(L"Arial");
}

Printer::Printer(Printer&&) noexcept = default;
Printer& Printer::operator=(Printer&&) noexcept = default;
Printer::~Printer() = default;

double Printer::CurrentX() const noexcept
{
    return canvas_->x;
}

double Printer::CurrentY() const noexcept
{
    return canvas_->y;
}

void Printer::SetCurrentX(double twips) noexcept
{
    canvas_->x = twips;
}

void Printer::SetCurrentY(double twips) noexcept
{
    canvas_->y = twips;
}

void Printer::SetFontName(std::wstring name)
{
    name.resize(LF_FACESIZE - 1, L'\0');
    name.copy(canvas_->font.lfFaceName, LF_FACESIZE - 1);
    canvas_->ChangeFont();
}

void Printer::SetFontSize(double points)
{
    canvas_->fontSize = points;
    canvas_->ChangeFont();
}

void Printer::SetFontBold(bool bold)
{
    canvas_->font.lfWeight = bold ? FW_BOLD : FW_NORMAL;
    canvas_->ChangeFont();
}

void Printer::SetFontItalic(bool italic)
{
    canvas_->font.lfItalic = italic ? TRUE : FALSE;
    canvas_->ChangeFont();
}

void Printer::SetDrawWidth(int pixels)
{
    canvas_->drawWidth = pixels;
    canvas_->ChangePen();
}

void Printer::SetDrawStyle(LineStyle style)
{
    canvas_->drawStyle = style;
    canvas_->ChangePen();
}

void Printer::SetFillStyle(FillStyle style)
{
    canvas_->fillStyle = style;
}

void Printer::Print(std::wstring_view text)
{
    canvas_->Print(text);
}

void Printer::PrintLine(std::wstring_view text)
{
    canvas_->Print(text);
    canvas_->BeginLine();
}

void Printer::Skip(int count)
{
    canvas_->x += count * TextWidth(L" ");
}

double Printer::TextWidth(std::wstring_view text)
{
    return text.empty() ? 0 : canvas_->Widths(text).back();
}

std::vector<double> Printer::TextWidths(std::wstring_view text)
{
    return canvas_->Widths(text);
}

double Printer::TextHeight()
{
    return canvas_->LineHeight();
}

void Printer::Line(double x1, double y1, double x2, double y2)
{
    canvas_->Line(x1, y1, x2, y2);
}

void Printer::Box(double x1, double y1, double x2, double y2, PrintColour colour)
{
    canvas_->Box(x1, y1, x2, y2, colour);
}

double Printer::ScaleWidth()
{
    return canvas_->PrintableWidth();
}

std::int16_t Printer::Page() const noexcept
{
    return canvas_->page;
}

void Printer::NewPage()
{
    canvas_->NewPage();
}

void Printer::EndDoc()
{
    canvas_->End();
}
