#include "platform/windows/Control.h"

#include "platform/system/RuntimeError.h"
#include "platform/windows/Fonts.h"
#include "platform/windows/Form.h"
#include "platform/windows/UnhandledError.h"

#include <windows.h>

/// The window procedure of every control. It calls Control::Message and then the procedure of the window class.
///
/// Wine: SetWindowSubclass finds its data by GetProp with a name, which costs two calls to the Wine server for every
/// message. Windows looks the name up within the process. With SetWindowSubclass a tree of 700 nodes takes twenty times
/// as long to fill, so the procedure is replaced by SetWindowLongPtr and the control is in GWLP_USERDATA.
struct ControlObserver {
    static void Attach(Control& control);
    static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
};

Control::Control(Form& form, const char* name) : form_(form), name_(name)
{
    form.Register(*this);
}

WindowHandle Control::Handle() const
{
    if (window_ == nullptr) {
        throw RuntimeError(ErrorNumber::InvalidProcedureCall);
    }
    return window_;
}

std::intptr_t Control::Send(unsigned message, std::uintptr_t wParam, std::intptr_t lParam) const
{
    return SendMessageW(Handle(), message, wParam, lParam);
}

bool Control::Enabled() const
{
    return IsWindowEnabled(Handle()) != FALSE;
}

void Control::SetEnabled(bool enabled)
{
    const HWND window = Handle();
    if (!enabled && GetFocus() == window) {
        // A disabled window with the focus gets no keyboard input, and no other window does.
        SendMessageW(form_.Handle(), WM_NEXTDLGCTL, 0, FALSE);
    }
    EnableWindow(window, enabled ? TRUE : FALSE);
}

void Control::SetVisible(bool visible) const
{
    ShowWindow(Handle(), visible ? SW_SHOWNA : SW_HIDE);
}

void Control::SetFocus() const
{
    ::SetFocus(Handle());
}

void Control::Move(const TwipsRect& place)
{
    place_ = place;
    Place();
}

void Control::Place()
{
    const int left = Pixels(place_.left);
    const int top = Pixels(place_.top);
    // Edges are rounded, not sizes, so that controls that meet in twips also meet in pixels.
    const int width = Pixels(place_.left + place_.width) - left;
    const int height = Pixels(place_.top + place_.height) - top;
    const int pageLeft = page_ != nullptr ? Pixels(page_->place_.left) : 0;
    const int pageTop = page_ != nullptr ? Pixels(page_->place_.top) : 0;
    SetWindowPos(Handle(), nullptr, left - pageLeft, top - pageTop, width, height, SWP_NOZORDER | SWP_NOACTIVATE);
}

void Control::SetFont(const ControlFont& font)
{
    font_ = font;
    if (window_ != nullptr) {
        ApplyFont();
    }
}

void Control::SetForeColor(SystemColor color)
{
    foreColor_ = color;
    InvalidateRect(Handle(), nullptr, TRUE);
}

void Control::SetBackColor(SystemColor color)
{
    backColor_ = color;
    InvalidateRect(Handle(), nullptr, TRUE);
}

std::wstring Control::OwnText() const
{
    const HWND window = Handle();
    std::wstring text(static_cast<std::size_t>(GetWindowTextLengthW(window)), L'\0');
    const int length = GetWindowTextW(window, text.data(), static_cast<int>(text.size()) + 1);
    text.resize(static_cast<std::size_t>(length));
    return text;
}

void Control::SetOwnText(const std::wstring& text) const
{
    SetWindowTextW(Handle(), text.c_str());
}

int Control::Pixels(int twips) const
{
    return ToPixels(twips, form_.Dpi());
}

void Control::Create(int id, const TwipsRect& place, Control* page, bool startsGroup)
{
    const WindowKind kind = Kind();
    place_ = place;
    page_ = page;
    foreColor_ = SystemColor::Default;
    backColor_ = SystemColor::Default;
    window_ = CreateWindowExW(kind.extendedStyle, kind.windowClass, L"",
                              kind.style | WS_CHILD | WS_VISIBLE | (startsGroup ? static_cast<DWORD>(WS_GROUP) : 0U), 0,
                              0, 0, 0, page != nullptr ? page->Handle() : form_.Handle(),
                              reinterpret_cast<HMENU>(static_cast<INT_PTR>(id)), nullptr, nullptr);
    if (window_ == nullptr) {
        throw RuntimeError(ErrorFromWin32(GetLastError()));
    }
    ControlObserver::Attach(*this);
    Created();
}

void Control::ApplyFont()
{
    const bool usual = font_.face.empty() && font_.points == 0 && !font_.bold && !font_.underline;
    FontOwner former = std::move(ownFont_);
    ownFont_ = usual ? nullptr : MakeFont(font_, form_.monitorDpi_);
    HFONT font = usual ? form_.font_.get() : ownFont_.get();
    Send(WM_SETFONT, reinterpret_cast<WPARAM>(font), TRUE);
}

void Control::Forget() noexcept
{
    window_ = nullptr;
    ownFont_.reset();
}

void ControlObserver::Attach(Control& control)
{
    SetWindowLongPtrW(control.window_, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(&control));
    control.systemProcedure_ =
        SetWindowLongPtrW(control.window_, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(&ControlObserver::Procedure));
}

LRESULT CALLBACK ControlObserver::Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
{
    auto& control = *reinterpret_cast<Control*>(GetWindowLongPtrW(window, GWLP_USERDATA));
    auto* const systemProcedure = reinterpret_cast<WNDPROC>(control.systemProcedure_);
    if (message >= WM_SYSKEYDOWN && message <= WM_SYSCHAR && control.LeavesAltKeys()) {
        return DefWindowProcW(window, message, wParam, lParam);
    }
    const auto keepAlive = control.form_.weak_from_this().lock();
    if (keepAlive) {
        Guarded([&] { control.Message(message, wParam, lParam); });
    }
    const LRESULT result = CallWindowProcW(systemProcedure, window, message, wParam, lParam);
    if (message == WM_PAINT && keepAlive && control.window_ == window) {
        Guarded([&] { control.Painted(); });
    }
    return result;
}

PaintedOnce::PaintedOnce(Control& control) : control_(control)
{
    if (control_.unpainted_++ == 0) {
        control_.Send(WM_SETREDRAW, FALSE);
    }
}

PaintedOnce::~PaintedOnce()
{
    if (--control_.unpainted_ == 0 && control_.window_ != nullptr) {
        SendMessageW(control_.window_, WM_SETREDRAW, TRUE, 0);
        InvalidateRect(control_.window_, nullptr, TRUE);
        control_.PaintedAgain();
    }
}
