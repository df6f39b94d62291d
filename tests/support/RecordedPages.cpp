#include "tests/support/RecordedPages.h"

#include "platform/system/RuntimeError.h"

#include <windows.h>

#include <winspool.h>

#include <array>
#include <cmath>
#include <map>
#include <stdexcept>
#include <utility>
#include <variant>

namespace {

std::wstring DefaultPrinter()
{
    std::array<wchar_t, 256> name{};
    auto size = static_cast<DWORD>(name.size());
    if (GetDefaultPrinterW(name.data(), &size) == FALSE) {
        throw std::runtime_error("this test needs a machine with a printer");
    }
    return name.data();
}

HDC ContextOf(const PrinterDevice& device)
{
    std::vector<std::byte> mode = device.mode;
    return CreateICW(nullptr, device.name.c_str(), nullptr,
                     mode.empty() ? nullptr : reinterpret_cast<DEVMODEW*>(mode.data()));
}

/// The beginning of a record of ExtCreatePen as Wine 10 writes it: the pen has its 64-bit layout, with padding before
/// it, at an address that is not aligned for it. Windows writes the 32-bit layout without padding.
struct CreatePenRecord {
    EMR emr;
    DWORD ihPen;
    std::array<DWORD, 4> bitmap;
    DWORD padding;
    DWORD style;
    DWORD width;
    DWORD brush;
    COLORREF colour;
};

/// Reads the records of a metafile.
class Reader {
public:
    Reader(RecordedPage& page, int dpi) : page_(page), dpi_(dpi) {}

    static int CALLBACK TakeRecord(HDC, HANDLETABLE*, const ENHMETARECORD* record, int, LPARAM reader)
    {
        reinterpret_cast<Reader*>(reader)->Take(record);
        return 1;
    }

private:
    struct Pen {
        int width = 1;
        bool dotted = false;
        PrintColour colour = printBlack;
    };
    struct Brush {
        bool solid = false;
        PrintColour colour = 0;
    };
    using Object = std::variant<LOGFONTW, Pen, Brush>;

    template <typename Record>
    static const Record& As(const ENHMETARECORD* record)
    {
        return *reinterpret_cast<const Record*>(record);
    }

    double Twips(LONG pixels) const { return pixels * 1440.0 / dpi_; }

    void Take(const ENHMETARECORD* record);
    void TakeObject(const ENHMETARECORD* record);
    void Select(DWORD handle);
    void TakeText(const EMREXTTEXTOUTW& text);
    void TakeLine(POINTL to);
    void TakeBox(RECTL box);

    RecordedPage& page_;
    int dpi_;
    std::map<DWORD, Object> objects_;
    LOGFONTW font_{};
    Pen pen_;
    Brush brush_;
    bool transparent_ = false;
    POINTL position_{};
    std::size_t drawn_ = 0;
};

void Reader::Select(DWORD handle)
{
    const auto found = objects_.find(handle);
    if (found == objects_.end()) {
        if (handle == (ENHMETA_STOCK_OBJECT | NULL_BRUSH)) {
            brush_ = {};
        }
        return;
    }
    if (const auto* font = std::get_if<LOGFONTW>(&found->second)) {
        font_ = *font;
    } else if (const auto* pen = std::get_if<Pen>(&found->second)) {
        pen_ = *pen;
    } else {
        brush_ = std::get<Brush>(found->second);
    }
}

void Reader::TakeText(const EMREXTTEXTOUTW& text)
{
    const auto* first = reinterpret_cast<const std::byte*>(&text) + text.emrtext.offString;
    page_.texts.push_back({std::wstring(reinterpret_cast<const wchar_t*>(first), text.emrtext.nChars),
                           Twips(text.emrtext.ptlReference.x), Twips(text.emrtext.ptlReference.y), font_.lfFaceName,
                           -font_.lfHeight * 72.0 / dpi_, font_.lfWeight >= FW_BOLD, font_.lfItalic != 0,
                           transparent_});
    ++drawn_;
}

void Reader::TakeLine(POINTL to)
{
    page_.lines.push_back({Twips(position_.x), Twips(position_.y), Twips(to.x), Twips(to.y), pen_.width, pen_.dotted,
                           pen_.colour, drawn_++});
    position_ = to;
}

void Reader::TakeBox(RECTL box)
{
    page_.boxes.push_back({Twips(box.left), Twips(box.top), Twips(box.right), Twips(box.bottom), pen_.colour,
                           brush_.solid, brush_.colour, drawn_++});
}

void Reader::TakeObject(const ENHMETARECORD* record)
{
    switch (record->iType) {
    case EMR_EXTCREATEFONTINDIRECTW: {
        const auto& made = As<EMREXTCREATEFONTINDIRECTW>(record);
        objects_[made.ihFont] = made.elfw.elfLogFont;
        break;
    }
    case EMR_EXTCREATEPEN: {
        const auto& made = As<CreatePenRecord>(record);
        objects_[made.ihPen] =
            Pen{static_cast<int>(made.width), (made.style & PS_STYLE_MASK) == PS_USERSTYLE, made.colour};
        break;
    }
    case EMR_CREATEPEN: {
        const auto& made = As<EMRCREATEPEN>(record); // Wine 8 records every pen this way
        objects_[made.ihPen] = Pen{static_cast<int>(made.lopn.lopnWidth.x),
                                   (made.lopn.lopnStyle & PS_STYLE_MASK) == PS_USERSTYLE, made.lopn.lopnColor};
        break;
    }
    case EMR_CREATEBRUSHINDIRECT: {
        const auto& made = As<EMRCREATEBRUSHINDIRECT>(record);
        objects_[made.ihBrush] = Brush{made.lb.lbStyle == BS_SOLID, made.lb.lbColor};
        break;
    }
    default:
        break;
    }
}

void Reader::Take(const ENHMETARECORD* record)
{
    switch (record->iType) {
    case EMR_EXTCREATEFONTINDIRECTW:
    case EMR_EXTCREATEPEN:
    case EMR_CREATEPEN:
    case EMR_CREATEBRUSHINDIRECT:
        TakeObject(record);
        break;
    case EMR_SELECTOBJECT:
        Select(As<EMRSELECTOBJECT>(record).ihObject);
        break;
    case EMR_SETBKMODE:
        transparent_ = As<EMRSETBKMODE>(record).iMode == TRANSPARENT;
        break;
    case EMR_MOVETOEX:
        position_ = As<EMRMOVETOEX>(record).ptl;
        break;
    case EMR_LINETO:
        TakeLine(As<EMRLINETO>(record).ptl);
        break;
    case EMR_RECTANGLE:
        TakeBox(As<EMRRECTANGLE>(record).rclBox);
        break;
    case EMR_EXTTEXTOUTW:
        TakeText(As<EMREXTTEXTOUTW>(record));
        break;
    default:
        break;
    }
}

class Recorder final : public PrintPages {
public:
    Recorder(std::shared_ptr<Recording> recording, const PrinterDevice& device)
        : recording_(std::move(recording)), device_(ContextOf(device)), dpi_(GetDeviceCaps(device_, LOGPIXELSX))
    {
    }

    ~Recorder() override
    {
        if (metafile_ != nullptr) {
            DeleteEnhMetaFile(CloseEnhMetaFile(metafile_));
        }
        DeleteDC(device_);
    }
    Recorder(const Recorder&) = delete;
    Recorder& operator=(const Recorder&) = delete;

    void* StartPage() override
    {
        FailIf(recording_->failingPage == static_cast<int>(recording_->pages.size()) + 1);
        metafile_ = CreateEnhMetaFileW(device_, nullptr, nullptr, nullptr);
        return metafile_;
    }

    void EndPage() override
    {
        FailIf(recording_->failAtEndOfPage);
        HENHMETAFILE done = CloseEnhMetaFile(std::exchange(metafile_, nullptr));
        Reader reader(recording_->pages.emplace_back(), dpi_);
        EnumEnhMetaFile(nullptr, done, &Reader::TakeRecord, &reader, nullptr);
        DeleteEnhMetaFile(done);
    }

    void End() override
    {
        FailIf(recording_->failAtEnd);
        recording_->ended = true;
    }

    void Abort() noexcept override { recording_->aborted = true; }

private:
    static void FailIf(bool fails)
    {
        if (fails) {
            throw RuntimeError(ErrorNumber::PrinterError);
        }
    }

    std::shared_ptr<Recording> recording_;
    HDC device_;
    int dpi_;
    HDC metafile_ = nullptr;
};

} // namespace

std::unique_ptr<PrintPages> RecordPages(std::shared_ptr<Recording> recording)
{
    return RecordPages(std::move(recording), {.name = DefaultPrinter()});
}

std::unique_ptr<PrintPages> RecordPages(std::shared_ptr<Recording> recording, const PrinterDevice& device)
{
    return std::make_unique<Recorder>(std::move(recording), device);
}
