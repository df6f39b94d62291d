#include "platform/windows/Form.h"

#include "platform/system/RuntimeError.h"
#include "platform/windows/Fonts.h"
#include "platform/windows/FormWindow.h"
#include "platform/windows/ModalOwner.h"

#include <windows.h>

#include <algorithm>
#include <string_view>
#include <utility>

namespace {

/// IDOK (1) and IDCANCEL (2) are Enter and Esc.
constexpr int firstControlId = 101;

/// The loaded forms in the order in which they were loaded.
std::vector<std::shared_ptr<Form>>& Loaded()
{
    static std::vector<std::shared_ptr<Form>> forms;
    return forms;
}

void UpdateModalOwner()
{
    const auto& forms = Loaded();
    const auto top = std::find_if(forms.rbegin(), forms.rend(),
                                  [](const auto& form) { return IsWindowVisible(form->Handle()) != FALSE; });
    SetModalOwner(top != forms.rend() ? (*top)->Handle() : nullptr);
}

RECT OuterRect(HWND window)
{
    RECT outer{};
    GetWindowRect(window, &outer);
    return outer;
}

/// Gives the window this size and centres it over the area, but inside the work area.
void CentreOver(HWND window, const RECT& area, int width, int height)
{
    const RECT work = WorkAreaAround(window);
    const LONG left = (area.left + area.right - width) / 2;
    const LONG top = (area.top + area.bottom - height) / 2;
    SetWindowPos(window, nullptr, std::max(work.left, std::min(left, work.right - width)),
                 std::max(work.top, std::min(top, work.bottom - height)), width, height, SWP_NOZORDER | SWP_NOACTIVATE);
}

} // namespace

Form::Form() = default;

Form::~Form() = default;

std::vector<std::shared_ptr<Form>> Form::OpenForms()
{
    return Loaded();
}

bool Form::AnyIsOpen() noexcept
{
    return !Loaded().empty();
}

std::shared_ptr<Form> Form::Of(WindowHandle window)
{
    const auto& forms = Loaded();
    const auto found = std::ranges::find(forms, window, [](const auto& form) { return form->Handle(); });
    return found != forms.end() ? *found : nullptr;
}

void Form::Load()
{
    if (IsLoaded() || loading_) {
        return;
    }
    const auto keepAlive = shared_from_this();
    loading_ = true;
    try {
        CreateFormWindow();
        Loaded().push_back(keepAlive);
        CreateMenu();
        CreateControls();
        GiveSizeAndPlace();
        Wire();
        Form_Load();
        if (menu_) {
            DrawMenuBar(window_.get()); // Form_Load has set the captions
        }
    } catch (...) {
        loading_ = false;
        Destroy();
        throw;
    }
    loading_ = false;
}

void Form::CreateFormWindow()
{
    // The main window, which is the first form, owns every dialog.
    const auto& forms = Loaded();
    monitorDpi_ = CreateFormFrame(*this, forms.empty() ? nullptr : forms.front()->Handle(), window_);
    dpi_ = LayoutDpi(monitorDpi_);
    font_ = MakeFont({}, monitorDpi_);
}

void Form::CreateControls()
{
    const auto rows = Layout().rows;
    if (rows.size() != controls_.size()) {
        throw RuntimeError(ErrorNumber::InvalidProcedureCall);
    }
    std::vector<Control*> inTabOrder;
    int id = firstControlId;
    for (const LayoutRow& row : rows) {
        Control* control = ControlByName(row.control);
        if (control == nullptr) {
            throw RuntimeError(ErrorNumber::InvalidProcedureCall);
        }
        const bool continues = control->JoinsGroup() && !inTabOrder.empty() && inTabOrder.back()->JoinsGroup();
        control->Create(id++, row.place, ControlByName(row.page), !continues);
        inTabOrder.push_back(control);
    }
    controls_ = std::move(inTabOrder);
    if (const Control* standard = ControlByName(Layout().defaultButton)) {
        SendMessageW(window_.get(), DM_SETDEFID, static_cast<WPARAM>(GetDlgCtrlID(standard->Handle())), 0);
        standard->Send(BM_SETSTYLE, BS_DEFPUSHBUTTON, FALSE);
    }
}

void Form::CreateMenu()
{
    if (Layout().menu.empty()) {
        return;
    }
    menu_ = MenuItem::Build(Layout().menu, menuItems_);
    SetMenu(window_.get(), menu_.get());
}

void Form::GiveSizeAndPlace()
{
    const FormLayout& layout = Layout();
    const SIZE size = FrameSize(window_.get(), layout, dpi_, monitorDpi_);
    CentreOver(window_.get(), WorkAreaAround(window_.get()), size.cx, size.cy);
    ApplyScale();
}

void Form::ApplyScale()
{
    for (Control* control : controls_) {
        control->ApplyFont();
        control->Place();
        control->Scaled();
    }
}

void Form::Rescale(int monitorDpi)
{
    monitorDpi_ = monitorDpi;
    dpi_ = LayoutDpi(monitorDpi);
    const FontOwner former =
        std::exchange(font_, MakeFont({}, monitorDpi)); // in use until every control has the new one
    ApplyScale();
}

void Form::Show()
{
    Load();
    Form_Resize();
    ShowWindow(window_.get(), SW_SHOWNORMAL);
    UpdateModalOwner();
    FocusFirst();
}

void Form::ShowModal()
{
    const auto keepAlive = shared_from_this();
    const AskingForm asking;
    Load();
    owner_ = Loaded().front() != keepAlive ? Loaded().front() : nullptr;
    modal_ = true;
    ShowOverOwner();
    while (modal_) {
        HandleNextMessage();
    }
    asking.EndCommandIfGone();
}

void Form::ShowOver(const std::shared_ptr<Form>& owner)
{
    Load();
    SetWindowLongPtrW(window_.get(), GWLP_HWNDPARENT, reinterpret_cast<LONG_PTR>(owner->Handle())); // stays above it
    owner_ = owner;
    ForgetInput();
    ShowOverOwner();
}

void Form::ShowOverOwner()
{
    focusToReturnTo_ = GetFocus();
    if (owner_) {
        const RECT outer = OuterRect(window_.get());
        CentreOver(window_.get(), OuterRect(owner_->Handle()), outer.right - outer.left, outer.bottom - outer.top);
    }
    Form_Resize();
    if (owner_) {
        EnableWindow(owner_->Handle(), FALSE);
    }
    ShowWindow(window_.get(), SW_SHOWNORMAL);
    UpdateModalOwner();
    FocusFirst();
}

void Form::EndModal()
{
    modal_ = false;
    WakeMessageLoop();
    // The owner is enabled before this window is hidden, so that Windows activates it.
    if (owner_ && owner_->IsLoaded()) {
        EnableWindow(owner_->Handle(), TRUE);
    }
}

void Form::Hide()
{
    if (!IsLoaded()) {
        return;
    }
    const bool shownOver = owner_ && !modal_;
    EndModal();
    ShowWindow(window_.get(), SW_HIDE);
    UpdateModalOwner();
    if (const auto owner = std::exchange(owner_, nullptr); owner && owner->IsLoaded()) {
        SetActiveWindow(owner->Handle());
        ::SetFocus(IsChild(owner->Handle(), focusToReturnTo_) != FALSE ? focusToReturnTo_ : owner->Handle());
    }
    if (shownOver) {
        ForgetInput();
    }
}

void Form::Unload(UnloadMode mode)
{
    const auto keepAlive = shared_from_this();
    if (!IsLoaded()) {
        if (forget_) {
            forget_();
        }
        return;
    }
    bool cancel = false;
    Form_QueryUnload(cancel, mode);
    if (cancel) {
        return;
    }
    Form_Unload();
    Hide();
    Destroy();
}

void Form::Destroy()
{
    const auto keepAlive = shared_from_this();
    std::erase(Loaded(), keepAlive);
    WakeMessageLoop();
    UpdateModalOwner();
    if (forget_) {
        forget_();
    }
    if (window_) {
        SetMenu(window_.get(), nullptr);
    }
    for (Control* control : controls_) {
        control->accessibleName_.Clear();
    }
    window_.reset();
    for (Control* control : controls_) {
        control->Forget();
    }
    for (MenuItem* item : menuItems_) {
        item->menu_ = nullptr;
    }
    menu_.reset();
    font_.reset();
}

void Form::FocusFirst()
{
    if (const Control* first = ControlByName(Layout().firstFocus)) {
        FocusAsTabDoes(window_.get(), first->Handle());
    } else {
        FocusFirstInTabOrder(window_.get());
    }
}

std::wstring Form::Caption() const
{
    std::wstring text(static_cast<std::size_t>(GetWindowTextLengthW(window_.get())), L'\0');
    GetWindowTextW(window_.get(), text.data(), static_cast<int>(text.size()) + 1);
    return text;
}

void Form::SetCaption(const std::wstring& caption)
{
    SetWindowTextW(window_.get(), caption.c_str());
}

int Form::Width() const
{
    const RECT outer = OuterRect(window_.get());
    return ToTwips(outer.right - outer.left, dpi_);
}

int Form::Height() const
{
    const RECT outer = OuterRect(window_.get());
    return ToTwips(outer.bottom - outer.top, dpi_);
}

void Form::SetWidth(int twips)
{
    const RECT outer = OuterRect(window_.get());
    SetWindowPos(window_.get(), nullptr, 0, 0, ToPixelsUp(twips, dpi_), outer.bottom - outer.top,
                 SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
}

void Form::SetHeight(int twips)
{
    const RECT outer = OuterRect(window_.get());
    SetWindowPos(window_.get(), nullptr, 0, 0, outer.right - outer.left, ToPixelsUp(twips, dpi_),
                 SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
}

bool Form::IsMinimised() const
{
    return IsIconic(window_.get()) != FALSE;
}

Control* Form::ControlByName(const char* name) const
{
    if (name == nullptr) {
        return nullptr;
    }
    const auto found = std::ranges::find(controls_, std::string_view(name),
                                         [](const Control* control) { return std::string_view(control->Name()); });
    return found != controls_.end() ? *found : nullptr;
}

Control* Form::ControlByWindow(WindowHandle window) const
{
    const auto found = std::ranges::find(controls_, window, [](const Control* control) { return control->window_; });
    return found != controls_.end() ? *found : nullptr;
}

void Form::PressButton(const char* name)
{
    if (const Control* button = ControlByName(name); button != nullptr && button->Enabled()) {
        button->Send(BM_CLICK);
    }
}
