#include "platform/FormWindow.h"

#include "platform/Fonts.h"
#include "platform/RuntimeError.h"
#include "platform/UnhandledError.h"

#include <commctrl.h>

#include <algorithm>
#include <array>

namespace {

/// The main window has a class of its own; a dialog is one of the system's dialogs. Both behave as dialogs towards the
/// keyboard: Tab, Enter, Esc, and the focus comes back when the window does.
constexpr const wchar_t* mainClass = L"Odomira";
constexpr int iconResource = 1;

constexpr DWORD mainStyle = WS_OVERLAPPEDWINDOW | WS_CLIPCHILDREN;
constexpr DWORD dialogStyle = WS_POPUP | WS_CAPTION | WS_SYSMENU | DS_MODALFRAME;

/// Once in the life of the program, before its first window.
void PrepareWindows()
{
    static const bool prepared = [] {
        constexpr INITCOMMONCONTROLSEX used{sizeof(INITCOMMONCONTROLSEX), ICC_TREEVIEW_CLASSES | ICC_BAR_CLASSES |
                                                                              ICC_TAB_CLASSES | ICC_UPDOWN_CLASS |
                                                                              ICC_STANDARD_CLASSES};
        InitCommonControlsEx(&used);
        WNDCLASSEXW wc{};
        wc.cbSize = sizeof wc;
        wc.style = CS_HREDRAW | CS_VREDRAW;
        wc.lpfnWndProc = DefDlgProcW;
        wc.cbWndExtra = DLGWINDOWEXTRA;
        wc.hInstance = GetModuleHandleW(nullptr);
        wc.hIcon = LoadIconW(wc.hInstance, MAKEINTRESOURCEW(iconResource));
        wc.hCursor = LoadCursorW(nullptr, IDC_ARROW);
        wc.hbrBackground = reinterpret_cast<HBRUSH>(static_cast<INT_PTR>(COLOR_BTNFACE + 1));
        wc.lpszClassName = mainClass;
        return RegisterClassExW(&wc) != 0;
    }();
    if (!prepared) {
        throw RuntimeError(ErrorNumber::OutOfMemory);
    }
}

bool IsDark(COLORREF color)
{
    constexpr int half = 128 * 1000;
    return 299 * GetRValue(color) + 587 * GetGValue(color) + 114 * GetBValue(color) < half;
}

/// Some themes give links a colour for dark grounds also where the ground is light. There the usual blue is legible; on
/// a dark ground and in high contrast the system's or the user's own choice is.
COLORREF LinkColor()
{
    HIGHCONTRASTW contrast{};
    contrast.cbSize = sizeof contrast;
    SystemParametersInfoW(SPI_GETHIGHCONTRAST, sizeof contrast, &contrast, 0);
    const bool chosen = (contrast.dwFlags & HCF_HIGHCONTRASTON) != 0 || IsDark(GetSysColor(COLOR_BTNFACE));
    return chosen ? GetSysColor(COLOR_HOTLIGHT) : RGB(0, 102, 204);
}

/// A dialog template in memory: no controls, no menu, an empty title.
class FrameTemplate {
public:
    explicit FrameTemplate(FormKind kind)
    {
        header_.style = kind == FormKind::Main ? mainStyle : dialogStyle;
        header_.dwExtendedStyle = WS_EX_CONTROLPARENT;
        if (kind == FormKind::Main) {
            constexpr std::size_t menuName = 1; // empty
            std::copy_n(mainClass, std::char_traits<wchar_t>::length(mainClass), texts_.data() + menuName);
        }
    }
    const DLGTEMPLATE* Get() const noexcept { return &header_; }

private:
    DLGTEMPLATE header_{};
    std::array<wchar_t, 32> texts_{}; ///< menu, class and title, directly behind the header
    static_assert(sizeof(DLGTEMPLATE) % sizeof(wchar_t) == 0, "the texts must follow without a gap");
};

/// Comes after a handler has corrected the size that it was told of. A size set while the window manager is still
/// announcing its own may get lost on the way back: the frame would stay too small for what is in it.
constexpr UINT sizeIsCorrected = WM_APP;

SIZE SizeOf(HWND window)
{
    RECT outer{};
    GetWindowRect(window, &outer);
    return {outer.right - outer.left, outer.bottom - outer.top};
}

void ConfirmSize(HWND window)
{
    const SIZE size = SizeOf(window);
    SetWindowPos(window, nullptr, 0, 0, size.cx, size.cy, SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
}

} // namespace

/// Turns the system's messages into the events of forms and controls.
struct FormProcedure {
    static INT_PTR CALLBACK Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam);

    static INT_PTR Handle(Form& form, UINT message, WPARAM wParam, LPARAM lParam);
    static void Command(Form& form, WPARAM wParam, LPARAM lParam);
    static void MenuCommand(Form& form, unsigned id);
    static void Notify(Form& form, LPARAM lParam);
    static INT_PTR ColorOf(Form& form, HDC surface, HWND window);
    static INT_PTR SetCursorOver(Form& form, HWND window);
    static void Resize(Form& form);
    static void KeepDialogSize(const Form& form, WINDOWPOS& wanted);
    static void Rescale(Form& form, int dpi, const RECT& place);
    static void FontsChanged(Form& form);
    static void ColorsChanged(Form& form);
    static void Close(Form& form);
    static INT_PTR QueryEndSession(Form& form);
    static void EndSession(Form& form, bool ending);
    static INT_PTR Answer(Form& form, LONG_PTR result);
    static bool TurnPage(const Form& form, const MSG& message);
    static void EndAll();
};

INT_PTR CALLBACK FormProcedure::Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
{
    if (message == WM_INITDIALOG) {
        SetWindowLongPtrW(window, DWLP_USER, lParam);
        return FALSE;
    }
    auto* form = reinterpret_cast<Form*>(GetWindowLongPtrW(window, DWLP_USER));
    if (form == nullptr) {
        return FALSE;
    }
    const auto keepAlive = form->weak_from_this().lock();
    if (!keepAlive) {
        return FALSE; // the form is past its life; only its window still is going
    }
    INT_PTR handled = FALSE;
    Guarded([&] { handled = Handle(*form, message, wParam, lParam); });
    return handled;
}

INT_PTR FormProcedure::Handle(Form& form, UINT message, WPARAM wParam, LPARAM lParam)
{
    switch (message) {
    case WM_COMMAND:
        Command(form, wParam, lParam);
        return TRUE;
    case WM_NOTIFY:
        Notify(form, lParam);
        return FALSE;
    case WM_VSCROLL:
    case WM_HSCROLL:
        if (Control* control = form.ControlByWindow(reinterpret_cast<HWND>(lParam))) {
            control->Scrolled();
        }
        return TRUE;
    case WM_SIZE:
        if (!form.loading_ && form.IsLoaded()) {
            Resize(form);
        }
        return TRUE;
    case WM_WINDOWPOSCHANGING:
        KeepDialogSize(form, *reinterpret_cast<WINDOWPOS*>(lParam));
        return FALSE;
    case sizeIsCorrected:
        ConfirmSize(form.Handle());
        return TRUE;
    case WM_ACTIVATE:
        if (LOWORD(wParam) != WA_INACTIVE && !form.loading_ && form.IsLoaded()) {
            form.Form_Activate();
        }
        return FALSE; // the dialog's own handling gives the focus back to where it was
    case WM_MOUSEMOVE:
        form.Form_MouseMove();
        return FALSE;
    case WM_SETCURSOR:
        return SetCursorOver(form, reinterpret_cast<HWND>(wParam));
    case WM_CTLCOLOREDIT:
    case WM_CTLCOLORSTATIC:
        return ColorOf(form, reinterpret_cast<HDC>(wParam), reinterpret_cast<HWND>(lParam));
    case WM_DPICHANGED:
        Rescale(form, LOWORD(wParam), *reinterpret_cast<const RECT*>(lParam));
        return TRUE;
    case WM_SETTINGCHANGE:
        if (wParam == SPI_SETNONCLIENTMETRICS) {
            FontsChanged(form);
        }
        return FALSE;
    case WM_SYSCOLORCHANGE:
        ColorsChanged(form);
        return FALSE;
    case WM_CLOSE:
        Close(form);
        return TRUE;
    case WM_QUERYENDSESSION:
        return QueryEndSession(form);
    case WM_ENDSESSION:
        EndSession(form, wParam != 0);
        return TRUE;
    default:
        return FALSE;
    }
}

INT_PTR FormProcedure::Answer(Form& form, LONG_PTR result)
{
    SetWindowLongPtrW(form.Handle(), DWLP_MSGRESULT, result);
    return TRUE;
}

void FormProcedure::Command(Form& form, WPARAM wParam, LPARAM lParam)
{
    const int id = LOWORD(wParam);
    if (Control* control = form.ControlByWindow(reinterpret_cast<HWND>(lParam))) {
        control->Command(HIWORD(wParam));
    } else if (id == IDOK) {
        form.PressButton(form.Layout().defaultButton);
    } else if (id == IDCANCEL) {
        form.PressButton(form.Layout().cancelButton);
    } else if (lParam == 0) {
        MenuCommand(form, static_cast<unsigned>(id));
    }
}

void FormProcedure::MenuCommand(Form& form, unsigned id)
{
    const auto chosen = std::ranges::find_if(
        form.menuItems_, [id](const MenuItem* item) { return item->menu_ != nullptr && item->id_ == id; });
    if (chosen != form.menuItems_.end()) {
        (*chosen)->Click();
    }
}

void FormProcedure::Notify(Form& form, LPARAM lParam)
{
    const auto* header = reinterpret_cast<const NMHDR*>(lParam);
    if (Control* control = form.ControlByWindow(header->hwndFrom)) {
        control->Notify(header);
    }
}

INT_PTR FormProcedure::ColorOf(Form& form, HDC surface, HWND window)
{
    const Control* control = form.ControlByWindow(window);
    if (control == nullptr ||
        (control->foreColor_ == SystemColor::Default && control->backColor_ == SystemColor::Default)) {
        return FALSE;
    }
    const bool onWindow = control->backColor_ == SystemColor::WindowBackground;
    const int ground = onWindow ? COLOR_WINDOW : COLOR_BTNFACE;
    const COLORREF usual = GetSysColor(onWindow ? COLOR_WINDOWTEXT : COLOR_BTNTEXT);
    const COLORREF text = control->foreColor_ == SystemColor::Link ? LinkColor() : usual;
    SetTextColor(surface, IsWindowEnabled(window) != FALSE ? text : GetSysColor(COLOR_GRAYTEXT));
    SetBkColor(surface, GetSysColor(ground));
    return reinterpret_cast<INT_PTR>(GetSysColorBrush(ground));
}

INT_PTR FormProcedure::SetCursorOver(Form& form, HWND window)
{
    const Control* control = form.ControlByWindow(window);
    if (control == nullptr || control->Cursor() == nullptr) {
        return FALSE;
    }
    SetCursor(control->Cursor());
    return Answer(form, TRUE);
}

void FormProcedure::Resize(Form& form)
{
    const SIZE before = SizeOf(form.Handle());
    form.Form_Resize();
    if (const SIZE after = SizeOf(form.Handle()); after.cx != before.cx || after.cy != before.cy) {
        PostMessageW(form.Handle(), sizeIsCorrected, 0, 0);
    }
}

/// A dialog has the size of its layout whoever asks for another: a window manager may announce late, when the dialog is
/// already on the screen, the size that it had before it got this one, and all of it would shrink to nothing.
void FormProcedure::KeepDialogSize(const Form& form, WINDOWPOS& wanted)
{
    const FormLayout& layout = form.Layout();
    if (layout.kind != FormKind::Dialog || !form.IsLoaded() || IsIconic(form.Handle()) != FALSE ||
        (wanted.flags & SWP_NOSIZE) != 0) {
        return;
    }
    const SIZE size = FrameSize(form.Handle(), layout, form.dpi_, form.monitorDpi_);
    wanted.cx = size.cx;
    wanted.cy = size.cy;
}

void FormProcedure::Rescale(Form& form, int dpi, const RECT& place)
{
    form.Rescale(dpi);
    const FormLayout& layout = form.Layout();
    SIZE size{place.right - place.left, place.bottom - place.top};
    if (layout.kind == FormKind::Dialog) {
        size = FrameSize(form.Handle(), layout, form.dpi_, dpi);
    }
    SetWindowPos(form.Handle(), nullptr, place.left, place.top, size.cx, size.cy, SWP_NOZORDER | SWP_NOACTIVATE);
    // Also when the size happens to be the same.
    form.Form_Resize();
    RedrawWindow(form.Handle(), nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_ALLCHILDREN);
}

void FormProcedure::FontsChanged(Form& form)
{
    RECT place{};
    GetWindowRect(form.Handle(), &place);
    if (IsZoomed(form.Handle()) == FALSE && IsIconic(form.Handle()) == FALSE) {
        const int dpi = LayoutDpi(form.monitorDpi_);
        place.right = place.left + MulDiv(place.right - place.left, dpi, form.dpi_);
        place.bottom = place.top + MulDiv(place.bottom - place.top, dpi, form.dpi_);
    }
    Rescale(form, form.monitorDpi_, place);
}

void FormProcedure::ColorsChanged(Form& form)
{
    // The system tells the windows of the screen only; some controls keep colours and have to hear of it too.
    for (const Control* control : form.controls_) {
        control->Send(WM_SYSCOLORCHANGE);
    }
    RedrawWindow(form.Handle(), nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_FRAME | RDW_ALLCHILDREN);
}

void FormProcedure::Close(Form& form)
{
    // While a dialog or a message box is open over it, the form takes no input, and this is input.
    if (IsWindowEnabled(form.Handle()) != FALSE) {
        form.Unload(UnloadMode::ControlMenu);
    }
}

INT_PTR FormProcedure::QueryEndSession(Form& form)
{
    // An error while saving counts as Cancel: the session stays, and so do the days that are not saved yet.
    bool cancel = true;
    Guarded([&] {
        bool asked = false;
        form.Form_QueryUnload(asked, UnloadMode::WindowsIsClosing);
        cancel = asked;
    });
    return Answer(form, cancel ? FALSE : TRUE);
}

void FormProcedure::EndSession(Form& form, bool ending)
{
    if (ending) {
        form.Unload(UnloadMode::WindowsIsClosing);
    }
}

bool FormProcedure::TurnPage(const Form& form, const MSG& message)
{
    if (message.message != WM_KEYDOWN || message.wParam != VK_TAB || GetKeyState(VK_CONTROL) >= 0) {
        return false;
    }
    bool turned = false;
    Guarded([&] {
        turned = std::ranges::any_of(form.controls_,
                                     [](Control* control) { return control->TurnPage(GetKeyState(VK_SHIFT) >= 0); });
    });
    return turned;
}

/// What another program's request to end the thread left open goes while its controls still live.
void FormProcedure::EndAll()
{
    for (const auto& form : Form::OpenForms()) {
        form->Destroy();
    }
}

int CreateFormFrame(Form& form, HWND owner, WindowOwner& window)
{
    const FormKind kind = form.Layout().kind;
    PrepareWindows();
    const FrameTemplate frame(kind);
    window.reset(CreateDialogIndirectParamW(GetModuleHandleW(nullptr), frame.Get(),
                                            kind == FormKind::Main ? nullptr : owner, FormProcedure::Procedure,
                                            reinterpret_cast<LPARAM>(&form)));
    if (!window) {
        throw RuntimeError(ErrorFromWin32(GetLastError()));
    }
    return static_cast<int>(GetDpiForWindow(window.get()));
}

RECT WorkAreaAround(HWND window)
{
    MONITORINFO monitor{};
    monitor.cbSize = sizeof monitor;
    GetMonitorInfoW(MonitorFromWindow(window, MONITOR_DEFAULTTOPRIMARY), &monitor);
    return monitor.rcWork;
}

SIZE FrameSize(HWND window, const FormLayout& layout, int layoutDpi, int monitorDpi)
{
    RECT outer{0, 0, ToPixels(layout.width, layoutDpi), ToPixels(layout.height, layoutDpi)};
    if (layout.kind == FormKind::Dialog) {
        // Frames do not grow as their contents do: what counts is that the contents fit.
        AdjustWindowRectExForDpi(&outer, static_cast<DWORD>(GetWindowLongPtrW(window, GWL_STYLE)), FALSE,
                                 static_cast<DWORD>(GetWindowLongPtrW(window, GWL_EXSTYLE)),
                                 static_cast<UINT>(monitorDpi));
    }
    const RECT work = WorkAreaAround(window);
    return {std::min(outer.right - outer.left, work.right - work.left),
            std::min(outer.bottom - outer.top, work.bottom - work.top)};
}

void FocusFirstInTabOrder(HWND window)
{
    HWND first = GetNextDlgTabItem(window, nullptr, FALSE);
    SendMessageW(window, WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(first), TRUE);
}

void WakeMessageLoop() noexcept
{
    PostThreadMessageW(GetCurrentThreadId(), WM_NULL, 0, 0);
}

namespace {

void HandleMessage(MSG& message)
{
    HWND root = GetAncestor(message.hwnd, GA_ROOT);
    const auto forms = Form::OpenForms();
    const auto form =
        std::ranges::find_if(forms, [root](const auto& candidate) { return candidate->Handle() == root; });
    const bool ours = form != forms.end();
    if (ours && FormProcedure::TurnPage(**form, message)) {
        return;
    }
    if (!ours || IsDialogMessageW(root, &message) == FALSE) {
        TranslateMessage(&message);
        DispatchMessageW(&message);
    }
}

} // namespace

bool HandleNextMessage()
{
    MSG message{};
    if (GetMessageW(&message, nullptr, 0, 0) <= 0) {
        return false;
    }
    HandleMessage(message);
    return true;
}

void RunMessageLoop()
{
    while (!Form::OpenForms().empty() && HandleNextMessage()) {
    }
    FormProcedure::EndAll();
}

void DoEvents()
{
    MSG message{};
    while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE) != FALSE) {
        if (message.message == WM_QUIT) {
            // The loops around this one must see it too.
            PostQuitMessage(static_cast<int>(message.wParam));
            return;
        }
        HandleMessage(message);
    }
}
