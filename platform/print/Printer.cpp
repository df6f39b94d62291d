#include "platform/print/Printer.h"

#include "platform/system/CheckedArithmetic.h"
#include "platform/system/RuntimeError.h"

#include <windows.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <type_traits>
#include <utility>

namespace {

constexpr double twipsPerInch = 1440;

// A dot and the gap after it, in twips, so that a dotted line looks the same at every resolution.
constexpr double dotLength = 15;
constexpr double dotGap = 45;

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

/// A job in the print queue of Windows.
class QueuedPages final : public PrintPages {
public:
    QueuedPages(const PrinterDevice& device, const std::wstring& documentName)
    {
        std::vector<std::byte> mode = device.mode; // CreateDC takes a pointer that is not const
        auto* settings = mode.empty() ? nullptr : reinterpret_cast<DEVMODEW*>(mode.data());
        context_.reset(CreateDCW(nullptr, device.name.c_str(), nullptr, settings));
        if (!context_) {
            RaisePrinterError();
        }
        DOCINFOW document{};
        document.cbSize = sizeof document;
        document.lpszDocName = documentName.c_str();
        document.lpszOutput = device.toFile ? L"FILE:" : nullptr; // Windows asks for the file
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

void PageLeaver::operator()(HDC context) const noexcept
{
    SelectObject(context, GetStockObject(DEVICE_DEFAULT_FONT));
    SelectObject(context, GetStockObject(BLACK_PEN));
    SelectObject(context, GetStockObject(NULL_BRUSH));
}

Printer::Printer(std::unique_ptr<PrintPages> pages) : pages_(std::move(pages))
{
    BeginPage();
}

Printer::Printer(Printer&&) noexcept = default;

Printer::~Printer()
{
    Abort();
}

int Printer::ToPixelsX(double twips) const
{
    return static_cast<int>(std::lround(twips * scale_ * dpiX_ / twipsPerInch));
}

int Printer::ToPixelsY(double twips) const
{
    return static_cast<int>(std::lround(twips * scale_ * dpiY_ / twipsPerInch));
}

void Printer::SetFontName(std::wstring name)
{
    fontName_ = std::move(name);
    fontIsStale_ = true;
}

void Printer::SetFontSize(double points)
{
    fontSize_ = points;
    fontIsStale_ = true;
}

void Printer::SetFontBold(bool bold)
{
    bold_ = bold;
    fontIsStale_ = true;
}

void Printer::SetFontItalic(bool italic)
{
    italic_ = italic;
    fontIsStale_ = true;
}

void Printer::SetDrawWidth(int pixels)
{
    drawWidth_ = pixels;
    penIsStale_ = true;
}

void Printer::SetDrawStyle(LineStyle style)
{
    drawStyle_ = style;
    penIsStale_ = true;
}

HDC Printer::Context()
{
    if (!context_) {
        RaisePrinterError(); // the document has been ended or discarded
    }
    return context_.get();
}

void Printer::Check(bool succeeded)
{
    if (!succeeded) {
        Abort();
        RaisePrinterError();
    }
}

void Printer::BeginPage()
{
    try {
        context_.reset(static_cast<HDC>(pages_->StartPage()));
        Check(context_ != nullptr);
    } catch (const RuntimeError&) {
        Abort();
        throw;
    }
    dpiX_ = GetDeviceCaps(Context(), LOGPIXELSX);
    dpiY_ = GetDeviceCaps(Context(), LOGPIXELSY);
    Check(dpiX_ > 0 && dpiY_ > 0);
    Check(SetBkMode(Context(), TRANSPARENT) != 0);
    Check(SetTextColor(Context(), printBlack) != CLR_INVALID);
    page_ = CheckedInt16(page_ + 1);
    x_ = 0;
    y_ = 0;
    fontIsStale_ = true;
    selectedFont_ = nullptr;
    penIsStale_ = true;
}

void Printer::Abort() noexcept
{
    context_.reset();
    if (pages_) {
        pages_->Abort();
        pages_.reset();
    }
}

FontOwner Printer::MakeFont(double scale)
{
    LOGFONTW font{};
    font.lfHeight = -static_cast<LONG>(std::lround(fontSize_ * scale * dpiY_ / 72));
    font.lfWeight = bold_ ? FW_BOLD : FW_NORMAL;
    font.lfItalic = italic_ ? TRUE : FALSE;
    font.lfCharSet = DEFAULT_CHARSET;
    lstrcpynW(font.lfFaceName, fontName_.c_str(), LF_FACESIZE);
    FontOwner made(CreateFontIndirectW(&font));
    Check(made != nullptr);
    return made;
}

void Printer::MakeFonts()
{
    Context();
    if (!fontIsStale_) {
        return;
    }
    FontOwner made = MakeFont(scale_);
    FontOwner fullSize = scale_ < 1 ? MakeFont(1) : nullptr;
    Select(made); // before the former font is deleted
    font_ = std::move(made);
    fullSizeFont_ = std::move(fullSize);
    fontIsStale_ = false;
}

void Printer::Select(const FontOwner& font)
{
    if (selectedFont_ != font.get()) {
        Check(SelectObject(Context(), font.get()) != nullptr);
        selectedFont_ = font.get();
    }
}

HDC Printer::ContextToWrite()
{
    MakeFonts();
    Select(font_);
    return Context();
}

/// Text is measured at full size also if it is drawn smaller: the sizes of small fonts are rounded to pixels, and
/// rounded lines could need more height than the page has.
HDC Printer::ContextToMeasure()
{
    MakeFonts();
    Select(fullSizeFont_ ? fullSizeFont_ : font_);
    return Context();
}

void Printer::UsePen(PrintColour colour)
{
    const HDC context = Context();
    if (!penIsStale_ && penColour_ == colour) {
        return;
    }
    const LOGBRUSH brush{BS_SOLID, ColourOf(colour), 0};
    const auto width = static_cast<DWORD>(std::max(1L, std::lround(drawWidth_ * scale_)));
    PenOwner made;
    if (drawStyle_ == LineStyle::Dotted) {
        const std::array<DWORD, 2> dots{static_cast<DWORD>(std::max(1, ToPixelsX(dotLength))),
                                        static_cast<DWORD>(std::max(1, ToPixelsX(dotGap)))};
        made.reset(ExtCreatePen(PS_GEOMETRIC | PS_USERSTYLE | PS_ENDCAP_FLAT, width, &brush, dots.size(), dots.data()));
    } else {
        // Square ends fill the corner of two thick lines.
        made.reset(ExtCreatePen(PS_GEOMETRIC | PS_SOLID | PS_ENDCAP_SQUARE | PS_JOIN_MITER, width, &brush, 0, nullptr));
    }
    Check(made && SelectObject(context, made.get()) != nullptr);
    pen_ = std::move(made);
    penIsStale_ = false;
    penColour_ = colour;
}

void Printer::Print(std::wstring_view text)
{
    if (text.empty()) {
        return;
    }
    const std::vector<double> widths = TextWidths(text);
    const int left = ToPixelsX(x_);
    std::vector<INT> steps;
    if (scale_ < 1) {
        // Each character is placed where it was measured; the rounded widths of a small font would add up.
        int place = left;
        for (const double width : widths) {
            const int next = ToPixelsX(x_ + width);
            steps.push_back(next - std::exchange(place, next));
        }
    }
    Check(ExtTextOutW(ContextToWrite(), left, ToPixelsY(y_), 0, nullptr, text.data(), static_cast<UINT>(text.size()),
                      steps.empty() ? nullptr : steps.data()) != FALSE);
    x_ += widths.back();
}

void Printer::PrintLine(std::wstring_view text)
{
    Print(text);
    y_ += TextHeight();
    x_ = 0;
}

void Printer::Skip(int count)
{
    x_ += count * TextWidth(L" ");
}

double Printer::TextWidth(std::wstring_view text)
{
    return text.empty() ? 0 : TextWidths(text).back();
}

std::vector<double> Printer::TextWidths(std::wstring_view text)
{
    std::vector<double> widths(text.size());
    if (text.empty()) {
        return widths;
    }
    std::vector<INT> pixels(text.size());
    SIZE extent{};
    Check(GetTextExtentExPointW(ContextToMeasure(), text.data(), static_cast<int>(text.size()), 0, nullptr,
                                pixels.data(), &extent) != FALSE);
    for (std::size_t i = 0; i < pixels.size(); ++i) {
        widths[i] = pixels[i] * twipsPerInch / dpiX_;
    }
    return widths;
}

double Printer::TextHeight()
{
    TEXTMETRICW metrics{};
    Check(GetTextMetricsW(ContextToMeasure(), &metrics) != FALSE);
    return (metrics.tmHeight + metrics.tmExternalLeading) * twipsPerInch / dpiY_;
}

void Printer::FitHeight(double twips)
{
    const double printable = GetDeviceCaps(Context(), VERTRES) * twipsPerInch / dpiY_;
    Check(printable > 0);
    scale_ = std::min(1.0, printable / twips);
    fontIsStale_ = true;
    penIsStale_ = true;
}

void Printer::Line(double x1, double y1, double x2, double y2)
{
    UsePen(printBlack);
    Check(MoveToEx(Context(), ToPixelsX(x1), ToPixelsY(y1), nullptr) != FALSE);
    Check(LineTo(Context(), ToPixelsX(x2), ToPixelsY(y2)) != FALSE);
}

void Printer::Box(double x1, double y1, double x2, double y2, PrintColour colour)
{
    UsePen(colour);
    BrushOwner fill;
    if (fillStyle_ == FillStyle::Solid) {
        fill.reset(CreateSolidBrush(ColourOf(colour)));
        Check(fill != nullptr);
    }
    const HGDIOBJ none = GetStockObject(NULL_BRUSH);
    Check(SelectObject(Context(), fill ? fill.get() : none) != nullptr);
    const bool drawn = Rectangle(Context(), ToPixelsX(x1), ToPixelsY(y1), ToPixelsX(x2), ToPixelsY(y2)) != FALSE;
    SelectObject(Context(), none); // before `fill` is deleted
    Check(drawn);
}

double Printer::ScaleWidth()
{
    return GetDeviceCaps(Context(), HORZRES) * twipsPerInch / dpiX_ / scale_;
}

void Printer::NewPage()
{
    Context();
    context_.reset();
    try {
        pages_->EndPage();
    } catch (const RuntimeError&) {
        Abort();
        throw;
    }
    BeginPage();
}

void Printer::EndDoc()
{
    Context();
    context_.reset();
    try {
        pages_->EndPage();
        pages_->End();
    } catch (const RuntimeError&) {
        Abort();
        throw;
    }
    pages_.reset();
}
