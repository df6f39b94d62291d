// Pictures on forms.

#include "platform/system/RuntimeError.h"
#include "platform/windows/Com.h"
#include "platform/windows/Controls.h"
#include "platform/windows/DeviceContext.h"

#include <windows.h>

#include <ocidl.h>
#include <olectl.h>

#include <cstring>

namespace {

/// A memory device context with a bitmap selected.
class BitmapSurface {
public:
    explicit BitmapSurface(HBITMAP bitmap)
        : surface_(CreateCompatibleDC(nullptr)), former_(SelectObject(surface_, bitmap))
    {
    }
    ~BitmapSurface()
    {
        SelectObject(surface_, former_);
        DeleteDC(surface_);
    }
    BitmapSurface(const BitmapSurface&) = delete;
    BitmapSurface& operator=(const BitmapSurface&) = delete;

    HDC Get() const noexcept { return surface_; }

private:
    HDC surface_;
    HGDIOBJ former_;
};

ComOwner<IStream> ResourceStream(int id)
{
    HMODULE program = GetModuleHandleW(nullptr);
    HRSRC found = FindResourceW(program, MAKEINTRESOURCEW(id), L"GIF");
    if (found == nullptr) {
        throw RuntimeError(ErrorNumber::ResourceNotFound);
    }
    const DWORD size = SizeofResource(program, found);
    GlobalMemoryOwner memory(GlobalAlloc(GMEM_MOVEABLE, size));
    IStream* stream = nullptr;
    if (memory == nullptr || FAILED(CreateStreamOnHGlobal(memory.get(), TRUE, &stream))) {
        throw RuntimeError(ErrorNumber::OutOfMemory);
    }
    ComOwner<IStream> owned(stream); // frees the memory, too
    std::memcpy(GlobalLock(memory.get()), LockResource(LoadResource(program, found)), size);
    GlobalUnlock(memory.release());
    return owned;
}

ComOwner<IPicture> LoadPicture(int id)
{
    const auto stream = ResourceStream(id);
    void* picture = nullptr;
    if (FAILED(OleLoadPicture(stream.get(), 0, FALSE, IID_IPicture, &picture))) {
        throw RuntimeError(ErrorNumber::ResourceNotFound);
    }
    return ComOwner<IPicture>(static_cast<IPicture*>(picture));
}

/// The picture in the given size, in pixels.
BitmapOwner DrawPicture(int id, int width, int height)
{
    const ComApartment com;
    const auto picture = LoadPicture(id);
    OLE_HANDLE handle = 0;
    BITMAP original{};
    picture->get_Handle(&handle);
    const auto bitmap = reinterpret_cast<HBITMAP>(static_cast<INT_PTR>(static_cast<int>(handle)));
    GetObjectW(bitmap, sizeof original, &original);

    BitmapOwner drawn(CreateCompatibleBitmap(ClientContext(nullptr).Get(), width, height));
    const BitmapSurface from(bitmap);
    const BitmapSurface to(drawn.get());
    // HALFTONE averages the pixels: the picture is larger than its place at most DPIs.
    SetStretchBltMode(to.Get(), HALFTONE);
    SetBrushOrgEx(to.Get(), 0, 0, nullptr);
    StretchBlt(to.Get(), 0, 0, width, height, from.Get(), 0, 0, original.bmWidth, original.bmHeight, SRCCOPY);
    return drawn;
}

} // namespace

Control::WindowKind Image::Kind() const
{
    // SS_NOTIFY: the picture gets the mouse messages, not the form.
    return {L"STATIC", SS_BITMAP | SS_NOTIFY};
}

void Image::Scaled()
{
    BitmapOwner drawn =
        DrawPicture(resource_, Pixels(Left() + Width()) - Pixels(Left()), Pixels(Top() + Height()) - Pixels(Top()));
    const auto shown =
        reinterpret_cast<HGDIOBJ>(Send(STM_SETIMAGE, IMAGE_BITMAP, reinterpret_cast<LPARAM>(drawn.get())));
    if (shown != drawn_.get()) {
        DeleteObject(shown); // the control has made a copy of the bitmap
    }
    drawn_ = std::move(drawn);
}
