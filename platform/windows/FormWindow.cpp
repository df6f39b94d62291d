#include "platform/windows/FormWindow.h"

#include "platform/system/RuntimeError.h"
#include "platform/system/SystemLibrary.h"
#include "platform/windows/Fonts.h"
#include "platform/windows/UnhandledError.h"

#include <commctrl.h>

#include <algorithm>
#include <array>
#include <string_view>

namespace {

/// The window class of the main window. Its procedure is DefDlgProc, so Tab, Enter and Esc work as in a dialog, and the
/// focus returns when the window is activated.
constexpr const wchar_t* mainClass = L"Odomira";
constexpr int iconResource = 1;

constexpr DWORD mainStyle = WS_OVERLAPPEDWINDOW | WS_CLIPCHILDREN;
constexpr DWORD dialogStyle = WS_POPUP | WS_CAPTION | WS_SYSMENU | DS_MODALFRAME;

void PrepareWindows()
{
    static const bool prepared = [] {
        constexpr INITCOMMONCONTROLSEX used{sizeof(INITCOMMONCONTROLSEX),
                                            ICC_TREEVIEW_CLASSES | ICC_BAR_CLASSES | ICC_TAB_CLASSES |
                                                ICC_UPDOWN_CLASS | ICC_PROGRESS_CLASS | ICC_STANDARD_CLASSES};
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

/// COLOR_HOTLIGHT, except on a light background without high contrast.
///
/// Wine: COLOR_HOTLIGHT of the Light theme is a light grey (224, 224, 224) that cannot be read on COLOR_BTNFACE.
/// Windows has the blue (0, 102, 204) there, which is used in its place.
COLORREF LinkColor()
{
    HIGHCONTRASTW contrast{};
    contrast.cbSize = sizeof contrast;
    SystemParametersInfoW(SPI_GETHIGHCONTRAST, sizeof contrast, &contrast, 0);
    const bool chosen = (contrast.dwFlags & HCF_HIGHCONTRASTON) != 0 || IsDark(GetSysColor(COLOR_BTNFACE));
    return chosen ? GetSysColor(COLOR_HOTLIGHT) : RGB(0, 102, 204);
}

/// A dialog template in memory, without controls, menu and title.
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
    alignas(DWORD) DLGTEMPLATE header_{}; ///< CreateDialogIndirectParam requires the alignment
    std::array<wchar_t, 32> texts_{};     ///< menu, class and title
    static_assert(sizeof(DLGTEMPLATE) % sizeof(wchar_t) == 0, "the texts must follow without a gap");
};

static_assert(static_cast<unsigned>(CommandKey::Enter) == VK_RETURN &&
              static_cast<unsigned>(CommandKey::Space) == VK_SPACE &&
              static_cast<unsigned>(CommandKey::Delete) == VK_DELETE);

/// Posted when Form_Resize has changed the size of the window: SizeIsCorrected sets the same size again.
///
/// Wine: a size set within WM_SIZE may get lost, because the X11 window manager is still reporting the size that the
/// user chose. Windows keeps the size that was set last. Without this, the frame stays smaller than its contents.
constexpr UINT sizeIsCorrected = WM_APP;

/// Posted when F1 was pressed in a menu, which closes.
constexpr UINT menuIsLeftForHelp = WM_APP + 1;

SIZE SizeOf(HWND window)
{
    RECT outer{};
    GetWindowRect(window, &outer);
    return {outer.right - outer.left, outer.bottom - outer.top};
}

void Scale(RECT& place, int dpi, int formerDpi)
{
    place.right = place.left + MulDiv(place.right - place.left, dpi, formerDpi);
    place.bottom = place.top + MulDiv(place.bottom - place.top, dpi, formerDpi);
}

/// Scales a minimised window, which stays minimised.
void ScaleRestoredSize(HWND window, int dpi, int formerDpi)
{
    WINDOWPLACEMENT placement{};
    placement.length = sizeof placement;
    GetWindowPlacement(window, &placement);
    Scale(placement.rcNormalPosition, dpi, formerDpi);
    placement.showCmd = SW_SHOWMINNOACTIVE;
    SetWindowPlacement(window, &placement);
}

} // namespace

/// The dialog procedure of every form.
struct FormProcedure {
    static INT_PTR CALLBACK Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam);

    /// Handles one message. TRUE: the dialog box procedure of Windows does not handle it.
    using Handler = INT_PTR(Form& form, WPARAM wParam, LPARAM lParam);
    struct Route {
        UINT message = WM_NULL;
        Handler* handler = nullptr;
        INT_PTR afterError = FALSE; ///< the result if the handler throws
    };
    static const std::array<Route, 20> routes;

    static Handler Activate;
    static Handler Close;
    static Handler Command;
    static Handler ControlColor;
    static Handler DpiChanged;
    static Handler EndSession;
    static Handler Help;
    static Handler MenuIsLeftForHelp;
    static Handler MouseMove;
    static Handler Notify;
    static Handler QueryEndSession;
    static Handler Scroll;
    static Handler SetCursor;
    static Handler SettingChange;
    static Handler Size;
    static Handler SizeIsCorrected;
    static Handler SysColorChange;
    static Handler WindowPosChanging;

    static void MenuCommand(Form& form, unsigned id);
    static void Rescale(Form& form, int dpi, const RECT& place);
    static void FontsChanged(Form& form);
    static void RegionChanged(Form& form, LPARAM setting);
    static INT_PTR Answer(Form& form, LONG_PTR result);
    static bool TurnPage(const Form& form, const MSG& message);
    static void HandleMessage(MSG& message);
    static bool GiveCommand(const Form& form, const MSG& message);
    static bool IsRepeated(const MSG& message);
    static bool IsRepeatedAnswer(const MSG& message);
    static bool IsPressed(const Form& form, const KeyRow& row, const MSG& message);
    static void Give(const Form& form, const char* command);
};

const std::array<FormProcedure::Route, 20> FormProcedure::routes{{
    {WM_ACTIVATE, Activate},
    {WM_CLOSE, Close, TRUE},
    {WM_COMMAND, Command, TRUE},
    {WM_CTLCOLOREDIT, ControlColor},
    {WM_CTLCOLORSTATIC, ControlColor},
    {WM_DPICHANGED, DpiChanged, TRUE},
    {WM_ENDSESSION, EndSession, TRUE},
    {WM_HELP, Help, TRUE},
    {WM_HSCROLL, Scroll, TRUE},
    {WM_MOUSEMOVE, MouseMove},
    {WM_NOTIFY, Notify},
    {WM_QUERYENDSESSION, QueryEndSession, TRUE},
    {WM_SETCURSOR, SetCursor},
    {WM_SETTINGCHANGE, SettingChange},
    {WM_SIZE, Size, TRUE},
    {WM_SYSCOLORCHANGE, SysColorChange},
    {WM_VSCROLL, Scroll, TRUE},
    {WM_WINDOWPOSCHANGING, WindowPosChanging},
    {menuIsLeftForHelp, MenuIsLeftForHelp, TRUE},
    {sizeIsCorrected, SizeIsCorrected, TRUE},
}};

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
        return FALSE; // the form is being destroyed
    }
    const auto route = std::ranges::find(routes, message, &Route::message);
    if (route == routes.end()) {
        return FALSE;
    }
    INT_PTR handled = route->afterError;
    Guarded([&] { handled = route->handler(*form, wParam, lParam); });
    return handled;
}

INT_PTR FormProcedure::Answer(Form& form, LONG_PTR result)
{
    SetWindowLongPtrW(form.Handle(), DWLP_MSGRESULT, result);
    return TRUE;
}

INT_PTR FormProcedure::Command(Form& form, WPARAM wParam, LPARAM lParam)
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
    return TRUE;
}

void FormProcedure::MenuCommand(Form& form, unsigned id)
{
    const auto chosen = std::ranges::find_if(
        form.menuItems_, [id](const MenuItem* item) { return item->menu_ != nullptr && item->id_ == id; });
    if (chosen != form.menuItems_.end()) {
        (*chosen)->Click();
    }
}

INT_PTR FormProcedure::Notify(Form& form, WPARAM, LPARAM lParam)
{
    const auto* header = reinterpret_cast<const NMHDR*>(lParam);
    if (Control* control = form.ControlByWindow(header->hwndFrom)) {
        control->Notify(header);
    }
    return FALSE;
}

INT_PTR FormProcedure::Scroll(Form& form, WPARAM, LPARAM lParam)
{
    if (Control* control = form.ControlByWindow(reinterpret_cast<HWND>(lParam))) {
        control->Scrolled();
    }
    return TRUE;
}

INT_PTR FormProcedure::Activate(Form& form, WPARAM wParam, LPARAM)
{
    if (LOWORD(wParam) != WA_INACTIVE && !form.loading_ && form.IsLoaded()) {
        form.Form_Activate();
    }
    return FALSE; // the dialog box procedure restores the focus
}

INT_PTR FormProcedure::MouseMove(Form& form, WPARAM, LPARAM)
{
    form.Form_MouseMove();
    return FALSE;
}

INT_PTR FormProcedure::ControlColor(Form& form, WPARAM wParam, LPARAM lParam)
{
    HDC surface = reinterpret_cast<HDC>(wParam);
    HWND window = reinterpret_cast<HWND>(lParam);
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

INT_PTR FormProcedure::SetCursor(Form& form, WPARAM wParam, LPARAM)
{
    const Control* control = form.ControlByWindow(reinterpret_cast<HWND>(wParam));
    if (control == nullptr || control->Cursor() == nullptr) {
        return FALSE;
    }
    ::SetCursor(control->Cursor());
    return Answer(form, TRUE);
}

INT_PTR FormProcedure::Size(Form& form, WPARAM, LPARAM)
{
    if (form.loading_ || !form.IsLoaded()) {
        return TRUE;
    }
    const SIZE before = SizeOf(form.Handle());
    form.Form_Resize();
    if (const SIZE after = SizeOf(form.Handle()); after.cx != before.cx || after.cy != before.cy) {
        PostMessageW(form.Handle(), sizeIsCorrected, 0, 0);
    }
    return TRUE;
}

INT_PTR FormProcedure::SizeIsCorrected(Form& form, WPARAM, LPARAM)
{
    const SIZE size = SizeOf(form.Handle());
    SetWindowPos(form.Handle(), nullptr, 0, 0, size.cx, size.cy, SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
    return TRUE;
}

/// Keeps a dialog at the size of its layout.
///
/// Wine: the X11 window manager may report the size from before Form::Load when the dialog is already visible, and Wine
/// gives the window this size. Windows does not resize a window that has no sizing border. Without this, the dialog
/// shrinks to its title bar.
INT_PTR FormProcedure::WindowPosChanging(Form& form, WPARAM, LPARAM lParam)
{
    WINDOWPOS& wanted = *reinterpret_cast<WINDOWPOS*>(lParam);
    const FormLayout& layout = form.Layout();
    if (layout.kind != FormKind::Dialog || !form.IsLoaded() || IsIconic(form.Handle()) != FALSE ||
        (wanted.flags & SWP_NOSIZE) != 0) {
        return FALSE;
    }
    const SIZE size = FrameSize(form.Handle(), layout, form.dpi_, form.monitorDpi_);
    wanted.cx = size.cx;
    wanted.cy = size.cy;
    return FALSE;
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
    // WM_SIZE does not come if the size is the same.
    form.Form_Resize();
    RedrawWindow(form.Handle(), nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_ALLCHILDREN);
}

INT_PTR FormProcedure::DpiChanged(Form& form, WPARAM wParam, LPARAM lParam)
{
    Rescale(form, LOWORD(wParam), *reinterpret_cast<const RECT*>(lParam));
    return TRUE;
}

INT_PTR FormProcedure::SettingChange(Form& form, WPARAM wParam, LPARAM lParam)
{
    if (wParam == SPI_SETNONCLIENTMETRICS) {
        FontsChanged(form);
    }
    RegionChanged(form, lParam);
    return FALSE;
}

void FormProcedure::FontsChanged(Form& form)
{
    const int dpi = LayoutDpi(form.monitorDpi_);
    RECT place{};
    GetWindowRect(form.Handle(), &place);
    if (IsIconic(form.Handle()) != FALSE) {
        ScaleRestoredSize(form.Handle(), dpi, form.dpi_);
    } else if (IsZoomed(form.Handle()) == FALSE) {
        Scale(place, dpi, form.dpi_);
    }
    Rescale(form, form.monitorDpi_, place);
}

/// The lParam of WM_SETTINGCHANGE is "intl" if the region settings have changed.
void FormProcedure::RegionChanged(Form& form, LPARAM setting)
{
    const auto* name = reinterpret_cast<const wchar_t*>(setting);
    if (name != nullptr && std::wstring_view(name) == L"intl" && !form.loading_ && form.IsLoaded()) {
        form.Form_RegionChanged();
    }
}

INT_PTR FormProcedure::SysColorChange(Form& form, WPARAM, LPARAM)
{
    // Windows sends WM_SYSCOLORCHANGE to top-level windows only. The common controls need it too.
    for (const Control* control : form.controls_) {
        control->Send(WM_SYSCOLORCHANGE);
    }
    RedrawWindow(form.Handle(), nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_FRAME | RDW_ALLCHILDREN);
    return FALSE;
}

INT_PTR FormProcedure::Close(Form& form, WPARAM, LPARAM)
{
    // A form under a dialog or message box is disabled, but another program may still send WM_CLOSE.
    if (IsWindowEnabled(form.Handle()) != FALSE) {
        form.Unload(UnloadMode::ControlMenu);
    }
    return TRUE;
}

INT_PTR FormProcedure::QueryEndSession(Form& form, WPARAM, LPARAM)
{
    // An error during the save cancels the end of the session, so that unsaved days are not lost.
    bool cancel = true;
    Guarded([&] {
        bool asked = false;
        form.Form_QueryUnload(asked, UnloadMode::WindowsIsClosing);
        cancel = asked;
    });
    return Answer(form, cancel ? FALSE : TRUE);
}

INT_PTR FormProcedure::EndSession(Form& form, WPARAM wParam, LPARAM)
{
    if (wParam != 0) {
        form.Unload(UnloadMode::WindowsIsClosing);
    } else {
        form.Form_SessionGoesOn();
    }
    return TRUE;
}

INT_PTR FormProcedure::Help(Form& form, WPARAM, LPARAM lParam)
{
    // A message box passes its F1 to its owner, which is disabled.
    if (IsWindowEnabled(form.Handle()) == FALSE) {
        return TRUE;
    }
    if (reinterpret_cast<const HELPINFO*>(lParam)->iContextType == HELPINFO_MENUITEM) {
        // The menu runs a message loop of its own: the guide opens when that has ended.
        EndMenu();
        PostMessageW(form.Handle(), menuIsLeftForHelp, 0, 0);
    } else {
        form.Form_Help();
    }
    return TRUE; // DefWindowProc would pass WM_HELP to the owner
}

INT_PTR FormProcedure::MenuIsLeftForHelp(Form& form, WPARAM, LPARAM)
{
    form.Form_Help();
    return TRUE;
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

bool FormProcedure::IsPressed(const Form& form, const KeyRow& row, const MSG& message)
{
    const bool held = GetKeyState(VK_CONTROL) < 0;
    const bool others = GetKeyState(VK_SHIFT) < 0 || GetKeyState(VK_MENU) < 0;
    if (message.wParam != static_cast<WPARAM>(row.key) || others) {
        return false;
    }
    return row.within == nullptr ? held : !held && form.ControlByName(row.within)->Handle() == message.hwnd;
}

bool FormProcedure::IsRepeated(const MSG& message)
{
    constexpr LPARAM isRepeated = LPARAM{KF_REPEAT} << 16;
    return message.message == WM_KEYDOWN && (message.lParam & isRepeated) != 0;
}

/// Enter that opened a dialog would confirm it while it is held down, and Esc would close one dialog after the other.
bool FormProcedure::IsRepeatedAnswer(const MSG& message)
{
    return (message.wParam == VK_RETURN || message.wParam == VK_ESCAPE) && IsRepeated(message);
}

/// Also if its command is disabled, the key does not reach the control, which would handle it in another way.
bool FormProcedure::GiveCommand(const Form& form, const MSG& message)
{
    if (message.message != WM_KEYDOWN) {
        return false;
    }
    const auto keys = form.Layout().keys;
    const auto row = std::ranges::find_if(keys, [&](const KeyRow& key) { return IsPressed(form, key, message); });
    if (row == keys.end()) {
        return false;
    }
    if (!IsRepeated(message) && IsWindowEnabled(form.Handle()) != FALSE) {
        Give(form, row->command);
    }
    return true;
}

void FormProcedure::Give(const Form& form, const char* command)
{
    const auto item = std::ranges::find(form.menuItems_, std::string_view(command),
                                        [](const MenuItem* entry) { return std::string_view(entry->Name()); });
    if (item != form.menuItems_.end() && (*item)->Enabled()) {
        SendMessageW(form.Handle(), WM_COMMAND, (*item)->id_, 0);
    } else if (const Control* control = form.ControlByName(command); control != nullptr && control->Enabled()) {
        // As a click without its mouse: the focus stays where it is.
        const auto id = static_cast<WORD>(GetDlgCtrlID(control->Handle()));
        SendMessageW(form.Handle(), WM_COMMAND, MAKEWPARAM(id, BN_CLICKED),
                     reinterpret_cast<LPARAM>(control->Handle()));
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
    // The form scales itself at WM_DPICHANGED; the dialog manager of Windows would do it too. Wine: the function does
    // not exist, and a program linked to it would not start.
    if (auto* behave =
            SystemFunction<decltype(SetDialogDpiChangeBehavior)>(L"user32.dll", "SetDialogDpiChangeBehavior")) {
        behave(window.get(), DDC_DISABLE_ALL, DDC_DISABLE_ALL);
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
        // The frame scales with the monitor, the client area with the layout.
        AdjustWindowRectExForDpi(&outer, static_cast<DWORD>(GetWindowLongPtrW(window, GWL_STYLE)), FALSE,
                                 static_cast<DWORD>(GetWindowLongPtrW(window, GWL_EXSTYLE)),
                                 static_cast<UINT>(monitorDpi));
    }
    const RECT work = WorkAreaAround(window);
    return {std::min(outer.right - outer.left, work.right - work.left),
            std::min(outer.bottom - outer.top, work.bottom - work.top)};
}

void FocusAsTabDoes(HWND window, HWND control)
{
    SendMessageW(window, WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(control), TRUE);
}

void FocusFirstInTabOrder(HWND window)
{
    FocusAsTabDoes(window, GetNextDlgTabItem(window, nullptr, FALSE));
}

void ForgetInput() noexcept
{
    MSG message{};
    while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE | PM_QS_INPUT) != FALSE) {
    }
}

void FormProcedure::HandleMessage(MSG& message)
{
    if (message.message == WM_QUIT) {
        if (const auto forms = Form::OpenForms(); !forms.empty()) {
            forms.front()->Unload(UnloadMode::AnotherProgram);
        }
        return;
    }
    HWND root = GetAncestor(message.hwnd, GA_ROOT);
    const auto form = Form::Of(root);
    if (form && (IsRepeatedAnswer(message) || TurnPage(*form, message) || GiveCommand(*form, message))) {
        return;
    }
    if (!form || IsDialogMessageW(root, &message) == FALSE) {
        TranslateMessage(&message);
        DispatchMessageW(&message);
    }
}

void HandleNextMessage() noexcept
{
    MSG message{};
    GetMessageW(&message, nullptr, 0, 0);
    Guarded([&message] { FormProcedure::HandleMessage(message); });
}

void RunMessageLoop() noexcept
{
    while (Form::AnyIsOpen()) {
        HandleNextMessage();
    }
}

void DoEvents()
{
    MSG message{};
    while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE) != FALSE) {
        Guarded([&message] { FormProcedure::HandleMessage(message); });
    }
}

void SettleWindows()
{
    const AskingForm asking;
    MSG message{};
    while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE | PM_QS_PAINT | PM_QS_SENDMESSAGE) != FALSE) {
        DispatchMessageW(&message);
    }
    asking.EndCommandIfGone();
}
